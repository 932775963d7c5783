#include "support/FailingAllocator.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/containers/TSimpleArray.h>
#include <krcore/foundation/Heap.h>

#include <gtest/gtest.h>

#include <climits>
#include <initializer_list>

using namespace KrCore;

namespace {

SimpleArray arrayOf(std::initializer_list<long long> values) {
    SimpleArray array;
    for (const long long value : values) {
        array.append(value);
    }
    return array;
}

int heapBytes() {
    int blocks = 0, bytes = 0;
    Heap::getMemoryStatistics(blocks, bytes);
    return bytes;
}

} // namespace

TEST(SimpleArray, FollowsItsLengthInStepsOfTheIncrement) {
    const int before = heapBytes();
    const auto gross = [before] { return heapBytes() - before; };
    SimpleArray array;
    array.setSize(8);
    EXPECT_EQ(gross(), 96); // 24 bytes of head, 8 words, 8 bytes of block header.
    array.append(1);
    EXPECT_EQ(gross(), 160);
    array.setSize(3);
    EXPECT_EQ(gross(), 96);
    array.setIncrement(16);
    array.setSize(17);
    EXPECT_EQ(gross(), 288);
    array.clear();
    EXPECT_EQ(gross(), 0);
    EXPECT_EQ(array.getIncrement(), 8);
}

TEST(SimpleArray, FillsWithZerosWhatAnEarlierLifeLeftBehind) {
    SimpleArray array = arrayOf({1, 2, 3, 4, 5});
    array.setSize(2);
    array.setSize(5);
    EXPECT_EQ(array, arrayOf({1, 2, 0, 0, 0}));
}

TEST(SimpleArray, AbsorbsAccessOutOfRange) {
    SimpleArray array = arrayOf({1, 2, 3});
    array[5] = 7;
    EXPECT_EQ(array, arrayOf({1, 2, 3}));
    EXPECT_EQ(array[-1], 7);

    SimpleArray empty;
    empty[3] = 9;
    EXPECT_EQ(empty.length(), 0);
    EXPECT_EQ(SimpleArray()[3], 0) << "another empty array sees the word";
}

TEST(SimpleArray, ClipsPositions) {
    const SimpleArray source = arrayOf({1, 2, 3});
    SimpleArray array = source;
    EXPECT_EQ(array.removeAt(INT_MAX), 3);
    EXPECT_EQ(array.removeAt(INT_MIN), 1);
    EXPECT_EQ(array, arrayOf({2}));
    EXPECT_EQ(array.removeAt(0), 2);
    EXPECT_EQ(array.removeAt(0), 0);

    array = source;
    array.insert(8, INT_MIN);
    array.insert(9, INT_MAX);
    EXPECT_EQ(array, arrayOf({8, 1, 2, 3, 9}));
    array.insertGap(1, 2);
    EXPECT_EQ(array, arrayOf({8, 0, 0, 1, 2, 3, 9}));
    array.removeGap(-1, 3);
    EXPECT_EQ(array, arrayOf({0, 1, 2, 3, 9}));
    array.removeGap(3, INT_MAX);
    EXPECT_EQ(array, arrayOf({0, 1, 2}));
    EXPECT_EQ(array.copy(1, INT_MAX), arrayOf({1, 2}));
    EXPECT_EQ(array.copy(INT_MIN, INT_MAX).length(), 0);
    array.insertGap(0, INT_MIN);
    array.removeGap(1, INT_MIN);
    EXPECT_EQ(array.length(), 3);
}

TEST(SimpleArray, SharesUntilEitherSideWrites) {
    SimpleArray original = arrayOf({1, 2, 3});
    SimpleArray copy = original;
    EXPECT_EQ(copy.getData(), original.getData());
    copy[0] = 5;
    EXPECT_EQ(original, arrayOf({1, 2, 3}));
    EXPECT_EQ(copy, arrayOf({5, 2, 3}));

    original.makeUnique();
    const SimpleArray apart = original;
    EXPECT_NE(apart.getData(), original.getData());
    const SimpleArray again = apart;
    EXPECT_EQ(again.getData(), apart.getData()) << "the mark went along with the copy";
    original = static_cast<const SimpleArray&>(original);
    original.setSize(20);
    EXPECT_NE(SimpleArray(original).getData(), original.getData()) << "the mark was lost";
}

