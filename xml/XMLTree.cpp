#include "xml/XMLTree.h"

#include <utility>

namespace KrCore {

namespace {

/// Arrays up to this length grow by their own steps; a longer one grows by half its length.
constexpr int smallArray = 32;

} // namespace

InterfacePtr<XML> XMLTree::make(int type, const String& name, const String& value) {
    InterfacePtr<XML> node = make(type);
    node->name_ = name;
    node->value_ = value;
    return node;
}

void XMLTree::setNamespace(XML& node, XML* ns) {
    if (ns) ns->addRef();
    if (XML* former = std::exchange(node.namespace_, ns)) former->release();
}

void XMLTree::insert(TISimpleArray<XML>& array, XML* node, int index) {
    const int length = array.length();
    if (length >= smallArray && array.getIncrement() < length / 2) array.setIncrement(length / 2);
    array.insert(node, index);
}

void XMLTree::appendChild(XML& parent, XML& child) {
    append(parent.children_, &child);
    parent.hasChildren_ = true;
    child.parent_ = &parent;
}

void XMLTree::detach(XML& node) noexcept {
    XML* parent = std::exchange(node.parent_, nullptr);
    if (!parent) return;
    (node.type_ == XML::Attribute ? parent->attributes_ : parent->children_).remove(&node);
}

bool XMLTree::hasSameName(const XML& a, const XML& b) noexcept {
    return a.name_ == b.name_ && isSameNamespace(a.namespace_, b.namespace_);
}

bool XMLTree::isSelfOrAncestor(const XML& node, const XML& below) noexcept {
    for (const XML* place = &below; place; place = place->parent_) {
        if (place == &node) return true;
    }
    return false;
}

bool isSameNamespace(const XML* a, const XML* b) noexcept {
    if (a == b) return true;
    const int lengthOfA = a ? a->getValue().length() : 0;
    const int lengthOfB = b ? b->getValue().length() : 0;
    if (lengthOfA != lengthOfB) return false;
    return lengthOfA == 0 || a->getValue() == b->getValue();
}

} // namespace KrCore
