#include "live/reflection/DescriptorText.h"

namespace KrCore {

namespace {

/// A ":" anywhere in the first field makes it a parameter, one in its description too.
bool startsWithParameter(UnitSpan text) { return text.split(',').contains(':'); }

/// Takes the descriptions off a field; what stays is its head.
UnitSpan readDescriptions(UnitSpan field, DescribedField& described) {
    const UnitSpan head = field.split('\t').stripped();
    described.shortDescription = field.split('\t').stripped().toString();
    described.longDescription = field.split('\t').stripped().toString();
    return head;
}

DescribedField readServiceField(UnitSpan field) {
    DescribedField described;
    UnitSpan head = readDescriptions(field, described);
    described.type = std::make_unique<SimpleTypeInfo>(head.split('/'));
    if (const UnitSpan second = head.stripped(); !second.isEmpty())
        described.secondType = std::make_unique<SimpleTypeInfo>(second);
    return described;
}

DescribedField readParameterField(UnitSpan field, int index) {
    DescribedField described;
    UnitSpan head = readDescriptions(field, described);
    if (head.contains(':')) described.name = head.split(':').stripped().toString();
    if (described.name.isEmpty()) described.name = nameOfParameter(index);
    described.type = std::make_unique<SimpleTypeInfo>(head);
    return described;
}

/// A list that starts with a parameter says nothing of the service itself.
DescribedField undescribedService() { return readServiceField(UnitSpan()); }

} // namespace

DescribedField DescribedField::read(UnitSpan text, int index) {
    const bool hasOwnType = !startsWithParameter(text);
    if (index < 0) return hasOwnType ? readServiceField(text.split(',')) : undescribedService();
    if (hasOwnType) text.split(',');
    for (int skipped = 0; skipped < index && !text.isEmpty(); ++skipped)
        text.split(',');
    return readParameterField(text.split(','), index);
}

String nameOfParameter(int index) { return "arg" + Variant(index + 1.0).getString(); }

DescriptorText::DescriptorText(const String& text)
    : text_(text), startsWithParameter_(startsWithParameter(UnitSpan(text))) {
    const UnitSpan units(text_);
    for (int i = units.find(',', 0); i >= 0; i = units.find(',', i + 1))
        commas_.append(i);
}

DescribedField DescriptorText::readService() const {
    return startsWithParameter_ ? undescribedService()
                                : readServiceField(UnitSpan(text_).split(','));
}

DescribedField DescriptorText::readParameter(int index) const {
    const int field = startsWithParameter_ ? index : index + 1;
    const int start = field > 0 ? static_cast<int>(commas_.getData()[field - 1]) + 1 : 0;
    UnitSpan rest(text_.wstr() + start, text_.length() - start);
    return readParameterField(rest.split(','), index);
}

int DescriptorText::parameterCount() const {
    if (commas_.length() > 0) return commas_.length();
    return startsWithParameter_ ? 1 : 0;
}

} // namespace KrCore
