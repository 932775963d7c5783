#include "TypeScriptWriter.h"

#include "TextBridge.h"
#include "TypeScriptText.h"
#include "ValueBridge.h"
#include "hosts/HostClassInfo.h"
#include "hosts/NameList.h"

#include <krcore/live/ParamInfo.h>
#include <krcore/live/PropertyFlags.h>
#include <krcore/live/PropertyID.h>
#include <krcore/live/ServiceInfo.h>
#include <krcore/live/TypeInfo.h>
#include <krcore/values/Variant.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace krhost {

using namespace KrCore;
using TypeScriptText::comment;
using TypeScriptText::isDeclarable;
using TypeScriptText::memberName;
using TypeScriptText::quoted;

namespace {

constexpr int everyMember = RequestFlag::ReadWrite | RequestFlag::ReadOnly | RequestFlag::Methods |
                            RequestFlag::WithHidden | RequestFlag::Library;
constexpr const char* header =
    "// Made by krhost --describe=ts. Scripts run in no browser, so compile them with\n"
    "// --lib es5 or the like, without the declarations of one.\n";
constexpr const char* memberIndent = "    ";
constexpr std::string_view restMark = "...";

/// Classes that the language itself declares.
constexpr const char* languageClasses[] = {"Function", "Date", "RegExp", "Error", "Object"};

using Service = InterfacePtr<const ServiceInfo>;
using Parameter = InterfacePtr<const ParamInfo>;

template <class Info>
std::string nameOf(const Info& info) {
    String name;
    info.getName(name);
    return TextBridge::toUtf8(name);
}

template <class Info>
bool isEnumeration(const Info& info) {
    return const_cast<Info&>(info).getState() == InfoState::Enumeration;
}

/// The short description and the long one as paragraphs, whichever there are.
template <class Info>
std::string descriptionOf(const Info& info) {
    String shortText;
    String longText;
    info.getDescription(false, shortText);
    info.getDescription(true, longText);
    std::string text = TextBridge::toUtf8(shortText);
    if (!text.empty() && !longText.isEmpty()) text += "\n\n";
    return text + TextBridge::toUtf8(longText);
}

void addLine(std::string& text, const std::string& line) {
    if (line.empty()) return;
    if (!text.empty()) text += "\n";
    text += line;
}

std::string numberText(double number) { return TextBridge::toUtf8(Variant(number).getString()); }

/// "0 to 100", or nothing for a type without bounds.
std::string rangeOf(const TypeInfo& type) {
    double minimum = 0;
    double maximum = 0;
    if (!type.getValidRange(minimum, maximum)) return {};
    if (std::isfinite(minimum) && std::isfinite(maximum))
        return numberText(minimum) + " to " + numberText(maximum);
    if (std::isfinite(minimum)) return "at least " + numberText(minimum);
    return std::isfinite(maximum) ? "at most " + numberText(maximum) : std::string();
}

/// The value as TypeScript writes it, or nothing when it is not one that can be written so.
std::string literalOf(const Variant& value) {
    switch (value.getType()) {
    case VariantType::Bool:
        return value.getBool() ? "true" : "false";
    case VariantType::Number:
        return std::isfinite(value.getDouble()) ? numberText(value.getDouble()) : std::string();
    case VariantType::String:
        return quoted(TextBridge::toUtf8(value.getString()));
    default:
        return {};
    }
}

/// What a type says beside its name, in brackets; or nothing.
std::string limitsOf(const TypeInfo& type) {
    std::string text = rangeOf(type);
    Variant value;
    type.getDefaultValue(value);
    if (const std::string literal = literalOf(value); !literal.empty())
        text.append(text.empty() ? "default " : ", default ").append(literal);
    return text.empty() ? text : "(" + text + ")";
}

bool canBeLeftOut(const ParamInfo& parameter) {
    Variant value;
    return parameter.getTypeInfo().getDefaultValue(value);
}

bool isRest(const ServiceInfo& method, int index) {
    const auto parameter = Parameter::adopt(method.getParamInfo(index));
    return index + 1 == method.getParamCount() && parameter &&
           nameOf(*parameter).starts_with(restMark);
}

/// The first of the parameters at the end that can all be left out.
int firstOptionalParameter(const ServiceInfo& method) {
    int first = method.getParamCount();
    for (; first > 0; --first) {
        const auto parameter = Parameter::adopt(method.getParamInfo(first - 1));
        if (!isRest(method, first - 1) && !(parameter && canBeLeftOut(*parameter))) break;
    }
    return first;
}

/// The names of the parameters as they can be declared.
std::vector<std::string> parameterNames(const ServiceInfo& method) {
    std::vector<std::string> names;
    for (int i = 0; i < method.getParamCount(); ++i) {
        const auto parameter = Parameter::adopt(method.getParamInfo(i));
        std::string name = parameter ? nameOf(*parameter) : std::string();
        if (isRest(method, i)) name.erase(0, restMark.size());
        names.push_back(TypeScriptText::parameterName(name, names));
    }
    return names;
}

std::string documentationOf(const ServiceInfo& service) {
    std::string text = descriptionOf(service);
    if (service.getType() != InfoType::Method) addLine(text, limitsOf(service.getTypeInfo2()));
    if (!isCallable(service.getType())) return text;
    const std::vector<std::string> names = parameterNames(service);
    for (int i = 0; i < service.getParamCount(); ++i) {
        const auto parameter = Parameter::adopt(service.getParamInfo(i));
        if (!parameter) continue;
        std::string about = descriptionOf(*parameter);
        addLine(about, limitsOf(parameter->getTypeInfo()));
        std::replace(about.begin(), about.end(), '\n', ' ');
        if (!about.empty())
            addLine(text, "@param " + names[static_cast<std::size_t>(i)] + " " + about);
    }
    return text;
}

std::string documentationOf(const ClassInfo& info) {
    std::string text = descriptionOf(info);
    String sample;
    info.getSampleCode(sample);
    if (!sample.isEmpty()) addLine(text, "@example\n" + TextBridge::toUtf8(sample));
    return text;
}

/// On one line, whatever is in the name.
std::string leftOut(const std::string& name, const char* reason) {
    return "// " + quoted(name) + " is left out: " + reason + "\n";
}

/// Why a member cannot be declared, or null.
const char* refusalOf(const ServiceInfo& service, const std::string& name) {
    if (PropertyID::isOperator(service.getID())) return "TypeScript has no operators of classes.";
    if (name == "constructor" || name == "prototype" || name == "__proto__")
        return "every class has its own.";
    return nullptr;
}

} // namespace

