#pragma once

#include <krcore/foundation/Heap.h>

#include <cstdlib>
#include <ostream>

namespace KrCore::Testing {

/// The heap's statistics at a moment, or the distance between two.
struct HeapFigures {
    int blocks = 0;
    int bytes = 0;

    static HeapFigures now() {
        HeapFigures figures;
        Heap::getMemoryStatistics(figures.blocks, figures.bytes);
        return figures;
    }
    /// How far the heap has moved since these figures.
    HeapFigures change() const {
        const HeapFigures present = now();
        return {present.blocks - blocks, present.bytes - bytes};
    }
    bool operator==(const HeapFigures&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const HeapFigures& figures) {
        return out << figures.blocks << " blocks, " << figures.bytes << " bytes";
    }
};

/// Adds a block to the figures that is not there, for one that a flush subtracted twice: the memory
/// goes back to malloc behind the heap's back.
inline void makeUpFor(std::size_t request) {
    char* volatile block = static_cast<char*>(Heap::operator new(request));
    std::free(block - 8);
}

} // namespace KrCore::Testing
