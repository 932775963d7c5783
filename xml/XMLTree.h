#pragma once

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/xml/XML.h>

namespace KrCore {

/// The private side of `XML`: nodes and their arrays, for the files that implement it.
///
/// The arrays of a node never share their buffers with other arrays, so that removing from them
/// needs no memory and cannot fail.
struct XMLTree {
    /// The node of the prefix "xml", in scope everywhere. Null while the library is down.
    static XML* xmlNamespace() noexcept;
    /// What new elements and attributes get: the context's default namespace, or null when its URI
    /// is "" or "*".
    static XML* namespaceOfNewNodes();

    /// A node of its own without namespace, whatever the default one is. One reference.
    static InterfacePtr<XML> make(int type) {
        return InterfacePtr<XML>::adopt(new XML(XML::Plain{}, type));
    }
    static InterfacePtr<XML> make(int type, const String& name, const String& value);

    static TISimpleArray<XML>& children(XML& node) noexcept { return node.children_; }
    static const TISimpleArray<XML>& children(const XML& node) noexcept { return node.children_; }
    static TISimpleArray<XML>& attributes(XML& node) noexcept { return node.attributes_; }
    static const TISimpleArray<XML>& attributes(const XML& node) noexcept {
        return node.attributes_;
    }
    static TISimpleArray<XML>& declarations(XML& node) noexcept { return node.declarations_; }
    static const TISimpleArray<XML>& declarations(const XML& node) noexcept {
        return node.declarations_;
    }
    /// Children, or attributes when the mode has that bit.
    static const TISimpleArray<XML>& membersOf(const XML& node, int mode) noexcept {
        return (mode & XML::Attributes) != 0 ? node.attributes_ : node.children_;
    }
    static bool hasChildren(const XML& node) noexcept { return node.hasChildren_; }
    static void setHasChildren(XML& node) noexcept { node.hasChildren_ = true; }

    /// Text has no other name than "CDATA".
    static bool isCData(const XML& text) noexcept { return !text.name_.isEmpty(); }
    static String& name(XML& node) noexcept { return node.name_; }
    static String& value(XML& node) noexcept { return node.value_; }
    static void setParent(XML& node, XML* parent) noexcept { node.parent_ = parent; }
    /// Whatever the types are; see `XML::setNamespace`.
    static void setNamespace(XML& node, XML* ns);

    /// Appends in steps that grow with the array, so that n appends move O(n) pointers.
    static void append(TISimpleArray<XML>& array, XML* node) {
        insert(array, node, array.length());
    }
    static void insert(TISimpleArray<XML>& array, XML* node, int index);
    /// Appends to the children of an element and sets the link; the node is free so far.
    static void appendChild(XML& parent, XML& child);

    /// Takes a child or attribute out of its tree, if it is in one. It may die.
    static void detach(XML& node) noexcept;
    /// Removes whatever `unwanted` names from children or attributes and clears its link to `node`.
    template <class Unwanted>
    static int removeIf(XML& node, TISimpleArray<XML>& array, Unwanted&& unwanted) {
        return array.removeIf([&](XML* member) {
            if (!unwanted(*member)) return false;
            if (member->parent_ == &node) member->parent_ = nullptr;
            return true;
        });
    }

    /// The same local name in the same namespace.
    static bool hasSameName(const XML& a, const XML& b) noexcept;
    /// `node` is `below` or one of its ancestors.
    static bool isSelfOrAncestor(const XML& node, const XML& below) noexcept;
};

/// Whether two namespaces, null for none, are the same: by their URIs, no namespace being the empty
/// one.
bool isSameNamespace(const XML* a, const XML* b) noexcept;

} // namespace KrCore
