#pragma once

#include "ScriptEngine.h"

namespace krhost {

/// Reads lines from the terminal and runs each, prints its value, and goes on after errors, until
/// the input ends.
void runPrompt(ScriptEngine& engine);

} // namespace krhost
