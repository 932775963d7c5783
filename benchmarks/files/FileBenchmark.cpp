// Text files of 10 MB, read and written. The peer is what a program without the library does: the
// standard library's streams, and ICU for the conversion. Every case opens and closes its file.

#include "BenchmarkFolder.h"
#include "Texts.h"

#include <krcore/files/File.h>
#include <krcore/text/StringConversions.h>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#ifdef KR_BENCHMARK_ICU
#include <unicode/unistr.h>
#endif

using KrCore::File;
using KrCore::FileSpec;
using KrCore::String;

namespace fs = std::filesystem;

namespace {

using MakeText = const Text& (*)();

fs::path fileOf(const Text& text) {
    const char* const name = &text == &europeanText() ? "european.txt" : "cjk.txt";
    return BenchmarkFolder::get().file(name, text.utf8);
}

/// Where the writing cases put their file; never one that is there already.
fs::path emptyPlace() {
    const fs::path path = BenchmarkFolder::get() / "written.txt";
    fs::remove(path);
    return path;
}

std::string bytesWritten() {
    std::ifstream stream(BenchmarkFolder::get() / "written.txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What the writing cases have to make of the text.
std::string withCarriageReturns(const std::string& text) {
    std::string result;
    for (const char byte : text) {
        if (byte == '\n') result += '\r';
        result += byte;
    }
    return result;
}

void fail(benchmark::State& state) { state.SkipWithError("wrong result"); }

void finishWriting(benchmark::State& state, const Text& text) {
    if (bytesWritten() != withCarriageReturns(text.utf8)) fail(state);
}

bool readWhole(const FileSpec& spec, String& content) {
    File file(spec);
    long long size = 0;
    return file.open("r", 0, 0) == 0 && file.getSize(size) == 0 && file.read(size, content) == 0 &&
           file.close() == 0;
}

void readKrCore(benchmark::State& state, MakeText makeText) {
    const Text& text = makeText();
    const FileSpec spec = specOf(fileOf(text));
    for (auto _ : state) {
        String content;
        const bool isRead = readWhole(spec, content);
        if (!isRead || std::size_t(content.length()) != text.whole.size()) return fail(state);
    }
}

void readContentKrCore(benchmark::State& state, MakeText makeText) {
    const Text& text = makeText();
    const FileSpec spec = specOf(fileOf(text));
    for (auto _ : state) {
        String content;
        const int code = File(spec).getContent(content, -1);
        if (code != 0 || std::size_t(content.length()) != text.whole.size()) return fail(state);
    }
}

void readLinesKrCore(benchmark::State& state) {
    const Text& text = europeanText();
    const FileSpec spec = specOf(fileOf(text));
    for (auto _ : state) {
        File file(spec);
        file.open("r", 0, 0);
        String line;
        std::size_t units = 0;
        while (file.readln(line) == 0)
            units += std::size_t(line.length()) + 1;
        if (file.close() != 0 || units != text.whole.size()) return fail(state);
    }
}

bool openToWrite(File& file) {
    file.setLF(KrCore::CRLFEncoding::CRLF);
    return file.setEncoding("UTF-8") && file.open("w", 0, 0) == 0;
}

void writeLinesKrCore(benchmark::State& state) {
    const Text& text = europeanText();
    std::vector<String> lines;
    for (const std::u16string& line : text.lines)
        lines.push_back(KrCore::fromUtf16(line));
    for (auto _ : state) {
        state.PauseTiming();
        File file(specOf(emptyPlace()));
        state.ResumeTiming();
        if (!openToWrite(file)) return fail(state);
        for (const String& line : lines)
            file.write(line, true);
        if (file.close() != 0) return fail(state);
    }
    finishWriting(state, text);
}

void writeWholeKrCore(benchmark::State& state) {
    const Text& text = europeanText();
    const String whole = KrCore::fromUtf16(text.whole);
    for (auto _ : state) {
        state.PauseTiming();
        File file(specOf(emptyPlace()));
        state.ResumeTiming();
        if (!openToWrite(file) || file.write(whole, false) != 0 || file.close() != 0)
            return fail(state);
    }
    finishWriting(state, text);
}

#ifdef KR_BENCHMARK_ICU
void readIcu(benchmark::State& state, MakeText makeText) {
    const Text& text = makeText();
    const fs::path path = fileOf(text);
    for (auto _ : state) {
        std::ifstream stream(path, std::ios::binary);
        std::string bytes(fs::file_size(path), '\0');
        stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        const icu::UnicodeString content = icu::UnicodeString::fromUTF8(bytes);
        if (std::size_t(content.length()) != text.whole.size()) return fail(state);
    }
}

void readLinesIcu(benchmark::State& state) {
    const Text& text = europeanText();
    const fs::path path = fileOf(text);
    for (auto _ : state) {
        std::ifstream stream(path, std::ios::binary);
        std::string bytes;
        std::size_t units = 0;
        while (std::getline(stream, bytes)) {
            const icu::UnicodeString line = icu::UnicodeString::fromUTF8(bytes);
            units += std::size_t(line.length()) + 1;
        }
        if (units != text.whole.size()) return fail(state);
    }
}

icu::UnicodeString icuText(const std::u16string& text) {
    return {text.data(), static_cast<int32_t>(text.size())};
}

void writeLinesIcu(benchmark::State& state) {
    const Text& text = europeanText();
    std::vector<icu::UnicodeString> lines;
    for (const std::u16string& line : text.lines)
        lines.push_back(icuText(line));
    for (auto _ : state) {
        state.PauseTiming();
        const fs::path path = emptyPlace();
        state.ResumeTiming();
        std::ofstream stream(path, std::ios::binary);
        std::string bytes;
        for (const icu::UnicodeString& line : lines) {
            bytes.clear();
            stream << line.toUTF8String(bytes) << "\r\n";
        }
    }
    finishWriting(state, text);
}

void writeWithCarriageReturns(const std::string& bytes, std::ostream& stream) {
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = bytes.find('\n', start);
        stream.write(bytes.data() + start, static_cast<std::streamsize>(end - start));
        stream << "\r\n";
        start = end + 1;
    }
}

void writeWholeIcu(benchmark::State& state) {
    const Text& text = europeanText();
    const icu::UnicodeString whole = icuText(text.whole);
    for (auto _ : state) {
        state.PauseTiming();
        const fs::path path = emptyPlace();
        state.ResumeTiming();
        std::ofstream stream(path, std::ios::binary);
        std::string bytes;
        writeWithCarriageReturns(whole.toUTF8String(bytes), stream);
    }
    finishWriting(state, text);
}
#endif

constexpr auto ms = benchmark::kMillisecond;

BENCHMARK_CAPTURE(readKrCore, european, europeanText)->Name("files/read european/krcore")->Unit(ms);
BENCHMARK_CAPTURE(readKrCore, cjk, cjkText)->Name("files/read cjk/krcore")->Unit(ms);
BENCHMARK_CAPTURE(readContentKrCore, european, europeanText)
    ->Name("files/content european/krcore")
    ->Unit(ms);
BENCHMARK(readLinesKrCore)->Name("files/read lines/krcore")->Unit(ms);
BENCHMARK(writeLinesKrCore)->Name("files/write/krcore")->Unit(ms);
BENCHMARK(writeWholeKrCore)->Name("files/write whole/krcore")->Unit(ms);

#ifdef KR_BENCHMARK_ICU
BENCHMARK_CAPTURE(readIcu, european, europeanText)->Name("files/read european/ICU")->Unit(ms);
BENCHMARK_CAPTURE(readIcu, cjk, cjkText)->Name("files/read cjk/ICU")->Unit(ms);
BENCHMARK_CAPTURE(readIcu, european, europeanText)->Name("files/content european/ICU")->Unit(ms);
BENCHMARK(readLinesIcu)->Name("files/read lines/ICU")->Unit(ms);
BENCHMARK(writeLinesIcu)->Name("files/write/ICU")->Unit(ms);
BENCHMARK(writeWholeIcu)->Name("files/write whole/ICU")->Unit(ms);
#endif

} // namespace
