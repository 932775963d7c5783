#include "xml/NamePattern.h"

#include <utility>

namespace KrCore {

namespace {

/// A node on its way to its place, and what is to go into it once it stands there.
struct Made {
    InterfacePtr<XML> node;
    const XML* content = nullptr;
    bool copy = false;

    explicit operator bool() const { return bool(node); }
    bool fill() const { return !content || node->insert(*content, XML::atEnd, copy); }
};

/// An empty element or attribute named `name`, for `place`; nothing when the name does not name one
/// node.
Made makeNamed(const NamePattern& name, const XML& place) {
    if (!name.isSingle()) return {};
    return {name.makeNode(place)};
}

/// The same with a text.
Made makeNamed(const NamePattern& name, const XML& place, const String& value) {
    Made made = makeNamed(name, place);
    if (made && name.wantsAttributes()) {
        made.node->setValue(value);
    } else if (made) {
        XMLTree::appendChild(*made.node, *XMLTree::make(XML::Text, String(), value));
    }
    return made;
}

/// Whether `node`, or a member of a list, would go below itself in `place`.
bool wouldClose(const XML& node, const XML& place) {
    if (node.getType() != XML::List) return XMLTree::isSelfOrAncestor(node, place);
    for (const XML* member : XMLTree::children(node)) {
        if (XMLTree::isSelfOrAncestor(*member, place)) return true;
    }
    return false;
}

/// `node` under that name: itself, its text as an attribute's value, or an element around it.
/// Nothing when it cannot be.
Made makeNamed(const NamePattern& name, const XML& place, const XML& node, bool copy) {
    if (!name.isSingle()) return {};
    if (name.wantsAttributes()) return makeNamed(name, place, node.toString(-1));
    if (!copy && wouldClose(node, place)) return {};
    if (node.getType() == XML::Element && name.matches(node)) {
        return {copy ? InterfacePtr<XML>::adopt(node.copy_r(false))
                     : InterfacePtr<XML>(const_cast<XML*>(&node))};
    }
    Made made = makeNamed(name, place);
    made.content = &node;
    made.copy = copy;
    return made;
}

/// Where a name leads from a node: attributes belong to an element, children to any node that has
/// them.
XML* placeFor(XML& node, const NamePattern& name) {
    return name.wantsAttributes() ? node.asElementNode() : &node;
}

/// Takes a new node back out of its place unless it is kept: its content must not be lost with it
/// when memory runs out.
class Placed {
public:
    Placed(XML& place, XML& node) : place_(place), node_(node) {}
    ~Placed() {
        if (!isKept_) place_.remove(node_);
    }
    Placed(const Placed&) = delete;
    Placed& operator=(const Placed&) = delete;

    XML* keep() {
        isKept_ = true;
        return &node_;
    }

private:
    XML& place_;
    XML& node_;
    bool isKept_ = false;
};

XML* append(XML* place, const Made& made) {
    if (!place || !made || !place->insert(*made.node, XML::atEnd, false)) return nullptr;
    Placed placed(*place, *made.node);
    return made.fill() ? placed.keep() : nullptr;
}

/// Puts what was made in the place of the first node of that name and removes the others.
XML* replace(XML& element, const NamePattern& name, const Made& made) {
    XML& node = *made.node;
    TISimpleArray<XML>& array = name.arrayOf(element);
    int first = 0;
    while (first < array.length() && !name.matches(*array[first]))
        ++first;
    if (first == array.length()) return append(&element, made);
    XMLTree::insert(array, &node, first);
    Placed placed(element, node);
    if (!made.fill()) return nullptr;
    if (node.getParent() != &element) XMLTree::detach(node);
    bool isFirst = true;
    XMLTree::removeIf(element, array, [&](const XML& member) {
        const bool isNew = &member == &node && std::exchange(isFirst, false);
        return !isNew && name.matches(member);
    });
    XMLTree::setParent(node, &element);
    return placed.keep();
}

bool isPath(const String& name) { return name.find('/') >= 0 && name.find("::") < 0; }

/// All pieces but the last name elements, and none is empty.
bool isGoodPath(const String& path) {
    int start = 0;
    for (int slash = path.find('/'); slash >= 0; slash = path.find('/', start)) {
        if (slash == start || path.begin()[start] == '@') return false;
        start = slash + 1;
    }
    return start < path.length();
}

/// The first child element of that name, made where there is none; null when the name does not name
/// one node.
XML* step(XML& element, const String& piece) {
    const NamePattern name(piece);
    for (XML* child : XMLTree::children(element)) {
        if (name.isSingle() && name.matches(*child)) return child;
    }
    return append(&element, makeNamed(name, element));
}

/// What to put, and under which name, once the path has been walked; see `XML::put`.
template <class Make>
XML* putInto(XML* element, const String& path, Make&& make) {
    String name = path;
    if (isPath(path)) {
        if (!isGoodPath(path)) return nullptr;
        int start = 0;
        for (int slash = path.find('/'); element && slash >= 0; slash = path.find('/', start)) {
            element = step(*element, path.substr(start, slash - start));
            start = slash + 1;
        }
        name = path.substr(start);
    }
    if (!element) return nullptr;
    const NamePattern pattern(name);
    const Made made = make(pattern, *element);
    return made ? replace(*element, pattern, made) : nullptr;
}

} // namespace

XML* XML::add(const String& name) {
    const NamePattern pattern(name);
    XML* place = placeFor(*this, pattern);
    return place ? append(place, makeNamed(pattern, *place)) : nullptr;
}

XML* XML::add(const String& name, const String& value) {
    const NamePattern pattern(name);
    XML* place = placeFor(*this, pattern);
    return place ? append(place, makeNamed(pattern, *place, value)) : nullptr;
}

XML* XML::add(const String& name, const XML& node, bool copy) {
    const NamePattern pattern(name);
    XML* place = placeFor(*this, pattern);
    return place ? append(place, makeNamed(pattern, *place, node, copy)) : nullptr;
}

XML* XML::put(const String& name) {
    return putInto(asElementNode(), name, [](const NamePattern& pattern, const XML& element) {
        return makeNamed(pattern, element);
    });
}

XML* XML::put(const String& name, const String& value) {
    return putInto(asElementNode(), name, [&](const NamePattern& pattern, const XML& element) {
        return makeNamed(pattern, element, value);
    });
}

XML* XML::put(const String& name, const XML& node, bool copy) {
    return putInto(asElementNode(), name, [&](const NamePattern& pattern, const XML& element) {
        return makeNamed(pattern, element, node, copy);
    });
}

} // namespace KrCore
