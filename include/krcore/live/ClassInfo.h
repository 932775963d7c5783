#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Refcountable.h>
#include <krcore/live/InfoState.h>

namespace KrCore {

class FileSpec;
class ServiceInfo;
class SimpleArray;
class String;
class XML;

/// Describes a class to scripts and tools: its name, its members and what they are for.
///
/// Members belong to the instances or, when a request has `RequestFlag::ClassLevel`, to the class
/// itself; the constructor, which is asked for by the name of the class, belongs to the class. What
/// the base answers means "not said": empty texts, null, false. Records that are returned carry a
/// reference that the caller releases. A record belongs to one thread at a time.
class KR_API ClassInfo : public Refcountable {
public:
    virtual bool getSuperclass(String& name) const;
    /// The language that asks, as a bit of `PropertyFlag::LanguageMask`; here the library's.
    virtual int getLanguage() const;
    /// The base says `InfoState::Ordinary`.
    virtual InfoState getState();
    virtual bool getName(String& name) const = 0;
    /// The short description, or the `longText`.
    virtual bool getDescription(bool longText, String& text) const;
    /// Appends the names of the members that the request (`RequestFlag`) asks for. The words are
    /// `String*` made with new, which the caller deletes, also those that are there when memory
    /// runs out. False when the members cannot be listed.
    virtual bool enumerateNames(SimpleArray& names, int flags) const = 0;
    /// Appends their IDs.
    virtual bool enumerate(SimpleArray& ids, int flags) const;
    virtual const ServiceInfo* getServiceInfo(const String& name) const = 0;
    virtual const ServiceInfo* getServiceInfo(int id) const;
    /// A class-level member; for the name of the class, the constructor.
    virtual const ServiceInfo* getStaticServiceInfo(const String& name) const;
    virtual const ServiceInfo* getStaticServiceInfo(int id) const;
    /// A file with an example of the use, or its text. False when there is none.
    virtual bool getSampleCode(FileSpec& file) const;
    virtual bool getSampleCode(String& text) const;

    /// The whole description as a "classdef" element: superclass, descriptions, the constructor,
    /// class-level members and those of instances, and examples. Hidden members are listed, the
    /// internal ones are not. Members that are named but have no record are left out. There are
    /// four passes, over the properties and then the methods of the class and of its instances; a
    /// member that cannot be described ends its pass. The elements are in no namespace. The result
    /// carries a reference.
    XML* toXML() const;

protected:
    ClassInfo() noexcept = default;
    ~ClassInfo() override;
};

} // namespace KrCore
