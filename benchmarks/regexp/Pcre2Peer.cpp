#include "Searcher.h"

#include <pcre2.h>

namespace {

pcre2_code* compile(const SearchCase& search) {
    const std::uint32_t options =
        (search.ignoreCase ? PCRE2_CASELESS : 0U) | (search.multiLine ? PCRE2_MULTILINE : 0U);
    int error = 0;
    PCRE2_SIZE errorOffset = 0;
    return pcre2_compile(reinterpret_cast<PCRE2_SPTR>(search.pattern), PCRE2_ZERO_TERMINATED,
                         options, &error, &errorOffset, nullptr);
}

/// Of the compiler for machine code and the interpreter each has its own way into a match.
enum class Way { Jit, Interpreter };

class Pcre2Searcher : public Searcher {
public:
    Pcre2Searcher(const SearchCase& search, Way way)
        : text_(search.text), code_(compile(search)), way_(way),
          match_(pcre2_match_data_create_from_pattern(code_, nullptr)) {
        if (way == Way::Jit) pcre2_jit_compile(code_, PCRE2_JIT_COMPLETE);
    }
    ~Pcre2Searcher() override {
        pcre2_match_data_free(match_);
        pcre2_code_free(code_);
    }

    int countMatches() override {
        const auto* units = reinterpret_cast<PCRE2_SPTR>(text_.data());
        const auto match = way_ == Way::Jit ? pcre2_jit_match : pcre2_match;
        const PCRE2_SIZE* const ends = pcre2_get_ovector_pointer(match_);
        return ::countMatches(static_cast<int>(text_.size()), [&](int position, int& end) {
            const auto from = static_cast<PCRE2_SIZE>(position);
            if (match(code_, units, text_.size(), from, 0, match_, nullptr) <= 0)
                return Found::Nothing;
            end = static_cast<int>(ends[1]);
            return ends[0] < ends[1] ? Found::Units : Found::Empty;
        });
    }

private:
    const std::u16string& text_;
    pcre2_code* code_;
    Way way_;
    pcre2_match_data* match_;
};

} // namespace

std::unique_ptr<Searcher> makePcre2Searcher(const SearchCase& search) {
    return std::make_unique<Pcre2Searcher>(search, Way::Interpreter);
}

std::unique_ptr<Searcher> makePcre2JitSearcher(const SearchCase& search) {
    return std::make_unique<Pcre2Searcher>(search, Way::Jit);
}

void compilePcre2(const SearchCase& search) { pcre2_code_free(compile(search)); }
