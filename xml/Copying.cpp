#include "xml/NodeBatches.h"
#include "xml/NodeStack.h"

namespace KrCore {

namespace {

/// The nodes of a copy in the making.
class TreeCopier {
public:
    /// A list's members, which have their parents elsewhere, are free in the copy.
    InterfacePtr<XML> copy(const XML& top) {
        open(top);
        while (!places_.isEmpty()) {
            Place& place = places_.top();
            if (place.next < place.original->length()) {
                open(*XMLTree::children(*place.original)[place.next++]);
            } else {
                XML* parent = place.original->getType() == XML::List ? nullptr : place.copy;
                copies_.handOver(XMLTree::children(*place.copy), place.firstChild, parent);
                places_.pop();
            }
        }
        return copies_.pop();
    }

private:
    struct Place {
        const XML* original;
        XML* copy;
        std::size_t firstChild; ///< Among the copies.
        int next;
    };

    void open(const XML& node) {
        XML* copy = push(node);
        copyAttributes(node, *copy);
        if (node.length() > 0) places_.push({&node, copy, copies_.size(), 0});
    }

    /// Everything but arrays and parent. Namespaces are shared: nobody's child, they may belong to
    /// many nodes.
    XML* push(const XML& node) {
        XML* copy = copies_.push(batches_.make(node.getType()));
        XMLTree::name(*copy) = node.getName();
        XMLTree::value(*copy) = node.getValue();
        XMLTree::setNamespace(*copy, const_cast<XML*>(node.getNamespace()));
        if (XMLTree::hasChildren(node)) XMLTree::setHasChildren(*copy);
        return copy;
    }

    void copyAttributes(const XML& node, XML& copy) {
        for (XML* declaration : XMLTree::declarations(node))
            XMLTree::append(XMLTree::declarations(copy), declaration);
        const std::size_t first = copies_.size();
        for (const XML* attribute : XMLTree::attributes(node))
            push(*attribute);
        copies_.handOver(XMLTree::attributes(copy), first, &copy);
    }

    NodeBatches batches_;
    NodeStack copies_;
    WorkStack<Place> places_;
};

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
    InterfacePtr<XML> copy = TreeCopier().copy(*this);
    if (declareInScope && type_ == Element) KrCore::declareInScope(*this, *copy);
    return copy.detach();
}

} // namespace KrCore
