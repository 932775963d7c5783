#pragma once

#include "containers/KeyText.h"

#include <krcore/containers/HashTable.h>
#include <krcore/text/String.h>

#include <cstdint>

namespace KrCore {

struct HashTable::Item : Heap {
    Item(const String& itemKey, long long itemValue)
        : key(itemKey), hash(KeyText::shortHash(itemKey)), value(itemValue) {}
    Item(const Item& other)
        : Heap(), key(other.key), hash(other.hash), indexHash(other.indexHash), value(other.value),
          stamp(other.stamp) {}
    Item& operator=(const Item&) = delete;

    static Item* of(long long word) {
        return reinterpret_cast<Item*>(static_cast<std::intptr_t>(word));
    }
    static long long wordOf(const Item* item) { return reinterpret_cast<std::intptr_t>(item); }
    bool isRemoved() const { return stamp == removedStamp; }

    static constexpr std::int64_t removedStamp = INT64_MIN;

    String key;
    Item* next = nullptr;
    std::uint32_t hash;          ///< The short hash that chooses the bucket.
    std::uint32_t indexHash = 0; ///< The hash of the whole key, while there is an index.
    long long value;
    Item* previous = nullptr; ///< In the chain; of a removed item, the next removed one.
    std::int64_t stamp = 0;   ///< Rank within the chain, see Table::isBefore.
};

/// All items by the hash of their whole keys without case: an open-addressed table beside the
/// chains, since the short hash gathers many keys in one chain. It answers which items match; their
/// ranks decide which one comes first in the chain.
class HashTable::Index : public Heap {
public:
    Index() = default;
    ~Index();
    Index(const Index&) = delete;
    Index& operator=(const Index&) = delete;

    /// False for small tables, which do with their chains.
    bool isActive() const { return entries_ != nullptr; }
    bool hasRoomFor(int count) const {
        return static_cast<long long>(count) * 4 <= static_cast<long long>(capacity()) * 3;
    }
    /// An empty index of `capacity` places, a power of two.
    void open(int capacity);
    void close() noexcept;
    void swap(Index& other) noexcept;

    /// Needs room, and the item's `indexHash`.
    void add(Item& item) noexcept;
    void remove(const Item& item) noexcept;

    /// The first item with this hash that passes `test(Item&)`, or null.
    template <class Test>
    Item* first(std::uint32_t hash, Test&& test) const {
        std::uint32_t place = hash & mask_;
        while (entries_[place].item &&
               !(entries_[place].hash == hash && test(*entries_[place].item))) {
            place = (place + 1) & mask_;
        }
        return entries_[place].item;
    }

private:
    struct Entry {
        Item* item;
        std::uint32_t hash;
    };

    int capacity() const { return entries_ ? static_cast<int>(mask_ + 1) : 0; }

    Entry* entries_ = nullptr;
    std::uint32_t mask_ = 0;
};

/// What tables share: buckets, items and their count.
struct HashTable::Table : Heap {
    Table() = default;
    ~Table();
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    [[nodiscard]] Table* clone() const;
    bool isShared();
    /// A walk is going on and only walks still hold the table.
    bool isAbandoned() const;

    Item* find(const String& key, bool ignoreCase) const {
        if (!index.isActive()) return count > 0 ? findInChain(key, ignoreCase) : nullptr;
        return ignoreCase || mayHaveTwins ? findInIndex(key, ignoreCase) : findOnly(key);
    }
    Item& add(const String& key, long long value);
    /// Gives the item the new spelling of its key.
    void rename(Item& item, const String& key);
    /// Takes the item out; it is freed now or when the last walk ends.
    void remove(Item& item) noexcept;
    void grow();
    void shrink() noexcept;

    Item* head(int bucket) const { return Item::of(buckets.getData()[bucket]); }
    int bucketOf(const Item& item) const {
        return static_cast<int>(item.hash % static_cast<std::uint32_t>(buckets.length()));
    }
    /// Calls `visit(const Item&)` in iteration order; it must not change the table.
    template <class Visit>
    void visitItems(Visit&& visit) const {
        for (const long long word : buckets) {
            for (const Item* item = Item::of(word); item; item = item->next) {
                visit(*item);
            }
        }
    }
    void endWalk() noexcept;

    int refCount = 1;
    /// Walks in progress. Meanwhile nothing is rehashed, removed items are kept, and copies of the
    /// table are deep: `refCount` then counts one owner and the walks.
    int walkers = 0;
    int count = 0;
    SimpleArray buckets;
    Index index;
    /// The range of all ranks given out.
    std::int64_t highestStamp = 0;
    std::int64_t lowestStamp = 0;

private:
    /// By exact key, while no two items can have the same one.
    Item* findOnly(const String& key) const;
    Item* findInIndex(const String& key, bool ignoreCase) const;
    Item* findInChain(const String& key, bool ignoreCase) const;
    void link(Item& item) noexcept;
    void unlink(Item& item) noexcept;
    void pushFront(long long& bucket, Item& item) noexcept;
    void rehash(int bucketCount);
    void makeIndex(int capacity);
    void reserveIndex(int itemCount);
    /// Whether `item` stands before `other`, both with one short hash. Items go to the front of
    /// their chain, and each rehash turns those of one hash round; so their ranks rise or fall
    /// towards the front in turn. Items of different hashes may be mixed when chains join.
    bool isBefore(const Item& item, const Item& other) const {
        return isReversed ? item.stamp < other.stamp : item.stamp > other.stamp;
    }

    bool isReversed = false;
    bool mayHaveTwins = false; ///< Two items may have one identical key.
    Item* removed = nullptr;
};

// Defined here to be part of the look-up by exact key, without a call between.

inline HashTable::Item* HashTable::Table::findOnly(const String& key) const {
    return index.first(KeyText::fullHash(key),
                       [&key](Item& item) { return KeyText::equalExactly(item.key, key); });
}

} // namespace KrCore
