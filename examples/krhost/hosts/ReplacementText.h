#pragma once

namespace KrCore {
class String;
}

namespace krhost {

class MatchSearch;

/// What scripts write in the place of a match: "$1" to "$99" are its groups, "$&" is all of it,
/// "$`" and "$'" are what stands before and behind it, "$$" is a "$". Any other "$", also one with
/// the number of a group that is not there, stands for itself.
namespace ReplacementText {

/// Appends `replacement`, filled in with the last match of the search.
void append(KrCore::String& text, const KrCore::String& replacement, const MatchSearch& search);

} // namespace ReplacementText

} // namespace krhost
