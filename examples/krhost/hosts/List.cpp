#include "hosts/List.h"

#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/values/Error.h>

namespace krhost {

using namespace KrCore;

namespace {

enum ListID : int { Length = 1, Add, Copy };

constexpr LivePropertyInfo listTable[] = {
    {"", PropertyID::Constructor, int(InfoType::Method),
     "List\tMakes a list of the arguments,...values:any;;;undefined\tThe elements"},
    {"length", Length, int(InfoType::ReadWrite),
     "number;0;4294967295\tThe number of elements\tA smaller number cuts off the last ones. A "
     "larger one adds undefined elements."},
    {"add", Add, int(InfoType::Method),
     "number\tAppends elements and gives the new length,...values:any\tThe new elements"},
    {"copy", Copy, int(InfoType::Method), "List\tA list of its own with the same elements"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts listTexts = {
    .description = "An array that the host keeps.",
    .details = "Its elements are any values, read and written by index. Methods of the language's "
               "own arrays work on it when they are called through Array.prototype.",
    .sample = "var list = new List(\"a\", \"b\");\n"
              "list[list.length] = \"c\";\n"
              "print(Array.prototype.join.call(list, \"-\")); // a-b-c",
    .elements = "any"};

} // namespace

List::List() : LiveArray("List", Length, false) { propertyManager = classProperties<listTable>(); }

int List::clone(LiveObject** result, bool deep) const {
    const auto copy = InterfacePtr<List>::adopt(new List);
    *result = nullptr;
    if (const int code = cloneContent(*copy, deep); code != ErrorCode::Ok) return code;
    copy->elements_ = elements_;
    copy->addRef();
    *result = copy.get();
    return ErrorCode::Ok;
}

int List::initialize(const Array& args, Error*) {
    elements_ = args;
    return ErrorCode::Ok;
}

InfoType List::getType(int id) {
    const InfoType kind = propertyManager->getType(id);
    return kind != InfoType::Unknown ? kind : LiveArray::getType(id);
}

const ClassInfo* List::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, listTexts);
}

int List::apply(LiveObject& self, int id, const Array& args, Variant& result, Error* err) const {
    result.erase();
    if (!isValid() || !self.isValid()) return setError(ErrorCode::ObjectInvalid, id, err, false);
    // A script may call a method of this class on anything.
    auto* list = dynamic_cast<List*>(&self);
    if (!list) return setError(ErrorCode::WrongClass, id, err, false);
    const int code = list->run(id, args, result, err);
    if (code == ErrorCode::NotFound) return LiveArray::apply(self, id, args, result, err);
    return setError(code, id, err, false);
}

int List::run(int id, const Array& args, Variant& result, Error* err) {
    switch (id) {
    case Add: {
        Array more(args);
        elements_ += more;
        result = elements_.length();
        return invokeAutostore(err);
    }
    case Copy: {
        LiveObject* copy = nullptr;
        const int code = clone(&copy, false);
        result = InterfacePtr<LiveObject>::adopt(copy).get();
        return code;
    }
    case Length:
        return ErrorCode::NotAFunction;
    default:
        return ErrorCode::NotFound;
    }
}

} // namespace krhost
