#pragma once

#include "Holdings.h"
#include "Native.h"

#include <map>
#include <unordered_map>

namespace krhost {

/// Live objects as script objects.
///
/// The script object is a proxy whose traps (`ObjectTraps.cpp`) ask the live object. There is one
/// per live object: a table, which keeps nothing alive, finds it again. Its target, an object that
/// scripts never see, holds one counted reference; when the engine collects it, its finalizer takes
/// the entry out of the table and drops the reference.
class ObjectBridge {
public:
    explicit ObjectBridge(ScriptEngine& engine) : engine_(engine) {}

    void install(CallFrame& frame);
    /// Defines a global constructor for the objects of a registered factory.
    void defineConstructor(CallFrame& frame, const char* className);

    /// Pushes the script object that stands for `object`; a `ScriptObject` is the script's own
    /// again.
    void push(CallFrame& frame, KrCore::LiveObject& object);

    /// The live object that the script value at a stack index stands for, or null. Never jumps.
    KrCore::LiveObject* find(duk_context* context, duk_idx_t index) const;

    /// When the value is a function that stands for a callable property, reads the property
    /// instead.
    bool readCallableProperty(CallFrame& frame, duk_idx_t index, KrCore::Variant& value);

    std::size_t count() const { return held_.size(); }

private:
    friend class ObjectTraps;
    friend class RingCollector;

    void pushNew(CallFrame& frame, KrCore::LiveObject& object);
    void pushPrototype(CallFrame& frame, const KrCore::String& className);
    static duk_ret_t finalize(duk_context* context);
    static duk_ret_t construct(CallFrame& frame);

    ScriptEngine& engine_;
    std::unordered_map<const KrCore::LiveObject*, HeldObject*> held_;
    std::map<KrCore::String, void*> prototypes_; // by class name; the stash keeps them alive
    void* basePrototype_ = nullptr;              // of all of them
    void* traps_ = nullptr;                      // the proxies' handler
    void* finalizer_ = nullptr;
};

} // namespace krhost
