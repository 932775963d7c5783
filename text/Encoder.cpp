#include <krcore/text/Encoder.h>

namespace KrCore {

Encoder::~Encoder() = default;

const Encoder* Encoder::find(const String& /*name*/) const { return nullptr; }

} // namespace KrCore
