#pragma once

#include <cstdint>

namespace KrCore {

// The word arrays and maps hold pointers as 64-bit words.

template <class T>
long long wordOf(T* pointer) {
    return static_cast<long long>(reinterpret_cast<std::intptr_t>(pointer));
}

template <class T>
T* pointerOf(long long word) {
    return reinterpret_cast<T*>(static_cast<std::intptr_t>(word));
}

} // namespace KrCore
