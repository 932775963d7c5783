#include "foundation/WorkStack.h"
#include "xml/NamePattern.h"

#include <algorithm>

namespace KrCore {

namespace {

bool isSamePrefix(const XML* a, const XML* b) {
    if (a == b) return true;
    return a && b && a->getName() == b->getName();
}

/// Everything but what the nodes hold in arrays.
bool isSameNode(const XML& a, const XML& b, bool exact) {
    return a.getType() == b.getType() && a.getName() == b.getName() &&
           a.getValue() == b.getValue() && isSameNamespace(a.getNamespace(), b.getNamespace()) &&
           (!exact || isSamePrefix(a.getNamespace(), b.getNamespace()));
}

bool isSameSequence(const TISimpleArray<XML>& a, const TISimpleArray<XML>& b, bool exact) {
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(),
        [=](const XML* one, const XML* other) { return isSameNode(*one, *other, exact); });
}

bool isSorted(const XML* a, const XML* b) {
    if (a->getName() != b->getName()) return a->getName() < b->getName();
    const String& uriOfA =
        a->getNamespace() ? a->getNamespace()->getValue() : String::emptyString();
    const String& uriOfB =
        b->getNamespace() ? b->getNamespace()->getValue() : String::emptyString();
    return uriOfA < uriOfB;
}

/// Sorted pointers, borrowed.
void sortByName(const TISimpleArray<XML>& attributes, WorkStack<const XML*>& sorted) {
    std::copy(attributes.begin(), attributes.end(),
              sorted.extend(static_cast<std::size_t>(attributes.length())));
    std::sort(sorted.begin(), sorted.end(), isSorted);
}

/// Attributes have no order, but mostly they stand in the same one.
bool hasSameAttributes(const XML& a, const XML& b, bool exact) {
    const TISimpleArray<XML>& ofA = XMLTree::attributes(a);
    const TISimpleArray<XML>& ofB = XMLTree::attributes(b);
    if (ofA.length() != ofB.length()) return false;
    if (isSameSequence(ofA, ofB, exact)) return true;
    if (exact) return false;
    WorkStack<const XML*> sortedA;
    WorkStack<const XML*> sortedB;
    sortByName(ofA, sortedA);
    sortByName(ofB, sortedB);
    return std::equal(
        sortedA.begin(), sortedA.end(), sortedB.begin(),
        [](const XML* one, const XML* other) { return isSameNode(*one, *other, false); });
}

/// Everything but the children.
bool isSameHead(const XML& a, const XML& b, bool exact) {
    return isSameNode(a, b, exact) && a.length() == b.length() && hasSameAttributes(a, b, exact) &&
           (!exact || isSameSequence(XMLTree::declarations(a), XMLTree::declarations(b), true));
}

} // namespace

bool XML::isEqual(const XML& other, bool exact) const {
    struct Pair {
        const XML* a;
        const XML* b;
    };
    if (this == &other) return true;
    if (!isSameHead(*this, other, exact)) return false;
    WorkStack<Pair> pairs;
    if (length() > 0) pairs.push({this, &other});
    while (!pairs.isEmpty()) {
        const Pair parents = pairs.top();
        pairs.pop();
        for (int index = 0; index < parents.a->length(); ++index) {
            const XML* a = parents.a->getChild(index);
            const XML* b = parents.b->getChild(index);
            if (a == b) continue;
            if (!isSameHead(*a, *b, exact)) return false;
            if (a->length() > 0) pairs.push({a, b});
        }
    }
    return true;
}

bool XML::contains(const XML& node, bool exact) const { return indexOf(node, exact) >= 0; }

int XML::indexOf(const XML& node, bool exact) const {
    for (int index = 0; index < length(); ++index) {
        if (getChild(index)->isEqual(node, exact)) return index;
    }
    return -1;
}

int XML::indexOf(const String& name, bool exact) const {
    if (exact) {
        for (int index = 0; index < length(); ++index) {
            const XML* child = getChild(index);
            if (child->type_ == Element && child->name_ == name) return index;
        }
        return -1;
    }
    const NamePattern pattern(name);
    const TISimpleArray<XML>& members = pattern.arrayOf(const_cast<XML&>(*this));
    for (int index = 0; index < members.length(); ++index) {
        if (pattern.matches(*members[index])) return index;
    }
    return -1;
}

} // namespace KrCore
