#include "xml/NodeStack.h"

namespace KrCore {

namespace {

/// Everything but arrays and parent. Namespaces are shared: nobody's child, they may belong to many
/// nodes.
XML* pushCopy(NodeStack& copies, const XML& node) {
    XML* copy = copies.push(XMLTree::make(node.getType(), node.getName(), node.getValue()));
    XMLTree::setNamespace(*copy, const_cast<XML*>(node.getNamespace()));
    if (XMLTree::hasChildren(node)) XMLTree::setHasChildren(*copy);
    return copy;
}

void copyAttributes(NodeStack& copies, const XML& node, XML& copy) {
    for (XML* declaration : XMLTree::declarations(node))
        XMLTree::append(XMLTree::declarations(copy), declaration);
    const std::size_t first = copies.size();
    for (const XML* attribute : XMLTree::attributes(node))
        pushCopy(copies, *attribute);
    copies.handOver(XMLTree::attributes(copy), first, &copy);
}

/// Everything; a list's members, which have their parents elsewhere, are free in the copy.
InterfacePtr<XML> copyTree(const XML& top) {
    struct Place {
        const XML* original;
        XML* copy;
        std::size_t firstChild; ///< Among the copies.
        int next;
    };
    NodeStack copies;
    WorkStack<Place> places;
    const auto open = [&](const XML& node) {
        XML* copy = pushCopy(copies, node);
        copyAttributes(copies, node, *copy);
        if (node.length() > 0) places.push({&node, copy, copies.size(), 0});
    };
    open(top);
    while (!places.isEmpty()) {
        Place& place = places.top();
        if (place.next < place.original->length()) {
            open(*XMLTree::children(*place.original)[place.next++]);
        } else {
            XML* parent = place.original->getType() == XML::List ? nullptr : place.copy;
            copies.handOver(XMLTree::children(*place.copy), place.firstChild, parent);
            places.pop();
        }
    }
    return copies.pop();
}

/// Adds what the ancestors of `original` declare to the copy's own declarations.
void declareInScope(const XML& original, XML& copy) {
    const InterfacePtr<XML> inScope = InterfacePtr<XML>::adopt(original.namespaces_r());
    for (XML* declaration : XMLTree::children(*inScope)) {
        TISimpleArray<XML>& declarations = XMLTree::declarations(copy);
        if (declarations.indexOf(declaration) < 0) XMLTree::append(declarations, declaration);
    }
}

} // namespace

XML* XML::copy_r(bool declareInScope) const {
    InterfacePtr<XML> copy = copyTree(*this);
    if (declareInScope && type_ == Element) KrCore::declareInScope(*this, *copy);
    return copy.detach();
}

} // namespace KrCore
