#include <krcore/messages/ArgumentsMessage.h>
#include <krcore/messages/DataMessage.h>

#include <krcore/live/LiveObject.h>
#include <krcore/text/String.h>

namespace KrCore {

DataMessage::DataMessage(int id) : Message(id) {}
DataMessage::DataMessage(int id, const String& value) : Message(id), data_(value) {}
DataMessage::DataMessage(int id, const Variant& value) : Message(id), data_(value) {}
DataMessage::DataMessage(int id, int value) : Message(id), data_(value) {}
DataMessage::DataMessage(int id, double value) : Message(id), data_(value) {}
DataMessage::DataMessage(int id, LiveObject* value) : Message(id), data_(value, 0) {}
DataMessage::DataMessage(int id, const char* value) : Message(id), data_(value) {}
DataMessage::DataMessage(int id, const unsigned short* value) : Message(id), data_(value) {}
DataMessage::DataMessage(int id, bool value) : Message(id), data_(value) {}

DataMessage::~DataMessage() = default;

Variant* DataMessage::getData() const { return &data_; }

ArgumentsMessage::ArgumentsMessage(int id, const Array& args) : DataMessage(id), args_(args) {}

ArgumentsMessage::~ArgumentsMessage() = default;

} // namespace KrCore
