#include "xml/TreeBuilder.h"

#include "xml/ExpatErrors.h"
#include "xml/ExpatMemory.h"

#include <krcore/foundation/ErrorCode.h>

#include <cstdint>
#include <utility>

namespace KrCore {

static_assert(sizeof(XML_Char) == sizeof(unsigned short), "Expat hands over 16-bit text");
static_assert(XML_MAJOR_VERSION > 2 || (XML_MAJOR_VERSION == 2 && XML_MINOR_VERSION >= 4),
              "older versions expand entities without limit");

namespace {

constexpr XML_Char utf16[] = {'U', 'T', 'F', '-', '1', '6', 0};

UnitRange untilZero(const unsigned short* text) noexcept {
    const unsigned short* end = text;
    while (*end != 0)
        ++end;
    return {text, end};
}

String toString(UnitRange text) { return String(text.begin, text.length()); }

struct ParserCloser {
    XML_Parser parser;
    ~ParserCloser() { XML_ParserFree(parser); }
};

} // namespace

/// The builder's members as Expat calls them. No exception gets past these.
struct XMLTreeBuilder::ExpatHandlers {
    template <auto member, class... Arguments>
    static void XMLCALL call(void* data, Arguments... arguments) {
        auto& builder = *static_cast<XMLTreeBuilder*>(data);
        if (builder.isOutOfMemory_) return;
        try {
            (builder.*member)(arguments...);
        } catch (const OutOfMemory&) {
            builder.stopForMemory();
        }
    }
    static void XMLCALL endElement(void* data, const XML_Char*) {
        call<&XMLTreeBuilder::endElement>(data);
    }
    static void XMLCALL endNamespace(void*, const XML_Char*) {}

