#include "xml/XMLWriter.h"

namespace KrCore {

void XMLWriter::write(const XML& top) {
    begin(top);
    while (!open_.isEmpty()) {
        Open& open = open_.top();
        const TISimpleArray<XML>& members = XMLTree::children(*open.node);
        if (open.next < members.length()) {
            beginMember(open, *members[open.next]);
        } else {
            endNode(open);
            open_.pop();
        }
    }
}

void XMLWriter::begin(const XML& node) {
    if (node.getType() == XML::Element) {
        beginElement(node);
    } else if (node.getType() == XML::List) {
        open_.push({&node, nullptr, 0, 0, false});
    } else {
        writeLeaf(node);
    }
}

void XMLWriter::beginMember(Open& open, const XML& member) {
    const bool isFirst = open.next++ == 0;
    if (open.hasBreaks || (!isFirst && isPretty() && open.node->getType() == XML::List))
        writeBreak();
    begin(member);
}

bool XMLWriter::hasBreaks(const XML& element) const {
    return isPretty() && (element.length() > 1 ||
                          (element.length() == 1 && element.getChild(0)->getType() != XML::Text));
}

/// Kept: an element that once had children is written as two tags, one that never had as one (held
/// by XMLPrint.EmptiedElementHasTwoTags).
void XMLWriter::beginElement(const XML& element) {
    scopes_.open(element);
    const std::size_t scope = scopes_.mark();
    const String* prefix = scopes_.prefixFor(element);
    out_.append('<');
    writeName(prefix, element.getName());
    for (const XML* attribute : XMLTree::attributes(element))
        writeAttribute(*attribute);
    scopes_.forEachDeclaration([&](const ScopeStack::Entry& entry) { writeDeclaration(entry); });
    if (element.length() == 0 && !XMLTree::hasChildren(element)) {
        out_.append("/>");
        scopes_.close(scope);
        return;
    }
    out_.append('>');
    const bool breaks = hasBreaks(element);
    if (breaks) ++level_;
    open_.push({&element, prefix, scope, 0, breaks});
}

void XMLWriter::endNode(const Open& open) {
    if (open.node->getType() == XML::List) return;
    if (open.hasBreaks) {
        --level_;
        writeBreak();
    }
    out_.append("</");
    writeName(open.prefix, open.node->getName());
    out_.append('>');
    scopes_.close(open.scope);
}

void XMLWriter::writeLeaf(const XML& node) {
    switch (node.getType()) {
    case XML::Text:
        return writeText(node);
    case XML::Attribute:
        return appendEscaped(out_, node.getValue(), EscapeKind::Attribute);
    case XML::Comment:
        out_.append("<!--");
        out_.append(node.getValue());
        return out_.append("-->");
    case XML::ProcessingInstruction:
        out_.append("<?");
        out_.append(node.getName());
        if (!node.getValue().isEmpty()) out_.append(' ');
        out_.append(node.getValue());
        return out_.append("?>");
    default:
        return out_.append(node.getValue());
    }
}

void XMLWriter::writeText(const XML& text) {
    const String& value = text.getValue();
    if (XMLTree::isCData(text)) {
        out_.append("<![CDATA[");
        out_.append(value);
        out_.append("]]>");
    } else {
        appendEscaped(out_,
                      isPretty() ? withoutBlanks(value) : UnitRange{value.begin(), value.end()},
                      EscapeKind::Text);
    }
}

void XMLWriter::writeName(const String* prefix, const String& name) {
    if (prefix) {
        appendEscaped(out_, *prefix, EscapeKind::Text);
        out_.append(':');
    }
    appendEscaped(out_, name, EscapeKind::Text);
}

void XMLWriter::writeAttribute(const XML& attribute) {
    const String* prefix = scopes_.prefixFor(attribute);
    out_.append(' ');
    writeName(prefix, attribute.getName());
    out_.append("=\"");
    appendEscaped(out_, attribute.getValue(), EscapeKind::Attribute);
    out_.append('"');
}

void XMLWriter::writeDeclaration(const ScopeStack::Entry& entry) {
    out_.append(" xmlns");
    if (!entry.prefix->isEmpty()) {
        out_.append(':');
        appendEscaped(out_, *entry.prefix, EscapeKind::Text);
    }
    out_.append("=\"");
    appendEscaped(out_, *entry.uri, EscapeKind::Attribute);
    out_.append('"');
}

/// The line feed is the same on all systems.
void XMLWriter::writeBreak() {
    out_.append('\n');
    out_.appendBlanks(level_ * indent_);
}

} // namespace KrCore
