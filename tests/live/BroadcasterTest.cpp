#include "live/LiveFixture.h"
#include "support/FailingAllocator.h"

#include <deque>
#include <memory>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

constexpr int ping = fourCharCode("ping");

/// Listeners that write their names into one log.
class BroadcasterTest : public testing::Test {
protected:
    Ear& named(char name, bool consumes = false) {
        return ears.emplace_back([this, name, consumes](Message&) {
            log += name;
            return consumes;
        });
    }

    std::string log;
    std::deque<Ear> ears; // outlive the broadcaster, which tells them when it dies
    Broadcaster broadcaster;
};

TEST_F(BroadcasterTest, AsksListenersOfTheIDFirstAndThoseOfEveryMessageThen) {
    Ear &first = named('1'), &second = named('2'), &all = named('a'), &taker = named('t', true);
    broadcaster.addListener(all, MessageID::All);
    broadcaster.addListener(first, ping);
    broadcaster.addListener(second, ping);
    broadcaster.addListener(first, ping); // once is enough
    EXPECT_FALSE(broadcaster.broadcast(ping));
    EXPECT_FALSE(broadcaster.broadcast(fourCharCode("pong")));
    EXPECT_EQ(log, "12aa");
    broadcaster.addListener(taker, ping); // consumes, so nobody behind it is asked
    broadcaster.addListener(named('3'), ping);
    EXPECT_TRUE(broadcaster.broadcast(ping));
    EXPECT_EQ(log, "12aa12t");
}

TEST_F(BroadcasterTest, ReplacesSingleRegistrationsByOneForEveryMessage) {
    Ear &one = named('1'), &other = named('2');
    broadcaster.addListener(one, ping);
    broadcaster.addListener(one, MessageID::All);
    broadcaster.addListener(other, MessageID::All);
    broadcaster.addListener(one, MessageID::All); // keeps its place
    broadcaster.broadcast(ping);
    EXPECT_EQ(log, "12");
    broadcaster.removeListener(one, ping); // not registered there any more
    broadcaster.removeListener(one, MessageID::All);
    broadcaster.broadcast(ping);
    EXPECT_EQ(log, "122");
}

TEST_F(BroadcasterTest, KnowsWhetherAnybodyWouldListen) {
    Ear& ear = named('1');
    constexpr int negative = fourCharCode("\xE9tat");
    EXPECT_FALSE(broadcaster.isListening(negative));
    broadcaster.addListener(ear, negative);
    EXPECT_TRUE(broadcaster.isListening(negative));
    EXPECT_FALSE(broadcaster.isListening(ping));
    broadcaster.addListener(ear, MessageID::All);
    EXPECT_TRUE(broadcaster.isListening(ping));
    broadcaster = Broadcaster(broadcaster); // neither copies listeners nor drops them
    EXPECT_FALSE(Broadcaster(broadcaster).isListening(ping));
    EXPECT_TRUE(broadcaster.isListening(ping));
    broadcaster.removeListener(ear, MessageID::All);
    EXPECT_FALSE(broadcaster.isListening(negative));
}

TEST_F(BroadcasterTest, SetsTheSenderForTheTimeOfTheDelivery) {
    Broadcaster relay;
    const Broadcaster* inner = nullptr;
    const Broadcaster* after = nullptr;
    Ear innerEar([&](Message& message) {
        inner = message.getSender();
        return false;
    });
    Ear outerEar([&](Message& message) {
        relay.broadcast(message);
        after = message.getSender();
        return false;
    });
    relay.addListener(innerEar, ping);
    broadcaster.addListener(outerEar, ping);
    Message message(ping);
    broadcaster.broadcast(message);
    EXPECT_EQ(inner, &relay);
    EXPECT_EQ(after, &broadcaster);
    EXPECT_EQ(message.getSender(), nullptr);
}

