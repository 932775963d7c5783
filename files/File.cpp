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
#include <memory>
#include <utility>

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
        mode = Mode::Edit;
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

void chooseCodec(FileData& data) {
    data.codec = Codec(data.encoder, data.markName);
    data.reader.setCodec(data.codec);
}

/// Finds out the encoding from the first bytes and passes over the mark.
void detect(FileData& data) {
    const char* bytes = nullptr;
    const int count = data.reader.peek(bytes, detectionBytes);
    const DetectedEncoding found = detectEncoding(bytes, count);
    data.reader.skip(found.markLength);
    data.reader.setMark(found.markLength);
    data.markName = found.isMarked ? found.name : nullptr;
    const Encoder* encoder = found.name ? Encoder::get(found.name) : nullptr;
    if (!encoder || !data.encodingName.isEmpty()) return;
    data.encodingName = canonicalName(*encoder);
    data.encoder = encoder;
}

/// Begins to read where the writer stopped.
int prepareToRead(FileData& data) {
    if (!data.stream.isOpen()) return ErrorCode::NotOpen;
    if (data.isWriting) {
        const int code = data.writer.flush();
        if (code != ErrorCode::Ok) return code;
        data.isWriting = false;
        data.reader.restart(data.writer.position());
    }
    return ErrorCode::Ok;
}

/// What is written or cut off in front of here takes the mark with it.
void forgetMarkBehind(FileData& data, std::int64_t position) {
    if (position < data.reader.getMark()) data.reader.setMark(0);
}

int prepareToWrite(FileData& data) {
    if (data.isWriting) return ErrorCode::Ok;
    const bool isAtEnd = data.access == Access::AtEnd;
    const std::int64_t position = isAtEnd ? data.stream.size() : data.reader.position();
    if (position < 0) return ErrorCode::IOError;
    data.isWriting = true;
    data.reader.restart(position);
    data.writer.restart(position);
    return ErrorCode::Ok;
}

int mayWrite(const FileData& data) {
    if (!data.stream.isOpen()) return ErrorCode::NotOpen;
    return data.access == Access::ReadOnly ? ErrorCode::PermissionDenied : ErrorCode::Ok;
}

void moveTo(FileData& data, std::int64_t position) {
    data.isWriting = false;
    data.reader.restart(position);
}

/// Sets up what belongs to a file that was just opened.
void begin(FileData& data, Access access, bool detects) {
    data.access = access;
    moveTo(data, 0);
    data.markName = nullptr;
    data.reader.setMark(0);
    if (detects) detect(data);
    if (data.encodingName.isEmpty()) {
        const Encoder& encoder = Encoder::getDefault();
        data.encodingName = canonicalName(encoder);
        data.encoder = &encoder;
    }
    chooseCodec(data);
    if (access == Access::AtEnd) moveTo(data, data.stream.size());
}

std::int64_t positionOf(const FileData& data) {
    return data.isWriting ? data.writer.position() : data.reader.position();
}

/// The position that a seek asks for; false when the sum is none.
bool addPosition(std::int64_t base, std::int64_t distance, std::int64_t& position) {
    if (distance > std::numeric_limits<std::int64_t>::max() - base) return false;
    position = base + distance;
    return position >= 0;
}

/// Stands at the beginning of the text for a while; then the file is as it was, closed or at its
/// position.
class ContentScope {
public:
    ContentScope(FileData& data, bool wasOpen)
        : data_(data), position_(positionOf(data)), wasOpen_(wasOpen) {
        if (wasOpen) moveTo(data, 0);
    }
    ~ContentScope() {
        if (wasOpen_) {
            moveTo(data_, position_);
        } else {
            moveTo(data_, 0);
            data_.stream.close();
        }
    }
    ContentScope(const ContentScope&) = delete;
    ContentScope& operator=(const ContentScope&) = delete;

private:
    FileData& data_;
    const std::int64_t position_;
    const bool wasOpen_;
};

} // namespace

File::File(const FileSpec& spec) {
    auto data = std::make_unique<FileData>(spec);
    data->lookupError = lookUp(spec);
    data_ = data.release();
}

File::~File() {
    data_->writer.flush();
    delete data_;
}

// Opening and closing.

