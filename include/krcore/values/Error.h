#pragma once

#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/Export.h>
#include <krcore/foundation/Heap.h>
#include <krcore/values/ErrorInfo.h>

namespace KrCore {

class Cloneable;
class ErrorHead;
class LiveObject;
class String;
class Variant;

/// What went wrong: a stack of records, newest first. Operations that can fail take an `Error*`,
/// possibly null, and record their first failure in it.
///
/// Copies share their records until one of them changes. "Out of memory" and "Uncaught Exception",
/// pushed by their code alone onto an empty error, take no memory; they end the collecting: what is
/// pushed on top of them is ignored. A single `Error` object is not locked; copies may be used by
/// different threads.
///
/// Codes are looked up by their absolute value. Texts contain "%1" where an argument belongs; the
/// argument goes in verbatim, for every "%1" at once.
class KR_API Error : public Heap {
public:
    Error() noexcept;
    /// An error with one record, as `push(code, text, nullptr, localize)` makes it.
    Error(int code, const String& text, bool localize);
    Error(const Error& other) noexcept;
    Error& operator=(const Error& other) noexcept;
    ~Error();

    /// Pushes a record. With `localize` its text is the message of the code with `text` as the
    /// argument, otherwise `text` itself. `data`, which may be null, is cloned.
    void push(int code, const String& text, const Cloneable* data, bool localize);

    /// Pushes a record whose argument is the string form of `value`, and which keeps a copy of
    /// `value` as its error data.
    void push(int code, const Variant& value, const Cloneable* data);

    /// Pushes a record whose argument is the name that `object` gives one of its properties or
    /// methods; see `LiveBase::getErrorText`. Without `localize` the message is the untranslated
    /// one.
    void push(int code, const LiveObject& object, int id, bool localize, const Cloneable* data);

    /// Pushes a record with the plain message of the code, a "%1" in it left as it is.
    void push(int code, const Cloneable* data = nullptr);

    /// Pushes a copy of one record.
    void push(const ErrorInfo& record);

    /// Pushes copies of all records of `other`, in their order.
    void push(const Error& other);

    /// Says where the newest error happened: a position of -1 and a length of 0 are unknown.
    void setMoreInfo(const String& source, int line, int offset, int column, unsigned short length);

    /// Drops all records.
    void erase() noexcept;

    /// Code of the newest record, 0 when there is none.
    int getCode() const;
    /// The newest record, or null. Borrowed until this error changes.
    const ErrorInfo* getError() const;
    /// Error data of the newest record, or null when there is none.
    const Variant* getErrorData() const;

    /// Sets `text` to the texts of all records, newest first, joined by "\n- ".
    void getFullText(String& text) const;

    /// Gives a code a message and an error class of the host's, in front of the built-in table. A
    /// null class name is "Error". Any thread.
    static void defineError(int code, const String& text, const char* className);

    /// Takes the definition back, and with its last definition a class name.
    static void undefineError(int code);

    /// The message, not localized, and the error class of a code. True for codes that were defined
    /// or that the built-in table has; other codes read "Error #%1" of class "Error", and code 0
    /// has no text.
    static bool getErrorDefinition(int code, String& text, String& className);

    /// Whether scripts know an error class of this name: "Error", "TypeError", ..., or the class of
    /// a defined code. Names compare exactly.
    static bool isErrorClass(const String& name);

private:
    void adopt(ErrorInfo* record);
    void unique();

    ErrorHead* head_;
};

} // namespace KrCore

/// Sets `text` to the localized message of a code. On entry `text` may hold a message: it stays for
/// codes that nobody has defined, while a defined or built-in message replaces it; except with a
/// built-in one, it is then localized as it stands, not under the key of the code.
extern "C" KR_API void KrGetErrorMsg(int code, KrCore::String& text);
