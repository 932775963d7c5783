#pragma once

#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

namespace KrCore {

struct Variant::ObjectIdentity : public Heap {
    ObjectIdentity(int objectID, const String& name) : id(objectID), className(name) {}

    int id;
    String className;
};

} // namespace KrCore
