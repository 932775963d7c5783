#pragma once

#include "live/reflection/DescriptionWriter.h"

#include <krcore/live/InfoType.h>

namespace KrCore {

class ClassInfo;

/// Writes the description of a class as a "classdef" element; see `ClassInfo::toXML`.
class ClassDescription {
public:
    explicit ClassDescription(const ClassInfo& info);

    InterfacePtr<XML> write();

private:
    /// An "elements" child, which is made with its first member.
    class Section;

    void addSuperclass();
    void addConstructor();
    /// One pass over the names that `request` lists.
    void addMembers(int request, Section& section);
    InterfacePtr<const ServiceInfo> findMember(const String& name, int request) const;
    InterfacePtr<XML> describeMember(const ServiceInfo& member, InfoType kind, int request) const;

    const ClassInfo& info_;
    String className_;
    DescriptionWriter writer_;
    InterfacePtr<XML> root_;
};

} // namespace KrCore
