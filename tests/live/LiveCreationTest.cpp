#include "live/LiveFixture.h"
#include "support/FailingAllocator.h"

using namespace KrCore;
using namespace KrCore::Testing;

// How objects are made: by factories, from literals, as clones.

namespace {

InterfacePtr<LiveObject> valueOf(const LiveObject& object, const char* name) {
    Variant value;
    EXPECT_EQ(object.get(name, value, nullptr), 0) << name;
    return InterfacePtr<LiveObject>(value.getLiveObject());
}

std::string textOf(const LiveObject& object, const char* name) {
    Variant value;
    EXPECT_EQ(object.get(name, value, nullptr), 0) << name;
    return narrow(value.getString());
}

class LiveFactoriesTest : public testing::Test {
protected:
    ~LiveFactoriesTest() override {
        for (const char* name : {"One", "Two"})
            LiveObject::removeFactory(name);
    }
    InterfacePtr<LiveObject> factory(const char* name, int classID, int flags) {
        auto object = makePlain(name);
        object->setObjectID(classID);
        EXPECT_EQ(LiveObject::addFactory(*object, flags), 0);
        return object;
    }
};

TEST_F(LiveFactoriesTest, AreFoundByNameAndIDForTheirFlags) {
    const auto one = factory("One", 5, 0x6);
    EXPECT_EQ(LiveObject::getFactory("One", 0x2), one.get());
    EXPECT_EQ(LiveObject::getFactory(5, 0x4), one.get());
    EXPECT_EQ(LiveObject::getFactory("One", 0x1), nullptr);
    EXPECT_EQ(LiveObject::getFactory("one", 0x2), nullptr);
    EXPECT_EQ(LiveObject::getFactory(0, 0x2), nullptr);
    LiveObject* made = one.get();
    EXPECT_EQ(LiveObject::create(&made, "Two", 0x2), 21);
    EXPECT_EQ(made, nullptr);
    ASSERT_EQ(LiveObject::create(&made, 5, 0x2), 0);
    EXPECT_EQ(narrow(made->getClassName()), "One");
    made->release();
}

TEST_F(LiveFactoriesTest, AreReplacedAndRemoved) {
    const auto first = factory("One", 5, 1);
    const auto second = factory("One", 6, 1);
    EXPECT_EQ(first->getRefCount(), 1);
    EXPECT_EQ(LiveObject::getFactory("One", 1), second.get());
    EXPECT_EQ(LiveObject::getFactory(5, 1), nullptr);
    const auto other = factory("Two", 6, 1); // takes the class ID over
    EXPECT_EQ(LiveObject::getFactory(6, 1), other.get());
    EXPECT_EQ(LiveObject::getFactory("One", 1), second.get());
    EXPECT_EQ(LiveObject::removeFactory("One"), 0);
    EXPECT_EQ(LiveObject::removeFactory("One"), 2);
    EXPECT_EQ(second->getRefCount(), 1);
    EXPECT_EQ(LiveObject::getFactory(6, 1), other.get());
    factory("Two", 0, 1); // stays: the registry gives it back at shut-down
}

class LiveLiteralTest : public LiveFactoriesTest {
protected:
    InterfacePtr<LiveObject> read(const String& text, int flags = 0) {
        LiveObject* result = nullptr;
        code = LiveObject::parseNew(text, result, err, flags);
        return InterfacePtr<LiveObject>::adopt(result);
    }

