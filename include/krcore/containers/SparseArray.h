#pragma once

#include <krcore/containers/SimpleArray.h>

#include <cstdint>

namespace KrCore {

/// A map from 64-bit keys to 64-bit values: integers, or pointers that it never owns.
///
/// Iteration goes bucket by bucket, within a bucket from the item inserted last; the order changes
/// whenever the table grows or shrinks. Copies are deep: items are never shared between two maps.
/// Only `removeData` and `erase` give buckets back; `remove` never does.
///
/// One map belongs to one thread at a time. What needs more memory than there is throws
/// `OutOfMemory` and leaves the items as they were; `+=` may stop half-way then.
class KR_API SparseArray : public Heap {
public:
    SparseArray() = default;
    SparseArray(const SparseArray& other);
    ~SparseArray();
    SparseArray& operator=(const SparseArray& other);

    int length() const { return count_; }
    void set(long long key, long long value);
    /// The value, or 0 when there is none; `hasKey` tells a stored 0 from a missing key.
    long long find(long long key) const;
    long long operator[](long long key) const { return find(key); }
    bool hasKey(long long key) const { return findItem(key) != nullptr; }
    /// The key of the first item, in iteration order, that holds `value`, or -1.
    long long findKey(long long value) const;

    /// Removes the item and returns its value, 0 when there is none.
    long long remove(long long key);
    /// Removes every item that holds `value`.
    void removeData(long long value);
    /// Removes every item for which `test(key, value)` is true. Gives no buckets back.
    template <class Test>
    void removeIf(Test&& test);
    void erase();

    /// Make the length of the array that of the map and fill it in iteration order.
    void getKeys(SimpleArray& keys) const;
    void getData(SimpleArray& values) const;
    /// Calls `visit` for the items present now, in iteration order, until it returns false. It may
    /// write the value through the pointer and change this map: items that it removes are not
    /// visited later, items that it adds are left out.
    void forEach(bool (*visit)(long long key, long long* value, long long data), long long data);

    /// Calls `visit(key, value)` for each item in iteration order; it must not change this map.
    template <class Visit>
    void visitItems(Visit&& visit) const;

    /// The same keys with the same values, in whatever order.
    bool operator==(const SparseArray& other) const;
    bool operator!=(const SparseArray& other) const { return !(*this == other); }
    /// Sets every item of `other` in this map, in the iteration order of `other`.
    SparseArray& operator+=(const SparseArray& other);

protected:
    /// Once halves 32 or more buckets, and makes fewer than 32 into 32, when fewer than 30 in 100
    /// are in use. Without memory for the new table the old one stays.
    void smartShrink();

private:
    struct Item : Heap {
        Item(Item* nextItem, long long itemKey, long long itemValue)
            : next(nextItem), key(itemKey), value(itemValue) {}

        static Item* of(long long word) {
            return reinterpret_cast<Item*>(static_cast<std::intptr_t>(word));
        }
        static long long wordOf(const Item* item) { return reinterpret_cast<std::intptr_t>(item); }

        Item* next;
        long long key;
        long long value;
    };

    Item* findItem(long long key) const;
    Item* head(int bucket) const { return Item::of(buckets_.getData()[bucket]); }
    int bucketOf(long long key) const;
    template <class Pick>
    void fill(SimpleArray& words, Pick&& pick) const;
    void grow();
    void rehash(int bucketCount);

    int count_ = 0;
    SimpleArray buckets_;
};

template <class Visit>
void SparseArray::visitItems(Visit&& visit) const {
    for (const long long word : buckets_) {
        for (const Item* item = Item::of(word); item; item = item->next) {
            visit(item->key, item->value);
        }
    }
}

template <class Test>
void SparseArray::removeIf(Test&& test) {
    for (int bucket = 0; bucket < buckets_.length(); ++bucket) {
        Item* kept = nullptr;
        for (Item* item = head(bucket); item;) {
            Item* next = item->next;
            if (!test(item->key, item->value)) {
                kept = item;
            } else {
                if (kept) {
                    kept->next = next;
                } else {
                    buckets_[bucket] = Item::wordOf(next);
                }
                delete item;
                --count_;
            }
            item = next;
        }
    }
}

} // namespace KrCore
