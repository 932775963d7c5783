#pragma once

#include "Native.h"

namespace KrCore {
class LivePropertyManager;
}

namespace krhost {

/// What krhost gives to scripts besides its host classes: the functions in the table of
/// `Globals.cpp`, and the array `arguments`.
///
/// Taken away is what would let a script reach into the engine's insides.
namespace Globals {

void install(CallFrame& frame);

/// Registers what `install` defines, for declarations made from the same table.
void declare(KrCore::LivePropertyManager& manager);

} // namespace Globals

} // namespace krhost
