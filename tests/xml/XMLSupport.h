#pragma once

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/text/StringConversions.h>
#include <krcore/values/Error.h>
#include <krcore/xml/XML.h>

#include <gtest/gtest.h>

#include <string>

namespace KrCore::Testing {

using Node = InterfacePtr<XML>;

inline Node adopt(XML* node) { return Node::adopt(node); }

struct Ignoring {
    bool whitespace = false;
    bool comments = false;
    bool instructions = false;
};

/// A tree without an error; ASCII, or UTF-8.
inline Node parse(const std::string& text, Ignoring ignoring = {}) {
    Error error;
    int pos = 0;
    const String units = fromUtf8(text);
    Node node = adopt(XML::parse(units, pos, error, ignoring.whitespace, ignoring.comments,
                                 ignoring.instructions));
    EXPECT_EQ(error.getCode(), 0) << text;
    EXPECT_EQ(pos, units.length()) << text;
    return node;
}

inline std::string print(const XML& node, int indent = -1) {
    return toUtf8(node.toXMLString(indent));
}

/// The members of a list, which is released, one after the other.
inline std::string members(XML* list) {
    const Node held = adopt(list);
    EXPECT_EQ(held->getType(), XML::List);
    std::string text;
    for (int index = 0; index < held->length(); ++index)
        text += (index > 0 ? "|" : "") + print(*held->getChild(index));
    return text;
}

/// Elements within each other.
inline Node nested(int depth) {
    Node inner = adopt(new XML("e"));
    for (int level = 1; level < depth; ++level) {
        Node outer = adopt(new XML("e", *inner));
        inner = outer;
    }
    return inner;
}

/// New elements and attributes are in this namespace for a scope.
class DefaultNamespace {
public:
    explicit DefaultNamespace(const char* uri) : former_(XML::setDefaultNamespaceURI(uri)) {}
    ~DefaultNamespace() { XML::setDefaultNamespaceURI(former_); }
    DefaultNamespace(const DefaultNamespace&) = delete;
    DefaultNamespace& operator=(const DefaultNamespace&) = delete;

private:
    String former_;
};

constexpr int deep = 1000000;

} // namespace KrCore::Testing
