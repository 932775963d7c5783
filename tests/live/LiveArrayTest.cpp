#include "live/LiveFixture.h"
#include "support/FailingAllocator.h"

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

std::string textOf(const LiveArray& array) {
    String text;
    EXPECT_EQ(array.toString(text), 0);
    return narrow(text);
}

/// One whose elements cannot all be read.
class Torn : public LiveArray {
public:
    Torn() : LiveArray("Torn", 0, false) {}
    int getLength(unsigned& length) const override { return length = 3, lengthCode; }
    int getByIndex(unsigned index, Variant& result, Error* err) const override {
        return index == 1 ? 19 : LiveArray::getByIndex(index, result, err);
    }
    int lengthCode = 0;
};

class LiveArrayTest : public testing::Test {
protected:
    InterfacePtr<LiveArray> array = make<LiveArray>("Array", 9, false);
    unsigned length = 99;
    Variant value;
    Error err;
};

TEST_F(LiveArrayTest, KeepsItsElements) {
    EXPECT_EQ(array->putByIndex(2, "two", nullptr), 0);
    EXPECT_EQ(array->putByIndex(0, 0, nullptr), 0);
    EXPECT_EQ(array->getLength(length), 0);
    EXPECT_EQ(length, 3U);
    EXPECT_EQ(array->getByIndex(2, value, nullptr), 0);
    EXPECT_EQ(narrow(value.getString()), "two");
    EXPECT_EQ(array->getByIndex(0xFFFFFFFF, value, &err), 0);
    EXPECT_FALSE(value.isDefined());
    EXPECT_EQ(array->putByIndex(0xFFFFFFFF, 1, nullptr), 0);
    EXPECT_EQ(array->get("length", value, nullptr), 0);
    EXPECT_EQ(value.getInteger(), 3);
    EXPECT_EQ(array->deleteByIndex(0), 41); // left to components and listeners
    EXPECT_EQ(array->putLength(0xFFFFFFFF), 0);
    EXPECT_EQ(array->put("length", 1, -1, nullptr), 0);
    auto* elements = static_cast<Array*>(array->getAs(TypeTag::ArrayElements));
    ASSERT_NE(elements, nullptr);
    EXPECT_EQ(elements->length(), 1U);
    EXPECT_EQ(array->getAs(TypeTag::Array), array.get());
    EXPECT_EQ(array->getAs(TypeTag::Collection), static_cast<LiveCollection*>(array.get()));
    EXPECT_EQ(array->reset(), 0);
    EXPECT_EQ(elements->length(), 0U);
}

TEST_F(LiveArrayTest, RefusesChangesButNotResetsWhenItIsReadOnly) {
    Array elements;
    elements += 5;
    const auto fixed = make<LiveArray>(elements, "Array", 9, true);
    EXPECT_EQ(fixed->putByIndex(1, 6, &err), 46);
    EXPECT_EQ(err.getCode(), 46);
    EXPECT_EQ(fixed->putLength(0), 46);
    EXPECT_EQ(textOf(*fixed), "5");
    EXPECT_EQ(fixed->reset(), 0);
    EXPECT_EQ(textOf(*fixed), "");
}

TEST_F(LiveArrayTest, RecordsReadsOnItsLength) {
    array->putByIndex(0, 1, nullptr);
    array->invalidate();
    EXPECT_EQ(array->getByIndex(0, value, &err), 45);
    EXPECT_EQ(err.getCode(), 45);
    EXPECT_EQ(array->putByIndex(0, 1, nullptr), 45);
    EXPECT_EQ(array->putLength(0), 45);
    EXPECT_EQ(array->reset(), 45);
    EXPECT_EQ(array->getLength(length), 0); // the elements are still there
    EXPECT_EQ(length, 1U);
    EXPECT_EQ(array->get(9, value, nullptr), 45);
    EXPECT_EQ(textOf(*array), "[Invalid Object]");
}

TEST_F(LiveArrayTest, WritesItselfToItsAutostoreTargetAfterEveryChange) {
    const auto target = makePlain();
    target->defineIDForName("stored", 5, 2);
    array->setAutostore(target.get(), 5);
    const std::function<int()> changes[] = {[&] { return array->putByIndex(0, 1, nullptr); },
                                            [&] { return array->putLength(3); },
                                            [&] { return array->reset(); }};
    for (const auto& change : changes) {
        target->put(5, "untouched", nullptr);
        EXPECT_EQ(change(), 0);
        target->get(5, value, nullptr);
        EXPECT_EQ(value.getLiveObject(), array.get());
    }
    target->deleteDynamicProperties(true);
}

