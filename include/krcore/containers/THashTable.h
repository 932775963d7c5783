#pragma once

#include <krcore/containers/HashTable.h>

#include <cstdint>
#include <memory>
#include <type_traits>

namespace KrCore {

/// A `HashTable` whose values are pointers to `T`, borrowed: it owns nothing and counts no
/// references.
template <class T>
class THashTable : public HashTable {
public:
    const String& set(const String& key, T* item, bool ignoreCase = false) {
        return HashTable::set(key, TSimpleArray<T>::toWord(item), ignoreCase);
    }
    /// Null when there is no such key.
    T* find(const String& key, bool ignoreCase = false) const {
        return toPointer(HashTable::find(key, ignoreCase));
    }
    T* operator[](const String& key) const { return find(key); }
    const String* findKey(T* item) const {
        return HashTable::findKey(TSimpleArray<T>::toWord(item));
    }
    T* remove(const String& key, bool ignoreCase = false) {
        return toPointer(HashTable::remove(key, ignoreCase));
    }
    void removeData(T* item) { HashTable::removeData(TSimpleArray<T>::toWord(item)); }
    void getData(TSimpleArray<T>& items) const { HashTable::getData(items); }
    THashTable& operator+=(const THashTable& other) {
        HashTable::operator+=(other);
        return *this;
    }
    /// Calls `visit(const String& key, T* item)` for each item; an item for which it returns false
    /// is removed.
    template <class Visit>
    void forEach(Visit&& visit) {
        using Callee = std::remove_reference_t<Visit>;
        HashTable::forEach(
            [](const String& key, long long* value, long long data) -> bool {
                auto& call = *reinterpret_cast<Callee*>(static_cast<std::intptr_t>(data));
                return call(key, toPointer(*value));
            },
            reinterpret_cast<std::intptr_t>(std::addressof(visit)));
    }

private:
    static T* toPointer(long long word) { return TSimpleArray<T>::toPointer(word); }
};

} // namespace KrCore
