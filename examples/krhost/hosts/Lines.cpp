#include "hosts/Lines.h"

#include "hosts/ClassProperties.h"
#include "hosts/Document.h"
#include "hosts/HostClassInfo.h"

#include <krcore/containers/Array.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LiveComponent.h>
#include <krcore/values/Error.h>

namespace krhost {

using namespace KrCore;

namespace {

enum LinesID : int { Length = 1, Join };

constexpr LivePropertyInfo linesTable[] = {
    {"length", Length, int(InfoType::ReadWrite),
     "number;0\tThe number of lines\tCan be made smaller only."},
    {"join", Join, int(InfoType::Method),
     "string\tAll lines in one text,separator:string\tWhat comes between two lines"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts linesTexts = {
    .description = "The lines of a document as elements.",
    .details = "Writing the element behind the last one adds a line. Deleting an element removes "
               "the line, and those behind it move up. When the document is closed, every use is "
               "an error.",
    .sample = "var lines = new Document(\"notes\").lines;\n"
              "lines[lines.length] = \"one more\";\n"
              "for (var i = 0; i < lines.length; i++) print(lines[i]);",
    .elements = "string"};

/// Keeps the elements. Results are error codes; the collection records them.
class DocumentLines : public LiveComponent {
public:
    explicit DocumentLines(Document* document) : document_(document) {
        propertyManager = classProperties<linesTable>();
    }

    bool isIndexable() const override { return true; }

    int getLength(const LiveObject&, unsigned& length) const override {
        const Array* lines = find();
        length = lines ? lines->length() : 0;
        return lines ? ErrorCode::Ok : ErrorCode::ObjectInvalid;
    }

    int putLength(LiveObject&, unsigned length) override {
        Array* lines = find();
        if (!lines) return ErrorCode::ObjectInvalid;
        if (length > lines->length()) return ErrorCode::OutOfRange;
        lines->setLength(length);
        return ErrorCode::Ok;
    }

    int getByIndex(const LiveObject&, unsigned index, Variant& result, Error*) const override {
        const Array* lines = find();
        if (!lines) return ErrorCode::ObjectInvalid;
        if (index >= lines->length()) return ErrorCode::OutOfRange;
        result = (*lines)[index];
        return ErrorCode::Ok;
    }

    int putByIndex(LiveObject&, unsigned index, const Variant& value, Error*) override {
        if (!find()) return ErrorCode::ObjectInvalid;
        const String text = value.getString(); // which a script may make, and close the document
        Array* lines = find();
        if (!lines) return ErrorCode::ObjectInvalid;
        if (index > lines->length()) return ErrorCode::OutOfRange;
        (*lines)[index] = text;
        return ErrorCode::Ok;
    }

    int deleteByIndex(LiveObject&, unsigned index) override {
        Array* lines = find();
        if (!lines) return ErrorCode::ObjectInvalid;
        lines->removeAt(index, 1);
        return ErrorCode::Ok;
    }

    int call(LiveObject& self, int id, const Array& args, Variant& result, Error* err) override {
        if (id != Join) return LiveComponent::call(self, id, args, result, err);
        if (args.length() == 0) return self.setError(ErrorCode::BadArgumentList, id, err, false);
        const String separator = args[0].getString();
        const Array* lines = find();
        if (!lines) return self.setError(ErrorCode::ObjectInvalid, id, err, false);
        String text;
        for (unsigned i = 0; i < lines->length(); ++i) {
            if (i > 0) text += separator;
            text += (*lines)[i].getString();
        }
        result = text;
        return ErrorCode::Ok;
    }

private:
    /// Null once the document is closed.
    Array* find() const { return document_ ? document_->lines() : nullptr; }

    InterfacePtr<Document> document_; // null for none
};

} // namespace

Lines::Lines() : Lines(nullptr) {}

Lines::Lines(Document& document) : Lines(&document) {}

Lines::Lines(Document* document) : LiveCollection("Lines", Length, false) {
    const auto component = InterfacePtr<DocumentLines>::adopt(new DocumentLines(document));
    addComponent(*component);
}

/// The copy shares the component, and so the document.
int Lines::clone(LiveObject** result, bool deep) const {
    const auto copy = InterfacePtr<Lines>::adopt(new Lines);
    *result = nullptr;
    if (const int code = cloneContent(*copy, deep); code != ErrorCode::Ok) return code;
    copy->addRef();
    *result = copy.get();
    return ErrorCode::Ok;
}

const ClassInfo* Lines::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, linesTexts);
}

} // namespace krhost
