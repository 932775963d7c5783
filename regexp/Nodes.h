#pragma once

#include "regexp/MatchState.h"
#include "regexp/UnitRanges.h"

#include <krcore/foundation/Root.h>
#include <krcore/text/String.h>

#include <cstdint>
#include <memory>
#include <utility>

namespace KrCore {

/// The kinds of node in a compiled pattern.
enum class NodeKind : int {
    Bol = 1,
    Eol = 2,
    AnyChar = 3,
    String = 4,
    BackRef = 5,
    Quantifier = 6,
    Alternative = 7,
    SubExpr = 8,
    Set = 9,
    WordBoundary = 10,
};

/// What a group is for.
enum class GroupKind : int { Capturing = 0, Plain = 1, LookAhead = 2, NegativeLookAhead = 3 };

/// One node of a compiled pattern. Nodes of one sequence form a chain, which is owned by whoever
/// owns its first node. A node matches at the state's position and moves it on; what it chose is
/// kept in the state, so that it can be matched again with the same choices (`match`) or with the
/// next ones (`backtrack`).
class reAtom : public Root {
public:
    ~reAtom() override;

    /// Matches with the current choices.
    virtual bool match(MatchState& state) const = 0;
    /// Moves on to the next choice; false when there is none left.
    virtual bool backtrack(MatchState& state) const;
    /// Puts this node and what is within it back to the first choices.
    virtual void reset(MatchState& state) const;
    /// A quantifier has completed a repetition of this node.
    virtual void rearm(MatchState& state) const;
    /// Unsets the captures from the first group in the rest of the chain on; whether there was one.
    virtual bool clearCaptures(MatchState& state) const;

    NodeKind kind() const { return kind_; }
    /// Whether there may be another way to match, or something to reset.
    bool isBacktrackable() const { return isBacktrackable_; }
    /// The capture slots that this node or one within may change: none when the first one is behind
    /// the last.
    int firstSlot() const { return firstSlot_; }
    int lastSlot() const { return lastSlot_; }
    bool hasAlternation() const { return hasAlternation_; }
    /// How many nodes lie within each other here: 0 for one without any within.
    int height() const { return height_; }

    reAtom* next = nullptr;
    reAtom* prev = nullptr;

protected:
    explicit reAtom(NodeKind kind) : kind_(kind) {}

    /// Takes over what is to be known of a chain within this node.
    void adoptTraits(const reAtom* chain);

    static constexpr int noSlot = 2147483647;

    bool isBacktrackable_ = false;
    bool hasAlternation_ = false;
    int firstSlot_ = noSlot;
    int lastSlot_ = -1;
    int height_ = 0;

private:
    NodeKind kind_;
};

/// Matches the nodes of a chain in order with their current choices, until one fails.
bool matchChain(const reAtom* first, MatchState& state);
/// Moves on to the next choice of a chain, the last node's first. A node without one is put back to
/// its first.
bool backtrackChain(const reAtom* last, MatchState& state);

/// A sequence of nodes that is being built.
class NodeChain {
public:
    NodeChain() = default;
    NodeChain(NodeChain&& other) noexcept
        : first_(std::exchange(other.first_, nullptr)), last_(std::exchange(other.last_, nullptr)) {
    }
    NodeChain& operator=(NodeChain&& other) noexcept {
        std::swap(first_, other.first_);
        std::swap(last_, other.last_);
        return *this;
    }
    ~NodeChain() { destroy(first_); }

    /// Takes over a node.
    void append(reAtom* node);
    /// Hands over the last node, or null.
    [[nodiscard]] reAtom* takeLast();
    /// Hands over all of them by the first one.
    [[nodiscard]] reAtom* release() {
        last_ = nullptr;
        return std::exchange(first_, nullptr);
    }
    bool isEmpty() const { return !first_; }

