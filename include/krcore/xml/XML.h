#pragma once

#include <krcore/containers/THashTable.h>
#include <krcore/containers/TSimpleArray.h>
#include <krcore/foundation/Export.h>
#include <krcore/foundation/Refcountable.h>
#include <krcore/text/String.h>

#include <new>

namespace KrCore {

class Error;
class NodeBatches;
class Variant;
struct XMLTree;

/// A node of an XML tree, or a list of nodes: elements, attributes, text, comments, processing
/// instructions, namespace declarations and lists are all of this class and differ by their type.
///
/// **Ownership.** A node is shared by counting its references and dies by its last `release`; there
/// are no nodes on the stack and no `delete`. A tree holds one reference on each of its nodes, a
/// list one on each member, an element or attribute one on its namespace. Members whose names end
/// in `_r` return a reference that the caller releases; all other pointers are borrowed from the
/// tree. A parent link is not counted; it is null once the parent is gone.
///
/// **Lists** are not part of a tree: a list's members keep the parents they have in their trees. A
/// list never holds a list; where one is inserted, its members are.
///
/// **Names.** Where a member looks nodes up by a `name`, the text reads:
/// - `name`: that local name. While the context's default namespace has a URI other than "" and
///   "*", only elements in that namespace match, and attributes in that or in none; otherwise the
///   local name alone decides.
/// - `uri::name`: that local name in the namespace of that URI; `::name` in no namespace,
///   `*::name` in any.
/// - `*`: every node, whatever its type, its name and its namespace; `uri::*` every element (or
///   attribute) of that namespace. All other names find elements and attributes only.
/// - `@` in front of any of these: attributes instead of children.
///
/// **Threads.** Reference counts are atomic in multi-threaded mode; a tree is not locked and
/// belongs to one thread at a time. The default and the current namespace belong to the calling
/// thread's context.
///
/// **Depth** is bounded by memory alone: nothing recurses. What needs more memory than there is
/// throws `OutOfMemory` and leaves the tree as it was, except where a member says otherwise.
class KR_API XML : public Refcountable {
public:
    enum Type : int {
        Element = 1,
        List = 2,
        Text = 3, ///< A CDATA section when its name is "CDATA".
        Attribute = 4,
        Comment = 5,
        ProcessingInstruction = 6,
        Namespace = 7, ///< The name is the prefix, the value the URI.
    };

    /// What `get_r` and `iterate` look at. Other bits of a mode are ignored.
    enum Mode : int {
        Children = 0,
        Attributes = 8,
    };

    /// As an index, appends.
    static constexpr int atEnd = 2147483647;

    /// An element in the default namespace.
    explicit XML(const String& name);
    /// An element in the default namespace with `child` inserted as its last child; see `insert`.
    XML(const String& name, const XML& child);
    /// An empty node; elements and attributes are in the default namespace.
    explicit XML(int type);
    /// `text` is the value of text and comments and the name of all other types.
    XML(int type, const String& text);
    XML(const XML&) = delete;
    XML& operator=(const XML&) = delete;

    /// The same as `isEqual(other, false)`.
    bool operator==(const XML& other) const { return isEqual(other, false); }
    bool operator!=(const XML& other) const { return !isEqual(other, false); }
    /// Whether the two trees read alike: types, local names, values, the URIs of namespaces,
    /// attributes in any order and children in theirs. With `exact` also prefixes, namespace
    /// declarations and the order of attributes.
    bool isEqual(const XML& other, bool exact) const;
    /// Whether a node equal to `node`, compared as by `isEqual`, is among the children or members.
    bool contains(const XML& node, bool exact) const;
    /// The position of the first child or member equal to `node`, or -1.
    int indexOf(const XML& node, bool exact) const;
    /// The position of the first child or member (attribute, for a name with "@") of that name, or
    /// -1. With `exact` the text is a child's local name as it stands, without "@", "*" and "::",
    /// in any namespace.
    int indexOf(const String& name, bool exact) const;

