#include "XMLSupport.h"

#include "support/FailingAllocator.h"

#include <krcore/foundation/ErrorCode.h>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

struct Failure {
    int code, line, offset, column, pos;
    bool operator==(const Failure&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Failure& failure) {
        return out << failure.code << " line " << failure.line << " offset " << failure.offset
                   << " column " << failure.column << " pos " << failure.pos;
    }
};

/// What went wrong with a text; the record on top tells its line.
Failure failureOf(const String& text, int pos = 0) {
    Error error;
    EXPECT_EQ(XML::parse(text, pos, error, false, false, false), nullptr);
    const ErrorInfo* cause = error.getError();
    if (!cause) return {};
    if (cause->getNext()) {
        cause = cause->getNext();
        EXPECT_EQ(error.getCode(), ErrorCode::General);
        EXPECT_EQ(error.getError()->getLine(), -1);
        EXPECT_EQ(toUtf8(error.getError()->getText()),
                  "XML error in line " + std::to_string(cause->getLine()));
    }
    return {cause->getCode(), cause->getLine(), cause->getOffset(), cause->getColumn(), pos};
}

TEST(XMLParse, BuildsTheTree) {
    const std::string long64K(65536, 'n');
    const std::string same[] = {"<a/>",
                                "<a b=\"1\">x<!--c--><?p d?>y<b><c/></b></a>",
                                "<a><![CDATA[x]]>y<![CDATA[z]]></a>",
                                "<" + long64K + " " + long64K + "=\"" + long64K + "\"/>",
                                "<p:a p:b=\"1\" xmlns:p=\"u\"/>",
                                "<><a/>t<b/></>",
                                "<></>",
                                "<>only text</>"};
    for (const std::string& text : same)
        EXPECT_EQ(print(*parse(text)),
                  text.front() == '<' && text[1] == '>' ? text.substr(2, text.size() - 5) : text);
    const std::pair<const char*, const char*> rows[] = {
        {"<?xml version='1.0' encoding='nonsense'?><a/>", "<a/>"},
        {"\xEF\xBB\xBF  <a/>", "<a/>"},
        {"<!--c--><a/><?p?>", "<!--c--><a/><?p?>"},
        {"<!DOCTYPE a [<!ENTITY e 'v'><!ATTLIST a d CDATA '7'>]><a>&e;</a>", "<a d=\"7\">v</a>"},
        {"<a>&#x41;&lt;</a>", "<a>A&lt;</a>"},
        {"<a><![CDATA[]]></a>", "<a/>"},
        {"<a><b>lost", "<a><b/></a>"},
        {"<a>", "<a/>"}};
    for (const auto& [text, printed] : rows)
        EXPECT_EQ(print(*parse(text)), printed) << text;
    EXPECT_EQ(parse("<!--c--><a/>")->getType(), XML::List);
    EXPECT_EQ(parse("<></>")->getType(), XML::List);
    EXPECT_EQ(parse("<!--c-->", {.comments = true})->getType(), XML::Text);
}

TEST(XMLParse, TextWithoutMarkupIsAText) {
    EXPECT_EQ(parse(" a & b ")->getValue(), " a & b ");
    EXPECT_EQ(parse(" a\v", {.whitespace = true})->getValue(), "a");
    int pos = 2;
    Error error;
    EXPECT_EQ(adopt(XML::parse("abc", pos, error, nullptr, false, false, false))->getValue(), "c");
    for (int start : {-7, 99}) {
        pos = start;
        adopt(XML::parse("<a/>", pos, error, false, false, false));
        EXPECT_EQ(pos, 4);
        EXPECT_EQ(error.getCode(), 0);
    }
}

