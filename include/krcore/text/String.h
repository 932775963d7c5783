#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Heap.h>

#include <atomic>
#include <compare>
#include <concepts>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>

namespace KrCore {

class Array;
class Encoder;

/// The line ends that `String::convertLF` can write. Any other value is taken as `CRLF`.
enum class CRLFEncoding : int { Default = 0, CRLF = 1, CR = 2, LF = 3 };

/// Text of 16-bit UTF-16 code units with value semantics. A string is one pointer to a counted
/// buffer: copying shares it, the first write to a shared buffer makes a copy. Any sequence of
/// units is valid text, lone surrogates and U+0000 included.
///
/// A unit is an `unsigned short`. 8-bit text (`const char*`, `char`) is widened byte by byte
/// (ISO 8859-1) unless an `Encoder` is given. A null pointer is the empty text, whatever its type.
///
/// Positions and lengths count units. A length of -1 runs to the terminator or to the end.
/// Positions out of range are clipped; nothing here faults. Arguments may be the string itself or
/// point into its buffer.
///
/// A string holds up to `maxLength` units; what would be longer, and what the heap cannot supply,
/// throws `OutOfMemory` and leaves the string as it was.
///
/// Different strings may share a buffer across threads (after `InitTerm::setMT`); one string must
/// not be changed by two threads at once. No string with text may outlive `InitTerm::exit`.
class KR_API String : public Heap {
public:
    /// Units without the terminator; a longer buffer has no heap block to live in.
    static constexpr int maxLength = (1 << 30) - 1;

    /// @name Construction and assignment
    /// The empty string takes no memory and may be made before `InitTerm::init`.
    /// @{
    String() noexcept : buffer_(&empty_.header) {}
    String(const String& other);
    String(String&& other) noexcept : buffer_(other.buffer_) { other.buffer_ = &empty_.header; }
    String(const char* text);
    /// Decodes `text` (null `encoder`: the default one); empty when it cannot be decoded.
    String(const char* text, const Encoder* encoder);
    String(const unsigned short* text, int length = -1);
    /// UTF-32. Values above U+10FFFF become U+FFFD; surrogate values stay.
    String(const unsigned int* text, int length = -1);
    String(const char16_t* text, int length = -1) : String() {
        if (!text) return;
        if (length < 0) length = literalLength(text);
        init(length);
        if (length > 0) std::memcpy(buffer_->units(), text, std::size_t(length) * sizeof *text);
    }
    ~String();

    String& operator=(const String& other);
    String& operator=(String&& other) noexcept;
    String& operator=(char ch);
    String& operator=(unsigned short ch);
    String& operator=(char16_t ch) { return *this = static_cast<unsigned short>(ch); }
    String& operator=(const char* text);
    String& operator=(const unsigned short* text);
    String& operator=(const unsigned int* text);
    /// @}

    /// @name Access
    /// @{
    int length() const noexcept { return buffer_->length; }
    bool isEmpty() const noexcept { return buffer_->length == 0; }

    /// The units and a 0 behind them. Borrowed: lasts until the string is changed or destroyed.
    const unsigned short* wstr() const noexcept { return buffer_->units(); }
    operator const unsigned short*() const noexcept { return buffer_->units(); }

    /// The units for writing in place, 0 ... `length()` - 1. Unshares the buffer; good until the
    /// next change or copy of this string.
    unsigned short* writable();

    /// Replaces one unit; an index outside the text is ignored.
    void set(int index, unsigned short ch);
    void set(int index, std::same_as<char> auto ch) { set(index, widened(ch)); }

    const unsigned short* begin() const noexcept { return wstr(); }
    const unsigned short* end() const noexcept { return wstr() + length(); }

    /// The empty string of the library, for results by reference. Lives from start-up to shut-down.
    static const String& emptyString();
    /// @}

    /// @name Size
    /// Buffers have 16, 32, 64, ... units, the smallest that holds text and terminator.
    /// @{
    /// A fresh buffer of `length` units with undefined content; the old content is gone.
    void init(int length);
    /// Sets the length and keeps what fits; new units are undefined. Gives memory back only when
    /// more than 2048 units would lie unused.
    void adjust(int length);
    /// `count` copies of `ch`; none when `count` is not positive.
    void setup(unsigned short ch, int count);
    void setup(std::same_as<char> auto ch, int count) { setup(widened(ch), count); }
    void clear();
    void erase();
    /// Makes the buffer this string's own. Every changing member does so by itself.
    void unique();
    /// Makes the buffer this string's own for good: later copies of the string never share it. For
    /// strings whose units are written through `wstr()`.
    void makeUnique();
    /// @}

