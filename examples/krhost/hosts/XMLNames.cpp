#include "hosts/XMLNames.h"

#include <krcore/foundation/InitTerm.h>
#include <krcore/values/Variant.h>

#include <map>
#include <utility>
#include <vector>

namespace krhost::XMLNames {

using namespace KrCore;

namespace {

constexpr int firstIndex = 0x01000000;
constexpr int firstName = 0x10000000; // and up to the IDs that the library generates
constexpr int maxIndexDigits = 8;

constexpr const char* reservedNames[] = {
    "constructor",          "hasOwnProperty", "valueOf",   "isPrototypeOf",
    "propertyIsEnumerable", "toLocaleString", "__proto__", "toJSON"};

/// All names that scripts have used, numbered.
struct Directory {
    std::map<String, int> numbers;
    std::vector<const String*> names; // the keys, by number
};

/// Made when first asked for, deleted when the library shuts down.
Directory& directory() {
    static Directory* known = nullptr;
    if (!known) {
        known = new Directory;
        InitTerm::atExit([] { delete std::exchange(known, nullptr); });
    }
    return *known;
}

/// The index that a name spells, or -1. Only the usual spelling is an index.
int spelledIndex(const String& name) {
    const int length = name.length();
    if (length == 0 || length > maxIndexDigits) return -1;
    if (length > 1 && *name.begin() == '0') return -1;
    int index = 0;
    for (const unsigned short unit : name) {
        if (unit < '0' || unit > '9') return -1;
        index = index * 10 + (unit - '0');
    }
    return index;
}

} // namespace

int idOf(const String& name) {
    if (const int index = spelledIndex(name); index >= 0) return idOfIndex(index);
    Directory& known = directory();
    known.names.reserve(known.names.size() + 1);
    const auto [place, isNew] = known.numbers.emplace(name, static_cast<int>(known.names.size()));
    if (isNew) known.names.push_back(&place->first);
    return firstName + place->second;
}

int idOfIndex(int index) { return firstIndex + index; }

int indexOf(int id) { return id >= firstIndex && id < firstName ? id - firstIndex : -1; }

bool nameOf(int id, String& name) {
    if (const int index = indexOf(id); index >= 0) {
        name = Variant(index).getString();
        return true;
    }
    const auto& names = directory().names;
    if (id < firstName || static_cast<std::size_t>(id - firstName) >= names.size()) return false;
    name = *names[static_cast<std::size_t>(id - firstName)];
    return true;
}

bool isReserved(const String& name) {
    for (const char* reserved : reservedNames) {
        if (name == reserved) return true;
    }
    return false;
}

} // namespace krhost::XMLNames
