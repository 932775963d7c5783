#pragma once

#include <krcore/foundation/Export.h>

/// Major, minor and revision number of this header, one byte each: 4.5.6.
#define KRCORE_VERSION 0x40506

extern "C" {

/// The version of the library that is loaded: 263430, written as `KRCORE_VERSION`.
KR_API int getVersion();

/// Does nothing; kept for programs that were built to report failed assertions here.
KR_API void DebugAlert(const char* message, const char* file, int line);

/// The process's top-level window (an `HWND`) for dialogs to stand before, or null; always null on
/// Linux.
KR_API void* KrGetTopWindow();
}
