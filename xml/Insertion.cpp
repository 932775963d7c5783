#include "xml/XMLTree.h"

#include <krcore/containers/SparseArray.h>

#include <algorithm>
#include <utility>

namespace KrCore {

namespace {

bool isChildType(int type) {
    return type == XML::Element || type == XML::Text || type == XML::Comment ||
           type == XML::ProcessingInstruction;
}

bool mayHold(const XML& target, const XML& node, bool copy) {
    const int type = node.getType();
    if (type == XML::List) return false;
    if (target.getType() == XML::List || type == XML::Attribute || type == XML::Namespace)
        return true;
    return isChildType(type) && (copy || !XMLTree::isSelfOrAncestor(node, target));
}

/// Whether a node, or every member of a list, may go into `target`, as it is or as a copy.
bool mayInsert(const XML& target, const XML& node, bool copy) {
    if (target.getType() != XML::Element && target.getType() != XML::List) return false;
    if (node.getType() != XML::List) return mayHold(target, node, copy);
    const TISimpleArray<XML>& members = XMLTree::children(node);
    return (copy || &node != &target) &&
           std::all_of(members.begin(), members.end(),
                       [&](const XML* member) { return mayHold(target, *member, copy); });
}

/// In the place of the attribute that has the same name, or at the end.
void placeAttribute(XML& target, XML& node) {
    if (node.getParent() == &target) return;
    TISimpleArray<XML>& attributes = XMLTree::attributes(target);
    int index = 0;
    while (index < attributes.length() && !XMLTree::hasSameName(*attributes[index], node))
        ++index;
    XMLTree::insert(attributes, &node, index);
    XMLTree::detach(node);
    XMLTree::setParent(node, &target);
    if (++index == attributes.length()) return;
    XMLTree::setParent(*attributes[index], nullptr);
    attributes.removeAt(index);
}

/// In the place of the declaration of the same prefix, or at the end. Declarations are nobody's
/// children: many elements may share one.
void placeDeclaration(XML& target, XML& node) {
    TISimpleArray<XML>& declarations = XMLTree::declarations(target);
    int index = 0;
    while (index < declarations.length() && declarations[index]->getName() != node.getName())
        ++index;
    XMLTree::insert(declarations, &node, index);
    if (++index < declarations.length()) declarations.removeAt(index);
}

/// Into its new place first, which may need memory, and out of the old one afterwards. The index
/// counts the children that the target has without the node.
void placeChild(XML& target, XML& node, int index) {
    TISimpleArray<XML>& children = XMLTree::children(target);
    XML* former = node.getParent();
    int oldPlace = former ? XMLTree::children(*former).indexOf(&node) : -1;
    const bool staysHere = former == &target;
    int place = std::clamp(index, 0, children.length() - int(staysHere));
    if (staysHere) ++(oldPlace < place ? place : oldPlace);
    XMLTree::insert(children, &node, place);
    if (former) XMLTree::children(*former).removeAt(oldPlace);
    XMLTree::setParent(node, &target);
    XMLTree::setHasChildren(target);
}

void placeNode(XML& target, XML& node, int index) {
    if (target.getType() == XML::List) {
        XMLTree::insert(XMLTree::children(target), &node, index);
    } else if (node.getType() == XML::Attribute) {
        placeAttribute(target, node);
    } else if (node.getType() == XML::Namespace) {
        placeDeclaration(target, node);
    } else {
        placeChild(target, node, index);
    }
}

/// Where the members of a list go, put together in an array of its own: nothing changes before all
/// the memory is there, and every pointer moves once.
class Splice {
public:
    Splice(XML& target, int index) : target_(target), index_(index) {}

    void insertIntoList(const XML& list) {
        const int next = appendFirst();
        for (XML* member : XMLTree::children(list))
            XMLTree::append(merged_, member);
        appendRest(next);
        std::swap(XMLTree::children(target_), merged_);
    }

    /// A node that is in the list twice goes in once.
    void insertIntoElement(const XML& list) {
        const InterfacePtr<XML> formers = InterfacePtr<XML>::adopt(list.parent_r());
        for (XML* member : XMLTree::children(list)) {
            if (isChildType(member->getType())) moved_.set(key(member), 1);
        }
        if (moved_.length() == 0) return;
        const int next = appendFirst();
        SparseArray inserted;
        for (XML* member : XMLTree::children(list)) {
            if (!isMoved(member) || inserted.hasKey(key(member))) continue;
            inserted.set(key(member), 1);
            XMLTree::append(merged_, member);
        }
        appendRest(next);
        moveMembers(list, *formers);
    }

private:
    static long long key(XML* node) { return TSimpleArray<XML>::toWord(node); }
    bool isMoved(XML* node) const { return moved_.hasKey(key(node)); }

    /// What stays in the target, as many as the index counts. Returns where the rest begins.
    int appendFirst() {
        int next = 0;
        for (; next < target_.length() && merged_.length() < index_; ++next)
            appendUnmoved(next);
        return next;
    }
    void appendRest(int next) {
        for (; next < target_.length(); ++next)
            appendUnmoved(next);
    }
    void appendUnmoved(int place) {
        XML* child = target_.getChild(place);
        if (!isMoved(child)) XMLTree::append(merged_, child);
    }

    /// Needs no memory.
    void moveMembers(const XML& list, const XML& formers) {
        for (XML* member : XMLTree::children(list)) {
            if (isMoved(member)) XMLTree::setParent(*member, &target_);
        }
        for (XML* former : XMLTree::children(formers)) {
            if (former == &target_) continue;
            XMLTree::children(*former).removeIf(
                [&](const XML* child) { return child->getParent() != former; });
        }
        std::swap(XMLTree::children(target_), merged_);
        XMLTree::setHasChildren(target_);
    }

    XML& target_;
    int index_;
    SparseArray moved_;
    TISimpleArray<XML> merged_;
};

void placeMembers(XML& target, const XML& list, int index) {
    Splice splice(target, index);
    if (target.getType() == XML::List) {
        splice.insertIntoList(list);
        return;
    }
    for (XML* member : XMLTree::children(list)) {
        if (!isChildType(member->getType())) placeNode(target, *member, 0);
    }
    splice.insertIntoElement(list);
}

} // namespace

bool XML::insert(const XML& node, int index, bool copy) {
    if (!mayInsert(*this, node, copy)) return false;
    const InterfacePtr<XML> inserted = copy ? InterfacePtr<XML>::adopt(node.copy_r(false))
                                            : InterfacePtr<XML>(const_cast<XML*>(&node));
    if (node.type_ == List) {
        placeMembers(*this, *inserted, index);
    } else {
        placeNode(*this, *inserted, index);
    }
    return true;
}

bool XML::insertChild(const XML& node, int index, bool copy) {
    return isChildType(node.type_) && insert(node, index, copy);
}

} // namespace KrCore
