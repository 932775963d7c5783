#pragma once

#include <string>

/// The log of a server, 1 MB of UTF-16, the same in every run. Each line has a date, a time, a
/// level, a thread and a component; then comes a message of one of several kinds.
std::u16string makeLogText();
