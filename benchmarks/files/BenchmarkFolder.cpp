#include "BenchmarkFolder.h"

#include <krcore/text/StringConversions.h>

#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

const BenchmarkFolder& BenchmarkFolder::get() {
    static const BenchmarkFolder folder;
    return folder;
}

BenchmarkFolder::BenchmarkFolder() {
    // Folders that are there already are those of other programs.
    for (int number = 1; path_.empty(); ++number) {
        const fs::path candidate =
            fs::temp_directory_path() / ("krcore_files_benchmark" + std::to_string(number));
        if (fs::create_directory(candidate)) path_ = candidate;
    }
}

BenchmarkFolder::~BenchmarkFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path BenchmarkFolder::file(const std::string& name, const std::string& bytes) const {
    const fs::path path = path_ / name;
    if (!fs::exists(path)) std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

KrCore::FileSpec specOf(const fs::path& path) {
    return KrCore::FileSpec(KrCore::fromUtf16(path.u16string()), true);
}
