#include "xml/NodeBatches.h"

#include "foundation/AtomicCount.h"

#include <new>

namespace KrCore {

struct NodeBatches::Block : Heap {
    static_assert(nodesPerBlock <= 255, "a node keeps its place in a byte");

    int remaining = nodesPerBlock; ///< Places that are in use or may yet be.
    alignas(XML) std::byte places[nodesPerBlock][sizeof(XML)];

    void give(int count) {
        if (addTo(remaining, -count) == 0) delete this;
    }
};

XML* NodeBatches::makeNode(int type) {
    if (singleNodes_ > 0) {
        XML* node = new XML(XML::Plain{}, type);
        --singleNodes_;
        return node;
    }
    if (!block_) {
        block_ = new Block;
        used_ = 0;
    }
    XML* node = ::new (static_cast<void*>(block_->places[used_])) XML(XML::Plain{}, type);
    node->place_ = static_cast<unsigned char>(++used_);
    // A full block belongs to its nodes alone.
    if (used_ == nodesPerBlock) block_ = nullptr;
    return node;
}

NodeBatches::~NodeBatches() {
    if (block_) block_->give(nodesPerBlock - used_);
}

void NodeBatches::leave(XML* node, int place) noexcept {
    auto* first = reinterpret_cast<std::byte*>(node) - std::size_t(place - 1) * sizeof(XML);
    reinterpret_cast<Block*>(first - offsetof(Block, places))->give(1);
}

void XML::operator delete(XML* node, std::destroying_delete_t) {
    const int place = node->place_;
    node->XML::~XML();
    if (place == 0) {
        Heap::operator delete(node);
    } else {
        NodeBatches::leave(node, place);
    }
}

} // namespace KrCore
