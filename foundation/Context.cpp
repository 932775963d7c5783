#include "foundation/ContextList.h"

#include "foundation/ModuleHooks.h"
#include "foundation/SpinLock.h"

#include <krcore/foundation/InitTerm.h>
#include <krcore/foundation/Root.h>

#include <cstdlib>
#include <mutex>
#include <new>
#include <utility>

namespace KrCore {

namespace {

/// All contexts, and the counts that belong to none of them.
struct ContextList {
    SpinLock lock;
    Context* first = nullptr;
    HeapTotals departed;
};
constinit ContextList contexts;

void initialise(Context& context) {
    resetCache(context.cache, SmallBlockCache::defaultSize);
    context.startTime = runtime.startTime;
    context.lapBase = runtime.startTime;
    context.libraryLock = runtime.globals.locks;
}

void link(Context& context) {
    const std::lock_guard guard(contexts.lock);
    context.next = contexts.first;
    if (context.next) context.next->previous = &context;
    contexts.first = &context;
}

void unlink(Context& context) {
    const std::lock_guard guard(contexts.lock);
    // Heap calls in other threads would go on using it.
    if (runtime.globals.context == &context) runtime.globals.context = nullptr;
    (context.previous ? context.previous->next : contexts.first) = context.next;
    if (context.next) context.next->previous = context.previous;
    contexts.departed.blocks += context.cache.blocks.get();
    contexts.departed.bytes += context.cache.bytes.get();
}

/// Null when there is no memory. Comes from malloc itself, because the heap works on it.
Context* makeContext() {
    void* place = std::malloc(sizeof(Context));
    if (!place) return nullptr;
    auto* context = new (place) Context;
    initialise(*context);
    link(*context);
    return context;
}

/// Ends everything the context holds; the record itself and its counts remain.
void emptyContext(Context& context) {
    flushCache(context.cache);
    resetCache(context.cache, 0);
    delete std::exchange(context.extension, nullptr);
    endModulesOf(context);
}

void freeContext(Context* context) {
    unlink(*context);
    std::free(context);
}

/// A retired record has nothing left to end, and ending it must not touch a library that is down.
void endContext(Context* context) {
    if (!context->isRetired) emptyContext(*context);
    freeContext(context);
}

// The slot has its value back while the context ends, since what it holds is freed through the
// heap.
void endThread(void* value) {
    auto* context = static_cast<Context*>(value);
    Platform::setThreadSlot(context);
    endContext(context);
    Platform::setThreadSlot(nullptr);
}

/// Its thread still runs while the library goes down. Whatever it holds goes now, in the thread
/// that shuts down; the thread finds the empty record later.
void retire(Context& context) {
    emptyContext(context);
    context.isRetired = true;
}

void revive(Context& context) {
    context.isRetired = false;
    initialise(context);
}

} // namespace

Context* findContext() {
    if (!InitTerm::isInitialized()) return nullptr;
    Context* context = presentContext();
    if (!context) {
        context = makeContext();
        if (context && !Platform::setThreadSlot(context)) {
            freeContext(context);
            context = nullptr;
        }
    } else if (context->isRetired) {
        revive(*context);
    }
    return context;
}

Context* currentContext() {
    Context* context = presentContext();
    if (context && !context->isRetired) [[likely]]
        return context;
    context = findContext();
    if (!context && InitTerm::isInitialized()) throw OutOfMemory();
    return context;
}

void splitContexts() {
    if (!runtime.singleContext) return;
    auto* former = static_cast<Context*>(Platform::threadSlot());
    if (!Platform::setThreadSlot(runtime.singleContext)) throw OutOfMemory();
    // A record from an earlier life of the library.
    if (former) freeContext(former);
    runtime.singleContext = nullptr;
}

void countForNobody(std::uint32_t blocks, std::uint32_t bytes) {
    const std::lock_guard guard(contexts.lock);
    contexts.departed.blocks += blocks;
    contexts.departed.bytes += bytes;
}

HeapTotals heapTotals() {
    const std::lock_guard guard(contexts.lock);
    HeapTotals totals = contexts.departed;
    for (const Context* context = contexts.first; context; context = context->next) {
        totals.blocks += context->cache.blocks.get();
        totals.bytes += context->cache.bytes.get();
        for (std::uint32_t index = 0; index < SmallBlockCache::classCount; ++index) {
            const std::uint32_t cached = context->cache.classes[index].count();
            totals.blocks -= cached;
            totals.bytes -= cached * SmallBlockCache::classGross(index);
        }
    }
    return totals;
}

void markRemainingBlocks() {
    if (heapTotals().blocks != 0) countForNobody(1, 0);
}

void startContexts() {
    if (!Platform::openThreadSlot(endThread)) throw OutOfMemory();
    runtime.singleContext = makeContext();
    if (!runtime.singleContext) throw OutOfMemory();
}

void stopContexts() {
    Context* own = presentContext();
    for (Context* context = contexts.first; context; context = context->next) {
        if (context != own && !context->isRetired) retire(*context);
    }
    if (own) {
        endContext(own);
        if (!runtime.singleContext) Platform::setThreadSlot(nullptr);
        runtime.singleContext = nullptr;
    }
    // The slot has to stay for threads that still have a record to free.
    if (!contexts.first) Platform::closeThreadSlot();
}

} // namespace KrCore
