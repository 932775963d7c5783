#pragma once

#include <krcore/files/FileUtils.h>
#include <krcore/files/Folder.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/text/StringConversions.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace KrCore::Testing {

/// How the system's own calls name the file.
inline std::filesystem::path systemPath(const FileSpec& spec) {
    std::u16string path = toUtf16(spec.getPath());
    std::replace(path.begin(), path.end(), u'\\',
                 static_cast<char16_t>(std::filesystem::path::preferred_separator));
    return path;
}

inline bool isWindows() { return FileUtils::getFileSystem() == "Windows"; }

/// A folder of its own for one test; goes with all that is in it.
class TempFolder {
public:
    TempFolder() {
        EXPECT_EQ(FileUtils::getTempDir(spec_), 0);
        // Another test may be faster with the same name.
        int code = ErrorCode::FileExists;
        for (int attempt = 0; attempt < 100 && code == ErrorCode::FileExists; ++attempt) {
            FileSpec candidate(spec_);
            EXPECT_TRUE(candidate.tempName());
            code = Folder(candidate).create();
            if (code == ErrorCode::Ok) spec_ = candidate;
        }
        EXPECT_EQ(code, ErrorCode::Ok);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(systemPath(spec_), ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const FileSpec& spec() const { return spec_; }
    FileSpec operator/(const String& name) const { return {spec_, name}; }
    /// A file with these bytes.
    FileSpec write(const String& name, const std::string& bytes) const {
        const FileSpec file(spec_, name);
        std::ofstream stream(systemPath(file), std::ios::binary);
        stream << bytes;
        EXPECT_TRUE(stream.good());
        return file;
    }

private:
    FileSpec spec_;
};

inline std::string bytesOf(const FileSpec& file) {
    std::ifstream stream(systemPath(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace KrCore::Testing
