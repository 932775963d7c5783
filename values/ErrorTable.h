#pragma once

namespace KrCore {

/// What the library says about one of its own codes.
struct ErrorEntry {
    int code; ///< As reported: conditions of the engine are negative.
    const char* className;
    const char* message;
};

/// The entry for an absolute code, an empty one for 0; null beyond the table.
const ErrorEntry* findErrorEntry(unsigned int code);

/// Every look-up uses the absolute value; the one of the smallest `int` is no `int`.
constexpr unsigned int absoluteCode(int code) {
    return code < 0 ? 0U - static_cast<unsigned int>(code) : static_cast<unsigned int>(code);
}

} // namespace KrCore
