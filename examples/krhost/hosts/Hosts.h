#pragma once

#include <krcore/foundation/InterfacePtr.h>

namespace KrCore {
class ClassInfo;
class LiveObject;
class String;
} // namespace KrCore

namespace krhost::Hosts {

/// How scripts come by the objects of a host class.
enum class Role {
    Constructed, ///< By a constructor of this name.
    Returned,    ///< From properties and methods of other classes.
    Constants    ///< As a global of this name: an enumeration.
};

struct HostClass {
    const char* name;
    Role role;
};

inline constexpr HostClass classes[] = {
    {"Box", Role::Constructed},      {"Settings", Role::Constructed},
    {"Document", Role::Constructed}, {"Lines", Role::Returned},
    {"List", Role::Constructed},     {"XML", Role::Constructed},
    {"File", Role::Constructed},     {"Folder", Role::Constructed},
    {"SeekFrom", Role::Constants},   {"KrRegExp", Role::Constructed},
    {"KrMatch", Role::Returned},     {"KrCapture", Role::Returned}};

/// Registers one factory for each of them, after the library has started.
void registerFactories();

/// An object of the class, whose factory it is. Borrowed from the library; null for a name that is
/// not in the list.
KrCore::LiveObject* findSample(const KrCore::String& className);

/// The description of the class; null for a name that is not in the list.
KrCore::InterfacePtr<const KrCore::ClassInfo> describe(const KrCore::String& className);

} // namespace krhost::Hosts
