#pragma once

#include "text/encoders/ByteTable.h"

namespace KrCore {

extern const ByteTable asciiTable;
extern const ByteTable binaryTable;
extern const ByteTable cp1252Table;
extern const ByteTable macRomanTable;

} // namespace KrCore
