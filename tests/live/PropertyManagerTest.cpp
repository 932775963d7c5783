#include "live/LiveFixture.h"
#include "support/FailingAllocator.h"

#include <algorithm>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

constexpr int english = 0x010000;
constexpr int french = 0x020000;
constexpr int relaxed = RequestFlag::IgnoreCase;

constexpr LivePropertyInfo rows[] = {{"", 100, 5, "Thing"},
                                     {"width", 1, 2, "number"},
                                     {"area", 2, 1, nullptr},
                                     {"resize", 3, 5, nullptr},
                                     {"scale", 4, 6, nullptr},
                                     {"hidden", 5, 2 | PropertyFlag::Hidden, nullptr},
                                     {"internal", 6, 2 | PropertyFlag::Internal, nullptr},
                                     {"size", 7, 2 | english, nullptr},
                                     {"size", 8, 1 | french, nullptr},
                                     {"grosse", 8, 1 | english, nullptr}, // a second name of ID 8
                                     {"\xC4RA", 9, 2, nullptr},
                                     {nullptr, 0, 0, nullptr}};

/// Every rule that both kinds of tables share is tested on both.
class PropertyManagerTest : public testing::TestWithParam<bool> {
protected:
    PropertyManagerTest() : manager(rows) {
        if (GetParam()) manager.registerProperty("extra", 50, 2, "a descriptor");
    }

    LivePropertyManager manager;
    int id = -1;
    InfoType kind = InfoType::Hidden;
};

INSTANTIATE_TEST_SUITE_P(StaticAndDynamic, PropertyManagerTest, testing::Bool());

TEST_P(PropertyManagerTest, FindsNames) {
    const struct {
        String name;
        int flags, id;
        InfoType kind;
    } cases[] = {
        {"width", english, 1, InfoType::ReadWrite},
        {"Width", english, 0, InfoType::Unknown},
        {"WIDTH", relaxed, 1, InfoType::ReadWrite},
        {"WIDTH", relaxed | english, 0, InfoType::Unknown}, // not exactly that language
        {"width", 0, 1, InfoType::ReadWrite},
        {"widt", english, 0, InfoType::Unknown},
        {"widths", english, 0, InfoType::Unknown},
        {"resize", english, 3, InfoType::Method},
        {"", english, 0, InfoType::Unknown},
        {"hidden", english, 5, InfoType::ReadWrite},
        {String(u"\u00C4RA"), english, 9, InfoType::ReadWrite},
        {String(u"\u00E4ra"), relaxed, 9, InfoType::ReadWrite},
        {String(u"width\0", 6), english, 0, InfoType::Unknown},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(narrow(row.name));
        EXPECT_EQ(manager.getIDForName(row.name, id, kind, row.flags), row.id ? 0 : 2);
        EXPECT_EQ(id, row.id);
        EXPECT_EQ(kind, row.kind);
    }
}

TEST_P(PropertyManagerTest, ShowsRowsToTheirLanguagesOnly) {
    EXPECT_EQ(manager.getIDForName("grosse", id, kind, french), 2);
    EXPECT_EQ(manager.getIDForName("grosse", id, kind, english | french), 0);
    EXPECT_EQ(manager.getType(7), InfoType::ReadWrite); // whoever sees it
    EXPECT_EQ(manager.getType(77), InfoType::Unknown);
}

TEST_P(PropertyManagerTest, ListsWhatIsAskedFor) {
    const struct {
        int request;
        std::vector<int> ids;
    } cases[] = {
        {allProperties | english, {1, 2, 4, 7, 9}},
        {RequestFlag::Methods | english, {3, 4, 100}}, // constructors are listed, callables always
        {RequestFlag::ReadWrite | french, {1, 4, 9}},
        {RequestFlag::ReadWrite | RequestFlag::WithHidden | english, {1, 4, 5, 7, 9}},
        {RequestFlag::ReadWrite | RequestFlag::WithInternal | english, {1, 4, 6, 7, 9}},
    };
    for (const auto& row : cases) {
        SimpleArray ids;
        EXPECT_EQ(manager.enumerate(ids, row.request), 0);
        std::vector<int> found(ids.begin(), ids.end());
        std::erase(found, 50); // "extra"
        std::erase(found, 8);  // whose languages depend on the kind of table, see below
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, row.ids);
    }
}

