#include "hosts/FolderObject.h"

#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"

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
constexpr int readOnly = int(InfoType::ReadOnly);

} // namespace

constexpr LivePropertyInfo FolderObject::specialFolders[] = {
    {"current", currentKind, int(InfoType::ReadWrite),
     "Folder\tThe current folder\tCan be set to a folder or a path."},
    {"startup", FileUtils::StartupDir, readOnly, "Folder\tWhere the program is"},
    {"temp", FileUtils::TempDir, readOnly, "Folder\tWhere temporary files belong"},
    {"userData", FileUtils::UserDataDir, readOnly, "Folder\tWhere programs keep the user's data"},
    {"desktop", FileUtils::DesktopDir, readOnly, "Folder\tThe desktop of the user"},
    {nullptr, 0, 0, nullptr}};

namespace {

constexpr LivePropertyInfo folderTable[] = {
    {"", PropertyID::Constructor, method,
     "Folder\tNames a folder,path:string;;;undefined\tIts path as a URI; else the current folder"},
    {"create", Create, method, "boolean\tMakes the folder and those around it"},
    {"getFiles", GetFiles, method,
     "any;;;null;array\tThe files and folders within in no order,"
     "mask:string;;;undefined\tWhich ones by their names; like *.txt;*.md"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts folderTexts = {
    .description = "A place for a folder, whether or not there is one.",
    .details = "What fails is false or null, and the property error says why.",
    .sample = "new Folder().getFiles(\"*.txt\").forEach(function (file) { print(file.name); });",
    .classMembers = classProperties<FolderObject::specialFolders>};

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

const ClassInfo* FolderObject::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, folderTexts);
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
    answer(Wrapper(kind == currentKind ? FileWrapper::getCurrentDir()
                                       : FileWrapper::getSpecialDir(kind)),
           true, result);
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
