// Reads a file of which only the bytes are known: whole, in pieces and by lines, which all have to
// tell the same. Of the first byte two bits choose how long the pieces are, the next whether the
// file is sent to where it stands before each of them, the next whether it is longer than what is
// read from the disk at once; the rest of the input is the file.

#include "support/FuzzInput.h"

#include <krcore/files/File.h>
#include <krcore/files/FileUtils.h>
#include <krcore/files/Folder.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/text/StringConversions.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <span>
#include <string_view>
#include <system_error>
#include <vector>

using namespace KrCore;

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr long long everything = 1 << 20;
constexpr long long pieceLengths[] = {1, 7, 4096, everything};

/// Bits of the first byte.
enum Flag : unsigned { pieceMask = 3, longPieces = 2, seeks = 4, stretches = 8 };

/// Reads from the disk are not longer.
constexpr std::size_t blockLength = 32768;
/// What is stretched; with more, asking for every position takes too much time.
constexpr std::size_t stretchedLength = 256;

/// A folder of this process; goes with what is in it.
class WorkFolder {
public:
    WorkFolder() {
        int code = ErrorCode::FileExists;
        while (code == ErrorCode::FileExists) { // Another process may be faster with the name.
            FileSpec spec;
            Fuzz::require(FileUtils::getTempDir(spec) == 0 && spec.tempName(), "there is a folder");
            code = Folder(spec).create();
            std::u16string path = toUtf16(spec.getPath());
            std::replace(path.begin(), path.end(), u'\\',
                         static_cast<char16_t>(std::filesystem::path::preferred_separator));
            path_ = path;
        }
        Fuzz::require(code == 0, "a folder can be made");
    }
    ~WorkFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    FileSpec spec(const char* name) const {
        return FileSpec(fromUtf16((path_ / name).u16string()), true);
    }
    bool beginsWithMark(const char* name) const {
        std::ifstream stream(path_ / name, std::ios::binary);
        char bytes[3] = {};
        stream.read(bytes, sizeof bytes);
        const std::string_view front(bytes, sizeof bytes);
        return front == "\xEF\xBB\xBF" || front.starts_with("\xFF\xFE") ||
               front.starts_with("\xFE\xFF");
    }
    FileSpec write(const char* name, Bytes bytes) const {
        std::ofstream stream(path_ / name, std::ios::binary);
        stream.write(reinterpret_cast<const char*>(bytes.data()),
                     static_cast<std::streamsize>(bytes.size()));
        stream.close();
        Fuzz::require(stream.good(), "the input can be written");
        return spec(name);
    }

private:
    std::filesystem::path path_;
};

/// What came of reading a file.
struct Result {
    int code = 0;
    String text;
    std::vector<String> lines;
    String encoding;
};

bool isConversionFailure(int code) {
    return code == ErrorCode::CharacterConversion || code == ErrorCode::PartialCharacter;
}

bool isCarriageReturn(unsigned short unit) { return unit == '\r'; }
bool isLineEnd(unsigned short unit) { return isCarriageReturn(unit) || unit == '\n'; }

bool endsInPair(const String& text) {
    const unsigned short* const end = text.end();
    return text.length() >= 2 && (end[-2] & 0xFC00) == 0xD800 && (end[-1] & 0xFC00) == 0xDC00;
}

/// An open file, of which every call is checked by where it leads.
class CheckedFile {
public:
    CheckedFile(const FileSpec& spec, std::size_t size)
        : file_(spec), size_(static_cast<long long>(size)) {
        Fuzz::require(file_.open("r", 0, 0) == 0, "the file can be opened");
        long long reported = -1;
        Fuzz::require(file_.getSize(reported) == 0 && reported == size_, "the size is right");
        position_ = tell();
        Fuzz::require(position_ >= 0 && position_ <= size_, "it begins in the file");
    }

    File& file() { return file_; }
    long long tell() { return file_.tell(); }

    int read(long long count, String& text) {
        const int code = file_.read(count, text);
        check(code);
        if (code != 0) return code;
        const long long excess = text.length() - count;
        Fuzz::require(text.length() > 0, "a success reads something");
        Fuzz::require(excess <= 0 || (excess == 1 && endsInPair(text)), "and no more than asked");
        Fuzz::require(excess >= 0 || file_.eof(), "and less only at the end");
        return code;
    }
    int readln(String& line) {
        const int code = file_.readln(line);
        check(code);
        Fuzz::require(code != 0 || std::none_of(line.begin(), line.end(), isLineEnd),
                      "a line has no line end");
        return code;
    }
    /// Forgets what was read ahead.
    void seekHere() {
        Fuzz::require(file_.seek(position_, 0) == 0, "the file can be sent to where it is");
    }

private:
    void check(int code) {
        const long long before = position_;
        position_ = tell();
        Fuzz::require(file_.isOpen(), "the file stays open");
        Fuzz::require(file_.eof() == (position_ == size_), "eof is where the file ends");
        if (code == 0) {
            Fuzz::require(position_ > before && position_ <= size_,
                          "a success goes on in the file");
        } else {
            Fuzz::require(position_ == before, "a failure leaves the position");
            Fuzz::require((code == ErrorCode::ReadPastEnd) == (position_ == size_),
                          "past the end is only the end");
            Fuzz::require(code == ErrorCode::ReadPastEnd || isConversionFailure(code),
                          "nothing else fails");
        }
    }

    File file_;
    const long long size_;
    long long position_ = 0; ///< Where the last call ended.
};

