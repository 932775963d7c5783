#pragma once

#include "xml/XMLTree.h"

#include <krcore/containers/THashTable.h>

namespace KrCore {

/// Prefixes for namespaces whose prefix is left open ("*"), invented while a tree is printed.
class PrefixTable {
public:
    /// Prefixes of `declarations` are taken, and serve their URIs.
    void reserve(const TISimpleArray<XML>& declarations);
    /// The namespace node with the prefix for this URI, borrowed: the one that has been chosen
    /// before, otherwise a new one.
    const XML& choose(const String& uri);
    /// A new prefix, which serves this URI from now on.
    const XML& invent(const String& uri);

private:
    void record(XML* ns);
    String numbered(const String& candidate);

    THashTable<XML> byPrefix_;
    THashTable<XML> byUri_;
    /// The number that was tried last behind a candidate; all below it are taken.
    HashTable numbers_;
    TISimpleArray<XML> invented_;
};

} // namespace KrCore
