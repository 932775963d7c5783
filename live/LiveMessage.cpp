#include <krcore/messages/LiveMessage.h>

#include <krcore/live/PropertyFlags.h>

namespace KrCore {

LiveMessage::LiveMessage(const LiveObject& object, int messageID, SimpleArray& enumIDs)
    : DataMessage(messageID), this_(&object), language_(RequestFlag::Library), enumIDs_(&enumIDs) {}

LiveMessage::LiveMessage(const LiveObject& object, int messageID, int propertyID, const Array& args,
                         Error* extError)
    : DataMessage(messageID), this_(&object), propertyID_(propertyID), args_(args),
      language_(RequestFlag::Library), extError_(extError) {}

LiveMessage::LiveMessage(const LiveObject& object, int messageID, int propertyID,
                         const Variant& data, Error* extError)
    : DataMessage(messageID, data), this_(&object), propertyID_(propertyID),
      language_(RequestFlag::Library), extError_(extError) {}

LiveMessage::LiveMessage(const LiveObject& object, int messageID, int propertyID, Error* extError)
    : DataMessage(messageID), this_(&object), propertyID_(propertyID),
      language_(RequestFlag::Library), extError_(extError) {}

LiveMessage::~LiveMessage() = default;

} // namespace KrCore
