#pragma once

#include "xml/UnitBuffer.h"

#include <functional>

namespace KrCore {

/// Characters that Expat has reported and that are no node yet. It reports them in pieces, mostly
/// straight out of the text that it was fed; as long as these lie side by side there, nothing is
/// copied.
class PendingText {
public:
    /// What Expat was fed, which stays where it is for the whole run.
    void setSource(UnitRange fed) noexcept {
        fed_ = fed;
        clear();
    }

    void append(UnitRange piece) {
        if (buffer_.isEmpty() && (run_.isEmpty() ? isFed(piece) : piece.begin == run_.end)) {
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
        run_ = {fed_.begin, fed_.begin};
    }

private:
    bool isFed(UnitRange piece) const noexcept {
        return !std::less<>()(piece.begin, fed_.begin) && !std::less<>()(fed_.end, piece.end);
    }

    UnitRange fed_{};
    UnitRange run_{}; ///< The text while the buffer is empty.
    UnitBuffer buffer_;
};

} // namespace KrCore
