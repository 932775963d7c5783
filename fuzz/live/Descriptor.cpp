// Reads text as a descriptor: at every index, and as the descriptor of rows in a class's table.

#include "support/FuzzInput.h"

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>
#include <krcore/xml/XML.h>

#include <cmath>
#include <memory>
#include <string>

using namespace KrCore;

namespace {

constexpr int beyond = 3; // indexes tried behind the last field

bool isSame(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

/// Values of descriptors are undefined, null, numbers and texts.
bool isSame(const Variant& a, const Variant& b) {
    if (a.getType() != b.getType()) return false;
    return a.getType() == VariantType::Number ? isSame(a.getDouble(), b.getDouble())
                                              : a.getString() == b.getString();
}

/// What all getters of a type say.
struct Spelled {
    explicit Spelled(const TypeInfo& info)
        : type(info.getDataType()), hasClass(info.getDataClass(className)),
          isCollection(info.isCollection()), hasRange(info.getValidRange(minimum, maximum)),
          hasValue(info.getDefaultValue(value)) {
        String text;
        info.getDataTypeAsString(text);
        Fuzz::require(hasClass != className.isEmpty(), "a class has a name");
        Fuzz::require(text == (hasClass ? className : TypeInfo::convertDataTypeToString(type)),
                      "the class is the type's text");
        Fuzz::require(!hasClass || type == VariantType::Object, "only objects have a class");
        Fuzz::require(hasRange || (isSame(minimum, HUGE_VAL) && isSame(maximum, HUGE_VAL)),
                      "no range has no bounds");
        Fuzz::require(hasValue || !value.isDefined(), "no default is undefined");
        Fuzz::require(!info.getDescription(text) && text.isEmpty(), "types are not described");
    }

    bool operator==(const Spelled& other) const {
        return type == other.type && className == other.className &&
               isCollection == other.isCollection && hasRange == other.hasRange &&
               isSame(minimum, other.minimum) && isSame(maximum, other.maximum) &&
               hasValue == other.hasValue && isSame(value, other.value);
    }
    bool saysNothing() const { return type == anyType && !isCollection && !hasRange && !hasValue; }

    String className;
    double minimum = 0;
    double maximum = 0;
    Variant value;
    VariantType type;
    bool hasClass;
    bool isCollection;
    bool hasRange;
    bool hasValue;
};

/// What `TypeInfo::parse` makes of one field.
struct Field {
    Field(const String& text, int index) {
        TypeInfo* secondType = nullptr;
        type.reset(
            TypeInfo::parse(text, index, &name, &shortDescription, &longDescription, &secondType));
        second.reset(secondType);
        Fuzz::require(bool(type), "there is always a type");
        Fuzz::require((index < 0) == name.isEmpty(), "every parameter has a name");
        Fuzz::require(index < 0 || !second, "only services have a second type");
        if (second) Spelled{*second};
        const std::unique_ptr<TypeInfo> alone(
            TypeInfo::parse(text, index, nullptr, nullptr, nullptr, nullptr));
        Fuzz::require(Spelled(*alone) == Spelled(*type), "the type does not need the rest");
    }

    std::unique_ptr<TypeInfo> type;
    std::unique_ptr<TypeInfo> second;
    String name;
    String shortDescription;
    String longDescription;
};

int countCommas(const String& text) {
    int count = 0;
    for (int i = 0; i < text.length(); ++i)
        count += text.wstr()[i] == ',';
    return count;
}

void checkFields(const String& text) {
    const int commas = countCommas(text);
    for (int index = -1; index <= commas + beyond; ++index) {
        const Field field(text, index);
        if (index > commas) Fuzz::require(Spelled(*field.type).saysNothing(), "no field, no type");
    }
    const Field farthest(text, 2147483647);
    Fuzz::require(farthest.name == "arg2147483648", "the farthest parameter has a name");
}

/// Records and `TypeInfo::parse` tell the same.
template <class Info>
void checkDescribed(const Info& info, const Field& field) {
    String shortText;
    String longText;
    info.getDescription(false, shortText);
    info.getDescription(true, longText);
    Fuzz::require(shortText == field.shortDescription && longText == field.longDescription,
                  "descriptions are those of the field");
    Fuzz::require(Spelled(info.getTypeInfo()) == Spelled(*field.type), "and so is the type");
}

void checkParameters(const ServiceInfo& record, const String& text) {
    const int commas = countCommas(text);
    const int count = commas == 0 && text.find(':') >= 0 ? 1 : commas;
    Fuzz::require(record.getParamCount() == count, "commas count parameters");
    for (int index = -1; index <= count + beyond; ++index) {
        const auto parameter = InterfacePtr<const ParamInfo>::adopt(record.getParamInfo(index));
        Fuzz::require(bool(parameter) == (index >= 0 && index < count), "none but these");
        if (!parameter) continue;
        const Field field(text, index);
        String name;
        parameter->getName(name);
        Fuzz::require(name == field.name, "the parameter has the field's name");
        checkDescribed(*parameter, field);
    }
}

/// XML has no way to write most control characters.
bool fitsXML(const String& printed) {
    for (int i = 0; i < printed.length(); ++i) {
        const unsigned short unit = printed.wstr()[i];
        if (unit < ' ' && unit != '\t' && unit != '\n' && unit != '\r') return false;
    }
    return true;
}

void checkPrinted(const XML& tree) {
    const String printed = tree.toXMLString(-1);
    if (!fitsXML(printed)) return;
    Error err;
    int pos = 0;
    const auto again = InterfacePtr<XML>::adopt(XML::parse(printed, pos, err, false, false, false));
    Fuzz::require(bool(again), "what was printed can be parsed");
    Fuzz::require(again->isEqual(tree, false), "and says the same");
}

void checkMethod(const XML& method, const ServiceInfo& record) {
    const auto lists = InterfacePtr<XML>::adopt(method.get_r("parameters", XML::Children));
    const int count = lists->length() > 0 ? lists->getChild(0)->length() : 0;
    Fuzz::require(count == record.getParamCount(), "all parameters are written");
    for (int index = 0; index < count; ++index) {
        const auto parameter = InterfacePtr<const ParamInfo>::adopt(record.getParamInfo(index));
        String name;
        parameter->getName(name);
        Fuzz::require(lists->getChild(0)->getChild(index)->getText("@name") == name,
                      "under their names");
    }
}

void checkRecord(const LivePropertyManager& manager, const String& text) {
    const auto record = InterfacePtr<const ServiceInfo>::adopt(
        manager.getServiceInfo("both", RequestFlag::Library));
    const Field service(text, -1);
    checkDescribed(*record, service);
    Fuzz::require(Spelled(record->getTypeInfo2()) ==
                      Spelled(service.second ? *service.second : *service.type),
                  "the second type stands in for itself or for the first");
    checkParameters(*record, text);

    const auto both = InterfacePtr<XML>::adopt(record->toXML());
    Fuzz::require(both->getType() == XML::List && both->length() == 2, "a method and a property");
    checkMethod(*both->getChild(0), *record);
    checkPrinted(*both->getChild(0));
    checkPrinted(*both->getChild(1));
}

/// The class that its constructor names, with one property and one method.
void checkClass(LivePropertyManager& manager) {
    const auto info = InterfacePtr<const ClassInfo>::adopt(
        new PropertyManagerClassInfo(manager, RequestFlag::Library));
    const auto tree = InterfacePtr<XML>::adopt(info->toXML());
    String name;
    info->getName(name);
    Fuzz::require(tree->getText("@name") == name, "the class has the constructor's name");
    checkPrinted(*tree);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::startLibrary();
    checkFields(Fuzz::asText(data, size));

    // A row's text is of bytes and ends at the first 0.
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const char* descriptor = bytes.c_str();
    const LivePropertyInfo rows[] = {
        {"", PropertyID::Constructor, int(InfoType::Method), descriptor},
        {"both", 1, int(InfoType::CallableReadWrite), descriptor},
        {nullptr, 0, 0, nullptr}};
    LivePropertyManager manager(rows);
    checkRecord(manager, descriptor);
    checkClass(manager);
    return 0;
}
