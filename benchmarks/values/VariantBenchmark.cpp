// Making, copying and printing variants, beside QVariant and std::variant.

#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

#include <benchmark/benchmark.h>

#include <string>
#include <variant>

#ifdef KR_BENCHMARK_QT
#include <QString>
#include <QVariant>
#endif

namespace {

constexpr const char16_t* sampleText = u"a text of some thirty characters";

/// Makes a variant of the value, copies it, and destroys both.
template <class Variant, class Value>
void makeAndCopy(benchmark::State& state, const Value& sample) {
    Value value = sample;
    for (auto step : state) {
        benchmark::DoNotOptimize(value);
        Variant made(value);
        benchmark::DoNotOptimize(made);
        Variant copy(made);
        benchmark::DoNotOptimize(copy);
    }
}

using StandardVariant = std::variant<std::monostate, bool, double, std::u16string>;

void copyDouble(benchmark::State& state) { makeAndCopy<KrCore::Variant>(state, 2.5); }
void copyDoubleStandard(benchmark::State& state) { makeAndCopy<StandardVariant>(state, 2.5); }
void copyString(benchmark::State& state) {
    makeAndCopy<KrCore::Variant>(state, KrCore::String(sampleText));
}
void copyStringStandard(benchmark::State& state) {
    makeAndCopy<StandardVariant>(state, std::u16string(sampleText));
}

void cachedText(benchmark::State& state) {
    const KrCore::Variant value(2.5);
    for (auto step : state)
        benchmark::DoNotOptimize(value.getString().wstr());
}

void variantSize(benchmark::State& state) {
    for (auto step : state) {
    }
    state.counters["bytes"] = sizeof(KrCore::Variant);
}

#ifdef KR_BENCHMARK_QT
void copyDoubleQt(benchmark::State& state) { makeAndCopy<QVariant>(state, 2.5); }
void copyStringQt(benchmark::State& state) {
    makeAndCopy<QVariant>(state, QString::fromUtf16(sampleText));
}
void cachedTextQt(benchmark::State& state) {
    const QVariant value(2.5);
    for (auto step : state) {
        const QString text = value.toString();
        benchmark::DoNotOptimize(text.utf16());
    }
}
#endif

} // namespace

BENCHMARK(copyDouble)->Name("variant/make and copy a double/krcore");
BENCHMARK(copyDoubleStandard)->Name("variant/make and copy a double/std");
BENCHMARK(copyString)->Name("variant/make and copy a string/krcore");
BENCHMARK(copyStringStandard)->Name("variant/make and copy a string/std");
BENCHMARK(cachedText)->Name("variant/cached text/krcore");
BENCHMARK(variantSize)->Name("variant/size of a variant/krcore")->Iterations(1);
#ifdef KR_BENCHMARK_QT
BENCHMARK(copyDoubleQt)->Name("variant/make and copy a double/qt");
BENCHMARK(copyStringQt)->Name("variant/make and copy a string/qt");
BENCHMARK(cachedTextQt)->Name("variant/cached text/qt");
#endif
