#pragma once

#include "Holdings.h"
#include "Native.h"

namespace krhost {

/// What happens when a script uses the elements of a collection or array: `obj[i]`, `obj[i] = v`,
/// `i in obj`, `delete obj[i]`, and their part of a listing. An index is a name from "0" to
/// "4294967294" as the language writes such a number; all other names are properties.
class ElementTraps {
public:
    /// A listing of more elements than that is refused, for the engine holds each name twice; also
    /// one that would have to look for them in a longer array. A loop by length does it.
    static constexpr unsigned maxListed = 100'000;
    static constexpr unsigned maxSearched = 10'000'000;

    /// Whether the key at a stack index means an element of the object. Never jumps.
    static bool isElement(duk_context* context, duk_idx_t key, const HeldObject& held,
                          unsigned& index);

    static duk_ret_t get(CallFrame& frame, const HeldObject& held, unsigned index);
    static duk_ret_t set(CallFrame& frame, HeldObject& held, unsigned index, duk_idx_t value);
    static duk_ret_t has(CallFrame& frame, const HeldObject& held, unsigned index);
    /// What deleting means is up to the collection; an array's element becomes undefined.
    static duk_ret_t remove(CallFrame& frame, const HeldObject& held, unsigned index);

    /// The length as far as a listing is concerned: 0 for an object without elements.
    static unsigned lengthToList(CallFrame& frame, const HeldObject& held);
    /// Whether there is an element at an index below the length. In an array undefined ones are
    /// holes.
    static bool isThere(const HeldObject& held, unsigned index);
    static duk_ret_t refuseToList(CallFrame& frame);

private:
    static int clear(CallFrame& frame, const HeldObject& held, unsigned index);
    static duk_ret_t refuse(CallFrame& frame, const HeldObject& held, unsigned index, int code);
};

} // namespace krhost
