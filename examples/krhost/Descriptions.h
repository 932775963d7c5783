#pragma once

#include "Options.h"

#include <string>

namespace krhost::Descriptions {

/// Makes the description of the host class that is named, or of all (an empty name), in UTF-8.
/// False, with a complaint in its place, when there is no such class.
bool make(Options::Format format, const std::string& className, std::string& text);

} // namespace krhost::Descriptions
