#include "files/TempFolder.h"
#include "support/FailingAllocator.h"
#include "support/TextSupport.h"

#include <krcore/files/File.h>
#include <krcore/text/Encoder.h>

#include <memory>

using namespace KrCore;
using namespace KrCore::Testing;
using namespace std::string_literals;

namespace {

constexpr long long everything = 0x7FFFFFFFFFFFFFFF;

/// The whole rest, or the code in angle brackets.
std::string readAll(File& file) {
    String text;
    const int code = file.read(everything, text);
    return code == 0 ? toUtf8(text) : "<" + std::to_string(code) + ">";
}

TEST(File, OpensInFourModes) {
    const TempFolder folder;
    const struct {
        const char* mode;
        bool exists;
        int code;
        int writeCode;
        const char* after; ///< What the file holds after "new" was written.
    } rows[] = {
        {"r", true, 0, ErrorCode::PermissionDenied, "old text"},
        {"", true, 0, ErrorCode::PermissionDenied, "old text"},
        {"Read", true, 0, ErrorCode::PermissionDenied, "old text"},
        {"r", false, ErrorCode::FileNotFound, ErrorCode::NotOpen, nullptr},
        {"w", true, 0, 0, "new"},
        {"w", false, 0, 0, "new"},
        {"E", true, 0, 0, "new text"},
        {"e", false, 0, 0, "new"},
        {"a", true, 0, 0, "old textnew"},
        {"a", false, 0, 0, "new"},
        {"x", true, ErrorCode::BadArgumentList, ErrorCode::NotOpen, "old text"},
        {"\x81", false, ErrorCode::BadArgumentList, ErrorCode::NotOpen, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.mode);
        std::filesystem::remove(systemPath(folder / "f"));
        if (row.exists) folder.write("f", "old text");
        File file(folder / "f");
        EXPECT_EQ(file.open(row.mode, 0, 0), row.code);
        EXPECT_EQ(file.isOpen(), row.code == 0);
        EXPECT_EQ(file.write("new", false), row.writeCode);
        EXPECT_EQ(file.setSize(-1),
                  row.writeCode == 0 ? int(ErrorCode::BadArgumentList) : row.writeCode);
        EXPECT_EQ(file.close(), 0);
        EXPECT_EQ((folder / "f").exists(), row.after != nullptr);
        if (row.after) {
            EXPECT_EQ(bytesOf(folder / "f"), row.after);
        }
    }
    File file(folder.spec());
    EXPECT_EQ(file.open("r", 0, 0), ErrorCode::IOError) << "a folder";
    EXPECT_NE(file.open("w", 0, 0), 0);
    EXPECT_NE(file.open("a", 0, 0), 0);
    File late(folder / "late");
    folder.write("late", "x");
    EXPECT_EQ(late.open("r", 0, 0), 0) << "it came after the object was made";
    EXPECT_EQ(late.open("x", 0, 0), ErrorCode::BadArgumentList);
    EXPECT_FALSE(late.isOpen());
}

TEST(File, FindsOutTheEncoding) {
    const TempFolder folder;
    const String wanted = text(u"Gr\u00FC\u00DFe");
    const struct {
        std::string bytes;
        const char* encoding;
        long long start;
    } rows[] = {
        {"\xEF\xBB\xBFGr\xC3\xBC\xC3\x9F\x65", "UTF-8", 3},
        {"Gr\xC3\xBC\xC3\x9F\x65", "UTF-8", 0},
        {"\xFF\xFEG\0r\0\xFC\0\xDF\0e\0"s, "UCS2LE", 2},
        {"\xFE\xFF\0G\0r\0\xFC\0\xDF\0e"s, "UCS2BE", 2},
        {"G\0r\0\xFC\0\xDF\0e\0"s, "UCS2LE", 0},
        {"\xFF\xFE\0\0G\0\0\0r\0\0\0\xFC\0\0\0\xDF\0\0\0e\0\0\0"s, "UCS4LE", 4},
        {"\0\0\xFE\xFF\0\0\0G\0\0\0r\0\0\0\xFC\0\0\0\xDF\0\0\0e"s, "UCS4BE", 0},
    };
    for (const auto& row : rows) {
        File file(folder.write("f", row.bytes));
        ASSERT_EQ(file.open("r", 0, 0), 0);
        EXPECT_EQ(file.getEncoding(), row.encoding);
        EXPECT_EQ(file.tell(), row.start);
        String content;
        EXPECT_EQ(file.getContent(content, -1), 0);
        EXPECT_EQ(content, wanted) << row.encoding;
        EXPECT_EQ(readAll(file), toUtf8(wanted)) << row.encoding;
        EXPECT_TRUE(file.eof());
        // The line that is appended has the encoding of the rest.
        ASSERT_EQ(file.open("a", 0, 0), 0);
        EXPECT_EQ(file.write(wanted, false), 0);
        EXPECT_EQ(file.getContent(content, -1), 0);
        EXPECT_EQ(content, wanted + wanted) << row.encoding;
    }
    File plain(folder.write("f", "plain"));
    ASSERT_EQ(plain.open("r", 0, 0), 0);
    String names;
    Encoder::getDefault().getName(names);
    EXPECT_EQ(plain.getEncoding(), names.split(','));

    File chosen(folder.write("f", "\xFE\xFF\0G\0r"s));
    EXPECT_FALSE(chosen.setEncoding("no such"));
    EXPECT_TRUE(chosen.setEncoding("utf_16"));
    ASSERT_EQ(chosen.open("r", 0, 0), 0);
    EXPECT_EQ(chosen.getEncoding(), "UCS2") << "what was set stays";
    EXPECT_EQ(readAll(chosen), "Gr") << "in the order of the mark";
    EXPECT_TRUE(chosen.setEncoding(""));
    ASSERT_EQ(chosen.open("r", 0, 0), 0);
    EXPECT_EQ(chosen.getEncoding(), "UCS2BE");
}

/// Text whose bytes fall on the ends of blocks in every way, with marks and line ends in it.
String longText(const char* encoding, int offset) {
    const std::string name(encoding);
    const bool isUnicode = name.starts_with("U");
    String unit = isUnicode ? text(u"a\u00E9\u4E2D\uFEFF\U0001F600\r\n") : String("a\xE9z\r");
    if (name == "CP932") unit = text(u"a\u3042\u4E2D\r\n");
    String result;
    result.setup('x', offset);
    while (result.length() < 70000)
        result += unit;
    return result;
}

TEST(File, BlocksNeverShow) {
    const TempFolder folder;
    for (const char* encoding : {"UTF-8", "UCS2LE", "UCS2BE", "UCS2", "UCS4LE", "UCS4BE", "UCS4",
                                 "CP1252", "MACINTOSH", "CP932"}) {
        if (!Encoder::get(encoding)) continue;
        for (int offset = 0; offset < 16; ++offset) {
            SCOPED_TRACE(encoding + (" " + std::to_string(offset)));
            const String whole = longText(encoding, offset + 1);
            const FileSpec spec = folder / "f";
            File file(spec);
            file.setEncoding(encoding);
            file.setLF(CRLFEncoding::LF);
            ASSERT_EQ(file.open("w", 0, 0), 0);
            ASSERT_EQ(file.write(whole, false), 0);
            ASSERT_EQ(file.seek(0, 0), 0);
            String expected(whole);
            expected.convertLF(CRLFEncoding::LF);
            String all;
            ASSERT_EQ(file.read(everything, all), 0);
            ASSERT_TRUE(all == expected);
            if (offset % 5 > 0) continue;

            ASSERT_EQ(file.seek(0, 0), 0);
            String pieces;
            String piece;
            while (file.read(1000 + offset, piece) == 0) {
                pieces += piece;
                if (pieces.length() % 7 > 0) continue;
                // Where the next character is, also when its block is long gone.
                const long long position = file.tell();
                ASSERT_EQ(file.seek(position, 0), 0);
            }
            ASSERT_TRUE(pieces == expected);
            ASSERT_EQ(file.seek(0, 0), 0);
            String lines;
            while (file.readln(piece) == 0)
                lines += piece + '\n';
            lines.adjust(expected.length());
            ASSERT_TRUE(lines == expected);
        }
    }
}

TEST(File, ReadsPieces) {
    const TempFolder folder;
    File file(folder.write("f", "one\r\ntwo\rthree\n\n\xF0\x9F\x98\x80\xC3\xBC"));
    String text;
    EXPECT_EQ(file.read(1, text), ErrorCode::NotOpen);
    EXPECT_EQ(file.readln(text), ErrorCode::NotOpen);
    EXPECT_TRUE(file.eof());
    EXPECT_EQ(file.tell(), -1);
    ASSERT_EQ(file.open("r", 0, 0), 0);
    const struct {
        const char* line;
        long long position;
    } lines[] = {{"one", 5}, {"two", 9}, {"three", 15}, {"", 16}};
    for (const auto& row : lines) {
        EXPECT_EQ(file.readln(text), 0);
        EXPECT_EQ(text, row.line);
        EXPECT_EQ(file.tell(), row.position);
        EXPECT_FALSE(file.eof());
    }
    EXPECT_EQ(file.read(1, text), 0);
    EXPECT_EQ(text.length(), 2) << "a pair is not split";
    EXPECT_EQ(file.tell(), 20);
    EXPECT_EQ(file.read(-1, text), 0);
    EXPECT_EQ(file.read(9, text), 0);
    EXPECT_EQ(text.length(), 1);
    EXPECT_TRUE(file.eof());
    EXPECT_EQ(file.read(9, text), ErrorCode::ReadPastEnd);
    EXPECT_EQ(file.readln(text), ErrorCode::ReadPastEnd);

    EXPECT_EQ(file.seek(5, 0), 0);
    EXPECT_EQ(file.seek(4, 1), 0);
    EXPECT_EQ(file.readln(text), 0);
    EXPECT_EQ(text, "three");
    EXPECT_EQ(file.seek(-2, 2), 0);
    EXPECT_EQ(file.tell(), 20);
    EXPECT_EQ(file.seek(-21, 1), ErrorCode::BadArgumentList);
    EXPECT_EQ(file.seek(-1, 0), ErrorCode::BadArgumentList);
    EXPECT_EQ(file.seek(0, 3), ErrorCode::BadArgumentList);
    EXPECT_EQ(file.seek(std::numeric_limits<long long>::min(), 2), ErrorCode::BadArgumentList);
    EXPECT_EQ(file.seek(everything, 1), ErrorCode::ReadPastEnd);
    EXPECT_EQ(file.seek(1, 2), ErrorCode::ReadPastEnd);
    EXPECT_EQ(file.tell(), 20) << "a refused position changes nothing";
    EXPECT_EQ(file.getContent(text, 3), 0);
    EXPECT_EQ(text, "one");
    EXPECT_EQ(file.tell(), 20);
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(file.getContent(text, -1), 0);
    EXPECT_FALSE(file.isOpen());
    EXPECT_TRUE(File(folder.write("empty", "")).getContent(text, -1) == 0 && text.isEmpty());
}

TEST(File, BadBytesKeepThePosition) {
    const TempFolder folder;
    std::string bytes(100000, 'x');
    bytes[99990] = '\xE9';
    File file(folder.write("f", bytes));
    file.setEncoding("UTF-8");
    ASSERT_EQ(file.open("r", 0, 0), 0);
    String text;
    ASSERT_EQ(file.read(10, text), 0);
    EXPECT_EQ(readAll(file), "<37>");
    EXPECT_EQ(file.tell(), 10);
    EXPECT_EQ(file.readln(text), ErrorCode::CharacterConversion);
    EXPECT_EQ(file.tell(), 10);
    EXPECT_EQ(file.read(99980, text), 0) << "in front of them all is well";
    EXPECT_EQ(file.tell(), 99990);
    EXPECT_EQ(file.read(1, text), ErrorCode::CharacterConversion);
    EXPECT_TRUE(file.setEncoding("CP1252"));
    EXPECT_EQ(file.read(1, text), 0);
    EXPECT_EQ(text.wstr()[0], 0xE9);

    File partial(folder.write("f", "ab\xE4\xB8"));
    partial.setEncoding("UTF-8");
    ASSERT_EQ(partial.open("r", 0, 0), 0);
    EXPECT_EQ(readAll(partial), "<38>");
    EXPECT_EQ(partial.tell(), 0);
    EXPECT_FALSE(partial.eof());
    File odd(folder.write("f", "\xFF\xFE\x61\0\x62"s));
    ASSERT_EQ(odd.open("r", 0, 0), 0);
    EXPECT_EQ(readAll(odd), "<38>");
}

TEST(File, WritesLineEndsOfItsConvention) {
    const TempFolder folder;
    const struct {
        CRLFEncoding lineEnd;
        const char* bytes;
    } rows[] = {{CRLFEncoding::CRLF, "a\r\nb\r\n\r\nc\r\n"},
                {CRLFEncoding::CR, "a\rb\r\rc\r"},
                {CRLFEncoding::LF, "a\nb\n\nc\n"},
                {CRLFEncoding::Default, isWindows() ? "a\r\nb\r\n\r\nc\r\n" : "a\nb\n\nc\n"}};
    for (const auto& row : rows) {
        File file(folder / "f");
        file.setLF(row.lineEnd);
        EXPECT_EQ(file.getLF(), row.lineEnd);
        ASSERT_EQ(file.open("w", 0, 0), 0);
        EXPECT_EQ(file.write("a\nb\r\n\rc", true), 0);
        EXPECT_EQ(file.close(), 0);
        EXPECT_EQ(bytesOf(folder / "f"), row.bytes);
    }
}

TEST(File, WhatCannotBeEncodedIsNotWritten) {
    const TempFolder folder;
    File file(folder / "f");
    file.setEncoding("ISO-8859-1");
    ASSERT_EQ(file.open("w", 0, 0), 0);
    EXPECT_EQ(file.write("good", false), 0);
    String mixed;
    mixed.setup('x', 50000);
    EXPECT_EQ(file.write(mixed + text(u"\u4E2D"), true), ErrorCode::CharacterConversion);
    EXPECT_EQ(file.write(text(u"\xE9"), false), 0);
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(bytesOf(folder / "f"), "good\xE9");
    EXPECT_TRUE(file.setEncoding("UTF-8"));
    ASSERT_EQ(file.open("w", 0, 0), 0);
    EXPECT_NE(file.write(text(u"a\xD800"), false), 0);
}

TEST(File, ReadsAndWritesInTurn) {
    const TempFolder folder;
    const FileSpec spec = folder.write("f", "0123456789");
    File file(spec);
    ASSERT_EQ(file.open("e", 0, 0), 0);
    String text;
    EXPECT_EQ(file.read(3, text), 0);
    EXPECT_EQ(file.write("ab", false), 0);
    EXPECT_EQ(file.tell(), 5);
    EXPECT_EQ(file.read(2, text), 0);
    EXPECT_EQ(text, "56");
    EXPECT_EQ(file.write("c", false), 0);
    long long size = 0;
    EXPECT_EQ(file.getSize(size), 0);
    EXPECT_EQ(size, 10);
    EXPECT_EQ(file.copyTo(folder / "g"), 0);
    EXPECT_EQ(bytesOf(folder / "g"), "012ab56c89") << "a copy has all that was written";
    EXPECT_EQ(file.setSize(4), 0);
    EXPECT_EQ(file.tell(), 4);
    EXPECT_TRUE(file.eof());
    EXPECT_EQ(file.setSize(6), 0);
    EXPECT_EQ(file.flush(), 0);
    EXPECT_EQ(bytesOf(spec), "012a\0\0"s);
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(file.flush(), ErrorCode::NotOpen);
    EXPECT_EQ(file.getSize(size), 0);
    EXPECT_EQ(size, 6);
    EXPECT_EQ(File(folder / "none").getSize(size), ErrorCode::FileNotFound);

    File end(spec);
    ASSERT_EQ(end.open("a", 0, 0), 0);
    EXPECT_EQ(end.tell(), 6);
    EXPECT_EQ(end.seek(0, 0), 0);
    EXPECT_EQ(end.read(3, text), 0);
    EXPECT_EQ(text, "012");
    EXPECT_EQ(end.write("Z", false), 0);
    EXPECT_EQ(end.tell(), 7) << "it was written at the end";
    EXPECT_EQ(end.close(), 0);
    EXPECT_EQ(bytesOf(spec), "012a\0\0Z"s);
}

TEST(File, LivesWithWhatOthersDo) {
    const TempFolder folder;
    const FileSpec spec = folder.write("f", std::string(100000, 'x'));
    File file(spec);
    ASSERT_EQ(file.open("r", 0, 0), 0);
    String text;
    ASSERT_EQ(file.read(1000, text), 0);
    std::filesystem::resize_file(systemPath(spec), 10);
    EXPECT_EQ(file.read(everything, text), 0) << "what was in the block";
    EXPECT_LT(text.length(), 100000);
    EXPECT_EQ(file.read(1, text), ErrorCode::ReadPastEnd);
    std::ofstream(systemPath(spec), std::ios::app) << "more";
    EXPECT_EQ(file.seek(10, 0), 0);
    EXPECT_EQ(readAll(file), "more");
    if (isWindows()) return;
    std::filesystem::remove(systemPath(spec));
    EXPECT_EQ(file.seek(0, 0), 0);
    EXPECT_EQ(readAll(file), "xxxxxxxxxxmore") << "an open file lives on without its name";
    EXPECT_EQ(file.open("r", 0, 0), ErrorCode::FileNotFound);
    if (!std::filesystem::exists("/dev/full")) return;
    // A medium without space.
    std::filesystem::create_symlink("/dev/full", systemPath(folder / "full"));
    File full(folder / "full");
    EXPECT_EQ(full.open("w", 0, 0), ErrorCode::IOError) << "no regular file";
}

TEST(File, NothingIsLostWithoutMemory) {
    const TempFolder folder;
    const FileSpec spec = folder.write("f", "line\n" + std::string(70000, 'x'));
    forEachFailure([&] {
        File file(spec);
        if (file.open("r", 0, 0) != 0) return;
        String text;
        try {
            file.readln(text);
            file.read(everything, text);
        } catch (const OutOfMemory&) {
            EXPECT_TRUE(file.tell() == 0 || file.tell() == 5);
            throw;
        }
    });
    forEachFailure([&] {
        File file(folder / "g");
        file.open("w", 0, 0);
        file.write("text", true);
        file.close();
    });
}

} // namespace