TypeScriptWriter::TypeScriptWriter(Finder find) : find_(std::move(find)) {}

InterfacePtr<const ClassInfo> TypeScriptWriter::find(const std::string& name) const {
    String className;
    TextBridge::decode(name, className);
    return find_(className);
}

void TypeScriptWriter::addClass(std::string_view name) {
    if (std::find(classes_.begin(), classes_.end(), name) == classes_.end())
        classes_.emplace_back(name);
}

void TypeScriptWriter::addErrorClass(std::string_view name) {
    if (errors_.empty())
        errors_ = "\ninterface Error {\n"
                  "    /** The code, when the error comes from the host. */\n"
                  "    number?: number;\n"
                  "}\n";
    errors_.append("\ndeclare class ").append(name);
    errors_ += " extends Error {\n    constructor(message?: string);\n}\n";
}

void TypeScriptWriter::addGlobals(const ClassInfo& globals) {
    const NameList names(globals, everyMember);
    for (int i = 0; i < names.length(); ++i) {
        if (const auto service = Service::adopt(globals.getServiceInfo(names[i])))
            globals_.append("\n").append(globalText(*service));
    }
}

std::string TypeScriptWriter::write() {
    std::string text = header + globals_ + errors_;
    for (std::size_t i = 0; i < classes_.size(); ++i) {
        if (const auto info = find(classes_[i])) text.append("\n").append(classText(*info));
    }
    return text + valueTypesText();
}

std::string TypeScriptWriter::valueTypesText() const {
    std::string text;
    const auto add = [&](const char* name, const auto& members) {
        if (!valueTypes_.contains(name)) return;
        text.append("\ninterface ").append(name).append(" {\n");
        for (const char* member : members)
            text.append(memberIndent).append(member).append(": number;\n");
        text += "}\n";
    };
    add("Point", ValueBridge::pointNames);
    add("Rect", ValueBridge::rectNames);
    return text;
}