    /// @name Concatenation
    /// @{
    void append(const String& text);
    void append(char ch) { append(widened(ch)); }
    void append(unsigned short ch) {
        if (!buffer_->hasRoomForUnit()) return appendToFullBuffer(ch);
        const int end = buffer_->length++;
        buffer_->units()[end] = ch;
        buffer_->units()[end + 1] = 0;
    }
    void append(char16_t ch) { append(static_cast<unsigned short>(ch)); }
    void append(const char* text, int length = -1);
    void append(const unsigned short* text, int length = -1);

    String& operator+=(const String& text);
    String& operator+=(char ch);
    String& operator+=(unsigned short ch);
    String& operator+=(char16_t ch) { return *this += static_cast<unsigned short>(ch); }
    String& operator+=(const char* text);
    String& operator+=(const unsigned short* text);

    String operator+(const String& text) const;
    String operator+(char ch) const;
    String operator+(unsigned short ch) const;
    String operator+(char16_t ch) const { return *this + static_cast<unsigned short>(ch); }
    String operator+(const char* text) const;
    String operator+(const unsigned short* text) const;
    /// @}

    /// @name Editing
    /// @{
    /// Inserts before `pos`, which is clipped to 0 ... `length()`.
    void insert(const String& text, int pos);
    void insert(unsigned short ch, int pos);
    void insert(std::same_as<char> auto ch, int pos) { insert(widened(ch), pos); }
    void insert(const char* text, int pos);
    void insert(const unsigned short* text, int pos);

    /// Removes `count` units from `start` on. A negative `start` is the length (nothing is
    /// removed), a negative `count` runs to the end.
    void erase(int start, int count = -1);

    /// `count` units from `start` on, a negative `count` runs to the end. The whole text shares the
    /// buffer.
    String substr(int start, int count = -1) const;

    /// Removes leading and trailing units up to U+0020; no other unit counts as blank.
    void strip();
    /// @}

    /// @name Comparison
    /// By code unit. The result is the difference of the first units that differ, or -1 when this
    /// text is the beginning of the other, +1 when the other is the beginning of this, 0 when they
    /// are equal. `ucmp` and `nucmp` ignore case (both units go through `UnicodeUtils::towupper`);
    /// `ncmp` and `nucmp` look at `n` units at most, at all for a negative `n`.
    /// @{
    int cmp(const String& text) const;
    int cmp(const char* text) const;
    int cmp(const unsigned short* text) const;
    int ncmp(const String& text, int n) const;
    int ncmp(const char* text, int n) const;
    int ncmp(const unsigned short* text, int n) const;
    int ucmp(const String& text) const;
    int ucmp(const char* text) const;
    int ucmp(const unsigned short* text) const;
    int nucmp(const String& text, int n) const;
    int nucmp(const char* text, int n) const;
    int nucmp(const unsigned short* text, int n) const;

    /// `==` and `<=>` give all six operators, with the text on either side. They agree with `cmp`.
    bool operator==(const String& text) const;
    bool operator==(const char* text) const { return cmp(text) == 0; }
    bool operator==(const unsigned short* text) const { return cmp(text) == 0; }
    std::strong_ordering operator<=>(const String& text) const { return cmp(text) <=> 0; }
    std::strong_ordering operator<=>(const char* text) const { return cmp(text) <=> 0; }
    std::strong_ordering operator<=>(const unsigned short* text) const { return cmp(text) <=> 0; }
    /// @}

    /// @name Search
    /// -1 when not found.
    /// @{
    /// Forward: the first match at or after `start` (negative: 0); the empty text is found at
    /// `start`. In `reverse`: the last match that begins at or before `start` (negative: the end).
    int find(const String& text, int start = 0, bool reverse = false) const;
    int find(unsigned short ch, int start = 0, bool reverse = false) const;
    int find(std::same_as<char> auto ch, int start = 0, bool reverse = false) const {
        return find(widened(ch), start, reverse);
    }
    int find(const char* text, int start = 0, bool reverse = false) const;
    int find(const unsigned short* text, int start = 0, bool reverse = false) const;

