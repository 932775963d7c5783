// Numbers to text and back. The peers are the standard library's conversions, which print the
// shortest form, plus the step to and from 16-bit units that the library has done at this point.

#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <random>
#include <string>
#include <vector>

using KrCore::String;
using KrCore::Variant;

namespace {

constexpr std::size_t sampleCount = 1024;

enum class Sample { SmallInteger, Integer, ShortDecimal, RandomDouble };

double draw(Sample sample, std::mt19937_64& random) {
    switch (sample) {
    case Sample::SmallInteger:
        return static_cast<double>(random() % 1000);
    case Sample::Integer:
        return static_cast<std::int32_t>(random());
    case Sample::ShortDecimal:
        return static_cast<double>(random() % 1000000) / 100;
    case Sample::RandomDouble:
        return std::ldexp(static_cast<double>(random() >> 11),
                          static_cast<int>(random() % 40) - 53);
    }
    return 0;
}

std::vector<double> drawAll(Sample sample) {
    std::mt19937_64 random(7);
    std::vector<double> values(sampleCount);
    for (double& value : values)
        value = draw(sample, random);
    return values;
}

std::string narrow(const String& text) { return {text.begin(), text.end()}; }

void printWithLibrary(benchmark::State& state, Sample sample) {
    const std::vector<double> values = drawAll(sample);
    String text;
    std::size_t index = 0;
    for (auto step : state) {
        Variant(values[index++ % sampleCount]).toString(text);
        benchmark::DoNotOptimize(text.wstr());
    }
}

void printWithStandard(benchmark::State& state, Sample sample) {
    const std::vector<double> values = drawAll(sample);
    std::u16string text;
    std::size_t index = 0;
    for (auto step : state) {
        char buffer[32];
        const auto end =
            std::to_chars(buffer, buffer + sizeof buffer, values[index++ % sampleCount]);
        text.assign(buffer, end.ptr);
        benchmark::DoNotOptimize(text.data());
    }
}

void scanWithLibrary(benchmark::State& state, Sample sample) {
    std::vector<String> texts;
    for (const double value : drawAll(sample))
        texts.push_back(Variant(value).getString());
    std::size_t index = 0;
    for (auto step : state) {
        benchmark::DoNotOptimize(Variant::scanDouble(texts[index++ % sampleCount], 0));
    }
}

void scanWithStandard(benchmark::State& state, Sample sample) {
    std::vector<std::string> texts;
    for (const double value : drawAll(sample))
        texts.push_back(narrow(Variant(value).getString()));
    std::size_t index = 0;
    for (auto step : state) {
        const std::string& text = texts[index++ % sampleCount];
        double value = 0;
        std::from_chars(text.data(), text.data() + text.size(), value);
        benchmark::DoNotOptimize(value);
    }
}

} // namespace

BENCHMARK_CAPTURE(printWithLibrary, small, Sample::SmallInteger)
    ->Name("numbers/print small integer/krcore");
BENCHMARK_CAPTURE(printWithStandard, small, Sample::SmallInteger)
    ->Name("numbers/print small integer/std");
BENCHMARK_CAPTURE(printWithLibrary, integer, Sample::Integer)
    ->Name("numbers/print 32-bit integer/krcore");
BENCHMARK_CAPTURE(printWithStandard, integer, Sample::Integer)
    ->Name("numbers/print 32-bit integer/std");
BENCHMARK_CAPTURE(printWithLibrary, decimal, Sample::ShortDecimal)
    ->Name("numbers/print short decimal/krcore");
BENCHMARK_CAPTURE(printWithStandard, decimal, Sample::ShortDecimal)
    ->Name("numbers/print short decimal/std");
BENCHMARK_CAPTURE(printWithLibrary, random, Sample::RandomDouble)
    ->Name("numbers/print random double/krcore");
BENCHMARK_CAPTURE(printWithStandard, random, Sample::RandomDouble)
    ->Name("numbers/print random double/std");
BENCHMARK_CAPTURE(scanWithLibrary, small, Sample::SmallInteger)
    ->Name("numbers/scan small integer/krcore");
BENCHMARK_CAPTURE(scanWithStandard, small, Sample::SmallInteger)
    ->Name("numbers/scan small integer/std");
BENCHMARK_CAPTURE(scanWithLibrary, integer, Sample::Integer)
    ->Name("numbers/scan 32-bit integer/krcore");
BENCHMARK_CAPTURE(scanWithStandard, integer, Sample::Integer)
    ->Name("numbers/scan 32-bit integer/std");
BENCHMARK_CAPTURE(scanWithLibrary, decimal, Sample::ShortDecimal)
    ->Name("numbers/scan short decimal/krcore");
BENCHMARK_CAPTURE(scanWithStandard, decimal, Sample::ShortDecimal)
    ->Name("numbers/scan short decimal/std");
BENCHMARK_CAPTURE(scanWithLibrary, random, Sample::RandomDouble)
    ->Name("numbers/scan random double/krcore");
BENCHMARK_CAPTURE(scanWithStandard, random, Sample::RandomDouble)
    ->Name("numbers/scan random double/std");
