#include "text/encoders/BuiltInEncoders.h"

#include "text/encoders/SingleByteTables.h"

#include <cstddef>
#include <new>

namespace KrCore {

namespace {

/// The mapping value is that of the code-page table for the same set, where it has it.
constexpr int westernMapping = 1;
constexpr int noMapping = 0;

alignas(BuiltInEncoders) constinit std::byte storage[sizeof(BuiltInEncoders)] = {};
constinit const BuiltInEncoders* instance = nullptr;

} // namespace

// Kept: names that stand in a list twice. Lists are shown as they are.
// ISO-8859-1 is converted like code page 1252, which has letters where ISO-8859-1 has controls:
// text that claims to be the one usually is the other. Held by
// Encoder.Iso88591ReadsTheLettersOfCp1252.
BuiltInEncoders::BuiltInEncoders()
    : ascii(noMapping,
            "US-ASCII,ASCII,ISO646-US,ISO_646.IRV:1991,ISO-IR-6,ANSI_X3.4-1968,CP367,IBM367,US,"
            "ISO646.1991-IRV",
            SingleByteCodec<Identity::Ascii>(asciiTable)),
      binary(noMapping, "BINARY", SingleByteCodec<Identity::All>(binaryTable)),
      cp1252(westernMapping, "CP1252,WINDOWS-1252,MS-ANSI",
             SingleByteCodec<Identity::AllButControls>(cp1252Table)),
      iso88591(westernMapping, "ISO-8859-1,ISO-8859-1,ISO-8859-1:1987,ISO-IR-100,LATIN1",
               SingleByteCodec<Identity::AllButControls>(cp1252Table)),
      macRoman(westernMapping, "MACINTOSH,MAC-ROMAN",
               SingleByteCodec<Identity::Ascii>(macRomanTable)),
      ucs2(noMapping, "UCS2,UCS-2,ISO-10646-UCS-2,UTF16,UTF-16,ISO-10646-UTF-16"),
      ucs2be(noMapping, "UCS2BE,UCS-2BE,ISO-10646-UCS-2BE,UTF16BE,UTF-16BE,ISO-10646-UTF16BE"),
      ucs2le(noMapping, "UCS2LE,UCS-2LE,ISO-10646-UCS-2LE,UTF16LE,UTF-16LE,ISO-10646-UTF16LE"),
      ucs4(noMapping, "UCS4,UCS-4,ISO-10646-UCS-4,UTF-32,UTF32"),
      ucs4be(noMapping, "UCS4BE,UCS-4BE,ISO-10646-UCS-4BE,UTF-32BE,UTF32BE"),
      ucs4le(noMapping, "UCS4LE,UCS-4LE,ISO-10646-UCS-4LE,UTF-32LE,UTF32LE"),
      utf8(noMapping, "UTF-8,UTF8,UNICODE-1-1-UTF-8,UNICODE-2-0-UTF-8,UNICODE-2-0-UTF-8"),
      all{&ascii,  &binary, &cp1252, &iso88591, &macRoman, &ucs2,
          &ucs2be, &ucs2le, &ucs4,   &ucs4be,   &ucs4le,   &utf8} {}

const BuiltInEncoders& builtInEncoders() {
    if (!instance) instance = ::new (static_cast<void*>(storage)) BuiltInEncoders;
    return *instance;
}

} // namespace KrCore
