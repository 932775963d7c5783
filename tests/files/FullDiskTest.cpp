// What happens when the medium takes no more. Only where a program can shrink its own disk.

#include "files/TempFolder.h"

#include <krcore/files/File.h>

#include <csignal>
#include <sys/resource.h>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

/// No file grows beyond this many bytes for a while.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t byteCount) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limit{byteCount, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk() { setrlimit(RLIMIT_FSIZE, &former_); }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit former_{};
};

TEST(FullDisk, AWritingThatFailedCanBeTriedAgain) {
    const TempFolder folder;
    File file(folder / "f");
    ASSERT_EQ(file.open("w", 0, 0), 0);
    ASSERT_EQ(file.write("before", true), 0);
    const long long position = file.tell();
    String text;
    text.setup('x', 100000);
    {
        const SmallDisk disk(40000);
        EXPECT_EQ(file.write(text, true), ErrorCode::IOError);
        EXPECT_EQ(file.tell(), position) << "nothing of it is written";
        EXPECT_EQ(file.write("small", true), 0);
        EXPECT_EQ(file.flush(), 0);
    }
    EXPECT_EQ(file.write(text, false), 0);
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(bytesOf(folder / "f"), "before\nsmall\n" + std::string(100000, 'x'));
}

TEST(FullDisk, AFileKeepsItsLength) {
    const TempFolder folder;
    File file(folder.write("f", "0123456789"));
    ASSERT_EQ(file.open("e", 0, 0), 0);
    ASSERT_EQ(file.seek(5, 0), 0);
    String text;
    text.setup('x', 100000);
    const SmallDisk disk(40000);
    EXPECT_EQ(file.write(text, false), ErrorCode::IOError);
    EXPECT_EQ(file.tell(), 5);
    EXPECT_EQ(bytesOf(folder / "f").size(), 10U);
}

TEST(FullDisk, WhatWaitsIsWrittenLater) {
    const TempFolder folder;
    File file(folder / "f");
    ASSERT_EQ(file.open("w", 0, 0), 0);
    const std::string line(99, 'y');
    {
        const SmallDisk disk(1000);
        for (int count = 0; count < 20; ++count)
            ASSERT_EQ(file.write(line.c_str(), true), 0);
        EXPECT_EQ(file.flush(), ErrorCode::IOError);
        EXPECT_EQ(file.seek(0, 0), ErrorCode::IOError) << "nothing is thrown away";
    }
    EXPECT_EQ(file.flush(), 0);
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(bytesOf(folder / "f").size(), 2000U);

    File lost(folder / "g");
    ASSERT_EQ(lost.open("w", 0, 0), 0);
    ASSERT_EQ(lost.write("text", false), 0);
    const SmallDisk disk(1);
    EXPECT_EQ(lost.close(), ErrorCode::IOError);
    EXPECT_FALSE(lost.isOpen());
}

} // namespace