std::string TypeScriptWriter::classText(const ClassInfo& info) {
    const std::string name = nameOf(info);
    if (!isDeclarable(name)) return leftOut(name, "a class cannot have this name.");
    if (isEnumeration(info)) return enumerationText(info, name);
    return comment(documentationOf(info), "") + "declare class " + name + extendsText(info) +
           " {\n" + constructorText(info) + membersText(info, true) + membersText(info, false) +
           elementsText(info) + "}\n";
}

/// Every class extends Object anyway.
std::string TypeScriptWriter::extendsText(const ClassInfo& info) {
    String superclass;
    info.getSuperclass(superclass);
    const std::string name = TextBridge::toUtf8(superclass);
    if (!isDeclarable(name) || name == "Object" || !find(name)) return {};
    addClass(name);
    return " extends " + name;
}

/// A class without a constructor cannot be constructed by scripts.
std::string TypeScriptWriter::constructorText(const ClassInfo& info) {
    String className;
    info.getName(className);
    const auto constructor = Service::adopt(info.getStaticServiceInfo(className));
    if (!constructor) return std::string(memberIndent) + "private constructor();\n";
    return comment(documentationOf(*constructor), memberIndent) + memberIndent + "constructor" +
           parametersText(*constructor) + ";\n";
}

std::string TypeScriptWriter::membersText(const ClassInfo& info, bool ofClass) {
    std::string text;
    String className;
    info.getName(className);
    const NameList names(info, everyMember | (ofClass ? RequestFlag::ClassLevel : 0));
    for (int i = 0; i < names.length(); ++i) {
        if (ofClass && names[i] == className) continue; // the constructor
        const auto service = Service::adopt(ofClass ? info.getStaticServiceInfo(names[i])
                                                    : info.getServiceInfo(names[i]));
        if (service) text += memberText(*service, ofClass ? "static " : "");
    }
    return text;
}

std::string TypeScriptWriter::memberText(const ServiceInfo& service, std::string_view prefix) {
    const std::string name = nameOf(service);
    if (const char* reason = refusalOf(service, name)) return memberIndent + leftOut(name, reason);
    const std::string documented = comment(documentationOf(service), memberIndent);
    const std::string head = memberIndent + std::string(prefix);
    switch (service.getType()) {
    case InfoType::ReadOnly:
        return documented + head + "readonly " + memberName(name) + ": " +
               valueText(service.getTypeInfo()) + ";\n";
    case InfoType::ReadWrite:
        return documented + head + memberName(name) + ": " + valueText(service.getTypeInfo()) +
               ";\n";
    case InfoType::Method:
        return documented + head + memberName(name) + parametersText(service) + ": " +
               resultText(service) + ";\n";
    case InfoType::CallableReadWrite:
    case InfoType::CallableReadOnly:
        return documented + callableText(service, head);
    case InfoType::Unknown:
    case InfoType::Hidden:
        break;
    }
    return {};
}

/// What is read can be called, and is converted to its value; what is written is the value alone.
std::string TypeScriptWriter::callableText(const ServiceInfo& service, const std::string& head) {
    const std::string name = memberName(nameOf(service));
    const std::string value = valueText(service.getTypeInfo2());
    const std::string read = "{ " + parametersText(service) + ": " + resultText(service) +
                             "; valueOf(): " + value + "; }";
    if (service.getType() == InfoType::CallableReadOnly)
        return head + "readonly " + name + ": " + read + ";\n";
    return head + "get " + name + "(): " + read + ";\n" + head + "set " + name +
           "(value: " + value + ");\n";
}

std::string TypeScriptWriter::elementsText(const ClassInfo& info) {
    const auto* host = dynamic_cast<const HostClassInfo*>(&info);
    if (!host) return {};
    std::string text;
    if (const auto type = host->getElementType()) {
        text.append(memberIndent).append(host->hasReadOnlyElements() ? "readonly " : "");
        text.append("[index: number]: ").append(typeText(*type)).append(";\n");
    }
    if (host->hasOtherNames()) text.append(memberIndent).append("[name: string]: any;\n");
    return text;
}

