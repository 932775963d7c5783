#include "live/LiveFixture.h"

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

constexpr int library = RequestFlag::Library;

class LiveObjectTest : public testing::Test {
protected:
    /// The code of a look-up, with the ID and kind it gave in `id` and `kind`.
    int find(const LiveObject& object, const char* name, int flags = library) {
        return object.getIDForName(name, id, kind, flags);
    }

    InterfacePtr<LiveObject> thing = makePlain();
    int id = -1;
    InfoType kind = InfoType::Hidden;
    Variant value;
    Error err;
};

TEST_F(LiveObjectTest, FailsWithEverythingOnceItsThingHasDied) {
    ASSERT_EQ(thing->put("known", 1, 0, nullptr), 0);
    ASSERT_EQ(find(*thing, "known"), 0);
    const int known = id;
    thing->invalidate();
    String text = "before";
    value = 3;
    const std::function<int()> uses[] = {
        [&] { return find(*thing, "known"); },
        [&] { return thing->get(known, value, &err); },
        [&] { return thing->call(known, Array(), value, nullptr); },
        [&] { return thing->put(known, 2, nullptr); },
        [&] { return thing->put("known", 2, 0, nullptr); },
        [&] { return thing->getNameForID(known, text, library); },
        [&] { return thing->deleteID(known); },
        [&] { return thing->deleteDynamicProperties(true); },
        [&] { return thing->defineIDForName("new", 1, 2); },
        [&] { return thing->reset(); },
        [&] { return thing->toString(text); },
        [&] { return thing->valueOf(value); },
        [&] { return thing->invoke("known", nullptr); },
    };
    for (const auto& use : uses)
        EXPECT_EQ(use(), 45) << &use - uses;
    EXPECT_TRUE(text.isEmpty());
    EXPECT_FALSE(value.isDefined());
    EXPECT_EQ(id, 0);
    EXPECT_EQ(kind, InfoType::Unknown);
    EXPECT_EQ(err.getCode(), 45);
    EXPECT_TRUE(idsOf(*thing, -1, 45).empty());
    EXPECT_EQ(thing->getType(known), InfoType::Unknown);
    EXPECT_FALSE(*thing == *thing);
    thing->revalidate();
    EXPECT_EQ(thing->get(known, value, nullptr), 0);
    EXPECT_EQ(value.getInteger(), 1);
}

TEST_F(LiveObjectTest, CreatesPropertiesByNameWhenItIsDynamic) {
    EXPECT_EQ(thing->put("color", "red", -1, &err), 2);
    EXPECT_EQ(told(err), "2: color is undefined");
    EXPECT_EQ(thing->put("color", "red", 5, nullptr), 0); // read/write, whatever the flags say
    EXPECT_EQ(find(*thing, "color"), 0);
    EXPECT_EQ(kind, InfoType::ReadWrite);
    EXPECT_GE(id, 0x1F800000);
    EXPECT_EQ(thing->get("color", value, nullptr), 0);
    EXPECT_EQ(narrow(value.getString()), "red");
    const auto fixed = makePlain("Fixed", false);
    EXPECT_EQ(fixed->put("color", "red", 0, nullptr), 55);
    EXPECT_EQ(find(*fixed, "color"), 2);
}

TEST_F(LiveObjectTest, RefusesToDefineANameTwice) {
    EXPECT_EQ(thing->defineIDForName("color", 1, 2), 0);
    EXPECT_EQ(thing->defineIDForName("color", 2, 2), 40);
    EXPECT_EQ(thing->defineIDForName("COLOR", 2, 2 | RequestFlag::IgnoreCase), 40);
    EXPECT_EQ(thing->defineIDForName("Color", 2, 2), 0);
    // Without case the spelling used last is found.
    EXPECT_EQ(find(*thing, "color"), 0);
    EXPECT_EQ(find(*thing, "COLOR", RequestFlag::IgnoreCase), 0);
    EXPECT_EQ(id, 1);
    EXPECT_EQ(find(*thing, "COLOR"), 2);
}

