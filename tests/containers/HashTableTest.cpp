#include "support/FailingAllocator.h"
#include "support/TextSupport.h"

#include <krcore/containers/HashTable.h>
#include <krcore/containers/THashTable.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <random>
#include <string>
#include <vector>

using namespace KrCore;

namespace {

/// The table as plainly as can be: chains alone, everything by walking them. Keys are ASCII.
class PlainTable {
public:
    struct Item {
        std::string key;
        long long value;
    };

    Item* find(const std::string& key, bool ignoreCase) {
        if (buckets_.empty()) return nullptr;
        for (Item& item : buckets_[hash(key) % buckets_.size()]) {
            if (item.key == key || (ignoreCase && folded(item.key) == folded(key))) return &item;
        }
        return nullptr;
    }
    void set(const std::string& key, long long value, bool ignoreCase) {
        if (Item* item = find(key, ignoreCase)) {
            *item = {ignoreCase ? key : item->key, value};
            return;
        }
        if (buckets_.empty()) {
            buckets_.resize(16);
        } else if (count_ * 100 / buckets_.size() > 50) {
            rehash(buckets_.size() * 2);
        }
        buckets_[hash(key) % buckets_.size()].push_front({key, value});
        ++count_;
    }
    template <class Test>
    void removeIf(Test test) {
        const std::size_t before = count_;
        for (auto& bucket : buckets_) {
            count_ -= bucket.remove_if(test);
        }
        if (count_ == before) return;
        while (buckets_.size() > 16 && count_ > 0 && count_ * 100 / buckets_.size() < 30) {
            rehash(buckets_.size() / 2);
        }
        if (count_ == 0) buckets_.clear();
    }
    long long remove(const std::string& key, bool ignoreCase) {
        const Item* doomed = find(key, ignoreCase);
        const long long value = doomed ? doomed->value : 0;
        if (doomed) removeIf([doomed](const Item& item) { return &item == doomed; });
        return value;
    }
    std::string listing() const {
        std::string text;
        for (const auto& bucket : buckets_) {
            for (const Item& item : bucket) {
                text += item.key + '=' + std::to_string(item.value) + ' ';
            }
        }
        return text;
    }

private:
    static std::string folded(std::string key) {
        for (char& ch : key) {
            if (ch >= 'a' && ch <= 'z') ch = static_cast<char>(ch - 32);
        }
        return key;
    }
    static unsigned int hash(const std::string& key) {
        unsigned int result = 0;
        for (const char ch : folded(key.substr(0, 5))) {
            result = result * 2 + static_cast<unsigned char>(ch);
        }
        return result;
    }
    void rehash(std::size_t size) {
        std::vector<std::list<Item>> old(size);
        old.swap(buckets_);
        for (auto& bucket : old) {
            for (Item& item : bucket) {
                buckets_[hash(item.key) % size].push_front(item);
            }
        }
    }

    std::vector<std::list<Item>> buckets_;
    std::size_t count_ = 0;
};

std::string listing(const HashTable& table) {
    TSimpleArray<const String> keys;
    SimpleArray values;
    table.getKeys(keys);
    table.getData(values);
    std::string text;
    for (int index = 0; index < keys.length(); ++index) {
        for (const unsigned short unit : *keys[index]) {
            text += static_cast<char>(unit);
        }
        text += '=' + std::to_string(values[index]) + ' ';
    }
    return text;
}

/// Short keys of few letters in both cases, many with a common beginning.
std::string randomKey(std::mt19937& random) {
    std::string key = random() % 2 ? "Common" : "";
    for (auto rest = random() % 5; rest > 0; --rest) {
        key += "aAbB"[random() % 4];
    }
    return key;
}

/// One of the operations on both tables.
void changeBoth(HashTable& table, PlainTable& plain, std::mt19937& random) {
    const std::string text = randomKey(random);
    const String key(text.c_str());
    const bool ignoreCase = random() % 3 == 0;
    const auto value = static_cast<long long>(random() % 50 + 1);
    switch (random() % 16) {
    case 0:
        table.removeData(value);
        plain.removeIf([value](const PlainTable::Item& item) { return item.value == value; });
        break;
    case 1:
        table.forEach(
            [](const String&, long long* held, long long data) { return *held % 9 != data; },
            value % 9);
        plain.removeIf(
            [value](const PlainTable::Item& item) { return item.value % 9 == value % 9; });
        break;
    case 2:
    case 3:
    case 4:
    case 5:
        EXPECT_EQ(table.remove(key, ignoreCase), plain.remove(text, ignoreCase));
        break;
    default:
        EXPECT_TRUE(table.set(key, value, ignoreCase) == key);
        plain.set(text, value, ignoreCase);
    }
}

} // namespace

