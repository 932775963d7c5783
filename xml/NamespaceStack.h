#pragma once

#include "xml/BlankUnits.h"
#include "xml/WorkStack.h"
#include "xml/XMLTree.h"

#include <cstddef>

namespace KrCore {

/// The namespaces in scope while a text is parsed, the innermost on top. It begins with the
/// predefined "xml" and the context's default namespace, if there is one.
class NamespaceStack {
public:
    NamespaceStack();
    ~NamespaceStack() { popTo(0); }
    NamespaceStack(const NamespaceStack&) = delete;
    NamespaceStack& operator=(const NamespaceStack&) = delete;

    std::size_t size() const noexcept { return entries_.size(); }
    /// Changes whenever a name may have come to mean another namespace.
    int generation() const noexcept { return generation_; }
    XML* operator[](std::size_t index) noexcept { return entries_[index].ns; }

    /// Takes a reference.
    void push(XML* ns);
    void popTo(std::size_t size) noexcept;

    /// The namespace of a name that the parser gave a URI: the innermost declaration of that URI
    /// whose prefix is not declared again further in. Attributes are not reached by a declaration
    /// of the empty prefix. Borrowed; null when there is none.
    XML* findByUri(UnitRange uri, bool forAttribute) noexcept;
    /// The namespace of an element's name without URI and prefix: the context's default one, unless
    /// a declaration around the element took it back.
    XML* findDefault() noexcept;

private:
    struct Entry {
        XML* ns;
        bool hasEmptyPrefix;
    };

    bool isHidden(std::size_t index) noexcept;

    WorkStack<Entry> entries_;
    int generation_ = 0;
};

} // namespace KrCore
