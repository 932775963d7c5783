#include "live/LiveFixture.h"

#include <memory>

using namespace KrCore;
using namespace KrCore::Testing;

// What an object asks of its listeners and components, and what these may do meanwhile.

namespace {

constexpr int library = RequestFlag::Library;

class LiveListenersTest : public testing::Test {
protected:
    void listen(int message, std::function<bool(LiveMessage&)> answer) {
        ears.push_back(std::make_unique<Ear>(Ear::answering(std::move(answer))));
        thing->addListener(*ears.back(), message);
    }
    /// Makes "kept" a property with ID 7 whose value a listener holds.
    void keep(InfoType kind) {
        listen(MessageID::GetID, [kind](LiveMessage& message) {
            if (message.getData()->getString() != "kept") return false;
            message.getPropertyID() = 7;
            *message.getData() = static_cast<int>(kind);
            return true;
        });
        int id = 0;
        InfoType found = InfoType::Unknown;
        ASSERT_EQ(thing->getIDForName("kept", id, found, library), 0);
        EXPECT_EQ(id, 7);
        EXPECT_EQ(found, kind);
    }

    InterfacePtr<LiveObject> thing = makePlain();
    std::vector<std::unique_ptr<Ear>> ears;
    Variant value;
    Error err;
};

TEST_F(LiveListenersTest, ResolveNamesOfDynamicObjects) {
    int asked = 0, flags = 0, code = 0;
    listen(MessageID::GetID, [&](LiveMessage& message) {
        ++asked;
        flags = message.getLanguage();
        EXPECT_EQ(message.getThis(), thing.get());
        message.getError() = code;
        message.getPropertyID() = 9;
        *message.getData() = 0x32; // only the low four bits count
        return true;
    });
    int id = 0;
    InfoType kind = InfoType::Unknown;
    for (int refusal : {2, 19}) {
        code = refusal;
        EXPECT_EQ(thing->getIDForName("name", id, kind, library), refusal);
        EXPECT_EQ(id, 0);
        EXPECT_EQ(kind, InfoType::Unknown);
    }
    code = 0;
    EXPECT_EQ(thing->getIDForName("name", id, kind, 0x30000), 0);
    EXPECT_EQ(flags, 0x30000);
    EXPECT_EQ(id, 9);
    EXPECT_EQ(kind, InfoType::ReadWrite);
    EXPECT_EQ(thing->getIDForName("name", id, kind, library), 0);
    EXPECT_EQ(asked, 3); // the answer was remembered, as a hidden property
    EXPECT_TRUE(idsOf(*thing, allProperties).empty());
    EXPECT_EQ(idsOf(*thing, allProperties | RequestFlag::WithHidden), (std::vector{9}));
    const auto fixed = makePlain("Fixed", false);
    fixed->addListener(*ears[0], MessageID::GetID);
    EXPECT_EQ(fixed->getIDForName("name", id, kind, library), 2);
}

TEST_F(LiveListenersTest, KeepValues) {
    keep(InfoType::ReadWrite);
    EXPECT_EQ(thing->get(7, value, nullptr), 2); // nobody answers
    int stored = 5, code = 0;
    listen(MessageID::Get, [&](LiveMessage& message) {
        *message.getData() = stored;
        message.getError() = code;
        return message.getPropertyID() == 7;
    });
    listen(MessageID::Put, [&](LiveMessage& message) {
        stored = message.getData()->getInteger();
        message.getError() = code;
        return true;
    });
    EXPECT_EQ(thing->put("kept", 8, -1, nullptr), 0);
    EXPECT_EQ(stored, 8);
    EXPECT_EQ(thing->get("kept", value, nullptr), 0);
    EXPECT_EQ(value.getInteger(), 8);
    thing->findProperty(7)->get(value);
    EXPECT_EQ(value.getInteger(), 8); // the copy
    code = 19;
    EXPECT_EQ(thing->put(7, 9, &err), 19);
    EXPECT_EQ(thing->get(7, value, nullptr), 19);
    EXPECT_FALSE(value.isDefined());
    EXPECT_EQ(told(err).substr(0, 3), "19:");
    thing->findProperty(7)->get(value);
    EXPECT_EQ(value.getInteger(), 8);
}

TEST_F(LiveListenersTest, RunMethods) {
    keep(InfoType::Method);
    const auto stranger = makePlain("Stranger");
    EXPECT_EQ(thing->apply(*stranger, 7, Array(), value, nullptr), 26);
    int code = 0;
    listen(MessageID::Call, [&](LiveMessage& message) {
        *message.getData() = message.getThis()->getClassName();
        message.getError() = code;
        return true;
    });
    EXPECT_EQ(thing->apply(*stranger, 7, Array(), value, nullptr), 0); // a listener may take it
    EXPECT_EQ(narrow(value.getString()), "Stranger");
    code = 2;
    EXPECT_EQ(thing->apply(*stranger, 7, Array(), value, nullptr), 26);
    EXPECT_EQ(thing->call(7, value), 2);
    EXPECT_FALSE(value.isDefined());
    code = 20;
    EXPECT_EQ(thing->apply(*stranger, 7, Array(), value, nullptr), 20);
}

TEST_F(LiveListenersTest, AreInvokedByName) {
    EXPECT_FALSE(thing->canInvoke("run"));
    EXPECT_EQ(thing->invoke("run", &err), 24);
    EXPECT_EQ(told(err), "24: run is not a function");
    bool answers = false;
    int code = 0, recorded = 0;
    listen(MessageID::Invoke, [&](LiveMessage& message) {
        EXPECT_EQ(narrow(message.getData()->getString()), "run");
        *message.getData() = message.getArgs().length();
        message.getError() = code;
        if (recorded) message.getExtError()->push(recorded);
        return answers;
    });
    EXPECT_EQ(thing->invoke("run", value, nullptr), 24);
    EXPECT_FALSE(value.isDefined());
    answers = true;
    Array args;
    args += 1;
    EXPECT_EQ(thing->invoke("run", args, value, nullptr), 0);
    EXPECT_EQ(value.getInteger(), 1);
    for (int extra : {41, 0}) {
        err.erase();
        code = 19, recorded = extra;
        EXPECT_EQ(thing->invoke("run", args, value, &err), extra ? 41 : 19);
    }
}

TEST_F(LiveListenersTest, AddToEnumerations) {
    listen(MessageID::Enumerate, [&](LiveMessage& message) {
        *message.getEnumIDs() += message.getLanguage();
        message.getError() = 19;
        return true;
    });
    EXPECT_EQ(idsOf(*thing, allProperties, 19), (std::vector{allProperties}));
}

TEST_F(LiveListenersTest, MayDeleteThePropertyTheyAreAskedFor) {
    keep(InfoType::CallableReadWrite);
    const auto answer = [&](LiveMessage& message) {
        thing->deleteDynamicProperties(true);
        *message.getData() = 6;
        return true;
    };
    listen(MessageID::Get, answer);
    EXPECT_EQ(thing->get(7, value, nullptr), 0);
    EXPECT_EQ(value.getInteger(), 6);
    EXPECT_EQ(thing->findProperty(7), nullptr);
    keep(InfoType::CallableReadWrite);
    listen(MessageID::Put, answer);
    EXPECT_EQ(thing->put(7, 1, nullptr), 0);
    keep(InfoType::CallableReadWrite);
    listen(MessageID::Call, answer);
    EXPECT_EQ(thing->call(7), 0);
}

TEST_F(LiveListenersTest, MayInvalidateTheObjectOrDefineTheNameThemselves) {
    listen(MessageID::GetID, [&](LiveMessage& message) {
        thing->defineIDForName(message.getData()->getString(), 3, 2);
        message.getPropertyID() = 4;
        if (message.getData()->getString() == "last") thing->invalidate();
        return true;
    });
    EXPECT_EQ(thing->put("both", 1, -1, nullptr), 2); // nobody takes the value of ID 4
    EXPECT_EQ(thing->put("last", 1, -1, nullptr), 45);
}

TEST_F(LiveListenersTest, MayLookUpNamesWhileTheyAnswerForOne) {
    const auto other = makePlain();
    int asked = 0, id = 0;
    InfoType kind = InfoType::Unknown;
    listen(MessageID::GetID, [&](LiveMessage& message) {
        ++asked;
        const String name = message.getData()->getString();
        if (name == "full") {
            EXPECT_EQ(thing->getIDForName(name, id, kind, library), 2);
            EXPECT_EQ(other->getIDForName(name, id, kind, library), 0);
            EXPECT_EQ(thing->getIDForName("part", id, kind, library), 0);
        } else if (name != "part") {
            message.getError() = thing->getIDForName(name + "x", id, kind, library);
        }
        return true;
    });
    Ear relay(Ear::answering([&](LiveMessage& message) { // leads back to the first object
        EXPECT_EQ(thing->getIDForName(message.getData()->getString(), id, kind, library), 2);
        return true;
    }));
    other->addListener(relay, MessageID::GetID);
    EXPECT_EQ(thing->getIDForName("full", id, kind, library), 0);
    EXPECT_EQ(asked, 2);
    asked = 0;
    EXPECT_EQ(thing->getIDForName("endless", id, kind, library), 27);
    EXPECT_EQ(asked, 128);
    EXPECT_EQ(thing->getIDForName("full", id, kind, library), 0); // and all is well afterwards
}

class LiveComponentsTest : public testing::Test {
protected:
    /// A component that gives its ID 1 a kind and answers with `name`.
    InterfacePtr<Gadget> add(const char* name, InfoType kind) {
        auto gadget = make<Gadget>();
        gadget->onType = [kind](int id) { return id == 1 ? kind : InfoType::Unknown; };
        gadget->onGet = [name](int, Variant& result) { return result = name, 0; };
        gadget->onPut = [this, name](int, const Variant&) { return written = name, 0; };
        gadget->onCall = [name](int, const Array&, Variant& result) { return result = name, 0; };
        thing->addComponent(*gadget);
        return gadget;
    }

