// Conversions between bytes and 16-bit text, beside ICU and Qt.

#include <krcore/text/Encoder.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#ifdef KR_BENCHMARK_ICU
#include <unicode/ucnv.h>
#include <unicode/ustring.h>
#endif
#ifdef KR_BENCHMARK_QT
#include <QStringDecoder>
#include <QStringEncoder>
#endif

using namespace KrCore;

namespace {

constexpr std::size_t textLength = 10000;

/// A sentence repeated, as units and as the bytes that the encoder makes of it.
struct Sample {
    const Encoder& encoder;
    std::vector<unsigned short> units;
    std::vector<char> bytes;
    std::vector<unsigned short> unitOutput;
    std::vector<char> byteOutput;

    Sample(const char16_t* sentence, const char* set) : encoder(*Encoder::get(set)) {
        const std::u16string once(sentence);
        while (units.size() < textLength)
            units.insert(units.end(), once.begin(), once.end());
        byteOutput.resize(units.size() * 4);
        unitOutput.resize(units.size() + 64);
        int inCount = static_cast<int>(units.size());
        int outCount = static_cast<int>(byteOutput.size());
        encoder.toMBCS(units.data(), inCount, byteOutput.data(), outCount, true);
        bytes.assign(byteOutput.begin(), byteOutput.begin() + outCount);
    }

