#include "XMLSupport.h"

#include "support/FailingAllocator.h"

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(XMLChange, AddAppends) {
    const Node doc = adopt(new XML("r"));
    EXPECT_EQ(doc->add("a")->getParent(), doc.get());
    doc->add("b", "t<");
    doc->add("@x", "1");
    doc->add("@y");
    doc->add("@x", "2");
    doc->add("u::n", "v");
    doc->add("c", *parse("<><i/>t</>"), false);
    doc->add("d", *parse("<d>own</d>"), false);
    doc->add("@z", *parse("<q>text</q>"), false);
    EXPECT_EQ(print(*doc), "<r x=\"2\" y=\"\" z=\"text\"><a/><b>t&lt;</b><u:n xmlns:u=\"u\">v</u:n>"
                           "<c><i/>t</c><d>own</d></r>");
    for (const char* name : {"", "*", "@", "@*", "::", "u::*"})
        EXPECT_EQ(doc->add(name), nullptr) << name;
    EXPECT_EQ(adopt(new XML(XML::Text))->add("a"), nullptr);
    const Node list = adopt(new XML(XML::List));
    EXPECT_EQ(list->add("a")->getParent(), nullptr);
    EXPECT_NE(list->add("@x"), nullptr);
    list->add("b");
    EXPECT_EQ(list->add("@x"), nullptr);
    EXPECT_EQ(print(*list), "<a x=\"\"/><b/>");
}

TEST(XMLChange, PutMakesTheOnlyOne) {
    struct Row {
        const char* name;
        const char* value;
        const char* result; // null: nothing was put
    };
    const char* const before = "<r a='1'><x>1</x><y/><x>2</x></r>";
    const Row rows[] = {
        {"x", "n", "<r a=\"1\"><x>n</x><y/></r>"},
        {"z", "n", "<r a=\"1\"><x>1</x><y/><x>2</x><z>n</z></r>"},
        {"@a", "2", "<r a=\"2\"><x>1</x><y/><x>2</x></r>"},
        {"y/k/@m", "2", "<r a=\"1\"><x>1</x><y><k m=\"2\"/></y><x>2</x></r>"},
        {"x/t", "", "<r a=\"1\"><x>1<t></t></x><y/><x>2</x></r>"},
        {"a/b::c", "2", "<r a=\"1\"><x>1</x><y/><x>2</x><b:c xmlns:b=\"a/b\">2</b:c></r>"},
        {"/x", "2", nullptr},
        {"x//y", "2", nullptr},
        {"x/", "2", nullptr},
        {"@a/x", "2", nullptr},
        {"", "2", nullptr}};
    for (const Row& row : rows) {
        const Node doc = parse(before);
        EXPECT_EQ(doc->put(row.name, row.value) != nullptr, row.result != nullptr) << row.name;
        EXPECT_EQ(print(*doc), row.result ? row.result : print(*parse(before))) << row.name;
    }
    const Node doc = parse("<r><x>1</x><y/><x>2</x></r>");
    doc->put("x", *doc->getChild(2), false);
    EXPECT_EQ(print(*doc), "<r><x>2</x><y/></r>");
    doc->put("y", *doc->getChild(0), true);
    EXPECT_EQ(print(*doc), "<r><x>2</x><y><x>2</x></y></r>");
    EXPECT_EQ(doc->getChild(1)->put("x", *doc, false), nullptr) << "it would hold itself";
    EXPECT_EQ(print(*doc), "<r><x>2</x><y><x>2</x></y></r>");
}

TEST(XMLChange, InsertMovesOrCopies) {
    const Node doc = parse("<r><a/><b/><c/></r>");
    const Node other = parse("<o><d/>t<!--c--></o>");
    EXPECT_TRUE(doc->insert(*other->getChild(0), 1, false));
    EXPECT_TRUE(doc->insert(*other->getChild(0), -5, true));
    EXPECT_EQ(print(*doc), "<r>t<a/><d/><b/><c/></r>");
    EXPECT_EQ(print(*other), "<o>t<!--c--></o>");
    EXPECT_TRUE(doc->insert(*doc->getChild(4), 0, false));
    EXPECT_TRUE(doc->insert(*doc->getChild(1), XML::atEnd, false));
    EXPECT_EQ(print(*doc), "<r><c/><a/><d/><b/>t</r>");
    EXPECT_TRUE(doc->insert(*adopt(doc->get_r("*", 0)), 0, false)) << "all of its own children";
    EXPECT_TRUE(doc->insert(*adopt(other->get_r("*", 0)), 1, false));
    EXPECT_EQ(print(*doc), "<r><c/>t<!--c--><a/><d/><b/>t</r>");
    EXPECT_EQ(print(*other), "<o></o>");
    for (int index = 0; index < doc->length(); ++index)
        EXPECT_EQ(doc->getChild(index)->getParent(), doc.get());

    const Node target = parse("<t x='1' xmlns:p='u'/>");
    const Node source = parse("<s x='2' y='3' xmlns:p='v' xmlns:q='w'>z</s>");
    EXPECT_TRUE(target->insert(*adopt(source->get_r("@*", 0)), 9, false));
    EXPECT_TRUE(target->insert(*adopt(source->namespaces_r()), 9, false));
    EXPECT_EQ(print(*target), "<t x=\"2\" y=\"3\" xmlns:p=\"v\" xmlns:q=\"w\"/>");
    EXPECT_EQ(adopt(source->get_r("@*", 0))->length(), 0);
    EXPECT_FALSE(target->insertChild(*adopt(new XML(XML::Attribute, "n")), 0, false));
    EXPECT_FALSE(target->insert(*adopt(new XML(99)), 0, false));
    EXPECT_FALSE(adopt(new XML(XML::Comment))->insert(*target, 0, false));
}

