#pragma once

namespace KrCore {

/// What the host gave to InitTerm::setStartupSpec, for the file-system layer; null when it gave
/// nothing.
const char* startupSpec();

} // namespace KrCore
