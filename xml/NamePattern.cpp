#include "xml/NamePattern.h"

namespace KrCore {

namespace {

constexpr unsigned short colon = ':';

/// The first unit of the last "::" before the local name, or -1. A URI may hold colons of its own,
/// a local name cannot.
int findSeparator(const String& name) noexcept {
    for (int pos = name.length() - 2; pos >= 0; --pos) {
        if (name.begin()[pos] == colon && name.begin()[pos + 1] == colon) return pos;
    }
    return -1;
}

bool isAny(const String& text) noexcept { return text.length() == 1 && *text.begin() == '*'; }

} // namespace

NamePattern::NamePattern(const String& name, bool attributes) : local_(name) {
    const int start = !name.isEmpty() && *name.begin() == '@' ? 1 : 0;
    wantsAttributes_ = attributes || start > 0;
    const int separator = findSeparator(name);
    if (separator >= start) {
        uri_ = name.substr(start, separator - start);
        local_ = name.substr(separator + 2);
        where_ = isAny(uri_) ? Where::Anywhere : Where::Exactly;
    } else if (start > 0) {
        local_ = name.substr(start);
    }
    isAnyName_ = isAny(local_);
    if (where_ != Where::Default) return;
    if (isAnyName_) {
        where_ = Where::Anywhere;
    } else if (const XML* ns = XMLTree::namespaceOfNewNodes()) {
        uri_ = ns->getValue();
    } else {
        where_ = Where::Anywhere;
    }
}

bool NamePattern::matches(const XML& node) const {
    if (isAnyName_ && where_ == Where::Anywhere) return true;
    if (node.getType() != (wantsAttributes_ ? XML::Attribute : XML::Element)) return false;
    return (isAnyName_ || node.getName() == local_) && matchesNamespace(node);
}

bool NamePattern::matchesNamespace(const XML& node) const {
    if (where_ == Where::Anywhere) return true;
    const XML* ns = node.getNamespace();
    if (!ns) return uri_.isEmpty() || (where_ == Where::Default && wantsAttributes_);
    return ns->getValue() == uri_;
}

InterfacePtr<XML> NamePattern::makeNode(const XML& place) const {
    const int type = wantsAttributes_ ? XML::Attribute : XML::Element;
    if (where_ != Where::Exactly) return InterfacePtr<XML>::adopt(new XML(type, local_));
    InterfacePtr<XML> node = XMLTree::make(type, local_, String());
    if (uri_.isEmpty()) return node;
    if (const XML* ns = place.getNS(nullptr, &uri_, wantsAttributes_)) {
        node->setNamespace(ns);
    } else {
        node->setNamespace(XMLTree::make(XML::Namespace, "*", uri_).get());
    }
    return node;
}

} // namespace KrCore
