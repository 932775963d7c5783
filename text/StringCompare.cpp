// Comparison by code unit, with and without regard to case.

#include <krcore/text/String.h>

#include "text/CaseMapping.h"
#include "text/Units.h"

#include <algorithm>
#include <climits>

namespace KrCore {

namespace {

/// A negative limit is none.
int unitLimit(int n) { return n < 0 ? INT_MAX : n; }

/// The result when one text is the beginning of the other.
int compareLengths(int left, int right) { return left == right ? 0 : left < right ? -1 : 1; }

struct Exact {
    static int order(unsigned short left, unsigned short right) { return left - right; }
};

struct IgnoringCase {
    static int order(unsigned short left, unsigned short right) {
        return foldUpper(left) - foldUpper(right);
    }
};

/// Equal stretches are skipped by the block, in the exact and in the folding comparison.
template <class Rule>
int compare(const unsigned short* left, int leftLength, const unsigned short* right,
            int rightLength) {
    const int common = std::min(leftLength, rightLength);
    for (int i = mismatch(left, right, common); i < common; ++i) {
        if (const int order = Rule::order(left[i], right[i])) return order;
    }
    return compareLengths(leftLength, rightLength);
}

template <class Rule>
int compare(const unsigned short* left, int leftLength, const char* right, int rightLength) {
    const int common = std::min(leftLength, rightLength);
    for (int i = 0; i < common; ++i) {
        if (const int order = Rule::order(left[i], static_cast<unsigned char>(right[i])))
            return order;
    }
    return compareLengths(leftLength, rightLength);
}

template <class Rule>
int compareWith(const String& left, const String& right, int limit) {
    if (left.wstr() == right.wstr()) return 0;
    return compare<Rule>(left.wstr(), std::min(left.length(), limit), right.wstr(),
                         std::min(right.length(), limit));
}

// No more of the other text is looked at than can matter: it need not be terminated behind `limit`.

template <class Rule>
int compareWith(const String& left, const unsigned short* right, int limit) {
    const int ownLength = std::min(left.length(), limit);
    const int enough = static_cast<int>(std::min<unsigned>(ownLength + 1U, limit));
    return compare<Rule>(left.wstr(), ownLength, right, right ? countUnits(right, enough) : 0);
}

template <class Rule>
int compareWith(const String& left, const char* right, int limit) {
    const int ownLength = std::min(left.length(), limit);
    const int enough = static_cast<int>(std::min<unsigned>(ownLength + 1U, limit));
    return compare<Rule>(left.wstr(), ownLength, right, right ? countBytes(right, enough) : 0);
}

} // namespace

bool String::operator==(const String& text) const {
    if (buffer_ == text.buffer_) return true;
    return length() == text.length() &&
           std::memcmp(wstr(), text.wstr(), std::size_t(length()) * sizeof *wstr()) == 0;
}

int String::cmp(const String& text) const { return compareWith<Exact>(*this, text, INT_MAX); }
int String::cmp(const char* text) const { return compareWith<Exact>(*this, text, INT_MAX); }
int String::cmp(const unsigned short* text) const {
    return compareWith<Exact>(*this, text, INT_MAX);
}

int String::ncmp(const String& text, int n) const {
    return compareWith<Exact>(*this, text, unitLimit(n));
}
int String::ncmp(const char* text, int n) const {
    return compareWith<Exact>(*this, text, unitLimit(n));
}
int String::ncmp(const unsigned short* text, int n) const {
    return compareWith<Exact>(*this, text, unitLimit(n));
}

int String::ucmp(const String& text) const {
    return compareWith<IgnoringCase>(*this, text, INT_MAX);
}
int String::ucmp(const char* text) const { return compareWith<IgnoringCase>(*this, text, INT_MAX); }
int String::ucmp(const unsigned short* text) const {
    return compareWith<IgnoringCase>(*this, text, INT_MAX);
}

int String::nucmp(const String& text, int n) const {
    return compareWith<IgnoringCase>(*this, text, unitLimit(n));
}
int String::nucmp(const char* text, int n) const {
    return compareWith<IgnoringCase>(*this, text, unitLimit(n));
}
int String::nucmp(const unsigned short* text, int n) const {
    return compareWith<IgnoringCase>(*this, text, unitLimit(n));
}

} // namespace KrCore
