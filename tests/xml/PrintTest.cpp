#include "XMLSupport.h"

#include "support/FailingAllocator.h"

#include <random>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

Node make(int type, const char* name, const char* value) {
    Node node = adopt(new XML(type, String(name)));
    node->setValue(value);
    return node;
}

Node inNamespace(const char* name, const char* prefix, const char* uri) {
    Node node = adopt(new XML(name));
    node->setNamespace(make(XML::Namespace, prefix, uri).get());
    return node;
}

TEST(XMLPrint, EscapesWhatEachPlaceNeeds) {
    const Node doc = adopt(new XML("a"));
    doc->add("@b", "\t\n\r\"&<>'\v and a long run of text without any, \"quoted\"");
    doc->add("c", "\t\n\r\"&<>' and a long run of text without any & <more>");
    doc->add("x<y");
    EXPECT_EQ(print(*doc),
              "<a b=\"&#x9;&#xA;&#xD;&quot;&amp;&lt;>'\v and a long run of text without any, "
              "&quot;quoted&quot;\"><c>\t\n\r\"&amp;&lt;&gt;' and a long run of text without any "
              "&amp; &lt;more&gt;</c><x&lt;y/></a>");
}

TEST(XMLPrint, EveryTypeHasItsForm) {
    struct Row {
        Node node;
        const char* markup;
        const char* text;
    };
    const Row rows[] = {
        {make(XML::Text, "", "a<b"), "a&lt;b", "a<b"},
        {make(XML::Attribute, "n", "a<\""), "a&lt;&quot;", "a<\""},
        {make(XML::Comment, "", "a<b"), "<!--a<b-->", ""},
        {make(XML::ProcessingInstruction, "p", ""), "<?p?>", ""},
        {make(XML::ProcessingInstruction, "p", "a<b"), "<?p a<b?>", ""},
        {make(XML::Namespace, "p", "u&v"), "u&v", "u&v"},
        {make(99, "p", "u&v"), "u&v", "u&v"},
        {parse("<a><![CDATA[x<y]]></a>"), "<a><![CDATA[x<y]]></a>", "x<y"},
        {parse("<a>1<!--c-->2</a>"), "<a>1<!--c-->2</a>", "12"},
        {parse("<a>1<b/></a>"), "<a>1<b/></a>", "<a>1<b/></a>"},
        {parse("<><a>1</a></>"), "<a>1</a>", "1"},
        {parse("<>1<!--c-->2</>"), "1<!--c-->2", "12"},
        {parse("<><a/><b/></>"), "<a/><b/>", "<a/><b/>"},
        {parse("<></>"), "", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(print(*row.node), row.markup);
        EXPECT_EQ(row.node->toString(-1), row.text) << row.markup;
    }
}

TEST(XMLPrint, EmptiedElementHasTwoTags) {
    const Node doc = parse("<a></a>");
    EXPECT_EQ(print(*doc), "<a/>");
    doc->add("b");
    doc->remove(0, 1);
    EXPECT_EQ(print(*doc), "<a></a>");
    EXPECT_EQ(print(*adopt(doc->copy_r(false))), "<a></a>");
}

TEST(XMLPrint, IndentsLines) {
    struct Row {
        const char* text;
        int indent;
        const char* lines;
    };
    const Row rows[] = {
        {"<a> t </a>", 2, "<a>t</a>"},
        {"<a> <!--c--> </a>", 1, "<a>\n \n <!--c-->\n \n</a>"},
        {"<a><b><c/></b> t <d/></a>", 2, "<a>\n  <b>\n    <c/>\n  </b>\n  t\n  <d/>\n</a>"},
        {"<a><b/></a>", 0, "<a>\n<b/>\n</a>"},
        {"<a> t <b/></a>", -1, "<a> t <b/></a>"},
        {"<><a><b/></a> t <c/></>", 1, "<a>\n <b/>\n</a>\nt\n<c/>"},
        {"<a><![CDATA[ x ]]></a>", 1, "<a><![CDATA[ x ]]></a>"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(print(*parse(row.text), row.indent), row.lines) << row.text;
    EXPECT_THROW(parse("<a><b/></a>")->toXMLString(2147483647), OutOfMemory);
}

TEST(XMLPrint, InventsPrefixes) {
    const std::pair<const char*, const char*> rows[] = {{"http://x.org/ns/books", "books"},
                                                        {"http://x.org/ns/xmlfoo", "a"},
                                                        {"urn:isbn:1", "urn"},
                                                        {"http://x.org/v1.2/", "v1"},
                                                        {"a/XML/", "a"},
                                                        {"1/2", "a"},
                                                        {"ok/xmlns", "a"},
                                                        {"x/b-c", "b-c"}};
    for (const auto& [uri, prefix] : rows) {
        const std::string name = std::string(prefix) + ":e xmlns:" + prefix;
        EXPECT_EQ(print(*inNamespace("e", "*", uri)), "<" + name + "=\"" + uri + "\"/>");
    }
    const Node doc = parse("<r xmlns:p='x/p'/>");
    for (const char* uri : {"1/xml", "2/xml", "1/xml", "x/b-c", "y/b-c", "y/p", "x/p"})
        doc->insert(*inNamespace("e", "*", uri), XML::atEnd, false);
    EXPECT_EQ(print(*doc),
              "<r xmlns:p=\"x/p\"><a:e xmlns:a=\"1/xml\"/><a-1:e xmlns:a-1=\"2/xml\"/>"
              "<a:e xmlns:a=\"1/xml\"/><b-c:e xmlns:b-c=\"x/b-c\"/><b-1:e xmlns:b-1=\"y/b-c\"/>"
              "<p-1:e xmlns:p-1=\"y/p\"/><p:e/></r>");
    EXPECT_EQ(print(*doc->getChild(6)), "<p:e xmlns:p=\"x/p\"/>");
}

TEST(XMLPrint, DeclaresWhatNamesUse) {
    const std::pair<const char*, const char*> same[] = {
        {"<r xmlns=\"d\"><a><b xmlns=\"\"><c/></b></a></r>", "declared and taken back"},
        {"<p:r p:a=\"1\" xmlns:p=\"u\"><p:b xmlns:p=\"v\"><p:c/></p:b><p:d/></p:r>", "hidden"},
        {"<r xml:lang=\"de\"/>", "predefined"},
        {"<p:r xmlns:p=\"u\" xmlns:q=\"u\"/>", ""}};
    for (const auto& [text, what] : same)
        EXPECT_TRUE(parse(print(*parse(text)))->isEqual(*parse(text), true)) << text << what;

    const Node doc = parse("<r xmlns='d' xmlns:p='u'><p:a p:x='1'><b/></p:a></r>");
    EXPECT_EQ(print(*doc->getChild(0)), "<p:a p:x=\"1\" xmlns:p=\"u\"><b xmlns=\"d\"/></p:a>");
    const Node clash = inNamespace("e", "p", "u");
    clash->add("@x");
    const Node ns = make(XML::Namespace, "p", "v");
    clash->add("@x")->setNamespace(ns.get());
    clash->add("@y")->setNamespace(make(XML::Namespace, "", "w").get());
    EXPECT_EQ(print(*clash), "<p:e v:x=\"\" w:y=\"\" xmlns:p=\"u\" xmlns:v=\"v\" xmlns:w=\"w\"/>");
    const Node twice = adopt(new XML("e"));
    twice->insert(*ns, 0, false);
    twice->insert(*make(XML::Namespace, "q", "1"), 0, false);
    twice->insert(*make(XML::Namespace, "q", "2"), 0, false);
    EXPECT_EQ(print(*twice), "<e xmlns:p=\"v\" xmlns:q=\"2\"/>");
}

/// A random tree whose texts and names need everything the printer can do.
Node randomTree(std::mt19937& random, int depth) {
    const auto below = [&](int bound) { return static_cast<int>(random() % unsigned(bound)); };
    const char* const uris[] = {"", "u", "v", "x/y<\"&", "w"};
    const char* const prefixes[] = {"", "p", "q", "*"};
    const char* const texts[] = {"a<b", "]]>", "\r\n", " ", "\xC3\xA9", "x\ry", "&amp;"};
    const auto give = [&](XML& node) {
        if (const int uri = below(5); uri > 0)
            node.setNamespace(make(XML::Namespace, prefixes[below(4)], uris[uri]).get());
    };
    const Node node = adopt(new XML("e"));
    give(*node);
    for (const char* name : {"@a", "@b"}) {
        if (below(2) == 0) give(*node->add(name, fromUtf8(texts[below(7)])));
    }
    if (below(3) == 0)
        node->insert(*make(XML::Namespace, prefixes[1 + below(2)], uris[1 + below(4)]), 0, false);
    for (int count = depth > 0 ? below(4) : 0; count > 0; --count) {
        if (below(2) == 0) {
            node->insert(*randomTree(random, depth - 1), XML::atEnd, false);
        } else {
            const Node text = adopt(new XML(XML::Text, fromUtf8(texts[below(7)])));
            node->insert(*text, XML::atEnd, false);
        }
    }
    return node;
}

TEST(XMLPrint, WhatWasPrintedParsesToTheSame) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        const Node tree = randomTree(random, 4);
        const std::string printed = print(*tree);
        tree->normalize();
        ASSERT_TRUE(parse(printed)->isEqual(*tree, false)) << printed;
    }
}

TEST(XMLPrint, UnprintableContentIsWrittenAsItIs) {
    EXPECT_EQ(print(*make(XML::Comment, "", "a--b-")), "<!--a--b--->");
    const Node cdata = make(XML::Text, "", "");
    cdata->setValue("]]>");
    cdata->setName("CDATA");
    EXPECT_EQ(print(*cdata), "<![CDATA[]]>]]>");
}

TEST(XMLPrint, GivesEverythingBackWithoutMemory) {
    const Node doc = parse("<r xmlns:p='u'><p:a/>text<b c='1'/></r>");
    doc->insert(*inNamespace("e", "*", "x/y"), 0, false);
    forEachFailure([&] {
        doc->toXMLString(2);
        doc->toString(-1);
    });
}

} // namespace
