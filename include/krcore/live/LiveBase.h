#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/FourCharCode.h>
#include <krcore/foundation/Lockable.h>
#include <krcore/foundation/Refcountable.h>

namespace KrCore {

class Error;
class LivePropertyManager;
class String;

/// Tags for `LiveBase::getAs` and the type the pointer has.
namespace TypeTag {
inline constexpr int Object = fourCharCode(" obj");     ///< `LiveObject`: the object itself.
inline constexpr int Value = fourCharCode(" val");      ///< `Variant`: the object's value.
inline constexpr int Collection = fourCharCode(" col"); ///< `LiveCollection`: the object itself.
inline constexpr int Array = fourCharCode(" arr");      ///< `LiveArray`: the object itself.
inline constexpr int ArrayElements =
    fourCharCode(" ard"); ///< `Array`: the elements of a `LiveArray`.
} // namespace TypeTag

/// What live objects and their components share: a reference count, a lock, the property manager of
/// their class, and whether the host's thing behind them is still there.
class KR_API LiveBase : public Refcountable, public Lockable {
public:
    /// This object as the type that a tag names, or null. A derived class answers its own tags and
    /// leaves the others to its base. Borrowed from this object.
    virtual const void* getAs(int tag) const;
    virtual void* getAs(int tag);

    /// Says that the host's thing has died; every operation fails with code 45 from then on.
    virtual void invalidate();
    /// Says that there is a host's thing again.
    virtual void revalidate();

    /// The localized message of an error code with every "%1" replaced by `arg` (null: nothing).
    /// Returns 0.
    virtual int getErrorText(String& text, int code, const String* arg) const;
    /// The same with the property's text as argument. Returns what `getPropertyText` returns.
    virtual int getErrorText(String& text, int code, int id, bool raw) const;

    bool isValid() const { return valid_; }

    /// A new property ID, from 0x1F800000 upwards. Not atomic: called on the script
    /// thread; objects that draw IDs for names of their own do it under a lock.
    static int getNextID();

    /// The text that stands for a property in messages: its name, or a form like
    /// {LiveObject("Thing").property(7)} when it has none (2 is returned then, else 0). `raw` gives
    /// "[%ul]", for element indexes; the directive prints 16 bits, so 65536 reads "[0l]".
    int getPropertyText(String& text, int id, bool raw) const;

    /// Records a failure and returns `code`. Nothing is recorded for code 0, without an `err`, or
    /// when an error is there already: the first one stays.
    int setError(int code, int id, Error* err, bool raw) const {
        return code == 0 ? code : recordError(code, id, err, raw);
    }

protected:
    LiveBase();
    ~LiveBase() override;

    /// What the class declares; a derived class assigns it, in its constructor as a rule. Borrowed,
    /// null for none. Its lock is held around every call.
    LivePropertyManager* propertyManager = nullptr;

private:
    int recordError(int code, int id, Error* err, bool raw) const;

    bool valid_ = true;
};

} // namespace KrCore
