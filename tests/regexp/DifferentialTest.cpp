// The library against the reference matcher, on random patterns and subjects. The cases are the
// same in every run; KRCORE_REGEXP_CASES sets how many, KRCORE_REGEXP_FIRST where they begin.

#include "ReferenceMatcher.h"
#include "RegExpSupport.h"

#include <cstdlib>
#include <initializer_list>
#include <random>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

class RandomPattern {
public:
    explicit RandomPattern(unsigned seed) : random_(seed) {}

    int below(int bound) { return static_cast<int>(random_() % unsigned(bound)); }

    std::u16string pattern() { return below(8) == 0 ? noise() : alternatives(3); }
    std::u16string subject() {
        std::u16string text(std::size_t(below(8) == 0 ? below(40) : 0), u'b');
        for (int length = below(9); length > 0; --length)
            text += pick({u"a", u"a", u"a", u"b", u"b", u"b", u"ab", u"c", u"A", u"B", u"?", u"1",
                          u" ", u"\n", u"\r", u"_", u"\u00E9", u"\u2028", u"\u01C5"});
        return text;
    }
    int flags() {
        constexpr int choices[] = {0, 0, 0, 2, 4, 6 | 1 << 20};
        return choices[below(6)];
    }

private:
    std::u16string pick(std::initializer_list<const char16_t*> texts) {
        return texts.begin()[below(static_cast<int>(texts.size()))];
    }

    std::u16string alternatives(int depth) {
        std::u16string text = sequence(depth);
        while (below(3) == 0)
            text += u"|" + sequence(depth);
        return text;
    }

    std::u16string sequence(int depth) {
        std::u16string text;
        for (int count = below(12) == 0 ? 0 : 1 + below(3); count > 0; --count) {
            text += item(depth);
            if (below(3) == 0) text += quantifier();
        }
        return text;
    }

    std::u16string item(int depth) {
        const int kind = below(20);
        if (kind < 6 && depth > 0)
            return pick({u"(", u"(", u"(", u"(", u"(?:", u"(?:", u"(?=", u"(?!", u"(?"}) +
                   alternatives(depth - 1) + u")";
        if (kind == 6)
            return pick({u"\\1", u"\\1", u"\\1", u"\\2", u"\\3", u"\\12", u"\\101", u"\\x62"});
        if (kind == 7) return pick({u"^", u"$", u"\\b", u"\\B"});
        if (kind == 8) return pick({u".", u".", u"..", u"..."});
        if (kind == 9) return pick({u"\\w", u"\\W", u"\\d", u"\\S", u"\\s", u"]", u")", u"{1"});
        if (kind == 10)
            return pick({u"[ab]", u"[^a]", u"[b-z]", u"[]", u"[^]", u"[\\W]", u"[^\\d-]", u"[a-]",
                         u"[\\u01C5]", u"[^\\u00E8-\\u01C6B]", u"[A-\\w]"});
        return pick({u"a", u"a", u"b", u"b", u"ab", u"ba", u"c", u"\u01C6", u"\\?", u"\\n"});
    }

    std::u16string quantifier() {
        return pick({u"*", u"*", u"*", u"+", u"+", u"?", u"{2}", u"{0}", u"{1}", u"{0,1}", u"{1,2}",
                     u"{2,3}", u"{2,}", u"{3,1}", u"{2147483647}", u"{1}{0,2}"}) +
               pick({u"", u"", u"?"});
    }

    std::u16string noise() {
        std::u16string text;
        for (int count = below(10); count > 0; --count) {
            const std::u16string_view units = u"aabb01289()()[]{}{}|*+?.^$\\\\\\-,,xuocBdS:=!\n";
            text += units[std::size_t(below(static_cast<int>(units.size())))];
        }
        return text;
    }

    std::mt19937 random_;
};

/// As `found` writes it.
std::string written(const ReferenceMatcher& reference, bool matches) {
    if (!matches) return "none";
    std::string text;
    for (const auto& slot : reference.slots()) {
        if (!text.empty()) text += ' ';
        text += slot.start < 0 ? "-" : std::to_string(slot.start) + "-" + std::to_string(slot.end);
    }
    return text;
}

int fromEnvironment(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    return text ? std::atoi(text) : otherwise;
}

TEST(RegExpDifferential, FindsWhatTheReferenceFinds) {
    constexpr int mostSteps = 5000; // beyond, the search is about to grow exponentially
    const int first = fromEnvironment("KRCORE_REGEXP_FIRST", 0);
    const int count = fromEnvironment("KRCORE_REGEXP_CASES", 12000);
    int compiled = 0;
    int compared = 0;
    int matched = 0;
    for (int seed = first; seed < first + count; ++seed) {
        RandomPattern random(static_cast<unsigned>(seed));
        const std::u16string pattern = random.pattern();
        const int flags = random.flags();
        ReferenceMatcher reference(pattern, flags);
        const Expression expression(fromUtf16(pattern), flags);
        ASSERT_EQ(expression.good(), reference.good()) << seed << ": " << fromUtf16(pattern);
        ASSERT_EQ(expression.getCaptureLength(), reference.captureLength()) << fromUtf16(pattern);
        if (!reference.good()) continue;
        ++compiled;
        for (int round = 0; round < 4; ++round) {
            const std::u16string subject = random.subject();
            const int start = random.below(4) == 0 ? random.below(10) - 1 : 0;
            const auto outcome = reference.match(subject, start, mostSteps);
            if (outcome == ReferenceMatcher::Outcome::TooManySteps) break;
            const bool matches = outcome == ReferenceMatcher::Outcome::Match;
            ++compared;
            matched += matches;
            const std::string result = found(fromUtf16(pattern), fromUtf16(subject), flags, start);
            ASSERT_EQ(result, written(reference, matches))
                << seed << ": " << fromUtf16(pattern) << " on " << fromUtf16(subject) << " from "
                << start << " with flags " << flags;
            // An empty look-ahead changes nothing, but simple patterns then take the long way.
            if (pattern.find(u'|') != std::u16string::npos) continue;
            ASSERT_EQ(found(fromUtf16(u"(?=)" + pattern), fromUtf16(subject), flags, start), result)
                << seed << ": " << fromUtf16(pattern) << " on " << fromUtf16(subject);
        }
    }
    if (count < 1000) return;
    // The cases are worth something.
    EXPECT_GT(compiled, count / 2);
    EXPECT_GT(compared, compiled * 3);
    EXPECT_GT(matched, compared / 4);
    EXPECT_LT(matched, compared * 3 / 4);
}

} // namespace
