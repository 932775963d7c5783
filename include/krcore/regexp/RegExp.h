#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Heap.h>
#include <krcore/regexp/Capture.h>

namespace KrCore {

class RegExpData;
class String;

/// A compiled regular expression. Copies share it. Nothing in it changes after its construction, so
/// any number of threads may match with one at a time; assigning to it is not locked.
///
/// A pattern is a sequence of 16-bit units and of:
///
/// | written | matches |
/// |---|---|
/// | `.` | any unit but U+000A, so U+000D too |
/// | `[...]` `[^...]` | a unit of the set, or none of it; `[]` nothing, `[^]` anything |
/// | `\d` `\s` `\w` | 0 to 9; white space and U+0008; ASCII letters, digits and "_" |
/// | `\D` `\S` `\W` | all others |
/// | `^` `$` | the start, the end; with `MultiLine` also next to a line break |
/// | `\b` `\B` | a boundary of ASCII words, and its absence; both match at the end |
/// | `(...)` `(?:...)` | a capturing group, numbered from 1 by its "("; a group |
/// | `(?=...)` `(?!...)` | what follows must match, or must not; tried in one way only |
/// | `\1` ... | what the group has captured; nothing while it is unset |
/// | `a\|b` | either, the first that does |
/// | `*` `+` `?` `{n}` `{n,}` `{n,m}` | repetition, as often as possible |
/// | `*?` and so on | repetition, as seldom as possible |
/// | `\f` `\n` `\r` `\t` `\v` `\cA` | a control character |
/// | `\xFF` `\uFFFF` `\o777` `\07` | one unit by its number |
///
/// Line breaks are U+000A, U+000D, U+2028 and U+2029. At the end of the subject nothing is
/// repeated.
///
/// A "\" in front of anything else takes away its meaning. What looks like one of these but is not
/// complete is taken literally: `a{x}`, `\xZZ`, an unmatched `)` or `]`. In `{n,m}` a smaller m
/// counts as n. Not compiled are an unclosed group or set, a range in reverse, a reference to a
/// group that is not there, `\c` without a letter, `\B` in a set, a repetition of nothing, one
/// directly behind another (`a**`), groups nested more than 1000 deep, repetitions of repetitions
/// 3000, and patterns whose depth times the number of groups is beyond 16,777,216.
///
/// Some ways of this dialect are its own and stay, because scripts rely on them:
/// - The repetitions of a group share the counts of what is repeated within, and a fixed count is
///   not tried in another way: `^(?:a+?){2}b` does not match "aaab". Alternatives begin anew in
///   each repetition.
/// - An alternative that was given up may leave its captures behind for the one that matches.
/// - In a group, alternatives that have all failed match nothing once something behind them can be
///   tried in another way: `((?:a|b)c*d)` finds "d".
/// - `..*` repeats the pair of dots, while `ab*` repeats the "b" alone.
///
/// Time may grow exponentially with the subject where repetitions are nested, as in `(x+x+)+y`, and
/// otherwise by a power of its length for each repetition. Memory is bounded by pattern and
/// subject.
class KR_API RegExp : public Heap {
public:
    /// Flags; other bits are kept and mean nothing here.
    static constexpr int IgnoreCase = 2; ///< Compares upper-case mappings, unit by unit.
    static constexpr int MultiLine = 4;  ///< `^` and `$` match at line ends too.

    /// The pattern "(?:)", which matches the empty text everywhere and fills no capture: its
    /// capture length is 0.
    RegExp();
    /// Compiles a pattern; see `good`.
    RegExp(const String& pattern, int flags);
    RegExp(const RegExp& other);
    ~RegExp();
    RegExp& operator=(const RegExp& other);

    /// Whether the pattern compiled. One that did not matches nothing.
    bool good() const;
    /// As given.
    const String& getPattern() const;
    int getFlags() const;
    /// Capturing groups and 1 for the whole match; 0 when the pattern did not compile.
    int getCaptureLength() const;
    /// A new list of `getCaptureLength()` unset slots, and of one where that is 0. Owned by the
    /// caller, who deletes it with `delete[]`.
    Capture* createCaptureList() const;

    /// Searches a text for the first match that begins at `start` or behind.
    ///
    /// `captures` is the first slot of a list of `getCaptureLength()`. Slot 0 receives the whole
    /// match, slot k group k. Without a match all are unset. No match is found from a `start` below
    /// 0, nor from one at or behind the end, unless the text is empty.
    bool match(const String& subject, int start, Capture& captures) const;

private:
    RegExpData* data_; // counted
};

} // namespace KrCore
