#pragma once

#include "platform/CodePage.h"
#include "text/encoders/ByteTable.h"
#include "text/encoders/CodePageShape.h"
#include "text/encoders/CodecEncoder.h"

namespace KrCore {

/// The conversions of a code page of the operating system.
///
/// A page of single bytes is read from the system into a table once; the system is asked again only
/// for units that the table does not have, as its conversion may know a near one. Other pages go
/// through the system in stretches that can stand by themselves, and when a stretch fails, again
/// character by character up to the one that is at fault. UTF-8 as a code page is the built-in
/// UTF-8, since the system's would replace what is invalid.
///
/// In a page with states each call begins and ends in the initial state. A stretch in another state
/// is not divided: the output needs room for all of it, and without `flush` it is kept back until
/// the initial state is reached again.
class CodePageCodec {
public:
    explicit CodePageCodec(int page);
    ~CodePageCodec();
    CodePageCodec(const CodePageCodec&) = delete;
    CodePageCodec& operator=(const CodePageCodec&) = delete;

    template <class Sink>
    Stop decode(ByteSource& source, Sink& sink, bool flush) const;
    template <class Sink>
    Stop encode(UnitSource& source, Sink& sink) const;

private:
    enum class Kind { SingleByte, SingleByteAscii, MultiByte, MultiByteAscii, Stateful, Utf8 };

    Kind examine();
    void readTable();
    bool hasAsciiUnits() const;

    template <class Sink>
    Stop decodeStretches(ByteSource& source, Sink& sink, bool flush) const;
    template <class Sink>
    Stop decodeStretch(ByteSource& source, Sink& sink, int length) const;
    template <class Sink>
    Stop encodeSingleBytes(UnitSource& source, Sink& sink) const;
    template <class Sink>
    Stop encodeBatches(UnitSource& source, Sink& sink) const;
    template <class Sink>
    Stop encodeCharacter(UnitSource& source, Sink& sink) const;
    template <class Sink>
    Stop encodeWithStates(UnitSource& source, Sink& sink) const;

    int closedLength(const ByteSource& source, int limit) const;
    int encodablePrefix(const unsigned short* text, int count) const;

    const int number_;
    const Platform::CodePage page_;
    CodePageShape shape_;
    ByteTable table_;
    ByteTable::Block* blocks_ = nullptr; ///< The table's; owned.
    Kind kind_;
};

} // namespace KrCore
