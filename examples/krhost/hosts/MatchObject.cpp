#include "hosts/MatchObject.h"

#include "hosts/CaptureObject.h"
#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"
#include "hosts/MatchSearch.h"

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/values/Error.h>

namespace krhost {

using namespace KrCore;

namespace {

enum MatchID : int { Length = 1, Index, Input, Captures };

constexpr int readOnly = int(InfoType::ReadOnly);

constexpr LivePropertyInfo matchTable[] = {
    {"length", Length, readOnly, "number;0\tThe number of groups and one for the whole match"},
    {"index", Index, readOnly, "number;0\tWhere the match begins in the text"},
    {"input", Input, readOnly, "string\tThe text that was searched"},
    {"captures", Captures, readOnly,
     "KrCapture;;;;array\tWhere the match and its groups lie\tUndefined for an unset group."},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts matchTexts = {
    .description = "A match of a regular expression.",
    .details = "Element 0 is the text of the match; the others are those of the groups; undefined "
               "for a group that took no part.",
    .sample = "var match = new KrRegExp(\"(\\\\w+)=(\\\\d+)\").exec(\"width=40\");\n"
              "print(match[1], match[2], match.captures[2].start); // width 40 6",
    .elements = "string",
    .hasReadOnlyElements = true};

} // namespace

MatchObject::MatchObject() : LiveArray("KrMatch", Length, true), captures_(1, Capture{0, 0}) {
    propertyManager = classProperties<matchTable>();
}

MatchObject::MatchObject(const MatchSearch& search) : MatchObject() {
    input_ = search.subject();
    captures_.clear();
    for (int group = 0; group < search.groupCount(); ++group) {
        elements_ += search.group(group);
        captures_.push_back(search.capture(group));
    }
}

int MatchObject::clone(LiveObject** result, bool deep) const {
    auto copy = InterfacePtr<MatchObject>::adopt(new MatchObject);
    copy->elements_ = elements_;
    copy->input_ = input_;
    copy->captures_ = captures_;
    const int code = cloneContent(*copy, deep);
    *result = code == ErrorCode::Ok ? copy.detach() : nullptr;
    return code;
}

InfoType MatchObject::getType(int id) {
    const InfoType kind = propertyManager->getType(id);
    return kind != InfoType::Unknown ? kind : LiveArray::getType(id);
}

const ClassInfo* MatchObject::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, matchTexts);
}

int MatchObject::get(int id, Variant& result, Error* err) const {
    if (!isValid()) return LiveArray::get(id, result, err);
    switch (id) {
    case Index:
        result = captures_[0].start;
        return ErrorCode::Ok;
    case Input:
        result = input_;
        return ErrorCode::Ok;
    case Captures:
        result = capturesAsObjects();
        return ErrorCode::Ok;
    default:
        return LiveArray::get(id, result, err);
    }
}

Array MatchObject::capturesAsObjects() const {
    Array objects(static_cast<unsigned>(captures_.size()));
    for (unsigned group = 0; group < objects.length(); ++group) {
        const Capture& capture = captures_[group];
        if (capture.start < 0) continue;
        objects[group] = InterfacePtr<CaptureObject>::adopt(new CaptureObject(capture)).get();
    }
    return objects;
}

} // namespace krhost
