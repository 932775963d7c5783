#include "Descriptions.h"

#include "ErrorBridge.h"
#include "Globals.h"
#include "TextBridge.h"
#include "TypeScriptWriter.h"
#include "hosts/Hosts.h"

#include <krcore/live/ClassInfo.h>
#include <krcore/live/LivePropertyManager.h>
#include <krcore/live/PropertyFlags.h>
#include <krcore/live/PropertyManagerClassInfo.h>
#include <krcore/xml/XML.h>

namespace krhost::Descriptions {

using namespace KrCore;

namespace {

std::string listNames() {
    std::string names;
    for (const Hosts::HostClass& known : Hosts::classes)
        names.append(names.empty() ? "" : ", ").append(known.name);
    return names;
}

InterfacePtr<XML> describeAsXML(const String& className) {
    return InterfacePtr<XML>::adopt(Hosts::describe(className)->toXML());
}

/// One document: all descriptions are in one element.
InterfacePtr<XML> describeAllAsXML() {
    auto root = InterfacePtr<XML>::adopt(new XML(XML::Element, "classes"));
    for (const Hosts::HostClass& known : Hosts::classes)
        root->insert(*describeAsXML(known.name), XML::atEnd, false);
    return root;
}

std::string makeTypeScript(const std::string& className) {
    TypeScriptWriter writer(Hosts::describe);
    if (!className.empty()) {
        writer.addClass(className);
        return writer.write();
    }
    for (const Hosts::HostClass& known : Hosts::classes)
        writer.addClass(known.name);
    for (const char* name : ErrorBridge::addedClasses)
        writer.addErrorClass(name);
    LivePropertyManager globals;
    Globals::declare(globals);
    const auto info = InterfacePtr<const ClassInfo>::adopt(
        new PropertyManagerClassInfo(globals, RequestFlag::Library));
    writer.addGlobals(*info);
    return writer.write();
}

} // namespace

bool make(Options::Format format, const std::string& className, std::string& text) {
    String name;
    TextBridge::decode(className, name);
    if (!className.empty() && !Hosts::findSample(name)) {
        text = "there is no class " + className + "; known are " + listNames();
        return false;
    }
    if (format == Options::Format::XML) {
        const auto description = className.empty() ? describeAllAsXML() : describeAsXML(name);
        text = TextBridge::toUtf8(description->toXMLString(2)) + "\n";
    } else {
        text = makeTypeScript(className);
    }
    return true;
}

} // namespace krhost::Descriptions
