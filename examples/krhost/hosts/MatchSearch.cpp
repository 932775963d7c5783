#include "hosts/MatchSearch.h"

namespace krhost {

using namespace KrCore;

MatchSearch::MatchSearch(const RegExp& expression, const String& subject, int start)
    : expression_(expression), subject_(subject), captures_(expression.createCaptureList()),
      position_(start) {}

bool MatchSearch::find() {
    if (!expression_.match(subject_, position_, captures_[0])) return false;
    const Capture& whole = capture(0);
    position_ = whole.end > whole.start ? whole.end : whole.end + 1;
    return true;
}

Variant MatchSearch::group(int group) const {
    const Capture& captured = capture(group);
    if (captured.start < 0) return {};
    return subject_.substr(captured.start, captured.end - captured.start);
}

void MatchSearch::appendGroup(String& text, int group) const {
    const Capture& captured = capture(group);
    if (captured.start >= 0) appendRange(text, captured.start, captured.end);
}

void MatchSearch::appendRange(String& text, int start, int end) const {
    text.append(subject_.wstr() + start, end - start);
}

} // namespace krhost
