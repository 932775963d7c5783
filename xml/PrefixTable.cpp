#include "xml/PrefixTable.h"

#include "xml/NameSyntax.h"

#include <algorithm>

namespace KrCore {

namespace {

/// The name at the beginning of a piece, up to its first ".".
UnitRange namePartOf(UnitRange piece) {
    piece.end = std::find(piece.begin, piece.end, '.');
    return {piece.begin, piece.begin + nameLength(piece)};
}

/// The last piece between slashes that begins like a name. Kept: only that one is refused when it
/// begins with "xml", no earlier piece takes its place (held by XMLPrint.InventsPrefixes).
String candidateFor(const String& uri) {
    UnitRange last{uri.begin(), uri.begin()};
    for (const unsigned short* begin = uri.begin();;) {
        const unsigned short* end = std::find(begin, uri.end(), '/');
        const UnitRange part = namePartOf({begin, end});
        if (!part.isEmpty()) last = part;
        if (end == uri.end()) break;
        begin = end + 1;
    }
    String candidate(last.begin, last.length());
    if (candidate.nucmp("xml", 3) == 0) candidate.clear();
    return candidate.isEmpty() ? String("a") : candidate;
}

} // namespace

void PrefixTable::reserve(const TISimpleArray<XML>& declarations) {
    for (XML* ns : declarations) {
        if (!ns->getName().isEmpty() && !(ns->getName() == "*")) record(ns);
    }
}

const XML& PrefixTable::choose(const String& uri) {
    const XML* known = byUri_.find(uri);
    return known ? *known : invent(uri);
}

const XML& PrefixTable::invent(const String& uri) {
    String prefix = candidateFor(uri);
    if (byPrefix_.find(prefix)) prefix = numbered(prefix);
    const InterfacePtr<XML> ns = XMLTree::make(XML::Namespace, prefix, uri);
    XMLTree::append(invented_, ns.get());
    record(ns.get());
    return *ns;
}

void PrefixTable::record(XML* ns) {
    byPrefix_.set(ns->getName(), ns);
    byUri_.set(ns->getValue(), ns);
}

String PrefixTable::numbered(const String& candidate) {
    const int hyphen = candidate.find('-');
    const String base = hyphen < 0 ? candidate : candidate.substr(0, hyphen);
    long long number = numbers_.find(base);
    String prefix;
    do {
        prefix.print("%ls-%ld", base.wstr(), static_cast<int>(++number));
    } while (byPrefix_.find(prefix));
    numbers_.set(base, number);
    return prefix;
}

} // namespace KrCore
