#pragma once

#include <krcore/live/InfoType.h>

#include <string>

namespace KrCore {
class Array;
class Error;
class LiveCollection;
class LiveObject;
class SimpleArray;
class String;
class Variant;
} // namespace KrCore

namespace krhost {

/// Every call that krhost makes on live objects for a script. With tracing on, each is printed to
/// the standard error as it returns: what was asked, the code, and the answer.
class LibraryCalls {
public:
    explicit LibraryCalls(bool trace) : trace_(trace) {}

    int create(const KrCore::String& className, KrCore::LiveObject*& result) const;
    int initialize(KrCore::LiveObject& object, const KrCore::Array& args, KrCore::Error* err) const;
    int getIDForName(const KrCore::LiveObject& object, const KrCore::String& name, int& id,
                     KrCore::InfoType& kind) const;
    int createIDForName(KrCore::LiveObject& object, const KrCore::String& name, int& id) const;
    int getNameForID(const KrCore::LiveObject& object, int id, KrCore::String& name) const;
    int get(const KrCore::LiveObject& object, int id, KrCore::Variant& result,
            KrCore::Error* err) const;
    int put(KrCore::LiveObject& object, int id, const KrCore::Variant& value,
            KrCore::Error* err) const;
    /// `LiveObject::call` when the script's `this` is the object itself, else `apply`.
    int call(KrCore::LiveObject& object, KrCore::LiveObject& self, int id,
             const KrCore::Array& args, KrCore::Variant& result, KrCore::Error* err) const;
    int deleteID(KrCore::LiveObject& object, int id) const;
    /// The properties that a script lists; methods and hidden ones are left out.
    int enumerate(const KrCore::LiveObject& object, KrCore::SimpleArray& ids) const;
    int getLength(const KrCore::LiveCollection& collection, unsigned& length) const;
    int getByIndex(const KrCore::LiveCollection& collection, unsigned index,
                   KrCore::Variant& result, KrCore::Error* err) const;
    int putByIndex(KrCore::LiveCollection& collection, unsigned index, const KrCore::Variant& value,
                   KrCore::Error* err) const;
    int deleteByIndex(KrCore::LiveCollection& collection, unsigned index) const;
    /// The description of the object's class as XML text. 45 for an invalid object, which has none.
    int describeClass(const KrCore::LiveObject& object, KrCore::String& result) const;
    int toString(const KrCore::LiveObject& object, KrCore::String& result) const;
    int valueOf(const KrCore::LiveObject& object, KrCore::Variant& result) const;
    /// Printed when a script object goes and gives its reference back.
    void released(const KrCore::LiveObject& object) const;

    /// Factories of this kind are the ones scripts can construct from.
    static constexpr int factoryFlags = 1;

private:
    void print(const KrCore::LiveObject& object, const std::string& call, int code,
               const std::string& answer = {}) const;

    bool trace_;
};

} // namespace krhost
