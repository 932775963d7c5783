#include "support/Threads.h"

#include <krcore/text/String.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>

#include <gtest/gtest.h>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(ErrorThreads, ShareCopiesOfOneError) {
    Error shared(24, "f", true);
    inThreads(4, [&](int) {
        for (int round = 0; round < 200; ++round) {
            Error copy = shared;
            EXPECT_NE(copy.getErrorData(), nullptr);
            EXPECT_EQ(copy.getErrorData(), copy.getErrorData());
            copy.push(52, nullptr);
            EXPECT_EQ(copy.getError()->getNext()->getText(), "f is not a function");
            Error final;
            final.push(-28, nullptr);
            const Error finalCopy = final;
            EXPECT_EQ(finalCopy.getCode(), -28);
        }
    });
    EXPECT_EQ(shared.getCode(), 24);
}

TEST(ErrorThreads, DefineAndAskAtTheSameTime) {
    inThreads(4, [](int index) {
        for (int round = 0; round < 200; ++round) {
            const int code = 400 + (index + round) % 3;
            Error::defineError(code, "defined", "ThreadError");
            String text;
            KrGetErrorMsg(code, text);
            EXPECT_TRUE(text == "defined" || text == "Error #%1");
            Error::isErrorClass("ThreadError");
            Error::undefineError(code);
        }
    });
    EXPECT_FALSE(Error::isErrorClass("ThreadError"));
}

} // namespace
