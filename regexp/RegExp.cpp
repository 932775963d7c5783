#include <krcore/regexp/RegExp.h>

#include "regexp/RegExpData.h"
#include "regexp/StraightMatch.h"

#include <algorithm>

namespace KrCore {

// Exported, for callers on Windows that take its address.
constexpr int RegExp::IgnoreCase;
constexpr int RegExp::MultiLine;

namespace {

void clear(Capture* list, int count) {
    for (int slot = 0; slot < count; ++slot)
        list[slot].start = -1;
}

/// The whole match, or an unset capture.
Capture searchTree(const RegExpData& data, const String& subject, int start, Capture* list) {
    MatchState state(data, subject.wstr(), subject.length(), list);
    for (int position = start; position <= state.length; ++position) {
        state.position = position;
        if (state.walk(*data.root)) return {position, state.position};
    }
    return {};
}

/// The same by the steps of a straight program.
Capture searchSteps(const RegExpData& data, const String& subject, int start, Capture* list) {
    StraightMatch match(data.program, subject.wstr(), subject.length(), data.flags, list);
    return match.search(data.start, start);
}

} // namespace

RegExp::RegExp() : data_(new RegExpData) {}

RegExp::RegExp(const String& pattern, int flags) : data_(new RegExpData(pattern, flags)) {}

RegExp::RegExp(const RegExp& other) : data_(other.data_) { data_->addRef(); }

RegExp::~RegExp() { data_->release(); }

RegExp& RegExp::operator=(const RegExp& other) {
    other.data_->addRef();
    data_->release();
    data_ = other.data_;
    return *this;
}

bool RegExp::good() const { return data_->root != nullptr; }

const String& RegExp::getPattern() const { return data_->pattern; }

int RegExp::getFlags() const { return data_->flags; }

int RegExp::getCaptureLength() const { return data_->captureCount; }

Capture* RegExp::createCaptureList() const {
    return new Capture[static_cast<std::size_t>(std::max(data_->captureCount, 1))];
}

bool RegExp::match(const String& subject, int start, Capture& captures) const {
    Capture* const list = &captures;
    const int slotCount = data_->captureCount;
    clear(list, slotCount);
    const int length = subject.length();
    if (!data_->root || start < 0 || start > length || (start == length && length > 0))
        return false;
    const Capture whole = data_->program.isEmpty() ? searchTree(*data_, subject, start, list)
                                                   : searchSteps(*data_, subject, start, list);
    if (whole.start < 0) {
        clear(list, slotCount);
        return false;
    }
    // A default expression has no slot for the whole match.
    if (slotCount > 0) list[0] = whole;
    return true;
}

} // namespace KrCore