/// An object of constants, and a type of the same name for their values.
std::string TypeScriptWriter::enumerationText(const ClassInfo& info, const std::string& name) {
    std::string text = comment(documentationOf(info), "") + "declare const " + name + ": {\n";
    const NameList names(info, everyMember | RequestFlag::ClassLevel);
    for (int i = 0; i < names.length(); ++i) {
        const auto constant = Service::adopt(info.getStaticServiceInfo(names[i]));
        if (!constant || isCallable(constant->getType())) continue;
        Variant value;
        constant->getTypeInfo().getDefaultValue(value);
        const std::string literal = literalOf(value);
        text += comment(descriptionOf(*constant), memberIndent);
        text.append(memberIndent).append("readonly ").append(memberName(nameOf(*constant)));
        text.append(": ").append(literal.empty() ? typeText(constant->getTypeInfo()) : literal);
        text += ";\n";
    }
    return text + "};\ntype " + name + " = (typeof " + name + ")[keyof typeof " + name + "];\n";
}

std::string TypeScriptWriter::globalText(const ServiceInfo& service) {
    const std::string name = nameOf(service);
    if (!isDeclarable(name)) return leftOut(name, "a global cannot have this name.");
    const std::string documented = comment(documentationOf(service), "");
    if (service.getType() == InfoType::Method)
        return documented + "declare function " + name + parametersText(service) + ": " +
               resultText(service) + ";\n";
    return documented + "declare var " + name + ": " + valueText(service.getTypeInfo()) + ";\n";
}

/// Behind an optional parameter all are optional in TypeScript; one that is not makes those before
/// it required, though undefined.
std::string TypeScriptWriter::parametersText(const ServiceInfo& method) {
    const std::vector<std::string> names = parameterNames(method);
    const int firstOptional = firstOptionalParameter(method);
    std::string text = "(";
    for (int i = 0; i < method.getParamCount(); ++i) {
        const auto parameter = Parameter::adopt(method.getParamInfo(i));
        const std::string& name = names[static_cast<std::size_t>(i)];
        const std::string type = parameter ? typeText(parameter->getTypeInfo()) : "any";
        if (i > 0) text += ", ";
        if (isRest(method, i)) {
            text.append(restMark).append(name).append(": Array<").append(type).append(">");
            continue;
        }
        text.append(name).append(i >= firstOptional ? "?: " : ": ").append(type);
        if (i < firstOptional && parameter && canBeLeftOut(*parameter)) text += " | undefined";
    }
    return text + ")";
}

std::string TypeScriptWriter::resultText(const ServiceInfo& method) {
    const TypeInfo& type = method.getTypeInfo();
    return type.getDataType() == VariantType::Undefined ? "void" : valueText(type);
}

/// The type of what scripts get, which may be undefined where that is the default.
std::string TypeScriptWriter::valueText(const TypeInfo& type) {
    const std::string text = typeText(type);
    Variant value;
    const bool mayBeUndefined = type.getDefaultValue(value) && !value.isDefined();
    return mayBeUndefined && text != "any" ? text + " | undefined" : text;
}

std::string TypeScriptWriter::typeText(const TypeInfo& type) {
    std::string text = singleTypeText(type);
    if (type.isCollection()) text += "[]";
    Variant value;
    type.getDefaultValue(value);
    if (value.isNull() && text != "any") text += " | null";
    return text;
}

std::string TypeScriptWriter::singleTypeText(const TypeInfo& type) {
    if (String className; type.getDataClass(className))
        return classTypeText(TextBridge::toUtf8(className));
    switch (type.getDataType()) {
    case VariantType::Undefined:
        return "undefined";
    case VariantType::Null:
        return "null";
    case VariantType::Bool:
        return "boolean";
    case VariantType::Number:
        return "number";
    case VariantType::String:
    case VariantType::UnitValue:
        return "string";
    case VariantType::Object:
    case VariantType::LiveObject:
        return "object";
    case VariantType::Point:
        return classTypeText("Point");
    case VariantType::Rect:
        return classTypeText("Rect");
    case VariantType::Array:
        return classTypeText("Array");
    case VariantType::RegExp:
        return classTypeText("KrRegExp");
    case VariantType::FileSpec: // which scripts cannot have
        break;
    }
    return "any";
}

std::string TypeScriptWriter::classTypeText(const std::string& name) {
    if (name == "Array") return "any[]";
    if (std::find(std::begin(languageClasses), std::end(languageClasses), name) !=
        std::end(languageClasses))
        return name;
    if (!isDeclarable(name)) return "any";
    if (find(name)) {
        addClass(name);
    } else if (name == "Point" || name == "Rect") {
        valueTypes_.insert(name);
    } else {
        return "any";
    }
    return name;
}

} // namespace krhost