    InterfacePtr<LiveObject> thing = makePlain();
    std::string written;
    Variant value;
};

TEST_F(LiveComponentsTest, AreCountedAndReleased) {
    const auto gadget = make<Gadget>();
    EXPECT_EQ(thing->removeComponent(*gadget), 0); // not attached
    thing->addComponent(*gadget);
    thing->addComponent(*gadget);
    EXPECT_EQ(gadget->getRefCount(), 2);
    thing->removeComponent(*gadget);
    EXPECT_EQ(gadget->getRefCount(), 1);
    thing->addComponent(*gadget);
    thing = makePlain();
    EXPECT_EQ(gadget->getRefCount(), 1);
}

TEST_F(LiveComponentsTest, DecideByTheKindTheyGiveAnID) {
    // Two components; the one added last is asked first, the one below is read/write and callable.
    const struct {
        InfoType upper;
        int get, put, call;
        const char* from; // who answers, if anybody
    } rows[] = {{InfoType::Unknown, 0, 0, 0, "lower"},
                {InfoType::ReadOnly, 0, 46, 24, "upper"},
                {InfoType::ReadWrite, 0, 0, 24, "upper"},
                {InfoType::Method, 2, 2, 0, "upper"},
                {InfoType::CallableReadWrite, 0, 0, 0, "upper"},
                {InfoType::CallableReadOnly, 0, 46, 0, "upper"},
                {InfoType::Hidden, 2, 2, 2, "upper"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.upper));
        thing = makePlain();
        add("lower", InfoType::CallableReadWrite);
        add("upper", row.upper);
        EXPECT_EQ(thing->get(1, value, nullptr), row.get);
        EXPECT_EQ(row.get ? row.from : narrow(value.getString()), row.from);
        EXPECT_EQ(thing->put(1, 0, nullptr), row.put);
        EXPECT_EQ(row.put ? row.from : written, row.from);
        EXPECT_EQ(thing->call(1, value), row.call);
        EXPECT_EQ(row.call ? row.from : narrow(value.getString()), row.from);
        const bool isHidden = row.upper == InfoType::Hidden;
        EXPECT_EQ(thing->getType(1), isHidden                         ? InfoType::Unknown
                                     : row.upper == InfoType::Unknown ? InfoType::CallableReadWrite
                                                                      : row.upper);
    }
    // A dynamic property with the ID answers alone, even when it cannot do what is asked.
    ASSERT_EQ(thing->defineIDForName("mine", 1, 5), 0);
    EXPECT_EQ(thing->get(1, value, nullptr), 2);
    EXPECT_EQ(thing->call(1), 24);
}