TEST(HashTable, ChainsByItsShortHash) {
    HashTable table;
    for (const char* key : {"b", "PropertyA", "a", "propertyb", "Proper"}) {
        table.set(key, 1);
    }
    // "PROPE" is 2481 and "A" is 65, both of bucket 1; "B" is 66, of bucket 2.
    EXPECT_EQ(listing(table), "Proper=1 propertyb=1 a=1 PropertyA=1 b=1 ");
}

TEST(HashTable, DoublesAtTheTenthItemAndReleasesItsBucketsWithTheLast) {
    // "1" is 49 and "A" is 65: one chain of 16 buckets, two of 32.
    HashTable table;
    for (const char* key : {"1", "A", "c", "d", "e", "f", "g", "h", "i"}) {
        table.set(key, 1);
    }
    EXPECT_EQ(listing(table).substr(0, 8), "A=1 1=1 ");
    HashTable other(table);
    other.remove("1");
    other.set("1", 1);
    EXPECT_NE(table, other) << "the order within a chain counts";
    other.remove("A");
    other.set("A", 1);
    EXPECT_EQ(table, other);

    other.set("j", 1);
    other.remove("j");
    EXPECT_NE(table, other) << "the number of buckets counts";
    other.forEach([](const String&, long long*, long long) { return false; }, 0);
    EXPECT_EQ(other.length(), 0);
    EXPECT_EQ(other, HashTable());
    EXPECT_EQ(other.remove("A", true), 0);
    EXPECT_EQ(other.find("A", true), 0);
}

TEST(HashTable, LetsTheLetterCaseOfTheLastKeyWin) {
    HashTable exact;
    exact.set("Width", 1, false);
    exact.set("width", 2, false);
    EXPECT_EQ(exact.length(), 2);
    EXPECT_EQ(exact.find("WIDTH", true), 2) << "the first in the chain, not the exact one";
    EXPECT_EQ(exact.find("Width", true), 2);
    // The first match takes the name of the exact one behind it.
    exact.set("Width", 3, true);
    EXPECT_EQ(listing(exact), "Width=3 Width=1 ");
    EXPECT_EQ(exact.remove("Width"), 3);
    EXPECT_EQ(exact["Width"], 1);

    HashTable folding;
    folding.set("Width", 1, true);
    EXPECT_TRUE(folding.set("width", 2, true) == "width");
    EXPECT_EQ(listing(folding), "width=2 ");
}

TEST(HashTable, FoldsAllOfUnicodeAndReadsOnBehindZeroUnits) {
    HashTable table;
    for (int filler = 0; filler < 20; filler += 10) { // By the chain alone, then by the index.
        for (int index = 0; index < filler; ++index) {
            table.set(String(u"filler").operator+(static_cast<char>('a' + index)), 1);
        }
        table.set(Testing::text(u"stra\u00dfe \u00e9t\u00e9"), 1);
        table.set(Testing::text(u"ab\0cd"), 2);
        table.set(Testing::text(u"ab\0ef"), 3);
        EXPECT_EQ(table.find(Testing::text(u"STRA\u00dfE \u00c9T\u00c9"), true), 1);
        EXPECT_EQ(table.find(Testing::text(u"STRA\u00dfE \u00c9T\u00c9"), false), 0);
        EXPECT_EQ(table.find(Testing::text(u"AB\0EF"), true), 3);
        EXPECT_FALSE(table.hasKey("ab", true));
    }
}

