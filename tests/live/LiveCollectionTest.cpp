#include "live/LiveFixture.h"

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

constexpr int library = RequestFlag::Library;

/// Keeps elements in a vector, and may detach itself while it works.
class Shelf : public Gadget {
public:
    Shelf() { indexable = true; }
    int getLength(const LiveObject&, unsigned& length) const override {
        length = static_cast<unsigned>(elements.size());
        return 0;
    }
    int putLength(LiveObject&, unsigned length) override {
        elements.resize(length);
        return 0;
    }
    int getByIndex(const LiveObject& owner, unsigned index, Variant& result,
                   Error* err) const override {
        if (onRead) onRead();
        if (index >= elements.size()) return Gadget::getByIndex(owner, index, result, err);
        result = elements[index];
        return 0;
    }
    int putByIndex(LiveObject&, unsigned index, const Variant& value, Error*) override {
        if (index >= elements.size()) return 41; // which leaves recording to the object
        elements[index] = value;
        return 0;
    }
    int deleteByIndex(LiveObject&, unsigned index) override {
        if (index >= elements.size()) return 41;
        elements.erase(elements.begin() + index);
        return 0;
    }

    std::vector<Variant> elements;
    std::function<void()> onRead;
};

class LiveCollectionTest : public testing::Test {
protected:
    void listen(int message, std::function<bool(LiveMessage&)> answer) {
        ears.push_back(std::make_unique<Ear>(Ear::answering(std::move(answer))));
        list->addListener(*ears.back(), message);
    }

    InterfacePtr<LiveCollection> list = make<LiveCollection>("Pages", 77, false);
    InterfacePtr<LiveCollection> fixed = make<LiveCollection>("", 0, true);
    std::vector<std::unique_ptr<Ear>> ears;
    unsigned length = 99;
    int id = -1;
    InfoType kind = InfoType::Hidden;
    Variant value;
    String text;
    Error err;
};

TEST_F(LiveCollectionTest, ShowsItsLengthAsAProperty) {
    const struct {
        const char* name;
        int flags, id;
    } cases[] = {{"length", library, 77},
                 {"Length", library, 0},
                 {"LENGTH", RequestFlag::IgnoreCase, 77},
                 {"LENGTH", RequestFlag::IgnoreCase | library, 77}};
    for (const auto& row : cases) {
        EXPECT_EQ(list->getIDForName(row.name, id, kind, row.flags), row.id ? 0 : 2) << row.name;
        EXPECT_EQ(id, row.id);
        EXPECT_EQ(kind, row.id ? InfoType::ReadWrite : InfoType::Unknown);
    }
    list->getNameForID(77, text, RequestFlag::IgnoreCase);
    EXPECT_EQ(narrow(text), "Length");
    list->getNameForID(77, text, RequestFlag::IgnoreCase | library);
    EXPECT_EQ(narrow(text), "length");
    EXPECT_EQ(list->getType(77), InfoType::ReadWrite);
    EXPECT_EQ(list->getType(PropertyID::Constructor), InfoType::Method);
    EXPECT_EQ(idsOf(*list, RequestFlag::ReadWrite), std::vector<int>{77});
    EXPECT_TRUE(idsOf(*list, RequestFlag::ReadOnly).empty());

    const int own = fixed->getLengthID();
    EXPECT_GE(own, 0x1F800000);
    EXPECT_EQ(fixed->getType(own), InfoType::ReadOnly);
    EXPECT_EQ(idsOf(*fixed, allProperties), std::vector<int>{own});
    EXPECT_TRUE(idsOf(*fixed, RequestFlag::ReadWrite).empty());
    EXPECT_EQ(narrow(fixed->getClassName()), "Collection");
    EXPECT_EQ(Variant(*list).getLiveCollection(), list.get());
    InterfacePtr<LiveCollection> counted;
    EXPECT_TRUE(Variant(*list).getAsLiveCollection(counted));
    EXPECT_EQ(counted, list.get());
    EXPECT_FALSE(Variant(*makePlain()).getAsLiveCollection(counted));
    EXPECT_FALSE(counted);
}

