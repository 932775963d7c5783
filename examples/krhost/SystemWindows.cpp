#include "System.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace krhost::System {

namespace {

std::string toUtf8(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1) return {};
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
    result.pop_back(); // the terminator was counted
    return result;
}

std::wstring fromUtf8(const std::string& text) {
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, nullptr, 0);
    if (size <= 1) return {};
    std::wstring result(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, result.data(), size);
    result.pop_back();
    return result;
}

} // namespace

void prepareStreams() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

bool isInteractive() { return _isatty(_fileno(stdin)) != 0; }

std::vector<std::string> arguments(int, char**) {
    // The words that `main` gets have lost what the ANSI code page cannot write.
    std::vector<std::string> result;
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    if (!words) return result;
    for (int i = 1; i < count; ++i)
        result.push_back(toUtf8(words[i]));
    LocalFree(words);
    return result;
}

std::FILE* openForReading(const std::string& name) {
    return _wfopen(fromUtf8(name).c_str(), L"rb");
}

} // namespace krhost::System
