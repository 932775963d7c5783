#include "hosts/FileObject.h"

#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"

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
    {"", PropertyID::Constructor, method, "File\tNames a file,path:string\tIts path as a URI"},
    {"eof", Eof, readOnly, "boolean\tWhether nothing is left to read"},
    {"length", Length, readOnly, "number;-1\tThe size in bytes; -1 when there is no such file"},
    {"isOpen", IsOpen, readOnly, "boolean\tWhether the file is open"},
    {"encoding", Encoding, readWrite,
     "string\tThe encoding of the text\tOpening finds it out unless it is known. An empty text "
     "makes it unknown."},
    {"lineFeed", LineFeed, readWrite,
     "string\tWhat line ends become when they are written\tWindows or Unix or Macintosh."},
    {"readonly", ReadOnlyFile, readWrite, "boolean\tWhether the file may not be written"},
    {"hidden", Hidden, readWrite, "boolean\tWhether the system hides the file"},
    {"open", Open, method,
     "boolean\tOpens the file,mode:string\tr reads; w writes anew; e edits; a appends"},
    {"close", Close, method, "boolean\tCloses the file"},
    {"copy", Copy, method,
     "boolean\tCopies the file and replaces the target,target:any\tA path or a file or a folder"},
    {"createAlias", CreateAlias, method,
     "boolean\tMakes a shortcut here,target:any\tWhere it leads; a path or a file or a folder"},
    {"read", Read, method,
     "string;;;null\tReads text; null at the end,"
     "count:number;0;;undefined\tThe number of characters; else all that is left"},
    {"readln", ReadLine, method, "string;;;null\tReads a line without its end; null at the end"},
    {"readch", ReadCharacter, method, "string;;;null\tReads one character; null at the end"},
    {"write", Write, method, "boolean\tWrites all of the texts or nothing,...texts:any\tThe texts"},
    {"writeln", WriteLine, method, "boolean\tWrites them and a line end,...texts:any\tThe texts"},
    {"seek", Seek, method,
     "boolean\tMoves the position,position:number\tIn bytes,whence:SeekFrom;;;0\tFrom where"},
    {"tell", Tell, method, "number;-1\tThe position in bytes; -1 when the file is not open"},
    {"flush", Flush, method, "boolean\tHands what was written to the system"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts fileTexts = {
    .description = "A place for a file, whether or not there is one.",
    .details = "What fails is false or null, and the property error says why.",
    .sample = "var notes = new File(\"notes.txt\");\n"
              "if (!notes.open(\"r\")) print(notes.error);\n"
              "for (var line; (line = notes.readln()) !== null;) print(line);\n"
              "notes.close();"};

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

const ClassInfo* FileObject::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, fileTexts);
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
