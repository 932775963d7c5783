#pragma once

#include <krcore/regexp/RegExp.h>
#include <krcore/text/StringConversions.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace KrCore::Testing {

/// A pattern and its captures.
struct Expression : public RegExp {
    explicit Expression(const String& pattern, int flags = 0)
        : RegExp(pattern, flags), slots(createCaptureList()) {}
    bool match(const String& subject, int start = 0) const {
        return RegExp::match(subject, start, slots[0]);
    }

    std::unique_ptr<Capture[]> slots;
};

/// What a search finds: "0-3 1-2 -" are the whole match, a group and one that is unset. "none" when
/// nothing matches and every slot is unset, "error" when the pattern does not compile.
inline std::string found(const String& pattern, const String& subject, int flags = 0,
                         int start = 0) {
    const Expression expression(pattern, flags);
    if (!expression.good()) return "error";
    const auto count = std::size_t(expression.getCaptureLength());
    for (std::size_t slot = 0; slot < count; ++slot)
        expression.slots[slot] = {7, 9}; // of a search before
    const bool matches = expression.match(subject, start);
    std::string text = matches ? "" : "none";
    for (std::size_t slot = 0; slot < count; ++slot) {
        const Capture& capture = expression.slots[slot];
        if (!matches && capture.start == -1) continue;
        if (!text.empty()) text += ' ';
        text += capture.start == -1
                    ? "-"
                    : std::to_string(capture.start) + "-" + std::to_string(capture.end);
    }
    return text;
}

/// A row of a table.
struct Search {
    const char16_t* pattern;
    const char16_t* subject;
    const char* expected;
    int flags = 0;
    int start = 0;
};

template <std::size_t count>
void expectFound(const Search (&rows)[count]) {
    for (const Search& row : rows) {
        EXPECT_EQ(found(row.pattern, row.subject, row.flags, row.start), row.expected)
            << String(row.pattern) << " on " << String(row.subject) << " from " << row.start
            << " with flags " << row.flags;
    }
}

} // namespace KrCore::Testing
