#pragma once

#include <krcore/text/String.h>

#include <algorithm>
#include <bit>

namespace KrCore {

/// The private side of `String`: the life of its buffers, for the files that implement it.
///
/// A buffer is its 12-byte record and `capacity` units, terminator included. The shared empty
/// buffer is never counted, so that threads do not pass its cache line around, and never written.
struct StringBuffer {
    using Buffer = String::Buffer;

    static constexpr std::uint32_t unshareable = Buffer::unshareable;
    static constexpr int smallestCapacity = 16;
    /// Units that may lie unused before `adjust` gives them back.
    static constexpr std::uint32_t keptSlack = 2048;

    static Buffer* empty() noexcept { return &String::empty_.header; }
    static Buffer* of(const String& text) noexcept { return text.buffer_; }

    static std::uint32_t capacity(const Buffer* buffer) noexcept {
        return (buffer->capacityWord & ~unshareable) + 1;
    }
    static bool isUnshareable(const Buffer* buffer) noexcept {
        return (buffer->capacityWord & unshareable) != 0;
    }
    /// `pointer` leads into this string's buffer, terminator included.
    static bool contains(const String& text, const unsigned short* pointer) noexcept {
        const unsigned short* units = text.wstr();
        return !std::less<>()(pointer, units) && !std::less<>()(units + text.length(), pointer);
    }

    static std::uint32_t capacityFor(int length) noexcept {
        const auto needed = static_cast<std::uint32_t>(length) + 1;
        return std::bit_ceil(std::max<std::uint32_t>(needed, smallestCapacity));
    }
    static std::size_t byteCount(std::uint32_t capacity) noexcept {
        return sizeof(Buffer) + std::size_t(capacity) * sizeof(unsigned short);
    }

    /// The length as an `int`; out of memory when no buffer can hold it.
    static int checkedLength(std::int64_t length);
    /// A buffer with one reference and undefined units; out of memory beyond `String::maxLength`.
    [[nodiscard]] static Buffer* allocate(int length);
    [[nodiscard]] static Buffer* copyOf(const Buffer* buffer);
    /// One more reference, or a copy of a buffer that is never shared.
    [[nodiscard]] static Buffer* share(Buffer* buffer);
    static void release(Buffer* buffer) noexcept;
    /// Another block for a buffer that is not shared; on failure the buffer stays.
    [[nodiscard]] static Buffer* resize(Buffer* buffer, int length);
    /// The same to give memory back, which may fail in silence: what has been removed from a text
    /// is gone already.
    [[nodiscard]] static Buffer* shrink(Buffer* buffer, int length) noexcept;

    /// Puts `count` units, which do not lie in this buffer, in place of `removed` units at `start`.
    static void splice(String& text, int start, int removed, const unsigned short* inserted,
                       int count);

    /// Gives `text` the freshly built, unshared `contents`; a string that is never shared stays so.
    static void replaceContents(String& text, String&& contents) noexcept;
};

} // namespace KrCore
