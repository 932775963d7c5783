#include <krcore/xml/XML.h>

namespace KrCore {

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

} // namespace KrCore
