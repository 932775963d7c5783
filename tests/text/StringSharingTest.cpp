// Strings that several threads share.

#include "support/TextSupport.h"
#include "support/Threads.h"

#include <krcore/text/Encoder.h>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(StringSharing, LetsThreadsCopyWriteAndDropOneBuffer) {
    const String shared("the text that all threads share");
    inThreads(4, [&shared](int index) {
        for (int round = 0; round < 2000; ++round) {
            String own(shared);
            const String second(own);
            own.append(static_cast<unsigned short>('0' + index));
            own.set(0, 'T');
            EXPECT_EQ(own.length(), 32);
            EXPECT_EQ(second, "the text that all threads share");
            EXPECT_TRUE(String(String::emptyString()).isEmpty());
        }
    });
    EXPECT_EQ(shared, "the text that all threads share");
}

TEST(StringSharing, GivesEachThreadItsOwnEncodedText) {
    inThreads(4, [](int index) {
        String text;
        text.setup(static_cast<unsigned short>('a' + index), index + 1);
        const char* bytes = text.encode(&Encoder::getUtf8());
        for (int round = 0; round < 2000; ++round) {
            EXPECT_EQ(text.encode(&Encoder::getUtf8()), bytes);
            EXPECT_EQ(String::getEncodedLength(), index + 1);
            EXPECT_EQ(bytes[0], 'a' + index);
        }
    });
}

} // namespace
