#pragma once

#include <krcore/files/FileSpec.h>

#include <cstdint>

namespace KrCore {

/// What every kind of location holds.
struct SpecData : public Heap {
    SpecData() = default;
    SpecData(const SpecData& other) : Heap(), path(other.path), state(other.state) {}

    String path; ///< The platform path.
    std::uint32_t state = 0;
};

struct FileSpecData : public SpecData {
    /// A bit of the state, set while `tempName` works; every change of the path clears it.
    static constexpr std::uint32_t namingState = 1;

    /// A platform path as it stands.
    static void assign(FileSpec& spec, const String& path);
};

/// The absolute platform path that the system is asked with.
String systemPathOf(const FileSpec& spec);

/// Why the file or folder cannot be found; 0 when it is there.
int lookUp(const FileSpec& spec);
/// The same for a folder: `FileNotFound` when something else is there.
int lookUpFolder(const FileSpec& spec);

} // namespace KrCore