TEST_F(BroadcasterTest, SkipsNobodyWhenAListenerRemovesItselfOrAnother) {
    for (int leaving = 0; leaving < 3; ++leaving) {
        SCOPED_TRACE(leaving);
        log.clear();
        Broadcaster own;
        std::unique_ptr<Ear> three[3];
        for (int i = 0; i < 3; ++i) {
            three[i] = std::make_unique<Ear>([&, i](Message&) {
                log += static_cast<char>('0' + i);
                if (i == 1) own.removeListener(*three[leaving], ping);
                return false;
            });
            own.addListener(*three[i], ping);
        }
        own.broadcast(ping);
        EXPECT_EQ(log, leaving == 2 ? "01" : "012");
    }
}

TEST_F(BroadcasterTest, CallsNobodyTwiceHoweverOftenItRegistersAgain) {
    // More listeners than the record of those called keeps on the stack.
    constexpr int count = 300;
    std::vector<std::unique_ptr<Ear>> many;
    int calls = 0;
    for (int i = 0; i < count; ++i) {
        many.push_back(std::make_unique<Ear>([&, i](Message&) {
            broadcaster.removeListener(*many[i], ping);
            broadcaster.addListener(*many[i], ping);
            return ++calls > 10 * count; // ends a delivery that would not
        }));
        broadcaster.addListener(*many.back(), ping);
    }
    EXPECT_FALSE(broadcaster.broadcast(ping));
    EXPECT_GT(calls, 0);
    EXPECT_LE(calls, count);
}

TEST_F(BroadcasterTest, MayBeEmptiedOrDestroyedByAListener) {
    auto doomed = std::make_unique<Broadcaster>();
    Ear& second = named('2');
    Ear first([&](Message&) {
        log += '1';
        doomed->removeListener(first, MessageID::All);
        doomed->removeListener(second, MessageID::All);
        doomed->addListener(second, ping);
        doomed.reset();
        return false;
    });
    doomed->addListener(first, ping);
    doomed->addListener(second, ping);
    Broadcaster* raw = doomed.get();
    EXPECT_FALSE(raw->broadcast(ping));
    EXPECT_EQ(log, "1");
}

TEST_F(BroadcasterTest, AnnouncesItsDeathToThoseWhoAskedForIt) {
    const auto recorded = [this](Message& message) {
        log += static_cast<char>(message.getID() & 0xFF);
        return true;
    };
    Ear all(recorded), both(recorded), other(recorded);
    { // consumed or not, both messages are sent
        Broadcaster dying;
        dying.addListener(all, MessageID::All);
    }
    EXPECT_EQ(log, "E!");
    log.clear();
    { // a deletion ID of the host's makes the two known ones go out, which nobody wants here
        Broadcaster dying;
        dying.addListener(both, fourCharCode("DEL?"));
        dying.addListener(other, ping);
    }
    EXPECT_EQ(log, "");
    { // registrations that came to nothing do not count
        Broadcaster dying;
        dying.addListener(both, MessageID::Deleted);
        dying.addListener(both, MessageID::Deleted);
        dying.removeListener(other, MessageID::Deleted);
        dying.removeListener(both, MessageID::Deleted);
    }
    EXPECT_EQ(log, "");
    {
        Broadcaster dying;
        dying.addListener(both, MessageID::Deleting);
        dying.addListener(both, MessageID::Deleted);
    }
    EXPECT_EQ(log, "E!");
}

TEST_F(BroadcasterTest, GivesEverythingBackWhenMemoryRunsOut) {
    forEachFailure([] {
        Broadcaster own;
        std::vector<std::unique_ptr<Listener>> many;
        for (int i = 0; i < 150; ++i) {
            many.push_back(std::make_unique<Listener>());
            own.addListener(*many.back(), ping);
            own.addListener(*many.back(), i);
        }
        own.broadcast(ping);
        for (auto& ear : many)
            own.removeListener(*ear, MessageID::All);
    });
}

} // namespace
