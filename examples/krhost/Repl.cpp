#include "Repl.h"

#include "LineReader.h"

#include <cstdio>

namespace krhost {

void runPrompt(ScriptEngine& engine) {
    std::string line;
    for (int number = 1;; ++number) {
        std::fputs("> ", stdout);
        std::fflush(stdout);
        if (!readLine(stdin, line)) break;
        // The empty lines in front make errors tell the number of the line.
        const std::string source = std::string(static_cast<std::size_t>(number - 1), '\n') + line;
        engine.run(source, "stdin", ScriptEngine::Echo::Print);
    }
    std::fputc('\n', stdout);
}

} // namespace krhost
