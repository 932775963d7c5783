#pragma once

/// @file
/// Life cycle, heap, reference counts, weak references, locks, threads, events and time.

#include <krcore/foundation/Allocator.h>
#include <krcore/foundation/Atomic.h>
#include <krcore/foundation/Callbacks.h>
#include <krcore/foundation/Cloneable.h>
#include <krcore/foundation/CriticalSection.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/Event.h>
#include <krcore/foundation/FourCharCode.h>
#include <krcore/foundation/Globals.h>
#include <krcore/foundation/Heap.h>
#include <krcore/foundation/InitTerm.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/foundation/Lock.h>
#include <krcore/foundation/LockRef.h>
#include <krcore/foundation/Lockable.h>
#include <krcore/foundation/Refcountable.h>
#include <krcore/foundation/Root.h>
#include <krcore/foundation/Thread.h>
#include <krcore/foundation/Time.h>
#include <krcore/foundation/Version.h>
#include <krcore/foundation/WeakRef.h>
#include <krcore/foundation/WeakRefBase.h>
