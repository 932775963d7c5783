#include "values/ErrorDefinitions.h"
#include "values/ErrorTable.h"

#include <krcore/text/Localizer.h>
#include <krcore/values/Error.h>

namespace KrCore {

namespace {

constexpr const char* unknownMessage = "Error #%1";
constexpr const char* unknownKey = "$$$/CT/Marlscript/Errors/General=";
constexpr const char* keyFormat = "$$$/CT/Marlscript/Errors/Err%ld=";
constexpr const char* baseClass = "Error";

constexpr const char* builtInClasses[] = {
    baseClass,    "TypeError",  "SyntaxError", "ReferenceError", "InternalError",
    "FatalError", "RangeError", "EvalError",   "URIError",       "IOError",
};

String keyOf(unsigned int code) {
    String key;
    key.print(keyFormat, static_cast<int>(code));
    return key;
}

/// Puts the library's message in the place of what the caller brought, with the key in front under
/// which it is translated. What the caller says of a code that nobody knows has no key, and a
/// definition that takes the place of the caller's text has none either.
void chooseMessage(unsigned int code, String& text) {
    const bool isFree = text.isEmpty();
    ErrorDefinition definition;
    if (findErrorDefinition(code, definition)) {
        text = isFree ? keyOf(code) + definition.text : definition.text;
    } else if (const ErrorEntry* entry = findErrorEntry(code)) {
        text = keyOf(code) + entry->message;
    } else if (isFree) {
        text = String(unknownKey) + unknownMessage;
    }
}

} // namespace

void Error::defineError(int code, const String& text, const char* className) {
    setErrorDefinition(absoluteCode(code), {text, className ? className : baseClass});
}

void Error::undefineError(int code) { removeErrorDefinition(absoluteCode(code)); }

bool Error::getErrorDefinition(int code, String& text, String& className) {
    const unsigned int absolute = absoluteCode(code);
    ErrorDefinition definition;
    if (findErrorDefinition(absolute, definition)) {
        text = definition.text;
        className = definition.className;
        return true;
    }
    const ErrorEntry* entry = findErrorEntry(absolute);
    text = entry ? entry->message : unknownMessage;
    className = entry ? entry->className : baseClass;
    return entry && absolute != 0;
}

bool Error::isErrorClass(const String& name) {
    for (const char* className : builtInClasses) {
        if (name == className) return true;
    }
    return isDefinedErrorClass(name);
}

} // namespace KrCore

void KrGetErrorMsg(int code, KrCore::String& text) {
    using namespace KrCore;
    const unsigned int absolute = absoluteCode(code);
    chooseMessage(absolute, text);
    Localizer::getErrorMessage(static_cast<int>(absolute), text);
}
