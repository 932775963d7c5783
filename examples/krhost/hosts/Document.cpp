#include "hosts/Document.h"

#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"
#include "hosts/Lines.h"

#include <krcore/containers/Array.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/values/Error.h>

#include <array>
#include <utility>

namespace krhost {

using namespace KrCore;

namespace {

enum DocumentID : int { Name = 1, Length, LinesObject, Append, Line, Close };

constexpr int method = int(InfoType::Method);

constexpr LivePropertyInfo documentTable[] = {
    {"", PropertyID::Constructor, method,
     "Document\tOpens a document\tThe host has room for two; opening one more closes the oldest.,"
     "name:string;;;untitled\tIts name"},
    {"name", Name, int(InfoType::ReadWrite), "string\tThe name"},
    {"length", Length, int(InfoType::ReadOnly), "number;0\tThe number of lines"},
    {"lines", LinesObject, int(InfoType::ReadOnly), "Lines\tThe lines as elements"},
    {"append", Append, method,
     "number\tAdds a line and gives their number,text:string\tThe new line"},
    {"line", Line, method, "string\tOne of the lines,index:number;0\tIts number from 0 on"},
    {"close", Close, method, "undefined\tCloses the document\tEvery later use is an error."},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts documentTexts = {
    .description = "A document on the desk of the host.",
    .details = "It can be closed while a script still has it, by the script or by the host.",
    .sample = "var doc = new Document(\"notes\");\n"
              "doc.append(\"first line\");\n"
              "print(doc.length, doc.lines[0]);\n"
              "doc.close();"};

} // namespace

/// The open documents, oldest first. They are not counted: a document leaves when it dies.
class Document::Desk {
public:
    static void open(Document& document) {
        if (places_.back()) places_.front()->close();
        for (Document*& place : places_) {
            if (place) continue;
            place = &document;
            return;
        }
    }
    static void leave(const Document& document) {
        for (std::size_t i = 0; i < places_.size(); ++i) {
            if (places_[i] != &document) continue;
            for (; i + 1 < places_.size(); ++i)
                places_[i] = places_[i + 1];
            places_.back() = nullptr;
        }
    }

private:
    static constinit std::array<Document*, 2> places_;
};

constinit std::array<Document*, 2> Document::Desk::places_{};

Document::Document() : LiveObject("Document", false) {
    propertyManager = classProperties<documentTable>();
}

Document::~Document() { close(); }

/// A document is opened by `initialize`; its copies are closed ones.
int Document::clone(LiveObject** result, bool deep) const {
    const auto copy = InterfacePtr<Document>::adopt(new Document);
    if (const int code = cloneContent(*copy, deep); code != ErrorCode::Ok) {
        *result = nullptr;
        return code;
    }
    copy->addRef();
    *result = copy.get();
    return ErrorCode::Ok;
}

int Document::initialize(const Array& args, Error*) {
    name_ = args.length() > 0 ? args[0].getString() : String("untitled");
    if (lines_) return ErrorCode::Ok;
    lines_ = new Array;
    Desk::open(*this);
    return ErrorCode::Ok;
}

void Document::close() {
    Desk::leave(*this);
    delete std::exchange(lines_, nullptr);
    invalidate();
}

InfoType Document::getType(int id) {
    const InfoType kind = propertyManager->getType(id);
    return kind != InfoType::Unknown ? kind : LiveObject::getType(id);
}

const ClassInfo* Document::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, documentTexts);
}

int Document::get(int id, Variant& result, Error* err) const {
    if (lines_ && id == Name) {
        result = name_;
    } else if (lines_ && id == Length) {
        result = lines_->length();
    } else if (lines_ && id == LinesObject) {
        readLines(result);
    } else {
        return LiveObject::get(id, result, err); // 45 for a closed document
    }
    return ErrorCode::Ok;
}

/// The lines hold the document, so the document does not hold them.
void Document::readLines(Variant& result) const {
    auto lines = linesObject_.lock();
    if (!lines) {
        lines = InterfacePtr<Lines>::adopt(new Lines(const_cast<Document&>(*this)));
        linesObject_ = lines.get();
    }
    result = lines.get();
}

int Document::put(int id, const Variant& value, Error* err) {
    if (!lines_ || id != Name) return LiveObject::put(id, value, err);
    name_ = value.getString();
    return setError(invokeAutostore(err), id, err, false);
}

int Document::apply(LiveObject& self, int id, const Array& args, Variant& result,
                    Error* err) const {
    result.erase();
    auto* document = dynamic_cast<Document*>(&self);
    if (!document) return setError(ErrorCode::WrongClass, id, err, false);
    if (!document->lines_) return setError(ErrorCode::ObjectInvalid, id, err, false);
    const int code = document->run(id, args, result);
    if (code == ErrorCode::NotFound) return LiveObject::apply(self, id, args, result, err);
    return setError(code, id, err, false);
}

int Document::run(int id, const Array& args, Variant& result) {
    switch (id) {
    case Append:
        *lines_ += args[0].getString();
        result = lines_->length();
        return ErrorCode::Ok;
    case Line: {
        const double index = args[0].getDouble();
        if (!(index >= 0 && index < lines_->length())) return ErrorCode::OutOfRange;
        result = (*lines_)[args[0].getUInteger()];
        return ErrorCode::Ok;
    }
    case Close:
        close();
        return ErrorCode::Ok;
    default:
        return ErrorCode::NotFound;
    }
}

} // namespace krhost
