#include "KeptValue.h"

namespace krhost {

KeptValue::~KeptValue() { letGo(); }

void KeptValue::letGo() {
    if (!values_) return;
    values_->holders_[slot_] = nullptr;
    values_->dropped_.push_back(slot_); // has room, see reserveSlot
    values_ = nullptr;
}

void KeptValue::keep(KeptValues& values, duk_context* context, duk_idx_t index) {
    index = duk_normalize_index(context, index);
    slot_ = values.reserveSlot(*this);
    values_ = &values;
    duk_push_heapptr(context, values.slots_);
    duk_dup(context, index);
    duk_put_prop_index(context, -2, slot_);
    duk_pop(context);
}

bool KeptValue::push(duk_context* context) const {
    if (!values_) return false;
    duk_push_heapptr(context, values_->slots_);
    duk_get_prop_index(context, -1, slot_);
    duk_remove(context, -2);
    return true;
}

void KeptValues::install(duk_context* context) {
    duk_push_heap_stash(context);
    slots_ = duk_get_heapptr(context, duk_push_array(context));
    duk_put_prop_string(context, -2, "keptValues");
    duk_pop(context);
}

unsigned KeptValues::reserveSlot(KeptValue& holder) {
    if (free_.empty()) {
        // All that a later drop needs is made now: a destructor cannot fail.
        const std::size_t count = holders_.size() + 1;
        free_.reserve(count);
        dropped_.reserve(count);
        holders_.push_back(&holder);
        return static_cast<unsigned>(count - 1);
    }
    const unsigned slot = free_.back();
    free_.pop_back();
    holders_[slot] = &holder;
    return slot;
}

void KeptValues::releaseDropped(duk_context* context) {
    const auto emptySlot = [](duk_context* inside, void* data) -> duk_ret_t {
        duk_del_prop_index(inside, -1, *static_cast<unsigned*>(data));
        return 0;
    };
    duk_push_heapptr(context, slots_);
    while (!dropped_.empty()) {
        unsigned slot = dropped_.back();
        dropped_.pop_back();
        duk_safe_call(context, emptySlot, &slot, 0, 0);
        free_.push_back(slot);
    }
    duk_pop(context);
}

void KeptValues::detachAll() {
    for (KeptValue* holder : holders_) {
        if (holder) holder->values_ = nullptr;
    }
    holders_.clear();
    free_.clear();
    dropped_.clear();
}

} // namespace krhost
