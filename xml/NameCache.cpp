#include "xml/NameCache.h"

#include "xml/ShortTexts.h"

namespace KrCore {

const NameCache::Name& NameCache::find(UnitRange full) {
    Name& name = names_[hashOf(full) % size];
    if (!isSameText(name.full, full)) split(name, full);
    if (name.generation != namespaces_.generation()) {
        name.ns = resolve(name);
        name.generation = namespaces_.generation();
    }
    return name;
}

/// A URI may hold line feeds, a local name cannot.
void NameCache::split(Name& name, UnitRange full) {
    const unsigned short* local = full.end;
    while (local != full.begin && local[-1] != '\n')
        --local;
    name.generation = -1;
    name.full = String(full.begin, full.length());
    name.local =
        local == full.begin ? name.full : String(local, static_cast<int>(full.end - local));
}

/// A prefix says more than a default: an attribute without one is in no namespace at all.
XML* NameCache::resolve(const Name& name) {
    const int uriLength = name.full.length() - name.local.length() - 1;
    if (uriLength >= 0)
        return namespaces_.findByUri({name.full.begin(), name.full.begin() + uriLength},
                                     forAttributes_);
    return forAttributes_ ? nullptr : namespaces_.findDefault();
}

} // namespace KrCore
