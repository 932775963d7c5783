// Trees against what the tokenizer itself reports of the same text: both are written down in one
// notation, in which "<" begins an element, "[" a CDATA section and names are "URI|name".

#include "XMLSupport.h"

#include <expat.h>

#include <initializer_list>
#include <iterator>
#include <map>
#include <random>
#include <utility>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

std::string utf8(const XML_Char* units, std::size_t count) {
    return toUtf8(fromUtf16(std::u16string(units, units + count)));
}
std::string utf8(const XML_Char* units) {
    return utf8(units, std::char_traits<XML_Char>::length(units));
}

/// The notation in the making.
class Notation {
public:
    void open(const std::string& name, const std::map<std::string, std::string>& attributes) {
        endText();
        result += "<" + name;
        for (const auto& [attribute, value] : attributes)
            result += " " + attribute + "=" + value;
        result += "\n";
    }
    void close() {
        endText();
        result += ">\n";
    }
    void other(const std::string& text) {
        endText();
        result += text + "\n";
    }
    void addText(const std::string& text) { text_ += text; }
    void endText(const char* kind = "T") {
        if (!text_.empty()) result += kind + std::exchange(text_, "") + "\n";
    }

    std::string result;

private:
    std::string text_;
};

std::string reportedName(const XML_Char* units) {
    std::string name = utf8(units);
    if (const std::size_t end = name.rfind('\n'); end != std::string::npos) name[end] = '|';
    return name;
}

Notation& get(void* data) { return *static_cast<Notation*>(data); }

std::string asExpatReports(const std::string& text) {
    constexpr XML_Char encoding[] = {'U', 'T', 'F', '-', '8', 0};
    Notation notation;
    XML_Parser parser = XML_ParserCreateNS(encoding, '\n');
    XML_SetUserData(parser, &notation);
    XML_SetElementHandler(
        parser,
        [](void* data, const XML_Char* name, const XML_Char** pairs) {
            std::map<std::string, std::string> attributes;
            for (; *pairs; pairs += 2)
                attributes[reportedName(pairs[0])] = utf8(pairs[1]);
            get(data).open(reportedName(name), attributes);
        },
        [](void* data, const XML_Char*) { get(data).close(); });
    XML_SetCharacterDataHandler(parser, [](void* data, const XML_Char* units, int count) {
        get(data).addText(utf8(units, std::size_t(count)));
    });
    XML_SetCdataSectionHandler(
        parser, [](void* data) { get(data).endText(); },
        [](void* data) { get(data).endText("["); });
    XML_SetCommentHandler(
        parser, [](void* data, const XML_Char* comment) { get(data).other("!" + utf8(comment)); });
    XML_SetProcessingInstructionHandler(
        parser, [](void* data, const XML_Char* target, const XML_Char* value) {
            get(data).other("?" + utf8(target) + " " + utf8(value));
        });
    EXPECT_EQ(XML_Parse(parser, text.data(), int(text.size()), 1), XML_STATUS_OK) << text;
    XML_ParserFree(parser);
    return notation.result;
}

std::string nameOf(const XML& node) {
    const XML* ns = node.getNamespace();
    const std::string name = toUtf8(node.getName());
    return ns && !ns->getValue().isEmpty() ? toUtf8(ns->getValue()) + "|" + name : name;
}

void write(Notation& notation, const XML& node) {
    const std::string value = toUtf8(node.getValue());
    const std::string name = toUtf8(node.getName());
    switch (node.getType()) {
    case XML::Text:
        notation.addText(value);
        return notation.endText(name == "CDATA" ? "[" : "T");
    case XML::Comment:
        return notation.other("!" + value);
    case XML::ProcessingInstruction:
        return notation.other("?" + name + " " + value);
    default:
        break;
    }
    std::map<std::string, std::string> attributes;
    const Node list = adopt(node.get_r("@*", 0));
    for (int index = 0; index < list->length(); ++index)
        attributes[nameOf(*list->getChild(index))] = toUtf8(list->getChild(index)->getValue());
    if (node.getType() == XML::Element) notation.open(nameOf(node), attributes);
    for (int index = 0; index < node.length(); ++index)
        write(notation, *node.getChild(index));
    if (node.getType() == XML::Element) notation.close();
}

