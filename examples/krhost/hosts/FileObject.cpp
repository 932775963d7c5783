#include "hosts/FileObject.h"

#include "hosts/ClassProperties.h"

#include <krcore/containers/Array.h>
#include <krcore/files/FileAttribute.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/values/Error.h>

#include <algorithm>
#include <cmath>

namespace krhost {

using namespace KrCore;

namespace {

enum FileID : int {
    Eof = FileEntry::FirstOwn,
    Length,
    IsOpen,
    Encoding,
    LineFeed,
    ReadOnlyFile,
    Hidden,
    // About the file as a whole,
    Open,
    Close,
    Copy,
    CreateAlias,
    // and about its content.
    Read,
    ReadLine,
    ReadCharacter,
    Write,
    WriteLine,
    Seek,
    Tell,
    Flush
};

constexpr int readOnly = int(InfoType::ReadOnly);
constexpr int readWrite = int(InfoType::ReadWrite);
constexpr int method = int(InfoType::Method);

constexpr LivePropertyInfo fileTable[] = {
    {"", PropertyID::Constructor, method, "File,path:string"},
    {"eof", Eof, readOnly, "boolean"},
    {"length", Length, readOnly, "number"},
    {"isOpen", IsOpen, readOnly, "boolean"},
    {"encoding", Encoding, readWrite, "string"},
    {"lineFeed", LineFeed, readWrite, "string"},
    {"readonly", ReadOnlyFile, readWrite, "boolean"},
    {"hidden", Hidden, readWrite, "boolean"},
    {"open", Open, method, "boolean,mode:string"},
    {"close", Close, method, "boolean"},
    {"copy", Copy, method, "boolean,target:string"},
    {"createAlias", CreateAlias, method, "boolean,target:string"},
    {"read", Read, method, "string,count:number"},
    {"readln", ReadLine, method, "string"},
    {"readch", ReadCharacter, method, "string"},
    {"write", Write, method, "boolean,text:string"},
    {"writeln", WriteLine, method, "boolean,text:string"},
    {"seek", Seek, method, "boolean,position:number,whence:number"},
    {"tell", Tell, method, "number"},
    {"flush", Flush, method, "boolean"},
    {nullptr, 0, 0, nullptr}};

struct LineFeedName {
    CRLFEncoding kind;
    const char* name;
};
constexpr LineFeedName lineFeeds[] = {
    {CRLFEncoding::CRLF, "Windows"}, {CRLFEncoding::CR, "Macintosh"}, {CRLFEncoding::LF, "Unix"}};

const char* lineFeedName(int kind) {
    if (kind == int(CRLFEncoding::Default)) kind = FileWrapper::getSystemLF();
    for (const LineFeedName& known : lineFeeds) {
        if (int(known.kind) == kind) return known.name;
    }
    return "";
}

/// More than any file has, and a number that scripts can write exactly.
constexpr double maxCount = 9007199254740992;

/// A script's number as a count of bytes or units. It is not NaN.
long long countOf(const Variant& value) {
    return static_cast<long long>(std::clamp(value.getDouble(), -maxCount, maxCount));
}

} // namespace

FileObject::FileObject() : FileEntry("File") {
    propertyManager = classProperties<commonTable, fileTable>();
}

InterfacePtr<FileEntry> FileObject::makeAnother() const {
    return InterfacePtr<FileEntry>::adopt(new FileObject);
}

int FileObject::locateDefault(FileSpec&) const { return ErrorCode::BadArgumentList; }

bool FileObject::exists() const { return getFileSpec().exists() && !getFileSpec().isFolder(); }

int FileObject::read(int id, Variant& result) const {
    switch (id) {
    case Eof:
        result = file().eof();
        break;
    case Length:
        result = file().getSize();
        break;
    case IsOpen:
        result = file().isOpen();
        break;
    case Encoding:
        result = file().getEncoding();
        break;
    case LineFeed:
        result = lineFeedName(file().getLF());
        break;
    case ReadOnlyFile:
        result = readAttribute(FileAttribute::ReadOnly);
        break;
    case Hidden:
        result = readAttribute(FileAttribute::Hidden);
        break;
    default:
        return FileEntry::read(id, result);
    }
    return ErrorCode::Ok;
}

bool FileObject::readAttribute(int attribute) const {
    int attributes = 0;
    return file().getAttributes(&attributes, nullptr) && (attributes & attribute) != 0;
}

int FileObject::write(int id, const Variant& value) {
    switch (id) {
    case Encoding:
        return file().setEncoding(value.getString()) ? ErrorCode::Ok : ErrorCode::BadArgument;
    case LineFeed:
        return setLineFeed(value.getString());
    case ReadOnlyFile:
        writeAttribute(FileAttribute::ReadOnly, value.getBool());
        return ErrorCode::Ok;
    case Hidden:
        writeAttribute(FileAttribute::Hidden, value.getBool());
        return ErrorCode::Ok;
    default:
        return FileEntry::write(id, value);
    }
}

int FileObject::setLineFeed(const String& name) {
    for (const LineFeedName& known : lineFeeds) {
        if (name.ucmp(known.name) != 0) continue;
        return file().setLF(int(known.kind)) ? ErrorCode::Ok : ErrorCode::BadArgument;
    }
    return ErrorCode::BadArgument;
}

void FileObject::writeAttribute(int attribute, bool isSet) {
    int attributes = 0;
    if (!file().getAttributes(&attributes, nullptr)) return;
    file().setAttributes(isSet ? attributes | attribute : attributes & ~attribute);
}

int FileObject::run(int id, const Array& args, Variant& result) {
    switch (id) {
    case Open:
        result = file().open(isGiven(args, 0) ? args[0].getString() : String(), nullptr, nullptr);
        return ErrorCode::Ok;
    case Close:
        result = file().close();
        return ErrorCode::Ok;
    case Copy:
        if (!isGiven(args, 0)) return ErrorCode::BadArgumentList;
        result = file().copy(args[0].getString());
        return ErrorCode::Ok;
    case CreateAlias:
        if (!isGiven(args, 0)) return ErrorCode::BadArgumentList;
        result = file().createAlias(args[0].getString(), false);
        return ErrorCode::Ok;
    default:
        return transfer(id, args, result);
    }
}

int FileObject::transfer(int id, const Array& args, Variant& result) {
    switch (id) {
    case Read:
        return readText(args, result);
    case ReadLine:
        readLine(result);
        return ErrorCode::Ok;
    case ReadCharacter:
        readCharacter(result);
        return ErrorCode::Ok;
    case Write:
    case WriteLine:
        result = writeText(args, id == WriteLine);
        return ErrorCode::Ok;
    case Seek:
        return seek(args, result);
    case Tell:
        result = file().tell();
        return ErrorCode::Ok;
    case Flush:
        result = file().flush();
        return ErrorCode::Ok;
    default:
        return FileEntry::run(id, args, result);
    }
}

int FileObject::readText(const Array& args, Variant& result) {
    const Variant count = isGiven(args, 0) ? args[0] : Variant(maxCount);
    if (std::isnan(count.getDouble())) return ErrorCode::TypeMismatch;
    String text;
    result.setNull();
    if (file().read(countOf(count), text)) result = text;
    return ErrorCode::Ok;
}

void FileObject::readLine(Variant& result) {
    String line;
    result.setNull();
    if (file().readln(line)) result = line;
}

void FileObject::readCharacter(Variant& result) {
    const int character = file().readch();
    result.setNull();
    if (character < 0) return;
    const auto point = static_cast<unsigned int>(character);
    result = String(&point, 1);
}

/// One text, so that all of it is written or nothing.
bool FileObject::writeText(const Array& args, bool appendLineEnd) {
    String text;
    for (unsigned i = 0; i < args.length(); ++i)
        text += args[i].getString();
    return file().write(text, appendLineEnd);
}

int FileObject::seek(const Array& args, Variant& result) {
    if (!isGiven(args, 0)) return ErrorCode::BadArgumentList;
    if (std::isnan(args[0].getDouble())) return ErrorCode::TypeMismatch;
    result = file().seek(countOf(args[0]), isGiven(args, 1) ? args[1].getInteger() : 0);
    return ErrorCode::Ok;
}

} // namespace krhost