TEST_F(LiveObjectTest, DeletesWhatIsNotPermanent) {
    ASSERT_EQ(thing->defineIDForName("stays", 1, 2 | PropertyFlag::Permanent), 0);
    ASSERT_EQ(thing->defineIDForName("goes", 2, 2), 0);
    EXPECT_EQ(thing->deleteID(1), 2);
    EXPECT_EQ(thing->deleteDynamicProperties(false), 0);
    EXPECT_EQ(idsOf(*thing, allProperties), (std::vector{1}));
    EXPECT_EQ(thing->deleteDynamicProperties(true), 0);
    EXPECT_EQ(thing->getType(1), InfoType::Unknown);
}

TEST_F(LiveObjectTest, KeepsManyPropertiesApart) {
    constexpr int count = 2000;
    String name;
    for (int i = 0; i < count; ++i) {
        name.print("property%ld", i);
        ASSERT_EQ(thing->defineIDForName(name, i % (count / 2), 2), 0); // two names for each ID
        ASSERT_EQ(thing->findProperty(i % (count / 2))->put(Variant(i)), 0);
    }
    for (int i = count - 1; i >= 0; i -= 7) {
        name.print("property%ld", i);
        ASSERT_EQ(find(*thing, narrow(name).c_str()), 0);
        EXPECT_EQ(id, i % (count / 2));
        // Of two records with one ID the one used last answers.
        EXPECT_EQ(thing->get(id, value, nullptr), 0);
        EXPECT_EQ(value.getInteger(), i);
    }
    for (int i = 0; i < count / 2; i += 2)
        EXPECT_EQ(thing->deleteID(i), 0);
    EXPECT_EQ(find(*thing, "property0"), 0); // its namesake went
    EXPECT_EQ(find(*thing, "property1000"), 2);
    EXPECT_EQ(idsOf(*thing, RequestFlag::ReadWrite).size(), std::size_t(count / 2));
}

TEST_F(LiveObjectTest, AllowsOneWriteToReadOnlyProperties) {
    const struct {
        int kind, firstPut, secondPut, byName;
    } rows[] = {{1, 0, 46, 46}, {2, 0, 0, 0},   {5, 0, 2, 55},
                {6, 0, 0, 0},   {7, 0, 46, 46}, {0, 0, 0, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.kind);
        String name;
        name.print("kind%ld", row.kind);
        ASSERT_EQ(thing->defineIDForName(name, row.kind, row.kind), 0);
        EXPECT_EQ(thing->put(row.kind, 1, nullptr), row.firstPut);
        EXPECT_EQ(thing->put(row.kind, 2, nullptr), row.secondPut);
        EXPECT_EQ(thing->put(name, 3, -1, nullptr), row.byName);
        EXPECT_EQ(thing->get(row.kind, value, nullptr), row.kind == 5 ? 2 : 0);
        EXPECT_EQ(thing->get(name, value, nullptr), row.kind == 5 ? 55 : 0);
        EXPECT_EQ(thing->call(row.kind), 24); // also of callable kinds, which nobody implements
        EXPECT_EQ(thing->call(name, nullptr), 24);
    }
}

TEST_F(LiveObjectTest, AsksTheHostClassForWhatItsTableDeclares) {
    const auto shape = make<Shape>();
    EXPECT_EQ(shape->put("width", 6, -1, nullptr), 0);
    EXPECT_EQ(shape->get("area", value, nullptr), 0);
    EXPECT_EQ(value.getInteger(), 36);
    EXPECT_EQ(shape->put("area", 1, -1, &err), 46);
    EXPECT_EQ(told(err), "46: area is read only");
    Array args;
    args += 4;
    EXPECT_EQ(shape->call("resize", args, value, nullptr), 0);
    EXPECT_EQ(value.getInteger(), 10);
    err.erase();
    EXPECT_EQ(shape->call("width", args, value, &err), 24);
    EXPECT_EQ(told(err), "24: width is not a function");
    EXPECT_FALSE(value.isDefined());
    err.erase();
    EXPECT_EQ(shape->put("width", -1, -1, &err), 41);
    EXPECT_EQ(err.getCode(), 41);
    EXPECT_EQ(find(*shape, "WIDTH"), 2);
    EXPECT_EQ(find(*shape, "WIDTH", RequestFlag::IgnoreCase), 0);
    // A dynamic property comes before the class's.
    EXPECT_EQ(shape->defineIDForName("width", 77, 2), 0);
    EXPECT_EQ(find(*shape, "width"), 0);
    EXPECT_EQ(id, 77);
}