    int getType() const { return type_; }
    /// "element", "list", "text", "attribute", "comment", "processing-instruction", "namespace"; ""
    /// for other codes. Static storage.
    const char* getTypeAsString() const;
    /// The local name of elements and attributes, the target of a processing instruction, the
    /// prefix of a namespace, "CDATA" on a CDATA section; empty otherwise.
    const String& getName() const { return name_; }
    /// The content of nodes other than elements and lists; the URI of a namespace.
    const String& getValue() const { return value_; }
    /// Sets the name of an element or a processing instruction. Text takes only "CDATA", which
    /// makes it a CDATA section. False for all else. The name's syntax is not checked; see
    /// `checkSymbolSyntax`.
    bool setName(const String& name);
    /// False for elements and lists.
    bool setValue(const String& value);
    /// Borrowed; null for no namespace.
    const XML* getNamespace() const { return namespace_; }
    /// Gives an element or attribute a namespace, of which it takes a reference, or none with null.
    /// False, and nothing changes, for other nodes and for an `ns` that is not of type Namespace.
    bool setNamespace(const XML* ns);
    /// Null for a root, a free node and a list.
    XML* getParent() const { return parent_; }
    /// The top of the tree; a node without parent is its own.
    XML& root() const;
    /// The number of children or members.
    int length() const { return children_.length(); }
    /// A child or member; null out of range. Borrowed.
    XML* getChild(int index) const;
    /// Attributes and text are simple, comments and processing instructions are not. Elements and
    /// lists are simple when no element is among their children; a list of exactly one element is
    /// judged by that element.
    bool isSimple() const;
    /// The text of what `name` finds: `toString(-1)` of the list of `get_r(name, Children)`.
    String getText(const String& name) const;
    /// The value without tabs, line feeds, carriage returns and blanks at its ends; other white
    /// space stays.
    String getStrippedValue() const;
    /// Whether `getText(name)` is "true".
    bool getBool(const String& name) const;
    /// `getText(name)` as a number, converted as by `Variant`.
    int getInteger(const String& name) const;
    double getDouble(const String& name) const;
    /// This node when it is an element, the element of a list that holds just one node, or null.
    XML* asElementNode() const;
    /// Whether `name` is a valid local name: an identifier without "$" and "@", in which "-", "."
    /// and the decimal digits of any script may follow the first character.
    static bool checkSymbolSyntax(const String& name);

    // Navigation. Each gives a new list, in document order unless it says otherwise, empty when
    // there is nothing. For a list, what its members give, each node once, in first-seen order;
    // siblings parent by parent.

    XML* parent_r() const;
    /// The parents from the nearest to the root; with `includeSelf` behind the node itself.
    XML* ancestors_r(bool includeSelf) const;
    /// All nodes below, attributes and declarations excepted, each before its own descendants.
    XML* descendants_r() const;
    XML* nextSiblings_r() const;
    XML* prevSiblings_r() const;
    XML* nextElements_r() const;
    XML* prevElements_r() const;
    /// The namespace declarations in scope, the innermost first. Those whose prefix is declared
    /// again further in are left out, and so is the predefined "xml". Empty for a list, whose
    /// members may see different ones.
    XML* namespaces_r() const;
    /// Children, or attributes with `mode` Attributes, by name. In a list those of all members.
    XML* get_r(const String& name, int mode) const;
    /// The child, member or attribute at an index, if there is one.
    XML* get_r(int index, int mode) const;
    /// A deep copy without parent. A list's copy holds copies. With `declareInScope` the copy of an
    /// element declares all namespaces in scope at the original, so that it stands alone.
    XML* copy_r(bool declareInScope) const;
    /// Evaluates a path expression. There is no evaluator yet: pushes -36 onto `error`, leaves
    /// `result` undefined and returns null.
    XML* xpath_r(const String& path, Variant& result, Error& error,
                 const THashTable<String>* namespaces) const;

    // Mutation. What is inserted leaves the tree it was in; with `copy` a copy goes in and the
    // node stays where it is. A node is never inserted into itself or below itself.

    /// Appends an empty element in the default namespace, or with "@" an attribute, which replaces
    /// one of the same name. With `uri::name` it is in the namespace of that URI: one that is in
    /// scope, or a new one of the prefix "*", which gets its prefix when it is printed. Returns it,
    /// borrowed; null for a name that is empty or "*" and for nodes that take no children. In a
    /// list of one element "@" means that element.
    XML* add(const String& name);
    /// The same with a text child, or a value for an attribute.
    XML* add(const String& name, const String& value);
    /// Appends `node` when it is an element of that local name, otherwise a new element of that
    /// name with `node`, or the members of a list, as its content. For an attribute the value is
    /// the node's `toString`.
    XML* add(const String& name, const XML& node, bool copy);
    /// Makes what `add` would append the only child or attribute of that name: it takes the place
    /// of the first one, the others are removed; where there is none it is appended. A list of one
    /// element stands for that element; other lists give null. A name with "/" but without "::" is
    /// a path: all pieces but the last name the first child of that name, made where it is missing;
    /// an empty piece or one with "@" before the last gives null. What
    /// was made on the way stays when memory runs out.
    XML* put(const String& name);
    XML* put(const String& name, const String& value);
    XML* put(const String& name, const XML& node, bool copy);
    /// Inserts a node, or the members of a list, at an index clipped to 0 ... `length()`, which
    /// counts the children without those that move: afterwards the node has this index. Into an
    /// element, attributes go to its attributes and namespaces to its declarations, whatever the
    /// index, and replace those of the same name or prefix. A list takes any node and leaves its
    /// parent alone; a node may be in it more than once. Of a list's members the attributes and
    /// declarations go first, one by one. False, and nothing changes, for nodes
    /// that take no children, and for a node that is the target or one of its ancestors.
    bool insert(const XML& node, int index, bool copy);
    /// The same for one child: an element, text, a comment or a processing instruction; false for
    /// other types.
    bool insertChild(const XML& node, int index, bool copy);
    /// Removes the children, or with "@" the attributes, of that name; in a list those of all
    /// members. The empty name removes all children or members. Returns how many.
    int remove(const String& name);
    /// Removes a child, an attribute or a declaration of this node, or a member of this list.
    /// False when it is none. The node may die with it.
    bool remove(XML& node);
    /// Removes the children or members `index` ... `index + count - 1` as far as they exist.
    /// Returns how many.
    int remove(int index, int count);
    /// Removes the declarations of an element that have the prefix and URI of `ns`; with `deep` of
    /// its descendants too. Nodes in that namespace stay in it. Whether there was one.
    bool removeNS(const XML& ns, bool deep);
    /// Removes empty text and joins neighbouring texts, in the whole tree below. A CDATA section
    /// counts as text. Of a list's own members only texts that are in no tree take part.
    void normalize();
    /// Calls `visit(node, data)` for each child or member, or attribute with `mode` Attributes,
    /// until it returns false. False when it did. `visit` may change the tree; the walk goes by
    /// index.
    bool iterate(bool (*visit)(const XML& node, void* data), int mode, void* data) const;

