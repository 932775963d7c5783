#pragma once

#include <krcore/text/String.h>

#include <duktape.h>

namespace krhost {

/// The last long text that crossed between a script and the library, in both of its forms: a script
/// that walks through a text hands it over again and again. The engine has each text once, and
/// texts of the library share their units until one is changed, so an address tells whether a text
/// is this one.
class LongText {
public:
    static constexpr int minLength = 1024;

    /// Reads the script string at a stack index; false when it is another one.
    bool read(duk_context* context, duk_idx_t index, KrCore::String& text) const;
    /// Pushes the script string of a text; false, with nothing pushed, when it is another one.
    bool push(duk_context* context, const KrCore::String& text) const;

    /// Remembers a text whose script string is at a stack index, if it is long. May leave by a
    /// script error.
    void remember(duk_context* context, duk_idx_t index, const KrCore::String& text);
    /// The same.
    void forget(duk_context* context);

private:
    KrCore::String text_;
    void* scriptText_ = nullptr; // the stash keeps it alive; null for none
};

} // namespace krhost