TEST_F(LiveCollectionTest, HasNoElementsWhenNobodyKeepsThem) {
    EXPECT_EQ(list->getLength(length), 0);
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(list->putLength(5), 0);
    value = "before";
    EXPECT_EQ(list->getByIndex(3, value, &err), 41);
    EXPECT_FALSE(value.isDefined());
    EXPECT_EQ(told(err), "41: [3l] is out of range");
    EXPECT_EQ(list->putByIndex(3, 1, nullptr), 41);
    EXPECT_EQ(list->deleteByIndex(3), 41);
    EXPECT_EQ(list->get("length", value, nullptr), 0);
    EXPECT_EQ(value.getInteger(), 0);
}

TEST_F(LiveCollectionTest, RefusesChangesWhenItIsReadOnlyOrInvalid) {
    const auto shelf = make<Shelf>();
    shelf->elements = {1};
    for (const auto* object : {fixed.get(), list.get()})
        const_cast<LiveCollection*>(object)->addComponent(*shelf);
    list->invalidate();
    const struct {
        LiveCollection& object;
        int code;
    } cases[] = {{*fixed, 46}, {*list, 45}};
    for (const auto& row : cases) {
        Error recorded;
        EXPECT_EQ(row.object.putLength(0), row.code);
        EXPECT_EQ(row.object.putByIndex(0, 2, &recorded), row.code);
        EXPECT_EQ(recorded.getCode(), row.code);
        EXPECT_EQ(row.object.deleteByIndex(0), row.code);
        EXPECT_EQ(row.object.put(row.object.getLengthID(), 0, nullptr), row.code);
    }
    EXPECT_EQ(fixed->put("color", 1, 0, nullptr), 55);
    EXPECT_EQ(fixed->put("length", 1, 0, nullptr), 46);
    EXPECT_EQ(list->getByIndex(0, value, nullptr), 45);
    EXPECT_EQ(list->getLength(length), 45);
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(list->getIDForName("length", id, kind, library), 45);
    EXPECT_EQ(list->getType(77), InfoType::Unknown);
    ASSERT_EQ(shelf->elements.size(), 1U);
    EXPECT_EQ(shelf->elements[0].getInteger(), 1);
}

TEST_F(LiveCollectionTest, LeavesTheWorkToTheIndexableComponentAddedLast) {
    const auto first = make<Shelf>(), last = make<Shelf>();
    const auto plain = make<Gadget>();
    first->elements = {"first"};
    for (LiveComponent* component :
         {static_cast<LiveComponent*>(first.get()), static_cast<LiveComponent*>(last.get()),
          static_cast<LiveComponent*>(plain.get())})
        list->addComponent(*component);
    const auto target = makePlain();
    target->defineIDForName("stored", 5, 2);
    list->setAutostore(target.get(), 5);
    EXPECT_EQ(list->put("length", 3.7, -1, nullptr), 0);
    EXPECT_EQ(last->elements.size(), 3U);
    target->get(5, value, nullptr);
    EXPECT_EQ(value.getLiveObject(), list.get());
    EXPECT_EQ(list->putByIndex(2, "two", nullptr), 0);
    EXPECT_EQ(list->putByIndex(3, "three", &err), 41);
    EXPECT_EQ(told(err), "41: [3l] is out of range");
    EXPECT_EQ(list->deleteByIndex(0), 0);
    EXPECT_EQ(list->getByIndex(1, value, nullptr), 0);
    EXPECT_EQ(narrow(value.getString()), "two");
    EXPECT_EQ(list->put("length", -1, -1, nullptr), 0);
    EXPECT_EQ(list->getLength(length), 0);
    EXPECT_EQ(length, 0U);
    list->removeComponent(*last);
    list->getByIndex(0, value, nullptr);
    EXPECT_EQ(narrow(value.getString()), "first");
    list->setAutostore(nullptr, 0); // the target's property holds this object
}

TEST_F(LiveCollectionTest, LetsAComponentDetachItselfWhileItReads) {
    auto shelf = make<Shelf>();
    shelf->elements = {"kept"};
    list->addComponent(*shelf);
    Shelf* const detaching = shelf.get();
    shelf->onRead = [&] { list->removeComponent(*detaching); };
    shelf.reset();
    EXPECT_EQ(list->getByIndex(0, value, nullptr), 0);
    EXPECT_EQ(narrow(value.getString()), "kept");
    EXPECT_EQ(Gadget::living, 0);
    EXPECT_EQ(list->getByIndex(0, value, nullptr), 41);
}

