#include "hosts/FileEntry.h"

#include "hosts/FileObject.h"
#include "hosts/FolderObject.h"

#include <krcore/containers/Array.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LivePropertyManager.h>
#include <krcore/values/Error.h>

#include <utility>

namespace krhost {

using namespace KrCore;

namespace {

constexpr int readOnly = int(InfoType::ReadOnly);
constexpr int method = int(InfoType::Method);

} // namespace

constexpr LivePropertyInfo FileEntry::commonTable[] = {
    {"name", Name, readOnly, "string\tThe last name of the path"},
    {"fsName", FsName, readOnly, "string\tThe path as it is and not as a URI"},
    {"absoluteURI", AbsoluteURI, readOnly, "string\tThe whole path as a URI"},
    {"relativeURI", RelativeURI, readOnly, "string\tThe path from the current folder as a URI"},
    {"displayName", DisplayName, readOnly, "string\tThe name for people"},
    {"parent", ParentFolder, readOnly, "Folder;;;null\tThe folder around; null for the topmost"},
    {"exists", Exists, readOnly, "boolean\tWhether there is one at this place"},
    {"error", Failure, readOnly, "string\tWhy the last call failed; empty after a success"},
    {"remove", Remove, method, "boolean\tRemoves it\tA folder has to be empty."},
    {"rename", Rename, method,
     "boolean\tRenames it,name:string\tThe new name in the same folder; it is no path"},
    {"toString", ToString, method, "string\tThe same as absoluteURI"},
    {nullptr, 0, 0, nullptr}};

FileEntry::FileEntry(const char* className)
    : LiveObject(className, false), file_(std::make_unique<FileWrapper>(FileSpec())) {}

int FileEntry::clone(LiveObject** result, bool deep) const {
    *result = nullptr;
    const InterfacePtr<FileEntry> copy = makeAnother();
    if (const int code = cloneContent(*copy, deep); code != ErrorCode::Ok) return code;
    Cloneable* file = nullptr;
    if (const int code = file_->clone(&file, deep); code != ErrorCode::Ok) return code;
    copy->file_.reset(static_cast<FileWrapper*>(file));
    copy->addRef();
    *result = copy.get();
    return ErrorCode::Ok;
}

int FileEntry::initialize(const Array& args, Error* err) {
    FileSpec place;
    const int code = locate(args, place, err);
    if (code == ErrorCode::Ok) file_ = std::make_unique<FileWrapper>(place);
    return code;
}

int FileEntry::locate(const Array& args, FileSpec& place, Error* err) const {
    if (!isGiven(args, 0))
        return setError(locateDefault(place), PropertyID::Constructor, err, false);
    const String& path = args[0].getString();
    if (place.setPath(path, false)) return ErrorCode::Ok;
    if (err) err->push(ErrorCode::BadURI, path, nullptr, true);
    return ErrorCode::BadURI;
}

InfoType FileEntry::getType(int id) {
    const InfoType kind = propertyManager->getType(id);
    return kind != InfoType::Unknown ? kind : LiveObject::getType(id);
}

bool FileEntry::isGiven(const Array& args, unsigned index) {
    return index < args.length() && args[index].isDefined();
}

void FileEntry::answer(Wrapper file, bool isFolder, Variant& result) {
    const auto entry = isFolder ? InterfacePtr<FileEntry>::adopt(new FolderObject)
                                : InterfacePtr<FileEntry>::adopt(new FileObject);
    entry->file_ = std::move(file);
    result = entry.get();
}

int FileEntry::get(int id, Variant& result, Error* err) const {
    result.erase();
    const int code = isValid() ? read(id, result) : int(ErrorCode::ObjectInvalid);
    if (code == ErrorCode::NotFound) return LiveObject::get(id, result, err);
    return setError(code, id, err, false);
}

int FileEntry::read(int id, Variant& result) const {
    switch (id) {
    case Name:
        result = getFileSpec().getName();
        break;
    case FsName:
        result = file_->getPath();
        break;
    case AbsoluteURI:
        result = file_->getAbsoluteURI(false);
        break;
    case RelativeURI:
        result = file_->getRelativeURI();
        break;
    case DisplayName:
        result = file_->getDisplayName();
        break;
    case ParentFolder:
        result.setNull();
        if (FileSpec parent; getFileSpec().getParentSpec(parent))
            answer(std::make_unique<FileWrapper>(parent), true, result);
        break;
    case Exists:
        result = exists();
        break;
    case Failure:
        result = file_->getError();
        break;
    default:
        return ErrorCode::NotFound;
    }
    return ErrorCode::Ok;
}

int FileEntry::put(int id, const Variant& value, Error* err) {
    int code = isValid() ? write(id, value) : int(ErrorCode::ObjectInvalid);
    if (code == ErrorCode::NotFound) return LiveObject::put(id, value, err);
    if (code == ErrorCode::Ok) code = invokeAutostore(err);
    return setError(code, id, err, false);
}

int FileEntry::write(int id, const Variant&) {
    return propertyManager->getType(id) == InfoType::ReadOnly ? ErrorCode::ReadOnly
                                                              : ErrorCode::NotFound;
}

int FileEntry::apply(LiveObject& self, int id, const Array& args, Variant& result,
                     Error* err) const {
    result.erase();
    if (!isValid() || !self.isValid()) return setError(ErrorCode::ObjectInvalid, id, err, false);
    // A script may call a method of this class on anything.
    auto* entry = dynamic_cast<FileEntry*>(&self);
    if (!entry || entry->getClassName() != getClassName())
        return setError(ErrorCode::WrongClass, id, err, false);
    const int code = entry->run(id, args, result);
    if (code == ErrorCode::NotFound) return LiveObject::apply(self, id, args, result, err);
    return setError(code, id, err, false);
}

int FileEntry::run(int id, const Array& args, Variant& result) {
    switch (id) {
    case Remove:
        result = file_->remove();
        return ErrorCode::Ok;
    case Rename:
        if (!isGiven(args, 0)) return ErrorCode::BadArgumentList;
        result = file_->rename(args[0].getString());
        return ErrorCode::Ok;
    case ToString:
        result = file_->getAbsoluteURI(false);
        return ErrorCode::Ok;
    default:
        return isReadable(propertyManager->getType(id)) ? ErrorCode::NotAFunction
                                                        : ErrorCode::NotFound;
    }
}

} // namespace krhost
