#include <krcore/foundation/WeakRefBase.h>

#include "foundation/LockSlots.h"
#include "foundation/ModuleHooks.h"

#include <krcore/containers/SparseArray.h>

#include <cstdint>
#include <memory>
#include <utility>

namespace KrCore {

/// Who refers weakly to whom. A list of holders per target; a holder that leaves becomes a null
/// entry, which the next one takes. Used under the lock for weak references.
struct WeakReferenceTable {
    SparseArray* lists = nullptr; ///< Made by the first weak reference.
    /// The number of lists. Read without the lock by every last release, which then seldom needs
    /// the lock.
    std::atomic<int> count = 0;

    SimpleArray* find(const Refcountable* target) const;
    SimpleArray& findOrMake(const Refcountable* target);
    void add(WeakRefBase* holder, const Refcountable* target);
    void remove(WeakRefBase* holder);
    void clear(const Refcountable* target);
    void destroy();
    Refcountable* assign(WeakRefBase* holder, Refcountable* target);
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

WeakRefBase* holderOf(long long word) {
    return reinterpret_cast<WeakRefBase*>(static_cast<std::uintptr_t>(word));
}

SimpleArray* listOf(long long word) {
    return reinterpret_cast<SimpleArray*>(static_cast<std::uintptr_t>(word));
}

} // namespace

SimpleArray* WeakReferenceTable::find(const Refcountable* target) const {
    return lists ? listOf(lists->find(keyOf(target))) : nullptr;
}

SimpleArray& WeakReferenceTable::findOrMake(const Refcountable* target) {
    if (SimpleArray* list = find(target)) return *list;
    if (!lists) lists = new SparseArray;
    auto list = std::make_unique<SimpleArray>();
    list->setIncrement(16);
    lists->set(keyOf(target), wordOf(list.get()));
    ++count;
    return *list.release();
}

void WeakReferenceTable::add(WeakRefBase* holder, const Refcountable* target) {
    SimpleArray& list = findOrMake(target);
    const int freeEntry = list.indexOf(0);
    if (freeEntry >= 0)
        list[freeEntry] = wordOf(holder);
    else
        list.append(wordOf(holder));
}

void WeakReferenceTable::remove(WeakRefBase* holder) {
    SimpleArray* list = find(holder->target_);
    const int entry = list ? list->indexOf(wordOf(holder)) : -1;
    if (entry >= 0) (*list)[entry] = 0;
    holder->target_ = nullptr;
}

void WeakReferenceTable::clear(const Refcountable* target) {
    if (!lists) return;
    const std::unique_ptr<SimpleArray> list(listOf(lists->remove(keyOf(target))));
    if (!list) return;
    --count;
    for (const long long word : std::as_const(*list)) {
        if (WeakRefBase* holder = holderOf(word)) holder->target_ = nullptr;
    }
}

void WeakReferenceTable::destroy() {
    if (!lists) return;
    SimpleArray values;
    lists->getData(values);
    for (const long long word : std::as_const(values))
        delete listOf(word);
    delete std::exchange(lists, nullptr);
    count = 0;
}

// The holder leaves its old target first, so that assigning the same target again reuses its entry.
// If there is no memory for the new entry, it stays null.
//
// A target whose count has reached 0 is refused. The list is counted before the count is read, and
// the last release counts down before it reads the number of lists: so one of the two sees the
// other.
Refcountable* WeakReferenceTable::assign(WeakRefBase* holder, Refcountable* target) {
    if (holder->target_) remove(holder);
    if (!target) return nullptr;
    add(holder, target);
    holder->target_ = target;
    if (std::atomic_ref(target->references_).load() > 0) return target;
    remove(holder);
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
