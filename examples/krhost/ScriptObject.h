#pragma once

#include "KeptValue.h"

#include <krcore/live/LiveObject.h>

namespace krhost {

class ScriptEngine;

/// An object of the script in the host's hands. The host stores it in properties and passes it on
/// like any live object; back in the script it is the very object it was made of. Of a function, of
/// class "Function", the host can call the method `call`; any other object, of class "Object", is
/// only kept.
///
/// It is invalid once the script engine has ended.
class ScriptObject : public KrCore::LiveObject {
public:
    /// The ID of the method "call": runs the function with the arguments, and without a `this`.
    static constexpr int callID = 1;

    ScriptObject(ScriptEngine& engine, void* object, bool isFunction);

    /// Keeps the script object, which is at a stack index. May leave by a script error.
    void keep(duk_context* context, duk_idx_t index);

    ScriptEngine* engine() const { return engine_; }
    void pushScriptObject(duk_context* context) const { kept_.push(context); }
    /// The engine is about to end.
    void detach();

    /// For the collection of rings: leaves the script object to those in the engine who refer to
    /// it, until it is kept again or has to be given up.
    void letGo() { kept_.letGo(); }
    bool isKept() const { return kept_.isKept(); }
    void loseUnlessKept();

    KrCore::InfoType getType(int id) override;
    int apply(KrCore::LiveObject& self, int id, const KrCore::Array& args, KrCore::Variant& result,
              KrCore::Error* err) const override;

protected:
    ~ScriptObject() override;

private:
    ScriptEngine* engine_; // borrowed; null when it has ended
    void* object_;         // the script object, for the engine's table
    bool isFunction_;
    KeptValue kept_;
};

} // namespace krhost
