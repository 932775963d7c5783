#include "platform/Event.h"

#include <windows.h>

#include <new>

namespace KrCore::Platform {

struct Event {
    HANDLE handle;
};

std::size_t eventByteCount() { return sizeof(Event); }

Event* makeEvent(void* place) {
    const HANDLE handle = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    return handle ? new (place) Event{handle} : nullptr;
}

void destroyEvent(Event* event) { CloseHandle(event->handle); }

void signalEvent(Event* event) { SetEvent(event->handle); }

void waitForEvent(Event* event) { WaitForSingleObject(event->handle, INFINITE); }

} // namespace KrCore::Platform
