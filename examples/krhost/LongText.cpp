#include "LongText.h"

namespace krhost {

using KrCore::String;

namespace {

constexpr char stashName[] = "longText";

} // namespace

bool LongText::read(duk_context* context, duk_idx_t index, String& text) const {
    if (!scriptText_ || duk_get_heapptr(context, index) != scriptText_) return false;
    text = text_;
    return true;
}

bool LongText::push(duk_context* context, const String& text) const {
    if (!scriptText_ || text.wstr() != text_.wstr()) return false;
    duk_push_heapptr(context, scriptText_);
    return true;
}

void LongText::remember(duk_context* context, duk_idx_t index, const String& text) {
    if (text.length() < minLength) return;
    index = duk_normalize_index(context, index);
    forget(context);
    duk_push_heap_stash(context);
    duk_dup(context, index);
    duk_put_prop_string(context, -2, stashName);
    duk_pop(context);
    scriptText_ = duk_get_heapptr(context, index);
    text_ = text;
}

void LongText::forget(duk_context* context) {
    scriptText_ = nullptr;
    text_.erase();
    duk_push_heap_stash(context);
    duk_del_prop_string(context, -1, stashName);
    duk_pop(context);
}

} // namespace krhost
