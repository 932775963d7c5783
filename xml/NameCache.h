#pragma once

#include "xml/BlankUnits.h"
#include "xml/NamespaceStack.h"

#include <cstdint>

namespace KrCore {

/// The names of elements, or of attributes, that a text repeats, taken apart once, with their local
/// names as shared strings. Holds the last name of each hash value, so a text of many different
/// names costs no memory.
class NameCache {
public:
    NameCache(NamespaceStack& namespaces, bool forAttributes)
        : namespaces_(namespaces), forAttributes_(forAttributes) {}

    struct Name {
        String full; ///< URI, line feed, local name; or the local name alone.
        String local;
        int uriId = NamespaceStack::none;
    };
    /// Borrowed until the next call.
    const Name& find(UnitRange full);
    /// What the name means here; borrowed from the stack, null for none.
    XML* namespaceOf(const Name& name) noexcept;

private:
    static constexpr std::uint32_t size = 256;

    void split(Name& name, UnitRange full);

    NamespaceStack& namespaces_;
    bool forAttributes_;
    Name names_[size];
};

} // namespace KrCore
