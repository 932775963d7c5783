#include "live/reflection/ClassDescription.h"

#include "live/reflection/NameList.h"

#include <krcore/live/ClassInfo.h>
#include <krcore/live/PropertyFlags.h>
#include <krcore/live/ServiceInfo.h>
#include <krcore/text/UnicodeUtils.h>

#include <algorithm>
#include <iterator>

namespace KrCore {

namespace {

constexpr int everyMember = RequestFlag::WithHidden | RequestFlag::Library;
constexpr int properties = RequestFlag::ReadWrite | RequestFlag::ReadOnly;
constexpr int methods = RequestFlag::Methods;

/// Classes of the language itself, which have no description to refer to.
bool isBuiltIn(const String& className) {
    static constexpr const char* names[] = {"Array",  "Boolean", "ByteArray",  "Date",
                                            "File",   "Folder",  "Function",   "Math",
                                            "Number", "Object",  "Reflection", "ReflectionInfo",
                                            "RegExp", "Socket",  "String",     "UnitValue"};
    return std::any_of(std::begin(names), std::end(names),
                       [&className](const char* name) { return className == name; });
}

bool hasDescription(const String& className) {
    const unsigned short first = className.wstr()[0];
    return !isBuiltIn(className) && UnicodeUtils::towupper(first) == first;
}

bool isDescribedAsMethod(InfoType kind, int request) {
    return kind == InfoType::Method || (isCallable(kind) && (request & methods));
}

/// What every object of the language has is not described again.
bool isCommonToAll(const String& name, bool isMethod) {
    return isMethod ? name == "constructor" : name == "prototype" || name == "__proto__";
}

} // namespace

class ClassDescription::Section {
public:
    Section(XML& root, const char* type) : root_(root), type_(type) {}

    void add(const XML& member) {
        if (!elements_) {
            elements_ = &DescriptionWriter::addElement(root_, "elements");
            DescriptionWriter::setAttribute(*elements_, "type", type_);
        }
        DescriptionWriter::append(*elements_, member);
    }

private:
    XML& root_;
    const char* type_;
    XML* elements_ = nullptr;
};

ClassDescription::ClassDescription(const ClassInfo& info)
    : info_(info), root_(DescriptionWriter::makeElement("classdef")) {
    info.getName(className_);
}

InterfacePtr<XML> ClassDescription::write() {
    const bool isEnumeration = const_cast<ClassInfo&>(info_).getState() == InfoState::Enumeration;
    DescriptionWriter::setAttribute(*root_, "name", className_);
    DescriptionWriter::setAttribute(*root_, isEnumeration ? "enumeration" : "dynamic", "true");
    addSuperclass();
    writer_.addDescriptions(*root_, info_);
    if (!isEnumeration) addConstructor();

    Section ofClass(*root_, "class");
    addMembers(RequestFlag::ClassLevel | properties, ofClass);
    if (!isEnumeration) {
        addMembers(RequestFlag::ClassLevel | methods, ofClass);
        Section ofInstances(*root_, "instance");
        addMembers(properties, ofInstances);
        addMembers(methods, ofInstances);
    }
    writer_.addExamples(*root_, info_);
    return root_;
}

void ClassDescription::addSuperclass() {
    String superclass;
    info_.getSuperclass(superclass);
    if (superclass.isEmpty()) return;
    DescriptionWriter::addElement(*root_, "superclass", superclass);
    if (hasDescription(superclass))
        DescriptionWriter::setAttribute(*root_->getChild(0), "href", "#/" + superclass);
}

void ClassDescription::addConstructor() {
    const auto constructor =
        InterfacePtr<const ServiceInfo>::adopt(info_.getStaticServiceInfo(className_));
    if (!constructor) return;
    const auto element = writer_.service(*constructor);
    if (element) Section(*root_, "constructor").add(*element);
}

void ClassDescription::addMembers(int request, Section& section) {
    NameList names;
    names.fill(info_, request | everyMember);
    for (int i = 0; i < names.length(); ++i) {
        const String& name = names[i];
        if (name == className_) continue;
        const auto member = findMember(name, request);
        if (!member) continue;
        const InfoType kind = member->getType();
        if (isCommonToAll(name, isDescribedAsMethod(kind, request))) continue;
        const auto element = describeMember(*member, kind, request);
        if (!element) return;
        section.add(*element);
    }
}

InterfacePtr<const ServiceInfo> ClassDescription::findMember(const String& name,
                                                             int request) const {
    const bool isClassLevel = (request & RequestFlag::ClassLevel) != 0;
    return InterfacePtr<const ServiceInfo>::adopt(isClassLevel ? info_.getStaticServiceInfo(name)
                                                               : info_.getServiceInfo(name));
}

/// What is a property and can also be called has its element in either pass.
InterfacePtr<XML> ClassDescription::describeMember(const ServiceInfo& member, InfoType kind,
                                                   int request) const {
    if (kind != InfoType::CallableReadWrite && kind != InfoType::CallableReadOnly)
        return writer_.service(member);
    return writer_.service(member,
                           (request & methods) ? ServiceRole::Method : ServiceRole::Property);
}

} // namespace KrCore