TEST_F(LiveComponentsTest, KnowNothingByDefault) {
    Error err;
    const auto gadget = make<Gadget>();
    int id = 1;
    InfoType kind = InfoType::Method;
    String name = "before";
    unsigned length = 1;
    const auto recorded = [&](int code) {
        return told(std::exchange(err, Error())) + "/" + std::to_string(code);
    };
    EXPECT_EQ(gadget->getIDForName(*thing, "any", id, kind, library), 2);
    EXPECT_EQ(id, 0);
    EXPECT_EQ(kind, InfoType::Unknown);
    EXPECT_EQ(gadget->getNameForID(*thing, 1, name, library), 2);
    EXPECT_TRUE(name.isEmpty());
    EXPECT_EQ(gadget->getType(*thing, 1), InfoType::Unknown);
    const std::string unknown = "2: {LiveObject(\"Thing\").property(7)} is undefined/2";
    EXPECT_EQ(recorded(gadget->get(*thing, 7, value = 1, &err)), unknown);
    EXPECT_FALSE(value.isDefined());
    EXPECT_EQ(recorded(gadget->put(*thing, 7, 1, &err)), unknown);
    EXPECT_EQ(recorded(gadget->call(*thing, 7, Array(), value = 1, &err)), unknown);
    EXPECT_FALSE(value.isDefined());
    EXPECT_EQ(recorded(gadget->getByIndex(*thing, 7, value, &err)), "41: [7l] is out of range/41");
    EXPECT_EQ(recorded(gadget->putByIndex(*thing, 7, value, &err)), "41: [7l] is out of range/41");
    EXPECT_EQ(gadget->getLength(*thing, length), 2);
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(gadget->putLength(*thing, 1), 2);
    EXPECT_EQ(gadget->deleteByIndex(*thing, 1), 0);
}

