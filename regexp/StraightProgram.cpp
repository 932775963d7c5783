#include "regexp/StraightProgram.h"

#include "foundation/WorkStack.h"
#include "regexp/UnitTests.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace KrCore {

/// Turns nodes into steps; `fits_` is false from the first one on that has no step.
class StraightProgram::Compiler {
public:
    Compiler(WorkStack<Step>& steps, int captureCount, bool ignoreCase)
        : steps_(steps), ignoreCase_(ignoreCase) {
        std::fill_n(groups_.extend(static_cast<std::size_t>(captureCount)), captureCount,
                    GroupState::Ahead);
    }

    bool compile(const reAtom& root) {
        for (const reAtom* node = &root; node && fits_; node = node->next)
            addNode(*node);
        add({StepKind::End});
        return fits_;
    }
    int choiceCount() const { return choiceCount_; }

private:
    enum class GroupState : unsigned char { Ahead, Open, Complete };

    Step& add(const Step& step) {
        steps_.push(step);
        return steps_.top();
    }
    int length() const { return static_cast<int>(steps_.size()); }

    void addInnerChain(const reAtom* first);
    void addNode(const reAtom& node);
    void addText(const reString& node);
    void addDots(int count);
    void addSet(const reSet& node);
    void addRun(const reQuantifier& node);
    void addGroup(const reSubExpr& node);
    void addAlternatives(const reAlternative& node);
    void addReference(const reBackRef& node);

    WorkStack<Step>& steps_;
    WorkStack<GroupState> groups_; // by slot
    const bool ignoreCase_;
    bool isInAlternative_ = false;
    bool fits_ = true;
    int choiceCount_ = 0;
};

/// The chain of a group or an alternative. When it fails, all of its nodes start again with the
/// next choice of the last one that has any, and alternatives among them that have all failed then
/// match the empty text.
void StraightProgram::Compiler::addInnerChain(const reAtom* first) {
    bool isBehindAlternatives = false;
    for (const reAtom* node = first; node && fits_; node = node->next) {
        fits_ = !isBehindAlternatives || !node->isBacktrackable();
        isBehindAlternatives = isBehindAlternatives || node->hasAlternation();
        addNode(*node);
    }
}

void StraightProgram::Compiler::addNode(const reAtom& node) {
    switch (node.kind()) {
    case NodeKind::Bol:
        add({StepKind::LineStart});
        break;
    case NodeKind::Eol:
        add({StepKind::LineEnd});
        break;
    case NodeKind::AnyChar:
        addDots(static_cast<const reAnyChar&>(node).count());
        break;
    case NodeKind::String:
        addText(static_cast<const reString&>(node));
        break;
    case NodeKind::BackRef:
        addReference(static_cast<const reBackRef&>(node));
        break;
    case NodeKind::Quantifier:
        addRun(static_cast<const reQuantifier&>(node));
        break;
    case NodeKind::Alternative:
        addAlternatives(static_cast<const reAlternative&>(node));
        break;
    case NodeKind::SubExpr:
        addGroup(static_cast<const reSubExpr&>(node));
        break;
    case NodeKind::Set:
        addSet(static_cast<const reSet&>(node));
        break;
    case NodeKind::WordBoundary:
        add({StepKind::Boundary}).isNegated = static_cast<const reWordBoundary&>(node).isNegated();
        break;
    }
}

void StraightProgram::Compiler::addText(const reString& node) {
    if (node.text().isEmpty()) return;
    Step& step = add({ignoreCase_ ? StepKind::FoldedText : StepKind::Text});
    step.text = node.text().wstr();
    step.unit = step.text[0];
    step.limit = node.text().length();
}

void StraightProgram::Compiler::addDots(int count) {
    Step& step = add({StepKind::Dots});
    step.runUnits = RunUnits::NoLineFeed;
    step.number = count;
}

void StraightProgram::Compiler::addSet(const reSet& node) {
    Step& step = add({StepKind::Set});
    step.runUnits = RunUnits::Set;
    step.set = &node;
}

/// Of quantifiers those over a single unit; over anything else the repetitions share choices.
void StraightProgram::Compiler::addRun(const reQuantifier& node) {
    const reAtom& repeated = *node.firstChild();
    Step step = {StepKind::Run};
    step.isLazy = node.isLazy();
    step.number = node.minimum();
    step.limit = node.maximum();
    if (repeated.kind() == NodeKind::String &&
        static_cast<const reString&>(repeated).text().length() == 1) {
        step.runUnits = ignoreCase_ ? RunUnits::Folded : RunUnits::Exact;
        step.unit = static_cast<const reString&>(repeated).text().wstr()[0];
    } else if (repeated.kind() == NodeKind::AnyChar &&
               static_cast<const reAnyChar&>(repeated).count() == 1) {
        step.runUnits = RunUnits::NoLineFeed;
    } else if (repeated.kind() == NodeKind::Set) {
        step.runUnits = RunUnits::Set;
        step.set = &static_cast<const reSet&>(repeated);
    } else {
        fits_ = false;
    }
    if (step.number < step.limit) ++choiceCount_;
    add(step);
}

