#pragma once

namespace KrCore {

class String;

/// A code page that has names.
struct CodePageEntry {
    int page;
    int mapping;
    const char* aliases; ///< separated by ","
};

/// The first entry for a page, or null.
const CodePageEntry* findCodePage(int page);

/// The first entry with a normalised name among its aliases, or null.
const CodePageEntry* findCodePage(const String& name);

} // namespace KrCore
