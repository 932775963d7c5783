#pragma once

#include <krcore/files/FileSpec.h>
#include <krcore/foundation/Export.h>
#include <krcore/foundation/Root.h>
#include <krcore/text/String.h>

namespace KrCore {

struct FileData;

/// A text file on a `FileSpec`: opened in one of four modes, read and written as text through an
/// `Encoder` and with a line-feed convention.
///
/// Operations return an error code, 0 for success: `NotOpen` when the file is not open,
/// `PermissionDenied` for writing to one that is open to read, `CharacterConversion` and
/// `PartialCharacter` for bytes or characters that the encoding does not have, `IOError` for what
/// the system cannot do. After a failure of reading the position is where it was, so that another
/// encoding can be tried; bytes that a full medium refused are kept and written by the next flush
/// that succeeds.
///
/// A file has one position for reading and writing. Bytes are buffered; `flush`, `close` and every
/// question about size and content write them. Destroying an open file closes it and drops the
/// error. One object is used by one thread at a time. Memory that runs out throws, and leaves the
/// file open.
///
/// The order of the virtual functions is part of the interface.
class KR_API File : public Root {
public:
    explicit File(const FileSpec& spec);
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() override;

    /// Writes what is buffered, reports whether that went well, and closes in any case.
    virtual int close();
    /// Copies the file, as `FileUtils::copy`, with all that was written so far.
    virtual int copyTo(const FileSpec& target);
    /// Whether no byte is left to be read; true when the file is not open.
    virtual bool eof();
    /// Opens the file as if the user had asked the system for it. `CannotExecute` when the system
    /// has nothing to open it with.
    virtual int execute();
    virtual int flush();
    /// The text of the whole file, without a byte-order mark; at most `limit` units (-1: all).
    /// Opens and closes the file when it is not open, otherwise the position stays.
    virtual int getContent(String& content, int limit);
    /// The size in bytes, whether or not the file is open.
    virtual int getSize(long long& byteCount);
    virtual bool isOpen() const;
    /// Opens the file; only the first character of `mode` counts, in either case:
    ///
    /// | mode     |                                                                          |
    /// |----------|--------------------------------------------------------------------------|
    /// | empty, r | to read; `FileNotFound` when there is none                               |
    /// | w        | to read and write; made, or emptied                                      |
    /// | e        | to read and write; made when there is none                               |
    /// | a        | to read, and to write at the end, where the position is; made like for e |
    ///
    /// An open file is closed first, and after a failure it is closed. Any other mode is
    /// `BadArgumentList`. Except for "w" the encoding is found out from the first bytes, unless one
    /// was set or found before: byte-order marks, which are skipped, patterns of zero bytes, UTF-8.
    /// A file of which nothing can be told has the default encoding.
    ///
    /// Neither system keeps `type` and `creator` codes; they have no effect.
    virtual int open(const String& mode, unsigned int type, unsigned int creator);
    /// Reads up to `count` units; a surrogate pair is never split, so there may be one more. Line
    /// ends come as they are. `ReadPastEnd` when nothing is left; fewer at the end are a success.
    virtual int read(long long count, String& text);
    /// Reads up to the next line end, CR LF, CR or LF, which is left out. `ReadPastEnd` when
    /// nothing is left.
    virtual int readln(String& line);
    /// Moves to a byte position from the start (0), the current position (1) or the end (2).
    /// `ReadPastEnd` beyond the end, `BadArgumentList` in front of the start or for another
    /// `whence`; the position stays then. The start is that of the file; a reading there passes
    /// over the byte-order mark that `open` found.
    virtual int seek(long long position, int whence);
    /// Cuts the file or extends it with zero bytes.
    virtual int setSize(long long byteCount);
    /// The byte position of the next character; -1 when the file is not open. In an encoding with
    /// shift states it is the last one in front of it where no shift is in effect; `getContent`,
    /// `setEncoding` and `write` go on from there, too.
    virtual long long tell();
    /// Writes the text with each of its line ends as the convention has it, and with
    /// `appendLineEnd` one more; a CR and a LF that come with two calls are one. Nothing is written
    /// of a text that the encoding cannot hold, or that a full medium does not take, so that it can
    /// be tried again; only what it overwrote may have changed then.
    virtual int write(const String& text, bool appendLineEnd);

    const FileSpec& getFileSpec() const;
    /// The canonical name of the encoder in use; empty before one is known.
    const String& getEncoding() const;
    /// Sets the encoding from the current position on; an empty name sets none, so that the next
    /// `open` finds out. False, and the old one stays, for a name that no encoder answers to.
    bool setEncoding(const String& name);
    /// What `write` makes of line ends; `Default` writes those of the system.
    CRLFEncoding getLF() const;
    void setLF(CRLFEncoding lineEnd);

private:
    FileData* data_;
};

} // namespace KrCore
