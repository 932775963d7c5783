#include "support/FailingAllocator.h"

#include <krcore/containers/Array.h>
#include <krcore/text/String.h>
#include <krcore/values/Point.h>
#include <krcore/values/Variant.h>

#include <gtest/gtest.h>

#include <map>
#include <random>

using namespace KrCore;

namespace {

Array numbers(int first, int count) {
    Array array;
    for (int number = first; number < first + count; ++number) {
        array += number;
    }
    return array;
}

int at(const Array& array, unsigned int index) {
    return array.isDefined(index) ? array[index].getInteger() : 0;
}

constexpr unsigned int farEnd = 4000000000U;

} // namespace

TEST(Array, KeepsLowIndexesDenseAndHighOnesSparse) {
    Array shortOne(5);
    EXPECT_EQ(shortOne.length(), 5U);
    EXPECT_NE(shortOne.get(4), nullptr);
    EXPECT_FALSE(shortOne.isDefined(4));
    shortOne[900] = 1;
    EXPECT_EQ(shortOne.get(900), shortOne.getData() + 900);
    shortOne[5000] = 2;
    EXPECT_EQ(shortOne.get(2000), nullptr);
    EXPECT_EQ(at(shortOne, 5000), 2);

    Array longOne(5000);
    EXPECT_NE(longOne.get(15), nullptr);
    EXPECT_EQ(longOne.get(16), nullptr);
    longOne[4000] = 3;
    EXPECT_EQ(at(longOne, 4000), 3);

    Array sparseOne(0);
    sparseOne[0] = 4;
    sparseOne[2000] = 5;
    sparseOne.removeAt(0, 1);
    EXPECT_EQ(sparseOne.getData(), nullptr) << "no dense element is left";

    const Array denseOne(4096);
    EXPECT_EQ(denseOne.get(4095), denseOne.getData() + 4095);
}

TEST(Array, GrowsByWritingBehindItsEnd) {
    Array array;
    EXPECT_EQ(array.get(array.length()), nullptr);
    array.safeGet(array.length()) = "text";
    EXPECT_EQ(array.length(), 1U);
    array[0xFFFFFFFFU] = 5;
    EXPECT_EQ(array.length(), 1U);
    EXPECT_FALSE(array[0xFFFFFFFFU].isDefined());
    array[0xFFFFFFFEU] = 5;
    EXPECT_EQ(array.length(), 0xFFFFFFFFU);
    array += 6;
    array.insertAt(0, 1);
    EXPECT_EQ(array.length(), 0xFFFFFFFFU);
    EXPECT_EQ(at(array, 0xFFFFFFFEU), 5);
    array = -1;
    EXPECT_EQ(array.length(), 0U);
}

TEST(Array, SharesUntilEitherSideWrites) {
    Array original = numbers(1, 3);
    original[2000] = 4;
    Array copy(original);
    EXPECT_EQ(copy.getData(), original.getData());
    copy[1] = 20;
    copy[2000] = 40;
    EXPECT_EQ(at(original, 1), 2);
    EXPECT_EQ(at(original, 2000), 4);
    EXPECT_EQ(at(copy, 0), 1);
    EXPECT_EQ(at(copy, 2000), 40);
}

TEST(ArrayLength, HidesSparseElementsWhenCutWithinTheDenseLimit) {
    Array array;
    array[500] = 1;
    array[1500] = 2;
    array[1600] = 3;
    array.setLength(1600);
    array.setLength(2000);
    EXPECT_EQ(at(array, 1600), 0) << "cut above the dense limit, an element goes";
    array.setLength(400);
    EXPECT_EQ(array.get(1500), nullptr);
    Array copy(array);
    copy.makeUnique();
    copy.setLength(2000);
    EXPECT_EQ(at(copy, 500), 0);
    EXPECT_EQ(at(copy, 1500), 2);
    EXPECT_NE(copy, array);
    array[1500] = Variant();
    EXPECT_FALSE(array.isDefined(1500)) << "a hidden element came back in place of a new one";

    copy.setLength(10);
    copy.insertAt(5, 1495);
    EXPECT_EQ(copy.length(), 1505U);
    EXPECT_FALSE(copy.isDefined(1500)) << "a hidden element came up in a gap";
}

TEST(ArrayLength, NeverAllocatesByLength) {
    Array array(farEnd);
    array.setLength(farEnd + 1);
    array[farEnd] = 1;
    Array other(farEnd + 1);
    EXPECT_NE(array, other);
    other[farEnd] = 1;
    EXPECT_EQ(array, other);
    array.insertAt(3, 7);
    EXPECT_EQ(at(array, farEnd + 7), 1);
    array.removeAt(2, farEnd);
    EXPECT_EQ(array.length(), 8U);
    EXPECT_EQ(at(array, 7), 1);
    array.removeAt(2, 0xFFFFFFFFU);
    EXPECT_EQ(array.length(), 2U);
    Array grown;
    grown.setLength(farEnd);
    grown += other;
    EXPECT_EQ(grown.length(), 0xFFFFFFFFU);
}

