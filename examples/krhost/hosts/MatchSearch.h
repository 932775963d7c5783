#pragma once

#include <krcore/regexp/RegExp.h>
#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

#include <memory>

namespace krhost {

/// The matches of an expression in a text, one after the other.
///
/// ```cpp
/// for (MatchSearch search(expression, text, 0); search.find();) use(search.group(0));
/// ```
class MatchSearch {
public:
    MatchSearch(const KrCore::RegExp& expression, const KrCore::String& subject, int start);

    /// Finds the next match. Behind an empty one it begins a unit further on, so a loop ends.
    bool find();
    /// Where the next match is looked for.
    int position() const { return position_; }

    const KrCore::String& subject() const { return subject_; }
    /// Groups, the whole match included.
    int groupCount() const { return expression_.getCaptureLength(); }
    /// What the last match captured.
    const KrCore::Capture& capture(int group) const { return captures_[std::size_t(group)]; }
    /// The text of a group; undefined when it is unset.
    KrCore::Variant group(int group) const;
    void appendGroup(KrCore::String& text, int group) const;
    /// Appends a range of the subject.
    void appendRange(KrCore::String& text, int start, int end) const;

private:
    KrCore::RegExp expression_;
    KrCore::String subject_;
    std::unique_ptr<KrCore::Capture[]> captures_;
    int position_;
};

} // namespace krhost
