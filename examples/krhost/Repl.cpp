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
        engine.run(line, "line " + std::to_string(number), ScriptEngine::Echo::Print);
    }
    std::fputc('\n', stdout);
}

} // namespace krhost