TEST(XMLChange, InsertGivesTheIndexAskedFor) {
    const struct {
        int child;
        int index;
        const char* result;
    } rows[] = {{0, 1, "b|a|c"}, {0, 2, "b|c|a"}, {0, 9, "b|c|a"}, {1, 1, "a|b|c"},
                {2, 0, "c|a|b"}, {2, 1, "a|c|b"}, {0, -1, "a|b|c"}};
    for (const auto& row : rows) {
        const Node one = parse("<r><a/><b/><c/></r>");
        EXPECT_TRUE(one->insert(*one->getChild(row.child), row.index, false));
        const Node list = parse("<r><a/><b/><c/></r>");
        const Node moved = adopt(new XML(XML::List));
        moved->insert(*list->getChild(row.child), 0, false);
        EXPECT_TRUE(list->insert(*moved, row.index, false));
        for (const Node& doc : {one, list}) {
            std::string order;
            for (int index = 0; index < doc->length(); ++index)
                order += (index > 0 ? "|" : "") + toUtf8(doc->getChild(index)->getName());
            EXPECT_EQ(order, row.result) << row.child << " to " << row.index;
        }
    }
}

TEST(XMLChange, RefusesCycles) {
    const Node doc = parse("<r><a><b/></a></r>");
    XML& b = *doc->getChild(0)->getChild(0);
    const Node list = adopt(b.ancestors_r(true));
    EXPECT_FALSE(b.insert(b, 0, false));
    EXPECT_FALSE(b.insert(*doc, 0, false));
    EXPECT_FALSE(b.insert(*list, 0, false));
    EXPECT_FALSE(list->insert(*list, 0, false));
    EXPECT_EQ(b.add("c", *doc, false), nullptr);
    EXPECT_EQ(print(*doc), "<r><a><b/></a></r>");
    EXPECT_TRUE(b.insert(*doc, 0, true));
    EXPECT_EQ(print(*doc), "<r><a><b><r><a><b/></a></r></b></a></r>");
    EXPECT_TRUE(list->insert(*list, 1, true));
    EXPECT_EQ(list->length(), 6) << "a list takes the members of a list";
}

TEST(XMLChange, Removes) {
    const Node doc = parse("<r x='1' y='2'><a/>t<b/><a/></r>");
    const Node held(doc->getChild(0));
    EXPECT_EQ(doc->remove("a"), 2);
    EXPECT_EQ(held->getParent(), nullptr);
    EXPECT_EQ(doc->remove("@x"), 1);
    EXPECT_EQ(print(*doc), "<r y=\"2\">t<b/></r>");
    EXPECT_FALSE(doc->remove(*held));
    EXPECT_TRUE(doc->remove(*doc->getChild(1)));
    EXPECT_EQ(doc->remove(-1, 1), 0);
    EXPECT_EQ(doc->remove(String()), 1);
    EXPECT_EQ(print(*doc), "<r y=\"2\"></r>");
    const Node many = parse("<r><a/><b/><c/><d/></r>");
    const Node all = adopt(many->get_r("*", 0));
    EXPECT_EQ(many->remove(1, 2), 2);
    EXPECT_EQ(many->remove(1, 2147483647), 1);
    EXPECT_EQ(print(*many), "<r><a/></r>");
    EXPECT_TRUE(all->remove(*all->getChild(0)));
    EXPECT_EQ(print(*many), "<r><a/></r>") << "a list only refers to its members";
}

TEST(XMLChange, NormalizesTexts) {
    const Node doc = parse("<r>a<!--c-->b<e>x<!--d--><![CDATA[y]]></e>c</r>", {.comments = true});
    doc->add("f")->insert(*adopt(new XML(XML::Text)), 0, false);
    const Node texts = adopt(doc->get_r("*", 0));
    texts->normalize();
    EXPECT_EQ(doc->length(), 5) << "a list does not join texts of a tree";
    doc->normalize();
    EXPECT_EQ(doc->length(), 4);
    EXPECT_EQ(texts->getChild(1)->getParent(), nullptr);
    EXPECT_EQ(print(*doc), "<r>ab<e>xy</e>c<f></f></r>");
    EXPECT_EQ(doc->getChild(1)->length(), 1);

    const Node kept = adopt(new XML(XML::Text, "z"));
    doc->getChild(3)->insert(*adopt(new XML(XML::Text)), 0, false);
    doc->getChild(3)->insert(*kept, 1, false);
    doc->normalize();
    EXPECT_EQ(doc->getChild(3)->getChild(0), kept.get()) << "the first one that is not empty stays";
}

TEST(XMLChange, ManyChildrenTakeLinearTime) {
    constexpr int many = 100000;
    const Node doc = adopt(new XML("r"));
    for (int index = 0; index < many; ++index)
        doc->add("c");
    const Node all = adopt(doc->get_r("c", 0));
    EXPECT_EQ(adopt(all->nextSiblings_r())->length(), many - 1);
    const Node other = adopt(new XML("o"));
    EXPECT_TRUE(other->insert(*all, 0, false));
    EXPECT_EQ(doc->length(), 0);
    EXPECT_EQ(other->remove("*"), many);
}

TEST(XMLChange, NothingIsLostWithoutMemory) {
    const Node doc = parse("<r><a>1</a><b x='1'/></r>");
    const Node other = parse("<o><c/><d/></o>");
    forEachFailure([&] {
        const Node copy = adopt(doc->copy_r(false));
        const Node from = adopt(other->copy_r(false));
        try {
            copy->insert(*adopt(from->get_r("*", 0)), 1, false);
            copy->put("b", *copy->getChild(0), false);
        } catch (const OutOfMemory&) {
            EXPECT_EQ(copy->length() + from->length(), 4);
            throw;
        }
    });
}

} // namespace
