#include "files/FolderState.h"

#include "files/PathText.h"
#include "files/SystemText.h"
#include "foundation/Context.h"
#include "foundation/LockSlots.h"
#include "foundation/ModuleHooks.h"

#include <utility>

namespace KrCore {

namespace {

constexpr int driveRootLength = 3;

/// Null until somebody asks.
constinit String* home = nullptr;

/// The folder that the desktop lies in; the desktop itself when that is the root of a drive.
String folderOfDesktop() {
    String desktop;
    SystemText sink(desktop);
    if (!Platform::readShellFolder(Platform::ShellFolder::Desktop, sink)) return {};
    const int separator = desktop.find('\\', -1, true);
    return separator >= driveRootLength ? desktop.substr(0, separator) : desktop;
}

String readHome() {
    String path;
    SystemText sink(path);
    if (!Platform::readEnvironmentPath("HOME", sink)) return folderOfDesktop();
    path = PathText::withBackslashes(path);
    if (PathText::hasDrive(path.wstr(), path.length()) && path.wstr()[0] >= 'a')
        path.set(0, static_cast<unsigned short>(path.wstr()[0] - 'a' + 'A'));
    return path;
}

} // namespace

void stopFiles() { delete std::exchange(home, nullptr); }

void endFilesOf(Context& context) { delete std::exchange(context.currentFolder, nullptr); }

String currentFolder() {
    Context* context = currentContext();
    if (!context) return {};
    const LibraryLock guard(LockSlot::FileSystem);
    if (!context->currentFolder) {
        String path;
        SystemText sink(path);
        Platform::readWorkingFolder(sink);
        context->currentFolder = new String(std::move(path));
    }
    return *context->currentFolder;
}

void setCurrentFolder(const String& path) {
    Context* context = currentContext();
    if (!context) return;
    auto* folder = new String(path);
    const LibraryLock guard(LockSlot::FileSystem);
    delete std::exchange(context->currentFolder, folder);
}

// The search may take the lock of the encoders' registry or ask a slow shell; the lock is for the
// result.
String homeFolder() {
    {
        const LibraryLock guard(LockSlot::FileSystem);
        if (home) return *home;
    }
    const String found = readHome();
    const LibraryLock guard(LockSlot::FileSystem);
    if (!home) home = new String(found);
    return *home;
}

} // namespace KrCore
