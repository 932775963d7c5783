#pragma once

#include "xml/XMLTree.h"

#include <cstddef>

namespace KrCore {

/// Makes the nodes of a tree: the first ones singly, all further ones in blocks of many, as asking
/// the heap for each would take longer than all the rest. A block goes back to the heap with the
/// last node in it, so a single node that outlives its large tree keeps a whole block.
class NodeBatches {
public:
    NodeBatches() = default;
    ~NodeBatches();
    NodeBatches(const NodeBatches&) = delete;
    NodeBatches& operator=(const NodeBatches&) = delete;

    /// As `XMLTree::make`. One reference.
    InterfacePtr<XML> make(int type) { return InterfacePtr<XML>::adopt(makeNode(type)); }

private:
    friend class XML;
    struct Block;

    static constexpr int nodesPerBlock = 64;

    XML* makeNode(int type);
    /// Takes back the memory of a destroyed node; `place` counts from 1.
    static void leave(XML* node, int place) noexcept;

    Block* block_ = nullptr; ///< The one that still has room.
    int used_ = 0;           ///< Of the block.
    int singleNodes_ = nodesPerBlock;
};

} // namespace KrCore
