// Where specs lead: shortcuts followed and made.

#include "files/FileSpecData.h"

#include "files/PathText.h"
#include "files/SystemText.h"

#include <krcore/foundation/ErrorCode.h>

#include <utility>

namespace KrCore {

namespace {

/// As many as the systems themselves follow.
constexpr int maximalSteps = 40;

int readStep(const String& path, String& target) {
    String link;
    SystemText sink(link);
    const int code = codeOf(Platform::readShortcut(unitsOf(path), sink));
    if (code == ErrorCode::Ok) target = PathText::folded(link);
    return code;
}

} // namespace

int FileSpec::resolve() {
    FileSpec target;
    const int code = resolve(target);
    if (code == ErrorCode::Ok) *this = std::move(target);
    return code;
}

int FileSpec::resolve(FileSpec& target) const {
    String path = systemPathOf(*this);
    int steps = 0;
    for (; Platform::isShortcut(unitsOf(path)); ++steps) {
        if (steps == maximalSteps) return ErrorCode::IOError;
        String next;
        const int code = readStep(path, next);
        if (code != ErrorCode::Ok) return code;
        path = next;
    }
    Platform::FileFacts facts;
    const int code = codeOf(Platform::readFileFacts(unitsOf(path), facts));
    if (code == ErrorCode::Ok) FileSpecData::assign(target, steps > 0 ? path : getPath());
    return code;
}

int FileSpec::createAlias(const String& target, bool isNative) {
    FileSpec targetSpec;
    if (!targetSpec.setPath(target, isNative)) return ErrorCode::BadArgument;
    String path = systemPathOf(*this);
    if (Platform::shortcutsNeedSuffix && !PathText::hasShortcutSuffix(path))
        path += PathText::shortcutSuffix;
    const String targetPath = systemPathOf(targetSpec);
    const int code = codeOf(Platform::createShortcut(unitsOf(path), unitsOf(targetPath)));
    if (code == ErrorCode::Ok) FileSpecData::assign(*this, path);
    return code;
}

} // namespace KrCore