/// A look-ahead is never asked again, which is another way of searching; and alternatives leave
/// captures behind when they are abandoned.
void StraightProgram::Compiler::addGroup(const reSubExpr& node) {
    if (node.groupKind() == GroupKind::Plain) return addInnerChain(node.firstChild());
    const auto slot = static_cast<std::size_t>(node.index());
    // A group with an unknown mark has the slot of the one before it.
    if (node.groupKind() != GroupKind::Capturing || isInAlternative_ || slot == 0 ||
        groups_[slot] != GroupState::Ahead) {
        fits_ = false;
        return;
    }
    groups_[slot] = GroupState::Open;
    add({StepKind::Open}).number = node.index();
    addInnerChain(node.firstChild());
    add({StepKind::Close}).number = node.index();
    groups_[slot] = GroupState::Complete;
}

void StraightProgram::Compiler::addAlternatives(const reAlternative& node) {
    const bool wasInAlternative = std::exchange(isInAlternative_, true);
    WorkStack<int> jumps;
    for (int i = 0; i < node.count() && fits_; ++i) {
        const int branch = length();
        add({StepKind::Branch});
        addInnerChain(node.alternative(i));
        const bool isLast = i == node.count() - 1;
        if (isLast) break;
        jumps.push(length());
        add({StepKind::Jump});
        steps_[static_cast<std::size_t>(branch)].target = length();
    }
    for (int jump : jumps)
        steps_[static_cast<std::size_t>(jump)].target = length();
    ++choiceCount_;
    isInAlternative_ = wasInAlternative;
}

/// A group that is not complete may hold what an earlier attempt has left in it.
void StraightProgram::Compiler::addReference(const reBackRef& node) {
    fits_ = fits_ && groups_[static_cast<std::size_t>(node.group())] == GroupState::Complete;
    add({StepKind::BackReference}).number = node.group();
}

namespace {

/// What comes after a step, as far as there is but one way on.
class Outlook {
public:
    Outlook(const Step* steps, bool multiLine) : steps_(steps), isMultiLine_(multiLine) {}

    /// The next step that does more than to note a position, or one on the way there: many runs may
    /// lead to the same long way.
    const Step& behind(const Step& step) const {
        constexpr int mostSteps = 64;
        const Step* next = &step + 1;
        for (int i = 0; i < mostSteps; ++i) {
            if (next->kind == StepKind::Jump) {
                next = steps_ + next->target;
            } else if (next->kind == StepKind::Open || next->kind == StepKind::Close) {
                ++next;
            } else {
                break;
            }
        }
        return *next;
    }

    /// Whether a run can only match at its full length: nothing could go on at one of its units.
    bool isFinal(const Step& run) const {
        if (run.isLazy) return false;
        const Step& next = behind(run);
        switch (next.kind) {
        case StepKind::End:
            return true;
        case StepKind::LineEnd:
            return !isMultiLine_;
        case StepKind::Text:
            return !isInRun(run, next.text[0]);
        case StepKind::Run:
            if (next.number == 0) return false;
            [[fallthrough]];
        case StepKind::Set:
            return run.set && next.set && !run.set->mayShareUnits(*next.set);
        default:
            return false;
        }
    }

private:
    const Step* steps_;
    bool isMultiLine_;
};

/// Marks a run that every match begins with, if a failure of a match says that none begins within
/// the run either: that match has tried to go on at each unit from its least length on, and those
/// further behind could go on nowhere else. Only a reference can tell where the run began.
void markLeadingRun(Step* first, Step* end) {
    Step* step = first;
    while (step->kind == StepKind::Open || step->kind == StepKind::Boundary)
        ++step;
    const bool isReferred = std::any_of(
        first, end, [](const Step& each) { return each.kind == StepKind::BackReference; });
    step->isLeading = step->kind == StepKind::Run && !step->isLazy &&
                      step->limit == reQuantifier::unlimited && !isReferred;
}

} // namespace

void StraightProgram::compile(const reAtom& root, int captureCount, int flags) {
    WorkStack<Step> steps;
    Compiler compiler(steps, captureCount, (flags & RegExp::IgnoreCase) != 0);
    if (!compiler.compile(root)) return;
    choiceCount_ = compiler.choiceCount();
    const Outlook outlook(steps.begin(), (flags & RegExp::MultiLine) != 0);
    for (Step& step : steps) {
        if (step.kind != StepKind::Run && step.kind != StepKind::Branch) continue;
        const Step& next = outlook.behind(step);
        if (next.kind == StepKind::Text) step.following = next.text[0];
        if (step.kind == StepKind::Run) step.isFinal = outlook.isFinal(step);
    }
    markLeadingRun(steps.begin(), steps.end());
    const std::size_t byteCount = steps.size() * sizeof(Step);
    steps_ = static_cast<Step*>(Heap::operator new(byteCount));
    std::memcpy(steps_, steps.begin(), byteCount);
}

} // namespace KrCore
