// The one peer without 16-bit units: it is given the same text in wide characters.

#include "Searcher.h"

#include <regex>

namespace {

std::wstring widen(const std::u16string& text) { return {text.begin(), text.end()}; }

class StandardSearcher : public Searcher {
public:
    explicit StandardSearcher(const SearchCase& search)
        : text_(widen(search.text)), expression_(widen(search.pattern), optionsOf(search)) {}

    int countMatches() override {
        return ::countMatches(static_cast<int>(text_.size()), [this](int position, int& end) {
            const auto from = text_.cbegin() + position;
            const auto flags = position > 0 ? std::regex_constants::match_prev_avail
                                            : std::regex_constants::match_default;
            if (!std::regex_search(from, text_.cend(), match_, expression_, flags))
                return Found::Nothing;
            end = static_cast<int>(match_[0].second - text_.cbegin());
            return match_[0].length() > 0 ? Found::Units : Found::Empty;
        });
    }

private:
    static std::regex_constants::syntax_option_type optionsOf(const SearchCase& search) {
        auto options = std::regex_constants::ECMAScript | std::regex_constants::optimize;
        if (search.ignoreCase) options |= std::regex_constants::icase;
        if (search.multiLine) options |= std::regex_constants::multiline;
        return options;
    }

    std::wstring text_;
    std::wregex expression_;
    std::wsmatch match_;
};

} // namespace

std::unique_ptr<Searcher> makeStandardSearcher(const SearchCase& search) {
    return std::make_unique<StandardSearcher>(search);
}