TEST_F(LiveArrayTest, ListsItsElementsAsText) {
    array->putByIndex(0, *array, nullptr);
    array->putByIndex(2, "b", nullptr);
    Variant null;
    null.setNull();
    array->putByIndex(3, null, nullptr);
    EXPECT_EQ(textOf(*array), "[object Array],,b,null");
    array->putLength(0);
    array->putLength(1000);
    EXPECT_EQ(textOf(*array), std::string(999, ','));
    array->putLength(1001);
    EXPECT_EQ(textOf(*array), "[too many elements]");
    const auto torn = make<Torn>();
    torn->putByIndex(0, "whole", nullptr);
    EXPECT_EQ(textOf(*torn), "whole,[error]");
    torn->lengthCode = 19;
    EXPECT_EQ(textOf(*torn), "[error]");
}

TEST_F(LiveArrayTest, LetsItsMethodToStringAnswer) {
    const auto gadget = make<Gadget>();
    InfoType kind = InfoType::Method;
    gadget->onName = [&](const String& name, int& id, InfoType& found) {
        if (!(name == "toString")) return 2;
        id = 3;
        found = kind;
        return 0;
    };
    gadget->onType = [&](int) { return kind; };
    gadget->onCall = [&](int, const Array&, Variant& result) {
        result = "mine: " + Variant(*array).getString(); // asks for the text it is part of
        return 0;
    };
    array->addComponent(*gadget);
    EXPECT_EQ(textOf(*array), "mine: [object Array]");
    kind = InfoType::CallableReadWrite;
    EXPECT_EQ(textOf(*array), "");
}

TEST_F(LiveArrayTest, BoundsTheTextsOfNestedArrays) {
    const auto other = make<LiveArray>("Other", 0, false);
    array->putByIndex(0, *other, nullptr);
    other->putByIndex(0, *array, nullptr);
    EXPECT_EQ(textOf(*array), "[object Array]");
    EXPECT_EQ(textOf(*other), "[object Other]");
    other->putLength(0);

    // Each level holds the one before a hundred times: 10^12 elements in all.
    auto level = make<LiveArray>("Level", 0, false);
    for (int depth = 0; depth < 6; ++depth) {
        auto next = make<LiveArray>("Level", 0, false);
        for (unsigned i = 0; i < 100; ++i)
            next->putByIndex(i, *level, nullptr);
        level = next;
    }
    const std::string text = textOf(*level);
    EXPECT_LT(text.size(), 10000000U);
    EXPECT_NE(text.find("[too many elements]"), std::string::npos);
}

TEST_F(LiveArrayTest, EndsDeepChainsWithoutDeepCalls) {
    auto chain = make<LiveArray>("Array", 9, false);
    for (int depth = 0; depth < 200000; ++depth) {
        auto outer = make<LiveArray>("Array", 9, false);
        outer->putByIndex(0, *chain, nullptr);
        chain = outer;
    }
    String text;
    chain->toString(text);
    EXPECT_EQ(narrow(text), "[too many elements]");
}

TEST_F(LiveArrayTest, EndsAReplacedElementWhenTheArrayIsWhole) {
    struct Ending : LiveObject {
        explicit Ending(LiveArray& array) : LiveObject("Ending", false), array_(array) {}
        ~Ending() override { array_.putLength(0); }
        LiveArray& array_;
    };
    array->putByIndex(0, *make<Ending>(*array), nullptr);
    EXPECT_EQ(array->putByIndex(0, "new", nullptr), 0);
    array->getLength(length);
    EXPECT_EQ(length, 0U);
}

TEST_F(LiveArrayTest, IsClonedWithItsElements) {
    array->putByIndex(0, "shared", nullptr);
    LiveObject* made = nullptr;
    ASSERT_EQ(array->clone(&made, true), 0);
    const auto copy = InterfacePtr<LiveObject>::adopt(made);
    array->putByIndex(0, "changed", nullptr);
    const auto* elements = static_cast<const Array*>(copy->getAs(TypeTag::ArrayElements));
    ASSERT_NE(elements, nullptr);
    String text;
    elements->toString(text);
    EXPECT_EQ(narrow(text), "shared");
}

TEST_F(LiveArrayTest, GivesEverythingBackWhenMemoryRunsOut) {
    textOf(*array); // what the thread keeps for texts of arrays
    forEachFailure([] {
        const auto list = make<LiveArray>("List", 9, false);
        list->putByIndex(0, "text that takes memory", nullptr);
        list->putByIndex(5000, Array(3), nullptr);
        list->putLength(3);
        String text;
        list->toString(text);
        LiveObject* copy = nullptr;
        list->clone(&copy, false);
        if (copy) copy->release();
        list->putLength(0);
    });
}

} // namespace
