#include "support/Threads.h"

#include <krcore/containers/Array.h>
#include <krcore/containers/HashTable.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

#include <gtest/gtest.h>

using namespace KrCore;

TEST(SharedContainers, StayTheirOwnersInSeveralThreads) {
    SimpleArray words;
    words.append(7);
    HashTable table;
    Array array;
    for (char letter = 'a'; letter <= 'p'; ++letter) {
        table.set(String("key") + letter, letter);
        array += letter - 'a';
    }
    array[2] = Array(3);
    array[2].getArray()->safeGet(1) = 1;
    Testing::inThreads(4, [&](int thread) {
        for (int round = 0; round < 500; ++round) {
            SimpleArray ownWords(words);
            ownWords.append(thread);
            EXPECT_EQ(ownWords[1], thread);
            HashTable ownTable(table);
            EXPECT_EQ(ownTable.find("KEYB", true), 'b');
            if (round % 2) ownTable.set("keyb", thread);
            EXPECT_EQ(ownTable["keyb"], round % 2 ? thread : 'b');
            Array ownArray(array);
            ownArray[1] = thread;
            ownArray[2].getArray()->safeGet(0) = ownArray;
            EXPECT_EQ(ownArray[1].getInteger(), thread);
            EXPECT_TRUE(ownArray[100].getString() == "undefined");
        }
    });
    EXPECT_EQ(table["keyb"], 'b');
    EXPECT_EQ(array[1].getInteger(), 1);
}
