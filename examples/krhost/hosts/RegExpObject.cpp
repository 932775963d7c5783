#include "hosts/RegExpObject.h"

#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"
#include "hosts/MatchObject.h"
#include "hosts/MatchSearch.h"
#include "hosts/ReplacementText.h"

#include <krcore/containers/Array.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>

#include <limits>

namespace krhost {

using namespace KrCore;

namespace {

enum RegExpID : int {
    Source = 1,
    Flags,
    IsGlobal,
    IgnoresCase,
    IsMultiline,
    LastIndex,
    Test,
    Exec,
    Match,
    Replace,
    Split,
    ToString
};

constexpr int readOnly = int(InfoType::ReadOnly);
constexpr int method = int(InfoType::Method);

constexpr LivePropertyInfo regExpTable[] = {
    {"", PropertyID::Constructor, method,
     "KrRegExp\tCompiles a pattern\tOne that does not compile is a SyntaxError.,"
     "pattern:any;;;(?:)\tThe pattern as text without slashes; or another KrRegExp,"
     "flags:string;;;undefined\tLetters out of g i m; else none or those of the other"},
    {"source", Source, readOnly, "string\tThe pattern"},
    {"flags", Flags, readOnly, "string\tThe letters of the flags"},
    {"global", IsGlobal, readOnly, "boolean\tWhether it goes on from match to match; flag g"},
    {"ignoreCase", IgnoresCase, readOnly, "boolean\tWhether case makes no difference; flag i"},
    {"multiline", IsMultiline, readOnly, "boolean\tWhether ^ and $ match at line ends; flag m"},
    {"lastIndex", LastIndex, int(InfoType::ReadWrite),
     "number;0;;0\tWhere the next search of a global one begins\tTest and exec move it behind the "
     "match and one further if that was empty; without a match they set it to 0."},
    {"test", Test, method,
     "boolean\tWhether there is a match,text:string\tThe text,"
     "start:number;0;;undefined\tWhere to begin; else lastIndex of a global one or 0"},
    {"exec", Exec, method,
     "KrMatch;;;null\tFinds a match; null when there is none,text:string\tThe text,"
     "start:number;0;;undefined\tWhere to begin; else lastIndex of a global one or 0"},
    {"match", Match, method,
     "any\tThe texts of all matches of a global one; else the first KrMatch; or null,"
     "text:string\tThe text"},
    {"replace", Replace, method,
     "string\tThe text with the first match replaced or with all of a global one,"
     "text:string\tThe text,"
     "replacement:any\tA text with $1 to $99 $& $` $' $$; or a function of the match and its "
     "groups and its index and the text"},
    {"split", Split, method,
     "string;;;;array\tThe texts between the matches\tWhat groups capture comes in between.,"
     "text:string\tThe text,limit:number;0;;undefined\tHow many at most"},
    {"toString", ToString, method, "string\tThe pattern between slashes and the flags"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts regExpTexts = {
    .description = "A regular expression of the library.",
    .details = "Handed to the host it goes as a value: what comes back is another object.",
    .sample = "var pair = new KrRegExp(\"(\\\\w+)=(\\\\d+)\", \"g\");\n"
              "for (var match; (match = pair.exec(text)) !== null;) print(match[1], match.index);\n"
              "print(pair.replace(text, \"$2 $1\"));"};

struct FlagLetter {
    int flag;
    char letter;
};
constexpr FlagLetter flagLetters[] = {
    {RegExpObject::Global, 'g'}, {RegExp::IgnoreCase, 'i'}, {RegExp::MultiLine, 'm'}};

String flagsText(int flags) {
    String text;
    for (const FlagLetter& known : flagLetters) {
        if ((flags & known.flag) != 0) text.append(known.letter);
    }
    return text;
}

/// False for letters that are none, or that come twice.
bool readFlags(const String& text, int& flags) {
    flags = 0;
    for (const unsigned short unit : text) {
        int found = 0;
        for (const FlagLetter& known : flagLetters) {
            if (unit == static_cast<unsigned char>(known.letter)) found = known.flag;
        }
        if (found == 0 || (flags & found) != 0) return false;
        flags |= found;
    }
    return true;
}

/// Records what is wrong with a pattern, which may be long.
int refuse(const String& pattern, const char* reason, Error* err) {
    constexpr int shownLength = 100;
    String text = "/" + pattern.substr(0, shownLength);
    if (pattern.length() > shownLength) text += "...";
    text += "/ ";
    text += reason;
    if (err) err->push(ErrorCode::SyntaxError, text, nullptr, false);
    return ErrorCode::SyntaxError;
}

bool isGiven(const Array& args, unsigned index) {
    return index < args.length() && args[index].isDefined();
}

/// Reads a position or a count of a script.
int readCount(const Variant& value, int& count) {
    const int code = value.validate(0.0, std::numeric_limits<double>::infinity());
    if (code == ErrorCode::Ok) count = value.getInteger();
    return code;
}

bool isFunction(const Variant& value) {
    return value.getLiveObject() && value.getLiveObject()->getClassName() == "Function";
}

/// Calls a script function with a match and appends what it returns.
int appendReturned(String& text, LiveObject& function, const MatchSearch& search, Error* err) {
    Array args;
    for (int group = 0; group < search.groupCount(); ++group)
        args += search.group(group);
    args += search.capture(0).start;
    args += search.subject();
    Variant returned;
    const int code = function.call("call", args, returned, err);
    if (code == ErrorCode::Ok) text += returned.getString();
    return code;
}

} // namespace

RegExpObject::RegExpObject() : RegExpObject(RegExp()) {}

/// The library's default expression has no place for the match itself; compiled from its pattern it
/// has one.
RegExpObject::RegExpObject(const RegExp& expression)
    : LiveObject("KrRegExp", false),
      expression_(expression.good() && expression.getCaptureLength() == 0
                      ? RegExp(expression.getPattern(), expression.getFlags())
                      : expression) {
    propertyManager = classProperties<regExpTable>();
}

int RegExpObject::clone(LiveObject** result, bool deep) const {
    auto copy = InterfacePtr<LiveObject>::adopt(new RegExpObject(expression_));
    const int code = cloneContent(*copy, deep);
    *result = code == ErrorCode::Ok ? copy.detach() : nullptr;
    return code;
}

int RegExpObject::initialize(const Array& args, Error* err) {
    if (args.length() == 0) return ErrorCode::Ok;
    const RegExp* other = args[0].getRegExp();
    if (!other && args[0].getType() != VariantType::String)
        return setError(ErrorCode::TypeMismatch, PropertyID::Constructor, err, false);
    const String pattern = other ? other->getPattern() : args[0].getString();
    int flags = other ? other->getFlags() : 0;
    if (isGiven(args, 1) && !readFlags(args[1].getString(), flags))
        return refuse(pattern, "has flags other than g, i and m, or one twice", err);
    const RegExp compiled(pattern, flags);
    if (!compiled.good()) return refuse(pattern, "does not compile", err);
    expression_ = compiled;
    return ErrorCode::Ok;
}

InfoType RegExpObject::getType(int id) {
    const InfoType kind = propertyManager->getType(id);
    return kind != InfoType::Unknown ? kind : LiveObject::getType(id);
}

const ClassInfo* RegExpObject::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, regExpTexts);
}

int RegExpObject::get(int id, Variant& result, Error* err) const {
    result.erase();
    const int code = isValid() ? read(id, result) : int(ErrorCode::ObjectInvalid);
    if (code == ErrorCode::NotFound) return LiveObject::get(id, result, err);
    return setError(code, id, err, false);
}

int RegExpObject::read(int id, Variant& result) const {
    switch (id) {
    case Source:
        result = expression_.getPattern();
        break;
    case Flags:
        result = flagsText(expression_.getFlags());
        break;
    case IsGlobal:
        result = has(Global);
        break;
    case IgnoresCase:
        result = has(RegExp::IgnoreCase);
        break;
    case IsMultiline:
        result = has(RegExp::MultiLine);
        break;
    case LastIndex:
        result = lastIndex_;
        break;
    default:
        return ErrorCode::NotFound;
    }
    return ErrorCode::Ok;
}

int RegExpObject::put(int id, const Variant& value, Error* err) {
    if (!isValid() || id < Source || id > LastIndex) return LiveObject::put(id, value, err);
    const int code = id == LastIndex ? readCount(value, lastIndex_) : int(ErrorCode::ReadOnly);
    return setError(code, id, err, false);
}

int RegExpObject::apply(LiveObject& self, int id, const Array& args, Variant& result,
                        Error* err) const {
    result.erase();
    if (!isValid() || !self.isValid()) return setError(ErrorCode::ObjectInvalid, id, err, false);
    // A script may call a method of this class on anything.
    auto* object = dynamic_cast<RegExpObject*>(&self);
    if (!object) return setError(ErrorCode::WrongClass, id, err, false);
    const int code = object->run(id, args, result, err);
    if (code == ErrorCode::NotFound) return LiveObject::apply(self, id, args, result, err);
    return setError(code, id, err, false);
}

int RegExpObject::run(int id, const Array& args, Variant& result, Error* err) {
    if (id >= Source && id <= LastIndex) return ErrorCode::NotAFunction;
    if (id == ToString) {
        result = "/" + expression_.getPattern() + "/" + flagsText(expression_.getFlags());
        return ErrorCode::Ok;
    }
    if (id >= Test && id <= Split && args.length() == 0) return ErrorCode::BadArgumentList;
    switch (id) {
    case Test:
    case Exec:
        return find(id, args, result);
    case Match:
        return match(args[0].getString(), result);
    case Replace:
        return replace(args, result, err);
    case Split:
        return split(args, result);
    default:
        return ErrorCode::NotFound;
    }
}

int RegExpObject::find(int id, const Array& args, Variant& result) {
    int start = has(Global) ? lastIndex_ : 0;
    if (isGiven(args, 1)) {
        if (const int code = readCount(args[1], start); code != ErrorCode::Ok) return code;
    }
    MatchSearch search(expression_, args[0].getString(), start);
    const bool found = search.find();
    if (has(Global)) lastIndex_ = found ? search.position() : 0;
    if (id == Test) {
        result = found;
    } else if (found) {
        result = InterfacePtr<MatchObject>::adopt(new MatchObject(search)).get();
    } else {
        result.setNull();
    }
    return ErrorCode::Ok;
}

int RegExpObject::match(const String& text, Variant& result) const {
    result.setNull();
    MatchSearch search(expression_, text, 0);
    if (!search.find()) return ErrorCode::Ok;
    if (!has(Global)) {
        result = InterfacePtr<MatchObject>::adopt(new MatchObject(search)).get();
        return ErrorCode::Ok;
    }
    Array texts;
    do {
        texts += search.group(0);
    } while (search.find());
    result = texts;
    return ErrorCode::Ok;
}

int RegExpObject::replace(const Array& args, Variant& result, Error* err) const {
    if (args.length() < 2) return ErrorCode::BadArgumentList;
    const bool isCalled = isFunction(args[1]);
    const String replacement = isCalled ? String() : args[1].getString();
    MatchSearch search(expression_, args[0].getString(), 0);
    String text;
    int done = 0;
    while (search.find()) {
        const Capture whole = search.capture(0);
        search.appendRange(text, done, whole.start);
        done = whole.end;
        if (isCalled) {
            const int code = appendReturned(text, *args[1].getLiveObject(), search, err);
            if (code != ErrorCode::Ok) return code;
        } else {
            ReplacementText::append(text, replacement, search);
        }
        if (!has(Global)) break;
    }
    search.appendRange(text, done, search.subject().length());
    result = text;
    return ErrorCode::Ok;
}

/// As the language has it: an empty match splits nothing off at the start, the end, or right behind
/// another match; an empty text that matches has no parts.
int RegExpObject::split(const Array& args, Variant& result) const {
    int limit = std::numeric_limits<int>::max();
    if (isGiven(args, 1)) {
        if (const int code = readCount(args[1], limit); code != ErrorCode::Ok) return code;
    }
    MatchSearch search(expression_, args[0].getString(), 0);
    const int length = search.subject().length();
    Array parts;
    int done = 0;
    bool isWhole = true;
    while (search.find()) {
        const Capture whole = search.capture(0);
        isWhole = isWhole && length > 0;
        if (whole.start >= length) break;
        if (whole.end == done) continue;
        parts += search.subject().substr(done, whole.start - done);
        for (int group = 1; group < search.groupCount(); ++group)
            parts += search.group(group);
        done = whole.end;
    }
    if (isWhole) parts += search.subject().substr(done);
    if (parts.length() > static_cast<unsigned>(limit))
        parts.setLength(static_cast<unsigned>(limit));
    result = parts;
    return ErrorCode::Ok;
}

} // namespace krhost
