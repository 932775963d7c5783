#include "EncoderTools.h"
#include "support/Threads.h"

#include <atomic>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(EncoderThreads, FindOneEncoderForEachNameAndShareIt) {
    constexpr int threadCount = 4;
    static const char* const names[] = {"CP1250", "CP1253", "CP1254", "CP932", "CP936", "ms-cyrl"};
    std::atomic<const Encoder*> found[std::size(names)] = {};
    inThreads(threadCount, [&](int index) {
        for (int round = 0; round < 20; ++round) {
            for (std::size_t i = 0; i < std::size(names); ++i) {
                const Encoder* encoder = Encoder::get(names[i]);
                const Encoder* first = nullptr;
                found[i].compare_exchange_strong(first, encoder);
                EXPECT_EQ(found[i].load(), encoder);
                EXPECT_EQ(decode(*encoder, "plain").output, u"plain");
            }
            EXPECT_EQ(decode(*Encoder::get("CP932"), "\x93\xFA").output, u"\u65E5");
            EXPECT_EQ(encode(*Encoder::get("CP932"), u"\u65E5").output, "\x93\xFA");
            const std::string alias = "thread-" + std::to_string(index);
            EXPECT_TRUE(Encoder::addAlias("utf8", alias.c_str()));
            EXPECT_EQ(Encoder::get(alias.c_str()), &Encoder::getUtf8());
        }
    });
}

TEST(EncoderThreads, HaveADefaultOfTheirOwn) {
    Encoder::setDefault(Encoder::getAscii());
    inThreads(2, [](int) {
        EXPECT_EQ(&Encoder::getDefault(), &Encoder::getSystem());
        Encoder::setDefault(Encoder::getBinary());
        EXPECT_EQ(&Encoder::getDefault(), &Encoder::getBinary());
    });
    EXPECT_EQ(&Encoder::getDefault(), &Encoder::getAscii());
    Encoder::setDefault(Encoder::getSystem());
}

} // namespace