TEST_F(LiveObjectTest, ListsPropertiesInTheirOrder) {
    const auto shape = make<Shape>();
    constexpr int readOnly = PropertyFlag::ListAsReadOnly, hidden = PropertyFlag::Hidden;
    ASSERT_EQ(shape->defineIDForName("c", 23, 2), 0);
    ASSERT_EQ(shape->defineIDForName("a", 21, 5), 0); // the kind does not matter, bit 4 does
    ASSERT_EQ(shape->defineIDForName("b", 22, 2 | readOnly), 0);
    ASSERT_EQ(shape->defineIDForName("h", 24, 2 | hidden), 0);
    ASSERT_EQ(shape->defineIDForName("w", Shape::Width, 2), 0);
    ASSERT_EQ(find(*shape, "a"), 0); // use changes nothing
    EXPECT_EQ(idsOf(*shape, RequestFlag::ReadWrite | library),
              (std::vector<int>{23, 21, Shape::Width, Shape::Scale}));
    EXPECT_EQ(idsOf(*shape, RequestFlag::ReadOnly | library),
              (std::vector<int>{22, Shape::Area, Shape::Scale}));
    EXPECT_EQ(idsOf(*shape, RequestFlag::ReadWrite | RequestFlag::WithHidden | library),
              (std::vector<int>{23, 21, 24, Shape::Width, Shape::Scale, Shape::Secret}));
    EXPECT_EQ(idsOf(*shape, RequestFlag::Methods | library),
              (std::vector<int>{100, Shape::Resize, Shape::Scale, Shape::Plus}));
}

TEST_F(LiveObjectTest, KnowsWhetherItHasOperators) {
    ASSERT_EQ(thing->defineIDForName("plus", 0x1FF10105, 5), 0);
    EXPECT_EQ(thing->deleteID(0x1FF10105), 0);
    EXPECT_TRUE(thing->hasOperators()); // until a reset
    EXPECT_EQ(thing->reset(), 0);
    EXPECT_FALSE(thing->hasOperators());
    EXPECT_TRUE(make<Shape>()->hasOperators());
}

TEST_F(LiveObjectTest, TurnsIntoTextAndValueByItsMethods) {
    String text;
    EXPECT_EQ(thing->toString(text), 0);
    EXPECT_EQ(narrow(text), "[object Thing]");
    EXPECT_EQ(makePlain("")->toString(text), 0);
    EXPECT_EQ(narrow(text), "[object Object]");
    value = 1;
    EXPECT_EQ(thing->valueOf(value), 0);
    EXPECT_FALSE(value.isDefined());

    const auto gadget = make<Gadget>();
    gadget->onName = [](const String& name, int& method, InfoType& methodKind) {
        methodKind = InfoType::Method;
        return method = name == "toString" ? 1 : 2, 0;
    };
    gadget->onType = [](int) { return InfoType::Method; };
    gadget->onCall = [](int method, const Array&, Variant& result) {
        return result = method * 11, 0;
    };
    thing->addComponent(*gadget);
    EXPECT_EQ(thing->toString(text), 0);
    EXPECT_EQ(narrow(text), "11");
    EXPECT_EQ(thing->valueOf(value), 0);
    EXPECT_EQ(value.getInteger(), 22);
    gadget->onCall = [this](int, const Array&, Variant& result) { return result = *thing, 0; };
    EXPECT_EQ(thing->toString(text), 0);
    EXPECT_EQ(narrow(text), "[object Thing]");
}

