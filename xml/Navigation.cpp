#include "xml/NamePattern.h"
#include "xml/NodeWalk.h"

#include <krcore/containers/SparseArray.h>

namespace KrCore {

namespace {

/// Nodes that a caller asked for, on their way into a list.
class Found {
public:
    /// What a single node gives cannot repeat, and is not compared.
    explicit Found(const XML& start)
        : list_(XMLTree::make(XML::List)), mayRepeat_(start.getType() == XML::List) {}

    /// False when the node is in the list already.
    bool add(XML* node) {
        if (mayRepeat_) {
            const long long key = TSimpleArray<XML>::toWord(node);
            if (known_.hasKey(key)) return false;
            known_.set(key, 1);
        }
        XMLTree::append(XMLTree::children(*list_), node);
        return true;
    }
    XML* toList() { return list_.detach(); }

private:
    InterfacePtr<XML> list_;
    SparseArray known_;
    bool mayRepeat_;
};

/// What `collect(const XML& node, Found& found)` finds for a node, or for every member of a list.
template <class Collect>
XML* listOf(const XML& start, Collect&& collect) {
    Found found(start);
    if (start.getType() == XML::List) {
        for (const XML* member : XMLTree::children(start))
            collect(*member, found);
    } else {
        collect(start, found);
    }
    return found.toList();
}

/// Which children of one parent are asked for their siblings.
class SiblingSet {
public:
    explicit SiblingSet(const XML& start) {
        if (start.getType() == XML::List) {
            for (XML* member : XMLTree::children(start))
                add(member);
        } else {
            add(const_cast<XML*>(&start));
        }
    }
    bool has(XML* node) const { return nodes_.hasKey(TSimpleArray<XML>::toWord(node)); }

private:
    void add(XML* node) { nodes_.set(TSimpleArray<XML>::toWord(node), 1); }

    SparseArray nodes_;
};

/// The children of `parent` behind the first one that is asked, or before the last one.
struct SiblingRange {
    int begin;
    int end;

    static SiblingRange behind(const XML& parent, const SiblingSet& asked) {
        int first = 0;
        while (first < parent.length() && !asked.has(parent.getChild(first)))
            ++first;
        return {first + 1, parent.length()};
    }
    static SiblingRange before(const XML& parent, const SiblingSet& asked) {
        int last = parent.length() - 1;
        while (last >= 0 && !asked.has(parent.getChild(last)))
            --last;
        return {0, last};
    }
};

/// Parent by parent, so that a long list of siblings takes no longer than one of them.
XML* siblings(const XML& start, SiblingRange range(const XML&, const SiblingSet&),
              bool onlyElements) {
    const SiblingSet asked(start);
    const InterfacePtr<XML> parents = InterfacePtr<XML>::adopt(start.parent_r());
    Found found(start);
    for (const XML* parent : XMLTree::children(*parents)) {
        const SiblingRange wanted = range(*parent, asked);
        for (int index = wanted.begin; index < wanted.end; ++index) {
            XML* sibling = parent->getChild(index);
            if (!onlyElements || sibling->getType() == XML::Element) found.add(sibling);
        }
    }
    return found.toList();
}

} // namespace

XML* XML::parent_r() const {
    return listOf(*this, [](const XML& node, Found& found) {
        if (XML* parent = node.getParent()) found.add(parent);
    });
}

XML* XML::ancestors_r(bool includeSelf) const {
    return listOf(*this, [=](const XML& node, Found& found) {
        XML* place = includeSelf ? const_cast<XML*>(&node) : node.getParent();
        // Above one that is known already all are known.
        while (place && found.add(place))
            place = place->getParent();
    });
}

XML* XML::descendants_r() const {
    return listOf(*this, [](const XML& node, Found& found) {
        walkDescendants(node, [&](XML& below) { return found.add(&below); });
    });
}

XML* XML::nextSiblings_r() const { return siblings(*this, SiblingRange::behind, false); }

XML* XML::prevSiblings_r() const { return siblings(*this, SiblingRange::before, false); }

XML* XML::nextElements_r() const { return siblings(*this, SiblingRange::behind, true); }

XML* XML::prevElements_r() const { return siblings(*this, SiblingRange::before, true); }

XML* XML::get_r(const String& name, int mode) const {
    const NamePattern pattern(name, (mode & Attributes) != 0);
    return listOf(*this, [&](const XML& node, Found& found) {
        for (XML* member : pattern.arrayOf(const_cast<XML&>(node))) {
            if (pattern.matches(*member)) found.add(member);
        }
    });
}

XML* XML::get_r(int index, int mode) const {
    const TISimpleArray<XML>& members = XMLTree::membersOf(*this, mode);
    InterfacePtr<XML> list = XMLTree::make(List);
    if (index >= 0 && index < members.length()) XMLTree::append(list->children_, members[index]);
    return list.detach();
}

bool XML::iterate(bool (*visit)(const XML& node, void* data), int mode, void* data) const {
    const TISimpleArray<XML>& members = XMLTree::membersOf(*this, mode);
    for (int index = 0; index < members.length(); ++index) {
        const InterfacePtr<const XML> member(members[index]);
        if (!visit(*member, data)) return false;
    }
    return true;
}

} // namespace KrCore
