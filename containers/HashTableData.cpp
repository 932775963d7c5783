#include "containers/HashTableData.h"

#include "containers/BucketLoad.h"
#include "foundation/AtomicCount.h"

#include <atomic>
#include <cstring>
#include <memory>
#include <utility>

namespace KrCore {

namespace {

constexpr int firstBucketCount = 16;
/// Chains of so few items are walked faster than a whole key is hashed.
constexpr int itemsWithoutIndex = 8;

/// The smallest index of which the items fill no more than half.
int indexCapacity(int items) {
    int capacity = firstBucketCount;
    while (capacity / 2 < items) {
        capacity *= 2;
    }
    return capacity;
}

} // namespace

std::uint64_t KeyText::foldUncommon(std::uint64_t word) {
    std::uint64_t folded = 0;
    for (int shift = 0; shift < 64; shift += 16) {
        const auto unit = foldUnit(static_cast<unsigned short>(word >> shift));
        folded |= static_cast<std::uint64_t>(unit) << shift;
    }
    return folded;
}

std::uint32_t KeyText::uncommonHash(const String& key) { return hashFolded(key, foldFour); }

HashTable::Index::~Index() { close(); }

void HashTable::Index::open(int capacity) {
    const auto byteCount = static_cast<std::size_t>(capacity) * sizeof(Entry);
    entries_ = static_cast<Entry*>(Heap::operator new(byteCount));
    std::memset(static_cast<void*>(entries_), 0, byteCount);
    mask_ = static_cast<std::uint32_t>(capacity) - 1;
}

void HashTable::Index::close() noexcept {
    Heap::operator delete(entries_);
    entries_ = nullptr;
    mask_ = 0;
}

void HashTable::Index::swap(Index& other) noexcept {
    std::swap(entries_, other.entries_);
    std::swap(mask_, other.mask_);
}

void HashTable::Index::add(Item& item) noexcept {
    std::uint32_t place = item.indexHash & mask_;
    while (entries_[place].item) {
        place = (place + 1) & mask_;
    }
    entries_[place] = {&item, item.indexHash};
}

void HashTable::Index::remove(const Item& item) noexcept {
    std::uint32_t hole = item.indexHash & mask_;
    while (entries_[hole].item != &item) {
        hole = (hole + 1) & mask_;
    }
    // Entries behind the hole move up unless that would put them before their home place.
    for (std::uint32_t place = (hole + 1) & mask_; entries_[place].item;
         place = (place + 1) & mask_) {
        const std::uint32_t fromHome = (place - entries_[place].hash) & mask_;
        if (fromHome >= ((place - hole) & mask_)) {
            entries_[hole] = entries_[place];
            hole = place;
        }
    }
    entries_[hole] = {nullptr, 0};
}

HashTable::Table::~Table() {
    for (const long long word : buckets) {
        for (Item* item = Item::of(word); item;) {
            delete std::exchange(item, item->next);
        }
    }
    while (removed) {
        delete std::exchange(removed, removed->previous);
    }
}

HashTable::Table* HashTable::Table::clone() const {
    std::unique_ptr<Table> copy(new Table);
    if (count > 0) {
        copy->buckets.setSize(buckets.length());
        long long* heads = &copy->buckets[0];
        for (int bucket = 0; bucket < buckets.length(); ++bucket) {
            Item* last = nullptr;
            for (const Item* item = head(bucket); item; item = item->next) {
                Item* twin = new Item(*item);
                if (last) {
                    last->next = twin;
                } else {
                    heads[bucket] = Item::wordOf(twin);
                }
                twin->previous = last;
                last = twin;
                ++copy->count;
            }
        }
    }
    copy->highestStamp = highestStamp;
    copy->lowestStamp = lowestStamp;
    copy->isReversed = isReversed;
    copy->mayHaveTwins = mayHaveTwins;
    copy->reserveIndex(count);
    return copy.release();
}

bool HashTable::Table::isShared() {
    return std::atomic_ref(refCount).load(std::memory_order_acquire) - walkers > 1;
}

bool HashTable::Table::isAbandoned() const { return refCount == walkers; }

HashTable::Item* HashTable::Table::findInIndex(const String& key, bool ignoreCase) const {
    Item* best = nullptr;
    index.first(KeyText::fullHash(key), [&](Item& item) {
        const bool matches = KeyText::equal(item.key, key, ignoreCase);
        if (matches && (!best || isBefore(item, *best))) best = &item;
        return false; // All of them.
    });
    return best;
}

HashTable::Item* HashTable::Table::findInChain(const String& key, bool ignoreCase) const {
    const std::uint32_t hash = KeyText::shortHash(key);
    Item* item = head(static_cast<int>(hash % static_cast<std::uint32_t>(buckets.length())));
    while (item && (item->hash != hash || !KeyText::equal(item->key, key, ignoreCase))) {
        item = item->next;
    }
    return item;
}

HashTable::Item& HashTable::Table::add(const String& key, long long value) {
    std::unique_ptr<Item> item(new Item(key, value));
    grow();
    reserveIndex(count + 1);
    link(*item);
    return *item.release();
}

void HashTable::Table::rename(Item& item, const String& key) {
    if (KeyText::equalExactly(item.key, key)) return;
    item.key = key;
    mayHaveTwins = true;
}

void HashTable::Table::link(Item& item) noexcept {
    item.stamp = isReversed ? --lowestStamp : ++highestStamp;
    pushFront(buckets[bucketOf(item)], item);
    ++count;
    if (index.isActive()) {
        item.indexHash = KeyText::fullHash(item.key);
        index.add(item);
    }
}

void HashTable::Table::pushFront(long long& bucket, Item& item) noexcept {
    item.previous = nullptr;
    item.next = Item::of(bucket);
    if (item.next) item.next->previous = &item;
    bucket = Item::wordOf(&item);
}

void HashTable::Table::unlink(Item& item) noexcept {
    if (item.next) item.next->previous = item.previous;
    if (item.previous) {
        item.previous->next = item.next;
    } else {
        buckets[bucketOf(item)] = Item::wordOf(item.next);
    }
    if (index.isActive()) index.remove(item);
    --count;
}

void HashTable::Table::remove(Item& item) noexcept {
    unlink(item);
    if (walkers == 0) {
        delete &item;
        return;
    }
    // A walk may stand on the item, and goes on by its `next`.
    item.stamp = Item::removedStamp;
    item.previous = removed;
    removed = &item;
}

void HashTable::Table::endWalk() noexcept {
    if (--walkers > 0 || !removed) return;
    while (removed) {
        delete std::exchange(removed, removed->previous);
    }
    shrink();
}

void HashTable::Table::grow() {
    const int bucketCount = buckets.length();
    if (bucketCount == 0) {
        buckets.setSize(firstBucketCount);
    } else if (walkers == 0 && BucketLoad::isHigh(count, bucketCount)) {
        rehash(bucketCount * 2);
    }
}

void HashTable::Table::shrink() noexcept {
    if (walkers > 0) return;
    if (count == 0) {
        buckets.erase();
        index.close();
        mayHaveTwins = false;
        return;
    }
    try {
        while (buckets.length() > firstBucketCount && BucketLoad::isLow(count, buckets.length())) {
            rehash(buckets.length() / 2);
        }
    } catch (const OutOfMemory&) {
        return; // The larger table serves as well.
    }
}

/// Pushes each item onto the front of its new chain, so that chains come out reversed.
void HashTable::Table::rehash(int bucketCount) {
    SimpleArray old;
    old.setSize(bucketCount);
    if (index.isActive()) makeIndex(indexCapacity(count));
    std::swap(old, buckets);
    long long* heads = &buckets[0];
    for (const long long word : old) {
        for (Item* item = Item::of(word); item;) {
            Item* next = item->next;
            pushFront(heads[bucketOf(*item)], *item);
            item = next;
        }
    }
    isReversed = !isReversed;
}

/// Sees to it that `itemCount` items have room in the index, if they are enough to need one.
void HashTable::Table::reserveIndex(int itemCount) {
    if (itemCount <= itemsWithoutIndex && !index.isActive()) return;
    if (index.isActive() && index.hasRoomFor(itemCount)) return;
    makeIndex(indexCapacity(itemCount));
}

void HashTable::Table::makeIndex(int capacity) {
    Index fresh;
    fresh.open(capacity);
    for (const long long word : buckets) {
        for (Item* item = Item::of(word); item; item = item->next) {
            if (!index.isActive()) item->indexHash = KeyText::fullHash(item->key);
            fresh.add(*item);
        }
    }
    index.swap(fresh);
}

} // namespace KrCore
