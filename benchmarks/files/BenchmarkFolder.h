#pragma once

#include <krcore/files/FileSpec.h>

#include <filesystem>
#include <string>

/// A folder in the temporary folder that goes with all that is in it when the program ends.
class BenchmarkFolder {
public:
    static const BenchmarkFolder& get();

    BenchmarkFolder(const BenchmarkFolder&) = delete;
    BenchmarkFolder& operator=(const BenchmarkFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    /// A file with these bytes; made when there is none yet.
    std::filesystem::path file(const std::string& name, const std::string& bytes) const;

private:
    BenchmarkFolder();
    ~BenchmarkFolder();

    std::filesystem::path path_;
};

/// The library's name for a file.
KrCore::FileSpec specOf(const std::filesystem::path& path);