TEST_P(PropertyManagerTest, MakesRecordsOfVisibleRows) {
    const auto byName = [&](const char* name, int flags) {
        return InterfacePtr<const ServiceInfo>::adopt(manager.getServiceInfo(name, flags));
    };
    const auto byID = [&](int wanted, int flags) {
        return InterfacePtr<const ServiceInfo>::adopt(manager.getServiceInfo(wanted, flags));
    };
    String name;
    EXPECT_FALSE(byName("SIZE", relaxed)); // of other languages
    const auto width = byName("WIDTH", relaxed);
    ASSERT_TRUE(width);
    EXPECT_TRUE(width->getName(name));
    EXPECT_EQ(narrow(name), "width");
    EXPECT_EQ(width->getID(), 1);
    EXPECT_EQ(width->getType(), InfoType::ReadWrite);
    EXPECT_EQ(width->getLanguage(), english);
    EXPECT_EQ(width->getTypeInfo().getDataType(), VariantType::Number);
    EXPECT_EQ(&width->getTypeInfo2(), &width->getTypeInfo());
    const auto grosse = byName("grosse", english | french);
    ASSERT_TRUE(grosse);
    EXPECT_EQ(grosse->getLanguage(), english);
    EXPECT_FALSE(byName("grosse", french));
    EXPECT_FALSE(byName("", english));
    EXPECT_FALSE(byID(7, french));
    EXPECT_FALSE(byID(77, english));
    EXPECT_EQ(byID(3, english)->getType(), InfoType::Method);

    const auto constructor =
        InterfacePtr<const ServiceInfo>::adopt(manager.getConstructor(english));
    ASSERT_TRUE(constructor);
    EXPECT_EQ(constructor->getID(), 0);
    EXPECT_EQ(constructor->getType(), InfoType::Method);
    EXPECT_TRUE(constructor->getName(name));
    EXPECT_EQ(narrow(name), "Thing");
    EXPECT_EQ(LivePropertyManager().getConstructor(english), nullptr);
}

TEST_P(PropertyManagerTest, PassesOverSpellingsThatTheLanguageDoesNotSee) {
    constexpr LivePropertyInfo spellings[] = {{"Depth", 30, 2 | french, nullptr},
                                              {"depth", 31, 2, nullptr},
                                              {"DEPTH", 32, 2, nullptr},
                                              {nullptr, 0, 0, nullptr}};
    LivePropertyManager fixed(spellings), growing;
    growing.registerProperties(spellings);
    LivePropertyManager& tested = GetParam() ? growing : fixed;
    for (const char* name : {"Depth", "DePtH"}) {
        EXPECT_EQ(tested.getIDForName(name, id, kind, relaxed), 0);
        EXPECT_NE(id, 30);
    }
}

TEST(PropertyManagerRecords, LeaveOutAnIDWhoseNameMovedOn) {
    LivePropertyManager manager;
    manager.registerProperty("one", 7, 2, nullptr);
    manager.registerProperty("one", 8, 2, nullptr);
    EXPECT_EQ(manager.getServiceInfo(7, english), nullptr);
}

TEST(StaticPropertyManager, LetsTheFirstRowOfAnIDDecide) {
    LivePropertyManager manager(rows);
    int id = 0;
    InfoType kind = InfoType::Unknown;
    EXPECT_EQ(manager.getIDForName("size", id, kind, french), 0); // passes the English row over
    EXPECT_EQ(id, 8);
    String name = "before";
    EXPECT_EQ(manager.getNameForID(7, name, french), 2);
    EXPECT_TRUE(name.isEmpty());
    EXPECT_EQ(manager.getNameForID(8, name, english), 2); // though "grosse" would be visible
    EXPECT_EQ(manager.getNameForID(8, name, french), 0);
    EXPECT_TRUE(name == "size");
    SimpleArray ids;
    LivePropertyManager().enumerate(ids, -1);
    LivePropertyManager(nullptr).enumerate(ids, -1);
    EXPECT_EQ(ids.length(), 0);
}

