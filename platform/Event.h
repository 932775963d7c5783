#pragma once

#include <cstddef>

namespace KrCore::Platform {

/// An auto-reset event, not signalled at first. The caller supplies the memory.
struct Event;

/// The bytes of one, at an address divisible by 8.
std::size_t eventByteCount();

/// Null when the system cannot make one.
Event* makeEvent(void* place);
void destroyEvent(Event* event);

void signalEvent(Event* event);
void waitForEvent(Event* event);

} // namespace KrCore::Platform
