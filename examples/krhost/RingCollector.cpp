#include "RingCollector.h"

#include "MethodBridge.h"
#include "ScriptEngine.h"
#include "ScriptObject.h"

namespace krhost {

using namespace KrCore;

namespace {

/// Where the target of a proxy keeps the script objects in its properties, by property ID.
constexpr char noteKey[] = "\xFF"
                           "note";

} // namespace

void RingCollector::note(CallFrame& frame, HeldObject& held, duk_idx_t target, duk_idx_t value,
                         int id) {
    const bool isScriptObject = dynamic_cast<ScriptObject*>(frame.value.getLiveObject()) != nullptr;
    if (!isScriptObject && !held.hasNote) return;
    duk_context* context = frame.context;
    if (!duk_get_prop_literal(context, target, noteKey)) {
        duk_push_bare_object(context);
        duk_dup_top(context);
        duk_put_prop_literal(context, target, noteKey);
        held.hasNote = true;
    }
    duk_push_int(context, id);
    if (isScriptObject) {
        duk_dup(context, value);
        duk_put_prop(context, -3);
    } else {
        duk_del_prop(context, -2);
    }
}

HeldObject* RingCollector::heldBy(const LiveObject* object) const {
    const auto& held = engine_.objects().held_;
    const auto found = held.find(object);
    return found != held.end() ? found->second : nullptr;
}

void RingCollector::collect(CallFrame& frame) {
    findCandidates(frame);
    for (LiveObject* candidate : candidates_) {
        const HeldObject* held = heldBy(candidate);
        if (held && candidate->getRefCount() == 1) countReferences(frame, *candidate);
    }
    letGo();
    duk_gc(frame.context, 0);
    keepSurvivors(frame);
    // What is not kept again has gone with its object; if the host has it yet, it is an invalid
    // one.
    for (const auto& object : letGo_)
        object->loseUnlessKept();
    letGo_.clear();
    candidates_.clear();
    references_.clear();
    engine_.releaseDropped();
    duk_gc(frame.context, 0); // frees what the first round could only finalize
}

/// The functions made for an object's methods hold the object too. Those nobody uses can be made
/// anew.
void RingCollector::findCandidates(CallFrame& frame) {
    candidates_.clear();
    for (const auto& [object, held] : engine_.objects().held_) {
        if (held->hasNote) candidates_.push_back(held->object.get());
    }
    for (LiveObject* candidate : candidates_) {
        const HeldObject* held = heldBy(candidate);
        if (!held) continue;
        duk_push_heapptr(frame.context, held->scriptObject);
        MethodBridge::forget(frame.context, -1);
        duk_pop(frame.context);
    }
    engine_.releaseDropped();
}

void RingCollector::countReferences(CallFrame& frame, LiveObject& candidate) {
    duk_context* context = frame.context;
    duk_push_heapptr(context, heldBy(&candidate)->scriptObject);
    if (duk_get_prop_literal(context, -1, noteKey)) {
        duk_enum(context, -1, DUK_ENUM_OWN_PROPERTIES_ONLY);
        while (duk_next(context, -1, 1)) {
            const auto& known = engine_.scriptObjects();
            const auto found = known.find(duk_get_heapptr(context, -1));
            if (found != known.end()) ++references_[found->second];
            duk_pop_2(context);
        }
        duk_pop(context);
    }
    duk_pop_2(context);
}

void RingCollector::letGo() {
    letGo_.reserve(references_.size());
    for (const auto& [object, count] : references_) {
        if (object->getRefCount() != count) continue; // the host has it somewhere else, too
        letGo_.emplace_back(object);
        object->letGo();
    }
    engine_.keptValues().releaseDropped(engine_.context());
}

void RingCollector::keepSurvivors(CallFrame& frame) {
    duk_context* context = frame.context;
    for (const LiveObject* candidate : candidates_) {
        const HeldObject* held = heldBy(candidate);
        if (!held) continue;
        duk_push_heapptr(context, held->scriptObject);
        if (duk_get_prop_literal(context, -1, noteKey)) {
            duk_enum(context, -1, DUK_ENUM_OWN_PROPERTIES_ONLY);
            while (duk_next(context, -1, 1)) {
                const auto& known = engine_.scriptObjects();
                const auto found = known.find(duk_get_heapptr(context, -1));
                if (found != known.end() && !found->second->isKept()) {
                    found->second->keep(context, -1);
                }
                duk_pop_2(context);
            }
            duk_pop(context);
        }
        duk_pop_2(context);
    }
}

} // namespace krhost
