#pragma once

#include "foundation/WorkStack.h"

#include <krcore/containers/HashTable.h>
#include <krcore/text/String.h>

#include <cstddef>

namespace KrCore {

/// Numbers texts in the order of their first use and keeps an index for each, `none` at first. For
/// scopes: the index is that of the declaration which counts at the time.
class TextDirectory {
public:
    static constexpr int none = -1;

    /// The text's number; `none` for one that was never added.
    int find(const String& text) const { return static_cast<int>(ids_.find(text)) - 1; }
    int findOrAdd(const String& text) {
        int id = find(text);
        if (id != none) return id;
        id = static_cast<int>(indexes_.size());
        indexes_.push(none);
        ids_.set(text, id + 1);
        return id;
    }
    int& operator[](int id) noexcept { return indexes_[static_cast<std::size_t>(id)]; }

private:
    HashTable ids_; ///< Counted from 1.
    WorkStack<int> indexes_;
};

} // namespace KrCore
