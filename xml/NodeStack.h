#pragma once

#include "foundation/WorkStack.h"
#include "xml/XMLTree.h"

#include <cstddef>

namespace KrCore {

/// Nodes that are in no array yet, one reference each. The children of a node gather on top until
/// they are complete and then go into its array, which is allocated once, in the right size.
class NodeStack {
public:
    NodeStack() = default;
    ~NodeStack() {
        for (XML* node : nodes_)
            node->release();
    }
    NodeStack(const NodeStack&) = delete;
    NodeStack& operator=(const NodeStack&) = delete;

    std::size_t size() const noexcept { return nodes_.size(); }
    XML& operator[](std::size_t index) noexcept { return *nodes_[index]; }

    /// Returns the node, borrowed.
    XML* push(InterfacePtr<XML> node) {
        nodes_.push(node.get());
        return node.detach();
    }
    InterfacePtr<XML> pop() noexcept {
        XML* node = nodes_.top();
        nodes_.pop();
        return InterfacePtr<XML>::adopt(node);
    }
    /// Moves the nodes from `first` on into an empty array and links them to `parent`.
    void handOver(TISimpleArray<XML>& array, std::size_t first, XML* parent) {
        if (nodes_.size() == first) return;
        array.adopt(nodes_.begin() + first, static_cast<int>(nodes_.size() - first));
        nodes_.shrinkTo(first);
        for (XML* node : array)
            XMLTree::setParent(*node, parent);
    }

private:
    WorkStack<XML*> nodes_;
};

} // namespace KrCore
