#pragma once

#include "KeptValue.h"
#include "Native.h"

#include <map>
#include <memory>

namespace krhost {

/// Library errors as script errors and back.
///
/// A library error becomes an object of the class that the error table names for its code; classes
/// the script language does not have (`IOError`, `InternalError`, `FatalError`, and those of codes
/// a host defines) are made by `install` or when first met. `message` is the full text of the error
/// and `number` its code.
///
/// A script error becomes a library error with its `number` as code, 54 without one. It travels
/// along as the record's data: when it comes back to a script it is the very value that was thrown.
class ErrorBridge {
public:
    /// The classes that `install` adds to those of the language.
    static constexpr const char* addedClasses[] = {"InternalError", "FatalError", "IOError"};

    explicit ErrorBridge(ScriptEngine& engine) : engine_(engine) {}

    /// Defines the error classes as globals.
    void install(CallFrame& frame);

    /// Throws `frame.error`. Never returns; the result lets a body end with it.
    duk_ret_t raise(CallFrame& frame);
    /// Throws `frame.error` or, when nobody recorded one, the message of `code` as it stands.
    duk_ret_t raise(CallFrame& frame, int code);
    /// The same with an argument for the message.
    duk_ret_t raise(CallFrame& frame, int code, const char* argument);

    /// Pushes the language's own `Error`, whatever a script has put in the place of the global.
    void pushErrorClass(duk_context* context) const;

    /// Records the script value at a stack index, which was thrown, in `frame.error`.
    void record(CallFrame& frame, duk_idx_t index);

private:
    void pushClass(CallFrame& frame, const KrCore::String& name);
    void defineClass(CallFrame& frame, const KrCore::String& name);
    /// Notes the class on top of the stack and keeps it from being collected.
    void rememberClass(CallFrame& frame, const KrCore::String& name);
    bool pushOriginal(CallFrame& frame);

    ScriptEngine& engine_;
    std::map<KrCore::String, void*> classes_; // constructors, which the stash keeps alive
    void* errorClass_ = nullptr;              // the one of "Error"
    std::shared_ptr<KeptValue> pending_;      // while a thrown value is being kept
};

} // namespace krhost