TEST_F(LiveCollectionTest, LetsAComponentDetachItselfWhenItIsChosen) {
    struct Fleeing : Shelf {
        bool isIndexable() const override {
            owner->removeComponent(const_cast<Fleeing&>(*this));
            return true;
        }
        LiveCollection* owner = nullptr;
    };
    auto shelf = make<Fleeing>();
    shelf->owner = list.get();
    shelf->elements = {"kept"};
    list->addComponent(*shelf);
    shelf.reset();
    EXPECT_EQ(list->getByIndex(0, value, nullptr), 0);
    EXPECT_EQ(narrow(value.getString()), "kept");
    EXPECT_EQ(Gadget::living, 0);
}

TEST_F(LiveCollectionTest, AsksListenersForElements) {
    std::vector<int> asked;
    int code = 0;
    const auto answer = [&](LiveMessage& message) {
        asked.push_back(message.getPropertyID());
        message.getError() = code;
        if (message.getID() == MessageID::GetByIndex) *message.getData() = "element";
        if (message.getID() == MessageID::GetLength) *message.getData() = 3e9;
        return true;
    };
    for (int message :
         {MessageID::GetByIndex, MessageID::PutByIndex, MessageID::GetLength, MessageID::PutLength})
        listen(message, answer);
    EXPECT_EQ(list->getByIndex(7, value, nullptr), 0);
    EXPECT_EQ(narrow(value.getString()), "element");
    EXPECT_EQ(list->putByIndex(0xFFFFFFFF, 1, nullptr), 0);
    EXPECT_EQ(list->getLength(length), 0);
    EXPECT_EQ(length, 3000000000U);
    EXPECT_EQ(list->get("length", value, nullptr), 0);
    EXPECT_EQ(value.getDouble(), 3e9);
    EXPECT_EQ(list->putLength(12), 0);
    EXPECT_EQ(asked, (std::vector<int>{7, -1, 0, 0, 12}));
    code = 19;
    EXPECT_EQ(list->getByIndex(7, value, &err), 19);
    EXPECT_FALSE(value.isDefined());
    EXPECT_EQ(err.getCode(), 19);
    EXPECT_EQ(list->getLength(length), 19);
    EXPECT_EQ(length, 0U);
}

TEST_F(LiveCollectionTest, TellsListenersOfLengthsBesideTheComponent) {
    const auto shelf = make<Shelf>();
    list->addComponent(*shelf);
    bool handles = false;
    listen(MessageID::PutLength, [&](LiveMessage& message) {
        message.getError() = 19;
        return handles;
    });
    EXPECT_EQ(list->putLength(2), 0);
    handles = true;
    EXPECT_EQ(list->putLength(4), 19);
    EXPECT_EQ(shelf->elements.size(), 4U);
}

TEST_F(LiveCollectionTest, AsksListenersOfPutsToDelete) {
    int deleted = -1;
    listen(MessageID::DeleteByIndex, [&](LiveMessage& message) {
        deleted = message.getPropertyID();
        return true;
    });
    EXPECT_EQ(list->deleteByIndex(4), 41); // nobody listens for puts
    EXPECT_EQ(deleted, -1);
    listen(MessageID::PutByIndex, [](LiveMessage&) { return false; });
    EXPECT_EQ(list->deleteByIndex(4), 0);
    EXPECT_EQ(deleted, 4);
}

TEST_F(LiveCollectionTest, IsClonedAsACollection) {
    LiveObject* copy = nullptr;
    ASSERT_EQ(fixed->clone(&copy, false), 0);
    const auto held = InterfacePtr<LiveObject>::adopt(copy);
    const auto* collection = static_cast<LiveCollection*>(held->getAs(TypeTag::Collection));
    ASSERT_NE(collection, nullptr);
    EXPECT_TRUE(collection->isReadOnly());
    EXPECT_EQ(collection->getLengthID(), fixed->getLengthID());
}

} // namespace
