#include "EncoderTools.h"
#include "support/FailingAllocator.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/Thread.h>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

/// An encoder of a host, which answers for names that begin with "HOST:".
class HostEncoder : public Encoder {
public:
    HostEncoder(const char* names, const Encoder* answer)
        : Encoder(7), names_(names), answer_(answer) {}

    void getName(String& name) const override { name = names_; }
    const Encoder* find(const String& name) const override {
        asked = std::string(name.begin(), name.end());
        return name.ncmp("HOST:", 5) == 0 ? answer_ : nullptr;
    }
    int getUnicodeLength(const char*, int count, int& consumed) const override {
        return consumed = count;
    }
    int getMBCSLength(const unsigned short*, int count, int& consumed) const override {
        return consumed = count;
    }
    int toUnicode(const char*, int&, unsigned short*, int&, bool) const override {
        return ErrorCode::CharacterConversion;
    }
    int toMBCS(const unsigned short*, int&, char*, int&, bool) const override {
        return ErrorCode::CharacterConversion;
    }

    mutable std::string asked;

private:
    const char* names_;
    const Encoder* answer_;
};

TEST(EncoderRegistry, FindsBuiltInEncodersByNormalisedName) {
    const struct {
        const char* name;
        const char* canonical;
        int mapping;
    } rows[] = {
        {"us-ascii", "US-ASCII", 0}, {"ISO_646.irv:1991", "US-ASCII", 0},
        {"binary", "BINARY", 0},     {"windows_1252", "CP1252", 1},
        {"latin1", "ISO-8859-1", 1}, {"x-mac_roman", "MACINTOSH", 1},
        {"utf-16", "UCS2", 0},       {"ISO-10646-UTF16BE", "UCS2BE", 0},
        {"ucs-2le", "UCS2LE", 0},    {"UTF32", "UCS4", 0},
        {"utf-32be", "UCS4BE", 0},   {"utf32le", "UCS4LE", 0},
        {"utf_8", "UTF-8", 0},       {"x-utf-8", "UTF-8", 0},
        {"X_Utf8", "UTF-8", 0},      {"unicode-2-0-utf-8", "UTF-8", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string names = namesOf(named(row.name));
        EXPECT_EQ(names.substr(0, names.find(',')), row.canonical);
        EXPECT_EQ(named(row.name).getMapping(), row.mapping);
    }
    EXPECT_EQ(Encoder::get(String("Utf8").wstr()), &Encoder::getUtf8());
    EXPECT_EQ(namesOf(Encoder::getUtf8()),
              "UTF-8,UTF8,UNICODE-1-1-UTF-8,UNICODE-2-0-UTF-8,UNICODE-2-0-UTF-8");
}

TEST(EncoderRegistry, FindsNothingForNamesThatNobodyKnows) {
    const char* names[] = {
        "",        "nobody",       "X-",         "CP", "CP12x",          "WINDOWS-",
        "CP99999", "CP4294968547", "UTF8,UTF-8", ",",  "MS-CYRL,CP1251", "X-X-UTF8",
        "KOI-8U"};
    for (const char* name : names)
        EXPECT_EQ(Encoder::get(name), nullptr) << name;
    EXPECT_EQ(Encoder::get(static_cast<const char*>(nullptr)), nullptr);
}

TEST(EncoderRegistry, MakesOneEncoderForACodePage) {
    const Encoder& cyrillic = named("CP1251");
    EXPECT_EQ(namesOf(cyrillic), "MS-CYRL,CP1251,WINDOWS-1251");
    EXPECT_EQ(cyrillic.getMapping(), 0);
    for (const char* name : {"windows-1251", "CP01251", "WINDOWS-0001251", "ms_cyrl", "x-cp1251"})
        EXPECT_EQ(&named(name), &cyrillic) << name;
    EXPECT_EQ(namesOf(named("WINDOWS-1250")), "CP1250,WINDOWS-1250");
}

TEST(EncoderRegistry, KeepsTheOddRowsOfTheCodePageTable) {
    EXPECT_EQ(namesOf(named("ISO-8859-3")),
              "ISO-8859-3,ISO-8859-3,ISO-8859-3:1988,ISO-IR-109,LATIN3,CP28591,WINDOWS-28591");
    const Encoder& page850 = named("IBM850");
    EXPECT_EQ(namesOf(page850), "IBM850,CP850,WINDOWS-850");
    const Encoder& page437 = named("CP437");
    EXPECT_EQ(namesOf(page437), "IBM850,CP437,WINDOWS-437");
    EXPECT_EQ(&named("IBM850"), &page437);
    EXPECT_EQ(&named("CP850"), &page850);
    EXPECT_EQ(page850.getMapping(), 1);
    const Encoder& builtIn = named("MACINTOSH");
    const Encoder& page10000 = named("CP10000");
    EXPECT_NE(&page10000, &builtIn);
    EXPECT_EQ(&named("MACINTOSH"), &page10000);
    Encoder::add(builtIn); // As the other tests know it.
    EXPECT_EQ(&named("MAC-ROMAN"), &builtIn);
    EXPECT_EQ(&named("CP10000"), &page10000);
}

TEST(EncoderRegistry, EntersEncodersAndAliasesOfTheHost) {
    static const HostEncoder host("Test_Set, x-test-alias,,CP47", nullptr);
    Encoder::add(host);
    Encoder::add(host);
    for (const char* name : {"TEST-SET", "test_alias", "CP47"})
        EXPECT_EQ(&named(name), &host) << name;
    EXPECT_TRUE(Encoder::addAlias(host, "x_third"));
    EXPECT_EQ(&named("THIRD"), &host);
    EXPECT_TRUE(Encoder::addAlias("utf8", "My_Utf"));
    EXPECT_EQ(&named("my-utf"), &Encoder::getUtf8());
    EXPECT_FALSE(Encoder::addAlias("nobody", "somebody"));
    EXPECT_FALSE(Encoder::addAlias(host, nullptr));
    EXPECT_FALSE(Encoder::addAlias(host, ""));
    EXPECT_FALSE(Encoder::addAlias("utf8", nullptr));
    static const HostEncoder unregistered("Late-Set", nullptr);
    EXPECT_TRUE(Encoder::addAlias(unregistered, "later"));
    EXPECT_EQ(&named("late_set"), &unregistered);
}

TEST(EncoderRegistry, AsksRegisteredEncodersForNamesItDoesNotKnow) {
    static const HostEncoder answer("Answer-Set", nullptr);
    static const HostEncoder family("Family-Set", &answer);
    Encoder::add(family);
    EXPECT_EQ(Encoder::get("x-guest_name"), nullptr);
    EXPECT_EQ(family.asked, "GUEST-NAME");
    EXPECT_EQ(Encoder::get("host:one"), &answer);
    EXPECT_EQ(Encoder::get("answer-set"), &answer) << "the answer is registered itself";
    family.asked.clear();
    EXPECT_EQ(Encoder::get("HOST:ONE"), &answer);
    EXPECT_EQ(family.asked, "") << "the name is known now";
}

TEST(EncoderRegistry, HasADefaultEncoderForEachContext) {
    const Encoder& former = Encoder::getDefault();
    EXPECT_EQ(&former, &Encoder::getSystem());
    Encoder::setDefault(Encoder::getAscii());
    EXPECT_EQ(&Encoder::getDefault(), &Encoder::getAscii());
    EXPECT_EQ(&Encoder::getSystem(), &former);
    Encoder::setDefault(former);
}

TEST(EncoderRegistry, StaysAsItWasWhenMemoryIsShort) {
    static const HostEncoder host("Short-Set,Short-Alias", nullptr);
    const struct {
        const char* what;
        void (*run)();
        const char* name;
    } rows[] = {
        {"code page", [] { Encoder::get("CP865"); }, "WINDOWS-865"},
        {"multi-byte page", [] { Encoder::get("CP950"); }, "BIG5"},
        {"host", [] { Encoder::add(host); }, "Short-Alias"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        for (int allowed = 0; allowed < 1000; ++allowed) {
            int blocksBefore = 0, bytesBefore = 0, blocks = 0, bytes = 0;
            Heap::getMemoryStatistics(blocksBefore, bytesBefore);
            bool failed = false;
            try {
                const FailingScope shortOfMemory(allowed, Shortage::Passing);
                row.run();
            } catch (const OutOfMemory&) {
                failed = true;
            }
            Heap::getMemoryStatistics(blocks, bytes);
            if (!failed) break;
            ASSERT_EQ(blocks, blocksBefore) << "request " << allowed;
            ASSERT_EQ(bytes, bytesBefore) << "request " << allowed;
        }
        EXPECT_NE(Encoder::get(row.name), nullptr);
    }
}

} // namespace
