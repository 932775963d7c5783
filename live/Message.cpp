#include <krcore/messages/Message.h>

namespace KrCore {

Message::Message(int id) : id_(id) {}

Message::~Message() = default;

Variant* Message::getData() const { return nullptr; }

} // namespace KrCore
