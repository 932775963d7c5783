#include "platform/FileDialogs.h"

namespace KrCore::Platform {

// The desktops here have dialogs, the system has none.

bool chooseFiles(FileDialog /*dialog*/, const FileDialogTexts& /*texts*/, TextSink& /*paths*/) {
    return false;
}

bool chooseFolder(const FileDialogTexts& /*texts*/, TextSink& /*path*/) { return false; }

} // namespace KrCore::Platform
