#pragma once

namespace KrCore {

/// The library's code for one of Expat's; 0 for no error, and for a document without elements,
/// which is none.
int errorCodeOfExpat(int code) noexcept;

} // namespace KrCore
