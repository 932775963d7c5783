#pragma once

#include <krcore/foundation/InterfacePtr.h>

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace KrCore {
class ClassInfo;
class ServiceInfo;
class String;
class TypeInfo;
} // namespace KrCore

namespace krhost {

/// Writes TypeScript declarations of classes as their records describe them (`KrCore::ClassInfo`),
/// for an editor to complete names from and for a compiler to check scripts by. What a record can
/// say and TypeScript cannot is left out, with a comment that tells why.
///
/// Two things are agreed on beyond the grammar of descriptor texts: a last parameter whose name
/// begins with "..." stands for any number of arguments, and a type whose default is null or
/// undefined may be that.
class TypeScriptWriter {
public:
    /// Finds a class by its name; null for one that nobody describes, which is declared as `any`
    /// where members refer to it.
    using Finder =
        std::function<KrCore::InterfacePtr<const KrCore::ClassInfo>(const KrCore::String& name)>;

    explicit TypeScriptWriter(Finder find);

    /// Declares a class and, behind it, the ones that its members refer to.
    void addClass(std::string_view name);
    /// Declares the members of a class as global functions and variables.
    void addGlobals(const KrCore::ClassInfo& globals);
    void addErrorClass(std::string_view name);

    /// Everything, in UTF-8.
    std::string write();

private:
    KrCore::InterfacePtr<const KrCore::ClassInfo> find(const std::string& name) const;

    std::string classText(const KrCore::ClassInfo& info);
    std::string enumerationText(const KrCore::ClassInfo& info, const std::string& name);
    std::string extendsText(const KrCore::ClassInfo& info);
    std::string constructorText(const KrCore::ClassInfo& info);
    std::string membersText(const KrCore::ClassInfo& info, bool ofClass);
    std::string memberText(const KrCore::ServiceInfo& service, std::string_view prefix);
    std::string callableText(const KrCore::ServiceInfo& service, const std::string& head);
    std::string elementsText(const KrCore::ClassInfo& info);
    std::string globalText(const KrCore::ServiceInfo& service);
    std::string valueTypesText() const;

    std::string parametersText(const KrCore::ServiceInfo& method);
    std::string resultText(const KrCore::ServiceInfo& method);
    std::string valueText(const KrCore::TypeInfo& type);
    std::string typeText(const KrCore::TypeInfo& type);
    std::string singleTypeText(const KrCore::TypeInfo& type);
    std::string classTypeText(const std::string& name);

    Finder find_;
    std::vector<std::string> classes_; // grows while it is written
    std::set<std::string> valueTypes_; // those that are referred to
    std::string errors_;
    std::string globals_;
};

} // namespace krhost
