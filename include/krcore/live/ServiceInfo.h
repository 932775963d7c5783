#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Refcountable.h>
#include <krcore/live/InfoState.h>
#include <krcore/live/InfoType.h>

namespace KrCore {

class FileSpec;
class ParamInfo;
class String;
class TypeInfo;
class XML;

/// Describes one property or method of a class. Records are shared by counting their references
/// and stay usable when what they describe is gone; their texts then are what was known before.
/// A record belongs to one thread at a time.
class KR_API ServiceInfo : public Refcountable {
public:
    /// The languages that see it, as the bits of `PropertyFlag::LanguageMask`; here the library's.
    virtual int getLanguage() const;
    /// The base says `InfoState::Ordinary`.
    virtual InfoState getState();
    virtual bool getName(String& name) const = 0;
    /// The short description, or the `longText`. False with an empty text when there is none.
    virtual bool getDescription(bool longText, String& text) const;
    /// The property ID.
    virtual int getID() const = 0;
    virtual InfoType getType() const = 0;
    /// The data type of a property, the return type of a method. Borrowed from this record.
    virtual const TypeInfo& getTypeInfo() const = 0;
    /// The type as a property of what can also be called; the base gives the same as `getTypeInfo`.
    virtual const TypeInfo& getTypeInfo2() const;
    virtual int getParamCount() const;
    /// A parameter, counted from 0; null when there is none. The result carries a reference.
    virtual const ParamInfo* getParamInfo(int index) const;
    /// A file with an example of the use, or its text. False when there is none.
    virtual bool getSampleCode(FileSpec& file) const;
    virtual bool getSampleCode(String& text) const;

    /// The description as a "property" or "method" element; for what is both, a list of the
    /// "method" and the "property". Null for other kinds and when a parameter's record is missing.
    /// The elements are in no namespace. The result carries a reference.
    XML* toXML() const;

protected:
    ServiceInfo() noexcept = default;
    ~ServiceInfo() override;
};

} // namespace KrCore
