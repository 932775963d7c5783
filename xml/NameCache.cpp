#include "xml/NameCache.h"

#include "xml/ShortTexts.h"

namespace KrCore {

const NameCache::Name& NameCache::find(UnitRange full) {
    Name& name = names_[hashOf(full) % size];
    if (!isSameText(name.full, full)) split(name, full);
    return name;
}

/// A URI may hold line feeds, a local name cannot.
void NameCache::split(Name& name, UnitRange full) {
    const unsigned short* local = full.end;
    while (local != full.begin && local[-1] != '\n')
        --local;
    // Empty, and so not found, when memory runs out on the way.
    name.full.clear();
    if (local == full.begin) {
        name.local = String(local, full.length());
        name.uriId = NamespaceStack::none;
        name.full = name.local;
    } else {
        name.local = String(local, static_cast<int>(full.end - local));
        name.uriId =
            namespaces_.idOfUri(String(full.begin, static_cast<int>(local - full.begin) - 1));
        name.full = String(full.begin, full.length());
    }
}

/// A prefix says more than a default: an attribute without one is in no namespace at all.
XML* NameCache::namespaceOf(const Name& name) noexcept {
    if (name.full.length() != name.local.length())
        return namespaces_.findByUri(name.uriId, forAttributes_);
    return forAttributes_ ? nullptr : namespaces_.findDefault();
}

} // namespace KrCore