    /// URI of the context's default namespace; "" when there is none.
    static String getDefaultNamespaceURI();
    /// Gives new elements and attributes a namespace; with "" or "*" they get none. Returns the
    /// URI so far. The same URI keeps the namespace node.
    static String setDefaultNamespaceURI(const String& uri);
    /// The default namespace node; null when none was set.
    static const XML* getDefaultNamespace_r();
    /// The context's current namespace, which belongs to the script engine; may be null.
    static const XML* getCurrentNamespace_r();
    /// Sets the current namespace, of which the context takes a reference, or none with null.
    /// Returns the one so far, with the reference that the context held.
    static const XML* setCurrentNamespace_r(const XML* ns);
    /// The innermost declaration in scope that has this prefix and this URI, null for any. A
    /// declaration whose prefix is declared again further in is out of scope. With `forAttribute`
    /// declarations of the empty prefix, which do not reach attributes, are passed over. The prefix
    /// "xml" is declared around every tree. Borrowed; null when there is none.
    const XML* getNS(const String* prefix, const String* uri, bool forAttribute) const;

    /// Parses the XML that begins with the first "<" at or after `pos`, up to the end of `text`.
    ///
    /// Text without a "<" becomes a text node. `<>...</>` encloses a list: always gives a list node
    /// of what is between. Otherwise the result is the one node at the top, a list of several, or
    /// an empty text node when there is nothing but what the flags drop. Elements that are not
    /// closed at the end of the text are accepted; their last run of text is lost.
    ///
    /// Line ends inside text stay as they were written. Elements without a namespace of their own
    /// are in the context's default namespace.
    ///
    /// @param pos Index into `text`, clipped; on return the index that was reached.
    /// @param ignoreWhitespace Drops text of tabs, line ends and blanks alone, and strips the texts
    ///   of elements with more than one child. CDATA sections stay as they are.
    /// @return A new node, or null with two records pushed onto `error`: on top the code 1 with
    ///   the line, below it what is wrong with its text, line, index and column. An unclosed
    ///   `<>...` leaves the record 62 alone. Earlier records of `error` play no part.
    static XML* parse(const String& text, int& pos, Error& error, bool ignoreWhitespace,
                      bool ignoreComments, bool ignoreProcessingInstructions);
    /// The same; `ns` plays no part.
    static XML* parse(const String& text, int& pos, Error& error, const XML* ns,
                      bool ignoreWhitespace, bool ignoreComments,
                      bool ignoreProcessingInstructions);

    /// Plain text of simple content: the value of text and attributes, "" for comments and
    /// processing instructions, the joined texts of simple elements and lists.
    /// `toXMLString(indent)` for all else.
    String toString(int indent) const;
    /// Markup for the node and all below it. With an `indent` of 0 or more, line by line with so
    /// many blanks a level and text stripped; otherwise on one line with text as it is.
    String toXMLString(int indent) const;

    using Heap::operator delete;
    /// Called by the last `release`: large trees keep many nodes in one block of memory.
    static void operator delete(XML* node, std::destroying_delete_t);

private:
    friend class NodeBatches;
    friend struct XMLTree;

    /// A node as it is, whatever the default namespace.
    struct Plain {};
    XML(Plain, int type) noexcept : type_(type) {}
    ~XML() override;
    String name_;
    String value_;
    XML* namespace_ = nullptr; ///< One reference.
    XML* parent_ = nullptr;
    TISimpleArray<XML> children_;
    TISimpleArray<XML> attributes_;
    TISimpleArray<XML> declarations_;
    int type_;
    /// An element that once had children prints as two tags for good.
    bool hasChildren_ = false;
    unsigned char place_ = 0; ///< Among nodes that share a block of memory, 0 for none.
};

} // namespace KrCore
