#pragma once

#include <krcore/text/Encoder.h>
#include <krcore/text/String.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace KrCore::Testing {

/// What one call made of its input.
template <class Output>
struct Converted {
    int code = 0;
    Output output;
    int consumed = 0;

    bool operator==(const Converted&) const = default;
};

using Decoded = Converted<std::u16string>;
using Encoded = Converted<std::string>;

constexpr int ample = 4096;

inline Decoded decode(const Encoder& encoder, std::string_view bytes, bool flush = true,
                      int capacity = ample) {
    std::vector<unsigned short> units(static_cast<std::size_t>(capacity));
    int inCount = static_cast<int>(bytes.size());
    int outCount = capacity;
    const int code = encoder.toUnicode(bytes.data(), inCount, units.data(), outCount, flush);
    return {code, {units.begin(), units.begin() + outCount}, inCount};
}

inline Encoded encode(const Encoder& encoder, std::u16string_view text, bool flush = true,
                      int capacity = ample) {
    const std::vector<unsigned short> units(text.begin(), text.end());
    std::string bytes(static_cast<std::size_t>(capacity), '\0');
    int inCount = static_cast<int>(text.size());
    int outCount = capacity;
    const int code = encoder.toMBCS(units.data(), inCount, bytes.data(), outCount, flush);
    bytes.resize(static_cast<std::size_t>(outCount));
    return {code, bytes, inCount};
}

inline int lengthOf(const Encoder& encoder, std::string_view bytes, int& consumed) {
    return encoder.getUnicodeLength(bytes.data(), static_cast<int>(bytes.size()), consumed);
}

inline int lengthOf(const Encoder& encoder, std::u16string_view text, int& consumed) {
    const std::vector<unsigned short> units(text.begin(), text.end());
    return encoder.getMBCSLength(units.data(), static_cast<int>(units.size()), consumed);
}

/// Converts input that arrives `piece` elements at a time into a buffer of `capacity` elements, as
/// a reader of a stream does. Ends at the first error, or when nothing moves any more.
template <class Output, class Input, class Convert>
Converted<Output> convertInPieces(const Input& input, std::size_t piece, Convert convert) {
    Converted<Output> all;
    std::size_t start = 0;
    for (std::size_t end = std::min(piece, input.size());;) {
        const bool flush = end == input.size();
        const auto step = convert(input.substr(start, end - start), flush);
        all.output += step.output;
        start += static_cast<std::size_t>(step.consumed);
        all.consumed = static_cast<int>(start);
        all.code = step.code;
        if (step.code != 0) return all;
        if (step.consumed > 0 && start < end) continue;
        if (flush) return all;
        end = std::min(end + piece, input.size());
    }
}

/// Expects that the text and its bytes turn into each other, at once and in all pieces, and that
/// the lengths are known beforehand.
inline void expectBothWays(const Encoder& encoder, const std::u16string& text,
                           const std::string& bytes, int smallestUnits = 2, int smallestBytes = 4) {
    const auto textLength = static_cast<int>(text.size());
    const auto byteLength = static_cast<int>(bytes.size());
    EXPECT_EQ(decode(encoder, bytes), (Decoded{0, text, byteLength}));
    EXPECT_EQ(encode(encoder, text), (Encoded{0, bytes, textLength}));
    int consumed = -1;
    EXPECT_EQ(lengthOf(encoder, std::string_view(bytes), consumed), textLength);
    EXPECT_EQ(consumed, byteLength);
    EXPECT_EQ(lengthOf(encoder, std::u16string_view(text), consumed), byteLength);
    EXPECT_EQ(consumed, textLength);
    EXPECT_EQ(encode(encoder, text, true, byteLength).output, bytes);
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece) {
        for (const int capacity : {smallestUnits, smallestUnits + 1, 17, ample}) {
            SCOPED_TRACE(testing::Message() << "pieces of " << piece << " into " << capacity);
            const auto result = convertInPieces<std::u16string>(
                bytes, piece, [&](const std::string& part, bool flush) {
                    return decode(encoder, part, flush, std::max(capacity, smallestUnits));
                });
            ASSERT_EQ(result, (Decoded{0, text, byteLength}));
        }
    }
    for (std::size_t piece = 1; piece <= text.size(); ++piece) {
        for (const int capacity : {smallestBytes, smallestBytes + 1, 17, ample}) {
            SCOPED_TRACE(testing::Message() << "pieces of " << piece << " into " << capacity);
            std::u16string back;
            const auto result = convertInPieces<std::string>(
                text, piece, [&](const std::u16string& part, bool flush) {
                    auto step = encode(encoder, part, flush, std::max(capacity, smallestBytes));
                    back += decode(encoder, step.output).output;
                    return step;
                });
            ASSERT_EQ(result.code, 0);
            ASSERT_EQ(result.consumed, textLength);
            ASSERT_EQ(back, text); // In a page with states the bytes depend on the pieces.
        }
    }
}

inline const Encoder& named(const char* name) {
    const Encoder* encoder = Encoder::get(name);
    if (!encoder) {
        ADD_FAILURE() << "no encoder named " << name;
        return Encoder::getBinary();
    }
    return *encoder;
}

inline std::string namesOf(const Encoder& encoder) {
    String names;
    encoder.getName(names);
    return {names.begin(), names.end()};
}

} // namespace KrCore::Testing