/// The bytes with so many letters in the middle that the end of a block falls behind them.
std::vector<std::uint8_t> stretched(Bytes bytes) {
    const std::size_t half = bytes.size() / 2;
    std::vector<std::uint8_t> result(bytes.begin(), bytes.begin() + half);
    result.resize(blockLength - half / 2, 'x');
    result.insert(result.end(), bytes.begin() + half, bytes.end());
    return result;
}

Result readWhole(const FileSpec& spec, std::size_t size) {
    CheckedFile file(spec, size);
    Result result;
    result.encoding = file.file().getEncoding();
    result.code = file.read(everything, result.text);
    return result;
}

/// The code is that of the last call, which never is a success.
Result readPieces(const FileSpec& spec, std::size_t size, unsigned flags) {
    CheckedFile file(spec, size);
    Result result;
    String piece;
    do {
        if ((flags & seeks) != 0) file.seekHere();
        result.code = file.read(pieceLengths[flags & pieceMask], piece);
        if (result.code == 0) result.text += piece;
    } while (result.code == 0);
    return result;
}

Result readLines(const FileSpec& spec, std::size_t size, unsigned flags) {
    CheckedFile file(spec, size);
    Result result;
    String line;
    do {
        if ((flags & seeks) != 0) file.seekHere();
        result.code = file.readln(line);
        if (result.code == 0) result.lines.push_back(line);
    } while (result.code == 0);
    return result;
}

std::vector<String> splitLines(const String& text) {
    std::vector<String> lines;
    const unsigned short* const end = text.end();
    for (const unsigned short* start = text.begin(); start != end;) {
        const unsigned short* const lineEnd = std::find_if(start, end, isLineEnd);
        lines.emplace_back(start, static_cast<int>(lineEnd - start));
        start = lineEnd;
        if (start != end) ++start;
        if (start != end && isCarriageReturn(start[-1]) && *start == '\n') ++start;
    }
    return lines;
}

void checkSame(const Result& whole, const Result& pieces, const Result& lines) {
    Fuzz::require(pieces.code == lines.code, "pieces and lines end alike");
    if (whole.code == 0) {
        Fuzz::require(pieces.code == ErrorCode::ReadPastEnd, "the pieces come to the end");
        Fuzz::require(pieces.text == whole.text, "the pieces make the whole");
        Fuzz::require(lines.lines == splitLines(whole.text), "so do the lines");
    } else {
        Fuzz::require(pieces.code == whole.code, "the pieces fail as the whole");
    }
}

/// What cannot be decoded can still be read, from the same place, as bytes.
void checkOtherEncoding(const FileSpec& spec, Bytes bytes, int code) {
    CheckedFile file(spec, bytes.size());
    String text;
    Fuzz::require(file.read(everything, text) == code, "a failure repeats");
    const Bytes rest = bytes.subspan(static_cast<std::size_t>(file.tell()));
    Fuzz::require(file.file().setEncoding("BINARY"), "there is an encoding for bytes");
    Fuzz::require(file.read(everything, text) == 0, "in which every byte is a character");
    Fuzz::require(std::ranges::equal(text, rest), "and stands for itself");
}

void checkContent(const FileSpec& spec, const Result& whole) {
    String content;
    const int code = File(spec).getContent(content, -1);
    if (isConversionFailure(whole.code))
        Fuzz::require(code == whole.code, "the content fails as the text");
    else
        Fuzz::require(code == 0 && content == whole.text, "the content is the text");
}

void checkWritten(const WorkFolder& folder, const Result& whole) {
    File file(folder.spec("output"));
    Fuzz::require(file.setEncoding(whole.encoding), "an encoding found out can be set");
    file.setLF(CRLFEncoding::CRLF);
    Fuzz::require(file.open("w", 0, 0) == 0, "a file can be made");
    Fuzz::require(file.write(whole.text, false) == 0, "what was read can be written");
    Fuzz::require(file.seek(0, 0) == 0, "and read again");
    String again;
    Fuzz::require(file.read(everything, again) == 0, "without a failure");
    String wanted(whole.text);
    wanted.convertLF(CRLFEncoding::CRLF);
    Fuzz::require(again == wanted, "and says the same");

    Fuzz::require(file.close() == 0, "a file can be closed");
    // These are skipped, whatever the encoding.
    if (folder.beginsWithMark("output")) return;
    Fuzz::require(file.getContent(again, -1) == 0 && again == wanted, "and reads the same then");
}

bool isUnicode(const String& encoding) {
    return encoding.nucmp("UTF", 3) == 0 || encoding.nucmp("UCS", 3) == 0;
}

bool isPlain(std::uint8_t byte) { return byte > 0 && byte < 0x80; }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::startLibrary();
    if (size == 0) return 0;
    static const WorkFolder folder;
    unsigned flags = data[0];
    Bytes bytes(data + 1, size - 1);
    std::vector<std::uint8_t> longBytes;
    if ((flags & stretches) != 0 && bytes.size() <= stretchedLength) {
        flags |= longPieces;
        longBytes = stretched(bytes);
        bytes = longBytes;
    }
    const FileSpec spec = folder.write("input", bytes);

    const Result whole = readWhole(spec, bytes.size());
    checkSame(whole, readPieces(spec, bytes.size(), flags), readLines(spec, bytes.size(), flags));
    checkContent(spec, whole);
    if (isConversionFailure(whole.code)) checkOtherEncoding(spec, bytes, whole.code);
    if (!bytes.empty() && std::ranges::all_of(bytes, isPlain))
        Fuzz::require(std::ranges::equal(whole.text, bytes), "ASCII stands for itself");

    // Read again, U+FEFF in front would be a mark.
    const bool comesBack = whole.code == 0 && whole.text.wstr()[0] != 0xFEFF;
    if (comesBack && isUnicode(whole.encoding)) checkWritten(folder, whole);
    return 0;
}
