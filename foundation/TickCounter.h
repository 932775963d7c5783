#pragma once

#include <atomic>
#include <cstdint>

namespace KrCore {

/// Ticks of 50 milliseconds from a millisecond count that wraps at 32 bits.
class TickCounter {
public:
    std::uint32_t ticks(std::uint32_t milliseconds) {
        if (milliseconds < last_.exchange(milliseconds)) accumulated_ += ticksPerWrap;
        return milliseconds / 50 + accumulated_;
    }

private:
    // Kept: 2^32 / 800, though 50 ms ticks suggest 2^32 / 50; hosts see the value after a wrap.
    static constexpr std::uint32_t ticksPerWrap =
        5368709; // held by TimeTicks.KeepTheirOddStepAcrossAWrap

    // Not locked: threads that meet at a wrap may count it twice.
    std::atomic<std::uint32_t> accumulated_ = 0;
    std::atomic<std::uint32_t> last_ = 0;
};

} // namespace KrCore
