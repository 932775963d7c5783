#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/FourCharCode.h>
#include <krcore/foundation/Root.h>

namespace KrCore {

class Broadcaster;
class Variant;

/// The message IDs that the library itself sends. Any other value is free for hosts.
namespace MessageID {
inline constexpr int GetID = fourCharCode("loGi");         ///< LiveObject: resolve an unknown name.
inline constexpr int Get = fourCharCode("loGe");           ///< LiveObject: read a property.
inline constexpr int Put = fourCharCode("loPu");           ///< LiveObject: write a property.
inline constexpr int Invoke = fourCharCode("loIn");        ///< LiveObject: call a method by name.
inline constexpr int Call = fourCharCode("loCa");          ///< LiveObject: call a method by ID.
inline constexpr int Enumerate = fourCharCode("loEn");     ///< LiveObject: add IDs to a listing.
inline constexpr int GetByIndex = fourCharCode("loIg");    ///< Collection: read an element.
inline constexpr int PutByIndex = fourCharCode("loIp");    ///< Collection: write an element.
inline constexpr int DeleteByIndex = fourCharCode("loIt"); ///< Collection: delete an element.
inline constexpr int GetLength = fourCharCode("loLG");     ///< Collection: read the length.
inline constexpr int PutLength = fourCharCode("loLS");     ///< Collection: set the length.
inline constexpr int Deleting = fourCharCode("DELE");      ///< Dying broadcaster, first message.
inline constexpr int Deleted = fourCharCode("DEL!");       ///< Dying broadcaster, second message.
inline constexpr int All = fourCharCode("ALL!"); ///< Registration only: wants every message.
} // namespace MessageID

/// One synchronous message. It lives as long as the call that broadcasts it; listeners must not
/// keep its address.
class KR_API Message : public Root {
public:
    explicit Message(int id);
    ~Message() override;

    /// The value the message carries, through which a listener also answers. Null for a plain
    /// message. Borrowed from the message.
    virtual Variant* getData() const;

    int getID() const { return id_; }

    /// The broadcaster that is delivering the message; null outside a delivery. While a listener
    /// passes the message on to another broadcaster this is that other one, afterwards again the
    /// first. Under the two deletion messages it may only be compared, not called.
    const Broadcaster* getSender() const { return sender_; }

private:
    friend class Broadcaster;

    const Broadcaster* sender_ = nullptr;
    int id_;
};

} // namespace KrCore
