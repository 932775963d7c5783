#include "xml/XMLWriter.h"

namespace KrCore {

String XML::toString(int indent) const {
    if (type_ == Comment || type_ == ProcessingInstruction) return String();
    if (type_ == Text || type_ == Attribute) return value_;
    if ((type_ != Element && type_ != List) || !isSimple()) return toXMLString(indent);
    if (length() == 1) return getChild(0)->toString(indent);
    String text;
    for (const XML* child : children_)
        text += child->toString(indent);
    return text;
}

String XML::toXMLString(int indent) const { return XMLWriter(*this, indent).toString(); }

} // namespace KrCore
