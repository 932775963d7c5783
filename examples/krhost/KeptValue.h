#pragma once

#include <duktape.h>

#include <memory>
#include <vector>

namespace krhost {

class KeptValues;

/// A script value that the host keeps from being collected. When the script engine goes first, the
/// value is lost and `push` says so.
class KeptValue {
public:
    KeptValue() = default;
    KeptValue(const KeptValue&) = delete;
    KeptValue& operator=(const KeptValue&) = delete;
    ~KeptValue();

    /// Keeps the value at a stack index. May leave by a script error.
    void keep(KeptValues& values, duk_context* context, duk_idx_t index);
    /// Pushes the value; false, with nothing pushed, when there is none (any more).
    bool push(duk_context* context) const;

    /// Keeps it no longer.
    void letGo();
    bool isKept() const { return values_ != nullptr; }

private:
    friend class KeptValues;

    KeptValues* values_ = nullptr; // null without a value
    unsigned slot_ = 0;
};

/// The slots of one script engine that hold such values.
class KeptValues {
public:
    KeptValues() = default;
    KeptValues(const KeptValues&) = delete;
    KeptValues& operator=(const KeptValues&) = delete;

    /// Makes the array of slots. May leave by a script error.
    void install(duk_context* context);

    /// Empties the slots that were given back. A value may be dropped at any time, also where the
    /// engine must not be called; so this is done later, between two calls.
    void releaseDropped(duk_context* context);
    bool hasDropped() const { return !dropped_.empty(); }

    /// The engine is about to end: takes the values away from their holders.
    void detachAll();

private:
    friend class KeptValue;

    unsigned reserveSlot(KeptValue& holder);

    void* slots_ = nullptr;           // the script array, which the stash keeps alive
    std::vector<KeptValue*> holders_; // by slot; null for a free one
    std::vector<unsigned> free_;
    std::vector<unsigned> dropped_;
};

} // namespace krhost