std::string asTreeHolds(const XML& tree) {
    Notation notation;
    write(notation, tree);
    return notation.result;
}

/// Well-formed documents of everything that may stand in one, declarations above all.
class RandomDocument {
public:
    explicit RandomDocument(unsigned seed) : random_(seed) {}

    std::string make() {
        std::string text =
            pick({"", "<?xml version='1.0'?>", "<?xml version='1.1' standalone='yes'?>",
                  "<!DOCTYPE a [<!ENTITY e 'v&#10;w'><!ENTITY f '<b>x</b>y'>"
                  "<!ATTLIST p:b d CDATA 'default'>]>"});
        // Only the declaration above makes these known.
        hasEntities_ = text.find("ENTITY") != std::string::npos;
        scope_ = {{"p", "u"}, {"q", "v"}};
        return text + pick({"", "<!--c-->", "\n<?pi data?>"}) +
               element(4, " xmlns:p='u' xmlns:q='v'") + pick({"", "<!--end-->", "\n"});
    }

private:
    int below(int bound) { return static_cast<int>(random_() % unsigned(bound)); }
    std::string pick(std::initializer_list<const char*> texts) {
        return texts.begin()[below(static_cast<int>(texts.size()))];
    }

    std::string element(int depth, std::string declarations) {
        const auto outer = scope_;
        if (declarations.empty() && below(3) == 0) {
            for (const char* prefix : {"p", "q", "r"}) {
                if (below(2) == 0) continue;
                scope_[prefix] = pick({"u", "v", "w/x"});
                declarations += " xmlns:" + std::string(prefix) + "='" + scope_[prefix] + "'";
            }
            declarations += pick({"", "", " xmlns='d'", " xmlns='u'", " xmlns=''"});
        }
        const std::string name = prefix() + pick({"a", "b", "\xC3\xA9-1"});
        std::string text = "<" + name + declarations;
        if (below(2) == 0) text += " x='" + pick({"1", "&lt;\t", "&#13;&#10;", "a&amp;b"}) + "'";
        if (below(3) == 0) text += " p:y = \"" + pick({"", " ' ", ">]]>"}) + "\"";
        if (below(4) == 0) return scope_ = outer, text + "/>";
        text += ">";
        for (int count = depth > 0 ? below(5) : 0; count > 0; --count)
            text += below(2) == 0 ? element(depth - 1, "") : content();
        scope_ = outer;
        return text + "</" + name + ">";
    }

    std::string prefix() {
        const int index = below(static_cast<int>(scope_.size()) + 1);
        return index == 0 ? "" : std::next(scope_.begin(), index - 1)->first + ":";
    }

    std::string content() {
        const std::string entity = hasEntities_ ? pick({"&e;", "&f;"}) : "&amp;";
        return below(4) == 0 ? entity
                             : pick({"text", "\n", " &lt;\xF0\x9F\x98\x80&#x41;", "<![CDATA[<&]]>",
                                     "<!-- -->", "<?t?>", "<?t d ?>", "]] >"});
    }

    std::mt19937 random_;
    std::map<std::string, std::string> scope_;
    bool hasEntities_ = false;
};

TEST(XMLDifferential, TreesHoldWhatTheTokenizerReports) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        const std::string text = RandomDocument(seed).make();
        const std::string expected = asExpatReports(text);
        const Node tree = parse(text);
        ASSERT_EQ(asTreeHolds(*tree), expected) << text;
        // Line ends of attributes and declared defaults stand in the printed text as well.
        const std::string printed = print(*tree);
        ASSERT_EQ(asTreeHolds(*parse(printed)), expected) << text << "\nprinted as\n" << printed;
        ASSERT_EQ(print(*parse(printed)), printed);
    }
}

} // namespace