TEST(DynamicPropertyManager, MovesANameToItsNewIDAndKeepsTheOldIDKnown) {
    LivePropertyManager manager;
    manager.registerProperty("one", 7, 2, "first");
    manager.registerProperty("alias", 7, 2, nullptr);
    manager.registerProperty("one", -8, 5, "second");
    int id = 0;
    InfoType kind = InfoType::Unknown;
    EXPECT_EQ(manager.getIDForName("one", id, kind, 0), 0);
    EXPECT_EQ(id, -8);
    EXPECT_EQ(kind, InfoType::Method);
    EXPECT_EQ(manager.getType(7), InfoType::ReadWrite);
    String name;
    EXPECT_EQ(manager.getNameForID(7, name, 0), 0);
    EXPECT_TRUE(name == "alias");
    manager.registerProperty("alias", -8, 5, nullptr);
    EXPECT_EQ(manager.getNameForID(7, name, 0), 2);
    EXPECT_EQ(manager.getNameForID(-8, name, 0), 0);
    EXPECT_TRUE(name == "one");
    SimpleArray ids;
    manager.enumerate(ids, -1);
    ASSERT_EQ(ids.length(), 2); // in ascending order
    EXPECT_EQ(ids[0], -8);
    EXPECT_EQ(ids[1], 7);
}

TEST(DynamicPropertyManager, AddsLanguagesToAKnownID) {
    LivePropertyManager manager;
    manager.registerProperty("size", 8, 2 | english, nullptr);
    manager.registerProperty("taille", 8, 5 | french, nullptr); // the kind stays
    String name;
    EXPECT_EQ(manager.getNameForID(8, name, french), 0);
    EXPECT_TRUE(name == "size");
    EXPECT_EQ(manager.getType(8), InfoType::ReadWrite);
    manager.registerProperty("free", 9, 2, nullptr);
    manager.registerProperty("libre", 9, 2 | french, nullptr); // until then all languages saw it
    EXPECT_EQ(manager.getNameForID(9, name, english), 2);
}

TEST(DynamicPropertyManager, KeepsTheTableItWasMadeOver) {
    LivePropertyManager manager(rows);
    const unsigned stamp = manager.getDefinitionStamp();
    constexpr LivePropertyInfo more[] = {{"depth", 20, 2, nullptr}, {nullptr, 0, 0, nullptr}};
    manager.registerProperties(more);
    EXPECT_NE(manager.getDefinitionStamp(), stamp);
    manager.registerProperties(nullptr);
    manager.registerProperty(nullptr, 21, 2, nullptr);
    EXPECT_EQ(manager.getType(20), InfoType::ReadWrite);
    EXPECT_EQ(manager.getType(21), InfoType::Unknown);
    EXPECT_EQ(manager.getType(1), InfoType::ReadWrite);
    EXPECT_FALSE(manager.hasOperators());
    manager.registerProperty(LivePropertyInfo{"~", 0x1FF10100, 5, nullptr});
    EXPECT_TRUE(manager.hasOperators());
}

TEST(LivePropertyManager, RegistersWholeRowsOrNone) {
    LivePropertyManager manager;
    manager.registerProperty("seen by all", 1, 2, nullptr);
    String name;
    for (int allowed = 0; manager.getNameForID(2, name, french) != 0; ++allowed) {
        EXPECT_EQ(manager.getType(2), InfoType::Unknown);
        EXPECT_EQ(manager.getNameForID(1, name, english), 0);
        const FailingScope shortOfMemory(allowed, Shortage::Passing);
        try {
            manager.registerProperty("new", 2, 2, nullptr);
            manager.registerProperty("vu", 1, 2 | french, nullptr);
        } catch (const OutOfMemory&) {
        }
    }
}

TEST(LivePropertyManager, GivesEverythingBackWhenMemoryRunsOut) {
    forEachFailure([] {
        LivePropertyManager manager(rows);
        manager.registerProperty("extra", 50, 2, "a descriptor");
        manager.registerProperty("width", 51, 2, "another descriptor");
        SimpleArray ids;
        manager.enumerate(ids, -1);
        String name;
        manager.getNameForID(1, name, 0);
    });
}

} // namespace
