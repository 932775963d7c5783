#include <krcore/foundation/InitTerm.h>

#include "foundation/AtomicCount.h"
#include "foundation/ContextList.h"
#include "foundation/LockSlots.h"
#include "foundation/LockTable.h"
#include "foundation/ModuleHooks.h"
#include "foundation/StartupSpec.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/Root.h>
#include <krcore/foundation/Time.h>

#include <cstdint>
#include <cstring>
#include <utility>

namespace KrCore {

namespace {

using Hook = void (*)();
using ContextHook = void (*)(Context&);

// One hook a line, so that modules come and go without disturbing each other.
// clang-format off

// In this order after startTime, which comes first because the start itself is timed.
constexpr Hook startHooks[] = {
    startAllocators,
    startContexts,
    startThreads,
    startStrings,
    startLocalizer,
    startEncoders,
    startErrors,
    startXML,
};

constexpr Hook stopHooks[] = {
    stopLocks,
    stopXML,
    stopFiles,
    stopLiveObjects,
    stopErrors,
    stopWeakReferences,
    stopEncoders,
    stopLocalizer,
    stopStrings,
    stopThreads,
    stopContexts,
    stopAllocators,
};

constexpr ContextHook contextHooks[] = {
    endLocalizerOf,
    endEncodersOf,
    endStringsOf,
    endArraysOf,
    endXMLOf,
    endFilesOf,
};
// clang-format on

constinit SimpleArray* exitFunctions = nullptr;
constinit char* startupPath = nullptr;
constinit bool isShuttingDown = false;

void stopModules() {
    for (Hook stop : stopHooks)
        stop();
}

void startUp() {
    startTime();
    runtime.startTime = Time::getHiResTimer();
    for (Hook start : startHooks)
        start();
    exitFunctions = new SimpleArray;
}

// By index, because an exit function may register another one.
void callExitFunctions() {
    if (!exitFunctions) return;
    for (int index = 0; index < exitFunctions->length(); ++index) {
        const auto address =
            static_cast<std::uintptr_t>(static_cast<const SimpleArray&>(*exitFunctions)[index]);
        reinterpret_cast<Hook>(address)();
    }
    delete std::exchange(exitFunctions, nullptr);
}

void shutDown() {
    isShuttingDown = true;
    callExitFunctions();
    if (Context* context = findContext()) delete std::exchange(context->extension, nullptr);
    Heap::operator delete(std::exchange(startupPath, nullptr));
    stopModules();
    isShuttingDown = false;
}

} // namespace

void endModulesOf(Context& context) {
    for (ContextHook end : contextHooks)
        end(context);
}

const char* startupSpec() { return startupPath; }

void InitTerm::init() {
    if (std::atomic_ref(runtime.initCount).fetch_add(1) != 0) return;
    try {
        startUp();
    } catch (...) {
        stopModules();
        runtime.initCount = 0;
        throw;
    }
}

void InitTerm::exit() {
    if (runtime.initCount > 1) {
        std::atomic_ref(runtime.initCount).fetch_sub(1);
    } else if (runtime.initCount == 1 && !isShuttingDown) {
        shutDown();
        // An init by an exit function came too late to count.
        runtime.initCount = 0;
    }
}

bool InitTerm::isInitialized() { return isRunning(); }

void InitTerm::atExit(void (*function)()) {
    if (!function || !exitFunctions) return;
    exitFunctions->append(static_cast<long long>(reinterpret_cast<std::intptr_t>(function)));
}

void InitTerm::setMT() {
    if (isMultiThreaded()) return;
    Lock* locks = makeLockTable();
    try {
        splitContexts();
    } catch (...) {
        freeLockTable(locks);
        throw;
    }
    currentContext()->libraryLock = locks;
    runtime.globals.locks = locks;
}

bool InitTerm::isMT() { return isMultiThreaded(); }

void InitTerm::enableUI(bool enable) { runtime.uiEnabled = enable; }

bool InitTerm::isUIEnabled() { return runtime.uiEnabled; }

void InitTerm::setStartupSpec(const char* path) {
    if (!path) return;
    const std::size_t byteCount = std::strlen(path) + 1;
    auto* copy = static_cast<char*>(Heap::operator new(byteCount));
    std::memcpy(copy, path, byteCount);
    Heap::operator delete(std::exchange(startupPath, copy));
}

} // namespace KrCore
