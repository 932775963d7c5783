#include "LineReader.h"

namespace krhost {

bool readLine(std::FILE* file, std::string& line) {
    line.clear();
    int ch = std::fgetc(file);
    if (ch == EOF) return false;
    for (; ch != EOF && ch != '\n'; ch = std::fgetc(file))
        line.push_back(static_cast<char>(ch));
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return true;
}

std::string readAll(std::FILE* file) {
    std::string text;
    char block[4096];
    for (std::size_t count; (count = std::fread(block, 1, sizeof block, file)) > 0;) {
        text.append(block, count);
    }
    return text;
}

} // namespace krhost
