#pragma once

#include <krcore/live/LiveObject.h>

namespace KrCore {

/// A live object with a length and elements, which an indexable component or listeners keep.
///
/// The indexable component that was added last does the work, with its lock held and counted for
/// the length of the call. Without one, listeners are asked (`LiveMessage`; the property ID carries
/// the index or the length).
///
/// The length is also the property "length", or "Length" for the one language that ignores case. A
/// read-only collection takes no dynamic properties, and changes to it are refused with 46. Indexes
/// and lengths are counted from 0 and up to 4,294,967,295. Results are error codes as in
/// `LiveObject`; after a successful change the autostore target is written.
class KR_API LiveCollection : public LiveObject {
public:
    /// `lengthID` is the property ID of the length; 0 draws a new one.
    LiveCollection(const char* className, int lengthID, bool readOnly);

    const void* getAs(int tag) const override;
    void* getAs(int tag) override;
    int clone(LiveObject** result, bool deep) const override;
    /// An empty name becomes "Collection".
    const String& getClassName() const override;
    int getIDForName(const String& name, int& id, InfoType& kind, int flags) const override;
    int getNameForID(int id, String& name, int flags) const override;
    /// The length is listed last.
    int enumerate(SimpleArray& ids, int flags) const override;
    InfoType getType(int id) override;
    using LiveObject::get;
    using LiveObject::put;
    int get(int id, Variant& result, Error* err) const override;
    /// A length is an integer; a negative one is 0.
    int put(int id, const Variant& value, Error* err) override;

    /// The component's or a listener's answer; 0 when nobody answers.
    virtual int getLength(unsigned& length) const;
    /// Tells the component, and then the listeners too, whose answer counts if one is given. 0 when
    /// nobody cares.
    virtual int putLength(unsigned length);
    /// 41 when nobody keeps elements. Failures of this one and the next are recorded with the text
    /// "[%ul]", see `getPropertyText`.
    virtual int getByIndex(unsigned index, Variant& result, Error* err) const;
    virtual int putByIndex(unsigned index, const Variant& value, Error* err);
    /// What deleting means is up to whoever keeps the elements. 41 when nobody does. Kept:
    /// listeners are asked only when one of them listens for PutByIndex, though the message is
    /// DeleteByIndex (held by LiveCollectionTest.AsksListenersOfPutsToDelete).
    virtual int deleteByIndex(unsigned index);

    int getLengthID() const { return lengthID_; }
    bool isReadOnly() const { return readOnly_; }

protected:
    ~LiveCollection() override;

private:
    InfoType lengthKind() const { return readOnly_ ? InfoType::ReadOnly : InfoType::ReadWrite; }
    int refusal() const;

    int lengthID_;
    bool readOnly_;
};

} // namespace KrCore