TEST_F(LiveComponentsTest, RefuseAThisOfAnotherClassUnlessGeneric) {
    const auto stranger = makePlain("Stranger");
    const auto lower = add("lower", InfoType::Method);
    lower->generic = true;
    const auto upper = add("upper", InfoType::Method);
    EXPECT_EQ(thing->apply(*stranger, 1, Array(), value, nullptr), 26);
    EXPECT_EQ(thing->apply(*makePlain("Thing"), 1, Array(), value, nullptr), 0);
    upper->generic = true;
    EXPECT_EQ(thing->apply(*stranger, 1, Array(), value, nullptr), 0);
}

TEST_F(LiveComponentsTest, ResolveNames) {
    int id = 0;
    InfoType kind = InfoType::Unknown;
    const auto gadget = make<Gadget>();
    LivePropertyManager manager(Shape::table());
    gadget->use(&manager);
    thing->addComponent(*gadget);
    String name;
    EXPECT_EQ(thing->getNameForID(Shape::Area, name, library), 0);
    EXPECT_EQ(narrow(name), "area");
    EXPECT_EQ(idsOf(*thing, RequestFlag::ReadOnly | library),
              (std::vector<int>{Shape::Area, Shape::Scale}));

    const struct {
        int code;
        InfoType kind;
        int expected;
    } rows[] = {{0, InfoType::Hidden, 2},
                {19, InfoType::Hidden, 19},
                {19, InfoType::Unknown, 19},
                {0, InfoType::Method, 0}};
    const auto upper = make<Gadget>();
    thing->addComponent(*upper);
    for (const auto& row : rows) {
        upper->onName = [&](const String&, int& answer, InfoType& answerKind) {
            answer = 6, answerKind = row.kind;
            return row.code;
        };
        EXPECT_EQ(thing->getIDForName("area", id, kind, library), row.expected);
        EXPECT_EQ(id, row.expected ? 0 : 6);
        EXPECT_EQ(kind, row.expected ? InfoType::Unknown : row.kind);
    }
    // What a component hides counts as unknown, and put may define it.
    upper->onName = [](const String&, int&, InfoType& hidden) {
        return hidden = InfoType::Hidden, 0;
    };
    EXPECT_EQ(thing->put("area", 1, 0, nullptr), 0);
    EXPECT_EQ(thing->getIDForName("area", id, kind, library), 0);
    EXPECT_GE(id, 0x1F800000);
}

