#include "xml/WorkStack.h"
#include "xml/XMLTree.h"

namespace KrCore {

namespace {

/// Everything but children and parent. Declarations and namespaces are shared: nobody's child, they
/// may belong to many nodes.
InterfacePtr<XML> copyHead(const XML& node) {
    InterfacePtr<XML> copy = XMLTree::make(node.getType(), node.getName(), node.getValue());
    XMLTree::setNamespace(*copy, const_cast<XML*>(node.getNamespace()));
    for (XML* declaration : XMLTree::declarations(node))
        XMLTree::append(XMLTree::declarations(*copy), declaration);
    for (const XML* attribute : XMLTree::attributes(node)) {
        const InterfacePtr<XML> own = copyHead(*attribute);
        XMLTree::append(XMLTree::attributes(*copy), own.get());
        XMLTree::setParent(*own, copy.get());
    }
    if (XMLTree::hasChildren(node)) XMLTree::setHasChildren(*copy);
    return copy;
}

/// Everything; a list's members, which have their parents elsewhere, are free in the copy.
InterfacePtr<XML> copyTree(const XML& top) {
    struct Place {
        const XML* original;
        XML* copy;
        int next;
    };
    InterfacePtr<XML> result = copyHead(top);
    WorkStack<Place> places;
    places.push({&top, result.get(), 0});
    while (!places.isEmpty()) {
        Place& place = places.top();
        const XML* child = place.original->getChild(place.next++);
        if (!child) {
            places.pop();
            continue;
        }
        const InterfacePtr<XML> own = copyHead(*child);
        XMLTree::append(XMLTree::children(*place.copy), own.get());
        if (place.original->getType() != XML::List) XMLTree::setParent(*own, place.copy);
        if (child->length() > 0) places.push({child, own.get(), 0});
    }
    return result;
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
