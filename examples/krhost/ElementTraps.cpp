#include "ElementTraps.h"

#include "ScriptEngine.h"
#include "ScriptObject.h"

#include <krcore/containers/Array.h>

#include <cmath>
#include <string_view>

namespace krhost {

using namespace KrCore;

namespace {

constexpr double maxIndex = 4294967294;

bool isIndexNumber(double number, unsigned& index) {
    if (!(number >= 0 && number <= maxIndex) || number != std::floor(number)) return false;
    index = static_cast<unsigned>(number);
    return true;
}

bool isIndexText(std::string_view text, unsigned& index) {
    constexpr std::size_t maxDigits = 10;
    if (text.empty() || text.size() > maxDigits || (text[0] == '0' && text.size() > 1))
        return false;
    double number = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9') return false;
        number = number * 10 + (digit - '0');
    }
    return isIndexNumber(number, index);
}

} // namespace

bool ElementTraps::isElement(duk_context* context, duk_idx_t key, const HeldObject& held,
                             unsigned& index) {
    if (!held.collection) return false;
    if (duk_is_number(context, key)) return isIndexNumber(duk_get_number(context, key), index);
    duk_size_t size = 0;
    const char* text = duk_get_lstring(context, key, &size); // null for what is no text
    return text && isIndexText({text, size}, index);
}

duk_ret_t ElementTraps::refuse(CallFrame& frame, const HeldObject& held, unsigned index, int code) {
    held.object->setError(code, static_cast<int>(index), &frame.error, true);
    return frame.engine.errors().raise(frame, code);
}

duk_ret_t ElementTraps::get(CallFrame& frame, const HeldObject& held, unsigned index) {
    const int code =
        frame.engine.calls().getByIndex(*held.collection, index, frame.value, &frame.error);
    if (code != ErrorCode::Ok) return refuse(frame, held, index, code);
    frame.engine.values().push(frame, frame.value);
    return 1;
}

duk_ret_t ElementTraps::set(CallFrame& frame, HeldObject& held, unsigned index, duk_idx_t value) {
    frame.engine.values().read(frame, value, frame.value);
    const int code =
        frame.engine.calls().putByIndex(*held.collection, index, frame.value, &frame.error);
    if (code != ErrorCode::Ok) return refuse(frame, held, index, code);
    if (held.elements && dynamic_cast<ScriptObject*>(frame.value.getLiveObject()))
        held.hasElementNote = true;
    duk_push_true(frame.context);
    return 1;
}

bool ElementTraps::isThere(const HeldObject& held, unsigned index) {
    return !held.elements || held.elements->isDefined(index);
}

duk_ret_t ElementTraps::has(CallFrame& frame, const HeldObject& held, unsigned index) {
    unsigned length = 0;
    const int code = frame.engine.calls().getLength(*held.collection, length);
    if (code != ErrorCode::Ok) return refuse(frame, held, index, code);
    duk_push_boolean(frame.context, index < length && isThere(held, index));
    return 1;
}

duk_ret_t ElementTraps::remove(CallFrame& frame, const HeldObject& held, unsigned index) {
    int code = frame.engine.calls().deleteByIndex(*held.collection, index);
    // An array leaves deleting to its listeners, who need not be there.
    if (code == ErrorCode::OutOfRange && held.elements) code = clear(frame, held, index);
    if (code != ErrorCode::Ok) return refuse(frame, held, index, code);
    duk_push_true(frame.context);
    return 1;
}

int ElementTraps::clear(CallFrame& frame, const HeldObject& held, unsigned index) {
    if (index >= held.elements->length() || !isThere(held, index)) return ErrorCode::Ok;
    frame.value.erase();
    return frame.engine.calls().putByIndex(*held.collection, index, frame.value, &frame.error);
}

duk_ret_t ElementTraps::refuseToList(CallFrame& frame) {
    return frame.engine.errors().raise(frame, ErrorCode::OutOfRange, "A list of so many elements");
}

unsigned ElementTraps::lengthToList(CallFrame& frame, const HeldObject& held) {
    if (!held.collection) return 0;
    unsigned length = 0;
    const int code = frame.engine.calls().getLength(*held.collection, length);
    if (code != ErrorCode::Ok) frame.engine.errors().raise(frame, code);
    if (length > (held.elements ? maxSearched : maxListed)) refuseToList(frame);
    return length;
}

} // namespace krhost