    /// Deletes a chain, however long it is.
    static void destroy(reAtom* first);

private:
    reAtom* first_ = nullptr;
    reAtom* last_ = nullptr;
};

struct ChainDeleter {
    void operator()(reAtom* first) const { NodeChain::destroy(first); }
};
using OwnedChain = std::unique_ptr<reAtom, ChainDeleter>;

class reBol : public reAtom {
public:
    reBol() : reAtom(NodeKind::Bol) {}
    bool match(MatchState& state) const override;
};

class reEol : public reAtom {
public:
    reEol() : reAtom(NodeKind::Eol) {}
    bool match(MatchState& state) const override;
};

/// A run of dots.
class reAnyChar : public reAtom {
public:
    explicit reAnyChar(int count) : reAtom(NodeKind::AnyChar), count_(count) {}
    bool match(MatchState& state) const override;
    int count() const { return count_; }

private:
    int count_;
};

class reString : public reAtom {
public:
    /// The text as it is, or in upper case for patterns that ignore case.
    explicit reString(String text) : reAtom(NodeKind::String), text_(std::move(text)) {}
    bool match(MatchState& state) const override;
    const String& text() const { return text_; }

private:
    String text_;
};

class reBackRef : public reAtom {
public:
    explicit reBackRef(int group) : reAtom(NodeKind::BackRef), group_(group) {}
    bool match(MatchState& state) const override;
    int group() const { return group_; }

private:
    int group_;
};

class reWordBoundary : public reAtom {
public:
    explicit reWordBoundary(bool negated) : reAtom(NodeKind::WordBoundary), negated_(negated) {}
    bool match(MatchState& state) const override;
    bool isNegated() const { return negated_; }

private:
    bool negated_;
};

class reSet : public reAtom {
public:
    /// Takes what was collected. Without regard to case, the upper-case mapping of a unit is looked
    /// up and then the lower-case one, but never the unit itself.
    reSet(UnitRanges& ranges, bool negated, bool ignoreCase);
    bool match(MatchState& state) const override;
    /// Whether one unit matches.
    bool accepts(unsigned short unit) const {
        if (unit >= UnitSet::lowCount) return acceptsByRule(unit);
        return (low_[unit >> 5U] >> (unit & 31U) & 1U) != 0;
    }
    /// Whether some unit may match both; true also when that is not sure.
    bool mayShareUnits(const reSet& other) const;
    /// Whether a unit from 256 on may match.
    bool mayAcceptHigh() const { return negated_ || ignoreCase_ || units_.hasHigh(); }

private:
    bool acceptsByRule(unsigned short unit) const;

    UnitSet units_;
    std::uint32_t low_[UnitSet::lowWords] = {}; // the answers for units below 256
    bool negated_;
    bool ignoreCase_;
};

/// A node with a chain of its own.
class reContainer : public reAtom {
public:
    ~reContainer() override;
    void reset(MatchState& state) const override;
    void rearm(MatchState& state) const override;

    /// `records` are those of the nodes in the chain; of a quantifier its own too, as the last one.
    virtual void setChildren(OwnedChain chain, const RecordRange& records);
    const reAtom* firstChild() const { return first_; }

protected:
    using reAtom::reAtom;

    reAtom* first_ = nullptr;
    reAtom* last_ = nullptr;
    RecordRange records_ = {0, 0, 0, 0};
};

class reSubExpr : public reContainer {
public:
    /// The index of a group that does not capture is that of the last one opened before it.
    reSubExpr(int index, GroupKind kind);
    bool match(MatchState& state) const override;
    bool backtrack(MatchState& state) const override;
    bool clearCaptures(MatchState& state) const override;

    int index() const { return index_; }
    /// From here on `clearCaptures` unsets the slots.
    int firstCleared() const { return groupKind_ == GroupKind::Capturing ? index_ : index_ + 1; }
    GroupKind groupKind() const { return groupKind_; }

private:
    bool isLookAhead() const {
        return groupKind_ == GroupKind::LookAhead || groupKind_ == GroupKind::NegativeLookAhead;
    }

    int index_;
    GroupKind groupKind_;
};

class reQuantifier : public reContainer {
public:
    /// Without bound.
    static constexpr int unlimited = 2147483647;

    reQuantifier(int minimum, int maximum, bool lazy);
    void setChildren(OwnedChain chain, const RecordRange& records) override;
    bool match(MatchState& state) const override;
    bool backtrack(MatchState& state) const override;

    int minimum() const { return minimum_; }
    int maximum() const { return maximum_; }
    bool isLazy() const { return lazy_; }
    int recordIndex() const { return records_.endQuantifier - 1; }

private:
    int repeat(MatchState& state, QuantifierRecord& record) const;
    bool takeNextTarget(const MatchState& state, QuantifierRecord& record) const;

    int minimum_;
    int maximum_;
    bool lazy_;
    int firstRepeatedSlot_ = noSlot; // what a repetition may change
    int lastRepeatedSlot_ = -1;
};

class reAlternative : public reAtom {
public:
    explicit reAlternative(int recordIndex);
    ~reAlternative() override;
    bool match(MatchState& state) const override;
    bool backtrack(MatchState& state) const override;
    void reset(MatchState& state) const override;
    void rearm(MatchState& state) const override;

    /// Adds a chain, which is not empty, as the next alternative.
    void add(OwnedChain chain);
    /// Says which records belong to this node and its alternatives.
    void setRecords(const RecordRange& records) { records_ = records; }

    int count() const { return count_; }
    const reAtom* alternative(int index) const { return alternatives_[index].first; }

private:
    struct Alternative {
        reAtom* first; // owned
        reAtom* last;
        bool isBacktrackable;
    };

    bool tryFrom(int& index, MatchState& state) const;

    Alternative* alternatives_ = nullptr; // owned
    int count_ = 0;
    int capacity_ = 0;
    int recordIndex_;
    RecordRange records_ = {0, 0, 0, 0};
};

} // namespace KrCore
