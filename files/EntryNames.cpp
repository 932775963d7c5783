#include "files/EntryNames.h"

#include "files/FileSpecData.h"
#include "files/PathText.h"
#include "files/SystemText.h"

#include <krcore/foundation/ErrorCode.h>

namespace KrCore {

bool isEntryName(const String& name) {
    return !name.isEmpty() && name.findAny("\\/") < 0 && name != "." && name != ".." &&
           name.find(static_cast<unsigned short>(0)) < 0;
}

int renameTo(FileSpec& spec, const String& name) {
    if (!isEntryName(name)) return ErrorCode::BadArgument;
    const String path = systemPathOf(spec);
    const String target = PathText::join(PathText::folded(PathText::join(path, "..")), name);
    if (target == path) return lookUp(spec);
    const int code = codeOf(Platform::renameEntry(unitsOf(path), unitsOf(target)));
    if (code == ErrorCode::Ok) FileSpecData::assign(spec, target);
    return code;
}

int removeAt(const FileSpec& spec) {
    const String path = systemPathOf(spec);
    return codeOf(Platform::removeEntry(unitsOf(path)));
}

} // namespace KrCore
