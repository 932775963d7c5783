#pragma once

#include "Holdings.h"
#include "Native.h"

namespace krhost {

/// Methods of live objects as script functions. A function holds its object and the method's ID, so
/// `var f = obj.resize; f(1, 2)` works; called on another live object, that one is the `this` of
/// the library's `apply`. As long as the name keeps its meaning, `obj.resize` is always the same
/// function.
///
/// A property that can also be called reads as a function too. It stands for the value wherever the
/// script converts it (`obj.title + "!"`) or hands it to a live object.
class MethodBridge {
public:
    static void install(CallFrame& frame);

    /// Pushes the function for a callable property of the object behind a proxy's target.
    static duk_ret_t push(CallFrame& frame, duk_idx_t target, duk_idx_t name,
                          const Resolved& property);

    /// Forgets the functions made for the object at a stack index; those in use go on working.
    static void forget(duk_context* context, duk_idx_t object);

    /// The holding of the function at a stack index, or null.
    static HeldMethod* heldMethod(duk_context* context, duk_idx_t index);

private:
    static void pushNew(CallFrame& frame, KrCore::LiveObject& object, const Resolved& property);
    static duk_ret_t finalize(duk_context* context);
    static duk_ret_t call(CallFrame& frame);
    static duk_ret_t read(CallFrame& frame);
    static duk_ret_t readAsText(CallFrame& frame);
};

} // namespace krhost
