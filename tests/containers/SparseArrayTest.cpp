#include "support/FailingAllocator.h"

#include <krcore/containers/SparseArray.h>

#include <gtest/gtest.h>

using namespace KrCore;

namespace {

long long keyAt(const SparseArray& map, int position) {
    SimpleArray keys;
    map.getKeys(keys);
    return keys[position];
}

/// A map of `count` keys that are multiples of 64, so that up to 64 buckets they share one chain.
SparseArray chained(int count) {
    SparseArray map;
    for (int index = 1; index <= count; ++index) {
        map.set(index * 64, index);
    }
    return map;
}

} // namespace

TEST(SparseArray, DoublesAtTheEighteenthKey) {
    SparseArray map = chained(17);
    EXPECT_EQ(keyAt(map, 0), 17 * 64) << "the key set last comes first";
    map.set(18 * 64, 18);
    EXPECT_EQ(keyAt(map, 0), 18 * 64);
    EXPECT_EQ(keyAt(map, 1), 64) << "the rehash turns the chain round";
}

TEST(SparseArray, TellsKeysOfOneBucketApart) {
    SparseArray map;
    const long long keys[] = {5, 5 + (1LL << 31), 5 + (1LL << 40), -5, -5 - (1LL << 33)};
    for (const long long key : keys) {
        map.set(key, key * 2);
    }
    EXPECT_EQ(map.length(), 5);
    for (const long long key : keys) {
        EXPECT_EQ(map.find(key), key * 2);
    }
    EXPECT_EQ(map.remove(5), 10);
    EXPECT_FALSE(map.hasKey(5));
    EXPECT_EQ(map[5 + (1LL << 31)], 10 + (1LL << 32));
    EXPECT_EQ(map.findKey(-10), -5);
    EXPECT_EQ(map.findKey(12345), -1);

    SimpleArray values;
    values.setIncrement(100);
    map.getData(values);
    EXPECT_EQ(values.length(), 4);
    EXPECT_EQ(values.getIncrement(), 100) << "the array was replaced, not filled";
}

TEST(SparseArray, StepsBetween32And16BucketsWhenSparse) {
    SparseArray map;
    for (const long long key :
         {1, 16, 17}) { // In 32 buckets 1, 16, 17; in 16 buckets 16, 1 and 17.
        map.set(key, key);
    }
    EXPECT_EQ(keyAt(map, 0), 1);
    map.removeData(99);
    EXPECT_EQ(keyAt(map, 0), 16);
    map.removeData(99);
    EXPECT_EQ(keyAt(map, 0), 1);
}

TEST(SparseArray, ComparesItemsNotLookUps) {
    SparseArray five, six;
    five.set(5, 0);
    six.set(6, 0);
    EXPECT_NE(five, six);
    six.set(5, 0);
    five.set(6, 0);
    EXPECT_EQ(five, six);
}

TEST(SparseArray, LetsTheVisitorChangeTheMap) {
    SparseArray map = chained(10);
    struct Visit {
        SparseArray& map;
        int calls = 0;
    } visit{map};
    map.forEach(
        [](long long key, long long* value, long long data) {
            auto& state = *reinterpret_cast<Visit*>(static_cast<std::intptr_t>(data));
            ++state.calls;
            *value = -1;
            state.map.remove(key - 64); // The next one of the chain.
            for (int added = 1; added < 100; ++added) {
                state.map.set(key * 1000 + added, 0);
            }
            return state.calls < 4;
        },
        reinterpret_cast<std::intptr_t>(&visit));
    EXPECT_EQ(visit.calls, 4);
    EXPECT_EQ(map.length(), 6 + 4 * 99);
    EXPECT_EQ(map.find(640), -1);
}

TEST(SparseArray, SurvivesEveryShortage) {
    Testing::forEachFailure([] {
        const SparseArray source = chained(40);
        SparseArray copy(source);
        copy += copy;
        EXPECT_EQ(copy, source);
        for (int index = 1; index <= 30; ++index) {
            copy.removeData(index);
        }
        EXPECT_EQ(copy.length(), 10);
        copy = source;
        copy.erase();
        EXPECT_EQ(copy.length(), 0);
    });
}
