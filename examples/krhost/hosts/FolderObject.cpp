#include "hosts/FolderObject.h"

#include "hosts/ClassProperties.h"

#include <krcore/containers/Array.h>
#include <krcore/files/FileUtils.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/values/Error.h>

#include <utility>

namespace krhost {

using namespace KrCore;

namespace {

enum FolderID : int { Create = FileEntry::FirstOwn, GetFiles };

constexpr int method = int(InfoType::Method);

constexpr LivePropertyInfo folderTable[] = {
    {"", PropertyID::Constructor, method, "Folder,path:string"},
    {"create", Create, method, "boolean"},
    {"getFiles", GetFiles, method, "array,mask:string"},
    {nullptr, 0, 0, nullptr}};

/// The wrappers of a listing, which are deleted unless somebody takes them.
struct Listing {
    Listing() = default;
    Listing(const Listing&) = delete;
    Listing& operator=(const Listing&) = delete;
    ~Listing() {
        for (const FileWrapper* file : files)
            delete file;
    }
    std::unique_ptr<FileWrapper> take(int index) {
        std::unique_ptr<FileWrapper> file(files[index]);
        files.set(index, nullptr);
        return file;
    }

    TSimpleArray<FileWrapper> files;
};

} // namespace

FolderObject::FolderObject() : FileEntry("Folder") {
    propertyManager = classProperties<commonTable, folderTable>();
}

InterfacePtr<FileEntry> FolderObject::makeAnother() const {
    return InterfacePtr<FileEntry>::adopt(new FolderObject);
}

int FolderObject::locateDefault(FileSpec& place) const {
    place = FileUtils::getCurrentDir();
    return ErrorCode::Ok;
}

bool FolderObject::exists() const { return getFileSpec().isFolder(); }

void FolderObject::findSpecial(int kind, Variant& result) {
    answer(Wrapper(kind ? FileWrapper::getSpecialDir(kind) : FileWrapper::getCurrentDir()), true,
           result);
}

int FolderObject::setCurrent(const Variant& folder) {
    if (const auto* object = dynamic_cast<const FolderObject*>(folder.getLiveObject()))
        return FileUtils::setCurrentDir(object->getFileSpec());
    return FileUtils::setCurrentDir(FileSpec(folder.getString()));
}

int FolderObject::run(int id, const Array& args, Variant& result) {
    switch (id) {
    case Create:
        result = file().makeDir();
        return ErrorCode::Ok;
    case GetFiles:
        listFiles(args, result);
        return ErrorCode::Ok;
    default:
        return FileEntry::run(id, args, result);
    }
}

void FolderObject::listFiles(const Array& args, Variant& result) {
    const String mask = isGiven(args, 0) ? args[0].getString() : String();
    Listing listing;
    result.setNull();
    if (!file().getFiles(listing.files, &mask)) return;
    Array entries;
    for (int i = 0; i < listing.files.length(); ++i) {
        Variant entry;
        const bool isFolder = listing.files[i]->getFileSpec().isFolder();
        answer(listing.take(i), isFolder, entry);
        entries += entry;
    }
    result = entries;
}

} // namespace krhost
