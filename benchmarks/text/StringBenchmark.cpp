// String beside the string classes of ICU, Qt and the standard library.

#include <krcore/text/String.h>

#include <benchmark/benchmark.h>

#include <string>

#ifdef KR_BENCHMARK_ICU
#include <unicode/locid.h>
#include <unicode/unistr.h>
#endif
#ifdef KR_BENCHMARK_QT
#include <QString>
#endif

namespace {

// What each class calls the operations that are measured. `make` takes UTF-16 of any length.

struct KrCoreText {
    using Text = KrCore::String;
    using Unit = unsigned short;
    static Text make(const std::u16string& units) {
        return Text(units.c_str(), static_cast<int>(units.size()));
    }
    static void append(Text& text, Unit unit) { text.append(unit); }
    static void append(Text& text, const Text& more) { text.append(more); }
    static auto find(const Text& text, Unit unit) { return text.find(unit, 0); }
    static auto find(const Text& text, const Text& what) { return text.find(what, 0); }
    static void replaceAll(Text& text, const Text& what, const Text& with) {
        text.replaceAll(what, with, 0);
    }
    static int compare(const Text& a, const Text& b) { return a.cmp(b); }
    static int compareIgnoringCase(const Text& a, const Text& b) { return a.ucmp(b); }
    static Text upper(const Text& text) {
        Text result(text);
        result.toUpper();
        return result;
    }
    static Text widen(const std::string& bytes) { return Text(bytes.c_str()); }
};

struct StandardText {
    using Text = std::u16string;
    using Unit = char16_t;
    static Text make(const std::u16string& units) { return units; }
    static void append(Text& text, Unit unit) { text.push_back(unit); }
    static void append(Text& text, const Text& more) { text.append(more); }
};

#ifdef KR_BENCHMARK_ICU
struct IcuText {
    using Text = icu::UnicodeString;
    using Unit = char16_t;
    static Text make(const std::u16string& units) {
        return {units.data(), static_cast<std::int32_t>(units.size())};
    }
    static void append(Text& text, Unit unit) { text.append(unit); }
    static void append(Text& text, const Text& more) { text.append(more); }
    static auto find(const Text& text, const Text& what) { return text.indexOf(what); }
    static void replaceAll(Text& text, const Text& what, const Text& with) {
        text.findAndReplace(what, with);
    }
    static Text upper(const Text& text) {
        Text result(text);
        result.toUpper(icu::Locale::getRoot());
        return result;
    }
};
#endif

#ifdef KR_BENCHMARK_QT
struct QtText {
    using Text = QString;
    using Unit = QChar;
    static Text make(const std::u16string& units) { return QString::fromStdU16String(units); }
    static void append(Text& text, Unit unit) { text.append(unit); }
    static void append(Text& text, const Text& more) { text.append(more); }
    static auto find(const Text& text, Unit unit) { return text.indexOf(unit); }
    static auto find(const Text& text, const Text& what) { return text.indexOf(what); }
    static int compare(const Text& a, const Text& b) { return a.compare(b); }
    static int compareIgnoringCase(const Text& a, const Text& b) {
        return a.compare(b, Qt::CaseInsensitive);
    }
    static Text widen(const std::string& bytes) {
        return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
};
#endif

// ---- Texts ----

constexpr std::size_t manyUnits = 65536;

std::u16string prose(std::size_t count) {
    constexpr std::u16string_view sentence =
        u"The quick brown fox jumps over the lazy dog, and again. ";
    std::u16string result;
    while (result.size() < count) {
        result += sentence;
    }
    result.resize(count);
    return result;
}

std::u16string inCapitals(std::u16string text) {
    for (char16_t& unit : text) {
        if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - 32);
    }
    return text;
}

// ---- Cases ----

template <class Kind>
void copyText(benchmark::State& state) {
    const auto source = Kind::make(prose(100));
    for (auto step : state) {
        typename Kind::Text copy(source);
        benchmark::DoNotOptimize(copy);
    }
}

template <class Kind>
void appendUnits(benchmark::State& state) {
    for (auto step : state) {
        typename Kind::Text text;
        for (int i = 0; i < 1000; ++i) {
            Kind::append(text, typename Kind::Unit(u'x'));
        }
        benchmark::DoNotOptimize(text);
    }
}

template <class Kind>
void appendTexts(benchmark::State& state) {
    const auto piece = Kind::make(prose(20));
    for (auto step : state) {
        typename Kind::Text text;
        for (int i = 0; i < 50; ++i) {
            Kind::append(text, piece);
        }
        benchmark::DoNotOptimize(text);
    }
}

template <class Kind>
void concatenate(benchmark::State& state) {
    const auto left = Kind::make(prose(40));
    const auto right = Kind::make(prose(30));
    for (auto step : state) {
        typename Kind::Text both = left + right;
        benchmark::DoNotOptimize(both);
    }
}

template <class Kind>
void findUnit(benchmark::State& state) {
    const auto text = Kind::make(prose(manyUnits - 1) + u"\u20AC");
    for (auto step : state) {
        benchmark::DoNotOptimize(Kind::find(text, typename Kind::Unit(u'\u20AC')));
    }
}

template <class Kind>
void findIn(benchmark::State& state, const std::u16string& text, const std::u16string& what) {
    const auto where = Kind::make(text);
    const auto needle = Kind::make(what);
    for (auto step : state) {
        benchmark::DoNotOptimize(Kind::find(where, needle));
    }
}

template <class Kind>
void findText(benchmark::State& state) {
    findIn<Kind>(state, prose(manyUnits - 10) + u"lazy again", u"lazy again");
}

template <class Kind>
void findRepetitive(benchmark::State& state) {
    findIn<Kind>(state, std::u16string(manyUnits, u'a'),
                 std::u16string(64, u'a') + u'b' + std::u16string(64, u'a'));
}

template <class Kind>
void replaceAll(benchmark::State& state) {
    const auto text = Kind::make(prose(manyUnits));
    const auto what = Kind::make(u"fox");
    const auto with = Kind::make(u"squirrel");
    for (auto step : state) {
        typename Kind::Text changed(text);
        Kind::replaceAll(changed, what, with);
        benchmark::DoNotOptimize(changed);
    }
}

template <class Kind>
void compareEqual(benchmark::State& state) {
    const auto left = Kind::make(prose(1000));
    const auto right = Kind::make(prose(1000));
    for (auto step : state) {
        benchmark::DoNotOptimize(Kind::compare(left, right));
    }
}

template <class Kind>
void compareIgnoringCase(benchmark::State& state) {
    const auto left = Kind::make(prose(1000));
    const auto right = Kind::make(inCapitals(prose(1000)));
    for (auto step : state) {
        benchmark::DoNotOptimize(Kind::compareIgnoringCase(left, right));
    }
}

template <class Kind>
void upper(benchmark::State& state) {
    const auto text = Kind::make(prose(1000));
    for (auto step : state) {
        auto changed = Kind::upper(text);
        benchmark::DoNotOptimize(changed);
    }
}

template <class Kind>
void widen(benchmark::State& state) {
    const std::string bytes(1000, 'x');
    for (auto step : state) {
        auto text = Kind::widen(bytes);
        benchmark::DoNotOptimize(text);
    }
}

BENCHMARK(copyText<KrCoreText>)->Name("string/copy/krcore");
BENCHMARK(copyText<StandardText>)->Name("string/copy/std::u16string");
BENCHMARK(appendUnits<KrCoreText>)->Name("string/append a unit, 1000 times/krcore");
BENCHMARK(appendUnits<StandardText>)->Name("string/append a unit, 1000 times/std::u16string");
BENCHMARK(appendTexts<KrCoreText>)->Name("string/append 20 units, 50 times/krcore");
BENCHMARK(appendTexts<StandardText>)->Name("string/append 20 units, 50 times/std::u16string");
BENCHMARK(concatenate<KrCoreText>)->Name("string/concatenate/krcore");
BENCHMARK(concatenate<StandardText>)->Name("string/concatenate/std::u16string");
BENCHMARK(findUnit<KrCoreText>)->Name("string/find a unit in 64k/krcore");
BENCHMARK(findText<KrCoreText>)->Name("string/find a text in 64k/krcore");
BENCHMARK(findRepetitive<KrCoreText>)->Name("string/find in repetitive 64k/krcore");
BENCHMARK(replaceAll<KrCoreText>)->Name("string/replaceAll in 64k/krcore");
BENCHMARK(compareEqual<KrCoreText>)->Name("string/cmp of 1000 units/krcore");
BENCHMARK(compareIgnoringCase<KrCoreText>)->Name("string/ucmp of 1000 units/krcore");
BENCHMARK(upper<KrCoreText>)->Name("string/toUpper of 1000 units/krcore");
BENCHMARK(widen<KrCoreText>)->Name("string/widen 1000 bytes/krcore");

#ifdef KR_BENCHMARK_ICU
BENCHMARK(copyText<IcuText>)->Name("string/copy/icu");
BENCHMARK(appendUnits<IcuText>)->Name("string/append a unit, 1000 times/icu");
BENCHMARK(appendTexts<IcuText>)->Name("string/append 20 units, 50 times/icu");
BENCHMARK(concatenate<IcuText>)->Name("string/concatenate/icu");
BENCHMARK(findRepetitive<IcuText>)->Name("string/find in repetitive 64k/icu");
BENCHMARK(replaceAll<IcuText>)->Name("string/replaceAll in 64k/icu");
BENCHMARK(upper<IcuText>)->Name("string/toUpper of 1000 units/icu");
#endif

#ifdef KR_BENCHMARK_QT
BENCHMARK(copyText<QtText>)->Name("string/copy/qt");
BENCHMARK(appendUnits<QtText>)->Name("string/append a unit, 1000 times/qt");
BENCHMARK(appendTexts<QtText>)->Name("string/append 20 units, 50 times/qt");
BENCHMARK(concatenate<QtText>)->Name("string/concatenate/qt");
BENCHMARK(findUnit<QtText>)->Name("string/find a unit in 64k/qt");
BENCHMARK(findText<QtText>)->Name("string/find a text in 64k/qt");
BENCHMARK(compareEqual<QtText>)->Name("string/cmp of 1000 units/qt");
BENCHMARK(compareIgnoringCase<QtText>)->Name("string/ucmp of 1000 units/qt");
BENCHMARK(widen<QtText>)->Name("string/widen 1000 bytes/qt");
#endif

} // namespace
