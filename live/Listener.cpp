#include <krcore/messages/Listener.h>

namespace KrCore {

Listener::Listener() = default;

Listener::Listener(const Listener&) {}

Listener& Listener::operator=(const Listener&) { return *this; }

Listener::~Listener() = default;

bool Listener::notify(Message&) { return false; }

} // namespace KrCore
