#include <krcore/containers/HashTable.h>

#include "containers/HashTableData.h"
#include "foundation/AtomicCount.h"

#include <utility>

namespace KrCore {

HashTable::Table* HashTable::share(Table* table) {
    if (!table || table->count == 0) return nullptr;
    if (table->walkers > 0) return table->clone();
    countUp(table->refCount);
    return table;
}

void HashTable::release(Table* table) noexcept {
    if (table && countDown(table->refCount) <= 0) delete table;
}

HashTable::HashTable(const HashTable& other) : Heap(), table_(share(other.table_)) {}

HashTable::~HashTable() { release(table_); }

HashTable& HashTable::operator=(const HashTable& other) {
    HashTable copy(other);
    std::swap(table_, copy.table_);
    return *this;
}

HashTable& HashTable::operator=(HashTable&& other) noexcept {
    std::swap(table_, other.table_);
    return *this;
}

HashTable::Table& HashTable::unique() {
    if (!table_) {
        table_ = new Table;
    } else if (table_->isShared()) {
        release(std::exchange(table_, table_->clone()));
    }
    return *table_;
}

int HashTable::length() const { return table_ ? table_->count : 0; }

const HashTable::Item* HashTable::findItem(const String& key, bool ignoreCase) const {
    return table_ ? table_->find(key, ignoreCase) : nullptr;
}

long long HashTable::find(const String& key, bool ignoreCase) const {
    const Item* item = table_ ? table_->find(key, ignoreCase) : nullptr;
    return item ? item->value : 0;
}

bool HashTable::hasKey(const String& key, bool ignoreCase) const {
    return table_ && table_->find(key, ignoreCase);
}

const String* HashTable::findKey(long long value) const {
    if (!table_) return nullptr;
    for (const long long word : table_->buckets) {
        for (const Item* item = Item::of(word); item; item = item->next) {
            if (item->value == value) return &item->key;
        }
    }
    return nullptr;
}

const String& HashTable::set(const String& key, long long value, bool ignoreCase) {
    const String given(key); // It may be a stored key, which unsharing can free.
    Table& table = unique();
    Item* item = table.find(given, ignoreCase);
    if (!item) return table.add(given, value).key;
    if (ignoreCase) table.rename(*item, given);
    item->value = value;
    return item->key;
}

long long HashTable::remove(const String& key, bool ignoreCase) {
    if (!hasKey(key, ignoreCase)) return 0;
    const String given(key);
    Table& table = unique();
    Item& item = *table.find(given, ignoreCase);
    const long long value = item.value;
    table.remove(item);
    table.shrink();
    return value;
}

void HashTable::removeData(long long value) {
    if (!findKey(value)) return;
    Table& table = unique();
    for (int bucket = 0; bucket < table.buckets.length(); ++bucket) {
        for (Item* item = table.head(bucket); item;) {
            Item* next = item->next;
            if (item->value == value) table.remove(*item);
            item = next;
        }
    }
    table.shrink();
}

void HashTable::erase() { release(std::exchange(table_, nullptr)); }

void HashTable::getKeys(TSimpleArray<const String>& keys) const {
    keys.setSize(length());
    if (length() == 0) return;
    long long* word = &static_cast<SimpleArray&>(keys)[0];
    table_->visitItems(
        [&word](const Item& item) { *word++ = TSimpleArray<const String>::toWord(&item.key); });
}

void HashTable::getData(SimpleArray& values) const {
    values.setSize(length());
    if (length() == 0) return;
    long long* word = &values[0];
    table_->visitItems([&word](const Item& item) { *word++ = item.value; });
}

/// Keeps the table alive and its buckets in place.
class HashTable::Walk {
public:
    explicit Walk(Table& table)
        : table_(table), lowestStamp_(table.lowestStamp), highestStamp_(table.highestStamp) {
        ++table.walkers;
        countUp(table.refCount);
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk() {
        table_.endWalk();
        release(&table_);
    }

    /// Neither removed nor added since the walk began.
    bool concerns(const Item& item) const {
        return item.stamp >= lowestStamp_ && item.stamp <= highestStamp_;
    }

private:
    Table& table_;
    std::int64_t lowestStamp_;
    std::int64_t highestStamp_;
};

void HashTable::forEach(bool (*visit)(const String& key, long long* value, long long data),
                        long long data) {
    if (length() == 0) return;
    Table& table = unique();
    const Walk walk(table);
    for (int bucket = 0; bucket < table.buckets.length(); ++bucket) {
        for (Item* item = table.head(bucket); item; item = item->next) {
            if (!walk.concerns(*item)) continue;
            const bool keep = visit(item->key, &item->value, data);
            if (table.isAbandoned()) return; // Perhaps there is no `this` any more, either.
            if (!keep && !item->isRemoved()) table.remove(*item);
        }
    }
}

HashTable& HashTable::operator+=(const HashTable& other) {
    const HashTable source(other); // Setting in a shared table leaves the items of `source` alone.
    if (!source.table_) return *this;
    source.table_->visitItems([this](const Item& item) { set(item.key, item.value); });
    return *this;
}

bool HashTable::operator==(const HashTable& other) const {
    if (table_ == other.table_) return true;
    if (length() == 0 || other.length() == 0) return length() == other.length();
    const int bucketCount = table_->buckets.length();
    if (bucketCount != other.table_->buckets.length()) return false;
    for (int bucket = 0; bucket < bucketCount; ++bucket) {
        const Item* left = table_->head(bucket);
        const Item* right = other.table_->head(bucket);
        for (; left && right; left = left->next, right = right->next) {
            if (left->value != right->value || !KeyText::equalExactly(left->key, right->key)) {
                return false;
            }
        }
        if (left || right) return false;
    }
    return true;
}

void HashTable::smartGrow() { unique().grow(); }

void HashTable::smartShrink() {
    if (table_) unique().shrink();
}

} // namespace KrCore