    int unitCount() const { return static_cast<int>(units.size()); }
    int byteCount() const { return static_cast<int>(bytes.size()); }
};

void decode(benchmark::State& state, const char16_t* sentence, const char* set) {
    Sample sample(sentence, set);
    for (auto _ : state) {
        int inCount = sample.byteCount();
        int outCount = static_cast<int>(sample.unitOutput.size());
        if (sample.encoder.toUnicode(sample.bytes.data(), inCount, sample.unitOutput.data(),
                                     outCount, true) != 0 ||
            outCount != sample.unitCount())
            state.SkipWithError("wrong result");
        benchmark::ClobberMemory();
    }
}

void encode(benchmark::State& state, const char16_t* sentence, const char* set) {
    Sample sample(sentence, set);
    for (auto _ : state) {
        int inCount = sample.unitCount();
        int outCount = static_cast<int>(sample.byteOutput.size());
        if (sample.encoder.toMBCS(sample.units.data(), inCount, sample.byteOutput.data(), outCount,
                                  true) != 0 ||
            outCount != sample.byteCount())
            state.SkipWithError("wrong result");
        benchmark::ClobberMemory();
    }
}

#ifdef KR_BENCHMARK_ICU
UChar* icuUnits(std::vector<unsigned short>& units) {
    return reinterpret_cast<UChar*>(units.data());
}

void decodeUtf8WithIcu(benchmark::State& state, const char16_t* sentence, const char* set) {
    Sample sample(sentence, set);
    for (auto _ : state) {
        UErrorCode status = U_ZERO_ERROR;
        int32_t length = 0;
        u_strFromUTF8(icuUnits(sample.unitOutput), static_cast<int32_t>(sample.unitOutput.size()),
                      &length, sample.bytes.data(), sample.byteCount(), &status);
        benchmark::ClobberMemory();
    }
}

void encodeUtf8WithIcu(benchmark::State& state, const char16_t* sentence, const char* set) {
    Sample sample(sentence, set);
    for (auto _ : state) {
        UErrorCode status = U_ZERO_ERROR;
        int32_t length = 0;
        u_strToUTF8(sample.byteOutput.data(), static_cast<int32_t>(sample.byteOutput.size()),
                    &length, icuUnits(sample.units), sample.unitCount(), &status);
        benchmark::ClobberMemory();
    }
}

void decode1252WithIcu(benchmark::State& state, const char16_t* sentence, const char* set) {
    Sample sample(sentence, set);
    UErrorCode status = U_ZERO_ERROR;
    UConverter* converter = ucnv_open("windows-1252", &status);
    for (auto _ : state) {
        ucnv_toUChars(converter, icuUnits(sample.unitOutput),
                      static_cast<int32_t>(sample.unitOutput.size()), sample.bytes.data(),
                      sample.byteCount(), &status);
        benchmark::ClobberMemory();
    }
    ucnv_close(converter);
}

void encode1252WithIcu(benchmark::State& state, const char16_t* sentence, const char* set) {
    Sample sample(sentence, set);
    UErrorCode status = U_ZERO_ERROR;
    UConverter* converter = ucnv_open("windows-1252", &status);
    for (auto _ : state) {
        ucnv_fromUChars(converter, sample.byteOutput.data(),
                        static_cast<int32_t>(sample.byteOutput.size()), icuUnits(sample.units),
                        sample.unitCount(), &status);
        benchmark::ClobberMemory();
    }
    ucnv_close(converter);
}
#endif

#ifdef KR_BENCHMARK_QT
void decodeUtf8WithQt(benchmark::State& state, const char16_t* sentence, const char* set) {
    Sample sample(sentence, set);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    auto* out = reinterpret_cast<QChar*>(sample.unitOutput.data());
    for (auto _ : state) {
        benchmark::DoNotOptimize(decoder.appendToBuffer(
            out, QByteArrayView(sample.bytes.data(), qsizetype{sample.byteCount()})));
        benchmark::ClobberMemory();
    }
}

void encodeUtf8WithQt(benchmark::State& state, const char16_t* sentence, const char* set) {
    Sample sample(sentence, set);
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    const QStringView text(reinterpret_cast<const QChar*>(sample.units.data()),
                           qsizetype{sample.unitCount()});
    for (auto _ : state) {
        benchmark::DoNotOptimize(encoder.appendToBuffer(sample.byteOutput.data(), text));
        benchmark::ClobberMemory();
    }
}
#endif

constexpr const char16_t* ascii =
    u"The quick brown fox jumps over the lazy dog, 0123456789 times. ";
constexpr const char16_t* european = u"Voix ambigu\u00EB d'un c\u0153ur qui, au z\u00E9phyr, "
                                     u"pr\u00E9f\u00E8re les jattes de kiwis. ";
constexpr const char16_t* cjk = u"\u65E5\u672C\u8A9E\u306E\u6587\u7AE0\u306F\u3001\u6F22\u5B57"
                                u"\u3068\u4EEE\u540D\u3067\u66F8\u304B\u308C\u308B\u3002";
constexpr const char16_t* emoji = u"\U0001F600 fine \U0001F680\U0001F30D day \U0001F44D\U0001F3FD ";

constexpr const char* utf8 = "UTF-8";
constexpr const char* cp1252 = "CP1252";

BENCHMARK_CAPTURE(decode, ascii, ascii, utf8)->Name("encoder/decode UTF-8 ASCII/krcore");
BENCHMARK_CAPTURE(decode, european, european, utf8)->Name("encoder/decode UTF-8 European/krcore");
BENCHMARK_CAPTURE(decode, cjk, cjk, utf8)->Name("encoder/decode UTF-8 CJK/krcore");
BENCHMARK_CAPTURE(decode, emoji, emoji, utf8)->Name("encoder/decode UTF-8 emoji/krcore");
BENCHMARK_CAPTURE(decode, european, european, cp1252)->Name("encoder/decode Windows-1252/krcore");
BENCHMARK_CAPTURE(encode, ascii, ascii, utf8)->Name("encoder/encode UTF-8 ASCII/krcore");
BENCHMARK_CAPTURE(encode, european, european, utf8)->Name("encoder/encode UTF-8 European/krcore");
BENCHMARK_CAPTURE(encode, cjk, cjk, utf8)->Name("encoder/encode UTF-8 CJK/krcore");
BENCHMARK_CAPTURE(encode, emoji, emoji, utf8)->Name("encoder/encode UTF-8 emoji/krcore");
BENCHMARK_CAPTURE(encode, european, european, cp1252)->Name("encoder/encode Windows-1252/krcore");

#ifdef KR_BENCHMARK_ICU
BENCHMARK_CAPTURE(decodeUtf8WithIcu, european, european, utf8)
    ->Name("encoder/decode UTF-8 European/ICU");
BENCHMARK_CAPTURE(decodeUtf8WithIcu, cjk, cjk, utf8)->Name("encoder/decode UTF-8 CJK/ICU");
BENCHMARK_CAPTURE(decodeUtf8WithIcu, emoji, emoji, utf8)->Name("encoder/decode UTF-8 emoji/ICU");
BENCHMARK_CAPTURE(decode1252WithIcu, european, european, cp1252)
    ->Name("encoder/decode Windows-1252/ICU");
BENCHMARK_CAPTURE(encodeUtf8WithIcu, european, european, utf8)
    ->Name("encoder/encode UTF-8 European/ICU");
BENCHMARK_CAPTURE(encodeUtf8WithIcu, cjk, cjk, utf8)->Name("encoder/encode UTF-8 CJK/ICU");
BENCHMARK_CAPTURE(encodeUtf8WithIcu, emoji, emoji, utf8)->Name("encoder/encode UTF-8 emoji/ICU");
BENCHMARK_CAPTURE(encode1252WithIcu, european, european, cp1252)
    ->Name("encoder/encode Windows-1252/ICU");
#endif
#ifdef KR_BENCHMARK_QT
BENCHMARK_CAPTURE(decodeUtf8WithQt, ascii, ascii, utf8)->Name("encoder/decode UTF-8 ASCII/Qt");
BENCHMARK_CAPTURE(encodeUtf8WithQt, ascii, ascii, utf8)->Name("encoder/encode UTF-8 ASCII/Qt");
#endif

} // namespace
