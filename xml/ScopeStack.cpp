#include "xml/ScopeStack.h"

#include <cstdint>

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
        const int id = idOf(prefix);
        if (!isOwn(declared_[id])) push(prefix, id, ns->getValue(), true);
    }
}

const String* ScopeStack::prefixFor(const XML& node) {
    const bool isAttribute = node.getType() == XML::Attribute;
    const XML* ns = node.getNamespace();
    if (!ns || (ns->getName().isEmpty() && ns->getValue().isEmpty())) {
        // A default declaration of the element's own stays: the tree is printed as it stands.
        const int index =
            isAttribute || entries_.isEmpty() ? nowhere : declared_[idOf(String::emptyString())];
        if (index != nowhere && !isOwn(index) && !at(index).uri->isEmpty())
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

void ScopeStack::close(std::size_t mark) noexcept {
    while (entries_.size() > mark) {
        const Entry& entry = entries_.top();
        declared_[entry.prefixId] = entry.outer;
        entries_.pop();
    }
}

/// Prefixes are strings of namespace nodes, so the same few places come again and again.
int ScopeStack::idOf(const String& prefix) {
    Known& known = known_[reinterpret_cast<std::uintptr_t>(&prefix) / sizeof(XML) % cacheSize];
    if (known.prefix != &prefix) known = {&prefix, declared_.findOrAdd(prefix)};
    return known.id;
}

void ScopeStack::push(const String& prefix, int id, const String& uri, bool isWritten) {
    const int index = static_cast<int>(entries_.size());
    entries_.push({&prefix, &uri, id, declared_[id], isWritten});
    declared_[id] = index;
}

/// Sees to it that the prefix means the URI on this element; false when it means another one there.
bool ScopeStack::declare(const String& prefix, const String& uri) {
    const int id = idOf(prefix);
    const int index = declared_[id];
    const bool isDeclared = index != nowhere && (at(index).uri == &uri || *at(index).uri == uri);
    if (isOwn(index)) return isDeclared;
    push(prefix, id, uri, !isDeclared);
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
