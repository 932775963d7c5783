#pragma once

#include "regexp/Nodes.h"
#include "text/CaseMapping.h"

namespace KrCore {

enum class StepKind : unsigned char {
    Text,
    FoldedText, ///< In upper case already.
    Dots,
    Set,
    LineStart,
    LineEnd,
    Boundary,
    BackReference,
    Open,
    Close,
    Run,
    Branch, ///< The start of an alternative.
    Jump,
    End
};

/// Which units a run consists of.
enum class RunUnits : unsigned char { Exact, Folded, NoLineFeed, Set };

/// One instruction.
struct Step {
    StepKind kind;
    RunUnits runUnits = RunUnits::Exact;
    bool isNegated = false;  ///< Boundary.
    bool isLazy = false;     ///< Run.
    bool isFinal = false;    ///< Run: no other length than the longest can match.
    bool isLeading = false;  ///< Run: see `StraightMatch::matchAt`.
    unsigned short unit = 0; ///< Text: the first. Run of `Exact` and `Folded`.
    int following = -1;      ///< Run, Branch: the unit that comes next, if it is known.
    int number = 0;          ///< Dots: how many. Run: the minimum. A slot or group.
    int limit = 0;           ///< Run: the maximum. Text: the length.
    int target = -1;         ///< Branch: the next one, or -1. Jump: where to.
    const unsigned short* text = nullptr; ///< Borrowed from the tree.
    const reSet* set = nullptr;           ///< Likewise.
};

/// A pattern as a list of steps, for patterns of a simple build: only single units are repeated,
/// groups stand outside of alternatives, no choice follows alternatives within a group, nothing is
/// looked ahead at, and references lead back to groups that are complete. For these the search over
/// the tree of nodes comes down to trying one choice after the other, and the match alone settles
/// what it leaves in the captures. A pattern of any other build has no steps; its tree is walked,
/// which is what defines every result.
class StraightProgram {
public:
    StraightProgram() = default;
    StraightProgram(const StraightProgram&) = delete;
    StraightProgram& operator=(const StraightProgram&) = delete;
    ~StraightProgram() { Heap::operator delete(steps_); }

    /// Makes the steps of a compiled tree, which must outlive them. `flags` are those of `RegExp`.
    void compile(const reAtom& root, int captureCount, int flags);

    bool isEmpty() const { return !steps_; }
    /// The last one is `End`.
    const Step* steps() const { return steps_; }
    /// How many choices can be open at once.
    int choiceCount() const { return choiceCount_; }

private:
    class Compiler;

    Step* steps_ = nullptr; // owned
    int choiceCount_ = 0;
};

/// Calls `use` with a test of whether a unit belongs to a run, so that its loops hold the one
/// comparison that it takes.
template <class Use>
inline auto withUnitTest(const Step& run, Use use) {
    switch (run.runUnits) {
    case RunUnits::Exact:
        return use([wanted = run.unit](unsigned short unit) { return unit == wanted; });
    case RunUnits::Folded:
        return use([upper = run.unit](unsigned short unit) { return foldUpper(unit) == upper; });
    case RunUnits::NoLineFeed:
        return use([](unsigned short unit) { return unit != '\n'; });
    case RunUnits::Set:
        break;
    }
    return use([&set = *run.set](unsigned short unit) { return set.accepts(unit); });
}

inline bool isInRun(const Step& run, unsigned short unit) {
    return withUnitTest(run, [unit](auto isIn) { return isIn(unit); });
}

} // namespace KrCore
