#include <krcore/foundation/Event.h>

#include "foundation/EventState.h"

namespace KrCore {

Event::Event() : state_(EventState::make()) {}

Event::~Event() { state_->close(); }

void Event::signal() { state_->signal(); }

void Event::wait() { state_->wait(); }

} // namespace KrCore
