#pragma once

#include "text/Units.h"

#include <krcore/text/String.h>

#include <string_view>

namespace KrCore {

/// A part of a text that somebody else keeps: cutting a descriptor up makes no strings.
class UnitSpan {
public:
    constexpr UnitSpan() = default;
    explicit UnitSpan(const String& text) : units_(text.wstr()), length_(text.length()) {}
    UnitSpan(const unsigned short* units, int length) : units_(units), length_(length) {}

    int length() const { return length_; }
    bool isEmpty() const { return length_ == 0; }
    unsigned short operator[](int index) const { return units_[index]; }
    /// The first position of `unit` at or behind `start`, or -1.
    int find(char unit, int start) const {
        const int found =
            findUnit(units_ + start, length_ - start, static_cast<unsigned char>(unit));
        return found < 0 ? -1 : start + found;
    }
    bool contains(char unit) const { return find(unit, 0) >= 0; }
    String toString() const { return {units_, length_}; }

    bool operator==(std::string_view ascii) const {
        if (ascii.size() != static_cast<std::size_t>(length_)) return false;
        for (int i = 0; i < length_; ++i) {
            if (units_[i] != static_cast<unsigned char>(ascii[static_cast<std::size_t>(i)]))
                return false;
        }
        return true;
    }

    /// Takes the field before `separator` off the front. Without a separator that is all there is.
    UnitSpan split(char separator) {
        const int position = find(separator, 0);
        const UnitSpan field(units_, position < 0 ? length_ : position);
        const int taken = position < 0 ? length_ : position + 1;
        units_ += taken;
        length_ -= taken;
        return field;
    }

    /// Without the units up to 32 at both ends.
    UnitSpan stripped() const {
        int start = 0;
        int end = length_;
        while (start < end && units_[start] <= ' ')
            ++start;
        while (end > start && units_[end - 1] <= ' ')
            --end;
        return {units_ + start, end - start};
    }

private:
    const unsigned short* units_ = nullptr;
    int length_ = 0;
};

} // namespace KrCore
