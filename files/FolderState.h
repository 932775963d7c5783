#pragma once

#include <krcore/text/String.h>

namespace KrCore {

// The folders that the library remembers, as platform paths. Any thread.

/// The current folder of the calling thread's context: the one set, or else that of the process
/// when the context first asked. Empty when the system does not tell.
String currentFolder();
void setCurrentFolder(const String& path);

/// The user's home folder, found once for the life of the library. Empty when there is none.
String homeFolder();

} // namespace KrCore
