#include <krcore/xml/XML.h>

#include "xml/BlankUnits.h"
#include "xml/XMLTree.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>

#include <utility>

namespace KrCore {

// Exported, for callers on Windows that take its address.
constexpr int XML::atEnd;

XML::XML(int type) : type_(type) {
    if (type == Element || type == Attribute)
        XMLTree::setNamespace(*this, XMLTree::namespaceOfNewNodes());
}

XML::XML(int type, const String& text) : XML(type) {
    (type == Text || type == Comment ? value_ : name_) = text;
}

XML::XML(const String& name) : XML(Element, name) {}

XML::XML(const String& name, const XML& child) : XML(Element, name) { insert(child, atEnd, false); }

const char* XML::getTypeAsString() const {
    switch (type_) {
    case Element:
        return "element";
    case List:
        return "list";
    case Text:
        return "text";
    case Attribute:
        return "attribute";
    case Comment:
        return "comment";
    case ProcessingInstruction:
        return "processing-instruction";
    case Namespace:
        return "namespace";
    default:
        return "";
    }
}

bool XML::setName(const String& name) {
    const bool isNamed = type_ == Element || type_ == ProcessingInstruction;
    if (!isNamed && !(type_ == Text && name == "CDATA")) return false;
    name_ = name;
    return true;
}

bool XML::setValue(const String& value) {
    if (type_ == Element || type_ == List) return false;
    value_ = value;
    return true;
}

bool XML::setNamespace(const XML* ns) {
    if (type_ != Element && type_ != Attribute) return false;
    if (ns && ns->type_ != Namespace) return false;
    XMLTree::setNamespace(*this, const_cast<XML*>(ns));
    return true;
}

XML& XML::root() const {
    const XML* top = this;
    while (top->parent_)
        top = top->parent_;
    return const_cast<XML&>(*top);
}

XML* XML::getChild(int index) const {
    return index >= 0 && index < children_.length() ? children_[index] : nullptr;
}

bool XML::isSimple() const {
    if (type_ == List && length() == 1 && getChild(0)->type_ == Element)
        return getChild(0)->isSimple();
    if (type_ == Comment || type_ == ProcessingInstruction) return false;
    for (const XML* child : children_) {
        if (child->type_ == Element) return false;
    }
    return true;
}

String XML::getText(const String& name) const {
    return InterfacePtr<XML>::adopt(get_r(name, Children))->toString(-1);
}

String XML::getStrippedValue() const {
    const UnitRange kept = withoutBlanks(value_);
    if (kept.length() == value_.length()) return value_;
    return String(kept.begin, kept.length());
}

bool XML::getBool(const String& name) const { return getText(name) == "true"; }

int XML::getInteger(const String& name) const { return Variant(getText(name)).getInteger(); }

double XML::getDouble(const String& name) const { return Variant(getText(name)).getDouble(); }

XML* XML::asElementNode() const {
    const XML* node = type_ == List && length() == 1 ? getChild(0) : this;
    return node->type_ == Element ? const_cast<XML*>(node) : nullptr;
}

XML* XML::xpath_r(const String&, Variant& result, Error& error, const THashTable<String>*) const {
    result = Variant();
    error.push(ErrorCode::NotImplemented);
    return nullptr;
}

} // namespace KrCore
