#include "platform/Window.h"

#include <windows.h>

namespace KrCore::Platform {

namespace {

// The window functions are looked up instead of linked: a program that never loaded user32 has no
// window, and the library shall not load it just to find out.
template <class Function>
Function* windowFunction(const char* name) {
    const HMODULE module = GetModuleHandleA("user32.dll");
    const auto address = module ? GetProcAddress(module, name) : nullptr;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

/// Windows of this process on the way through all top-level ones.
struct Search {
    decltype(GetWindowThreadProcessId)* processOf;
    decltype(IsWindowVisible)* isVisible;
    HWND found;
};

/// Stops at the first visible window that belongs to this process.
BOOL CALLBACK visit(HWND window, LPARAM argument) {
    auto& search = *reinterpret_cast<Search*>(argument);
    DWORD process = 0;
    search.processOf(window, &process);
    if (process != GetCurrentProcessId() || !search.isVisible(window)) return TRUE;
    search.found = window;
    return FALSE;
}

} // namespace

void* topWindow() {
    const auto enumerate = windowFunction<decltype(EnumWindows)>("EnumWindows");
    Search search = {windowFunction<decltype(GetWindowThreadProcessId)>("GetWindowThreadProcessId"),
                     windowFunction<decltype(IsWindowVisible)>("IsWindowVisible"), nullptr};
    if (!enumerate || !search.processOf || !search.isVisible) return nullptr;
    enumerate(visit, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace KrCore::Platform
