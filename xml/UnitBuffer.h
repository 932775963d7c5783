#pragma once

#include "foundation/WorkStack.h"
#include "text/Units.h"
#include "xml/BlankUnits.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace KrCore {

/// Text in the making. What would not fit into a `String` throws `OutOfMemory`, at the latest when
/// it is to become one.
class UnitBuffer {
public:
    bool isEmpty() const noexcept { return units_.isEmpty(); }
    void clear() noexcept { units_.shrinkTo(0); }
    UnitRange range() noexcept { return {units_.begin(), units_.end()}; }

    void append(unsigned short unit) { *room(1) = unit; }
    void append(UnitRange text) {
        if (!text.isEmpty()) copyUnits(room(text.length()), text.begin, text.length());
    }
    void append(const String& text) { append(UnitRange{text.begin(), text.end()}); }
    /// ASCII with its terminator.
    template <std::size_t size>
    void append(const char (&text)[size]) {
        unsigned short* out = room(size - 1);
        for (std::size_t index = 0; index + 1 < size; ++index)
            out[index] = static_cast<unsigned char>(text[index]);
    }
    void appendBlanks(std::int64_t count) {
        unsigned short* out = room(count);
        for (std::int64_t index = 0; index < count; ++index)
            out[index] = ' ';
    }

    /// Room for `count` units at the end, for the caller to fill; what stays empty is taken back.
    unsigned short* extend(int count) { return room(count); }
    void shrinkBy(int count) noexcept {
        units_.shrinkTo(units_.size() - static_cast<std::size_t>(count));
    }

    String toString() {
        if (isEmpty()) return String();
        if (units_.size() > std::size_t(String::maxLength)) throw OutOfMemory();
        return String(units_.begin(), static_cast<int>(units_.size()));
    }

private:
    unsigned short* room(std::int64_t count) {
        if (count > String::maxLength) throw OutOfMemory();
        return units_.extend(static_cast<std::size_t>(count));
    }

    WorkStack<unsigned short> units_;
};

} // namespace KrCore
