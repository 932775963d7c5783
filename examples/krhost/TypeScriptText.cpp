#include "TypeScriptText.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace krhost::TypeScriptText {

namespace {

constexpr std::array reservedWords = std::to_array<std::string_view>(
    {"await",    "break",   "case",       "catch",     "class",    "const",  "continue",
     "debugger", "default", "delete",     "do",        "else",     "enum",   "export",
     "extends",  "false",   "finally",    "for",       "function", "if",     "implements",
     "import",   "in",      "instanceof", "interface", "let",      "new",    "null",
     "package",  "private", "protected",  "public",    "return",   "static", "super",
     "switch",   "this",    "throw",      "true",      "try",      "typeof", "var",
     "void",     "while",   "with",       "yield"});

/// Names that parameters cannot have besides.
constexpr std::array specialNames = std::to_array<std::string_view>({"arguments", "eval"});

/// Names that types of the language have.
constexpr std::array typeNames =
    std::to_array<std::string_view>({"any", "bigint", "boolean", "never", "number", "object",
                                     "string", "symbol", "undefined", "unknown"});

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$';
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Letters beyond ASCII are possible, but a name in quotes is always right.
bool isIdentifier(std::string_view name) {
    return !name.empty() && isLetter(name[0]) &&
           std::all_of(name.begin(), name.end(), [](char c) { return isLetter(c) || isDigit(c); });
}

template <class List>
bool contains(const List& list, std::string_view name) {
    return std::find(list.begin(), list.end(), name) != list.end();
}

std::string escaped(unsigned unit) {
    char text[8];
    std::snprintf(text, sizeof text, "\\u%04x", unit);
    return text;
}

/// U+2028 and U+2029 end a line as well.
bool isLineSeparator(std::string_view bytes) {
    return bytes.starts_with("\xE2\x80\xA8") || bytes.starts_with("\xE2\x80\xA9");
}

} // namespace

bool isDeclarable(std::string_view name) {
    return isIdentifier(name) && !contains(reservedWords, name) && !contains(typeNames, name);
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (; !text.empty(); text.remove_prefix(1)) {
        const auto byte = static_cast<unsigned char>(text[0]);
        if (byte < ' ') {
            result += escaped(byte);
        } else if (isLineSeparator(text)) {
            result += escaped(0x2000U + (static_cast<unsigned char>(text[2]) & 0x3FU));
            text.remove_prefix(2);
        } else {
            if (byte == '"' || byte == '\\') result += '\\';
            result += text[0];
        }
    }
    return result + "\"";
}

std::string memberName(std::string_view name) {
    return isIdentifier(name) ? std::string(name) : quoted(name);
}

std::string parameterName(std::string_view name, const std::vector<std::string>& others) {
    std::string result;
    for (const char c : name)
        result += isLetter(c) || isDigit(c) ? c : '_';
    if (result.empty() || isDigit(result[0])) result.insert(0, "_");
    while (contains(reservedWords, result) || contains(specialNames, result) ||
           contains(others, result))
        result += '_';
    return result;
}

std::string comment(std::string_view text, std::string_view indent) {
    if (text.empty()) return {};
    std::string body(text);
    body.erase(std::remove(body.begin(), body.end(), '\r'), body.end());
    for (std::size_t at = 0; (at = body.find("*/", at)) != std::string::npos;)
        body.replace(at, 2, "*\\/");
    const std::string start = std::string(indent) + "/**";
    if (body.find('\n') == std::string::npos) return start + " " + body + " */\n";

    std::string result = start + "\n";
    for (std::size_t begin = 0; begin <= body.size();) {
        const std::size_t end = std::min(body.find('\n', begin), body.size());
        result.append(indent).append(end > begin ? " * " : " *");
        result.append(body, begin, end - begin).append("\n");
        begin = end + 1;
    }
    return result.append(indent).append(" */\n");
}

} // namespace krhost::TypeScriptText
