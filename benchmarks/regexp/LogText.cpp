#include "LogText.h"

#include <cstdint>
#include <iterator>

namespace {

constexpr std::size_t wantedUnits = 1024 * 1024 / sizeof(char16_t);

/// Draws numbers that look accidental.
class Dice {
public:
    std::uint32_t below(std::uint32_t limit) {
        state_ = state_ * 1664525 + 1013904223;
        return static_cast<std::uint32_t>((std::uint64_t(state_) * limit) >> 32U);
    }
    template <std::size_t count>
    const char16_t* oneOf(const char16_t* const (&list)[count]) {
        return list[below(count)];
    }

private:
    std::uint32_t state_ = 1;
};

std::u16string number(std::uint32_t value, std::size_t width = 1) {
    std::u16string digits;
    for (; value > 0 || digits.size() < width; value /= 10)
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + value % 10));
    return digits;
}

std::u16string hex(std::uint32_t value) {
    std::u16string digits;
    for (int shift = 28; shift >= 0; shift -= 4)
        digits += u"0123456789abcdef"[value >> shift & 15U];
    return digits;
}

std::u16string message(Dice& dice) {
    static constexpr const char16_t* files[] = {u"index.html", u"logo.png", u"style.css",
                                                u"export/2024.csv"};
    static constexpr const char16_t* reasons[] = {u"timeout", u"refused", u"reset by peer",
                                                  u"host unreachable"};
    const std::u16string address = u"10.0." + number(dice.below(256)) + u"." +
                                   number(dice.below(256)) + u":" +
                                   number(1024 + dice.below(60000));
    const std::uint32_t kind = dice.below(20);
    if (kind < 9) {
        return u"GET \"/" + std::u16string(dice.oneOf(files)) + u"\" from " + address +
               u" status=" + number(dice.below(10) ? 200 : 404) + u" bytes=" +
               number(dice.below(100000)) + u" took " + number(dice.below(900)) + u" ms";
    }
    if (kind < 13) {
        return u"session " + hex(dice.below(0xFFFFFFFF)) + u" of user \"guest" +
               number(dice.below(500)) + u"\" renewed, idle=" + number(dice.below(3600)) + u" s";
    }
    if (kind < 16) {
        return u"query took " + number(dice.below(5000)) +
               u" us: SELECT name, price FROM orders WHERE id=" + number(dice.below(100000));
    }
    if (kind < 18)
        return u"Connection to " + address + u" failed: " + dice.oneOf(reasons) + u", will retry";
    if (kind < 19)
        return u"the the configuration of caf\u00E9 \"nord\" was read again again, 2 warnings";
    return u"disk /var/log at " + number(70 + dice.below(30)) + u" % of capacity";
}

} // namespace

std::u16string makeLogText() {
    static constexpr const char16_t* levels[] = {u"INFO",  u"INFO", u"INFO", u"DEBUG",
                                                 u"DEBUG", u"WARN", u"ERROR"};
    static constexpr const char16_t* components[] = {u"http", u"session", u"store", u"net_pool"};
    Dice dice;
    std::u16string text;
    std::uint32_t seconds = 0;
    while (text.size() < wantedUnits) {
        seconds += dice.below(4);
        text += u"2024-03-" + number(10 + seconds / 86400, 2) + u" " +
                number(seconds / 3600 % 24, 2) + u":" + number(seconds / 60 % 60, 2) + u":" +
                number(seconds % 60, 2) + u"." + number(dice.below(1000), 3) + u" " +
                dice.oneOf(levels) + u" [worker-" + number(dice.below(16)) + u"] " +
                dice.oneOf(components) + u": " + message(dice) + u"\n";
    }
    return text;
}
