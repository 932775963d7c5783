#pragma once

namespace KrCore {

/// The kinds of value a `Variant` can hold. The numbers are part of the interface.
enum class VariantType : int {
    Undefined = 0,
    Null = 1,
    Bool = 2,
    Number = 3,
    String = 4,
    Object = 5, ///< An object of the script engine: ID, class name and object data.
    LiveObject = 6,
    Point = 7,
    Rect = 8,
    Array = 9,
    FileSpec = 10,
    RegExp = 11,
    UnitValue = 12
};

} // namespace KrCore
