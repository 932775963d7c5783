#pragma once

#include <krcore/foundation/Cloneable.h>

namespace KrScript {
class Engine;
}

namespace KrCore {

class Error;
class String;
class Variant;
template <class T>
class THashTable;

/// What a script engine derives its object data from, so that an `Object` variant can ask for the
/// object's number, text and properties. Every operation has an answer for engines that do not
/// support it.
///
/// Object data belongs to one variant. A copy of the variant gets a clone, or no object data when
/// `clone` answers with an error code.
class KR_API JSObject : public Cloneable {
public:
    JSObject() noexcept = default;
    ~JSObject() override;

    /// The ID the engine knows the object by; 0 while it has none.
    virtual int getObjectID() const;
    /// Sets `name` to the class name; the base says "Object".
    virtual void getClassName(String& name) const;
    /// Sets `result` to the primitive value and returns 0. The base answers `NoValue`.
    virtual int defaultValue(Variant& result) const;
    /// Sets `text` to the string form and returns 0. The base answers `NoValue`, and the variant
    /// then prints "[object " + class name + "]".
    virtual int toString(String& text) const;
    /// Adds the properties to a table, or takes them from one. The base answers
    /// `NotImplemented`. `flags` are the engine's own.
    virtual int getProperties(THashTable<Variant>& properties, int flags, Error* err) const;
    virtual int setProperties(const THashTable<Variant>& properties, Error* err);
    /// The engine the object lives in; null in the base.
    virtual KrScript::Engine* getEngine() const;
};

} // namespace KrCore
