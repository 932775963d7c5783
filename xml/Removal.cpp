#include "xml/NamePattern.h"
#include "xml/NodeWalk.h"

#include <algorithm>
#include <utility>

namespace KrCore {

namespace {

int removeNamed(XML& node, const NamePattern& name) {
    return XMLTree::removeIf(node, name.arrayOf(node),
                             [&](const XML& member) { return name.matches(member); });
}

int removeAll(XML& node) {
    return XMLTree::removeIf(node, XMLTree::children(node), [](const XML&) { return true; });
}

bool removeFrom(XML& node, TISimpleArray<XML>& array, XML& member) {
    const int index = array.indexOf(&member);
    if (index < 0) return false;
    if (member.getParent() == &node) XMLTree::setParent(member, nullptr);
    array.removeAt(index);
    return true;
}

/// Text of the node's own. What is in a list only by reference belongs to another tree.
bool isOwnText(const XML& node, const XML& child) {
    if (child.getType() != XML::Text) return false;
    return child.getParent() == (node.getType() == XML::List ? nullptr : &node);
}

/// Gives the first of several texts that is not empty the value of them all and empties the others.
/// One run at a time: without memory for it a run stays as it is.
void joinRun(const TISimpleArray<XML>& children, int begin, int end) {
    while (begin < end && children[begin]->getValue().isEmpty())
        ++begin;
    if (end - begin < 2) return;
    String joined = children[begin]->getValue();
    for (int index = begin + 1; index < end; ++index)
        joined += children[index]->getValue();
    XMLTree::value(*children[begin]) = std::move(joined);
    for (int index = begin + 1; index < end; ++index)
        XMLTree::value(*children[index]).clear();
}

void joinTexts(XML& node) {
    TISimpleArray<XML>& children = XMLTree::children(node);
    int begin = 0;
    for (int index = 0; index <= children.length(); ++index) {
        if (index < children.length() && isOwnText(node, *children[index])) continue;
        joinRun(children, begin, index);
        begin = index + 1;
    }
    XMLTree::removeIf(node, children, [&](const XML& child) {
        return isOwnText(node, child) && child.getValue().isEmpty();
    });
}

} // namespace

int XML::remove(const String& name) {
    if (name.isEmpty()) return removeAll(*this);
    const NamePattern pattern(name);
    if (type_ != List) return removeNamed(*this, pattern);
    int removed = 0;
    for (XML* member : children_)
        removed += removeNamed(*member, pattern);
    return removed;
}

bool XML::remove(XML& node) {
    return removeFrom(*this, children_, node) || removeFrom(*this, attributes_, node) ||
           removeFrom(*this, declarations_, node);
}

int XML::remove(int index, int count) {
    const long long length = children_.length();
    const long long begin = std::clamp<long long>(index, 0, length);
    const long long end =
        std::clamp<long long>(static_cast<long long>(index) + count, begin, length);
    int position = 0;
    return XMLTree::removeIf(*this, children_, [&](const XML&) {
        const int place = position++;
        return place >= begin && place < end;
    });
}

void XML::normalize() {
    joinTexts(*this);
    walkDescendants(*this, [](XML& node) {
        joinTexts(node);
        return true;
    });
}

} // namespace KrCore
