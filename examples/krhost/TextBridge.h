#pragma once

#include <krcore/text/String.h>

#include <duktape.h>

#include <string>
#include <string_view>

namespace krhost {

/// Text on its way between the library (UTF-16), the script engine (one to three bytes for each
/// UTF-16 unit, so surrogates are six bytes a pair and may stand alone) and the outer world
/// (UTF-8). U+0000 and lone surrogates survive between library and engine; outside, a lone
/// surrogate is written as U+FFFD.
namespace TextBridge {

/// The script string at a stack index, which must hold a string. Never leaves by a script error.
void read(duk_context* context, duk_idx_t index, KrCore::String& text);

/// Pushes a script string.
void push(duk_context* context, const KrCore::String& text);

/// Reads UTF-8 or the engine's bytes; every byte that belongs to neither becomes U+FFFD.
void decode(std::string_view bytes, KrCore::String& text);

std::string toUtf8(const KrCore::String& text);
/// The same from the engine's bytes.
std::string toUtf8(std::string_view scriptBytes);

} // namespace TextBridge

} // namespace krhost