    /// The first unit at or after `start` that occurs in `set`.
    int findAny(const String& set, int start = 0) const;
    int findAny(const char* set, int start = 0) const;
    int findAny(const unsigned short* set, int start = 0) const;
    /// @}

    /// @name Replacement
    /// `replace` replaces the first match at or after `start` and returns its position or -1; the
    /// empty text matches at `start`. `replaceAll` returns the number of matches it replaced;
    /// inserted text is not searched again, and the empty text matches nowhere.
    /// @{
    int replace(unsigned short what, unsigned short with, int start = 0);
    int replace(std::same_as<char> auto what, std::same_as<char> auto with, int start = 0) {
        return replace(widened(what), widened(with), start);
    }
    int replace(const String& what, const String& with, int start = 0);
    int replace(const String& what, const char* with, int start = 0);
    int replace(const String& what, const unsigned short* with, int start = 0);
    int replace(const char* what, const String& with, int start = 0);
    int replace(const char* what, const char* with, int start = 0);
    int replace(const char* what, const unsigned short* with, int start = 0);
    int replace(const unsigned short* what, const String& with, int start = 0);
    int replace(const unsigned short* what, const char* with, int start = 0);
    int replace(const unsigned short* what, const unsigned short* with, int start = 0);

    int replaceAll(unsigned short what, unsigned short with, int start = 0);
    int replaceAll(std::same_as<char> auto what, std::same_as<char> auto with, int start = 0) {
        return replaceAll(widened(what), widened(with), start);
    }
    int replaceAll(const String& what, const String& with, int start = 0);
    int replaceAll(const String& what, const char* with, int start = 0);
    int replaceAll(const String& what, const unsigned short* with, int start = 0);
    int replaceAll(const char* what, const String& with, int start = 0);
    int replaceAll(const char* what, const char* with, int start = 0);
    int replaceAll(const char* what, const unsigned short* with, int start = 0);
    int replaceAll(const unsigned short* what, const String& with, int start = 0);
    int replaceAll(const unsigned short* what, const char* with, int start = 0);
    int replaceAll(const unsigned short* what, const unsigned short* with, int start = 0);
    /// @}

    /// @name Splitting
    /// Takes the field before `separator` off the front and returns it stripped; what remains is
    /// not stripped. Without a separator, and with an empty one, returns the whole text and leaves
    /// this string empty, so a loop until `isEmpty()` walks a list.
    /// @{
    String split(const String& separator);
    String split(char separator) { return split(widened(separator)); }
    String split(unsigned short separator);
    String split(char16_t separator) { return split(static_cast<unsigned short>(separator)); }
    String split(const char* separator);
    String split(const unsigned short* separator);
    /// @}

    /// @name Case
    /// Unit by unit through `UnicodeUtils`, so the length stays. True when something changed.
    /// @{
    bool toLower();
    bool toUpper();
    /// Lower case, but upper case for the first unit and for each unit behind one of " ,;.".
    bool toMixed();
    /// @}

    /// @name Formatting
    /// Replaces the text by `fmt` with its directives filled in:
    /// `%[-+0][width][.precision][hlHL]conversion`, width and precision as digits or `*`.
    ///
    /// `d` prints a 32-bit `int`; `u`, `o`, `x` and `b` the low 16 bits of an `int`, with `l` the
    /// whole (`l` never means C's `long`); `p` the low 32 bits of a pointer in hexadecimal, 16
    /// wide.
    ///
    /// `c` prints a byte and `s` 8-bit text, both in the default encoding, with `l` a unit and
    /// 16-bit text. A precision cuts the text. Null is "(null)". `S` takes its argument and prints
    /// nothing.
    ///
    /// `e`, `f`, `g` and `n` (like `f`) print a `double`, at most 14 places behind the point and
    /// zeros after 17 characters; the host's locale has no say.
    ///
    /// Any other character behind `%` stands for itself. `-` beats `0`.
    ///
    /// Widths and precisions that cannot fit into a string throw like any text that is too long.
    /// @{
    void print(const char* fmt, ...);
    void print(const unsigned short* fmt, ...);
    void vprint(const char* fmt, std::va_list args);
    void vprint(const unsigned short* fmt, std::va_list args);
    /// @}

