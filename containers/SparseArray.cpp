#include <krcore/containers/SparseArray.h>

#include "containers/BucketLoad.h"

#include <utility>

namespace KrCore {

namespace {

constexpr int firstBucketCount = 32;

} // namespace

SparseArray::SparseArray(const SparseArray& other) : SparseArray() {
    *this += other; // The object is complete by now: a failure here runs its destructor.
}

SparseArray::~SparseArray() { erase(); }

SparseArray& SparseArray::operator=(const SparseArray& other) {
    if (this == &other) return *this;
    SparseArray copy(other);
    std::swap(count_, copy.count_);
    std::swap(buckets_, copy.buckets_);
    return *this;
}

int SparseArray::bucketOf(long long key) const {
    return static_cast<int>((key & 0x7FFFFFFF) % buckets_.length());
}

SparseArray::Item* SparseArray::findItem(long long key) const {
    if (buckets_.length() == 0) return nullptr;
    Item* item = head(bucketOf(key));
    while (item && item->key != key) {
        item = item->next;
    }
    return item;
}

long long SparseArray::find(long long key) const {
    const Item* item = findItem(key);
    return item ? item->value : 0;
}

long long SparseArray::findKey(long long value) const {
    for (const long long word : buckets_) {
        for (const Item* item = Item::of(word); item; item = item->next) {
            if (item->value == value) return item->key;
        }
    }
    return -1;
}

void SparseArray::set(long long key, long long value) {
    if (Item* item = findItem(key)) {
        item->value = value;
        return;
    }
    grow();
    long long& bucket = buckets_[bucketOf(key)];
    bucket = Item::wordOf(new Item(Item::of(bucket), key, value));
    ++count_;
}

void SparseArray::grow() {
    const int bucketCount = buckets_.length();
    if (bucketCount == 0) {
        buckets_.setSize(firstBucketCount);
    } else if (BucketLoad::isHigh(count_, bucketCount)) {
        rehash(bucketCount * 2);
    }
}

/// Pushes each item onto the front of its new chain, so that chains come out reversed.
void SparseArray::rehash(int bucketCount) {
    SimpleArray old;
    old.setSize(bucketCount);
    std::swap(old, buckets_);
    long long* heads = &buckets_[0];
    for (const long long word : old) {
        for (Item* item = Item::of(word); item;) {
            Item* next = item->next;
            long long& bucket = heads[bucketOf(item->key)];
            item->next = Item::of(bucket);
            bucket = Item::wordOf(item);
            item = next;
        }
    }
}

void SparseArray::smartShrink() {
    const int bucketCount = buckets_.length();
    if (bucketCount == 0) {
        buckets_.erase();
        return;
    }
    if (!BucketLoad::isLow(count_, bucketCount)) return;
    try {
        // Kept: 32 buckets become 16, and those 32 again, though the table never starts with 16.
        // Hosts see the step in the order of keys (held by
        // SparseArray.StepsBetween32And16BucketsWhenSparse).
        rehash(bucketCount >= firstBucketCount ? bucketCount / 2 : firstBucketCount);
    } catch (const OutOfMemory&) {
        return; // The present table serves as well.
    }
}

long long SparseArray::remove(long long key) {
    if (buckets_.length() == 0) return 0;
    long long& bucket = buckets_[bucketOf(key)];
    Item* previous = nullptr;
    Item* item = Item::of(bucket);
    while (item && item->key != key) {
        previous = item;
        item = item->next;
    }
    if (!item) return 0;
    if (previous) {
        previous->next = item->next;
    } else {
        bucket = Item::wordOf(item->next);
    }
    --count_;
    const long long value = item->value;
    delete item;
    return value;
}

void SparseArray::removeData(long long value) {
    removeIf([value](long long, long long held) { return held == value; });
    smartShrink();
}

void SparseArray::erase() {
    removeIf([](long long, long long) { return true; });
    buckets_.erase();
}

/// One word per item. In place: `operator[]` would ask for each whether the array is shared.
template <class Pick>
void SparseArray::fill(SimpleArray& words, Pick&& pick) const {
    words.setSize(count_);
    if (count_ == 0) return;
    long long* word = &words[0];
    visitItems([&](long long key, long long value) { *word++ = pick(key, value); });
}

void SparseArray::getKeys(SimpleArray& keys) const {
    fill(keys, [](long long key, long long) { return key; });
}

void SparseArray::getData(SimpleArray& values) const {
    fill(values, [](long long, long long value) { return value; });
}

void SparseArray::forEach(bool (*visit)(long long key, long long* value, long long data),
                          long long data) {
    SimpleArray keys; // A list of its own, since `visit` may move or free the items.
    getKeys(keys);
    for (const long long key : keys) {
        Item* item = findItem(key);
        if (item && !visit(key, &item->value, data)) return;
    }
}

bool SparseArray::operator==(const SparseArray& other) const {
    if (count_ != other.count_) return false;
    for (const long long word : buckets_) {
        for (const Item* item = Item::of(word); item; item = item->next) {
            const Item* match = other.findItem(item->key);
            if (!match || match->value != item->value) return false;
        }
    }
    return true;
}

SparseArray& SparseArray::operator+=(const SparseArray& other) {
    if (this == &other) return *this;
    other.visitItems([this](long long key, long long value) { set(key, value); });
    return *this;
}

} // namespace KrCore
