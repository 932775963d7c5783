// Names for files that nobody has yet.

#include "files/FileSpecData.h"

#include "files/PathText.h"
#include "files/SystemText.h"
#include "foundation/LockSlots.h"

#include <climits>
#include <utility>

namespace KrCore {

namespace {

/// Marks a spec that is on its way to a new name.
class NamingScope {
public:
    explicit NamingScope(SpecData& data) : data_(data) { data_.state |= FileSpecData::namingState; }
    ~NamingScope() { data_.state &= ~FileSpecData::namingState; }
    NamingScope(const NamingScope&) = delete;
    NamingScope& operator=(const NamingScope&) = delete;

private:
    SpecData& data_;
};

/// The first free name in the folder; false when the system does not tell. At the highest number
/// the name is taken as it is.
bool findFreeName(const String& folder, String& path) {
    const LibraryLock guard(LockSlot::FileSystem);
    for (unsigned int number = 1; number <= INT_MAX; ++number) {
        String name;
        name.print("tmp%08lu", number);
        path = PathText::join(folder, name);
        Platform::FileFacts facts;
        const Platform::FileFault fault = Platform::readFileFacts(unitsOf(path), facts);
        if (fault == Platform::FileFault::NotFound) return true;
        if (fault != Platform::FileFault::None) return false;
    }
    return true;
}

} // namespace

bool FileSpec::tempName() {
    if (!isFolder()) return false;
    String path;
    {
        const NamingScope scope(data());
        if (!findFreeName(systemPathOf(*this), path)) return false;
    }
    FileSpecData::assign(*this, path);
    return true;
}

} // namespace KrCore