TEST_F(LiveObjectTest, AdvancesItsStampWithEveryDefinition) {
    const auto gadget = make<Gadget>();
    const std::function<void()> changes[] = {
        [&] { thing->put("a", 1, 0, nullptr); },
        [&] { find(*thing, "a"), thing->deleteID(id); },
        [&] { thing->addComponent(*gadget); },
        [&] { thing->removeComponent(*gadget); },
        [&] { thing->deleteDynamicProperties(true); },
        [&] { thing->propertyDefsChanged(); },
        [&] { thing->invalidate(); },
        [&] { thing->revalidate(); },
    };
    for (const auto& change : changes) {
        const unsigned before = thing->getDefinitionStamp();
        change();
        EXPECT_NE(thing->getDefinitionStamp(), before) << &change - changes;
    }
    thing->put("a", 1, 0, nullptr);
    const unsigned before = thing->getDefinitionStamp();
    thing->put("a", 2, 0, nullptr);
    thing->get("a", value, nullptr);
    find(*thing, "b");
    EXPECT_EQ(thing->getDefinitionStamp(), before);
}

TEST_F(LiveObjectTest, TakesANameThatIsTheTextOfTheResult) {
    ASSERT_EQ(thing->put("self", "inner", 0, nullptr), 0);
    value = "self";
    EXPECT_EQ(thing->get(value.getString(), value, nullptr), 0);
    EXPECT_EQ(narrow(value.getString()), "inner");
    EXPECT_EQ(thing->get(value.getString(), value, &err), 2);
    EXPECT_EQ(told(err), "2: inner is undefined");
    EXPECT_FALSE(value.isDefined());
}

TEST_F(LiveObjectTest, StoresItselfIntoItsTargetAfterEveryWrite) {
    const auto target = makePlain("Target");
    ASSERT_EQ(target->defineIDForName("part", 5, 2), 0);
    thing->setAutostore(target.get(), 5);
    EXPECT_EQ(thing->put("a", 1, 0, nullptr), 0);
    EXPECT_EQ(target->get(5, value, nullptr), 0);
    EXPECT_EQ(value.getLiveObject(), thing.get());
    value.erase();
    ASSERT_EQ(target->deleteID(5), 0);
    EXPECT_EQ(thing->put("a", 2, 0, nullptr), 2); // the target's failure is the result
    thing->setAutostore(nullptr, 0);
    EXPECT_FALSE(target->isListening(MessageID::Deleted));
    EXPECT_EQ(thing->put("a", 2, 0, nullptr), 0);
}

TEST_F(LiveObjectTest, ForgetsAnAutostoreTargetThatDies) {
    auto target = makePlain("Target");
    target->defineIDForName("part", 5, 2);
    thing->setAutostore(target.get(), 5);
    auto other = makePlain();
    other->setAutostore(target.get(), 5);
    other.reset();    // dies first
    int written = -1; // by a listener that hears of the death before the object does
    Ear ear([&](Message&) { return written = thing->put("a", 1, 0, &err), false; });
    target->addListener(ear, MessageID::Deleting);
    target.reset();
    EXPECT_EQ(written, 0);
    EXPECT_EQ(thing->put("a", 1, 0, nullptr), 0);
    EXPECT_TRUE(*thing == *makePlain());
}

TEST_F(LiveObjectTest, EndsRingsOfAutostoreTargets) {
    const auto other = makePlain();
    for (LiveObject* object : {thing.get(), other.get()})
        ASSERT_EQ(object->defineIDForName("part", 5, 2), 0);
    thing->setAutostore(other.get(), 5);
    other->setAutostore(thing.get(), 5);
    EXPECT_EQ(thing->put("a", 1, 0, nullptr), 0);
    thing->setAutostore(thing.get(), 5);
    EXPECT_EQ(thing->put("a", 2, 0, nullptr), 0);
    thing->deleteDynamicProperties(true);
    other->deleteDynamicProperties(true);
}

TEST_F(LiveObjectTest, DiesInTurnWithALongChainOfObjects) {
    InterfacePtr<LiveObject> first;
    for (int i = 0; i < 100000; ++i) {
        auto next = make<Shape>();
        next->put("next", Variant(first.get()), 0, nullptr);
        first = next;
    }
    EXPECT_EQ(Shape::living, 100000);
    first.reset();
    EXPECT_EQ(Shape::living, 0);
}

} // namespace
