#include "files/TempFolder.h"
#include "support/FailingAllocator.h"
#include "support/TextSupport.h"

#include <krcore/files/File.h>
#include <krcore/files/FileWrapper.h>
#include <krcore/text/Encoder.h>

using namespace KrCore;
using namespace KrCore::Testing;
using namespace std::string_literals;

namespace {

constexpr long long everything = 0x7FFFFFFFFFFFFFFF;

/// Takes nothing, and calls that a success.
class IdleEncoder : public Encoder {
public:
    IdleEncoder() : Encoder(0) {}
    void getName(String& name) const override { name = "X-TEST-IDLE"; }
    int getUnicodeLength(const char*, int, int& consumed) const override { return consumed = 0; }
    int getMBCSLength(const unsigned short*, int count, int& consumed) const override {
        return consumed = count;
    }
    int toUnicode(const char*, int& inCount, unsigned short*, int& outCount, bool) const override {
        return inCount = outCount = 0;
    }
    int toMBCS(const unsigned short*, int& inCount, char*, int& outCount, bool) const override {
        return inCount = outCount = 0;
    }
};

TEST(FileTrouble, EncodersThatTakeNothingEnd) {
    static const IdleEncoder idle;
    Encoder::add(idle);
    const TempFolder folder;
    File file(folder.write("f", std::string(3000000, 'x')));
    ASSERT_TRUE(file.setEncoding("TEST-IDLE"));
    ASSERT_EQ(file.open("e", 0, 0), 0);
    String text;
    EXPECT_EQ(file.read(1, text), ErrorCode::CharacterConversion);
    EXPECT_EQ(file.tell(), 0);
    EXPECT_EQ(file.write("abc", true), ErrorCode::CharacterConversion);
}

TEST(FileTrouble, PairsAndMarksStayWholeAtTheEndsOfBlocks) {
    const TempFolder folder;
    String whole;
    whole.setup('a', 16383);
    whole += text(u"\U0001F600z");
    File file(folder / "f");
    file.setEncoding("UCS2LE");
    ASSERT_EQ(file.open("w", 0, 0), 0);
    ASSERT_EQ(file.write(whole, false), 0);
    ASSERT_EQ(file.seek(0, 0), 0);
    String piece;
    ASSERT_EQ(file.read(16383, piece), 0);
    EXPECT_EQ(file.tell(), 2 * 16383);
    ASSERT_EQ(file.read(1, piece), 0);
    EXPECT_EQ(piece, text(u"\U0001F600"));

    ASSERT_EQ(file.open("w", 0, 0), 0);
    ASSERT_EQ(file.write(text(u"a\uFEFF\uFEFFz"), false), 0);
    ASSERT_EQ(file.seek(2, 0), 0);
    for (int position = 4; position <= 8; position += 2) {
        ASSERT_EQ(file.read(1, piece), 0);
        EXPECT_EQ(piece.length(), 1);
        EXPECT_EQ(file.tell(), position);
        ASSERT_EQ(file.seek(position, 0), 0);
    }
}

TEST(FileTrouble, MarksComeAndGo) {
    const TempFolder folder;
    File file(folder.write("f", "\xEF\xBB\xBFold"));
    ASSERT_EQ(file.open("e", 0, 0), 0);
    String text;
    ASSERT_EQ(file.seek(0, 0), 0);
    EXPECT_EQ(file.read(3, text), 0);
    EXPECT_EQ(text, "old") << "the mark is no text after a seek either";
    ASSERT_EQ(file.seek(0, 0), 0);
    EXPECT_EQ(file.write(String(), false), 0);
    EXPECT_FALSE(file.eof());
    EXPECT_EQ(file.getContent(text, -1), 0);
    EXPECT_EQ(file.read(0, text), 0);
    EXPECT_EQ(file.tell(), 0) << "questions do not move";
    EXPECT_EQ(file.read(1, text), 0);
    EXPECT_EQ(text, "o");
    ASSERT_EQ(file.setSize(0), 0);
    ASSERT_EQ(file.write("abcdef", false), 0);
    EXPECT_EQ(file.getContent(text, -1), 0);
    EXPECT_EQ(text, "abcdef");

    File big(folder.write("f", "\0\0\xFE\xFF\0\0\0a"s));
    ASSERT_TRUE(big.setEncoding("UCS4"));
    ASSERT_EQ(big.open("r", 0, 0), 0);
    EXPECT_EQ(big.read(everything, text), 0);
    EXPECT_EQ(text, "a") << "in the order of the mark";
}

TEST(FileTrouble, LineEndsMayComeInTwoCalls) {
    const TempFolder folder;
    File file(folder / "f");
    file.setLF(CRLFEncoding::LF);
    ASSERT_EQ(file.open("w", 0, 0), 0);
    for (const char* piece : {"a\r", "\nb\r", "c\r", "", "\n", "\n"})
        EXPECT_EQ(file.write(piece, false), 0);
    EXPECT_EQ(file.write("\r", true), 0);
    EXPECT_EQ(file.write("\n", false), 0);
    EXPECT_EQ(file.write("d\r", false), 0);
    EXPECT_TRUE(file.eof());
    EXPECT_EQ(file.write("\ne", false), 0);
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(bytesOf(folder / "f"), "a\nb\nc\n\n\n\n\nd\ne");
}

TEST(FileTrouble, ARefusedTextDoesNotMove) {
    const TempFolder folder;
    File file(folder.write("f", "0123456789"));
    file.setEncoding("ISO-8859-1");
    ASSERT_EQ(file.open("a", 0, 0), 0);
    ASSERT_EQ(file.seek(2, 0), 0);
    EXPECT_EQ(file.write(text(u"\u4E2D"), false), ErrorCode::CharacterConversion);
    EXPECT_EQ(file.tell(), 2);
    EXPECT_FALSE(file.setEncoding(text(u"UTF-8\0x")));
}

TEST(FileTrouble, TellsWhereEachLineBegins) {
    const TempFolder folder;
    std::string bytes;
    for (int line = 0; line < 20000; ++line)
        bytes += "l\xC3\xAFne " + std::to_string(line) + '\n';
    File file(folder.write("f", bytes));
    ASSERT_EQ(file.open("r", 0, 0), 0);
    String line;
    long long position = 0;
    while (file.readln(line) == 0) {
        position += static_cast<long long>(toUtf8(line).size()) + 1;
        ASSERT_EQ(file.tell(), position);
    }
}

TEST(FileTrouble, CopiesOntoItselfAndToLongNames) {
    const TempFolder folder;
    const FileSpec spec = folder.write("f", "0123");
    File file(spec);
    ASSERT_EQ(file.open("e", 0, 0), 0);
    EXPECT_EQ(file.copyTo(spec), 0);
    EXPECT_EQ(file.write("XY", false), 0);
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(bytesOf(spec), "XY23") << "it is still the same file";
    String name;
    name.setup('n', 250);
    EXPECT_EQ(FileUtils::copy(spec, folder / name), 0);
    EXPECT_EQ(bytesOf(folder / name), "XY23");

    Folder(folder / "sub").create();
    FileWrapper shortcut(folder.write("Doc.LNK", "x"));
    EXPECT_TRUE(shortcut.copy((folder / "sub").getAbsoluteURI(false)));
    EXPECT_EQ(bytesOf(folder / "sub\\Doc.LNK"), "x") << "the suffix is part of the name";
    EXPECT_EQ(FileSpec((folder / "Doc.LNK").getAbsoluteURI(false)), folder / "Doc.LNK");
    EXPECT_TRUE(shortcut.rename("Doc.LNK")) << "its own name";
    EXPECT_TRUE(shortcut.changePath(String()));
    EXPECT_EQ(shortcut.getFileSpec(), folder / "Doc.LNK");
}

TEST(FileTrouble, AnEncodingThatWasFoundStaysWithItsFile) {
    const TempFolder folder;
    folder.write("other", "gr\xC3\xBC\xC3\x9F");
    FileWrapper file(folder.write("f", "\xFF\xFEg\0"s));
    ASSERT_TRUE(file.open("r", nullptr, nullptr));
    EXPECT_EQ(file.getEncoding(), "UCS2LE");
    ASSERT_TRUE(file.changePath("../other"));
    ASSERT_TRUE(file.open("r", nullptr, nullptr));
    EXPECT_EQ(file.getEncoding(), "UTF-8");
}

TEST(FileTrouble, LinksLeadWhereTheSystemGoes) {
    if (isWindows()) return;
    const TempFolder folder;
    const std::filesystem::path root = systemPath(folder.spec());
    std::filesystem::create_directories(root / "real/deep/d");
    folder.write("real\\deep\\x", "right");
    folder.write("x", "wrong");
    std::filesystem::create_symlink("../x", root / "real/deep/d/link");
    std::filesystem::create_symlink(root / "real/deep/d", root / "way");
    FileSpec link(folder / "way\\link");
    ASSERT_EQ(link.resolve(), 0);
    EXPECT_EQ(bytesOf(link), "right");

    std::filesystem::create_symlink(root / "made", root / "dangling");
    File file(folder / "dangling");
    EXPECT_EQ(file.open("e", 0, 0), 0) << "made where the link leads";
    EXPECT_EQ(file.close(), 0);
    EXPECT_TRUE((folder / "made").isFile());
}

TEST(FileTrouble, ShortageLeavesFilesAsTheyWere) {
    const TempFolder folder;
    const FileSpec spec = folder.write("f", "\xEF\xBB\xBF" + std::string(100000, 'x'));
    const FileSpec before = FileUtils::getCurrentDir();
    ASSERT_EQ(FileUtils::setCurrentDir(folder.spec()), 0);
    const FileSpec relative("f", true);
    forEachFailure([&] {
        File file(relative);
        try {
            file.open("r", 0, 0);
        } catch (const OutOfMemory&) {
            EXPECT_FALSE(file.isOpen());
            throw;
        }
    });
    forEachFailure([&] {
        File closed(spec);
        File open(spec);
        open.open("r", 0, 0);
        open.seek(100, 0);
        String content;
        try {
            open.getContent(content, -1);
            closed.getContent(content, -1);
        } catch (const OutOfMemory&) {
            EXPECT_FALSE(closed.isOpen());
            EXPECT_TRUE(!open.isOpen() || open.tell() == 100);
            throw;
        }
    });
    EXPECT_EQ(FileUtils::setCurrentDir(before), 0);
}

} // namespace
