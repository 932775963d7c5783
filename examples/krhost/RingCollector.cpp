#include "RingCollector.h"

#include "ElementTraps.h"
#include "MethodBridge.h"
#include "ScriptEngine.h"
#include "ScriptObject.h"

#include <krcore/containers/Array.h>

namespace krhost {

using namespace KrCore;

namespace {

/// Where the target of a proxy keeps the script objects in its properties, by property ID.
constexpr char noteKey[] = "\xFF"
                           "note";
/// Where it keeps those in its elements, for as long as collecting takes.
constexpr char elementNoteKey[] = "\xFF"
                                  "elements";

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
        if (held && candidate->getRefCount() == 1) countReferences(*candidate);
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
        if (held->hasNote || held->hasElementNote) candidates_.push_back(held->object.get());
    }
    for (LiveObject* candidate : candidates_) {
        HeldObject* held = heldBy(candidate);
        if (!held) continue;
        duk_push_heapptr(frame.context, held->scriptObject);
        MethodBridge::forget(frame.context, -1);
        duk_pop(frame.context);
        if (held->hasElementNote) noteElements(frame, *held);
    }
    engine_.releaseDropped();
}

/// Arrays that share their elements hold them with one reference, which would be counted as this
/// object's alone; so it stops sharing first.
void RingCollector::noteElements(CallFrame& frame, HeldObject& held) {
    duk_context* context = frame.context;
    const Array& elements = *held.elements;
    if (elements.length() > ElementTraps::maxSearched) return;
    held.elements->makeUnique();
    duk_push_heapptr(context, held.scriptObject);
    duk_push_array(context);
    duk_uarridx_t count = 0;
    for (unsigned i = 0; i < elements.length(); ++i) {
        const Variant* element = elements.isDefined(i) ? elements.get(i) : nullptr;
        LiveObject* object = element ? element->getLiveObject() : nullptr;
        if (!dynamic_cast<ScriptObject*>(object)) continue;
        engine_.objects().push(frame, *object);
        duk_put_prop_index(context, -2, count++);
    }
    held.hasElementNote = count > 0;
    duk_put_prop_literal(context, -2, elementNoteKey);
    duk_pop(context);
}

/// Calls `action` with each script object in the notes that the library still has; it is on top of
/// the stack then.
template <class Action>
void RingCollector::forEachNote(const HeldObject& held, Action action) {
    duk_context* context = engine_.context();
    duk_push_heapptr(context, held.scriptObject);
    for (const char* key : {noteKey, elementNoteKey}) {
        if (duk_get_prop_string(context, -1, key)) {
            duk_enum(context, -1, DUK_ENUM_OWN_PROPERTIES_ONLY);
            while (duk_next(context, -1, 1)) {
                const auto& known = engine_.scriptObjects();
                const auto found = known.find(duk_get_heapptr(context, -1));
                if (found != known.end()) action(*found->second);
                duk_pop_2(context);
            }
            duk_pop(context);
        }
        duk_pop(context);
    }
    duk_pop(context);
}

void RingCollector::countReferences(LiveObject& candidate) {
    forEachNote(*heldBy(&candidate), [this](ScriptObject& object) { ++references_[&object]; });
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
        forEachNote(*held, [context](ScriptObject& object) {
            if (!object.isKept()) object.keep(context, -1);
        });
        duk_push_heapptr(context, held->scriptObject);
        duk_del_prop_literal(context, -1, elementNoteKey);
        duk_pop(context);
    }
}

} // namespace krhost
