#include "xml/Escaping.h"
#include "xml/TreeBuilder.h"

#include <krcore/containers/Array.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>

#include <algorithm>

namespace KrCore {

namespace {

/// Which records of an error tell of a place in a text, and how.
constexpr unsigned short parserPlace = 1;
constexpr unsigned short listPlace = 2;

constexpr int closingLength = 3; // "</>"
constexpr int wrapperEnd = 9;    // "</parent>"

/// `<>...</>` around what is to become a list.
struct ListForm {
    int opening; ///< Index of its "<".
    int closing; ///< Index of the closing "<"; -1 when it is missing.
};

InterfacePtr<XML> makeText(const String& text, int pos, bool strip) {
    String value = text.substr(pos);
    if (strip) value.strip();
    return XMLTree::make(XML::Text, String(), value);
}

bool isListForm(const String& text, int pos) {
    return pos < text.length() - 4 && text.begin()[pos + 1] == '>';
}

/// The list as an element, in the default namespace.
String wrap(const String& text, const ListForm& list, const XML* defaultNamespace) {
    UnitBuffer wrapper;
    wrapper.append("<parent");
    if (defaultNamespace) {
        wrapper.append(" xmlns=\"");
        appendEscaped(wrapper, defaultNamespace->getValue(), EscapeKind::Attribute);
        wrapper.append('"');
    }
    wrapper.append('>');
    wrapper.append(UnitRange{text.begin() + list.opening + 2, text.begin() + list.closing});
    wrapper.append("</parent>");
    return wrapper.toString();
}

void pushFailure(Error& error, const String& text, const ParseOutcome& outcome) {
    error.push(outcome.code);
    // Nothing is recorded on top of a shortage, and a message would need memory.
    if (outcome.code == ErrorCode::OutOfMemory) return;
    error.setMoreInfo(text, outcome.line, outcome.position, outcome.column, parserPlace);
    Array arguments;
    arguments += Variant(outcome.line);
    String message("$$$/CT/Marlscript/Errors/XML=XML error in line %1");
    message.localize(&arguments);
    error.push(ErrorCode::General, message, nullptr, false);
}

/// One run over `text` from `pos`; null after a failure, which is recorded. Moves `pos` to where
/// the run ended.
InterfacePtr<XML> build(const String& text, int& pos, Error& error, ParseFilter filter) {
    XMLTreeBuilder builder(text, filter);
    const ParseOutcome outcome = builder.run(pos);
    pos = outcome.position;
    if (outcome.code == 0) return builder.takeResult();
    pushFailure(error, text, outcome);
    return {};
}

/// Declares the default namespace on the elements of a list, which the wrapper declared it for.
void declareDefault(XML& list, const XML& defaultNamespace) {
    const InterfacePtr<XML> ns =
        XMLTree::make(XML::Namespace, String(), defaultNamespace.getValue());
    for (XML* member : XMLTree::children(list)) {
        const TISimpleArray<XML>& declarations = XMLTree::declarations(*member);
        const bool isDeclared =
            std::any_of(declarations.begin(), declarations.end(), [&](const XML* declaration) {
                return declaration->getName().isEmpty() ||
                       declaration->getValue() == ns->getValue();
            });
        if (member->getType() == XML::Element && !isDeclared)
            XMLTree::append(XMLTree::declarations(*member), ns.get());
    }
}

InterfacePtr<XML> parseList(const String& text, int& pos, Error& error, ParseFilter filter) {
    const ListForm list{pos, text.find("</>", pos + 2)};
    if (list.closing < 0) {
        error.push(ErrorCode::XMLMismatchedTag);
        error.setMoreInfo(text, 0, pos, pos, listPlace);
        return {};
    }
    const InterfacePtr<XML> defaultNamespace(XMLTree::namespaceOfNewNodes());
    const String wrapped = wrap(text, list, defaultNamespace.get());
    int wrappedPos = 0;
    const InterfacePtr<XML> wrapper = build(wrapped, wrappedPos, error, filter);
    if (!wrapper) {
        // The two texts begin differently, but to the end of the list it is the same way.
        const int fromEnd = wrapped.length() - wrapperEnd - wrappedPos;
        pos = std::clamp(list.closing - fromEnd, list.opening, list.closing);
        return {};
    }
    InterfacePtr<XML> members = InterfacePtr<XML>::adopt(wrapper->get_r("*", XML::Children));
    wrapper->remove(String());
    pos = list.closing + closingLength;
    if (defaultNamespace) declareDefault(*members, *defaultNamespace);
    return members;
}

} // namespace

XML* XML::parse(const String& text, int& pos, Error& error, bool ignoreWhitespace,
                bool ignoreComments, bool ignoreProcessingInstructions) {
    const ParseFilter filter{ignoreWhitespace, ignoreComments, ignoreProcessingInstructions};
    const int start = std::clamp(pos, 0, text.length());
    const int markup = text.find('<', start);
    if (markup < 0) {
        pos = text.length();
        return makeText(text, start, ignoreWhitespace).detach();
    }
    pos = markup;
    return (isListForm(text, pos) ? parseList(text, pos, error, filter)
                                  : build(text, pos, error, filter))
        .detach();
}

XML* XML::parse(const String& text, int& pos, Error& error, const XML*, bool ignoreWhitespace,
                bool ignoreComments, bool ignoreProcessingInstructions) {
    return parse(text, pos, error, ignoreWhitespace, ignoreComments, ignoreProcessingInstructions);
}

} // namespace KrCore
