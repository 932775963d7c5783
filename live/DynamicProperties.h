#pragma once

#include <krcore/foundation/Heap.h>
#include <krcore/live/LiveProperty.h>

namespace KrCore {

class SimpleArray;

/// The dynamic properties of one object, which it owns: a list in the order of their last use, and
/// from some length on an index by exact name and one by ID.
///
/// The order of use decides between several records of one ID, and between spellings of a name
/// when case is ignored; so each record also carries a stamp of its last use, by which an index
/// finds the same record that a walk along the list would.
class DynamicProperties {
public:
    DynamicProperties() = default;
    DynamicProperties(const DynamicProperties&) = delete;
    DynamicProperties& operator=(const DynamicProperties&) = delete;
    ~DynamicProperties();

    /// The record used last of those that match, or null. Finding does not count as use.
    LiveProperty* find(int id) const;
    LiveProperty* find(const String& name, bool ignoreCase) const;

    /// Makes a record the one used last.
    void touch(LiveProperty& record);

    /// Takes over a record, adds to its flags, gives it its place in the order of creation and
    /// makes it the one used last. When memory is exhausted, deletes it and throws.
    void add(LiveProperty* adopted, unsigned extraFlags = 0);
    /// Takes a record out before it is destroyed, since the host's objects that its value holds may
    /// call back. The second form removes all records, the permanent ones with `all` only.
    void remove(LiveProperty& record);
    void removeAll(bool all);

    int length() const { return count_; }
    /// Walks from the record used last.
    LiveProperty* first() const { return head_; }
    static LiveProperty* next(const LiveProperty& record) { return record.next_; }
    /// The records as words, in the order of their creation.
    void listByCreation(SimpleArray& records) const;

private:
    void link(LiveProperty& record);
    void unlink(LiveProperty& record);
    void takeOut(LiveProperty& record);
    static void destroy(LiveProperty& record);
    void enterIndexes(LiveProperty& record);
    void leaveIndexes(LiveProperty& record);
    void rebuildIndexes(unsigned bucketCount);

    LiveProperty* head_ = nullptr;
    LiveProperty** byName_ = nullptr; // bucketCount_ chains, then as many of byID_
    LiveProperty** byID_ = nullptr;
    unsigned bucketCount_ = 0; // 0 or a power of two
    int count_ = 0;
    unsigned nextLocalIndex_ = 0;
    std::uint64_t clock_ = 0;
};

} // namespace KrCore