    int code = -1;
    Error err;
};

TEST_F(LiveLiteralTest, ReadsValuesOfAllKinds) {
    const auto object =
        read(" {a: 1, 'b c' : \"x,}\\n\" ,\n $d_1:[1, [ ], 'z',{e : -0x10}],t: true,"
             "f:false , n:null, i : Infinity, o: 12abc, w: 1e3 } ");
    ASSERT_TRUE(object) << told(err);
    EXPECT_EQ(narrow(object->getClassName()), "Object");
    const struct {
        const char *name, *text;
    } rows[] = {{"a", "1"},    {"b c", "x,}\n"},  {"t", "true"}, {"f", "false"},
                {"n", "null"}, {"i", "Infinity"}, {"o", "NaN"},  {"w", "1000"}};
    for (const auto& row : rows)
        EXPECT_EQ(textOf(*object, row.name), row.text);
    Variant list;
    ASSERT_EQ(object->get("$d_1", list, nullptr), 0);
    ASSERT_TRUE(list.getArray());
    EXPECT_EQ(list.getArray()->length(), 4U);
    EXPECT_EQ(list.getArray()->get(1)->getArray()->length(), 0U);
    EXPECT_EQ(textOf(*list.getArray()->get(3)->getLiveObject(), "e"), "-16");
    EXPECT_TRUE(read("{ }"));
}

TEST_F(LiveLiteralTest, MakesObjectsOfNamedClasses) {
    factory("One", 0, 0x2)->put("preset", 7, 0, nullptr);
    const auto object = read("One { inner: One{x:1}, plain: {}, word: One }", 0x2);
    ASSERT_TRUE(object) << told(err);
    EXPECT_EQ(textOf(*object, "preset"), "7");
    EXPECT_EQ(narrow(valueOf(*object, "inner")->getClassName()), "One");
    EXPECT_EQ(narrow(valueOf(*object, "plain")->getClassName()), "Object");
    EXPECT_EQ(textOf(*object, "word"), "NaN");
    EXPECT_TRUE(read("Object{}"));
    EXPECT_FALSE(read("{a: One{}}", 0x1));
    EXPECT_EQ(code, 21);
}

TEST_F(LiveLiteralTest, ReportsWhatIsWrongAndInWhichLine) {
    const struct {
        const char* text;
        int code, line;
    } rows[] = {{"", 25, 1},
                {"[1]", 25, 1},
                {"{a 1}", 25, 1},
                {"{a:1,\n}", 25, 2},
                {"{a:\n\n[1 }", 25, 3},
                {"{a:[1,]}", 25, 1},
                {"{a:'open", 25, 1},
                {"{a:1", 25, 1},
                {"{\n:1}", 25, 2},
                {"{a:1}\nrest", 8, 2},
                {"{a:\nNone{}}", 21, 2},
                {"{a:,b:1}", 25, 1},
                {"{a:1\n2,b:}", 25, 2},
                {"{a:\"x\ny\"}", 25, 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        err.erase();
        EXPECT_FALSE(read(row.text));
        EXPECT_EQ(code, row.code);
        EXPECT_EQ(err.getCode(), row.code);
        EXPECT_EQ(err.getError()->getLine(), row.line);
    }
    EXPECT_FALSE(read("{a:}"));
    EXPECT_EQ(err.getError()->getNext(), nullptr); // the first failure stays
}

TEST_F(LiveLiteralTest, RefusesMoreThanItsDepth) {
    for (const char* opening : {"[", "{a:", "Object {a:"}) {
        String deep = "{a:\n", fits = "{a:", closing;
        for (int i = 0; i < 100000; ++i) {
            deep += opening;
            if (i >= 500) continue;
            fits += opening;
            closing += *opening == '[' ? "]" : "}";
        }
        err.erase();
        EXPECT_FALSE(read(deep));
        EXPECT_EQ(code, 27);
        EXPECT_EQ(err.getError()->getLine(), 2);
        EXPECT_TRUE(read(fits + "1" + closing + "}"));
    }
}

TEST_F(LiveLiteralTest, WritesIntoAnObjectThatIsThere) {
    const auto shape = make<Shape>();
    EXPECT_EQ(shape->parse("{width: 3, other: 4}", 0), 0);
    EXPECT_EQ(shape->width, 3);
    EXPECT_EQ(textOf(*shape, "other"), "4");
    EXPECT_EQ(shape->parse("Shape{width: 4}", 0), 0);
    EXPECT_EQ(shape->parse("Circle{width: 5}", 0), 26);
    EXPECT_EQ(shape->parse("{width: 6,\narea: 7}", err, 0), 46);
    EXPECT_EQ(told(err), "46: area is read only");
    EXPECT_EQ(err.getError()->getLine(), 2);
    EXPECT_EQ(shape->width, 6); // what came before the failure stays
}

class LiveCloneTest : public testing::Test {
protected:
    InterfacePtr<LiveObject> clone(const LiveObject& object, bool deep, int expectedCode = 0) {
        LiveObject* copy = nullptr;
        EXPECT_EQ(object.clone(&copy, deep), expectedCode);
        return InterfacePtr<LiveObject>::adopt(copy);
    }
};

TEST_F(LiveCloneTest, CopiesPropertiesAndSharesComponents) {
    const auto thing = makePlain();
    const auto part = makePlain("Part");
    const auto gadget = make<Gadget>();
    thing->addComponent(*gadget);
    thing->defineIDForName("fixed", 3, 1);
    thing->put(3, "first", nullptr);
    thing->put("part", Variant(*part), 0, nullptr);
    const auto copy = clone(*thing, false);
    EXPECT_TRUE(*copy == *thing);
    EXPECT_EQ(textOf(*copy, "fixed"), "first");
    EXPECT_EQ(copy->put(3, "again", nullptr), 46); // its one write is over, too
    EXPECT_EQ(valueOf(*copy, "part").get(), part.get());
    EXPECT_EQ(idsOf(*copy, allProperties), idsOf(*thing, allProperties));
    copy->put("part", 1, 0, nullptr);
    EXPECT_EQ(valueOf(*thing, "part").get(), part.get());
    thing->invalidate();
    EXPECT_FALSE(clone(*thing, false, 45));
}

TEST_F(LiveCloneTest, CopiesRingsAsRings) {
    const auto thing = makePlain(), part = makePlain("Part");
    thing->put("left", Variant(*part), 0, nullptr);
    thing->put("right", Variant(*part), 0, nullptr);
    part->put("back", Variant(*thing), 0, nullptr);
    const auto copy = clone(*thing, true);
    const auto left = valueOf(*copy, "left");
    EXPECT_NE(left.get(), part.get());
    EXPECT_EQ(valueOf(*copy, "right").get(), left.get());
    EXPECT_EQ(valueOf(*left, "back").get(), copy.get());
    for (LiveObject* object : {thing.get(), copy.get()})
        object->deleteDynamicProperties(true);
}

TEST_F(LiveCloneTest, RefusesMoreThanItsDepthAndLeavesNothingBehind) {
    for (int length : {500, 100000}) {
        const auto ring = makePlain();
        auto first = makePlain();
        first->put("ring", Variant(*ring), 0, nullptr);
        ring->put("ring", Variant(*first), 0, nullptr);
        for (int i = 0; i < length; ++i) {
            const auto next = makePlain();
            next->put("ring", Variant(*ring), 0, nullptr);
            next->put("next", Variant(*first), 0, nullptr);
            first = next;
        }
        const auto copy = clone(*first, true, length > 512 ? 27 : 0);
        EXPECT_EQ(!copy, length > 512);
        if (copy) valueOf(*copy, "ring")->deleteDynamicProperties(true);
        ring->deleteDynamicProperties(true);
    }
}

TEST(LiveObjectMemory, GivesEverythingBackWhenMemoryRunsOut) {
    const String className = "Shape";
    const auto scenario = [&className] {
        const auto shape = make<Shape>(), target = make<Shape>();
        const auto gadget = make<Gadget>();
        Ear ear(Ear::answering([](LiveMessage& message) {
            *message.getData() = 2;
            message.getPropertyID() = 7;
            return true;
        }));
        shape->addListener(ear, MessageID::GetID);
        shape->addListener(ear, MessageID::Get);
        shape->addComponent(*gadget);
        shape->setAutostore(target.get(), Shape::Width);
        String name;
        Variant value;
        Error err;
        for (int i = 0; i < 20; ++i) {
            name.print("property%ld", i);
            shape->defineIDForName(name, 1000 + i, 2);
            shape->put(name, name, 0, &err);
        }
        shape->get("kept", value, &err);
        shape->call("nothing", &err);
        SimpleArray ids;
        shape->enumerate(ids, -1);
        shape->toString(name);
        shape->put("next", Variant(*target), 0, &err);
        LiveObject* copy = nullptr;
        if (shape->clone(&copy, true) == 0) copy->release();
        LiveObject* read = nullptr;
        if (LiveObject::parseNew("{a:[1,'x'],b:{}}", read, err, 0) == 0) read->release();
        shape->deleteDynamicProperties(true);
        struct Removal {
            ~Removal() { LiveObject::removeFactory(name); }
            const String& name;
        } removal{className};
        for (LiveObject* factory : {target.get(), shape.get()}) {
            factory->setObjectID(9);
            LiveObject::addFactory(*factory, 1);
        }
    };
    scenario(); // the registry and the class's manager stay
    forEachFailure(scenario);
    forEachFailure(scenario, Shortage::Lasting);
}

} // namespace
