#include <krcore/live/LiveBase.h>

#include <krcore/live/LiveObject.h>
#include <krcore/text/String.h>
#include <krcore/values/Error.h>

namespace KrCore {

namespace {

constinit unsigned nextID = PropertyID::FirstGenerated;

// In ID order from PropertyID::FirstOperator. Kept: "<<<" is how scripts have always spelled the
// unsigned shift here (held by LiveBaseText.NamesOperators).
constexpr const char* operatorNames[] = {"~",  "!",   "*",   "/", "%",  "+",  "-",
                                         "<<", ">>",  "<<<", "<", "<=", "in", "instanceof",
                                         "==", "===", "&",   "|", "^"};
constexpr int operatorNameCount = sizeof operatorNames / sizeof *operatorNames;

/// Null for every ID that is no operator, and for the reserved ones.
const char* operatorName(int id) {
    if (!PropertyID::isOperator(id)) return nullptr;
    const int index = id - PropertyID::FirstOperator;
    return index < operatorNameCount ? operatorNames[index] : nullptr;
}

/// Small IDs read as numbers, those that look like four characters as such, others hexadecimal.
void printUnnamed(String& text, const String& className, int id) {
    constexpr int largestPlain = 9999;
    constexpr unsigned highHalves = 0xF0F0F0F0U;
    constexpr unsigned fourBlanks = 0x20202020U;
    const auto bits = static_cast<unsigned>(id);
    const auto byte = [bits](unsigned shift) { return static_cast<int>(bits >> shift & 0xFFU); };
    if (id >= -largestPlain && id <= largestPlain) {
        text.print("{LiveObject(\"%ls\").property(%ld)}", className.wstr(), id);
    } else if ((bits & highHalves) < fourBlanks) {
        text.print("{LiveObject(\"%ls\").property(0x%08lx)}", className.wstr(), id);
    } else {
        text.print("{LiveObject(\"%ls\").property('%c%c%c%c')}", className.wstr(), byte(24),
                   byte(16), byte(8), byte(0));
    }
}

} // namespace

LiveBase::LiveBase() = default;

LiveBase::~LiveBase() = default;

const void* LiveBase::getAs(int) const { return nullptr; }

void* LiveBase::getAs(int) { return nullptr; }

void LiveBase::invalidate() { valid_ = false; }

void LiveBase::revalidate() { valid_ = true; }

int LiveBase::getNextID() { return static_cast<int>(nextID++); }

int LiveBase::getPropertyText(String& text, int id, bool raw) const {
    if (raw) {
        // Kept: the directive is "%u", which prints the low 16 bits, and the l is text
        // (held by LiveBaseText.PrintsIndexesRaw).
        text.print("[%ul]", static_cast<unsigned>(id));
        return ErrorCode::Ok;
    }
    const auto* object = static_cast<const LiveObject*>(getAs(TypeTag::Object));
    const String className = object ? object->getClassName() : String("LiveObject");
    if (id == PropertyID::Constructor) {
        text = className + "()";
        return ErrorCode::Ok;
    }
    if (const char* name = operatorName(id)) {
        text = "operator \"" + String(name) + "\"()";
        return ErrorCode::Ok;
    }
    if (object && object->getNameForID(id, text, RequestFlag::Library) == ErrorCode::Ok)
        return ErrorCode::Ok;
    printUnnamed(text, className, id);
    return ErrorCode::NotFound;
}

int LiveBase::recordError(int code, int id, Error* err, bool raw) const {
    if (!err || err->getError()) return code;
    String text;
    getPropertyText(text, id, raw);
    err->push(code, text, nullptr, true);
    return code;
}

int LiveBase::getErrorText(String& text, int code, const String* arg) const {
    const String argument = arg ? *arg : String();
    text.erase();
    KrGetErrorMsg(code, text);
    text.replaceAll("%1", argument);
    text.strip();
    return ErrorCode::Ok;
}

int LiveBase::getErrorText(String& text, int code, int id, bool raw) const {
    String argument;
    const int result = getPropertyText(argument, id, raw);
    getErrorText(text, code, &argument);
    return result;
}

} // namespace KrCore
