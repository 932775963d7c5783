#include <krcore/containers/Array.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LiveObject.h>
#include <krcore/text/UnicodeUtils.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>

#include <utility>

namespace KrCore {

namespace {

/// Reads one object literal. Members that can fail return an error code, which they have recorded.
class LiteralReader {
public:
    LiteralReader(const String& text, int flags, Error& err)
        : text_(text), flags_(flags), err_(err) {}

    /// The whole text as pairs for an object that is there already.
    int readInto(LiveObject& object);
    /// The whole text as a new object.
    int readNew(InterfacePtr<LiveObject>& object);

private:
    static constexpr int deepest = 512;

    int readClassName(String& className);
    int readMembers(LiveObject& object);
    int readMember(LiveObject& object);
    int readMemberName(String& name);
    int readValue(LiveObject& parent, Variant& value);
    int readObject(LiveObject& parent, const String& className, Variant& value);
    int readArray(LiveObject& parent, Variant& value);
    int readString(String& value);
    int readWord(Variant& value);
    int readEnd();
    int create(LiveObject* parent, const String& className, InterfacePtr<LiveObject>& object);

    unsigned short unit() const { return text_.wstr()[position_]; } // 0 at the end
    bool isAtEnd() const { return position_ >= text_.length(); }
    bool accept(char expected);
    void skipBlanks();
    String readIdentifier();
    int fail(int code, const String& argument);

