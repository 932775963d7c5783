#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Refcountable.h>
#include <krcore/live/InfoState.h>

namespace KrCore {

class String;
class TypeInfo;

/// Describes one parameter of a method. What the base answers means "not said".
class KR_API ParamInfo : public Refcountable {
public:
    /// The languages that see it, as the bits of `PropertyFlag::LanguageMask`.
    virtual int getLanguage() const;
    virtual InfoState getState();
    /// Like the next one, false with an empty text when nothing is known.
    virtual bool getName(String& name) const;
    /// The short description, or the `longText`.
    virtual bool getDescription(bool longText, String& text) const;
    /// Borrowed from this record. The base says `anyType`.
    virtual const TypeInfo& getTypeInfo() const;

protected:
    ParamInfo() noexcept = default;
    ~ParamInfo() override;
};

} // namespace KrCore