TEST(XMLParse, Ignores) {
    struct Row {
        const char* text;
        Ignoring ignoring;
        const char* printed;
    };
    const Row rows[] = {
        {"<a> <b> </b> x <c/> </a>", {.whitespace = true}, "<a><b/>x<c/></a>"},
        {"<a> x </a>", {.whitespace = true}, "<a> x </a>"},
        {"<a> x <!--c--> </a>", {.whitespace = true, .comments = true}, "<a> x </a>"},
        {"<a> <![CDATA[ ]]> </a>", {.whitespace = true}, "<a><![CDATA[ ]]></a>"},
        {"<a> x <![CDATA[ y ]]></a>", {.whitespace = true}, "<a>x<![CDATA[ y ]]></a>"},
        {"<a><?p?><!--c--></a>", {.instructions = true}, "<a><!--c--></a>"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(print(*parse(row.text, row.ignoring)), row.printed) << row.text;
    EXPECT_EQ(parse("<a>x<!--c-->y</a>", {.comments = true})->length(), 2);
}

TEST(XMLParse, KeepsWrittenLineEnds) {
    const std::pair<const char*, const char*> rows[] = {
        {"<a>x\r\ny</a>", "x\r\ny"},
        {"<a>\r</a>", "\r"},
        {"<a>\n\r\n</a>", "\n\r\n"},
        {"<a>&#10;</a>", "\n"},
        {"<a>\r&#10;</a>", "\r\n"},
        {"<a><![CDATA[\r\n]]></a>", "\r\n"},
        {"<>x\r\ny</>", "x\r\ny"},
        {"  <a>\r\r\n</a>", "\r\r\n"},
        {"<!DOCTYPE a [<!ENTITY e '&#10;'>]><a>&e;\r\n</a>", "\n\r\n"}};
    for (const auto& [text, value] : rows)
        EXPECT_EQ(parse(text)->toString(-1), value) << text;
    EXPECT_EQ(parse("<a b='x\r\ny'/>")->getText("@b"), "x y") << "attributes are normalised";
}

TEST(XMLParse, MapsErrors) {
    struct Row {
        const char* text;
        Failure failure;
    };
    const Row rows[] = {
        {"<a><b></a>", {ErrorCode::XMLMismatchedTag, 1, 8, 8, 8}},
        {"x\n<a>\n </b>", {ErrorCode::XMLMismatchedTag, 2, 9, 3, 9}},
        {"<a/><b/>", {ErrorCode::XMLJunkAfterDocument, 1, 4, 4, 4}},
        {"<a b='1' b='2'/>", {ErrorCode::XMLDuplicateAttribute, 1, 9, 9, 9}},
        {"<a>&#0;</a>", {ErrorCode::XMLEntityError, 1, 3, 3, 3}},
        {"<a>&e;</a>", {ErrorCode::XMLEntityError, 1, 3, 3, 3}},
        {"<a <", {ErrorCode::XMLInvalidToken, 1, 3, 3, 3}},
        {"<a", {ErrorCode::XMLUnclosedToken, 1, 0, 0, 0}},
        {"<a><![CDATA[", {ErrorCode::XMLUnclosedCDATA, 1, 12, 12, 12}},
        {"<p:a/>", {ErrorCode::XMLUnexpectedDoctype, 1, 0, 0, 0}},
        {"<a xmlns:p=''/>", {ErrorCode::CannotExecute, 1, 0, 0, 0}},
        {"<a xmlns:xml='u'/>", {ErrorCode::SyntaxError, 1, 0, 0, 0}},
        {"<!--c--><?xml version='1.0'?><a/>", {ErrorCode::XMLMisplacedDeclaration, 1, 8, 8, 8}},
        {"<><a></>", {ErrorCode::XMLMismatchedTag, 1, 13, 13, 5}},
        {"z<><a/>", {ErrorCode::XMLMismatchedTag, 0, 1, 1, 1}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(failureOf(row.text), row.failure) << row.text;
    EXPECT_NE(failureOf(String(u"<a>\0</a>", 8)).code, 0);

    Error error(ErrorCode::NotFound, "earlier", false);
    int pos = 0;
    EXPECT_TRUE(adopt(XML::parse("<a/>", pos, error, false, false, false)));
    EXPECT_EQ(error.getCode(), ErrorCode::NotFound);
}

TEST(XMLParse, EntitiesCannotExplode) {
    std::string text = "<!DOCTYPE a [<!ENTITY e0 '0123456789'>";
    for (int level = 1; level < 12; ++level) {
        text += "<!ENTITY e" + std::to_string(level) + " '";
        for (int copy = 0; copy < 10; ++copy)
            text += "&e" + std::to_string(level - 1) + ";";
        text += "'>";
    }
    EXPECT_EQ(failureOf(fromUtf8(text + "]><a>&e11;</a>")).code, ErrorCode::SyntaxError);
}

TEST(XMLParse, DefaultNamespace) {
    const DefaultNamespace inU("u\"&<");
    const Node doc = parse("<a b='1'><c xmlns=''><d/></c></a>");
    EXPECT_EQ(doc->getNamespace()->getValue(), "u\"&<");
    EXPECT_EQ(adopt(doc->get_r("@b", 0))->getChild(0)->getNamespace(), nullptr);
    EXPECT_EQ(doc->getChild(0)->getChild(0)->getNamespace(), nullptr);
    const Node list = parse("<><a/>t<b xmlns='v'/><c xmlns:p='u\"&amp;&lt;'/></>");
    EXPECT_EQ(list->getChild(0)->getNamespace()->getValue(), "u\"&<");
    const char* const declared[] = {"u\"&<", "", "v", "u\"&<"};
    for (int index = 0; index < 4; ++index)
        EXPECT_EQ(members(list->getChild(index)->namespaces_r()), declared[index]);
}

TEST(XMLParse, ResolvesPrefixes) {
    const Node doc = parse("<r xmlns:p='u' p:x='1' xml:lang='de' y='2'><p:a xmlns:p='v' "
                           "xmlns:q='u' q:z='1'/><p:b/></r>");
    const auto prefixOf = [](const XML& node, const char* name) {
        const XML* ns = adopt(node.get_r(name, 0))->getChild(0)->getNamespace();
        return ns ? toUtf8(ns->getName() + "=" + ns->getValue()) : std::string();
    };
    EXPECT_EQ(prefixOf(*doc, "@x"), "p=u");
    EXPECT_EQ(prefixOf(*doc, "@lang"), "xml=http://www.w3.org/XML/1998/namespace");
    EXPECT_EQ(prefixOf(*doc, "@y"), "");
    EXPECT_EQ(prefixOf(*doc, "a"), "p=v");
    EXPECT_EQ(prefixOf(*doc->getChild(0), "@z"), "q=u");
    EXPECT_EQ(prefixOf(*doc, "b"), "p=u") << "what a sibling declared is forgotten";
}

TEST(XMLParse, DamagedTextsEndInATreeOrAnError) {
    const std::u16string good =
        u"<a b=\"1\" xmlns:p=\"u\">x&lt;<!--c--><p:d/><![CDATA[y]]><?p q?>\u00E9</a>";
    const auto survives = [](const std::u16string& units) {
        const String text = fromUtf16(units);
        Error error;
        int pos = 0;
        const Node node = adopt(XML::parse(text, pos, error, true, false, true));
        EXPECT_EQ(!node, error.getCode() != 0);
        if (node) {
            adopt(node->copy_r(true))->toXMLString(1);
        } else {
            EXPECT_GE(failureOf(text).offset, 0);
        }
    };
    for (std::size_t index = 0; index < good.size(); ++index) {
        survives(good.substr(0, index));
        for (const char16_t unit : u"\0<>&\"'/!? \n:[a\xD800\xDC00\xFFFE") {
            std::u16string damaged = good;
            damaged[index] = unit;
            survives(damaged);
        }
    }
}

TEST(XMLParse, DepthIsBoundedByMemoryAlone) {
    std::string text;
    for (int level = 0; level < deep; ++level)
        text += "<a>";
    const Node open = parse(text);
    for (int level = 0; level < deep; ++level)
        text += "</a>";
    const Node closed = parse(text);
    EXPECT_TRUE(*open == *closed);
    EXPECT_EQ(closed->toXMLString(-1).length(), 7 * deep - 3);
}

TEST(XMLParse, GivesEverythingBackWithoutMemory) {
    const String text =
        "<!DOCTYPE r [<!ENTITY e 'v'>]><r xmlns:p='u'>&e;<p:a b='1'>text</p:a><!--c--><?p?></r>";
    for (const String& input : {text, String("<><a/>text</>"), String("<a></b>")}) {
        int wholePos = 0;
        Error wholeError;
        const Node whole = adopt(XML::parse(input, wholePos, wholeError, true, false, false));
        const auto parseAgain = [&](int& pos, Error& error) {
            const Node node = adopt(XML::parse(input, pos, error, true, false, false));
            // Never a part of the tree without an error.
            EXPECT_EQ(!node, error.getCode() != 0);
            if (node) {
                EXPECT_EQ(node->length(), whole->length());
            }
        };
        forEachFailure([&] {
            Error error;
            int pos = 0;
            parseAgain(pos, error);
        });
        // A shortage is recorded or thrown, not both.
        forEachFailure(
            [&] {
                Error error;
                int pos = 0;
                try {
                    parseAgain(pos, error);
                } catch (const OutOfMemory&) {
                    EXPECT_NE(error.getCode(), ErrorCode::OutOfMemory);
                    throw;
                }
            },
            Shortage::Lasting);
    }
}

} // namespace
