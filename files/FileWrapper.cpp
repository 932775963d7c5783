#include <krcore/files/FileWrapper.h>

#include "files/EntryNames.h"
#include "files/PathText.h"
#include "files/PathUri.h"

#include <krcore/files/File.h>
#include <krcore/files/FileFilter.h>
#include <krcore/files/FileUtils.h>
#include <krcore/files/Folder.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/values/Error.h>

#include <memory>
#include <utility>

namespace KrCore {

namespace {

constexpr char notAFolder[] = "$$$/CT/Marlscript/Errors/NoDir=Not a directory";
constexpr char cannotList[] = "$$$/CT/Marlscript/Errors/IO=I/O error";
constexpr int codeLength = 4;

/// Four characters as a number, the first in the highest byte; 0 for a shorter text.
unsigned int packedCode(const String* text) {
    if (!text || text->length() < codeLength) return 0;
    unsigned int code = 0;
    for (int index = 0; index < codeLength; ++index)
        code = code << 8 | (text->wstr()[index] & 0xFFU);
    return code;
}

String unpackedCode(unsigned int code) {
    String text;
    for (int shift = 24; code != 0 && shift >= 0; shift -= 8)
        text.append(static_cast<unsigned short>(code >> shift & 0xFF));
    return text;
}

/// The specs that a folder gave; what nobody took over is deleted.
struct OwnedSpecs {
    OwnedSpecs() = default;
    ~OwnedSpecs() {
        for (const FileSpec* spec : specs)
            delete spec;
    }
    OwnedSpecs(const OwnedSpecs&) = delete;
    OwnedSpecs& operator=(const OwnedSpecs&) = delete;

