#include <krcore/foundation/WeakRefBase.h>

#include "foundation/LockSlots.h"
#include "foundation/ModuleHooks.h"

#include <krcore/containers/SparseArray.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

namespace KrCore {

/// Who refers weakly to one target. A holder that leaves becomes a null entry, which the next one
/// takes.
class HolderList : public Heap {
public:
    HolderList() { holders_.setIncrement(16); }

    void add(WeakRefBase* holder);
    void remove(WeakRefBase* holder);
    void clear();

private:
    SimpleArray holders_;
    int firstFree_ = 0; ///< No null entry lies before it.
};

/// The lists by target. Used under the lock for weak references.
struct WeakReferenceTable {
    SparseArray* lists = nullptr; ///< Made by the first weak reference.
    /// The number of lists. Read without the lock by every last release, which then seldom needs
    /// the lock.
    std::atomic<int> count = 0;

    HolderList* find(const Refcountable* target) const;
    HolderList& findOrMake(const Refcountable* target);
    void leave(WeakRefBase* holder);
    void clear(const Refcountable* target);
    void destroy();
    Refcountable* assign(WeakRefBase* holder, Refcountable* target);

    static void empty(WeakRefBase* holder) { holder->target_ = nullptr; }
    static bool isDying(const Refcountable& target) {
        return std::atomic_ref(target.references_).load() <= 0;
    }
};

namespace {

constinit WeakReferenceTable table;

// Objects lie at addresses 8 modulo 16, and the table's buckets follow the low bits of the key.
long long keyOf(const Refcountable* target) {
    return static_cast<long long>(reinterpret_cast<std::uintptr_t>(target) >> 4U);
}

long long wordOf(const void* pointer) {
    return static_cast<long long>(reinterpret_cast<std::uintptr_t>(pointer));
}

template <class T>
T* pointerOf(long long word) {
    return reinterpret_cast<T*>(static_cast<std::uintptr_t>(word));
}

} // namespace

void HolderList::add(WeakRefBase* holder) {
    const int length = holders_.length();
    while (firstFree_ < length && std::as_const(holders_)[firstFree_] != 0)
        ++firstFree_;
    if (firstFree_ == length)
        holders_.append(wordOf(holder));
    else
        holders_[firstFree_] = wordOf(holder);
    ++firstFree_;
}

void HolderList::remove(WeakRefBase* holder) {
    const int entry = holders_.indexOf(wordOf(holder));
    if (entry < 0) return;
    holders_[entry] = 0;
    firstFree_ = std::min(firstFree_, entry);
}

void HolderList::clear() {
    for (const long long word : std::as_const(holders_)) {
        if (word != 0) WeakReferenceTable::empty(pointerOf<WeakRefBase>(word));
    }
}

HolderList* WeakReferenceTable::find(const Refcountable* target) const {
    return lists ? pointerOf<HolderList>(lists->find(keyOf(target))) : nullptr;
}

HolderList& WeakReferenceTable::findOrMake(const Refcountable* target) {
    if (HolderList* list = find(target)) return *list;
    if (!lists) lists = new SparseArray;
    auto list = std::make_unique<HolderList>();
    lists->set(keyOf(target), wordOf(list.get()));
    ++count;
    return *list.release();
}

void WeakReferenceTable::leave(WeakRefBase* holder) {
    if (HolderList* list = find(holder->target_)) list->remove(holder);
    empty(holder);
}

void WeakReferenceTable::clear(const Refcountable* target) {
    if (!lists) return;
    const std::unique_ptr<HolderList> list(pointerOf<HolderList>(lists->remove(keyOf(target))));
    if (!list) return;
    --count;
    list->clear();
}

void WeakReferenceTable::destroy() {
    if (!lists) return;
    const auto deleteList = [](long long, long long* list, long long) {
        delete pointerOf<HolderList>(*list);
        return true;
    };
    lists->forEach(deleteList, 0);
    delete std::exchange(lists, nullptr);
    count = 0;
}

// The holder leaves its old target first, so that assigning the same target again reuses its entry.
// If there is no memory for the new entry, it stays null.
//
// A target whose count has reached 0 is refused, before and after: the list is counted before the
// target's count is read again, and the last release counts down before it reads the number of
// lists, so one of the two sees the other.
Refcountable* WeakReferenceTable::assign(WeakRefBase* holder, Refcountable* target) {
    if (holder->target_) leave(holder);
    if (!target || isDying(*target)) return nullptr;
    findOrMake(target).add(holder);
    holder->target_ = target;
    if (!isDying(*target)) return target;
    leave(holder);
    return nullptr;
}

WeakRefBase::WeakRefBase(const WeakRefBase& other) {
    LibraryLock guard(LockSlot::WeakReferences);
    table.assign(this, other.target_);
}

WeakRefBase& WeakRefBase::operator=(const WeakRefBase& other) {
    LibraryLock guard(LockSlot::WeakReferences);
    table.assign(this, other.target_);
    return *this;
}

WeakRefBase::~WeakRefBase() {
    if (target_) assign(nullptr);
}

Refcountable* WeakRefBase::assign(Refcountable* target) {
    LibraryLock guard(LockSlot::WeakReferences);
    return table.assign(this, target);
}

Refcountable* WeakRefBase::acquire() const {
    LibraryLock guard(LockSlot::WeakReferences);
    Refcountable* object = target_;
    if (!object) return nullptr;
    std::atomic_ref references(object->references_);
    int count = references.load();
    while (count > 0) {
        if (references.compare_exchange_weak(count, count + 1)) return object;
    }
    return nullptr;
}

void WeakRefBase::release(const Refcountable* object) {
    if (!object || table.count == 0) return;
    LibraryLock guard(LockSlot::WeakReferences);
    table.clear(object);
}

// Holders that are still there refer to objects that nobody released; they may be destroyed later.
void stopWeakReferences() { table.destroy(); }

} // namespace KrCore
