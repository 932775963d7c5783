#pragma once

#include "Native.h"

namespace krhost {

/// The functions krhost gives to scripts:
///
/// - `print(value, ...)` writes the values' texts with blanks between and a line end;
/// - `readln()` reads a line of the standard input without its end, null when there is none left;
/// - `gc()` collects at once what the script cannot reach any more;
/// - `heapStats()` tells what is in use: scriptBytes, scriptBlocks, libraryBytes, libraryBlocks,
/// and
///   liveObjects, the number of live objects that scripts hold.
///
/// Taken away is what would let a script reach into the engine's insides.
namespace Globals {

void install(CallFrame& frame);

} // namespace Globals

} // namespace krhost
