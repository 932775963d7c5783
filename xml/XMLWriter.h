#pragma once

#include "xml/Escaping.h"
#include "xml/ScopeStack.h"

namespace KrCore {

/// Prints a node and all below it as markup, without recursion.
class XMLWriter {
public:
    /// An `indent` below 0 writes everything on one line.
    XMLWriter(const XML& top, int indent) : scopes_(top), indent_(indent) { write(top); }

    String toString() { return out_.toString(); }

private:
    /// An element or a list whose members are being written.
    struct Open {
        const XML* node;
        const String* prefix; ///< Of an element; null for none.
        std::size_t scope;
        int next;
        bool hasBreaks; ///< Members stand on lines of their own.
    };

    bool isPretty() const noexcept { return indent_ >= 0; }
    bool hasBreaks(const XML& element) const;

    void write(const XML& top);
    void begin(const XML& node);
    void beginMember(Open& open, const XML& member);
    void beginElement(const XML& element);
    void endNode(const Open& open);
    void writeLeaf(const XML& node);
    void writeText(const XML& text);
    void writeName(const String* prefix, const String& name);
    void writeAttribute(const XML& attribute);
    void writeDeclaration(const ScopeStack::Entry& entry);
    void writeBreak();

    UnitBuffer out_;
    WorkStack<Open> open_;
    ScopeStack scopes_;
    std::int64_t level_ = 0;
    int indent_;
};

} // namespace KrCore
