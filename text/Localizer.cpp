#include <krcore/text/Localizer.h>

#include "foundation/Context.h"
#include "foundation/LockSlots.h"
#include "foundation/ModuleHooks.h"
#include "platform/Locale.h"
#include "text/LocaleName.h"
#include "text/TextPairs.h"

#include <krcore/containers/Array.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/Callbacks.h>
#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

#include <algorithm>
#include <atomic>
#include <cstdint>

namespace KrCore {

// Exported, for callers on Windows that take its address.
constexpr int Localizer::notCompared;

namespace {

constinit Localizer* defaultLocalizer = nullptr;
/// Null until somebody asks.
constinit String* cachedLocale = nullptr;
constinit std::atomic<bool> perContextEnabled = true;

bool isKey(const String& text) { return text.ncmp("$$$", 3) == 0; }

std::int64_t asWord(const Localizer& localizer) {
    return reinterpret_cast<std::intptr_t>(&localizer);
}

const Localizer* fromWord(std::int64_t word) {
    return reinterpret_cast<const Localizer*>(static_cast<std::intptr_t>(word));
}

/// Asks one localizer after the other until `ask` returns true. A localizer may push and pop while
/// it is asked, so the walk goes over a copy of the stack.
template <class Ask>
bool askLocalizers(Ask ask) {
    const Context* context = perContextEnabled ? currentContext() : nullptr;
    if (!context) return false; // The default localizer answers nothing.
    const SimpleArray stack = context->localizerStack ? *context->localizerStack : SimpleArray();
    if (context->localizer && ask(*context->localizer)) return true;
    for (int i = stack.length() - 1; i >= 0; --i) {
        if (ask(*fromWord(stack[i]))) return true;
    }
    return false;
}

/// Like `askLocalizers`, for questions that are answered by changing `text`: each localizer gets a
/// copy of its own, so that one that does not answer leaves no trace.
template <class Ask>
bool askForText(String& text, Ask ask) {
    return askLocalizers([&](const Localizer& localizer) {
        String offered = text;
        if (!ask(localizer, offered)) return false;
        text = offered;
        return true;
    });
}

/// The locale to translate for: the host's, or the user's.
String wantedLocale() {
    String locale;
    const Callbacks* host = Callbacks::get();
    if (host && host->getLocale(locale) && !locale.isEmpty()) return locale;
    return Localizer::getLocale();
}

String systemLocale() {
    Platform::UserLocale user;
    if (!Platform::readUserLocale(user)) return "en_US";
    String name = user.language;
    if (user.country[0] != 0) name += String("_") + user.country;
    return normalizedLocale(name);
}

bool isDigit(unsigned short unit) { return unit >= '0' && unit <= '9'; }

/// Reads the digits at `position` and moves behind them. Saturates above all array lengths.
std::uint64_t readNumber(const String& text, int& position) {
    constexpr std::uint64_t limit = std::uint64_t{1} << 33;
    std::uint64_t number = 0;
    // The terminator is no digit.
    for (; isDigit(text.wstr()[position]); ++position)
        number = std::min(limit, number * 10 + (text.wstr()[position] - '0'));
    return number;
}

/// `text` with its placeholders filled in. What lies between them is appended in one piece.
String substituted(const String& text, const Array* args) {
    const std::uint64_t count = args ? args->length() : 0;
    String result;
    int copied = 0;
    for (int i = text.find(u'%'); i >= 0; i = text.find(u'%', i)) {
        const unsigned short next = text.wstr()[i + 1];
        if (next == '%') {
            result.append(text.wstr() + copied, i + 1 - copied);
            i += 2;
        } else if (isDigit(next)) {
            result.append(text.wstr() + copied, i - copied);
            const std::uint64_t number = readNumber(text, ++i);
            if (number >= 1 && number <= count)
                result.append((*args)[static_cast<unsigned int>(number - 1)].getString());
        } else {
            ++i; // Any other "%" is text.
            continue;
        }
        copied = i;
    }
    if (copied == 0) return text;
    result.append(text.wstr() + copied, text.length() - copied);
    return result;
}

} // namespace

void startLocalizer() {
    defaultLocalizer = new Localizer;
    currentContext()->localizer = defaultLocalizer;
}

void stopLocalizer() {
    delete cachedLocale;
    cachedLocale = nullptr;
    delete defaultLocalizer;
    defaultLocalizer = nullptr;
    perContextEnabled = true;
}

void endLocalizerOf(Context& context) {
    delete context.localizerStack;
    context.localizerStack = nullptr;
    context.localizer = nullptr;
}

Localizer::Localizer() = default;

Localizer::~Localizer() = default;

const Localizer& Localizer::get() {
    const Context* context = perContextEnabled ? currentContext() : nullptr;
    return context && context->localizer ? *context->localizer : *defaultLocalizer;
}

const Localizer& Localizer::getDefault() { return *defaultLocalizer; }

void Localizer::set(const Localizer* localizer) { currentContext()->localizer = localizer; }

void Localizer::push(const Localizer& localizer) {
    Context* context = currentContext();
    if (!context->localizerStack) context->localizerStack = new SimpleArray;
    context->localizerStack->append(asWord(localizer));
}

const Localizer* Localizer::pop() {
    SimpleArray* stack = currentContext()->localizerStack;
    return stack ? fromWord(stack->removeAt(stack->length() - 1)) : nullptr;
}

bool Localizer::remove(const Localizer& localizer) {
    SimpleArray* stack = currentContext()->localizerStack;
    return stack && stack->remove(asWord(localizer));
}

void Localizer::usePerContext(bool enabled) { perContextEnabled = enabled; }

String Localizer::localize(const String& text, const Array* args) {
    String localized = text;
    if (isKey(localized)) {
        getZString(localized);
    } else {
        askForText(localized, [](const Localizer& localizer, String& offered) {
            return localizer.localizeText(offered);
        });
    }
    return substituted(localized, args);
}

void Localizer::getZString(String& text) {
    String resolved = text;
    if (isKey(resolved)) {
        resolved.replaceAll("\n", "\\n");
        const String locale = wantedLocale();
        const bool answered =
            askForText(resolved, [&](const Localizer& localizer, String& offered) {
                return localizer.getZString(offered, locale, String::emptyString());
            });
        if (!answered) resolved.split('=');
    }
    replaceTextPairs(resolved);
    text = resolved;
}

String Localizer::getLocale() {
    String locale;
    const bool answered = askForText(locale, [](const Localizer& localizer, String& offered) {
        return localizer.getLocale(offered);
    });
    if (answered) return locale;

    LibraryLock guard(LockSlot::LocaleCache);
    if (!cachedLocale) cachedLocale = new String(systemLocale());
    return *cachedLocale;
}

bool Localizer::getErrorMessage(int code, String& text) {
    if (isKey(text)) getZString(text);
    String message = text;
    const bool answered = askForText(message, [&](const Localizer& localizer, String& offered) {
        return localizer.getErrorMsg(code, offered);
    });
    if (!answered) return false;
    if (isKey(message)) getZString(message);
    text = message;
    return true;
}

String Localizer::caseConvert(const String& text, bool lower) {
    String converted = text;
    const bool answered = askForText(converted, [&](const Localizer& localizer, String& offered) {
        return localizer.localizedCaseConvert(offered, lower);
    });
    if (answered) return converted;
    if (lower)
        converted.toLower();
    else
        converted.toUpper();
    return converted;
}

int Localizer::compare(const String& a, const String& b) {
    int result = notCompared;
    const bool answered = askLocalizers([&](const Localizer& localizer) {
        result = localizer.localizedCompare(a, b);
        return result != notCompared;
    });
    return answered ? result : a.cmp(b);
}

bool Localizer::getZString(String&, const String&, const String&) const { return false; }

bool Localizer::getLocale(String&) const { return false; }

bool Localizer::localizeText(String&) const { return false; }

bool Localizer::localizedCaseConvert(String&, bool) const { return false; }

int Localizer::localizedCompare(const String&, const String&) const { return notCompared; }

bool Localizer::getErrorMsg(int, String&) const { return false; }

} // namespace KrCore
