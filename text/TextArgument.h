#pragma once

#include "text/StringBuffer.h"
#include "text/Units.h"

#include <climits>

namespace KrCore {

/// Tells a pointer to one unit, which may be 0, from 0-terminated text.
struct SingleUnit {};

/// An argument of a String operation in any of its three forms, seen as a run of units. Null
/// pointers are empty; 8-bit text is widened, short text without asking the heap.
class TextArgument {
public:
    explicit TextArgument(const String& text) : units_(text.wstr()), length_(text.length()) {}

    explicit TextArgument(const unsigned short* text)
        : units_(text), length_(text ? countUnits(text, INT_MAX) : 0) {}

    /// The unit is borrowed for as long as the argument is used.
    explicit TextArgument(const unsigned short* unit, SingleUnit) : units_(unit), length_(1) {}

    explicit TextArgument(const char* text)
        : units_(small_), length_(text ? countBytes(text, INT_MAX) : 0) {
        if (length_ <= smallLength) {
            widenBytes(small_, text, length_);
            return;
        }
        kept_.append(text, length_);
        units_ = kept_.wstr();
    }

    TextArgument(const TextArgument&) = delete;
    TextArgument& operator=(const TextArgument&) = delete;

    const unsigned short* units() const { return units_; }
    int length() const { return length_; }

    /// Call before changing `owner`, whose buffer the text may be a part of.
    void keepFrom(const String& owner) {
        if (!StringBuffer::contains(owner, units_)) return;
        const auto offset = units_ - owner.wstr();
        kept_ = owner;
        units_ = kept_.wstr() + offset;
    }

private:
    static constexpr int smallLength = 64;

    const unsigned short* units_;
    int length_;
    String kept_;
    unsigned short small_[smallLength];
};

/// The first match at or after `start` (negative: 0), or -1; the empty text matches at `start`.
int findForward(const String& text, const TextArgument& needle, int start);

} // namespace KrCore
