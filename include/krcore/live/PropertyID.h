#pragma once

namespace KrCore {

/// Property IDs with a fixed meaning. Any other value is a host class's to choose; four printable
/// characters (`fourCharCode("wdth")`) are a common choice.
namespace PropertyID {
inline constexpr int FirstGenerated =
    0x1F800000; ///< `LiveBase::getNextID` counts upwards from here.
inline constexpr int Constructor = 0x1FF10000;
inline constexpr int FirstOperator = 0x1FF10100; ///< In ID order: ~ ! * / % + - << >> <<< < <= in
                                                 ///< instanceof == === & | ^, then six reserved.
inline constexpr int LastOperator = 0x1FF10118;

constexpr bool isOperator(int id) { return id >= FirstOperator && id <= LastOperator; }
} // namespace PropertyID

} // namespace KrCore
