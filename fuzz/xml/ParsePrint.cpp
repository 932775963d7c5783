// Parses text, prints the tree and parses it again. A first byte below 16 chooses what is ignored
// and whether there is a default namespace.

#include "support/FuzzInput.h"

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/values/Error.h>
#include <krcore/xml/XML.h>

using namespace KrCore;

namespace {

InterfacePtr<XML> parse(const String& text, unsigned flags) {
    Error err;
    int pos = 0;
    auto tree = InterfacePtr<XML>::adopt(
        XML::parse(text, pos, err, (flags & 1) != 0, (flags & 2) != 0, (flags & 4) != 0));
    Fuzz::require(pos >= 0 && pos <= text.length(), "the position lies in the text");
    Fuzz::require(!tree == (err.getCode() != 0), "either a tree or a failure");
    if (!tree) Fuzz::require(err.getError()->getCode() != 0, "a failure has a code");
    return tree;
}

void checkPrinted(const XML& tree) {
    const String printed = tree.toXMLString(-1);
    const InterfacePtr<XML> again = parse(printed, 0);
    Fuzz::require(bool(again), "what was printed can be parsed");
    again->normalize();
    const auto joined = InterfacePtr<XML>::adopt(tree.copy_r(true));
    joined->normalize();
    Fuzz::require(again->isEqual(*joined, false), "and says the same");
    Fuzz::require(bool(parse(tree.toXMLString(2), 0)), "so can the lines");
}

void checkCopy(XML& tree) {
    const auto copy = InterfacePtr<XML>::adopt(tree.copy_r(false));
    Fuzz::require(copy->isEqual(tree, true), "a copy is exact");
    const auto nodes = InterfacePtr<XML>::adopt(copy->descendants_r());
    for (int index = 0; index < nodes->length(); index += 3) {
        XML* node = nodes->getChild(index);
        if (node->getParent()) node->getParent()->remove(*node);
    }
    copy->put("a/b/@c", "1");
    copy->normalize();
    static_cast<void>(copy->toString(0));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::startLibrary();
    const unsigned flags =
        size > 0 && data[0] < 16 && data[0] != '\t' && data[0] != '\n' ? data[0] : 0;
    const String text = flags != 0 ? Fuzz::asText(data + 1, size - 1) : Fuzz::asText(data, size);

    XML::setDefaultNamespaceURI((flags & 8) != 0 ? "urn:default" : "");
    const InterfacePtr<XML> tree = parse(text, flags);
    XML::setDefaultNamespaceURI("");
    if (!tree) return 0;
    if (tree->getType() == XML::Element) checkPrinted(*tree);
    checkCopy(*tree);
    return 0;
}
