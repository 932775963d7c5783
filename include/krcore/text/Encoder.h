#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Root.h>

namespace KrCore {

class String;

/// Converts between the library's 16-bit text and one byte-oriented character set, and keeps the
/// process-wide registry in which encoders are found by name.
///
/// An encoder is immutable: it carries nothing from one call to the next and may be used from any
/// thread. Text that arrives in pieces is converted piece by piece with `flush` false; whatever the
/// call did not consume is handed in again in front of the next piece.
///
/// Names are compared in upper case, with "_" read as "-" and without a leading "X-", so "utf_8",
/// "x-utf-8" and "Utf8" name the same encoder. Registry operations take the registry's lock and may
/// be called from any thread.
///
/// The order of the virtual functions is part of the interface.
class KR_API Encoder : public Root {
public:
    /// `mapping` is stored for `getMapping` and has no effect on conversions.
    explicit constexpr Encoder(int mapping) : mapping_(mapping) {}
    ~Encoder() override;

    /// Writes the names of this encoder, separated by ",": the canonical one, then its aliases.
    virtual void getName(String& name) const = 0;

    /// An encoder for a name that the registry does not know, or null; how a family answers for
    /// open-ended names. `name` comes normalised, and the registry's lock is not held. The answer
    /// is registered under the name and must then live as long as any other registered encoder.
    virtual const Encoder* find(const String& name) const;

    /// The number of 16-bit units that `bytes` decode to. Counting ends before the first invalid or
    /// incomplete sequence; `consumed` receives the number of bytes in front of it.
    virtual int getUnicodeLength(const char* bytes, int count, int& consumed) const = 0;

    /// The number of bytes that `text` encodes to. Counting ends before the first unit that cannot
    /// be encoded; `consumed` receives the number of units in front of it.
    virtual int getMBCSLength(const unsigned short* text, int count, int& consumed) const = 0;

    /// Decodes bytes. The counts hold what is available on entry and what was used on return, also
    /// after a failure, where they stand in front of the offending sequence.
    ///
    /// Returns 0, or `ErrorCode::CharacterConversion` for an invalid sequence. A sequence that the
    /// end of the input cuts off is left unconsumed (0), or with `flush`, which says that no input
    /// follows, gives `ErrorCode::PartialCharacter`. A full output buffer is success with smaller
    /// counts; a character that does not fit as a whole is left unconsumed. The output is not
    /// 0-terminated.
    virtual int toUnicode(const char* in, int& inCount, unsigned short* out, int& outCount,
                          bool flush) const = 0;

    /// Encodes 16-bit units; counts, results and `flush` as for `toUnicode`. A character that the
    /// set does not have is `ErrorCode::CharacterConversion`, never replaced.
    virtual int toMBCS(const unsigned short* in, int& inCount, char* out, int& outCount,
                       bool flush) const = 0;

    int getMapping() const { return mapping_; }

    /// Registers an encoder under every name of its list. A name that is taken already finds this
    /// encoder from now on. The encoder stays the caller's and must outlive the library.
    static void add(const Encoder& encoder);

    /// Registers one more name for an encoder, and the encoder itself if it is new. False for a
    /// null or empty alias.
    static bool addAlias(const Encoder& encoder, const char* alias);

    /// The same for the encoder found under `name`; false also when there is none.
    static bool addAlias(const char* name, const char* alias);

    /// The encoder for a name, or null. Besides registered names, "CP" or "WINDOWS-" and a number,
    /// and the names of a table of code pages, find every code page that the operating system
    /// knows; its encoder is made on first use and belongs to the registry.
    ///
    /// A code page whose name list repeats a name takes that name over once it is made: "IBM850"
    /// finds page 850 until "CP437" has been asked for, and page 437 from then on.
    static const Encoder* get(const char* name);
    static const Encoder* get(const unsigned short* name);

    /// The encoder used where none is given, one for each thread's context: the one set, or else
    /// the system's. While the library is starting it is ISO-8859-1.
    static const Encoder& getDefault();

    /// The encoder stays the caller's and must outlive the library.
    static void setDefault(const Encoder& encoder);

    /// The encoder for the character set of the system: on Windows its ANSI code page, elsewhere
    /// that of the user's locale, where the plain "C" locale counts as UTF-8. ISO-8859-1 when no
    /// encoder answers to the system's name for it.
    static const Encoder& getSystem();

    static const Encoder& getAscii();
    static const Encoder& getBinary();
    static const Encoder& getUtf8();
    /// UTF-32 in the byte order of the machine.
    static const Encoder& getUtf32();

private:
    const int mapping_;
};

} // namespace KrCore
