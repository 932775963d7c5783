#pragma once

#include <krcore/text/String.h>

namespace KrCore {

/// A code that the host has given a meaning.
struct ErrorDefinition {
    String text;
    String className;
};

// The definitions of the host, by absolute code. Each function takes the lock of the table.

void setErrorDefinition(unsigned int code, const ErrorDefinition& definition);
void removeErrorDefinition(unsigned int code);
/// False, with `definition` left alone, when there is none.
bool findErrorDefinition(unsigned int code, ErrorDefinition& definition);
bool isDefinedErrorClass(const String& name);

void dropErrorDefinitions();

} // namespace KrCore