TEST(HashTable, KeepsTheOrderOfPlainChains) {
    std::mt19937 random(20240917);
    for (int round = 0; round < 20; ++round) {
        HashTable table;
        PlainTable plain;
        for (int step = 0; step < 400; ++step) {
            if (step % 50 == 49) { // Go on with an unshared copy.
                const HashTable former(table);
                changeBoth(table, plain, random);
            }
            changeBoth(table, plain, random);
            const std::string text = randomKey(random);
            for (const bool ignoreCase : {false, true}) {
                const PlainTable::Item* item = plain.find(text, ignoreCase);
                ASSERT_EQ(table.find(text.c_str(), ignoreCase), item ? item->value : 0) << text;
            }
            ASSERT_EQ(listing(table), plain.listing()) << "round " << round << ", step " << step;
        }
    }
}

TEST(HashTable, CopiesAreValues) {
    HashTable original;
    original.set("a", 1);
    HashTable copy(original);
    copy.forEach(
        [](const String&, long long* value, long long) {
            *value = 2;
            return true;
        },
        0);
    EXPECT_EQ(original["a"], 1);
    original.erase();
    EXPECT_EQ(copy["a"], 2);
    copy += copy;
    EXPECT_EQ(copy.length(), 1);
    TSimpleArray<const String> keys;
    copy.getKeys(keys);
    EXPECT_EQ(copy.remove(*keys[0]), 2);
}

TEST(HashTable, LetsTheVisitorChangeTheTable) {
    enum Deed { RemoveAll, AddMany, CopyAndErase, WalkInside, Assign };
    static HashTable* table;
    for (const Deed deed : {RemoveAll, AddMany, CopyAndErase, WalkInside, Assign}) {
        SCOPED_TRACE(deed);
        HashTable walked;
        table = &walked;
        for (char letter = 'a'; letter <= 'z'; ++letter) {
            walked.set(String() + letter, letter);
        }
        walked.forEach(
            [](const String& key, long long* value, long long data) {
                const String own(key);
                const auto drop = [](const String&, long long*, long long) { return false; };
                switch (static_cast<Deed>(data)) {
                case RemoveAll:
                    table->forEach(
                        [](const String&, long long* held, long long) { return *held == 0; }, 0);
                    break;
                case AddMany:
                    for (char letter = 'A'; letter <= 'Z'; ++letter) {
                        table->set(own + letter, 1);
                    }
                    return own == "z";
                case CopyAndErase: {
                    HashTable copy(*table);
                    table->erase();
                    copy.forEach(drop, 0);
                    break;
                }
                case WalkInside:
                    table->forEach(drop, 0);
                    return false;
                case Assign:
                    *table = HashTable();
                    break;
                }
                *value = 0; // The item is still there.
                return true;
            },
            deed);
        EXPECT_EQ(walked.length(), deed == AddMany ? 26 * 26 + 1 : 0);
        walked.set("again", 1);
        EXPECT_EQ(walked["again"], 1);
    }
}

TEST(HashTable, SurvivesEveryShortage) {
    Testing::forEachFailure([] {
        HashTable table;
        for (int index = 0; index < 20; ++index) {
            const String key = String("key") + static_cast<char>('a' + index);
            try {
                table.set(key, 1);
            } catch (const OutOfMemory&) {
                EXPECT_EQ(table.length(), index) << "half an insertion";
                EXPECT_FALSE(table.hasKey(key));
                throw;
            }
        }
        HashTable copy(table);
        copy.remove("keya");
        table.forEach([](const String&, long long*, long long) { return false; }, 0);
        EXPECT_EQ(table.length() + copy.length(), 19);
    });
}

TEST(THashTable, HoldsPointers) {
    int one = 1, two = 2;
    THashTable<int> table;
    table.set("one", &one);
    table.set("two", &two);
    EXPECT_EQ(*table["two"], 2);
    EXPECT_TRUE(*table.findKey(&one) == "one");
    const auto isOne = [](const String&, const int* item) { return *item == 1; };
    table.forEach(isOne);
    EXPECT_EQ(table.find("TWO", true), nullptr);
    EXPECT_EQ(table.remove("ONE", true), &one);
}
