#include <krcore/files/File.h>

#include "files/EncodingDetection.h"
#include "files/FileData.h"
#include "files/FileSpecData.h"
#include "files/SystemText.h"

#include <krcore/files/FileUtils.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/text/Encoder.h>

#include <algorithm>
#include <limits>

namespace KrCore {

namespace {

using Access = FileData::Access;
using Mode = Platform::FileStream::Mode;

/// Where a byte position is counted from.
enum Whence { fromStart = 0, fromPosition = 1, fromEnd = 2 };

/// The first letter of a mode, in lower case; 'r' for an empty one.
char modeLetter(const String& mode) {
    if (mode.isEmpty()) return 'r';
    const unsigned short unit = mode.wstr()[0];
    return unit < 0x80 ? static_cast<char>(unit | 0x20) : '\0';
}

int lookUp(const FileSpec& spec) { return spec.exists() ? ErrorCode::Ok : ErrorCode::FileNotFound; }

/// How a letter opens a file. A missing file is no error for "e": it is made.
int chooseMode(char letter, int lookupError, Mode& mode) {
    switch (letter) {
    case 'r':
        mode = Mode::Read;
        return lookupError;
    case 'w':
        mode = Mode::Create;
        return ErrorCode::Ok;
    case 'e':
        mode = lookupError == ErrorCode::Ok ? Mode::Update : Mode::Create;
        return ErrorCode::Ok;
    case 'a':
        mode = Mode::Append;
        return ErrorCode::Ok;
    default:
        return ErrorCode::BadArgumentList;
    }
}

Access accessOf(Mode mode) {
    if (mode == Mode::Read) return Access::ReadOnly;
    return mode == Mode::Append ? Access::AtEnd : Access::Anywhere;
}

void chooseCodec(FileData& data) { data.codec = Codec(data.encoder, data.markName); }

/// Finds out the encoding from the first bytes and passes over the mark.
void detect(FileData& data) {
    const char* bytes = nullptr;
    const int count = data.reader.peek(bytes, detectionBytes);
    const DetectedEncoding found = detectEncoding(bytes, count);
    data.reader.skip(found.markLength);
    data.markLength = found.markLength;
    data.markName = found.markLength > 0 ? found.name : nullptr;
    const Encoder* encoder = found.name ? Encoder::get(found.name) : nullptr;
    if (!encoder || !data.encodingName.isEmpty()) return;
    data.encoder = encoder;
    data.encodingName = canonicalName(*encoder);
}

/// Begins to read where the writer stopped.
int prepareToRead(FileData& data) {
    if (!data.stream.isOpen()) return ErrorCode::NotOpen;
    if (!data.isWriting) return ErrorCode::Ok;
    const int code = data.writer.flush();
    if (code != ErrorCode::Ok) return code;
    data.isWriting = false;
    data.reader.restart(data.writer.position());
    return ErrorCode::Ok;
}

int prepareToWrite(FileData& data) {
    if (!data.stream.isOpen()) return ErrorCode::NotOpen;
    if (data.access == Access::ReadOnly) return ErrorCode::PermissionDenied;
    if (data.isWriting) return ErrorCode::Ok;
    const bool isAtEnd = data.access == Access::AtEnd;
    const std::int64_t position = isAtEnd ? data.stream.size() : data.reader.position();
    if (position < 0) return ErrorCode::IOError;
    data.isWriting = true;
    data.reader.restart(position);
    data.writer.restart(position);
    return ErrorCode::Ok;
}

std::int64_t positionOf(const FileData& data) {
    return data.isWriting ? data.writer.position() : data.reader.position();
}

void moveTo(FileData& data, std::int64_t position) {
    data.isWriting = false;
    data.reader.restart(position);
}

/// The position that a seek asks for; false when the sum is none.
bool addPosition(std::int64_t base, std::int64_t distance, std::int64_t& position) {
    if (distance > std::numeric_limits<std::int64_t>::max() - base) return false;
    position = base + distance;
    return position >= 0;
}

} // namespace

File::File(const FileSpec& spec) : data_(new FileData(spec)) { data_->lookupError = lookUp(spec); }

File::~File() {
    data_->writer.flush();
    delete data_;
}

// Opening and closing.

int File::open(const String& mode, unsigned int /*type*/, unsigned int /*creator*/) {
    const int closing = close();
    if (closing != ErrorCode::Ok) return closing;
    FileData& data = *data_;
    // It may have come or gone since.
    data.lookupError = lookUp(data.spec);
    const char letter = modeLetter(mode);
    Mode streamMode = Mode::Read;
    int code = chooseMode(letter, data.lookupError, streamMode);
    if (code != ErrorCode::Ok) return code;
    const String path = systemPathOf(data.spec);
    code = codeOf(data.stream.open(unitsOf(path), streamMode));
    if (code != ErrorCode::Ok) return code;

    data.access = accessOf(streamMode);
    moveTo(data, 0);
    data.markLength = 0;
    data.markName = nullptr;
    if (letter != 'w') detect(data);
    if (data.encodingName.isEmpty()) {
        data.encoder = &Encoder::getDefault();
        data.encodingName = canonicalName(*data.encoder);
    }
    chooseCodec(data);
    data.reader.setCodec(data.codec);
    if (data.access == Access::AtEnd) moveTo(data, data.stream.size());
    return ErrorCode::Ok;
}

int File::close() {
    if (!data_->stream.isOpen()) return ErrorCode::Ok;
    const int flushing = data_->writer.flush();
    data_->writer.drop();
    moveTo(*data_, 0);
    const int closing = codeOf(data_->stream.close());
    return flushing != ErrorCode::Ok ? flushing : closing;
}

bool File::isOpen() const { return data_->stream.isOpen(); }

int File::flush() {
    if (!isOpen()) return ErrorCode::NotOpen;
    return data_->writer.flush();
}

// Reading.

bool File::eof() { return prepareToRead(*data_) != ErrorCode::Ok || data_->reader.isAtEnd(); }

int File::read(long long count, String& text) {
    text.erase();
    int code = prepareToRead(*data_);
    if (code != ErrorCode::Ok || count <= 0) return code;
    String content;
    code = data_->reader.read(count, content);
    if (code != ErrorCode::Ok) return code;
    if (content.isEmpty()) return ErrorCode::ReadPastEnd;
    text = std::move(content);
    return ErrorCode::Ok;
}

int File::readln(String& line) {
    line.erase();
    int code = prepareToRead(*data_);
    if (code != ErrorCode::Ok) return code;
    bool isFound = false;
    code = data_->reader.readLine(line, isFound);
    if (code != ErrorCode::Ok) line.erase();
    return code == ErrorCode::Ok && !isFound ? ErrorCode::ReadPastEnd : code;
}

int File::getContent(String& content, int limit) {
    content.erase();
    const bool wasOpen = isOpen();
    int code = wasOpen ? prepareToRead(*data_) : open("r", 0, 0);
    if (code != ErrorCode::Ok) return code;
    const std::int64_t position = positionOf(*data_);
    if (wasOpen) moveTo(*data_, data_->markLength);
    const std::int64_t count = limit < 0 ? String::maxLength : limit;
    code = data_->reader.read(count, content);
    if (code != ErrorCode::Ok) content.erase();
    if (wasOpen) {
        moveTo(*data_, position);
    } else {
        close();
    }
    return code;
}

// Writing.

int File::write(const String& text, bool appendLineEnd) {
    const int code = prepareToWrite(*data_);
    if (code != ErrorCode::Ok) return code;
    FileData& data = *data_;
    const int writing = data.writer.write(data.codec, text.wstr(), text.length(), data.lineEnd);
    if (writing != ErrorCode::Ok || !appendLineEnd) return writing;
    constexpr unsigned short lineEnd = '\n';
    return data.writer.write(data.codec, &lineEnd, 1, data.lineEnd);
}

int File::setSize(long long byteCount) {
    if (!isOpen()) return ErrorCode::NotOpen;
    if (data_->access == Access::ReadOnly) return ErrorCode::PermissionDenied;
    if (byteCount < 0) return ErrorCode::BadArgumentList;
    int code = data_->writer.flush();
    if (code != ErrorCode::Ok) return code;
    const std::int64_t position = positionOf(*data_);
    code = codeOf(data_->stream.setSize(byteCount));
    if (code == ErrorCode::Ok) moveTo(*data_, std::min<std::int64_t>(position, byteCount));
    return code;
}

// Position and size.

int File::seek(long long position, int whence) {
    if (!isOpen()) return ErrorCode::NotOpen;
    const int code = data_->writer.flush();
    if (code != ErrorCode::Ok) return code;
    const std::int64_t size = data_->stream.size();
    std::int64_t base = 0;
    if (whence == fromPosition) base = positionOf(*data_);
    if (whence == fromEnd) base = size;
    std::int64_t target = 0;
    const bool isKnown = whence >= fromStart && whence <= fromEnd;
    if (size < 0) return ErrorCode::IOError;
    if (!isKnown || (position < 0 && position < -base)) return ErrorCode::BadArgumentList;
    if (!addPosition(base, position, target) || target > size) return ErrorCode::ReadPastEnd;
    moveTo(*data_, target);
    return ErrorCode::Ok;
}

long long File::tell() { return isOpen() ? positionOf(*data_) : -1; }

int File::getSize(long long& byteCount) {
    byteCount = 0;
    if (!isOpen()) {
        const String path = systemPathOf(data_->spec);
        Platform::FileFacts facts;
        const int code = codeOf(Platform::readFileFacts(unitsOf(path), facts));
        byteCount = facts.byteCount;
        return code;
    }
    const int code = data_->writer.flush();
    if (code != ErrorCode::Ok) return code;
    const std::int64_t size = data_->stream.size();
    if (size < 0) return ErrorCode::IOError;
    byteCount = size;
    return ErrorCode::Ok;
}

// The file as a whole.

int File::copyTo(const FileSpec& target) {
    const int code = data_->writer.flush();
    return code != ErrorCode::Ok ? code : FileUtils::copy(data_->spec, target);
}

int File::execute() {
    const String path = systemPathOf(data_->spec);
    const Platform::FileFault fault = Platform::executeFile(unitsOf(path));
    return fault == Platform::FileFault::Failed ? int(ErrorCode::CannotExecute) : codeOf(fault);
}

const FileSpec& File::getFileSpec() const { return data_->spec; }

// Encoding and line ends.

const String& File::getEncoding() const { return data_->encodingName; }

bool File::setEncoding(const String& name) {
    FileData& data = *data_;
    const Encoder* encoder = Encoder::get(name.wstr());
    if (!encoder && !name.isEmpty()) return false;
    const String canonical = encoder ? canonicalName(*encoder) : String();
    data.encoder = encoder;
    data.encodingName = canonical;
    chooseCodec(data);
    data.reader.setCodec(data.codec);
    return true;
}

CRLFEncoding File::getLF() const { return data_->lineEnd; }

void File::setLF(CRLFEncoding lineEnd) { data_->lineEnd = lineEnd; }

} // namespace KrCore
