// A folder of 10,000 files, listed with a mask that half of them fit.

#include "BenchmarkFolder.h"

#include <krcore/files/FileFilter.h>
#include <krcore/files/Folder.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int fileCount = 10000;

fs::path makeFiles(const fs::path& folder) {
    fs::create_directory(folder);
    constexpr const char* extensions[] = {".txt", ".json", ".TXT", ".md"};
    for (int number = 0; number < fileCount; ++number)
        std::ofstream(folder / ("entry" + std::to_string(number) + extensions[number % 4]));
    return folder;
}

const fs::path& fullFolder() {
    static const fs::path folder = makeFiles(BenchmarkFolder::get() / "many");
    return folder;
}

void fail(benchmark::State& state) { state.SkipWithError("wrong result"); }

void listKrCore(benchmark::State& state) {
    const KrCore::Folder folder(specOf(fullFolder()));
    const KrCore::FileFilter filter("*.txt");
    for (auto _ : state) {
        KrCore::TSimpleArray<KrCore::FileSpec> files;
        if (folder.getFiles(files, &filter) != 0 || files.length() != fileCount / 2)
            return fail(state);
        for (const KrCore::FileSpec* file : files)
            delete file;
    }
}

/// What the mask asks for, as a program without one would say it.
bool isText(const fs::path& path) {
    constexpr std::string_view wanted = ".txt";
    const std::string extension = path.extension().string();
    return std::equal(extension.begin(), extension.end(), wanted.begin(), wanted.end(),
                      [](unsigned char left, char right) { return std::tolower(left) == right; });
}

void listStd(benchmark::State& state) {
    const fs::path& folder = fullFolder();
    for (auto _ : state) {
        std::vector<fs::path> files;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            if (isText(entry.path())) files.push_back(entry.path());
        }
        if (files.size() != std::size_t{fileCount / 2}) return fail(state);
    }
}

BENCHMARK(listKrCore)->Name("files/list/krcore")->Unit(benchmark::kMillisecond);
BENCHMARK(listStd)->Name("files/list/std")->Unit(benchmark::kMillisecond);

} // namespace
