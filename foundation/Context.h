#pragma once

#include "foundation/SmallBlockCache.h"

#include <cstdint>

namespace KrCore {

class Encoder;
class LiveObjectData;
class Localizer;
class Lock;
class Root;
class SimpleArray;
class String;
class XML;
struct ArrayScratch;
struct EncodeScratch;
struct NameQuestion;
struct PrintedArray;

/// The last question to `Time::isDST`.
struct DaylightAnswer {
    bool known = false;
    int answer = 0;
    std::int64_t seconds = 0;
};

/// What the library knows per thread; single-threaded, per process. A plain record of slots: the
/// module that owns a slot makes and deletes what lies there, in its own hooks
/// (foundation/ModuleHooks.h).
struct Context {
    SmallBlockCache cache;

    /// The high-resolution clock at the library's start and at the last lap, in microseconds.
    std::int64_t startTime = 0;
    std::int64_t lapBase = 0;
    DaylightAnswer daylight;

    EncodeScratch* encodeScratch = nullptr;  ///< The result of the last String::encode.
    const Localizer* localizer = nullptr;    ///< The current one; borrowed, may be null.
    SimpleArray* localizerStack = nullptr;   ///< Pushed localizers, borrowed; the array is owned.
    const Encoder* defaultEncoder = nullptr; ///< Borrowed; null until somebody asks.
    String* currentFolder = nullptr;         ///< Owned; null until somebody asks.
    ArrayScratch* arrayScratch = nullptr;    ///< Stand-ins for elements, texts in progress.
    LiveObjectData* endingObjects = nullptr; ///< Of dead live objects, waiting for their turn.
    bool isEndingObjects = false;
    NameQuestion* nameQuestion = nullptr; ///< The innermost that listeners are asked; on the stack.
    PrintedArray* printedArray = nullptr; ///< The innermost live array in a text; on the stack.
    XML* defaultNamespace = nullptr;      ///< Of new elements and attributes; one reference.
    XML* currentNamespace = nullptr;      ///< The script engine's; one reference.
    Root* extension = nullptr;            ///< Owned; whatever the host of the context adds.
    Lock* libraryLock = nullptr;          ///< The library's lock table; null single-threaded.

    /// Neighbours in the list of all contexts (Context.cpp).
    Context* next = nullptr;
    Context* previous = nullptr;
    /// The library went down while the owning thread still ran. Nothing but the record itself is
    /// left; its thread takes it up again when the library is back, or frees it when it ends.
    bool isRetired = false;
};

/// The calling thread's context, made on first use; never null while the library runs, null
/// otherwise. Throws OutOfMemory when it cannot be made.
Context* currentContext();

} // namespace KrCore
