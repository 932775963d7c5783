#include <krcore/files/Folder.h>

#include "files/EntryNames.h"
#include "files/FileSpecData.h"
#include "files/PathText.h"
#include "files/SystemText.h"

#include <krcore/files/FileFilter.h>
#include <krcore/foundation/ErrorCode.h>

#include <memory>

namespace KrCore {

namespace {

using Platform::FileFault;

FileFault createAt(const String& path, int length) {
    const String part = path.substr(0, length);
    return Platform::createFolder(unitsOf(part));
}

/// Makes a folder and, from the highest that is missing down, those around it.
FileFault createAll(const String& path) {
    const int rootLength = PathText::rootLength(path);
    int length = path.length();
    FileFault fault = createAt(path, length);
    while (fault == FileFault::NotFound) {
        const int separator = path.find('\\', length - 1, true);
        if (separator < rootLength) return fault;
        length = separator;
        fault = createAt(path, length);
    }
    if (fault == FileFault::Exists && length < path.length()) fault = FileFault::None;
    while (fault == FileFault::None && length < path.length()) {
        const int next = path.find('\\', length + 1);
        length = next < 0 ? path.length() : next;
        fault = createAt(path, length);
        // Somebody else may make the same folders.
        if (fault == FileFault::Exists && length < path.length()) fault = FileFault::None;
    }
    return fault;
}

/// Specs of the names that a folder gives. They belong to it until it hands them over.
class Collector final : public Platform::TextSink {
public:
    Collector(const FileSpec& folder, const FileFilter* filter)
        : folder_(folder), filter_(filter) {}
    ~Collector() {
        for (const FileSpec* file : files_)
            delete file;
    }
    Collector(const Collector&) = delete;
    Collector& operator=(const Collector&) = delete;

    void take(std::span<const unsigned short> units) override {
        const String name(units.data(), static_cast<int>(units.size()));
        if (filter_ && !filter_->matches(name)) return;
        auto file = std::make_unique<FileSpec>(folder_, name);
        files_.setIncrement(files_.length());
        files_.append(file.get());
        (void)file.release();
    }
    void handOver(TSimpleArray<FileSpec>& files) {
        files.append(files_);
        files_ = TSimpleArray<FileSpec>();
    }

private:
    const FileSpec& folder_;
    const FileFilter* const filter_;
    TSimpleArray<FileSpec> files_;
};

} // namespace

Folder::Folder(const FileSpec& spec) : spec_(spec) {}

int Folder::create() { return codeOf(createAll(PathText::folded(systemPathOf(spec_)))); }

int Folder::remove() {
    const int code = lookUpFolder(spec_);
    return code != ErrorCode::Ok ? code : removeAt(spec_);
}

int Folder::rename(const String& name) { return renameTo(spec_, name); }

int Folder::getFiles(TSimpleArray<FileSpec>& files, const FileFilter* filter) const {
    Collector collector(spec_, filter);
    const String path = systemPathOf(spec_);
    const int code = codeOf(Platform::listFolder(unitsOf(path), collector));
    if (code == ErrorCode::Ok) collector.handOver(files);
    return code;
}

} // namespace KrCore
