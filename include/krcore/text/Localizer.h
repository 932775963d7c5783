#pragma once

#include <krcore/foundation/Root.h>

namespace KrCore {

class Array;
class String;

/// Where the user-visible texts of the library and its hosts get their language from. A text is
/// literal or a key such as "$$$/Path/Name=Default text": the part before the first "=" names the
/// entry, the part behind it is used when nobody translates the entry.
///
/// A host derives its translation source from this class and installs it. Every query asks the
/// calling thread's current localizer first, then the pushed ones from the top of the stack down,
/// and stops at the first that answers. The base class answers nothing, so that the fallback named
/// at each query applies.
///
/// Installed localizers are borrowed: the host removes them before it deletes them. Each thread's
/// context has its own current localizer and stack; a new thread begins with none.
class KR_API Localizer : public Root {
public:
    Localizer();
    ~Localizer() override;

    /// The thread's current localizer, or the default one when none is set or per-context
    /// localizers are off.
    static const Localizer& get();
    /// The library's own localizer, which translates nothing. It lives from start-up to shut-down.
    static const Localizer& getDefault();
    /// Replaces the current localizer of this thread; null for none.
    static void set(const Localizer* localizer);
    static void push(const Localizer& localizer);
    /// Takes the top off the stack; null when the stack is empty.
    static const Localizer* pop();
    /// Takes the lowest entry of `localizer` off the stack; false when there is none.
    static bool remove(const Localizer& localizer);

    /// Switches the localizers of all contexts off (and on again): then every query asks the
    /// default one alone, whatever a thread has installed. On after start-up; the host changes it
    /// while it alone runs.
    static void usePerContext(bool enabled);

    /// `text` in the user's language, with %1, %2, ... replaced by the text form of the arguments.
    /// An argument that is missing leaves nothing, "%%" is one "%", and "%" before anything else
    /// stays. Arguments are inserted as they are: neither translated nor searched for further
    /// placeholders.
    static String localize(const String& text, const Array* args);

    /// Resolves a key in place (the fallback is the part behind its first "=", nothing if there is
    /// none), then turns pairs such as "\n" or "^T" into the characters they stand for, in literal
    /// text too. An unknown "\x" becomes "x"; an unknown "^x" stays.
    static void getZString(String& text);

    /// The user's locale, such as "en_US". When no localizer answers it is read from the system
    /// once, normalised, and remembered until shut-down.
    static String getLocale();

    /// Offers the message of error `code` to the localizers, keys resolved before and after. False
    /// when none knows the code; `text` then is the resolved key.
    static bool getErrorMessage(int code, String& text);

    /// Falls back to `String::toLower` or `String::toUpper`.
    static String caseConvert(const String& text, bool lower);
    /// Falls back to `String::cmp`.
    static int compare(const String& a, const String& b);

protected:
    /// The answer of `localizedCompare` that means "ask the next one".
    static constexpr int notCompared = 0x7FFFFFFF;

    // What a translation source overrides. A true result means "answered"; text changed without a
    // true result is forgotten.

    /// Translates the key in `text`, default part included, in place. Line feeds in it are spelled
    /// "\n". `locale` names the wanted language; `extra` is empty.
    virtual bool getZString(String& text, const String& locale, const String& extra) const;
    virtual bool getLocale(String& locale) const;
    /// Translates literal text in place.
    virtual bool localizeText(String& text) const;
    virtual bool localizedCaseConvert(String& text, bool lower) const;
    virtual int localizedCompare(const String& a, const String& b) const;
    /// The message of `code`, as text or as a key. `text` comes in as the library's own message.
    virtual bool getErrorMsg(int code, String& text) const;
};

} // namespace KrCore
