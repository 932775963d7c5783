#include "hosts/XMLNode.h"

#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"
#include "hosts/XMLNames.h"

#include <krcore/containers/Array.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>

namespace krhost {

using namespace KrCore;

namespace {

enum XMLNodeID : int {
    Length = 1,
    // What looks at the tree,
    GetName,
    GetValue,
    GetType,
    GetNamespace,
    Parent,
    Children,
    Attributes,
    Child,
    Descendants,
    Copy,
    IsEqual,
    ToString,
    ToJSON,
    ToXMLString,
    // and what changes it.
    SetName,
    SetValue,
    Add,
    Insert,
    Remove,
    Normalize
};

constexpr int method = int(InfoType::Method);

constexpr LivePropertyInfo xmlTable[] = {
    {"", PropertyID::Constructor, method,
     "XML\tParses a text,text:string;;;undefined\tThe markup,"
     "ignoreWhitespace:boolean;;;false\tWhether to leave out text of blanks alone,"
     "ignoreComments:boolean;;;false\tWhether to leave out comments,"
     "ignoreProcessingInstructions:boolean;;;false\tWhether to leave out those"},
    {"length", Length, int(InfoType::ReadOnly), "number;0\tThe number of children or members"},
    {"getName", GetName, method, "string\tThe name without its namespace"},
    {"getValue", GetValue, method, "string\tThe text of an attribute or text or comment"},
    {"getType", GetType, method, "string\tWhat kind of node this is"},
    {"getNamespace", GetNamespace, method, "string\tThe URI of the namespace"},
    {"parent", Parent, method, "XML;;;undefined\tThe node that this one is a child of"},
    {"children", Children, method, "XML\tA list of the child elements"},
    {"attributes", Attributes, method, "XML\tA list of the attributes"},
    {"child", Child, method,
     "XML\tA list of the children of a name,"
     "name:string\tThe name; unlike node.name it can be that of a method"},
    {"descendants", Descendants, method, "XML\tA list of all elements within this one"},
    {"copy", Copy, method, "XML\tA tree of its own"},
    {"isEqual", IsEqual, method,
     "boolean\tWhether both have the same structure,other:XML\tThe other"},
    {"toString", ToString, method, "string\tThe text of simple content; else markup"},
    {"toJSON", ToJSON, method, "string\tThe same for JSON.stringify"},
    {"toXMLString", ToXMLString, method,
     "string\tMarkup,indent:number;-1;;-1\tThe indentation of each level; -1: all on one line"},
    {"setName", SetName, method, "boolean\tRenames the node,name:string\tThe new name"},
    {"setValue", SetValue, method, "boolean\tReplaces the content,value:string\tThe new text"},
    {"add", Add, method,
     "XML\tAdds an element or attribute,name:string\tIts name,"
     "value:any;;;undefined\tIts content; a text or a node that is copied"},
    {"insert", Insert, method,
     "boolean\tMoves a node into this one,node:XML\tThe node,"
     "index:number;0;;undefined\tWhere; else at the end"},
    {"remove", Remove, method,
     "number\tRemoves children and gives their number,name:string\tTheir name"},
    {"normalize", Normalize, method, "undefined\tJoins texts that lie side by side"},
    {nullptr, 0, 0, nullptr}};

constexpr LivePropertyInfo xmlClassTable[] = {
    {"parse", 1, method,
     "XML\tThe same as new XML,text:string\tThe markup,"
     "ignoreWhitespace:boolean;;;false\tWhether to leave out text of blanks alone,"
     "ignoreComments:boolean;;;false\tWhether to leave out comments,"
     "ignoreProcessingInstructions:boolean;;;false\tWhether to leave out those"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts xmlTexts = {
    .description = "A node of an XML tree or a list of nodes.",
    .details = "Properties are the lists of children of that name; names of attributes begin with "
               "\"@\". Elements are single children or members.",
    .sample = "var shop = new XML(\"<shop><item id='7'>Tea</item></shop>\");\n"
              "shop.item[\"@id\"] = 8;\n"
              "for (var i in shop.item) print(shop.item[i]);",
    .elements = "XML",
    .hasReadOnlyElements = true,
    .hasOtherNames = true,
    .classMembers = classProperties<xmlClassTable>,
    .members = classProperties<xmlTable>};

} // namespace

XMLNode::XMLNode()
    : LiveObject("XML", false), node_(Node::adopt(new XML(XML::Text))), tree_(node_) {
    propertyManager = classProperties<xmlTable>();
}

int XMLNode::clone(LiveObject** result, bool deep) const {
    const auto copy = InterfacePtr<XMLNode>::adopt(new XMLNode);
    if (const int code = cloneContent(*copy, deep); code != ErrorCode::Ok) {
        *result = nullptr;
        return code;
    }
    copy->node_ = Node::adopt(node_->copy_r(true));
    copy->tree_ = copy->node_;
    copy->addRef();
    *result = copy.get();
    return ErrorCode::Ok;
}

int XMLNode::initialize(const Array& args, Error* err) {
    if (args.length() == 0) return ErrorCode::Ok;
    Error failure;
    int pos = 0;
    const auto isSet = [&](unsigned index) {
        return index < args.length() && args[index].getBool();
    };
    node_ =
        Node::adopt(XML::parse(args[0].getString(), pos, failure, isSet(1), isSet(2), isSet(3)));
    if (!node_) {
        node_ = Node::adopt(new XML(XML::Text));
        if (err) *err = failure;
        return failure.getCode();
    }
    tree_ = node_;
    return ErrorCode::Ok;
}

/// Children come and go without this object's knowledge, so what it says of them is not to be
/// remembered.
int XMLNode::getIDForName(const String& name, int& id, InfoType& kind, int flags) const {
    const int code = LiveObject::getIDForName(name, id, kind, flags);
    if (code != ErrorCode::NotFound || XMLNames::isReserved(name) || !has(name)) return code;
    propertyDefsChanged();
    id = XMLNames::idOf(name);
    kind = XMLNames::indexOf(id) < 0 ? InfoType::ReadWrite : InfoType::ReadOnly;
    return ErrorCode::Ok;
}

int XMLNode::createIDForName(const String& name, int& id, int) {
    id = XMLNames::idOf(name);
    return ErrorCode::Ok;
}

int XMLNode::getNameForID(int id, String& name, int flags) const {
    return XMLNames::nameOf(id, name) ? int(ErrorCode::Ok)
                                      : LiveObject::getNameForID(id, name, flags);
}

/// Lists the children or members by their indexes.
int XMLNode::enumerate(SimpleArray& ids, int) const {
    for (int index = 0; index < node_->length(); ++index)
        ids.append(XMLNames::idOfIndex(index));
    return ErrorCode::Ok;
}

InfoType XMLNode::getType(int id) {
    if (XMLNames::indexOf(id) >= 0) return InfoType::ReadOnly;
    if (String name; XMLNames::nameOf(id, name)) return InfoType::ReadWrite;
    const InfoType kind = propertyManager->getType(id);
    return kind != InfoType::Unknown ? kind : LiveObject::getType(id);
}

const ClassInfo* XMLNode::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, xmlTexts);
}

bool XMLNode::has(const String& name) const {
    if (const int index = XMLNames::indexOf(XMLNames::idOf(name)); index >= 0)
        return index < node_->length();
    return Node::adopt(node_->get_r(name, XML::Children))->length() > 0;
}

int XMLNode::get(int id, Variant& result, Error* err) const {
    result.erase();
    const int code = isValid() ? read(id, result) : int(ErrorCode::ObjectInvalid);
    if (code == ErrorCode::NotFound) return LiveObject::get(id, result, err);
    return setError(code, id, err, false);
}

int XMLNode::read(int id, Variant& result) const {
    if (id == Length) {
        result = node_->length();
        return ErrorCode::Ok;
    }
    if (const int index = XMLNames::indexOf(id); index >= 0)
        return answer(Node(node_->getChild(index)), result);
    String name;
    if (!XMLNames::nameOf(id, name)) return ErrorCode::NotFound;
    return answerList(node_->get_r(name, XML::Children), result);
}

int XMLNode::put(int id, const Variant& value, Error* err) {
    int code = ErrorCode::NotFound;
    String name;
    if (!isValid()) {
        code = ErrorCode::ObjectInvalid;
    } else if (id == Length || XMLNames::indexOf(id) >= 0) {
        code = ErrorCode::ReadOnly;
    } else if (XMLNames::nameOf(id, name)) {
        code = write(name, value);
    }
    if (code == ErrorCode::NotFound) return LiveObject::put(id, value, err);
    return setError(code, id, err, false);
}

/// A node that is part of a tree is copied, as in any assignment of a value.
int XMLNode::write(const String& name, const Variant& value) {
    if (!value.isDefined() || value.isNull()) return ErrorCode::TypeMismatch;
    const auto* other = dynamic_cast<const XMLNode*>(value.getLiveObject());
    const XML* put =
        other ? node_->put(name, *other->node_, true) : node_->put(name, value.getString());
    return put ? ErrorCode::Ok : ErrorCode::BadArgument;
}

int XMLNode::deleteID(int id) {
    if (!isValid()) return ErrorCode::ObjectInvalid;
    if (const int index = XMLNames::indexOf(id); index >= 0) return removeAt(index);
    String name;
    if (!XMLNames::nameOf(id, name)) return LiveObject::deleteID(id);
    node_->remove(name);
    return ErrorCode::Ok;
}

/// What is deleted from a list leaves its tree as well.
int XMLNode::removeAt(int index) {
    const Node member(node_->getChild(index));
    node_->remove(index, 1);
    if (member && member->getParent()) member->getParent()->remove(*member);
    return ErrorCode::Ok;
}

int XMLNode::apply(LiveObject& self, int id, const Array& args, Variant& result, Error* err) const {
    result.erase();
    if (!isValid() || !self.isValid()) return setError(ErrorCode::ObjectInvalid, id, err, false);
    // A script may call a method of this class on anything.
    auto* node = dynamic_cast<XMLNode*>(&self);
    if (!node) return setError(ErrorCode::WrongClass, id, err, false);
    const int code = node->run(id, args, result);
    if (code == ErrorCode::NotFound) return LiveObject::apply(self, id, args, result, err);
    return setError(code, id, err, false);
}

int XMLNode::run(int id, const Array& args, Variant& result) {
    if (id == Length) return ErrorCode::NotAFunction;
    return id >= SetName ? change(id, args, result) : navigate(id, args, result);
}

int XMLNode::navigate(int id, const Array& args, Variant& result) const {
    const XML& node = *node_;
    switch (id) {
    case GetName:
        result = node.getName();
        return ErrorCode::Ok;
    case GetValue:
        result = node.getValue();
        return ErrorCode::Ok;
    case GetType:
        result = node.getTypeAsString();
        return ErrorCode::Ok;
    case GetNamespace:
        result = node.getNamespace() ? node.getNamespace()->getValue() : String();
        return ErrorCode::Ok;
    case Parent:
        return answer(Node(node.getParent()), result);
    case Children:
        return answerList(node.get_r("*", XML::Children), result);
    case Attributes:
        return answerList(node.get_r("*", XML::Attributes), result);
    case Child:
        return answerList(node.get_r(args[0].getString(), XML::Children), result);
    case Descendants:
        return answerList(node.descendants_r(), result);
    case Copy:
        return answerList(node.copy_r(true), result);
    case IsEqual: {
        const auto* other = dynamic_cast<const XMLNode*>(args[0].getLiveObject());
        result = other && node.isEqual(*other->node_, false);
        return ErrorCode::Ok;
    }
    case ToString:
    case ToJSON:
        result = node.toString(-1);
        return ErrorCode::Ok;
    case ToXMLString:
        result = node.toXMLString(args.length() > 0 ? args[0].getInteger() : -1);
        return ErrorCode::Ok;
    default:
        return ErrorCode::NotFound;
    }
}

int XMLNode::change(int id, const Array& args, Variant& result) {
    XML& node = *node_;
    const auto* other = dynamic_cast<const XMLNode*>(args[0].getLiveObject());
    switch (id) {
    case SetName:
        result = node.setName(args[0].getString());
        return ErrorCode::Ok;
    case SetValue:
        result = node.setValue(args[0].getString());
        return ErrorCode::Ok;
    case Add: {
        const auto* content =
            args.length() > 1 ? dynamic_cast<const XMLNode*>(args[1].getLiveObject()) : nullptr;
        const String& name = args[0].getString();
        XML* added = content             ? node.add(name, *content->node_, true)
                     : args.length() > 1 ? node.add(name, args[1].getString())
                                         : node.add(name);
        return added ? answer(Node(added), result) : int(ErrorCode::BadArgument);
    }
    case Insert:
        if (!other) return ErrorCode::TypeMismatch;
        result = node.insert(*other->node_, args.length() > 1 ? args[1].getInteger() : XML::atEnd,
                             false);
        return ErrorCode::Ok;
    case Remove:
        result = node.remove(args[0].getString());
        return ErrorCode::Ok;
    case Normalize:
        node.normalize();
        return ErrorCode::Ok;
    default:
        return ErrorCode::NotFound;
    }
}

int XMLNode::answer(const Node& node, Variant& result) const {
    if (!node) return ErrorCode::Ok;
    const auto object = InterfacePtr<XMLNode>::adopt(new XMLNode);
    object->node_ = node;
    object->tree_ = tree_;
    result = object.get();
    return ErrorCode::Ok;
}

int XMLNode::answerList(XML* list, Variant& result) const {
    return answer(Node::adopt(list), result);
}

} // namespace krhost
