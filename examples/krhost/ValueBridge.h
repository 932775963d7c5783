#pragma once

#include "LongText.h"
#include "Native.h"

namespace krhost {

/// Values on their way between scripts and the library.
///
/// | library | script |
/// |---|---|
/// | undefined, null, boolean, number | the same |
/// | string | the same, unit by unit: U+0000 and lone surrogates too |
/// | `Array` | an array; undefined elements become holes and holes undefined elements |
/// | `Point`, `Rect` | an object with exactly the numbers x, y or left, top, right, bottom |
/// | `LiveObject` | an object that stands for it, always the same one (`ObjectBridge`) |
/// | `RegExp` | a `KrRegExp`, another one each time |
/// | `ScriptObject` | the function or other object that the script handed over |
///
/// Symbols, buffers, arrays more than 100 deep (so also one that contains itself), and arrays of
/// the library with more than 10,000,000 elements are refused by a script error.
class ValueBridge {
public:
    static constexpr int maxArrayDepth = 100;
    static constexpr unsigned maxArrayLength = 10'000'000;
    /// The numbers that a point and a rectangle consist of.
    static constexpr const char* pointNames[] = {"x", "y"};
    static constexpr const char* rectNames[] = {"left", "top", "right", "bottom"};

    explicit ValueBridge(ScriptEngine& engine) : engine_(engine) {}

    /// Reads the script value at a stack index.
    void read(CallFrame& frame, duk_idx_t index, KrCore::Variant& value) {
        readValue(frame, index, value, 0);
    }
    /// Reads the stack from `first` to the top into `frame.arguments`.
    void readArguments(CallFrame& frame, duk_idx_t first);

    /// Pushes a script value.
    void push(CallFrame& frame, const KrCore::Variant& value) { pushValue(frame, value, 0); }

    /// Lets go of the text that is remembered for the next crossing.
    void forgetText(CallFrame& frame) { longText_.forget(frame.context); }

private:
    void readText(CallFrame& frame, duk_idx_t index, KrCore::Variant& value);
    void pushText(CallFrame& frame, const KrCore::String& text);
    void readValue(CallFrame& frame, duk_idx_t index, KrCore::Variant& value, int depth);
    void readObject(CallFrame& frame, duk_idx_t index, KrCore::Variant& value, int depth);
    void readArray(CallFrame& frame, duk_idx_t index, KrCore::Variant& value, int depth);
    bool readCoordinates(CallFrame& frame, duk_idx_t index, KrCore::Variant& value);
    void readScriptObject(CallFrame& frame, duk_idx_t index, KrCore::Variant& value);
    void pushValue(CallFrame& frame, const KrCore::Variant& value, int depth);
    void pushRegExp(CallFrame& frame, const KrCore::RegExp& expression);
    void pushArray(CallFrame& frame, const KrCore::Array& array, int depth);
    void refuseDepth(CallFrame& frame, int depth);

    ScriptEngine& engine_;
    LongText longText_;
};

} // namespace krhost
