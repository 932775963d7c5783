#include "System.h"

#include <unistd.h>

namespace krhost::System {

void prepareStreams() {}

bool isInteractive() { return isatty(STDIN_FILENO) != 0; }

std::vector<std::string> arguments(int count, char** words) {
    return count > 1 ? std::vector<std::string>(words + 1, words + count)
                     : std::vector<std::string>();
}

std::FILE* openForReading(const std::string& name) { return std::fopen(name.c_str(), "rb"); }

} // namespace krhost::System
