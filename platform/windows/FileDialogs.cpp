#include "platform/FileDialogs.h"

#include "WidePath.h"

#include <commdlg.h>
#include <objbase.h>
#include <shlobj.h>

#include <algorithm>
#include <cwchar>
#include <iterator>

namespace KrCore::Platform {

namespace {

/// A text with as many zeros behind it as fit, two at least.
template <std::size_t capacity>
struct ZeroedText {
    explicit ZeroedText(std::span<const unsigned short> text) {
        const std::size_t count = std::min(text.size(), capacity - 2);
        std::copy_n(text.data(), count, units);
    }
    wchar_t units[capacity] = {};
};

/// One path, or a folder with several names behind it, each with its zero.
void takeChoice(const wchar_t* choice, bool isMany, TextSink& paths) {
    const std::size_t length = std::wcslen(choice);
    const wchar_t* name = choice + length + 1;
    if (!isMany || *name == 0) return takeWide(choice, length, paths);
    for (; *name != 0; name += std::wcslen(name) + 1) {
        wchar_t path[32768];
        const wchar_t* const separator = choice[length - 1] == L'\\' ? L"" : L"\\";
        const int written =
            std::swprintf(path, std::size(path), L"%ls%ls%ls", choice, separator, name);
        if (written > 0) takeWide(path, static_cast<std::size_t>(written), paths);
    }
}

} // namespace

bool chooseFiles(FileDialog dialog, const FileDialogTexts& texts, TextSink& paths) {
    static thread_local wchar_t choice[32768];
    choice[0] = 0;
    const ZeroedText<1024> prompt(texts.prompt);
    const ZeroedText<1024> folder(texts.folder);
    const ZeroedText<1024> masks(texts.masks);
    wchar_t filter[2 * std::size(masks.units)] = {};
    const std::size_t maskLength = std::wcslen(masks.units);
    // The masks are their own description.
    std::copy_n(masks.units, maskLength, filter);
    std::copy_n(masks.units, maskLength, filter + maskLength + 1);

    OPENFILENAMEW request = {};
    request.lStructSize = sizeof request;
    request.hwndOwner = static_cast<HWND>(texts.owner);
    request.lpstrFilter = maskLength > 0 ? filter : nullptr;
    request.lpstrFile = choice;
    request.nMaxFile = static_cast<DWORD>(std::size(choice));
    request.lpstrInitialDir = folder.units[0] != 0 ? folder.units : nullptr;
    request.lpstrTitle = prompt.units[0] != 0 ? prompt.units : nullptr;
    request.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
    if (dialog == FileDialog::Save) {
        request.Flags |= OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
        if (!GetSaveFileNameW(&request)) return false;
    } else {
        request.Flags |= OFN_FILEMUSTEXIST;
        if (dialog == FileDialog::OpenMany) request.Flags |= OFN_ALLOWMULTISELECT;
        if (!GetOpenFileNameW(&request)) return false;
    }
    takeChoice(choice, dialog == FileDialog::OpenMany, paths);
    return true;
}

bool chooseFolder(const FileDialogTexts& texts, TextSink& path) {
    const ZeroedText<1024> prompt(texts.prompt);
    BROWSEINFOW request = {};
    request.hwndOwner = static_cast<HWND>(texts.owner);
    request.lpszTitle = prompt.units;
    request.ulFlags = BIF_RETURNONLYFSDIRS | BIF_USENEWUI;
    const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    wchar_t choice[MAX_PATH] = {};
    const PIDLIST_ABSOLUTE item = SHBrowseForFolderW(&request);
    const bool isChosen = item && SHGetPathFromIDListW(item, choice);
    CoTaskMemFree(item);
    if (SUCCEEDED(com)) CoUninitialize();
    if (isChosen) takeWide(choice, std::wcslen(choice), path);
    return isChosen;
}

} // namespace KrCore::Platform