TEST(SimpleArray, TakesItselfAsArgument) {
    SimpleArray array = arrayOf({1, 2, 0, 3, 4, 5});
    array += array;
    EXPECT_EQ(array, arrayOf({1, 2, 0, 3, 4, 5, 1, 2, 0, 3, 4, 5}));
    array.merge(array, true);
    EXPECT_EQ(array.length(), 12);
    array.insert(array[1], 0);
    EXPECT_EQ(array[0], 2);
}

TEST(SimpleArray, MergesWhatIsNotThereYet) {
    for (const int padding : {0, 100}) { // Few elements are searched, many are looked up.
        SCOPED_TRACE(padding);
        SimpleArray array = arrayOf({4, 1});
        for (int value = 0; value < padding; ++value) {
            array.append(1000 + value);
        }
        const int base = array.length();
        array.merge(arrayOf({1, 0, 7, 7, 0, 4, 5}), false);
        EXPECT_EQ(array.copy(base, 9), arrayOf({7, 5}));
        array.merge(arrayOf({0, 0, 5}), true);
        EXPECT_EQ(array.copy(base, 9), arrayOf({7, 5, 0}));
    }
}

TEST(SimpleArray, RefusesWhatNoBlockCanHold) {
    SimpleArray array = arrayOf({1, 2, 3});
    EXPECT_THROW(array.setSize(INT_MAX), OutOfMemory);
    EXPECT_THROW(array.insertGap(2, INT_MAX), OutOfMemory);
    SimpleArray coarse = array;
    coarse.setIncrement(INT_MAX);
    EXPECT_THROW(coarse.setSize(9), OutOfMemory);
    EXPECT_EQ(coarse, array);
    EXPECT_EQ(array, arrayOf({1, 2, 3}));
}

TEST(SimpleArray, KeepsItsDataWhenMemoryComesAfterAFlush) {
    Testing::forEachFailure(
        [] {
            SimpleArray array = arrayOf({1, 2, 3, 4, 5, 6, 7, 8, 9});
            const SimpleArray copy = array;
            array.append(10);
            array.insertGap(0, 9);
            EXPECT_EQ(array.copy(9, 10), arrayOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
        },
        Testing::Shortage::UntilFlush);
    Testing::forEachFailure([] {
        SimpleArray array = arrayOf({1, 2});
        array.makeUnique();
        SimpleArray copy(array);
        copy.merge(arrayOf({3, 4, 5, 6, 7, 8, 9, 10, 11}), false);
        array = copy;
        array.setSize(1);
    });
}

TEST(TSimpleArray, HoldsPointers) {
    int one = 1, two = 2;
    TSimpleArray<int> array;
    array += &one;
    array.insert(&two, 0);
    EXPECT_EQ(array.indexOf(&one), 1);
    int sum = 0;
    for (const int* item : array) {
        sum = sum * 10 + *item;
    }
    EXPECT_EQ(sum, 21);
    EXPECT_EQ(array[2], nullptr);
    EXPECT_TRUE(array.remove(&two));
    EXPECT_EQ(array.removeAt(0), &one);
}

TEST(TISimpleArray, HoldsAReferenceOnEachElement) {
    struct Counted {
        void addRef() { ++count; }
        void release() { --count; }
        int count = 0;
    } one, two;
    {
        TISimpleArray<Counted> array;
        array += &one;
        array += &one;
        array.insert(&two, 0);
        array += nullptr;
        TISimpleArray<Counted> copy(array);
        copy = static_cast<const TISimpleArray<Counted>&>(copy);
        EXPECT_EQ(one.count, 4);
        copy.removeAt(0);
        EXPECT_TRUE(copy.remove(&one));
        EXPECT_EQ(two.count, 1);
        array = copy;
        EXPECT_EQ(one.count, 2);
        array.erase();
        EXPECT_EQ(one.count, 1);
        EXPECT_EQ(copy[0], &one);
    }
    EXPECT_EQ(one.count + two.count, 0);
}
