#pragma once

#include <krcore/containers/Array.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LiveObject.h>
#include <krcore/text/String.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>

#include <duktape.h>

namespace krhost {

class ScriptEngine;

/// What one crossing between script and library keeps in C++.
///
/// The script engine reports errors by a jump over the functions in between, whose destructors do
/// not run. So a crossing has two halves. `runNative` and `runProtected` own the frame and run no
/// engine code of their own. The body, which runs engine code, keeps nothing with a destructor in
/// its variables while it does: it works in the fields of the frame. All functions that take a
/// frame follow that rule, and may leave by such a jump unless they say otherwise.
struct CallFrame {
    explicit CallFrame(ScriptEngine& owner);
    CallFrame(const CallFrame&) = delete;
    CallFrame& operator=(const CallFrame&) = delete;

    ScriptEngine& engine;
    duk_context* context;
    KrCore::String name;
    KrCore::Variant value;
    KrCore::Array arguments;
    KrCore::SimpleArray ids;
    KrCore::Error error;
    KrCore::String text; ///< For whoever needs it for a moment.
    /// An object on its way into the script, which does not hold it yet.
    KrCore::InterfacePtr<KrCore::LiveObject> made;
};

/// Runs engine code on the frame. Returns the number of values it leaves on the stack, 0 or 1.
using NativeBody = duk_ret_t (*)(CallFrame& frame);

/// Runs `body` and leaves one value on the stack: its result (true), or the script error it left by
/// (false). Memory exhausted in the library becomes a script error too. Never jumps.
bool runProtected(CallFrame& frame, NativeBody body);

/// A whole native function: makes the frame, runs `body`, and ends by returning its result or by
/// throwing its error, once the frame is gone.
duk_ret_t runNative(duk_context* context, NativeBody body);

} // namespace krhost
