#pragma once

#include "ScriptEngine.h"

#include <string>
#include <vector>

namespace krhost {

/// The command line of krhost.
struct Options {
    enum class Action { RunFile, RunCode, RunInput, ShowHelp, ShowVersion };

    Action action = Action::RunInput;
    std::string script; ///< The file's name, or the code of `-e`.
    std::vector<std::string> arguments;
    ScriptEngine::Settings settings;

    static const char* const usage;

    /// Reads the words behind the program's name. False, with `complaint` filled, when they are
    /// wrong.
    bool parse(const std::vector<std::string>& words, std::string& complaint);
};

} // namespace krhost
