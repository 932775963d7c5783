#pragma once

#include <krcore/files/FileSpec.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/text/String.h>
#include <krcore/xml/XML.h>

#include <utility>

namespace KrCore {

class ParamInfo;
class ServiceInfo;
class TypeInfo;

/// Which half of what is a property and can also be called.
enum class ServiceRole { Property, Method };

/// Writes the records of a class's members as XML elements. It keeps the names of elements and
/// attributes, which come many times in one description.
class DescriptionWriter {
public:
    using Element = InterfacePtr<XML>;

    /// See `ServiceInfo::toXML`.
    Element service(const ServiceInfo& info) const;
    /// The "property" or "method" element alone. Null when a parameter's record is missing.
    Element service(const ServiceInfo& info, ServiceRole role) const;

    // The parts of any description. Elements and attributes are in no namespace, whatever the
    // thread's default one: they belong to the system's own documents.

    static Element makeElement(const String& name);
    static void append(XML& parent, const XML& child);
    static XML& addElement(XML& parent, const String& name);
    static void addElement(XML& parent, const String& name, const String& text);
    static void setAttribute(XML& element, const String& name, const String& value);

    /// The short description, or the long one in its place, and both when there are both.
    template <class Info>
    void addDescriptions(XML& element, const Info& info) const;
    template <class Info>
    void addExamples(XML& element, const Info& info) const;

private:
    Element property(const ServiceInfo& info, const TypeInfo& type) const;
    Element method(const ServiceInfo& info) const;
    Element startService(const String& elementName, const ServiceInfo& info) const;
    bool addParameters(XML& method, const ServiceInfo& info) const;
    void addParameter(XML& parameters, const ParamInfo& info) const;
    /// `owner` is the "property", "method" or "parameter" element.
    void addDataType(XML& owner, const TypeInfo& type) const;
    void addRange(XML& dataType, const TypeInfo& type) const;
    void addDefault(XML& owner, XML& dataType, const TypeInfo& type) const;

    const String propertyName_ = "property";
    const String methodName_ = "method";
    const String parametersName_ = "parameters";
    const String parameterName_ = "parameter";
    const String dataTypeName_ = "datatype";
    const String typeName_ = "type";
    const String shortDescriptionName_ = "shortdesc";
    const String longDescriptionName_ = "description";
    const String nameAttribute_ = "name";
};

template <class Info>
void DescriptionWriter::addDescriptions(XML& element, const Info& info) const {
    String shortText;
    String longText;
    info.getDescription(false, shortText);
    info.getDescription(true, longText);
    if (shortText.isEmpty()) std::swap(shortText, longText);
    if (!shortText.isEmpty()) addElement(element, shortDescriptionName_, shortText);
    if (!longText.isEmpty()) addElement(element, longDescriptionName_, longText);
}

template <class Info>
void DescriptionWriter::addExamples(XML& element, const Info& info) const {
    FileSpec file;
    if (info.getSampleCode(file))
        setAttribute(addElement(element, "example"), "href", file.getAbsoluteURI(false));
    String text;
    info.getSampleCode(text);
    if (!text.isEmpty()) addElement(element, "example", text);
}

} // namespace KrCore
