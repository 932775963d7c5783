#include <krcore/regexp/RegExp.h>

#include "regexp/RegExpData.h"

#include <algorithm>

namespace KrCore {

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
    if (!data_->root) return false;
    Capture* const list = &captures;
    MatchState state(*data_, subject.wstr(), subject.length(), list);
    state.clearCaptures(0);
    if (start < 0 || (start > 0 && start >= state.length)) return false;
    if (state.length > 0 && start >= state.length) return false;
    for (int position = start; position <= state.length; ++position) {
        state.position = position;
        if (!state.walk(*data_->root)) continue;
        // A default expression has no slot for the whole match.
        if (state.captureCount > 0) {
            list[0].start = position;
            list[0].end = state.position;
        }
        return true;
    }
    state.clearCaptures(0);
    return false;
}

} // namespace KrCore
