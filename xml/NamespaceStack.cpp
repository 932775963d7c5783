#include "xml/NamespaceStack.h"

#include <algorithm>

namespace KrCore {

NamespaceStack::NamespaceStack() {
    if (XML* ns = XMLTree::xmlNamespace()) push(ns);
    if (XML* ns = XMLTree::namespaceOfNewNodes()) push(ns);
}

void NamespaceStack::push(XML* ns) {
    entries_.push({ns, ns->getName().isEmpty()});
    ns->addRef();
    ++generation_;
}

void NamespaceStack::popTo(std::size_t size) noexcept {
    if (entries_.size() == size) return;
    while (entries_.size() > size) {
        entries_.top().ns->release();
        entries_.pop();
    }
    ++generation_;
}

XML* NamespaceStack::findByUri(UnitRange uri, bool forAttribute) noexcept {
    for (std::size_t index = entries_.size(); index-- > 0;) {
        const Entry& entry = entries_[index];
        if (forAttribute && entry.hasEmptyPrefix) continue;
        const String& value = entry.ns->getValue();
        if (std::equal(uri.begin, uri.end, value.begin(), value.end()) && !isHidden(index))
            return entry.ns;
    }
    return nullptr;
}

XML* NamespaceStack::findDefault() noexcept {
    for (std::size_t index = entries_.size(); index-- > 0;) {
        if (!entries_[index].hasEmptyPrefix) continue;
        XML* ns = entries_[index].ns;
        return ns->getValue().isEmpty() ? nullptr : ns;
    }
    return nullptr;
}

bool NamespaceStack::isHidden(std::size_t index) noexcept {
    const String& prefix = entries_[index].ns->getName();
    for (std::size_t inner = index + 1; inner < entries_.size(); ++inner) {
        if (entries_[inner].ns->getName() == prefix) return true;
    }
    return false;
}

} // namespace KrCore
