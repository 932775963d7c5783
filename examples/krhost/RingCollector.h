#pragma once

#include "Holdings.h"
#include "Native.h"
#include "ScriptObject.h"

#include <krcore/foundation/InterfacePtr.h>

#include <unordered_map>
#include <vector>

namespace krhost {

/// Collects rings that neither side can see as a whole: a function that the host keeps in a
/// property of a live object, and that itself refers to this object.
///
/// Each object's proxy notes the script objects that were written into its properties. When only
/// the script holds a live object, and only such properties hold a script object, the engine's
/// collector is shown the note in the place of the host's reference, and then sees the ring.
///
/// Elements move about, so those that an object keeps itself (`LiveArray`) are noted when
/// collecting starts. Script objects in elements that a component or listener keeps are not looked
/// for: others may have them, too.
class RingCollector {
public:
    explicit RingCollector(ScriptEngine& engine) : engine_(engine) {}

    /// Notes that `frame.value`, which is also on the stack, was written into a property.
    static void note(CallFrame& frame, HeldObject& held, duk_idx_t target, duk_idx_t value, int id);

    /// Runs the engine's collector, rings included.
    void collect(CallFrame& frame);

private:
    void findCandidates(CallFrame& frame);
    void noteElements(CallFrame& frame, HeldObject& held);
    void countReferences(KrCore::LiveObject& candidate);
    template <class Action>
    void forEachNote(const HeldObject& held, Action action);
    void letGo();
    void keepSurvivors(CallFrame& frame);
    HeldObject* heldBy(const KrCore::LiveObject* object) const;

    ScriptEngine& engine_;
    std::vector<KrCore::LiveObject*> candidates_; // may be gone: looked up before each use
    std::unordered_map<ScriptObject*, int> references_;
    std::vector<KrCore::InterfacePtr<ScriptObject>> letGo_;
};

} // namespace krhost
