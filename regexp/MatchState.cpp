#include "regexp/MatchState.h"

#include "regexp/RegExpData.h"

#include <algorithm>

namespace KrCore {

namespace {

std::size_t blockSize(const RegExpData& data) {
    const auto quantifiers = static_cast<std::size_t>(data.quantifierCount);
    const auto alternations = static_cast<std::size_t>(data.alternationCount);
    const auto choices = static_cast<std::size_t>(data.choiceCount);
    return quantifiers * sizeof(QuantifierRecord) +
           alternations * (sizeof(AlternationRecord) + sizeof(int)) + choices * sizeof(int);
}

} // namespace

MatchState::MatchState(const RegExpData& data, const unsigned short* subject, int subjectLength,
                       Capture* list)
    : units(subject), length(subjectLength), captures(list), captureCount(data.captureCount),
      data_(data), flags_(data.flags) {
    const std::size_t size = blockSize(data);
    if (size > bufferSize) block_ = Heap::operator new(size);
    void* const block = block_ ? block_ : buffer_;
    quantifiers_ = static_cast<QuantifierRecord*>(block);
    alternations_ = reinterpret_cast<AlternationRecord*>(quantifiers_ + data.quantifierCount);
    rearmed_ = reinterpret_cast<int*>(alternations_ + data.alternationCount);
    starts_ = rearmed_ + data.alternationCount;
    reset({0, data.quantifierCount, 0, data.alternationCount});
    std::fill_n(alternations_, data.alternationCount, AlternationRecord{0, false});
}

MatchState::~MatchState() { Heap::operator delete(block_); }

void MatchState::reset(const RecordRange& range) {
    for (int i = range.firstQuantifier; i < range.endQuantifier; ++i)
        quantifiers_[i] = {static_cast<int>(data_.initialTargets.getData()[i]), 0, false, false};
    for (int i = range.firstAlternation; i < range.endAlternation; ++i)
        alternations_[i].current = 0;
}

void MatchState::rearm(int alternation) {
    AlternationRecord& record = alternations_[alternation];
    if (record.rearmed) return; // by a quantifier further out, which lasts longer
    record.rearmed = true;
    rearmed_[rearmedCount_++] = alternation;
}

void MatchState::endRearm(int mark) {
    while (rearmedCount_ > mark)
        alternations_[rearmed_[--rearmedCount_]].rearmed = false;
}

void MatchState::clearCaptures(int firstSlot) {
    for (int slot = firstSlot; slot < captureCount; ++slot)
        captures[slot].start = -1;
}

bool MatchState::walk(const reAtom& first) {
    int depth = 0;
    for (const reAtom* node = &first; node; node = node->next) {
        if (node->isBacktrackable()) starts_[depth++] = position;
        if (node->match(*this)) continue;
        node = matchEarlierChoice(node, depth);
        if (!node) return false;
    }
    return true;
}

/// Goes back from a node that failed to the nearest one that matches in another way.
const reAtom* MatchState::matchEarlierChoice(const reAtom* node, int& depth) {
    for (; node; node = node->prev) {
        if (!node->isBacktrackable()) continue;
        while (node->backtrack(*this)) {
            position = starts_[depth - 1];
            if (node->match(*this)) return node;
        }
        node->reset(*this);
        --depth;
    }
    return nullptr;
}

void SavedCaptures::copyOut() {
    if (!isSaved_ && count_ > bufferedSlots) state_.saved_.extend(static_cast<std::size_t>(count_));
    isSaved_ = true;
    std::copy_n(state_.captures + firstSlot_, count_, copy());
}

void SavedCaptures::restore() {
    if (isSaved_) std::copy_n(copy(), count_, state_.captures + firstSlot_);
}

} // namespace KrCore
