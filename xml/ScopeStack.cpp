#include "xml/ScopeStack.h"

namespace KrCore {

namespace {

bool isOpenPrefix(const String& prefix) noexcept {
    return prefix.length() == 1 && *prefix.begin() == '*';
}

bool isXMLNamespace(const XML& ns) { return ns.getName() == "xml"; }

} // namespace

void ScopeStack::open(const XML& element) {
    begin_ = entries_.size();
    for (const XML* ns : XMLTree::declarations(element)) {
        const String& prefix = isOpenPrefix(ns->getName())
                                   ? prefixes().choose(ns->getValue()).getName()
                                   : ns->getName();
        if (!isOwn(find(prefix))) entries_.push({&prefix, &ns->getValue(), true});
    }
}

const String* ScopeStack::prefixFor(const XML& node) {
    const bool isAttribute = node.getType() == XML::Attribute;
    const XML* ns = node.getNamespace();
    if (!ns || (ns->getName().isEmpty() && ns->getValue().isEmpty())) {
        // A default declaration of the element's own stays: the tree is printed as it stands.
        const std::size_t index =
            isAttribute || entries_.isEmpty() ? nowhere : find(String::emptyString());
        if (index != nowhere && !isOwn(index) && !entries_[index].uri->isEmpty())
            declare(String::emptyString(), String::emptyString());
        return nullptr;
    }
    const String& prefix = ns->getName();
    if (isXMLNamespace(*ns)) return &prefix;
    if (isOpenPrefix(prefix) || (isAttribute && prefix.isEmpty()) ||
        !declare(prefix, ns->getValue()))
        return inventedPrefix(ns->getValue());
    return prefix.isEmpty() ? nullptr : &prefix;
}

std::size_t ScopeStack::find(const String& prefix) noexcept {
    for (std::size_t index = entries_.size(); index-- > 0;) {
        if (*entries_[index].prefix == prefix) return index;
    }
    return nowhere;
}

/// Sees to it that the prefix means the URI on this element; false when it means another one there.
bool ScopeStack::declare(const String& prefix, const String& uri) {
    const std::size_t index = find(prefix);
    const bool isDeclared = index != nowhere && *entries_[index].uri == uri;
    if (isOwn(index)) return isDeclared;
    entries_.push({&prefix, &uri, !isDeclared});
    return true;
}

const String* ScopeStack::inventedPrefix(const String& uri) {
    const XML* ns = &prefixes().choose(uri);
    while (!declare(ns->getName(), ns->getValue()))
        ns = &prefixes_.invent(uri);
    return &ns->getName();
}

/// Made for the first namespace whose prefix is open.
PrefixTable& ScopeStack::prefixes() {
    if (!hasPrefixes_) {
        const InterfacePtr<XML> inScope = InterfacePtr<XML>::adopt(top_.namespaces_r());
        prefixes_.reserve(XMLTree::children(*inScope));
        hasPrefixes_ = true;
    }
    return prefixes_;
}

} // namespace KrCore
