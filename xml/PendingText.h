#pragma once

#include "xml/UnitBuffer.h"

#include <functional>

namespace KrCore {

/// Characters that Expat has reported and that are no node yet. It reports them in pieces, mostly
/// straight out of the source; as long as these lie side by side there, nothing is copied.
class PendingText {
public:
    explicit PendingText(const String& source) : source_{source.begin(), source.end()} { clear(); }

    void append(UnitRange piece) {
        if (buffer_.isEmpty() && (run_.isEmpty() ? isInSource(piece) : piece.begin == run_.end)) {
            if (run_.isEmpty()) run_.begin = piece.begin;
            run_.end = piece.end;
            return;
        }
        if (buffer_.isEmpty()) buffer_.append(run_);
        buffer_.append(piece);
    }
    UnitRange range() noexcept { return buffer_.isEmpty() ? run_ : buffer_.range(); }
    void clear() noexcept {
        buffer_.clear();
        run_ = {source_.begin, source_.begin};
    }

private:
    bool isInSource(UnitRange piece) const noexcept {
        return !std::less<>()(piece.begin, source_.begin) && !std::less<>()(source_.end, piece.end);
    }

    UnitRange source_;
    UnitRange run_; ///< Of the source; the text while the buffer is empty.
    UnitBuffer buffer_;
};

} // namespace KrCore
