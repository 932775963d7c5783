// The folders that scripts ask a wrapper for.

#include <krcore/files/FileWrapper.h>

#include <krcore/files/FileUtils.h>
#include <krcore/foundation/ErrorCode.h>

#include <memory>

namespace KrCore {

FileWrapper* FileWrapper::getSpecialDir(int kind) {
    FileSpec folder;
    const int code = FileUtils::getSpecialDir(kind, folder);
    auto wrapper = std::make_unique<FileWrapper>(folder);
    wrapper->checkError(code);
    return wrapper.release();
}

FileWrapper* FileWrapper::getCurrentDir() { return new FileWrapper(FileUtils::getCurrentDir()); }

FileWrapper* FileWrapper::getStartupDir() { return getSpecialDir(FileUtils::StartupDir); }

FileWrapper* FileWrapper::getSystemDir() { return getSpecialDir(FileUtils::SystemDir); }

FileWrapper* FileWrapper::getTempDir() { return getSpecialDir(FileUtils::TempDir); }

FileWrapper* FileWrapper::getTrashDir() { return getSpecialDir(FileUtils::TrashDir); }

bool FileWrapper::setCurrentDir(FileWrapper& folder) {
    return folder.checkError(FileUtils::setCurrentDir(folder.spec_));
}

String FileWrapper::getFileSystem() { return FileUtils::getFileSystem(); }

int FileWrapper::getSystemLF() { return static_cast<int>(FileUtils::getSystemLF()); }

} // namespace KrCore
