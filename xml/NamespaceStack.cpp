#include "xml/NamespaceStack.h"

namespace KrCore {

NamespaceStack::NamespaceStack() : emptyPrefix_(prefixes_.findOrAdd(String::emptyString())) {
    if (XML* ns = XMLTree::xmlNamespace()) push(ns);
    if (XML* ns = XMLTree::namespaceOfNewNodes()) push(ns);
}

void NamespaceStack::push(XML* ns) {
    const int prefix = prefixes_.findOrAdd(ns->getName());
    const int uri = uris_.findOrAdd(ns->getValue());
    const int hidden = prefixes_[prefix];
    const int index = static_cast<int>(entries_.size());
    entries_.push({ns, prefix, uri, hidden, none, none});
    ns->addRef();
    if (hidden != none) unchain(at(hidden));
    prefixes_[prefix] = index;
    at(index).older = uris_[uri];
    chain(index);
}

void NamespaceStack::popTo(std::size_t size) noexcept {
    while (entries_.size() > size) {
        const Entry& entry = entries_.top();
        unchain(entry);
        prefixes_[entry.prefix] = entry.hidden;
        if (entry.hidden != none) chain(entry.hidden);
        entry.ns->release();
        entries_.pop();
    }
}

/// The entry keeps its neighbours for the way back, which is the exact reverse of the way in.
void NamespaceStack::unchain(const Entry& entry) noexcept {
    if (entry.older != none) at(entry.older).newer = entry.newer;
    (entry.newer != none ? at(entry.newer).older : uris_[entry.uri]) = entry.older;
}

void NamespaceStack::chain(int index) noexcept {
    const Entry& entry = at(index);
    if (entry.older != none) at(entry.older).newer = index;
    (entry.newer != none ? at(entry.newer).older : uris_[entry.uri]) = index;
}

XML* NamespaceStack::findByUri(int uriId, bool forAttribute) noexcept {
    if (uriId == none) return nullptr;
    int index = uris_[uriId];
    // Of the empty prefix one declaration at most is visible.
    if (forAttribute && index != none && at(index).prefix == emptyPrefix_) index = at(index).older;
    return index == none ? nullptr : at(index).ns;
}

XML* NamespaceStack::findDefault() noexcept {
    const int index = prefixes_[emptyPrefix_];
    if (index == none) return nullptr;
    XML* ns = at(index).ns;
    return ns->getValue().isEmpty() ? nullptr : ns;
}

} // namespace KrCore
