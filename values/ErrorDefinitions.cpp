#include "values/ErrorDefinitions.h"

#include "foundation/LockSlots.h"

#include <memory>
#include <utility>

namespace KrCore {

namespace {

/// A definition in the table. The table is a list: hosts define some dozens of codes, and a list
/// needs no memory to be searched or dropped.
struct StoredDefinition : Heap {
    StoredDefinition(unsigned int definedCode, const ErrorDefinition& source)
        : code(definedCode), definition(source) {}

    const unsigned int code;
    ErrorDefinition definition;
    StoredDefinition* next = nullptr;
};

constinit StoredDefinition* definitions = nullptr; ///< Owned.

/// Where the definition of a code hangs, or the end of the list. The caller holds the lock.
StoredDefinition** locate(unsigned int code) {
    StoredDefinition** place = &definitions;
    while (*place && (*place)->code != code)
        place = &(*place)->next;
    return place;
}

} // namespace

void setErrorDefinition(unsigned int code, const ErrorDefinition& definition) {
    auto stored = std::make_unique<StoredDefinition>(code, definition);
    const LibraryLock guard(LockSlot::ErrorDefinitions);
    StoredDefinition** place = locate(code);
    if (*place) {
        std::swap((*place)->definition, stored->definition);
    } else {
        *place = stored.release();
    }
}

void removeErrorDefinition(unsigned int code) {
    const LibraryLock guard(LockSlot::ErrorDefinitions);
    StoredDefinition** place = locate(code);
    if (*place) delete std::exchange(*place, (*place)->next);
}

bool findErrorDefinition(unsigned int code, ErrorDefinition& definition) {
    const LibraryLock guard(LockSlot::ErrorDefinitions);
    const StoredDefinition* stored = *locate(code);
    if (stored) definition = stored->definition;
    return stored != nullptr;
}

bool isDefinedErrorClass(const String& name) {
    const LibraryLock guard(LockSlot::ErrorDefinitions);
    for (const StoredDefinition* stored = definitions; stored; stored = stored->next) {
        if (stored->definition.className == name) return true;
    }
    return false;
}

void dropErrorDefinitions() {
    while (definitions)
        delete std::exchange(definitions, definitions->next);
}

} // namespace KrCore