int File::open(const String& mode, unsigned int /*type*/, unsigned int /*creator*/) {
    const int closing = close();
    if (closing != ErrorCode::Ok) return closing;
    // It may have come or gone since.
    data_->lookupError = lookUp(data_->spec);
    const char letter = modeLetter(mode);
    Mode streamMode = Mode::Read;
    const int code = chooseMode(letter, data_->lookupError, streamMode);
    if (code != ErrorCode::Ok) return code;
    const String path = systemPathOf(data_->spec);
    const int opening = codeOf(data_->stream.open(unitsOf(path), streamMode));
    if (opening != ErrorCode::Ok) return opening;
    try {
        begin(*data_, accessOf(streamMode), letter != 'w');
    } catch (...) {
        data_->stream.close();
        throw;
    }
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
    int code = prepareToRead(*data_);
    bool isFound = false;
    if (code == ErrorCode::Ok) code = data_->reader.readLine(line, isFound);
    if (code != ErrorCode::Ok || !isFound) line.erase();
    return code == ErrorCode::Ok && !isFound ? ErrorCode::ReadPastEnd : code;
}

int File::getContent(String& content, int limit) {
    content.erase();
    const bool wasOpen = isOpen();
    const int code = wasOpen ? data_->writer.flush() : open("r", 0, 0);
    if (code != ErrorCode::Ok) return code;
    const ContentScope scope(*data_, wasOpen);
    const std::int64_t count = limit < 0 ? std::numeric_limits<std::int64_t>::max() : limit;
    String found;
    const int reading = data_->reader.read(count, found);
    if (reading == ErrorCode::Ok) content = std::move(found);
    return reading;
}

// Writing.

int File::write(const String& text, bool appendLineEnd) {
    FileData& data = *data_;
    int code = mayWrite(data);
    if (code != ErrorCode::Ok || (text.isEmpty() && !appendLineEnd)) return code;
    const bool wasWriting = data.isWriting;
    const std::int64_t position = wasWriting ? 0 : positionOf(data);
    code = prepareToWrite(data);
    if (code != ErrorCode::Ok) return code;
    const std::int64_t start = data.writer.position();
    code = data.writer.write(data.codec, text, data.lineEnd, appendLineEnd);
    const bool mayHaveWritten = code == ErrorCode::Ok || code == ErrorCode::IOError;
    if (mayHaveWritten) forgetMarkBehind(data, start);
    // A refused text does not move; when something else waits for the disk, that decides.
    if (code != ErrorCode::Ok && !wasWriting && !data.writer.hasPending()) moveTo(data, position);
    return code;
}

int File::setSize(long long byteCount) {
    int code = mayWrite(*data_);
    if (code != ErrorCode::Ok) return code;
    if (byteCount < 0) return ErrorCode::BadArgumentList;
    code = data_->writer.flush();
    if (code != ErrorCode::Ok) return code;
    const std::int64_t position = positionOf(*data_);
    code = codeOf(data_->stream.setSize(byteCount));
    if (code != ErrorCode::Ok) return code;
    data_->writer.breakOff();
    forgetMarkBehind(*data_, byteCount);
    moveTo(*data_, std::min<std::int64_t>(position, byteCount));
    return ErrorCode::Ok;
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
    data_->writer.breakOff();
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
    const int flushing = data_->writer.flush();
    if (flushing != ErrorCode::Ok) return flushing;
    const String path = systemPathOf(data_->spec);
    const Platform::FileFault fault = Platform::executeFile(unitsOf(path));
    return fault == Platform::FileFault::Failed ? int(ErrorCode::CannotExecute) : codeOf(fault);
}

const FileSpec& File::getFileSpec() const { return data_->spec; }

// Encoding and line ends.

const String& File::getEncoding() const { return data_->encodingName; }

bool File::setEncoding(const String& name) {
    const bool isName = name.find(static_cast<unsigned short>(0)) < 0;
    const Encoder* encoder = isName ? Encoder::get(name.wstr()) : nullptr;
    if (!encoder && !name.isEmpty()) return false;
    if (encoder && encoder == data_->encoder) return true;
    data_->encodingName = encoder ? canonicalName(*encoder) : String();
    data_->encoder = encoder;
    chooseCodec(*data_);
    return true;
}

CRLFEncoding File::getLF() const { return data_->lineEnd; }

void File::setLF(CRLFEncoding lineEnd) { data_->lineEnd = lineEnd; }

} // namespace KrCore
