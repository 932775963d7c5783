#pragma once

#include "platform/FileSystem.h"

namespace KrCore::Platform {

enum class FileDialog { Open, OpenMany, Save };

/// What a dialog shows. Texts are not 0-terminated.
struct FileDialogTexts {
    std::span<const unsigned short> prompt;
    PathUnits folder;                      ///< Shown first; empty for the system's choice.
    std::span<const unsigned short> masks; ///< `*.txt;*.md`; empty for all files.
    void* owner = nullptr;                 ///< The window that waits; may be null.
};

/// Shows the system's dialog and waits for the user. Gives one path a call of `paths`; false when
/// the user chooses nothing, or when the system has no dialogs.
bool chooseFiles(FileDialog dialog, const FileDialogTexts& texts, TextSink& paths);
bool chooseFolder(const FileDialogTexts& texts, TextSink& path);

} // namespace KrCore::Platform
