#pragma once

#include <cstdint>

namespace KrCore {

/// One row of the table in which a class declares its properties and methods:
///
/// ```cpp
/// constexpr LivePropertyInfo shapeTable[] = {
///     {"width", 1, int(InfoType::ReadWrite), "number"},
///     {"resize", 2, int(InfoType::Method), "undefined,width:number,height:number"},
///     {nullptr, 0, 0, nullptr}};
/// ```
struct LivePropertyInfo {
    const char* name;       ///< ISO 8859-1; "" marks the constructor, null ends the table.
    std::int32_t id;        ///< See PropertyID.h for the reserved ones.
    std::int32_t flags;     ///< `InfoType` and `PropertyFlag` bits.
    const char* descriptor; ///< Types and descriptions, see `TypeInfo::parse`; 8-bit, or null.
};

} // namespace KrCore