TEST(ArrayEditing, MovesElementsLikeAPlainMap) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        Array array(round % 2 ? 5000 : 5); // Dense up to 16, or to 1024.
        std::map<unsigned int, int> plain;
        const auto place = [&random] {
            return static_cast<unsigned int>(random() % 4 ? random() % 24 : 1000 + random() % 60);
        };
        for (int step = 1; step < 40; ++step) {
            const unsigned int index = place();
            const unsigned int count = place();
            const unsigned int length = array.length();
            std::map<unsigned int, int> moved;
            switch (random() % 4) {
            case 0: {
                const unsigned int from = std::min(index, length);
                for (const auto& [key, value] : plain) {
                    moved[key < from ? key : key + count] = value;
                }
                plain = moved;
                array.insertAt(index, count);
                break;
            }
            case 1:
                for (const auto& [key, value] : plain) {
                    if (key < index) moved[key] = value;
                    if (key >= index + count) moved[key - count] = value;
                }
                plain = moved;
                array.removeAt(index, count);
                break;
            case 2:
                plain.erase(index);
                array.deleteAt(index);
                break;
            default:
                plain[index] = step;
                array[index] = step;
            }
            int defined = 0;
            for (unsigned int key = 0; key < std::min(array.length(), 9000U); ++key) {
                defined += array.isDefined(key);
            }
            ASSERT_EQ(defined, static_cast<int>(plain.size())) << round << ' ' << step;
            for (const auto& [key, value] : plain) {
                ASSERT_EQ(at(array, key), value) << round << ' ' << step << ' ' << key;
            }
        }
    }
}

TEST(ArrayAppend, TakesEveryKindOfValue) {
    Array array;
    array += "bytes";
    array += u"units";
    array += String("text");
    array += 1;
    array += 4000000000U;
    array += sizeof(char);
    array += Point(1, 2);
    array += static_cast<LiveObject*>(nullptr);
    EXPECT_EQ(array.length(), 8U);
    EXPECT_TRUE(array[1].getString() == "units");
    EXPECT_TRUE(array[4].getString() == "4000000000");
    EXPECT_TRUE(array[7].isNull());

    Array holey(2000);
    holey[1] = 1;
    holey[1999] = 2;
    array += holey;
    EXPECT_EQ(array.length(), 2008U);
    EXPECT_EQ(at(array, 9), 1);
    EXPECT_EQ(at(array, 2007), 2);
    array += array;
    EXPECT_EQ(array.length(), 4016U);
    EXPECT_EQ(at(array, 4015), 2);
}

TEST(ArrayWithinItself, HoldsWhatTheArrayWasBefore) {
    Array array = numbers(1, 2);
    array[0] = array;
    EXPECT_EQ(at(*array[0].getArray(), 0), 1);

    array[3000] = array;
    EXPECT_EQ(array[3000].getArray()->length(), 3001U);
    EXPECT_FALSE(array[3000].getArray()->isDefined(3000));

    (*array[0].getArray())[1] = array;
    (*array[0].getArray())[2000] = array;
    const Array& inner = *array[0].getArray();
    EXPECT_EQ(inner.length(), 2001U);
    EXPECT_EQ(at(*inner[1].getArray()->get(0)->getArray(), 1), 2);

    Variant value(array);
    *value.getArray() += value;
    *array[0].getArray() += Variant(array);
    array += array[0];
    EXPECT_EQ(array.length(), 3002U);
} // What holds itself would leak.

TEST(ArrayWithinItself, IsNoticedHoweverTheElementWasReached) {
    Array array;
    Variant& element = array[0];
    element = Array(1024);
    Array& inner = *element.getArray();
    inner[0] = array;
    String text;
    array.toString(text);
    EXPECT_TRUE(array == array);
    inner[1] = array;
    EXPECT_EQ(inner[1].getArray()->get(0)->getArray()->length(), 1024U);
    inner += array;
    EXPECT_EQ(inner[1024].getArray()->length(), 1024U);
    inner = array;
    EXPECT_EQ(inner.length(), 1U);
    inner = std::move(array);
    EXPECT_EQ(array.length(), 1U);
    array = std::move(*array[0].getArray());
    EXPECT_EQ(array[0].getArray()->get(0)->getArray()->length(), 1025U);

    Array* deepest = &array;
    for (int depth = 0; depth < 500; ++depth) {
        (*deepest)[0] = Array(1);
        deepest = (*deepest)[0].getArray();
    }
    (*deepest)[0] = array;
    EXPECT_EQ((*deepest)[0].getArray()->length(), 1U);
}

TEST(ArrayNesting, EndsInALoopHoweverDeep) {
    Array array;
    for (int depth = 0; depth < 100000; ++depth) {
        Array outer;
        outer[depth % 2 ? 2000 : 0] = array;
        array = outer;
    }
    String text;
    array.toString(text);
    EXPECT_NE(text.find("[too many elements]"), -1);
    EXPECT_TRUE(array == Array(array));
    array[0] = 1;
    array.setLength(1);

    Array grown;
    for (auto [depth, inner] = std::pair(0, &grown); depth < 20000; ++depth) {
        (*inner)[0] = Array(1);
        inner = (*inner)[0].getArray();
    }
    Array keeper;
    keeper[0] = grown;
}

TEST(ArrayShortage, LeavesArraysWholeOrAsTheyWere) {
    Array source = numbers(1, 9);
    source[1100] = "sparse";
    source[2] = Array(3);
    Testing::forEachFailure([&source] {
        Array array(source);
        const auto expectOldOrThrow = [&array](auto change) {
            const Array before(array);
            try {
                change(array);
            } catch (const OutOfMemory&) {
                EXPECT_EQ(array.length(), before.length());
                EXPECT_EQ(at(array, 8), at(before, 8));
                throw;
            }
        };
        expectOldOrThrow([](Array& a) { a += String("appended"); });
        expectOldOrThrow([](Array& a) { a.insertAt(4, 1020); });
        expectOldOrThrow([](Array& a) { a += a; });
        expectOldOrThrow([](Array& a) { a.removeAt(1, 1030); });
        expectOldOrThrow([](Array& a) { a.setLength(3); });
        expectOldOrThrow([](Array& a) { a[1] = a; });
        expectOldOrThrow([](Array& a) { a.parse("[1,[2,'three'],,4]", 0); });
    });
}