TEST_F(LiveComponentsTest, HideIDsFromEnumerationsAndAddTheirOwnOnce) {
    const auto gadget = add("gadget", InfoType::Hidden); // hides ID 1
    ASSERT_EQ(thing->defineIDForName("one", 1, 2), 0);
    ASSERT_EQ(thing->defineIDForName("two", 2, 2), 0);
    for (int id : {2, 3, 3, 1, -5})
        gadget->offered += id;
    EXPECT_EQ(idsOf(*thing, RequestFlag::ReadWrite), (std::vector{2, 3, -5}));
    SimpleArray ids;
    ids += 1;
    EXPECT_EQ(thing->enumerate(ids, 0), 0);
    EXPECT_EQ(ids.indexOf(1), -1); // although it was there before
    for (int id = 0; id < 500; ++id)
        gadget->offered += id % 250;
    EXPECT_EQ(idsOf(*thing, 0).size(), 250U); // 0 to 249 without 1, and -5
}

TEST_F(LiveComponentsTest, MayDetachThemselvesAndOthersDuringACall) {
    auto upper = make<Gadget>(), middle = make<Gadget>(), lower = make<Gadget>();
    for (Gadget* gadget : {lower.get(), middle.get(), upper.get()})
        thing->addComponent(*gadget);
    Gadget* const gone[] = {upper.get(), middle.get()};
    upper->onReset = [&, gone] {
        for (Gadget* gadget : gone)
            thing->removeComponent(*gadget);
        thing->addComponent(*make<Gadget>()); // left out of this walk
    };
    upper.reset();
    middle.reset();
    lower->operators = true;
    EXPECT_FALSE(thing->hasOperators()); // components count after a reset only
    EXPECT_EQ(thing->reset(), 0);
    EXPECT_EQ(lower->resets, 1);
    EXPECT_TRUE(thing->hasOperators());
    EXPECT_EQ(Gadget::living, 2);

    // The last reference goes inside the component's own call.
    auto last = make<Gadget>();
    Gadget* const raw = last.get();
    raw->onType = [](int) { return InfoType::ReadWrite; };
    raw->onGet = [&, raw](int, Variant& result) {
        thing->removeComponent(*raw);
        return result = 3, 0;
    };
    thing->addComponent(*raw);
    last.reset();
    EXPECT_EQ(thing->get(1, value, nullptr), 0);
    EXPECT_EQ(value.getInteger(), 3);
    EXPECT_EQ(Gadget::living, 2);
}

TEST_F(LiveComponentsTest, AreAskedOnceWhenTheyAttachThemselvesAnew) {
    const InterfacePtr<Gadget> gadgets[] = {make<Gadget>(), make<Gadget>(), make<Gadget>()};
    for (const auto& gadget : gadgets) {
        thing->addComponent(*gadget);
        gadget->onReset = [this, raw = gadget.get()] {
            if (raw->resets > 10) return; // ends a walk that would not
            thing->removeComponent(*raw);
            thing->addComponent(*raw);
        };
    }
    EXPECT_EQ(thing->reset(), 0);
    for (const auto& gadget : gadgets)
        EXPECT_EQ(gadget->resets, 1);
}

} // namespace
