#pragma once

#include "xml/PrefixTable.h"
#include "xml/TextDirectory.h"

#include <cstddef>

namespace KrCore {

/// The namespace declarations around the place where the printer is, and those that the element
/// which is being written still needs.
///
/// What an element declares is written. A namespace that a name uses and that nothing written
/// around it declares is declared on that element, so that the text stands alone and says the same
/// when it is parsed again.
class ScopeStack {
public:
    /// What is declared around `top` is not written; its prefixes are not taken for others.
    explicit ScopeStack(const XML& top) : top_(top) {}

    struct Entry {
        const String* prefix; ///< Borrowed from a namespace node, like the URI.
        const String* uri;
        int prefixId;
        int outer;      ///< The entry of this prefix further out.
        bool isWritten; ///< Otherwise the element uses what is declared further out.
    };

    /// Begins an element; its declarations come first, of one prefix the first one.
    void open(const XML& element);
    /// The prefix for an element's or attribute's name, null for none. Borrowed for the whole run.
    const String* prefixFor(const XML& node);
    /// Calls `write(const Entry&)` for what the element declares.
    template <class Write>
    void forEachDeclaration(Write&& write) {
        for (std::size_t index = begin_; index < entries_.size(); ++index) {
            if (entries_[index].isWritten) write(entries_[index]);
        }
    }
    std::size_t mark() const noexcept { return begin_; }
    /// Ends the element that had this mark.
    void close(std::size_t mark) noexcept;

private:
    static constexpr int nowhere = TextDirectory::none;
    static constexpr std::size_t cacheSize = 16;

    /// A prefix of a namespace node and its number.
    struct Known {
        const String* prefix;
        int id;
    };

    int idOf(const String& prefix);
    Entry& at(int index) noexcept { return entries_[static_cast<std::size_t>(index)]; }
    bool isOwn(int index) const noexcept {
        return index != nowhere && static_cast<std::size_t>(index) >= begin_;
    }
    void push(const String& prefix, int id, const String& uri, bool isWritten);
    bool declare(const String& prefix, const String& uri);
    const String* inventedPrefix(const String& uri);
    PrefixTable& prefixes();

    const XML& top_;
    WorkStack<Entry> entries_;
    std::size_t begin_ = 0;  ///< Of the current element's entries.
    TextDirectory declared_; ///< The innermost entry of each prefix.
    Known known_[cacheSize] = {};
    PrefixTable prefixes_;
    bool hasPrefixes_ = false;
};

} // namespace KrCore
