#pragma once

#include "xml/NameCache.h"
#include "xml/NodeBatches.h"
#include "xml/NodeStack.h"
#include "xml/PendingText.h"
#include "xml/ShortTexts.h"

#include <cstddef>

struct XML_ParserStruct;

namespace KrCore {

/// What a run over a text leaves out.
struct ParseFilter {
    bool ignoreWhitespace;
    bool ignoreComments;
    bool ignoreProcessingInstructions;
};

/// How a run ended: the library's code, 0 for success, and where in the text.
struct ParseOutcome {
    int code;
    int line; ///< Of a failure: from 1, counted from where the run began.
    int column;
    int position; ///< Index into the text.
};

/// Feeds a text to Expat and builds the tree from what Expat reports, one run per object.
///
/// The children of an open element wait on a stack and go into its array at its end, all at once.
class XMLTreeBuilder {
public:
    XMLTreeBuilder(const String& text, ParseFilter filter)
        : source_(text), filter_(filter), elementNames_(namespaces_, false),
          attributeNames_(namespaces_, true) {}
    XMLTreeBuilder(const XMLTreeBuilder&) = delete;
    XMLTreeBuilder& operator=(const XMLTreeBuilder&) = delete;

    /// Parses from `start`, where a "<" stands, to the end of the text.
    ParseOutcome run(int start);
    /// After a good run: the one node, a list of several, or an empty text node. One reference.
    InterfacePtr<XML> takeResult();

private:
    struct ExpatHandlers;

    /// An element whose end has not come yet.
    struct Open {
        XML* element;            ///< Held by the stack of nodes.
        std::size_t firstChild;  ///< On the stack of nodes.
        std::size_t outerScopes; ///< Size of the namespace stack around it.
    };

    void startNamespace(const unsigned short* prefix, const unsigned short* uri);
    void startElement(const unsigned short* name, const unsigned short** attributes);
    void endElement();
    void addText(const unsigned short* units, int count);
    void addComment(const unsigned short* text);
    void addInstruction(const unsigned short* target, const unsigned short* data);
    void startCData();
    void endCData();

    bool feed();
    void addLineEnd();
    XML* flushText();
    ParseOutcome outcomeOf(bool isGood) const;
    XML* pushNamed(int type, NameCache& names, const unsigned short* full);
    void addDeclarations(XML& element);
    void addAttributes(XML& element, const unsigned short** attributes);
    void closeElement(const Open& open);
    void stripTexts(std::size_t first);
    void stopForMemory() noexcept;

    const String& source_;
    ParseFilter filter_;
    XML_ParserStruct* parser_ = nullptr;
    int start_ = 0;
    UnitRange fed_{}; ///< Expat's copy of the text from `start_` on.
    bool isOutOfMemory_ = false;

    PendingText text_; ///< Characters on their way to a text node.
    ShortTexts values_;
    NodeBatches batches_;
    NodeStack nodes_;
    WorkStack<Open> open_;
    NamespaceStack namespaces_;
    std::size_t declaredScopes_ = 0; ///< Size of the stack before the coming element's own.
    NameCache elementNames_;
    NameCache attributeNames_;
    String cdata_ = "CDATA";
};

} // namespace KrCore
