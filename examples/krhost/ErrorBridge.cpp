#include "ErrorBridge.h"

#include "KeptValue.h"
#include "ScriptEngine.h"
#include "TextBridge.h"

#include <krcore/foundation/Cloneable.h>

#include <utility>

namespace krhost {

using KrCore::Error;
using KrCore::String;
namespace ErrorCode = KrCore::ErrorCode;

namespace {

/// The script value that was thrown, on its way through the library.
class ThrownValue : public KrCore::Cloneable {
public:
    explicit ThrownValue(std::shared_ptr<KeptValue> value) : value_(std::move(value)) {}

    int clone(Cloneable** result, bool) const override {
        *result = new ThrownValue(value_);
        return ErrorCode::Ok;
    }
    const KeptValue& value() const { return *value_; }

private:
    std::shared_ptr<KeptValue> value_;
};

/// `new IOError(message)`: an error made by the engine, so that it knows file and line, under the
/// prototype of the class. Works without `new` as well.
duk_ret_t constructError(duk_context* context) {
    ScriptEngine::of(context).errors().pushErrorClass(context);
    duk_dup(context, 0);
    duk_new(context, 1);
    duk_push_current_function(context);
    duk_get_prop_literal(context, -1, "prototype");
    duk_set_prototype(context, -3);
    duk_pop(context);
    return 1;
}

constexpr const char* languageClasses[] = {
    "Error", "TypeError", "SyntaxError", "ReferenceError", "RangeError", "EvalError", "URIError"};

/// Like the properties the language itself defines: not listed.
constexpr duk_uint_t plainProperty = DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_SET_WRITABLE |
                                     DUK_DEFPROP_CLEAR_ENUMERABLE | DUK_DEFPROP_SET_CONFIGURABLE;

int numberOf(duk_context* context, duk_idx_t index) {
    int number = 0;
    if (duk_is_object(context, index)) {
        duk_get_prop_literal(context, index, "number");
        if (duk_is_number(context, -1)) number = duk_get_int(context, -1);
        duk_pop(context);
    }
    return number != 0 ? number : int(ErrorCode::UncaughtScriptException);
}

} // namespace

void ErrorBridge::install(CallFrame& frame) {
    duk_push_heap_stash(frame.context);
    duk_push_bare_object(frame.context);
    duk_put_prop_literal(frame.context, -2, "errorClasses");
    duk_pop(frame.context);
    for (const char* name : languageClasses) {
        frame.text = name;
        duk_get_global_string(frame.context, name);
        rememberClass(frame, frame.text);
        duk_pop(frame.context);
    }
    errorClass_ = classes_.at("Error");
    for (const char* name : addedClasses) {
        frame.text = name;
        defineClass(frame, frame.text);
    }
}

void ErrorBridge::rememberClass(CallFrame& frame, const String& name) {
    duk_context* context = frame.context;
    duk_push_heap_stash(context);
    duk_get_prop_literal(context, -1, "errorClasses");
    TextBridge::push(context, name);
    duk_dup(context, -4);
    duk_put_prop(context, -3);
    duk_pop_2(context);
    classes_[name] = duk_get_heapptr(context, -1);
}

void ErrorBridge::defineClass(CallFrame& frame, const String& name) {
    duk_context* context = frame.context;
    duk_push_c_function(context, constructError, 1);
    duk_push_literal(context, "name");
    TextBridge::push(context, name);
    duk_def_prop(context, -3, DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_FORCE);

    duk_push_object(context); // the prototype
    pushErrorClass(context);
    duk_get_prop_literal(context, -1, "prototype");
    duk_set_prototype(context, -3);
    duk_pop(context);
    TextBridge::push(context, name);
    duk_put_prop_literal(context, -2, "name");
    duk_dup(context, -2);
    duk_put_prop_literal(context, -2, "constructor");
    duk_put_prop_literal(context, -2, "prototype");

    rememberClass(frame, name);
    duk_push_global_object(context);
    TextBridge::push(context, name);
    duk_dup(context, -3);
    duk_def_prop(context, -3, plainProperty);
    duk_pop_2(context);
}

void ErrorBridge::pushErrorClass(duk_context* context) const {
    duk_push_heapptr(context, errorClass_);
}

void ErrorBridge::pushClass(CallFrame& frame, const String& name) {
    if (!classes_.contains(name)) defineClass(frame, name);
    duk_push_heapptr(frame.context, classes_.at(name));
}

duk_ret_t ErrorBridge::raise(CallFrame& frame) {
    if (pushOriginal(frame)) return duk_throw(frame.context);
    Error::getErrorDefinition(frame.error.getCode(), frame.text, frame.name);
    pushClass(frame, frame.name);
    frame.error.getFullText(frame.text);
    TextBridge::push(frame.context, frame.text);
    duk_new(frame.context, 1);
    duk_push_literal(frame.context, "number");
    duk_push_int(frame.context, frame.error.getCode());
    duk_def_prop(frame.context, -3, plainProperty);
    return duk_throw(frame.context);
}

duk_ret_t ErrorBridge::raise(CallFrame& frame, int code) {
    if (frame.error.getCode() == ErrorCode::Ok) frame.error.push(code);
    return raise(frame);
}

duk_ret_t ErrorBridge::raise(CallFrame& frame, int code, const char* argument) {
    if (frame.error.getCode() == ErrorCode::Ok) {
        frame.text = argument;
        frame.error.push(code, frame.text, nullptr, true);
    }
    return raise(frame);
}

bool ErrorBridge::pushOriginal(CallFrame& frame) {
    const KrCore::ErrorInfo* newest = frame.error.getError();
    if (!newest) return false;
    const auto* thrown = dynamic_cast<const ThrownValue*>(newest->getData());
    return thrown && thrown->value().push(frame.context);
}

void ErrorBridge::record(CallFrame& frame, duk_idx_t index) {
    duk_context* context = frame.context;
    index = duk_normalize_index(context, index);
    const int code = numberOf(context, index);
    if (code == ErrorCode::UncaughtScriptException) {
        duk_dup(context, index);
        duk_safe_to_string(context, -1);
    } else {
        duk_get_prop_literal(context, index, "message");
        duk_to_string(context, -1);
    }
    TextBridge::read(context, -1, frame.text);
    duk_pop(context);

    frame.error.erase();
    pending_ = std::make_shared<KeptValue>();
    pending_->keep(engine_.keptValues(), context, index);
    const ThrownValue thrown(std::exchange(pending_, nullptr));
    frame.error.push(code, frame.text, &thrown, code == ErrorCode::UncaughtScriptException);
}

} // namespace krhost
