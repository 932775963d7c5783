#include "foundation/Context.h"
#include "foundation/ModuleHooks.h"
#include "xml/NodeWalk.h"

#include <krcore/containers/THashTable.h>

#include <utility>

namespace KrCore {

namespace {

/// As the recommendation "Namespaces in XML" binds it.
constexpr char uriOfXml[] = "http://www.w3.org/XML/1998/namespace";

constinit XML* predefined = nullptr;

void drop(XML*& ns) {
    if (XML* former = std::exchange(ns, nullptr)) former->release();
}

XML* defaultNamespace() {
    const Context* context = currentContext();
    return context ? context->defaultNamespace : nullptr;
}

bool hasPrefix(const XML& ns, const String* prefix) { return !prefix || ns.getName() == *prefix; }

bool hasUri(const XML& ns, const String* uri) { return !uri || ns.getValue() == *uri; }

} // namespace

void startXML() { predefined = XMLTree::make(XML::Namespace, "xml", uriOfXml).detach(); }

void stopXML() { drop(predefined); }

void endXMLOf(Context& context) {
    drop(context.defaultNamespace);
    drop(context.currentNamespace);
}

XML* XMLTree::xmlNamespace() noexcept { return predefined; }

XML* XMLTree::namespaceOfNewNodes() {
    XML* ns = defaultNamespace();
    return !ns || ns->value_.isEmpty() || ns->value_ == "*" ? nullptr : ns;
}

String XML::getDefaultNamespaceURI() {
    const XML* ns = defaultNamespace();
    return ns ? ns->value_ : String();
}

String XML::setDefaultNamespaceURI(const String& uri) {
    Context* context = currentContext();
    if (!context) return String();
    String former = getDefaultNamespaceURI();
    if (uri != former) {
        XML* ns = XMLTree::make(Namespace, String(), uri).detach();
        std::swap(context->defaultNamespace, ns);
        drop(ns);
    }
    return former;
}

const XML* XML::getDefaultNamespace_r() { return InterfacePtr<XML>(defaultNamespace()).detach(); }

const XML* XML::getCurrentNamespace_r() {
    const Context* context = currentContext();
    return context ? InterfacePtr<XML>(context->currentNamespace).detach() : nullptr;
}

const XML* XML::setCurrentNamespace_r(const XML* ns) {
    Context* context = currentContext();
    if (!context) return nullptr;
    if (ns) ns->addRef();
    return std::exchange(context->currentNamespace, const_cast<XML*>(ns));
}

const XML* XML::getNS(const String* prefix, const String* uri, bool forAttribute) const {
    THashTable<const XML> declaredFurtherIn;
    for (const XML* node = this; node; node = node->parent_) {
        for (const XML* ns : node->declarations_) {
            if (forAttribute && ns->name_.isEmpty()) continue;
            if (!hasPrefix(*ns, prefix) || declaredFurtherIn.find(ns->name_)) continue;
            if (hasUri(*ns, uri)) return ns;
            declaredFurtherIn.set(ns->name_, ns);
        }
    }
    return predefined && hasPrefix(*predefined, prefix) && hasUri(*predefined, uri) ? predefined
                                                                                    : nullptr;
}

XML* XML::namespaces_r() const {
    InterfacePtr<XML> list = XMLTree::make(List);
    THashTable<XML> prefixes;
    for (const XML* node = this; node; node = node->parent_) {
        for (XML* ns : node->declarations_) {
            if (prefixes.find(ns->name_)) continue;
            prefixes.set(ns->name_, ns);
            XMLTree::append(list->children_, ns);
        }
    }
    return list.detach();
}

bool XML::removeNS(const XML& ns, bool deep) {
    // The declaration that goes may be `ns` itself.
    const InterfacePtr<const XML> kept(&ns);
    const auto removeFrom = [&](XML& node) {
        return node.declarations_.removeIf([&](const XML* declaration) {
            return declaration->name_ == ns.name_ && declaration->value_ == ns.value_;
        });
    };
    int removed = removeFrom(*this);
    if (deep) {
        walkDescendants(*this, [&](XML& node) {
            removed += removeFrom(node);
            return true;
        });
    }
    return removed > 0;
}

} // namespace KrCore
