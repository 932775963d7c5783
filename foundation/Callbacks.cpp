#include <krcore/foundation/Callbacks.h>

#include <atomic>

namespace KrCore {

namespace {

constinit std::atomic<Callbacks*> installed = nullptr;

} // namespace

Callbacks::~Callbacks() = default;

Callbacks* Callbacks::get() { return installed; }

void Callbacks::set(Callbacks* callbacks) { installed = callbacks; }

bool Callbacks::getLocale(String&) const { return false; }

bool Callbacks::getApplicationName(String&) const { return false; }

bool Callbacks::getMainWindow(void*&) const { return false; }

bool Callbacks::mayShowDialogs(bool&) const { return false; }

bool Callbacks::modalDialog(bool) { return false; }

bool Callbacks::reportError(const Error&) { return false; }

bool Callbacks::writeLine(const String&) { return false; }

bool Callbacks::idle(bool&) { return false; }

} // namespace KrCore
