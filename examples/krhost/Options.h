#pragma once

#include "ScriptEngine.h"

#include <string>
#include <vector>

namespace krhost {

/// The command line of krhost.
struct Options {
    enum class Action { RunFile, RunCode, RunInput, Describe, ShowHelp, ShowVersion };
    enum class Format { XML, TypeScript };

    Action action = Action::RunInput;
    Format format = Format::XML;
    std::string script; ///< The file's name, or the code of `-e`, or the class to describe.
    std::vector<std::string> arguments;
    ScriptEngine::Settings settings;

    static const char* const usage;

    /// Reads the words behind the program's name. False, with `complaint` filled, when they are
    /// wrong.
    bool parse(const std::vector<std::string>& words, std::string& complaint);

private:
    bool parseClass(const std::vector<std::string>& words, std::size_t next,
                    std::string& complaint);
};

} // namespace krhost
