#pragma once

#include <cstdio>
#include <string>

namespace krhost {

/// Reads one line without its end (LF, or CR LF). False when nothing is left.
bool readLine(std::FILE* file, std::string& line);

/// Reads everything that is left.
std::string readAll(std::FILE* file);

} // namespace krhost
