// Counting the matches of a pattern in a log of 1 MB, matching a short text over and over, and
// compiling.

#include "LogText.h"
#include "Searcher.h"

#include <krcore/regexp/RegExp.h>
#include <krcore/text/StringConversions.h>

#include <benchmark/benchmark.h>

#include <iterator>
#include <string>

using KrCore::Capture;
using KrCore::RegExp;
using KrCore::String;

namespace {

RegExp compile(const SearchCase& search) {
    const int flags =
        (search.ignoreCase ? RegExp::IgnoreCase : 0) | (search.multiLine ? RegExp::MultiLine : 0);
    return {KrCore::fromUtf16(search.pattern), flags};
}

class KrCoreSearcher : public Searcher {
public:
    explicit KrCoreSearcher(const SearchCase& search)
        : text_(KrCore::fromUtf16(search.text)), expression_(compile(search)),
          captures_(expression_.createCaptureList()) {}

    int countMatches() override {
        return ::countMatches(text_.length(), [this](int position, int& end) {
            if (!expression_.match(text_, position, captures_[0])) return Found::Nothing;
            end = captures_[0].end;
            return captures_[0].start < end ? Found::Units : Found::Empty;
        });
    }

private:
    String text_;
    RegExp expression_;
    std::unique_ptr<Capture[]> captures_;
};

std::unique_ptr<Searcher> makeKrCoreSearcher(const SearchCase& search) {
    return std::make_unique<KrCoreSearcher>(search);
}

constexpr struct {
    const char* name;
    std::unique_ptr<Searcher> (*make)(const SearchCase&);
} contenders[] = {
    {"krcore", makeKrCoreSearcher},
#ifdef KR_PEER_PCRE2
    {"pcre2-jit", makePcre2JitSearcher},
    {"pcre2", makePcre2Searcher},
#endif
#ifdef KR_PEER_QT
    {"qt", makeQtSearcher},
#endif
    {"std::wregex", makeStandardSearcher},
};

void count(benchmark::State& state, const SearchCase& search, Searcher& searcher) {
    const int matches = searcher.countMatches();
    if (matches == 0 || matches != KrCoreSearcher(search).countMatches())
        return state.SkipWithError("the contenders find different matches");
    for (auto _ : state)
        benchmark::DoNotOptimize(searcher.countMatches());
    state.counters["matches"] = matches;
}

std::string caseName(const std::string& name, const char* contender) {
    return "regexp/" + name + "/" + contender;
}

void addSearch(const SearchCase& search) {
    for (const auto& contender : contenders) {
        benchmark::RegisterBenchmark(caseName(search.name, contender.name).c_str(),
                                     [&search, &contender](benchmark::State& state) {
                                         count(state, search, *contender.make(search));
                                     })
            ->Unit(benchmark::kMicrosecond);
    }
}

void compileKrCore(benchmark::State& state, const SearchCase& search) {
    const String pattern = KrCore::fromUtf16(search.pattern);
    for (auto _ : state)
        benchmark::DoNotOptimize(RegExp(pattern, 0).good());
}

void addCompilation(const SearchCase& search) {
    const std::string name = std::string("compile ") + search.name;
    benchmark::RegisterBenchmark(
        caseName(name, "krcore").c_str(),
        [&search](benchmark::State& state) { compileKrCore(state, search); });
#ifdef KR_PEER_PCRE2
    benchmark::RegisterBenchmark(caseName(name, "pcre2").c_str(),
                                 [&search](benchmark::State& state) {
                                     for (auto _ : state)
                                         compilePcre2(search);
                                 });
#endif
}

[[maybe_unused]] const bool isRegistered = [] {
    static const std::u16string log = makeLogText();
    static const SearchCase searches[] = {
        {"literal", u"host unreachable", false, false, log},
        {"class run", u"[a-z]+", false, false, log},
        {"alternation", u"timeout|refused|warnings", false, false, log},
        {"captures", u"(\\w+)=(\\d+)", false, false, log},
        {"ignore case", u"connection", true, false, log},
        {"back-reference", u"\\b(\\w+) \\1\\b", false, false, log},
        {"lazy", u"\".*?\"", false, false, log},
        {"word prefix", u"\\bcon\\w*", false, false, log},
        {"log line",
         u"^(\\d{4}-\\d\\d-\\d\\d) (\\d\\d:\\d\\d:\\d\\d)\\.\\d+ (\\w+) \\[([^\\]]+)\\] (\\w+): "
         u"(.*)$",
         false, true, log},
        {"short subject", u"^(\\w+)\\s*=\\s*(\\w+)$", false, false, u"timeout = 30"},
    };
    for (const SearchCase& search : searches)
        addSearch(search);
    addCompilation(searches[std::size(searches) - 2]);
    addCompilation(searches[std::size(searches) - 1]);
    return true;
}();

} // namespace
