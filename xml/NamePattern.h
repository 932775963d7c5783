#pragma once

#include "xml/XMLTree.h"

namespace KrCore {

/// A name as the members of `XML` take it to look nodes up or to make them: `name`, `uri::name`,
/// "*" for any name, "@" in front for attributes.
class NamePattern {
public:
    /// With `attributes` the name looks for attributes even without its "@".
    explicit NamePattern(const String& name, bool attributes = false);

    bool wantsAttributes() const { return wantsAttributes_; }
    /// Of an element: its attributes or its children, whatever the pattern asks for.
    TISimpleArray<XML>& arrayOf(XML& node) const {
        return wantsAttributes_ ? XMLTree::attributes(node) : XMLTree::children(node);
    }
    bool matches(const XML& node) const;

    /// A node can be made by this name: it is neither empty nor "*".
    bool isSingle() const { return !isAnyName_ && !local_.isEmpty(); }
    const String& local() const { return local_; }
    /// An empty element or attribute of this name, to be put into `place`.
    InterfacePtr<XML> makeNode(const XML& place) const;

private:
    enum class Where { Default, Anywhere, Exactly };

    bool matchesNamespace(const XML& node) const;

    String local_;
    String uri_;
    Where where_ = Where::Default;
    bool wantsAttributes_ = false;
    bool isAnyName_ = false;
};

} // namespace KrCore
