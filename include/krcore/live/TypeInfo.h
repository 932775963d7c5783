#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Root.h>
#include <krcore/values/VariantType.h>

namespace KrCore {

class String;
class Variant;

/// The data type of what may be anything. No `Variant` is of this type.
inline constexpr VariantType anyType = static_cast<VariantType>(126);

/// The data type of a property, a parameter or a result. It belongs to the record that returns it
/// and lives as long as that one. The type of what nobody declares is asked of the object.
class KR_API TypeInfo : public Root {
public:
    ~TypeInfo() override;

    virtual VariantType getDataType() const = 0;
    /// The data class when there is one, else `convertDataTypeToString` of the type. The base
    /// returns true.
    virtual bool getDataTypeAsString(String& text) const;
    /// The class of an object. The base leaves the text empty and returns false.
    virtual bool getDataClass(String& className) const;
    /// Whether the value is an array of such elements. The base returns false.
    virtual bool isCollection() const;
    /// The range of a number; a bound that is not given is positive infinity, the lower one too.
    /// The base gives no bounds and returns false.
    virtual bool getValidRange(double& minimum, double& maximum) const;
    /// The base leaves the value undefined and returns false.
    virtual bool getDefaultValue(Variant& value) const;
    /// The base leaves the text empty and returns false.
    virtual bool getDescription(String& text) const;

    /// "undefined", "null", "boolean", "number", "string", "Object" (also for live objects),
    /// "point", "rect", "array", "filespec", "regexp", "unitvalue", "any"; "unknown" for every
    /// other value. Static storage.
    static const char* convertDataTypeToString(VariantType type);

    /// Reads the descriptor text of a property or method: fields separated by ",", first the type
    /// of the property or result, then the parameters. A field is
    ///
    ///     [name ":"] type [";" minimum [";" maximum [";" default [";" array]]]]
    ///
    /// and may be followed by a tab and a short description, and another tab and a long one. When
    /// the first field has a ":" anywhere, it is a parameter already and the type is "any".
    /// Otherwise it may name a second type behind a "/", that of a property that can also be
    /// called. A method has as many parameters as there are commas, or 1 when there is none but a
    /// ":"; so a list that begins with a parameter should begin with "any," instead. Blanks around
    /// fields and their parts do not count; the separators cannot be quoted.
    ///
    /// Types are "undefined", "boolean" or "bool", "number", "int" or "uint", "string", "object" or
    /// "Object", "any"; a name that begins with a letter in upper case is a class, and what else
    /// there may be is "any". A
    /// bound that is no number is NaN. A default is "undefined", "null", "true" or "false", a
    /// number when it begins like one (NaN when it does not go on like one), else a text. Anything
    /// in the place of "array" makes the value an array of such elements.
    ///
    /// @param index -1 for the service's own type, otherwise a parameter, counted from 0. One that
    ///   is not there is of the type "any".
    /// @param name Receives the name, which is "arg1" and so on for parameters without one and
    ///   empty for the service itself. It may be null, like the next three.
    /// @param second Receives the second type, or null when there is none. Owned by the caller.
    /// @return Never null; owned by the caller.
    static TypeInfo* parse(const String& text, int index, String* name, String* shortDesc,
                           String* longDesc, TypeInfo** second);

protected:
    TypeInfo() noexcept = default;
};

} // namespace KrCore
