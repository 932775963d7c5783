// krhost: runs JavaScript with live objects of the library in it. Made to be copied from; README.md
// beside this file says where to look for what.

#include "Descriptions.h"
#include "LineReader.h"
#include "Options.h"
#include "Repl.h"
#include "ScriptEngine.h"
#include "System.h"
#include "hosts/Hosts.h"

#include <krcore/foundation/InitTerm.h>
#include <krcore/foundation/Version.h>

#include <cstdio>
#include <new>

using namespace krhost;

namespace {

enum ExitStatus { Success = 0, ScriptFailed = 1, WrongUsage = 2 };

/// The library's life. Everything that uses it lives within.
struct Library {
    Library() { KrCore::InitTerm::init(); }
    ~Library() { KrCore::InitTerm::exit(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
};

bool readFile(const std::string& name, std::string& text) {
    std::FILE* file = System::openForReading(name);
    if (!file) return false;
    text = readAll(file);
    const bool complete = std::ferror(file) == 0;
    std::fclose(file);
    return complete;
}

int runScript(ScriptEngine& engine, const Options& options) {
    switch (options.action) {
    case Options::Action::RunFile: {
        std::string source;
        if (!readFile(options.script, source)) {
            std::fprintf(stderr, "krhost: cannot read %s\n", options.script.c_str());
            return WrongUsage;
        }
        return engine.run(source, options.script) ? Success : ScriptFailed;
    }
    case Options::Action::RunCode:
        return engine.run(options.script, "-e") ? Success : ScriptFailed;
    case Options::Action::RunInput:
        if (System::isInteractive()) {
            runPrompt(engine);
            return Success;
        }
        return engine.run(readAll(stdin), "stdin") ? Success : ScriptFailed;
    case Options::Action::Describe:
    case Options::Action::ShowHelp:
    case Options::Action::ShowVersion:
        break;
    }
    return Success;
}

int printDescription(const Options& options) {
    std::string text;
    if (!Descriptions::make(options.format, options.script, text)) {
        std::fprintf(stderr, "krhost: %s\n", text.c_str());
        return ScriptFailed;
    }
    std::fwrite(text.data(), 1, text.size(), stdout);
    return Success;
}

int start(const Options& options) {
    switch (options.action) {
    case Options::Action::ShowHelp:
        std::fputs(Options::usage, stdout);
        return Success;
    case Options::Action::ShowVersion:
        std::printf("%d\n", getVersion());
        return Success;
    case Options::Action::RunFile:
    case Options::Action::RunCode:
    case Options::Action::RunInput:
    case Options::Action::Describe:
        break;
    }
    const Library library;
    Hosts::registerFactories();
    if (options.action == Options::Action::Describe) return printDescription(options);
    ScriptEngine engine(options.settings);
    engine.setArguments(options.arguments);
    return runScript(engine, options);
}

} // namespace

int main(int count, char** words) {
    System::prepareStreams();
    try {
        Options options;
        std::string complaint;
        if (!options.parse(System::arguments(count, words), complaint)) {
            std::fprintf(stderr, "krhost: %s\n%s", complaint.c_str(), Options::usage);
            return WrongUsage;
        }
        return start(options);
    } catch (const std::bad_alloc&) {
        std::fputs("krhost: out of memory\n", stderr);
        return ScriptFailed;
    }
}
