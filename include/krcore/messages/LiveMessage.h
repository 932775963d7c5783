#pragma once

#include <krcore/containers/Array.h>
#include <krcore/messages/DataMessage.h>

namespace KrCore {

class Error;
class SimpleArray;

/// A request of a live object to its listeners.
///
/// A listener that can answer puts the value into `*getData()`, the result code into `getError()`
/// (0 success, 2 not found, or any other error code) and returns true from `notify`. A listener
/// that cannot answer returns false, and the next one is asked; what it wrote into the message is
/// not looked at unless a later listener answers.
///
/// A listener may call the object, also to look up other names while it answers a GetID. The name
/// it is being asked for is not asked for again meanwhile: looking that up gives 2. A GetID within
/// 128 others on one thread is not sent either; the look-up gives 27.
///
/// | ID | propertyID | data on entry | args | language |
/// |---|---|---|---|---|
/// | GetID | answer: the ID | the name; answer: the kind (`InfoType`) | | look-up flags |
/// | Get | the ID | undefined; answer: the value | | |
/// | Put | the ID | the new value | | |
/// | Call | the ID | undefined; answer: the result | the arguments | |
/// | Invoke | 0 | the name; answer: the result | the arguments | |
/// | Enumerate | 0 | undefined; IDs go to `getEnumIDs()` | | request flags |
/// | GetByIndex | the index | undefined; answer: the element | | |
/// | PutByIndex | the index | the new element | | |
/// | DeleteByIndex | the index | undefined | | |
/// | GetLength | 0 | undefined; answer: the length | | |
/// | PutLength | the length | undefined | | |
///
/// Indexes and lengths from 2,147,483,648 up come as negative numbers of the same bits.
class KR_API LiveMessage : public DataMessage {
public:
    LiveMessage(const LiveObject& object, int messageID, SimpleArray& enumIDs);
    LiveMessage(const LiveObject& object, int messageID, int propertyID, const Array& args,
                Error* extError);
    LiveMessage(const LiveObject& object, int messageID, int propertyID, const Variant& data,
                Error* extError);
    LiveMessage(const LiveObject& object, int messageID, int propertyID, Error* extError);
    ~LiveMessage() override;

    /// The object that the request concerns; of a Call the script's `this`. Borrowed.
    const LiveObject* getThis() const { return this_; }

    /// The property ID; requests of collections carry an element index or a length here.
    int& getPropertyID() { return propertyID_; }

    const Array& getArgs() const { return args_; }

    /// 0x10000 unless the request says otherwise (table above).
    int& getLanguage() { return language_; }

    /// The array that takes the IDs of an enumeration, else null. Borrowed.
    SimpleArray* getEnumIDs() const { return enumIDs_; }

    /// The requester's error record, possibly null. A listener that records a failure of its own
    /// here also reports the code through `getError()`.
    Error* getExtError() const { return extError_; }

    /// The listener's result code, 0 at first.
    int& getError() { return error_; }

private:
    const LiveObject* this_;
    int propertyID_ = 0;
    Array args_;
    int language_;
    SimpleArray* enumIDs_ = nullptr;
    Error* extError_ = nullptr;
    int error_ = 0;
};

} // namespace KrCore
