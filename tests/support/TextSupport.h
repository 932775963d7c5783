#pragma once

#include <krcore/text/String.h>
#include <krcore/text/StringConversions.h>

#include <gtest/gtest.h>

namespace KrCore::Testing {

/// A string from a 16-bit literal, with U+0000 and lone surrogates where they are.
template <std::size_t size>
String text(const char16_t (&units)[size]) {
    return fromUtf16({units, size - 1});
}

} // namespace KrCore::Testing
