#pragma once

#include "Holdings.h"
#include "Native.h"

namespace krhost {

/// What happens when a script uses an object that stands for a live object: `obj.name`,
/// `obj.name = v`, `name in obj`, `delete obj.name` and `for (name in obj)`, each as calls on the
/// live object. What the live object does not know is looked for in the prototype of its class.
/// Indexes are left to `ElementTraps`.
class ObjectTraps {
public:
    /// Where the target of a proxy keeps its holding. Scripts cannot make such a key, and a proxy
    /// passes it on to its target without asking a trap.
    static constexpr char heldKey[] = "\xFF"
                                      "held";

    /// Adds the traps to the object on top of the stack.
    static void defineTraps(duk_context* context);
    /// Adds what all live objects inherit: toString, valueOf, hasOwnProperty.
    static void definePrototype(duk_context* context);

    /// The holding of the script value at a stack index, or null.
    static HeldObject* heldObject(duk_context* context, duk_idx_t index);

private:
    static HeldObject& target(CallFrame& frame);
    static int resolve(CallFrame& frame, HeldObject& held, Resolved& property);
    static void remember(CallFrame& frame, HeldObject& held, const Resolved& property);
    static bool isSymbol(CallFrame& frame);
    static duk_ret_t pushInherited(CallFrame& frame);
    static duk_ret_t refuseName(CallFrame& frame, int code);
    static duk_ret_t refuse(CallFrame& frame, const HeldObject& held, int id, int code);

    static duk_ret_t get(CallFrame& frame);
    static duk_ret_t set(CallFrame& frame);
    static duk_ret_t has(CallFrame& frame);
    static duk_ret_t deleteProperty(CallFrame& frame);
    static duk_ret_t ownKeys(CallFrame& frame);
    static duk_ret_t toString(CallFrame& frame);
    static duk_ret_t valueOf(CallFrame& frame);
    static duk_ret_t hasOwnProperty(CallFrame& frame);
    static KrCore::LiveObject& thisObject(CallFrame& frame);
};

} // namespace krhost