    TSimpleArray<FileSpec> specs;
};

/// Appends one wrapper for each spec, or throws and leaves the array as it was.
void appendWrappers(const TSimpleArray<FileSpec>& specs, TSimpleArray<FileWrapper>& files) {
    const int before = files.length();
    try {
        for (const FileSpec* spec : specs) {
            auto wrapper = std::make_unique<FileWrapper>(*spec);
            files.append(wrapper.get());
            (void)wrapper.release();
        }
    } catch (...) {
        while (files.length() > before)
            delete files.removeAt(before);
        throw;
    }
}

} // namespace

FileWrapper::FileWrapper(const FileSpec& spec) : spec_(spec) {}

FileWrapper::FileWrapper(const String& path) : spec_(path) {}

FileWrapper::~FileWrapper() { drop(); }

int FileWrapper::clone(Cloneable** result, bool /*deep*/) const {
    auto copy = std::make_unique<FileWrapper>(spec_);
    copy->encoding_ = encoding_;
    copy->lineEnd_ = lineEnd_;
    *result = copy.release();
    return ErrorCode::Ok;
}

File& FileWrapper::toFile() {
    if (!file_) {
        auto file = std::make_unique<File>(spec_);
        file->setEncoding(encoding_);
        file->setLF(static_cast<CRLFEncoding>(lineEnd_));
        file_ = file.release();
    }
    return *file_;
}

Folder& FileWrapper::toFolder() {
    if (!folder_) folder_ = new Folder(spec_);
    return *folder_;
}

void FileWrapper::drop() {
    delete std::exchange(file_, nullptr);
    delete std::exchange(folder_, nullptr);
}

/// Closes the file for a change of it or of its location; what cannot be written stands in the way.
template <class Change>
bool FileWrapper::closeAround(Change change) {
    const int closing = file_ ? file_->close() : int(ErrorCode::Ok);
    if (closing != ErrorCode::Ok) return checkError(closing);
    drop();
    return checkError(change());
}

bool FileWrapper::checkError(int code) {
    error_.erase();
    if (code != ErrorCode::Ok) KrGetErrorMsg(code, error_);
    return code == ErrorCode::Ok;
}

const String& FileWrapper::getError() const { return error_; }

bool FileWrapper::setError(const String& message) {
    error_ = message;
    return true;
}

// The open file.

bool FileWrapper::open(const String& mode, const String* type, const String* creator) {
    return checkError(toFile().open(mode, packedCode(type), packedCode(creator)));
}

bool FileWrapper::close() { return checkError(toFile().close()); }

bool FileWrapper::read(long long count, String& text) {
    return checkError(toFile().read(count, text));
}

bool FileWrapper::readln(String& line) { return checkError(toFile().readln(line)); }

int FileWrapper::readch() {
    String text;
    if (!read(1, text)) return -1;
    const unsigned short* units = text.wstr();
    if (text.length() == 1) return units[0];
    return 0x10000 + ((units[0] & 0x3FF) << 10 | (units[1] & 0x3FF));
}

bool FileWrapper::write(const String& text, bool appendLineEnd) {
    return checkError(toFile().write(text, appendLineEnd));
}

bool FileWrapper::seek(long long position, int whence) {
    return checkError(toFile().seek(position, whence));
}

long long FileWrapper::tell() {
    const long long position = toFile().tell();
    checkError(position < 0 ? ErrorCode::NotOpen : ErrorCode::Ok);
    return position;
}

bool FileWrapper::eof() {
    const bool isAtEnd = toFile().eof();
    checkError(isOpen() ? ErrorCode::Ok : ErrorCode::NotOpen);
    return isAtEnd;
}

bool FileWrapper::flush() { return checkError(toFile().flush()); }

long long FileWrapper::getSize() {
    long long byteCount = 0;
    return checkError(toFile().getSize(byteCount)) ? byteCount : -1;
}

bool FileWrapper::setSize(long long byteCount) { return checkError(toFile().setSize(byteCount)); }

bool FileWrapper::isOpen() const { return file_ && file_->isOpen(); }

String FileWrapper::getEncoding() const { return file_ ? file_->getEncoding() : encoding_; }

bool FileWrapper::setEncoding(const String& name) {
    if (!toFile().setEncoding(name)) return checkError(ErrorCode::BadArgumentList);
    encoding_ = file_->getEncoding();
    return checkError(ErrorCode::Ok);
}

int FileWrapper::getLF() const { return lineEnd_; }

bool FileWrapper::setLF(int lineEnd) {
    const bool isKnown = lineEnd >= static_cast<int>(CRLFEncoding::Default) &&
                         lineEnd <= static_cast<int>(CRLFEncoding::LF);
    if (!isKnown) return checkError(ErrorCode::BadArgumentList);
    toFile().setLF(static_cast<CRLFEncoding>(lineEnd));
    lineEnd_ = lineEnd;
    return checkError(ErrorCode::Ok);
}

// The file or folder.

bool FileWrapper::copy(const String& target) {
    FileSpec spec;
    if (!spec.setPath(target, false)) return checkError(ErrorCode::FileNotFound);
    if (spec.isFolder()) spec = FileSpec(spec, PathText::lastName(getPath()));
    return checkError(toFile().copyTo(spec));
}

bool FileWrapper::rename(const String& name) {
    return closeAround([&] { return renameTo(spec_, name); });
}

bool FileWrapper::remove() {
    if (file_) file_->close(); // Whether its last bytes can be written does not matter any more.
    return checkError(removeAt(spec_));
}

bool FileWrapper::makeDir() { return checkError(toFolder().create()); }

bool FileWrapper::execute() { return checkError(toFile().execute()); }

bool FileWrapper::createAlias(const String& target, bool isNative) {
    return closeAround([&] { return spec_.createAlias(target, isNative); });
}

bool FileWrapper::changePath(const String& uri) {
    return closeAround(
        [&] { return spec_.changePath(uri) ? ErrorCode::Ok : ErrorCode::FileNotFound; });
}

bool FileWrapper::getFiles(TSimpleArray<FileWrapper>& files, const String* mask) {
    if (!spec_.isFolder()) {
        error_ = notAFolder;
        error_.localize(nullptr);
        return false;
    }
    OwnedSpecs found;
    const FileFilter filter(mask ? *mask : String());
    if (toFolder().getFiles(found.specs, &filter) != ErrorCode::Ok) {
        error_ = cannotList;
        error_.localize(nullptr);
        return false;
    }
    appendWrappers(found.specs, files);
    return checkError(ErrorCode::Ok);
}

// The location.

const FileSpec& FileWrapper::getFileSpec() const { return spec_; }

String FileWrapper::getPath() const { return spec_.getPath(); }

String FileWrapper::getAbsoluteURI(bool useHome) const { return spec_.getAbsoluteURI(useHome); }

String FileWrapper::getRelativeURI() const { return spec_.getRelativeURI(); }

String FileWrapper::getResolvedPath() const { return spec_.getResolvedPath(); }

String FileWrapper::getDisplayName() const { return spec_.getDisplayName(); }

String FileWrapper::getType() const { return unpackedCode(spec_.getType()); }

String FileWrapper::getCreator() const { return unpackedCode(spec_.getCreator()); }

bool FileWrapper::getAttributes(int* attributes, int* settable) {
    return checkError(spec_.getAttributes(attributes, settable));
}

bool FileWrapper::setAttributes(int attributes) {
    return checkError(spec_.setAttributes(static_cast<short>(attributes)));
}

bool FileWrapper::encode(const String& text, String& result) {
    result = text;
    if (result.encodeURI(PathUri::keptUnits)) return true;
    result.erase();
    return false;
}

bool FileWrapper::decode(const String& text, String& result) {
    result = text;
    if (result.decodeURI()) return true;
    result.erase();
    return false;
}

} // namespace KrCore