    /// @name Script literals
    /// @{
    /// This text as a script literal in double quotes; with `unicode` all units above 127 become
    /// escapes.
    String escape(bool unicode) const;

    /// Reads one literal or bare token off the front of this string into `result`. On failure this
    /// string stays whole.
    bool parse(String& result);

    /// Reads one script literal in single or double quotes, or a bare token up to the end of the
    /// line, from `pos` on and moves `pos` behind it. False, with `result` holding what was read,
    /// when a quoted literal is not closed on its line or an escape is malformed.
    bool parse(String& result, int& pos) const;
    /// @}

    /// @name URIs
    /// In place, through UTF-8. False, with the string unchanged, when the text cannot be
    /// converted.
    /// @{
    /// Writes every byte as "%XX" except ASCII letters, digits and the units of `keep` up to
    /// U+007F.
    bool encodeURI(const char* keep);
    bool encodeURI(const unsigned short* keep);
    /// Units above U+007F count as their UTF-8 bytes. A "%" without two hexadecimal digits stands
    /// for itself.
    bool decodeURI();
    /// @}

    /// Makes every line end (CR LF, CR or LF) the given one. Returns how many there are.
    int convertLF(CRLFEncoding kind);

    /// @name Character sets
    /// A null `encoder` is the default one. Results are error codes of the encoder, 0 for success.
    /// Encoded text is borrowed: it belongs to the calling thread and lasts until that thread's
    /// next conversion. Four zero bytes stand behind it. After a failure it is empty, and `decode`
    /// leaves the string as it was.
    /// @{
    const char* encode(const Encoder* encoder) const;
    int encode(const char*& out, int& length, const Encoder* encoder) const;
    /// UTF-32 with a 0 behind it; lone surrogates stay.
    const unsigned int* encodeUtf32() const;
    /// Bytes of the calling thread's last conversion, without the terminator.
    static int getEncodedLength();
    int decode(const char* text, int length, const Encoder* encoder);
    int decode(const unsigned int* text);
    /// @}

    /// Replaces a "key=default" text by its localized form with the arguments filled in (null:
    /// none).
    void localize(const Array* args);

private:
    /// Stands before the units of every buffer; its order and its 12 bytes are fixed.
    struct Buffer {
        static constexpr std::uint32_t unshareable = 0x80000000U;

        std::int32_t length;
        /// Capacity - 1; the top bit marks a buffer that is never shared.
        std::uint32_t capacityWord;
        std::int32_t refCount;

        unsigned short* units() noexcept { return reinterpret_cast<unsigned short*>(this + 1); }
        const unsigned short* units() const noexcept {
            return reinterpret_cast<const unsigned short*>(this + 1);
        }
        /// Somebody else would see a write. Acquires what other threads did before they let go.
        bool isShared() noexcept {
            return std::atomic_ref(refCount).load(std::memory_order_acquire) > 1;
        }
        bool hasRoomForUnit() noexcept {
            return !isShared() && std::uint32_t(length) < (capacityWord & ~unshareable);
        }
    };
    struct EmptyBuffer {
        Buffer header;
        unsigned short terminator;
    };
    friend struct StringBuffer;

    void appendToFullBuffer(unsigned short ch);

    static unsigned short widened(char ch) noexcept { return static_cast<unsigned char>(ch); }

    /// Too long a text becomes a length that `init` refuses.
    static int literalLength(const char16_t* text) noexcept {
        const std::size_t length = std::char_traits<char16_t>::length(text);
        return length > std::size_t(maxLength) ? maxLength + 1 : static_cast<int>(length);
    }

    /// Every empty string of the process; never counted, never freed.
    static EmptyBuffer empty_;

    Buffer* buffer_;
};

/// For texts that begin with a literal; `+` of a string and a literal is a member.
inline String operator+(const char* left, const String& right) { return String(left) + right; }

/// Without this one a character and the string's pointer would be added up.
inline String operator+(char left, const String& right) { return String() + left + right; }

} // namespace KrCore

template <>
struct std::hash<KrCore::String> {
    std::size_t operator()(const KrCore::String& text) const noexcept {
        const auto* bytes = reinterpret_cast<const char*>(text.wstr());
        return std::hash<std::string_view>()({bytes, std::size_t(text.length()) * 2});
    }
};
