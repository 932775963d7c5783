// The shell's shortcuts: files that end in .LNK.

#include "platform/FileSystem.h"

#include "WidePath.h"

#include <shlobj.h>

#include <cwchar>

namespace KrCore::Platform {

const bool shortcutsNeedSuffix = true;

namespace {

/// COM for the calling thread while the object lives, whether or not the host has begun it already.
class ComScope {
public:
    ComScope() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~ComScope() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

private:
    const HRESULT result_;
};

template <class Interface>
class ComPointer {
public:
    ComPointer() = default;
    ~ComPointer() {
        if (object_) object_->Release();
    }
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;

    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    void** place() { return reinterpret_cast<void**>(&object_); }

private:
    Interface* object_ = nullptr;
};

/// A link object of the shell with its side for files.
struct ShellLink {
    ShellLink() {
        CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                         link.place());
        if (link) link->QueryInterface(IID_IPersistFile, file.place());
    }
    bool isReady() const { return link && file; }

    ComScope scope;
    ComPointer<IShellLinkW> link;
    ComPointer<IPersistFile> file;
};

bool exists(const WidePath& path) {
    return GetFileAttributesW(path.get()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace

bool isShortcut(PathUnits path) {
    const WidePath wide(path);
    if (!wide.get() || path.size() <= 4) return false;
    if (_wcsicmp(wide.get() + std::wcslen(wide.get()) - 4, L".LNK") != 0) return false;
    FileFacts facts;
    return readFileFacts(path, facts) == FileFault::None && facts.isFile;
}

FileFault readShortcut(PathUnits path, TextSink& target) {
    const WidePath wide(path);
    if (!wide.get()) return FileFault::Invalid;
    if (!exists(wide)) return faultOf(GetLastError());
    const ShellLink shell;
    wchar_t text[MAX_PATH] = {};
    const bool isRead = shell.isReady() && SUCCEEDED(shell.file->Load(wide.get(), STGM_READ)) &&
                        shell.link->GetPath(text, MAX_PATH, nullptr, 0) == S_OK;
    if (!isRead || text[0] == 0) return FileFault::Failed;
    takeWide(text, std::wcslen(text), target);
    return FileFault::None;
}

FileFault createShortcut(PathUnits path, PathUnits target) {
    const WidePath wide(path);
    const WidePath wideTarget(target);
    if (!wide.get() || !wideTarget.get()) return FileFault::Invalid;
    if (exists(wide)) return FileFault::Exists;
    const ShellLink shell;
    const bool isReady = shell.isReady() && SUCCEEDED(shell.link->SetPath(wideTarget.get()));
    if (!isReady) return FileFault::Failed;
    const HRESULT saving = shell.file->Save(wide.get(), TRUE);
    if (SUCCEEDED(saving)) return FileFault::None;
    const bool isSystemError = HRESULT_FACILITY(saving) == FACILITY_WIN32;
    return isSystemError ? faultOf(static_cast<DWORD>(HRESULT_CODE(saving))) : FileFault::Failed;
}

} // namespace KrCore::Platform
