#pragma once

#include "xml/TextDirectory.h"
#include "xml/XMLTree.h"

#include <cstddef>

namespace KrCore {

/// The namespaces in scope while a text is parsed, the innermost on top. It begins with the
/// predefined "xml" and the context's default namespace, if there is one.
///
/// A text may nest as many declarations as it likes, so nothing here looks through them: each URI
/// has a chain of its visible declarations, and a declaration that hides another takes that one out
/// of its chain and puts it back when it ends.
class NamespaceStack {
public:
    NamespaceStack();
    ~NamespaceStack() { popTo(0); }
    NamespaceStack(const NamespaceStack&) = delete;
    NamespaceStack& operator=(const NamespaceStack&) = delete;

    std::size_t size() const noexcept { return entries_.size(); }
    XML* operator[](std::size_t index) noexcept { return entries_[index].ns; }

    /// Takes a reference.
    void push(XML* ns);
    void popTo(std::size_t size) noexcept;

    /// A number for a URI that has been declared, also when its declarations have ended; `none`
    /// for others.
    int idOfUri(const String& uri) const { return uris_.find(uri); }
    /// The namespace of a name that the parser gave a URI: the innermost declaration of that URI
    /// whose prefix is not declared again further in. Attributes are not reached by a declaration
    /// of the empty prefix. Borrowed; null when there is none.
    XML* findByUri(int uriId, bool forAttribute) noexcept;
    /// The namespace of an element's name without URI and prefix: the context's default one, unless
    /// a declaration around the element took it back.
    XML* findDefault() noexcept;

    static constexpr int none = TextDirectory::none;

private:
    struct Entry {
        XML* ns;
        int prefix;
        int uri;
        int hidden; ///< The declaration of the same prefix further out.
        int older;  ///< Neighbours in the chain of the URI.
        int newer;
    };

    Entry& at(int index) noexcept { return entries_[static_cast<std::size_t>(index)]; }
    void unchain(const Entry& entry) noexcept;
    void chain(int index) noexcept;

    WorkStack<Entry> entries_;
    TextDirectory prefixes_; ///< The innermost declaration of each.
    TextDirectory uris_;     ///< The innermost visible declaration of each.
    int emptyPrefix_;
};

} // namespace KrCore
