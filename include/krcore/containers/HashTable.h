#pragma once

#include <krcore/containers/TSimpleArray.h>
#include <krcore/foundation/Export.h>
#include <krcore/foundation/Heap.h>

namespace KrCore {

class String;

/// A map from `String` keys to 64-bit values: integers, or pointers that it never owns.
///
/// Every member that takes `ignoreCase` can be used either way on the same table. Keys are chained
/// in buckets by a short hash of their first five units in upper case; where several keys match
/// without case, the first in chain order is meant, which changes sides whenever the table grows or
/// shrinks. Iteration goes bucket by bucket and within a chain from the key inserted last.
///
/// Tables are values: copying shares the items until either side writes. Pointers and references to
/// keys are borrowed and last until the next member that writes, on this table or on the one it
/// shares its items with. One table belongs to one thread at a time. What needs more memory than
/// there is throws `OutOfMemory` and leaves the items as they were; `+=` may stop half-way then.
class KR_API HashTable : public Heap {
public:
    HashTable() = default;
    HashTable(const HashTable& other);
    HashTable(HashTable&& other) noexcept : table_(other.table_) { other.table_ = nullptr; }
    ~HashTable();
    HashTable& operator=(const HashTable& other);
    HashTable& operator=(HashTable&& other) noexcept;

    int length() const;
    /// Inserts or overwrites and returns the stored key. With `ignoreCase` an item found takes over
    /// the given key, so that its letter case wins; it may then equal an exact one further behind.
    const String& set(const String& key, long long value, bool ignoreCase = false);
    /// The value, or 0 when there is none; `hasKey` tells a stored 0 from a missing key.
    long long find(const String& key, bool ignoreCase = false) const;
    long long operator[](const String& key) const { return find(key, false); }
    bool hasKey(const String& key, bool ignoreCase = false) const;
    /// The key of the first item that holds `value`, or null.
    const String* findKey(long long value) const;

    /// Removes the item and returns its value, 0 when there is none.
    long long remove(const String& key, bool ignoreCase = false);
    /// Removes every item that holds `value`, then shrinks the table once.
    void removeData(long long value);
    void erase();

    /// Make the length of the array that of the table and fill it in iteration order.
    void getKeys(TSimpleArray<const String>& keys) const;
    void getData(SimpleArray& values) const;
    /// Calls `visit` for each item. It may write the value through the pointer; when it returns
    /// false the item is removed on the spot. It may also change this table: items that it removes
    /// are not visited later, items that it adds are left out. The table shrinks after the walk.
    /// The walk ends early when this table is erased, assigned to or destroyed.
    void forEach(bool (*visit)(const String& key, long long* value, long long data),
                 long long data);

    /// Sets every item of `other` in this table, by exact key.
    HashTable& operator+=(const HashTable& other);
    /// The same items in the same chains: tables with equal items but another number of buckets
    /// or another order within a chain are not equal.
    bool operator==(const HashTable& other) const;
    bool operator!=(const HashTable& other) const { return !(*this == other); }

protected:
    struct Item;

    /// The item that `find` means, or null.
    const Item* findItem(const String& key, bool ignoreCase) const;
    /// Makes 16 buckets, or twice as many when more than 50 in 100 are in use.
    void smartGrow();
    /// Halves the buckets, to no fewer than 16, while fewer than 30 in 100 are in use; releases
    /// them when the table is empty. Without memory for the smaller table the old one stays.
    void smartShrink();

private:
    class Index;
    struct Table;
    class Walk;

    Table& unique();
    static Table* share(Table* table);
    static void release(Table* table) noexcept;

    Table* table_ = nullptr;
};

} // namespace KrCore