    static void install(XML_Parser parser) {
        XML_SetElementHandler(parser, call<&XMLTreeBuilder::startElement>, endElement);
        XML_SetNamespaceDeclHandler(parser, call<&XMLTreeBuilder::startNamespace>, endNamespace);
        XML_SetCharacterDataHandler(parser, call<&XMLTreeBuilder::addText>);
        XML_SetCommentHandler(parser, call<&XMLTreeBuilder::addComment>);
        XML_SetProcessingInstructionHandler(parser, call<&XMLTreeBuilder::addInstruction>);
        XML_SetCdataSectionHandler(parser, call<&XMLTreeBuilder::startCData>,
                                   call<&XMLTreeBuilder::endCData>);
    }
};

ParseOutcome XMLTreeBuilder::run(int start) {
    constexpr XML_Char separator[] = {'\n', 0};
    start_ = start;
    declaredScopes_ = namespaces_.size();
    const ParserCloser closer{XML_ParserCreate_MM(nullptr, &heapForExpat, separator)};
    parser_ = closer.parser;
    if (!parser_) return {ErrorCode::OutOfMemory, 1, 0, start};
    XML_SetUserData(parser_, this);
    ExpatHandlers::install(parser_);
    const bool isGood = XML_SetEncoding(parser_, utf16) == XML_STATUS_OK && feed();
    const ParseOutcome outcome = outcomeOf(isGood);
    parser_ = nullptr;
    return outcome;
}

/// Expat parses a copy of its own in any case; made here, the copy's address is known.
bool XMLTreeBuilder::feed() {
    static_assert(String::maxLength < 1 << 30, "the bytes of a text count as an int");
    const int length = source_.length() - start_;
    auto* units = static_cast<unsigned short*>(XML_GetBuffer(parser_, length * 2));
    if (!units) return false;
    copyUnits(units, source_.begin() + start_, length);
    fed_ = {units, units + length};
    text_.setSource(fed_);
    return XML_ParseBuffer(parser_, length * 2, 1) == XML_STATUS_OK;
}

ParseOutcome XMLTreeBuilder::outcomeOf(bool isGood) const {
    ParseOutcome outcome{0, 0, 0, start_};
    const std::int64_t byteIndex = XML_GetCurrentByteIndex(parser_);
    if (byteIndex > 0) outcome.position += static_cast<int>(byteIndex / 2);
    const XML_Error expatError = XML_GetErrorCode(parser_);
    // Expat gives no error when it has no room for the name of the encoding.
    if (isOutOfMemory_ || (!isGood && expatError == XML_ERROR_NONE)) {
        outcome.code = ErrorCode::OutOfMemory;
    } else if (!isGood) {
        outcome.code = errorCodeOfExpat(expatError);
    }
    if (outcome.code == 0) return outcome;
    // Expat counts the lines of the whole text for the answer.
    outcome.line = static_cast<int>(XML_GetCurrentLineNumber(parser_));
    outcome.column = static_cast<int>(XML_GetCurrentColumnNumber(parser_));
    return outcome;
}

InterfacePtr<XML> XMLTreeBuilder::takeResult() {
    while (!open_.isEmpty()) {
        closeElement(open_.top());
        open_.pop();
    }
    if (nodes_.size() == 0) return XMLTree::make(XML::Text);
    if (nodes_.size() == 1) return nodes_.pop();
    InterfacePtr<XML> list = XMLTree::make(XML::List);
    nodes_.handOver(XMLTree::children(*list), 0, nullptr);
    return list;
}

void XMLTreeBuilder::startNamespace(const unsigned short* prefix, const unsigned short* uri) {
    const InterfacePtr<XML> ns = XMLTree::make(XML::Namespace);
    if (prefix) XMLTree::name(*ns) = toString(untilZero(prefix));
    if (uri) XMLTree::value(*ns) = toString(untilZero(uri));
    namespaces_.push(ns.get());
}

void XMLTreeBuilder::startElement(const unsigned short* name, const unsigned short** attributes) {
    flushText();
    const std::size_t outerScopes = declaredScopes_;
    XML* element = pushNamed(XML::Element, elementNames_, name);
    open_.push({element, nodes_.size(), outerScopes});
    addDeclarations(*element);
    addAttributes(*element, attributes);
}

void XMLTreeBuilder::endElement() {
    flushText();
    const Open open = open_.top();
    if (filter_.ignoreWhitespace) stripTexts(open.firstChild);
    closeElement(open);
    open_.pop();
    namespaces_.popTo(open.outerScopes);
    declaredScopes_ = open.outerScopes;
}

void XMLTreeBuilder::addText(const unsigned short* units, int count) {
    if (count == 1 && *units == '\n') {
        addLineEnd();
    } else {
        text_.append({units, units + count});
    }
}

/// Kept: line ends stay as they were written, although Expat reports each as a line feed (held by
/// XMLParse.KeepsWrittenLineEnds). Where the line feed comes from a reference, the text has its "&"
/// there.
void XMLTreeBuilder::addLineEnd() {
    static constexpr unsigned short lineFeed[] = {'\n'};
    const std::int64_t byteIndex = XML_GetCurrentByteIndex(parser_);
    const unsigned short* place = byteIndex < 0 ? fed_.end : fed_.begin + byteIndex / 2;
    const bool isReturn = place < fed_.end && *place == '\r';
    if (isReturn) {
        const bool isPair = place + 1 < fed_.end && place[1] == '\n';
        text_.append({place, place + (isPair ? 2 : 1)});
    } else if (place < fed_.end && *place == '\n') {
        text_.append({place, place + 1});
    } else {
        text_.append({lineFeed, lineFeed + 1});
    }
}

void XMLTreeBuilder::addComment(const unsigned short* text) {
    flushText();
    if (filter_.ignoreComments) return;
    XMLTree::value(*nodes_.push(batches_.make(XML::Comment))) = toString(untilZero(text));
}

void XMLTreeBuilder::addInstruction(const unsigned short* target, const unsigned short* data) {
    flushText();
    if (filter_.ignoreProcessingInstructions) return;
    XML* node = nodes_.push(batches_.make(XML::ProcessingInstruction));
    XMLTree::name(*node) = toString(untilZero(target));
    XMLTree::value(*node) = toString(untilZero(data));
}

void XMLTreeBuilder::startCData() { flushText(); }

/// White space in a CDATA section is meant.
void XMLTreeBuilder::endCData() {
    const bool ignoreWhitespace = std::exchange(filter_.ignoreWhitespace, false);
    XML* text = flushText();
    if (text) XMLTree::name(*text) = cdata_;
    filter_.ignoreWhitespace = ignoreWhitespace;
}

/// The text node that the characters so far have become; null when they make none.
XML* XMLTreeBuilder::flushText() {
    const UnitRange text = text_.range();
    if (text.isEmpty()) return nullptr;
    XML* node = nullptr;
    if (!filter_.ignoreWhitespace || !isBlank(text)) {
        node = nodes_.push(batches_.make(XML::Text));
        XMLTree::value(*node) = values_.find(text);
    }
    text_.clear();
    return node;
}

XML* XMLTreeBuilder::pushNamed(int type, NameCache& names, const unsigned short* full) {
    const NameCache::Name& name = names.find(untilZero(full));
    XML* node = nodes_.push(batches_.make(type));
    XMLTree::name(*node) = name.local;
    if (XML* ns = names.namespaceOf(name)) XMLTree::setNamespace(*node, ns);
    return node;
}

/// Gives the element what was declared for it just before it began.
void XMLTreeBuilder::addDeclarations(XML& element) {
    for (std::size_t index = declaredScopes_; index < namespaces_.size(); ++index)
        XMLTree::append(XMLTree::declarations(element), namespaces_[index]);
    declaredScopes_ = namespaces_.size();
}

void XMLTreeBuilder::addAttributes(XML& element, const unsigned short** attributes) {
    const std::size_t first = nodes_.size();
    for (; *attributes; attributes += 2) {
        XML* node = pushNamed(XML::Attribute, attributeNames_, attributes[0]);
        XMLTree::value(*node) = values_.find(untilZero(attributes[1]));
    }
    nodes_.handOver(XMLTree::attributes(element), first, &element);
}

void XMLTreeBuilder::closeElement(const Open& open) {
    if (nodes_.size() > open.firstChild) XMLTree::setHasChildren(*open.element);
    nodes_.handOver(XMLTree::children(*open.element), open.firstChild, open.element);
}

/// Texts beside other nodes lose the white space at their ends, CDATA sections excepted. Dropped
/// nodes do not count.
void XMLTreeBuilder::stripTexts(std::size_t first) {
    if (nodes_.size() - first < 2) return;
    for (std::size_t index = first; index < nodes_.size(); ++index) {
        XML& node = nodes_[index];
        if (node.getType() == XML::Text && !XMLTree::isCData(node))
            XMLTree::value(node) = node.getStrippedValue();
    }
}

void XMLTreeBuilder::stopForMemory() noexcept {
    isOutOfMemory_ = true;
    XML_StopParser(parser_, XML_FALSE);
}

} // namespace KrCore
