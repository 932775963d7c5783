#pragma once

#include <memory>
#include <string>

/// What is searched for in what.
struct SearchCase {
    const char* name;
    const char16_t* pattern;
    bool ignoreCase;
    bool multiLine;
    std::u16string text;
};

/// The pattern of a case, compiled by one of the contenders, and its text. The case must outlive
/// it.
class Searcher {
public:
    virtual ~Searcher() = default;
    /// Counts the matches: each is looked for where the one before it ends, or one unit further
    /// when that was empty.
    virtual int countMatches() = 0;
};

enum class Found { Nothing, Empty, Units };

/// Counts with `find(int position, int& end)`, which looks for the first match from a position on
/// and says where it ends.
template <class Find>
int countMatches(int length, Find find) {
    int count = 0;
    for (int position = 0; position < length; ++count) {
        int end = 0;
        const Found found = find(position, end);
        if (found == Found::Nothing) break;
        position = found == Found::Empty ? end + 1 : end;
    }
    return count;
}

std::unique_ptr<Searcher> makeStandardSearcher(const SearchCase& search);
#ifdef KR_PEER_PCRE2
std::unique_ptr<Searcher> makePcre2Searcher(const SearchCase& search);
std::unique_ptr<Searcher> makePcre2JitSearcher(const SearchCase& search);
void compilePcre2(const SearchCase& search);
#endif
#ifdef KR_PEER_QT
std::unique_ptr<Searcher> makeQtSearcher(const SearchCase& search);
#endif
