#include "live/DynamicProperties.h"

#include "live/NameHash.h"
#include "live/PointerWord.h"

#include <krcore/containers/SimpleArray.h>

#include <algorithm>
#include <memory>

namespace KrCore {

namespace {

// A walk along a few records is as fast as an index, and takes no memory.
constexpr int longestWalk = 8;
constexpr unsigned firstBucketCount = 32;

unsigned bucketOf(int id, unsigned bucketCount) {
    // Generated IDs count up and four-character ones differ in their upper bytes; mix both.
    const std::uint32_t mixed = static_cast<std::uint32_t>(id) * 2654435769U;
    return (mixed ^ (mixed >> 16U)) & (bucketCount - 1);
}

} // namespace

DynamicProperties::~DynamicProperties() {
    removeAll(true);
    Heap::operator delete(byName_);
}

LiveProperty* DynamicProperties::find(int id) const {
    // A name is resolved right before its ID is used, as a rule, and is the first one then.
    if (!head_ || head_->id_ == id) return head_;
    if (!bucketCount_) {
        LiveProperty* record = head_;
        while (record && record->id_ != id)
            record = record->next_;
        return record;
    }
    LiveProperty* best = nullptr;
    for (LiveProperty* record = byID_[bucketOf(id, bucketCount_)]; record;
         record = record->nextByID_) {
        if (record->id_ == id && (!best || record->recency_ > best->recency_)) best = record;
    }
    return best;
}

LiveProperty* DynamicProperties::find(const String& name, bool ignoreCase) const {
    if (ignoreCase) {
        LiveProperty* record = head_;
        while (record && record->name_.ucmp(name) != 0)
            record = record->next_;
        return record;
    }
    if (!head_ || head_->name_ == name) return head_;
    if (!bucketCount_) {
        LiveProperty* record = head_;
        while (record && !(record->name_ == name))
            record = record->next_;
        return record;
    }
    const std::uint32_t hash = NameHash::of(name);
    LiveProperty* best = nullptr;
    for (LiveProperty* record = byName_[hash & (bucketCount_ - 1)]; record;
         record = record->nextByName_) {
        if (record->nameHash_ == hash && record->name_ == name &&
            (!best || record->recency_ > best->recency_))
            best = record;
    }
    return best;
}

void DynamicProperties::touch(LiveProperty& record) {
    if (&record == head_) return;
    unlink(record);
    link(record);
}

void DynamicProperties::link(LiveProperty& record) {
    record.next_ = head_;
    record.previous_ = nullptr;
    if (head_) head_->previous_ = &record;
    head_ = &record;
    record.recency_ = ++clock_;
}

void DynamicProperties::unlink(LiveProperty& record) {
    (record.previous_ ? record.previous_->next_ : head_) = record.next_;
    if (record.next_) record.next_->previous_ = record.previous_;
}

void DynamicProperties::add(LiveProperty* adopted, unsigned extraFlags) {
    std::unique_ptr<LiveProperty> record(adopted);
    record->nameHash_ = NameHash::of(record->name_);
    const unsigned wanted = count_ < longestWalk ? 0U : std::max(bucketCount_, firstBucketCount);
    const bool isCrowded = static_cast<unsigned>(count_) >= wanted;
    const unsigned bucketCount = wanted && isCrowded ? wanted * 2 : wanted;
    if (bucketCount > bucketCount_) rebuildIndexes(bucketCount);
    if (bucketCount_) enterIndexes(*record);
    record->flags_ |= extraFlags;
    record->localIndex_ = static_cast<int>(nextLocalIndex_++);
    link(*record.release());
    ++count_;
}

void DynamicProperties::remove(LiveProperty& record) {
    takeOut(record);
    destroy(record);
}

void DynamicProperties::removeAll(bool all) {
    LiveProperty* leaving = nullptr;
    for (LiveProperty* record = head_; record;) {
        LiveProperty* const following = record->next_;
        if (all || !record->has(PropertyFlag::Permanent)) {
            takeOut(*record);
            record->next_ = leaving;
            leaving = record;
        }
        record = following;
    }
    while (leaving) {
        LiveProperty* const following = leaving->next_;
        destroy(*leaving);
        leaving = following;
    }
}

void DynamicProperties::takeOut(LiveProperty& record) {
    if (bucketCount_) leaveIndexes(record);
    unlink(record);
    --count_;
    record.owner_ = nullptr;
}

void DynamicProperties::destroy(LiveProperty& record) {
    record.detached();
    delete &record;
}

void DynamicProperties::enterIndexes(LiveProperty& record) {
    LiveProperty*& byName = byName_[record.nameHash_ & (bucketCount_ - 1)];
    record.nextByName_ = byName;
    byName = &record;
    LiveProperty*& byID = byID_[bucketOf(record.id_, bucketCount_)];
    record.nextByID_ = byID;
    byID = &record;
}

void DynamicProperties::leaveIndexes(LiveProperty& record) {
    LiveProperty** byName = &byName_[record.nameHash_ & (bucketCount_ - 1)];
    while (*byName != &record)
        byName = &(*byName)->nextByName_;
    *byName = record.nextByName_;
    LiveProperty** byID = &byID_[bucketOf(record.id_, bucketCount_)];
    while (*byID != &record)
        byID = &(*byID)->nextByID_;
    *byID = record.nextByID_;
}

void DynamicProperties::rebuildIndexes(unsigned bucketCount) {
    const std::size_t slots = std::size_t(bucketCount) * 2;
    auto** buckets = static_cast<LiveProperty**>(Heap::operator new(slots * sizeof(LiveProperty*)));
    std::fill_n(buckets, slots, nullptr);
    Heap::operator delete(byName_);
    byName_ = buckets;
    byID_ = buckets + bucketCount;
    bucketCount_ = bucketCount;
    for (LiveProperty* record = head_; record; record = record->next_)
        enterIndexes(*record);
}

void DynamicProperties::listByCreation(SimpleArray& records) const {
    records.setSize(count_);
    if (count_ == 0) return;
    long long* words = &records[0];
    int position = 0;
    for (LiveProperty* record = head_; record; record = record->next_)
        words[position++] = wordOf(record);
    const auto isOlder = [](long long a, long long b) {
        return pointerOf<LiveProperty>(a)->getLocalIndex() <
               pointerOf<LiveProperty>(b)->getLocalIndex();
    };
    std::sort(words, words + count_, isOlder);
}

} // namespace KrCore
