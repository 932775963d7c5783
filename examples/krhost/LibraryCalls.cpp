#include "LibraryCalls.h"

#include "TextBridge.h"

#include <krcore/containers/Array.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/ClassInfo.h>
#include <krcore/live/LiveCollection.h>
#include <krcore/live/PropertyFlags.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>
#include <krcore/xml/XML.h>

#include <cstdio>

namespace krhost {

using namespace KrCore;

namespace {

std::string quoted(const String& text) { return "\"" + TextBridge::toUtf8(text) + "\""; }

std::string describe(const Variant& value) {
    switch (value.getType()) {
    case VariantType::String:
        return quoted(value.getString());
    // Asking the object for its text would be one more call, which nobody made.
    case VariantType::LiveObject:
        return "[" + TextBridge::toUtf8(value.getLiveObject()->getClassName()) + "]";
    case VariantType::Array:
        return "array of " + std::to_string(value.getArray()->length());
    default:
        return TextBridge::toUtf8(value.getString());
    }
}

std::string describe(const Array& args) {
    std::string text;
    for (unsigned i = 0; i < args.length(); ++i)
        text += (i ? ", " : "") + describe(args[i]);
    return text;
}

std::string hex(int id) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", static_cast<unsigned>(id));
    return text;
}

/// Small numbers and large ones as they are usually written.
std::string idText(int id) { return id >= 0 && id < 10000 ? std::to_string(id) : hex(id); }

std::string describe(int id, InfoType kind) {
    return "id " + idText(id) + ", kind " + std::to_string(static_cast<int>(kind));
}

} // namespace

void LibraryCalls::print(const LiveObject& object, const std::string& call, int code,
                         const std::string& answer) const {
    std::string line = "> " + TextBridge::toUtf8(object.getClassName()) + "." + call + " = " +
                       std::to_string(code);
    if (code == ErrorCode::Ok && !answer.empty()) line += ": " + answer;
    std::fprintf(stderr, "%s\n", line.c_str());
}

int LibraryCalls::create(const String& className, LiveObject*& result) const {
    const int code = LiveObject::create(&result, className, factoryFlags);
    if (trace_) {
        std::fprintf(stderr, "> create(%s) = %d\n", quoted(className).c_str(), code);
    }
    return code;
}

int LibraryCalls::initialize(LiveObject& object, const Array& args, Error* err) const {
    const int code = object.initialize(args, err);
    if (trace_) print(object, "initialize(" + describe(args) + ")", code);
    return code;
}

int LibraryCalls::getIDForName(const LiveObject& object, const String& name, int& id,
                               InfoType& kind) const {
    const int code = object.getIDForName(name, id, kind, RequestFlag::Library);
    if (trace_) print(object, "getIDForName(" + quoted(name) + ")", code, describe(id, kind));
    return code;
}

int LibraryCalls::createIDForName(LiveObject& object, const String& name, int& id) const {
    const int code = object.createIDForName(name, id, static_cast<int>(InfoType::ReadWrite));
    if (trace_) print(object, "createIDForName(" + quoted(name) + ")", code, "id " + idText(id));
    return code;
}

int LibraryCalls::getNameForID(const LiveObject& object, int id, String& name) const {
    const int code = object.getNameForID(id, name, RequestFlag::Library);
    if (trace_) print(object, "getNameForID(" + idText(id) + ")", code, quoted(name));
    return code;
}

int LibraryCalls::get(const LiveObject& object, int id, Variant& result, Error* err) const {
    const int code = object.get(id, result, err);
    if (trace_) print(object, "get(" + idText(id) + ")", code, describe(result));
    return code;
}

int LibraryCalls::put(LiveObject& object, int id, const Variant& value, Error* err) const {
    const int code = object.put(id, value, err);
    if (trace_) print(object, "put(" + idText(id) + ", " + describe(value) + ")", code);
    return code;
}

int LibraryCalls::call(LiveObject& object, LiveObject& self, int id, const Array& args,
                       Variant& result, Error* err) const {
    const bool isOwn = &object == &self;
    const int code =
        isOwn ? object.call(id, args, result, err) : object.apply(self, id, args, result, err);
    if (trace_) {
        const std::string head =
            isOwn ? "call(" : "apply([" + TextBridge::toUtf8(self.getClassName()) + "], ";
        print(object, head + idText(id) + ", (" + describe(args) + "))", code, describe(result));
    }
    return code;
}

int LibraryCalls::deleteID(LiveObject& object, int id) const {
    const int code = object.deleteID(id);
    if (trace_) print(object, "deleteID(" + idText(id) + ")", code);
    return code;
}

int LibraryCalls::enumerate(const LiveObject& object, SimpleArray& ids) const {
    const int code = object.enumerate(ids, RequestFlag::Library | RequestFlag::ReadWrite |
                                               RequestFlag::ReadOnly);
    if (trace_) print(object, "enumerate()", code, std::to_string(ids.length()) + " ids");
    return code;
}

int LibraryCalls::getLength(const LiveCollection& collection, unsigned& length) const {
    const int code = collection.getLength(length);
    if (trace_) print(collection, "getLength()", code, std::to_string(length));
    return code;
}

int LibraryCalls::getByIndex(const LiveCollection& collection, unsigned index, Variant& result,
                             Error* err) const {
    const int code = collection.getByIndex(index, result, err);
    if (trace_)
        print(collection, "getByIndex(" + std::to_string(index) + ")", code, describe(result));
    return code;
}

int LibraryCalls::putByIndex(LiveCollection& collection, unsigned index, const Variant& value,
                             Error* err) const {
    const int code = collection.putByIndex(index, value, err);
    if (trace_)
        print(collection, "putByIndex(" + std::to_string(index) + ", " + describe(value) + ")",
              code);
    return code;
}

int LibraryCalls::deleteByIndex(LiveCollection& collection, unsigned index) const {
    const int code = collection.deleteByIndex(index);
    if (trace_) print(collection, "deleteByIndex(" + std::to_string(index) + ")", code);
    return code;
}

int LibraryCalls::describeClass(const LiveObject& object, String& result) const {
    const auto info =
        InterfacePtr<const ClassInfo>::adopt(object.getClassInfo(RequestFlag::Library));
    const int code = info ? ErrorCode::Ok : ErrorCode::ObjectInvalid;
    if (info) result = InterfacePtr<XML>::adopt(info->toXML())->toXMLString(2);
    if (trace_) print(object, "getClassInfo()", code, std::to_string(result.length()) + " units");
    return code;
}

int LibraryCalls::toString(const LiveObject& object, String& result) const {
    const int code = object.toString(result);
    if (trace_) print(object, "toString()", code, quoted(result));
    return code;
}

int LibraryCalls::valueOf(const LiveObject& object, Variant& result) const {
    const int code = object.valueOf(result);
    if (trace_) print(object, "valueOf()", code, describe(result));
    return code;
}

void LibraryCalls::released(const LiveObject& object) const {
    if (!trace_) return;
    std::fprintf(stderr, "> %s.release()\n", TextBridge::toUtf8(object.getClassName()).c_str());
}

} // namespace krhost
