#include "live/reflection/DescriptionWriter.h"

#include <krcore/live/ParamInfo.h>
#include <krcore/live/ServiceInfo.h>
#include <krcore/live/TypeInfo.h>
#include <krcore/values/Variant.h>

#include <cmath>

namespace KrCore {

namespace {

/// Asking for the state does not change a record, though hosts may override it as if it did.
template <class Info>
InfoState stateOf(const Info& info) {
    return const_cast<Info&>(info).getState();
}

/// How a description spells a type.
String spellingOf(const String& typeName) {
    if (typeName == "undefined" || typeName == "unknown") return "any";
    if (typeName == "boolean") return "bool";
    if (typeName == "object") return "Object";
    return typeName;
}

} // namespace

DescriptionWriter::Element DescriptionWriter::makeElement(const String& name) {
    auto element = Element::adopt(new XML(XML::Element, name));
    element->setNamespace(nullptr);
    return element;
}

void DescriptionWriter::append(XML& parent, const XML& child) {
    parent.insert(child, XML::atEnd, false);
}

XML& DescriptionWriter::addElement(XML& parent, const String& name) {
    const Element child = makeElement(name);
    append(parent, *child);
    return *child; // the parent holds it
}

void DescriptionWriter::addElement(XML& parent, const String& name, const String& text) {
    const auto content = Element::adopt(new XML(XML::Text, text));
    append(addElement(parent, name), *content);
}

void DescriptionWriter::setAttribute(XML& element, const String& name, const String& value) {
    const auto attribute = Element::adopt(new XML(XML::Attribute, name));
    attribute->setNamespace(nullptr);
    attribute->setValue(value);
    append(element, *attribute);
}

DescriptionWriter::Element DescriptionWriter::service(const ServiceInfo& info) const {
    switch (info.getType()) {
    case InfoType::ReadOnly:
    case InfoType::ReadWrite:
        return service(info, ServiceRole::Property);
    case InfoType::Method:
        return service(info, ServiceRole::Method);
    case InfoType::CallableReadWrite:
    case InfoType::CallableReadOnly: {
        const Element asMethod = service(info, ServiceRole::Method);
        if (!asMethod) return nullptr;
        auto both = Element::adopt(new XML(XML::List));
        append(*both, *asMethod);
        append(*both, *service(info, ServiceRole::Property));
        return both;
    }
    case InfoType::Unknown:
    case InfoType::Hidden:
        break;
    }
    return nullptr;
}

DescriptionWriter::Element DescriptionWriter::service(const ServiceInfo& info,
                                                      ServiceRole role) const {
    if (role == ServiceRole::Method) return method(info);
    return property(info, isCallable(info.getType()) ? info.getTypeInfo2() : info.getTypeInfo());
}

DescriptionWriter::Element DescriptionWriter::startService(const String& elementName,
                                                           const ServiceInfo& info) const {
    Element element = makeElement(elementName);
    String name;
    info.getName(name);
    setAttribute(*element, nameAttribute_, name);
    const bool isConstant = stateOf(info) == InfoState::Enumeration;
    const bool isReadOnly = elementName == propertyName_ && !isWritable(info.getType());
    if (isConstant || isReadOnly) setAttribute(*element, "rwaccess", "readonly");
    addDescriptions(*element, info);
    return element;
}

DescriptionWriter::Element DescriptionWriter::property(const ServiceInfo& info,
                                                       const TypeInfo& type) const {
    Element element = startService(propertyName_, info);
    addDataType(*element, type);
    addExamples(*element, info);
    return element;
}

DescriptionWriter::Element DescriptionWriter::method(const ServiceInfo& info) const {
    Element element = startService(methodName_, info);
    if (!addParameters(*element, info)) return nullptr;
    String resultType;
    info.getTypeInfo().getDataTypeAsString(resultType);
    if (!(resultType == "undefined")) addDataType(*element, info.getTypeInfo());
    addExamples(*element, info);
    return element;
}

bool DescriptionWriter::addParameters(XML& method, const ServiceInfo& info) const {
    const int count = info.getParamCount();
    if (count <= 0) return true;
    XML& parameters = addElement(method, parametersName_);
    for (int i = 0; i < count; ++i) {
        const auto parameter = InterfacePtr<const ParamInfo>::adopt(info.getParamInfo(i));
        if (!parameter) return false;
        addParameter(parameters, *parameter);
    }
    return true;
}

void DescriptionWriter::addParameter(XML& parameters, const ParamInfo& info) const {
    XML& element = addElement(parameters, parameterName_);
    String name;
    info.getName(name);
    setAttribute(element, nameAttribute_, name);
    addDescriptions(element, info);
    addDataType(element, info.getTypeInfo());
}

void DescriptionWriter::addDataType(XML& owner, const TypeInfo& type) const {
    XML& dataType = addElement(owner, dataTypeName_);
    String text;
    type.getDescription(text);
    if (!text.isEmpty()) addElement(dataType, shortDescriptionName_, text);
    type.getDataTypeAsString(text);
    addElement(dataType, typeName_, spellingOf(text));
    addRange(dataType, type);
    addDefault(owner, dataType, type);
    if (type.isCollection()) addElement(dataType, "array");
}

void DescriptionWriter::addRange(XML& dataType, const TypeInfo& type) const {
    double minimum = 0;
    double maximum = 0;
    if (!type.getValidRange(minimum, maximum)) return;
    if (std::isfinite(minimum)) addElement(dataType, "min", Variant(minimum).getString());
    if (std::isfinite(maximum)) addElement(dataType, "max", Variant(maximum).getString());
}

void DescriptionWriter::addDefault(XML& owner, XML& dataType, const TypeInfo& type) const {
    Variant value;
    if (!type.getDefaultValue(value)) return;
    const bool isParameter = owner.getName() == parameterName_;
    if (isParameter) setAttribute(owner, "optional", "true");
    if (isParameter && !value.isDefined()) return; // optional says it all
    addElement(dataType, "value", value.getString());
}

} // namespace KrCore
