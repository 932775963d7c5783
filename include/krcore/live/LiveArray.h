#pragma once

#include <krcore/containers/Array.h>
#include <krcore/live/LiveCollection.h>

namespace KrCore {

struct PrintedArray;

/// A collection that keeps its elements itself. Components and listeners are not asked for them,
/// except by `deleteByIndex`, which the array leaves to them (41 without). Objects among the
/// elements that know the array without counting it use a `WeakRef`, or must not call it when they
/// die.
class KR_API LiveArray : public LiveCollection {
public:
    /// Copies `elements`, which share their memory until either side changes.
    LiveArray(const Array& elements, const char* className, int lengthID, bool readOnly);
    LiveArray(const char* className, int lengthID, bool readOnly);

    /// Answers also `TypeTag::ArrayElements` and `TypeTag::Array`.
    const void* getAs(int tag) const override;
    void* getAs(int tag) override;
    int clone(LiveObject** result, bool deep) const override;
    /// Empties the array as well, even a read-only one.
    int reset() override;
    /// The answer of the method "toString", else the elements with "," between them; undefined ones
    /// are empty, one that cannot be read is "[error]" and ends the text. More than 1000 elements
    /// give "[too many elements]", which also stands where arrays lie more than 512 deep or the
    /// whole text holds more than 4,194,304 elements. An array within itself is "[object " + class
    /// name + "]". An invalid array is "[Invalid Object]"; the code is 0 all the same, so that
    /// texts around it show it.
    int toString(String& result) const override;

    /// The number of elements, of an invalid array too.
    int getLength(unsigned& length) const override;
    int putLength(unsigned length) override;
    /// Undefined where there is no element. Kept: a failure is recorded with the text of the
    /// length, not of the index (held by LiveArrayTest.RecordsReadsOnItsLength).
    int getByIndex(unsigned index, Variant& result, Error* err) const override;
    /// The array grows as need be. There is no element 4,294,967,295; writing it does nothing.
    int putByIndex(unsigned index, const Variant& value, Error* err) override;

protected:
    ~LiveArray() override;

    /// A derived class that changes them calls `invokeAutostore` afterwards.
    Array elements_;

private:
    void setElement(unsigned index, const Variant& value);
    bool askOwnMethod(String& result) const;
    void printElements(const PrintedArray& printing, String& result) const;
    void appendElement(String& text, const Variant& element) const;
};

} // namespace KrCore
