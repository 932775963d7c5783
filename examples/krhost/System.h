#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace krhost {

/// What krhost asks the operating system for. `SystemPosix.cpp` and `SystemWindows.cpp` answer;
/// CMake picks one.
namespace System {

/// Makes the standard streams carry bytes as they are, so that lines end the same way everywhere.
void prepareStreams();

/// Whether a person types the standard input.
bool isInteractive();

/// The command line as UTF-8, without the program's name.
std::vector<std::string> arguments(int count, char** words);

/// Opens a file for reading; the name is UTF-8. Null when that fails.
std::FILE* openForReading(const std::string& name);

} // namespace System

} // namespace krhost
