#pragma once

#include "xml/BlankUnits.h"

namespace KrCore {

/// How many units at the beginning of `text` make a valid name; see `XML::checkSymbolSyntax`.
int nameLength(UnitRange text);

} // namespace KrCore
