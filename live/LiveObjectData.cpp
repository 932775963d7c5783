#include "live/LiveObjectData.h"

#include "foundation/Context.h"
#include "live/PointerWord.h"

#include <krcore/live/LiveComponent.h>

namespace KrCore {

LiveObjectData::~LiveObjectData() {
    properties.removeAll(true);
    for (int i = components.length() - 1; i >= 0; --i)
        pointerOf<LiveComponent>(components.getData()[i])->release();
    delete value;
}

namespace {

/// Null when there is no memory for a context: then nothing is deferred.
Context* contextForEnding() noexcept {
    try {
        return currentContext();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

void LiveObjectData::end(LiveObjectData* data) {
    if (!data) return;
    Context* context = contextForEnding();
    if (!context) {
        delete data;
        return;
    }
    data->nextEnding = context->endingObjects;
    context->endingObjects = data;
    if (context->isEndingObjects) return;
    context->isEndingObjects = true;
    while (LiveObjectData* next = context->endingObjects) {
        context->endingObjects = next->nextEnding;
        delete next;
    }
    context->isEndingObjects = false;
}

} // namespace KrCore
