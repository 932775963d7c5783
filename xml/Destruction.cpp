#include "xml/XMLTree.h"

#include <utility>

namespace KrCore {

namespace {

/// Nodes whose last reference is this list's, linked through their parents' field, which nobody
/// needs any more. So a tree of any depth dies without recursion and without memory.
class DyingNodes {
public:
    /// Takes the references that `node` holds on `members`, and the members' links to it.
    void takeMembers(const XML& node, TISimpleArray<XML>& members) {
        if (members.length() == 0) return;
        for (XML* member : members.takeItems()) {
            if (member->getParent() == &node) XMLTree::setParent(*member, nullptr);
            if (member->getRefCount() == 1 && !member->getParent()) {
                XMLTree::setParent(*member, std::exchange(first_, member));
            } else {
                member->release();
            }
        }
    }

    void takeAllOf(XML& node) {
        takeMembers(node, XMLTree::children(node));
        takeMembers(node, XMLTree::attributes(node));
        takeMembers(node, XMLTree::declarations(node));
    }

    XML* takeFirst() {
        XML* node = first_;
        if (!node) return nullptr;
        first_ = node->getParent();
        XMLTree::setParent(*node, nullptr);
        return node;
    }

private:
    XML* first_ = nullptr;
};

} // namespace

XML::~XML() {
    DyingNodes dying;
    dying.takeAllOf(*this);
    while (XML* node = dying.takeFirst()) {
        dying.takeAllOf(*node);
        node->release();
    }
    if (namespace_) namespace_->release();
}

} // namespace KrCore
