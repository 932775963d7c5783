#include "files/FileSpecData.h"

#include "files/FolderState.h"
#include "files/PathText.h"
#include "files/PathUri.h"
#include "files/SystemText.h"

#include <krcore/files/FileAttribute.h>
#include <krcore/foundation/ErrorCode.h>

#include <utility>

namespace KrCore {

namespace {

bool readFacts(const FileSpec& spec, Platform::FileFacts& facts) {
    const String path = systemPathOf(spec);
    return Platform::readFileFacts(unitsOf(path), facts) == Platform::FileFault::None;
}

/// A URI leaves the suffix of a shortcut out. Where there is no such file it is put back.
String withShortcut(const String& path) {
    const String absolute = PathText::resolved(path, currentFolder());
    Platform::FileFacts facts;
    if (Platform::readFileFacts(unitsOf(absolute), facts) != Platform::FileFault::NotFound)
        return path;
    for (const char* suffix : {PathText::shortcutSuffix, ".lnk"}) {
        const String shortcut = absolute + suffix;
        if (Platform::readFileFacts(unitsOf(shortcut), facts) == Platform::FileFault::None)
            return path + suffix;
    }
    return path;
}

bool containsZero(const String& path) { return path.find(static_cast<unsigned short>(0)) >= 0; }

} // namespace

void FileSpecData::assign(FileSpec& spec, const String& path) {
    FileSpecData& data = spec.data();
    data.path = path;
    data.state = 0;
}

String systemPathOf(const FileSpec& spec) {
    const String& path = spec.getPath();
    if (path.isEmpty()) return path;
    if (!PathText::isAbsolute(path)) return PathText::resolved(path, currentFolder());
    String folded = PathText::folded(path);
    const bool lacksDrive = Platform::rootsAreDrives && PathText::rootNameOf(folded) == "\\";
    return lacksDrive ? PathText::rootNameOf(currentFolder()) + folded : folded;
}

int lookUp(const FileSpec& spec) {
    const String path = systemPathOf(spec);
    Platform::FileFacts facts;
    return codeOf(Platform::readFileFacts(unitsOf(path), facts));
}

int lookUpFolder(const FileSpec& spec) {
    const int code = lookUp(spec);
    if (code != ErrorCode::Ok) return code;
    return spec.isFolder() ? ErrorCode::Ok : ErrorCode::FileNotFound;
}

FileSpec::FileSpec() : data_(nullptr) {}

FileSpec::FileSpec(const String& path, bool isNative) : FileSpec() { setPath(path, isNative); }

FileSpec::FileSpec(const FileSpec& folder, const String& name) : FileSpec() {
    setPath(PathText::join(folder.getPath(), name), true);
}

FileSpec::FileSpec(const FileSpec& other)
    : Heap(), data_(other.data_ ? new FileSpecData(*other.data_) : nullptr) {}

FileSpec::~FileSpec() { delete data_; }

FileSpec& FileSpec::operator=(const FileSpec& other) {
    if (this == &other) return *this;
    FileSpec copy(other);
    std::swap(data_, copy.data_);
    return *this;
}

FileSpec& FileSpec::operator=(FileSpec&& other) noexcept {
    std::swap(data_, other.data_);
    return *this;
}

bool FileSpec::operator==(const FileSpec& other) const { return getPath() == other.getPath(); }

std::strong_ordering FileSpec::operator<=>(const FileSpec& other) const {
    return getPath() <=> other.getPath();
}

FileSpecData& FileSpec::data() {
    if (!data_) data_ = new FileSpecData;
    return *data_;
}

// The path.

bool FileSpec::setPath(const String& path, bool isNative) {
    if (isNative) {
        if (containsZero(path)) return false;
        FileSpecData::assign(*this, PathText::withBackslashes(path));
        return true;
    }
    String converted;
    if (!PathUri::toPath(path, currentFolder(), homeFolder(), converted)) return false;
    FileSpecData::assign(*this, withShortcut(converted));
    return true;
}

bool FileSpec::changePath(const String& uri) {
    if (uri.isEmpty()) return true;
    String converted;
    if (!PathUri::toPath(uri, systemPathOf(*this), homeFolder(), converted)) return false;
    FileSpecData::assign(*this, withShortcut(converted));
    return true;
}

const String& FileSpec::getPath() const { return data_ ? data_->path : String::emptyString(); }

String FileSpec::getResolvedPath() const {
    FileSpec target;
    return resolve(target) == ErrorCode::Ok ? target.getPath() : getPath();
}

String FileSpec::getAbsoluteURI(bool useHome) const {
    if (!useHome) return PathUri::fromPath(getPath(), nullptr);
    const String home = homeFolder();
    return PathUri::fromPath(getPath(), &home);
}

String FileSpec::getRelativeURI() const {
    return PathUri::relative(systemPathOf(*this), currentFolder());
}

String FileSpec::getRelativeURI(const FileSpec& base) const {
    return PathUri::relative(systemPathOf(*this), systemPathOf(base));
}

// Its parts.

String FileSpec::getName() const { return PathText::nameOf(getPath()); }

String FileSpec::getDisplayName() const {
    const String name = getName();
    return name.isEmpty() ? getPath() : name;
}

String FileSpec::getExtension() const { return PathText::extensionOf(getPath()); }

String FileSpec::getParent() const { return PathText::parentOf(getPath()); }

bool FileSpec::getParentSpec(FileSpec& parent) const {
    const String path = getParent();
    if (path.isEmpty() || path == getPath()) return false;
    FileSpecData::assign(parent, path);
    return true;
}

String FileSpec::getRootName() const { return PathText::rootNameOf(getPath()); }

// What is there.

bool FileSpec::exists() const {
    Platform::FileFacts facts;
    return readFacts(*this, facts);
}

bool FileSpec::isFile() const {
    Platform::FileFacts facts;
    return readFacts(*this, facts) && facts.isFile;
}

bool FileSpec::isFolder() const {
    Platform::FileFacts facts;
    return readFacts(*this, facts) && facts.isFolder;
}

bool FileSpec::isAlias() const {
    const String path = systemPathOf(*this);
    return Platform::isShortcut(unitsOf(path));
}

bool FileSpec::isPackage() const { return false; }

bool FileSpec::isProtected() const {
    Platform::FileFacts facts;
    return readFacts(*this, facts) && (facts.attributes & FileAttribute::ReadOnly) != 0;
}

bool FileSpec::isVisible() const {
    Platform::FileFacts facts;
    return readFacts(*this, facts) && (facts.attributes & FileAttribute::Hidden) == 0;
}

int FileSpec::getAttributes(int* attributes, int* settable) const {
    const String path = systemPathOf(*this);
    Platform::FileFacts facts;
    const int code = codeOf(Platform::readFileFacts(unitsOf(path), facts));
    if (attributes) *attributes = facts.attributes;
    if (settable) *settable = Platform::settableAttributes;
    return code;
}

int FileSpec::setAttributes(short attributes) {
    const String path = systemPathOf(*this);
    return codeOf(Platform::setFileAttributes(unitsOf(path), attributes));
}

unsigned int FileSpec::getType() const { return 0; }

unsigned int FileSpec::getCreator() const { return 0; }

} // namespace KrCore
