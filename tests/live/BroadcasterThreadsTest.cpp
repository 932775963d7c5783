#include "live/LiveFixture.h"
#include "support/Threads.h"

#include <mutex>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

constexpr int ping = fourCharCode("ping");
constexpr int threadCount = 4;

TEST(BroadcasterThreads, ShareOneBroadcasterFromItsFirstListenerOn) {
    for (int round = 0; round < 50; ++round) {
        Broadcaster broadcaster;
        int heard = 0; // no atomic: the broadcaster's lock is held around every notify
        inThreads(threadCount, [&](int index) {
            Ear ear([&](Message& message) {
                heard += message.getSender() == &broadcaster ? 1 : 0;
                return false;
            });
            for (int i = 0; i < 20; ++i) {
                broadcaster.addListener(ear, index % 2 ? ping : MessageID::All);
                broadcaster.broadcast(ping);
                broadcaster.isListening(ping);
                broadcaster.removeListener(ear, MessageID::All);
            }
        });
        EXPECT_GE(heard, threadCount * 20); // everybody heard itself at least
        EXPECT_FALSE(broadcaster.isListening(ping));
    }
}

TEST(LiveObjectThreads, ShareAManagerAComponentAndAnAutostoreTarget) {
    const auto gadget = make<Gadget>();
    int asked = 0; // guarded by the component's lock
    gadget->onType = [&](int id) {
        ++asked;
        return id == 7 ? InfoType::ReadWrite : InfoType::Unknown;
    };
    gadget->onGet = [](int, Variant& result) { return result = 1, 0; };
    const auto target = make<Shape>(); // which makes the manager, before the threads meet it
    inThreads(threadCount, [&](int) {
        const auto own = make<Shape>();
        own->addComponent(*gadget);
        own->setAutostore(target.get(), Shape::Width);
        for (int i = 0; i < 200; ++i) {
            Variant value;
            own->put("mine", i, 0, nullptr);
            own->get("width", value, nullptr);
            EXPECT_EQ(own->get(7, value, nullptr), 0);
        }
        own->setAutostore(nullptr, 0);
    });
    EXPECT_GE(asked, threadCount * 200);
}

TEST(LiveObjectThreads, AskAManagerThatGrowsMeanwhile) {
    LivePropertyManager manager;
    inThreads(threadCount, [&](int index) {
        const auto own = makePlain();
        const auto gadget = make<Gadget>();
        gadget->use(&manager);
        own->addComponent(*gadget);
        String name;
        for (int i = 0; i < 100; ++i) {
            const int id = index * 1000 + i;
            name.print("property%ld", id);
            {
                manager.createLock();
                const std::lock_guard<const Lockable> guard(manager);
                manager.registerProperty(narrow(name).c_str(), id, 2, nullptr);
            }
            EXPECT_EQ(own->getType(id), InfoType::ReadWrite);
            EXPECT_EQ(own->getNameForID(id, name, RequestFlag::Library), 0);
            EXPECT_GT(idsOf(*own, allProperties).size(), std::size_t(i));
        }
    });
}

TEST(LiveObjectThreads, RegisterFactoriesAndCreateAtTheSameTime) {
    inThreads(threadCount, [&](int index) {
        String name;
        name.print("Class%ld", index % 2);
        for (int i = 0; i < 200; ++i) {
            const auto factory = make<LiveObject>(name, true);
            LiveObject::addFactory(*factory, 1);
            LiveObject* made = nullptr;
            if (LiveObject::create(&made, name, 1) == 0) made->release();
            LiveObject::removeFactory(name);
        }
    });
}

} // namespace
