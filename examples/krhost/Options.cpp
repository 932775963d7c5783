#include "Options.h"

namespace krhost {

const char* const Options::usage =
    "usage: krhost [options] script.js [arguments]\n"
    "       krhost [options] -e code [arguments]\n"
    "       krhost [options]              reads the script from the standard input,\n"
    "                                     line by line when that is a terminal\n"
    "       krhost --describe[=ts] [class]\n"
    "\n"
    "  -e, --eval code   run this code\n"
    "  -t, --trace       print each call on a live object to the standard error\n"
    "  -s, --strict      reading a name that a live object does not know is an error\n"
    "  --describe        print the XML description of the host class, or of all\n"
    "  --describe=ts     print TypeScript declarations of it, or of all and the globals\n"
    "  -h, --help        print this text\n"
    "  -v, --version     print the version of the library\n"
    "\n"
    "Exit status: 0, or 1 after an error nobody caught, or 2 when krhost was called wrongly.\n";

bool Options::parse(const std::vector<std::string>& words, std::string& complaint) {
    std::size_t next = 0;
    while (next < words.size() && words[next].size() > 1 && words[next][0] == '-') {
        const std::string& word = words[next++];
        if (word == "-h" || word == "--help") {
            action = Action::ShowHelp;
            return true;
        }
        if (word == "-v" || word == "--version") {
            action = Action::ShowVersion;
            return true;
        }
        if (word == "--describe" || word == "--describe=ts") {
            format = word == "--describe" ? Format::XML : Format::TypeScript;
            return parseClass(words, next, complaint);
        }
        if (word == "--") break;
        if (word == "-t" || word == "--trace") {
            settings.trace = true;
        } else if (word == "-s" || word == "--strict") {
            settings.strict = true;
        } else if (word == "-e" || word == "--eval") {
            if (next == words.size()) {
                complaint = "option " + word + " needs the code to run";
                return false;
            }
            action = Action::RunCode;
            script = words[next++];
            break;
        } else {
            complaint = "unknown option " + word;
            return false;
        }
    }
    if (action == Action::RunInput && next < words.size()) {
        script = words[next++];
        if (script != "-") action = Action::RunFile;
    }
    arguments.assign(words.begin() + static_cast<std::ptrdiff_t>(next), words.end());
    return true;
}

bool Options::parseClass(const std::vector<std::string>& words, std::size_t next,
                         std::string& complaint) {
    action = Action::Describe;
    if (next < words.size()) script = words[next++];
    if (next == words.size()) return true;
    complaint = "only one class can be described";
    return false;
}

} // namespace krhost