    const String text_; // a copy: the text may change when properties are written
    const int flags_;
    Error& err_;
    int position_ = 0;
    int line_ = 1;
    int depth_ = 0;
};

int LiteralReader::fail(int code, const String& argument) {
    if (err_.getError()) return code;
    err_.push(code, argument, nullptr, true);
    err_.setMoreInfo(String(), line_, position_, -1, 0);
    return code;
}

void LiteralReader::skipBlanks() {
    constexpr unsigned short lastBlank = 32;
    for (; !isAtEnd() && unit() <= lastBlank; ++position_) {
        if (unit() == '\n') ++line_;
    }
}

bool LiteralReader::accept(char expected) {
    skipBlanks();
    if (isAtEnd() || unit() != static_cast<unsigned char>(expected)) return false;
    ++position_;
    return true;
}

String LiteralReader::readIdentifier() {
    const int start = position_;
    if (UnicodeUtils::isSymbolStart(unit())) {
        while (!isAtEnd() && UnicodeUtils::isSymbolChar(unit()))
            ++position_;
    }
    return text_.substr(start, position_ - start);
}

int LiteralReader::readClassName(String& className) {
    skipBlanks();
    className = readIdentifier();
    return accept('{') ? ErrorCode::Ok : fail(ErrorCode::Expected, "{");
}

int LiteralReader::readInto(LiveObject& object) {
    String className;
    if (const int code = readClassName(className)) return code;
    if (!className.isEmpty() && !(className == object.getClassName()))
        return fail(ErrorCode::WrongClass, className);
    const int code = readMembers(object);
    return code ? code : readEnd();
}

int LiteralReader::readNew(InterfacePtr<LiveObject>& object) {
    String className;
    if (const int code = readClassName(className)) return code;
    if (const int code = create(nullptr, className, object)) return code;
    const int code = readMembers(*object);
    return code ? code : readEnd();
}

int LiteralReader::readEnd() {
    skipBlanks();
    return isAtEnd() ? ErrorCode::Ok : fail(ErrorCode::SyntaxError, text_.substr(position_, 1));
}

int LiteralReader::create(LiveObject* parent, const String& className,
                          InterfacePtr<LiveObject>& object) {
    const String name = className.isEmpty() ? String("Object") : className;
    LiveObject* made = nullptr;
    const int code =
        parent ? parent->createLocal(&made, name, flags_) : LiveObject::create(&made, name, flags_);
    if (code == ErrorCode::NotAnObject && name == "Object") made = new LiveObject(name, true);
    object = InterfacePtr<LiveObject>::adopt(made);
    if (made) return ErrorCode::Ok;
    return fail(code ? code : static_cast<int>(ErrorCode::NotAnObject), name);
}

/// Reads what follows "{", up to and with "}".
int LiteralReader::readMembers(LiveObject& object) {
    if (accept('}')) return ErrorCode::Ok;
    do {
        if (const int code = readMember(object)) return code;
    } while (accept(','));
    return accept('}') ? ErrorCode::Ok : fail(ErrorCode::Expected, "}");
}

int LiteralReader::readMember(LiveObject& object) {
    String name;
    if (const int code = readMemberName(name)) return code;
    if (!accept(':')) return fail(ErrorCode::Expected, ":");
    Variant value;
    if (const int code = readValue(object, value)) return code;
    const bool isFirstError = !err_.getError();
    const int code = object.put(name, value, 0, &err_);
    if (code && isFirstError && err_.getError())
        err_.setMoreInfo(String(), line_, position_, -1, 0);
    return code ? fail(code, name) : static_cast<int>(ErrorCode::Ok);
}

int LiteralReader::readMemberName(String& name) {
    skipBlanks();
    if (unit() == '"' || unit() == '\'') return readString(name);
    name = readIdentifier();
    return name.isEmpty() ? fail(ErrorCode::Expected, "name") : static_cast<int>(ErrorCode::Ok);
}

int LiteralReader::readValue(LiveObject& parent, Variant& value) {
    struct Level {
        explicit Level(int& depth) : depth_(depth) { ++depth_; }
        ~Level() { --depth_; }
        int& depth_;
    };
    Level level(depth_);
    skipBlanks();
    if (depth_ > deepest) return fail(ErrorCode::StackOverrun, String());
    if (accept('[')) return readArray(parent, value);
    if (unit() == '"' || unit() == '\'') {
        String text;
        const int code = readString(text);
        value = text;
        return code;
    }
    const int start = position_;
    const int startLine = line_;
    const String className = readIdentifier();
    if (accept('{')) return readObject(parent, className, value);
    position_ = start;
    line_ = startLine;
    return readWord(value);
}

int LiteralReader::readObject(LiveObject& parent, const String& className, Variant& value) {
    InterfacePtr<LiveObject> object;
    if (const int code = create(&parent, className, object)) return code;
    value = *object;
    return readMembers(*object);
}

int LiteralReader::readArray(LiveObject& parent, Variant& value) {
    Array elements;
    if (!accept(']')) {
        do {
            Variant element;
            if (const int code = readValue(parent, element)) return code;
            elements.safeGet(elements.length()) = std::move(element);
        } while (accept(','));
        if (!accept(']')) return fail(ErrorCode::Expected, "]");
    }
    value = elements;
    return ErrorCode::Ok;
}

int LiteralReader::readString(String& value) {
    const auto quote = static_cast<char>(unit());
    const int start = position_;
    if (!text_.parse(value, position_)) return fail(ErrorCode::Expected, String() + quote);
    for (int i = start; i < position_; ++i) {
        if (text_.wstr()[i] == '\n') ++line_;
    }
    return ErrorCode::Ok;
}

int LiteralReader::readWord(Variant& value) {
    const int end = text_.findAny(",]}", position_);
    String word = text_.substr(position_, end < 0 ? -1 : end - position_);
    const int wordLine = line_;
    for (const int past = position_ + word.length(); position_ < past; ++position_) {
        if (unit() == '\n') ++line_;
    }
    word.strip();
    if (word.isEmpty()) {
        line_ = wordLine;
        return fail(ErrorCode::Expected, "value");
    }
    if (word == "null") {
        value.setNull();
    } else if (word == "true" || word == "false") {
        value = word == "true";
    } else {
        value = Variant(word).getDouble();
    }
    return ErrorCode::Ok;
}

} // namespace

int LiveObject::parse(const String& text, Error& err, int flags) {
    if (!isUsable())
        return setError(ErrorCode::ObjectInvalid, PropertyID::Constructor, &err, false);
    return LiteralReader(text, flags, err).readInto(*this);
}

int LiveObject::parse(const String& text, int flags) {
    Error ignored;
    return parse(text, ignored, flags);
}

int LiveObject::parseNew(const String& text, LiveObject*& result, Error& err, int flags) {
    result = nullptr;
    InterfacePtr<LiveObject> object;
    const int code = LiteralReader(text, flags, err).readNew(object);
    if (code == ErrorCode::Ok) result = object.detach();
    return code;
}

int LiveObject::parseNew(const String& text, LiveObject*& result, int flags) {
    Error ignored;
    return parseNew(text, result, ignored, flags);
}

} // namespace KrCore
