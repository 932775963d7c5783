#pragma once

#include <krcore/messages/Message.h>
#include <krcore/values/Variant.h>

namespace KrCore {

class LiveObject;
class String;

/// A message with one value, which listeners may read and replace.
class KR_API DataMessage : public Message {
public:
    explicit DataMessage(int id); ///< The value is undefined.
    DataMessage(int id, const String& value);
    DataMessage(int id, const Variant& value);
    DataMessage(int id, int value);
    DataMessage(int id, double value);
    DataMessage(int id, LiveObject* value); ///< Null gives a null value; else it is counted.
    DataMessage(int id, const char* value); ///< 8-bit text, ISO 8859-1.
    DataMessage(int id, const unsigned short* value);
    DataMessage(int id, bool value);
    DataMessage(int id, const void* value) = delete; ///< Any other pointer would turn into a bool.
    ~DataMessage() override;

    /// Never null.
    Variant* getData() const override;

private:
    mutable Variant data_; // listeners answer through the const getData()
};

} // namespace KrCore
