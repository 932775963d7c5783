#include <krcore/files/FileUtils.h>

#include "files/FileSpecData.h"
#include "files/SystemText.h"

namespace KrCore {

int FileUtils::copy(const FileSpec& from, const FileSpec& to) {
    const String source = systemPathOf(from);
    const String target = systemPathOf(to);
    return codeOf(Platform::copyFile(unitsOf(source), unitsOf(target)));
}

String FileUtils::getFileSystem() { return Platform::fileSystemName(); }

CRLFEncoding FileUtils::getSystemLF() {
    return Platform::usesCarriageReturns() ? CRLFEncoding::CRLF : CRLFEncoding::LF;
}

} // namespace KrCore
