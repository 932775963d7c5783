#include "files/TempFolder.h"
#include "support/FailingAllocator.h"
#include "support/TextSupport.h"

#include <krcore/files/FileAttribute.h>
#include <krcore/files/FileWrapper.h>

#include <memory>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(FileWrapper, SaysWhatWentWrong) {
    const TempFolder folder;
    FileWrapper file(folder / "f");
    String text;
    EXPECT_FALSE(file.open("r", nullptr, nullptr));
    EXPECT_EQ(file.getError(), "File or folder does not exist");
    EXPECT_FALSE(file.read(1, text));
    EXPECT_EQ(file.getError(), "I/O device is not open");
    EXPECT_FALSE(file.open("x", nullptr, nullptr));
    EXPECT_EQ(file.getError(), "Bad argument list");
    const String type("TEXT");
    const String shortCode("ab");
    EXPECT_TRUE(file.open("w", &type, &shortCode));
    EXPECT_EQ(file.getError(), "") << "a success empties it";
    EXPECT_TRUE(file.write("a", true));
    EXPECT_TRUE(file.seek(0, 0));
    EXPECT_EQ(file.readch(), 'a');
    EXPECT_TRUE(file.readln(text));
    EXPECT_EQ(file.readch(), -1);
    EXPECT_EQ(file.getError(), "Read past EOF");
    EXPECT_TRUE(file.eof());
    EXPECT_FALSE(file.setEncoding("none such"));
    EXPECT_FALSE(file.setLF(4));
    EXPECT_TRUE(file.setLF(2));
    EXPECT_EQ(file.getLF(), 2);
    EXPECT_FALSE(file.setSize(-1));
    EXPECT_TRUE(file.setSize(1) && file.flush() && file.close());
    EXPECT_EQ(file.getSize(), 1);
    EXPECT_EQ(file.tell(), -1);
    EXPECT_TRUE(file.setError("own"));
    EXPECT_EQ(file.getError(), "own");
    EXPECT_TRUE(file.getAttributes(nullptr, nullptr));
    EXPECT_EQ(file.getError(), "");
    EXPECT_TRUE(file.setAttributes(FileAttribute::ReadOnly) && file.setAttributes(0));
    EXPECT_EQ(file.getType() + file.getCreator(), "");
    EXPECT_FALSE(FileWrapper(folder / "none").execute());
}

TEST(FileWrapper, ReadsWholeCharacters) {
    const TempFolder folder;
    FileWrapper file(folder.write("f", "\xF0\x9F\x98\x80z"));
    ASSERT_TRUE(file.open("r", nullptr, nullptr));
    EXPECT_EQ(file.readch(), 0x1F600);
    EXPECT_EQ(file.readch(), 'z');
}

TEST(FileWrapper, ManagesFilesAndFolders) {
    const TempFolder folder;
    FileWrapper sub(folder / "sub");
    EXPECT_TRUE(sub.makeDir());
    EXPECT_FALSE(sub.makeDir());
    EXPECT_EQ(sub.getError(), "File or folder already exists");
    FileWrapper file(folder.write("a b.txt", "x"));
    EXPECT_TRUE(file.copy(sub.getAbsoluteURI(true))) << "into a folder";
    EXPECT_TRUE(file.copy((folder / "c").getAbsoluteURI(false)));
    EXPECT_FALSE(file.copy("a%00b"));
    EXPECT_TRUE(file.setEncoding("UTF-8"));
    EXPECT_TRUE(file.open("a", nullptr, nullptr) && file.write("y", false));
    EXPECT_TRUE(file.rename("b.txt"));
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(file.getEncoding(), "UTF-8");
    EXPECT_EQ(bytesOf(folder / "b.txt"), "xy") << "what was written went out first";
    EXPECT_FALSE(file.rename("c")) << "taken";
    EXPECT_FALSE(file.rename("sub/c"));
    EXPECT_TRUE(file.changePath("../c"));
    EXPECT_EQ(file.getPath(), (folder / "c").getPath());
    EXPECT_TRUE(file.remove());
    EXPECT_FALSE(file.remove());

    TSimpleArray<FileWrapper> files;
    const String mask("*.TXT");
    FileWrapper all(folder.spec());
    EXPECT_TRUE(all.getFiles(files, &mask));
    ASSERT_EQ(files.length(), 1);
    EXPECT_EQ(files[0]->getDisplayName(), "b.txt");
    delete files[0];
    EXPECT_FALSE(files.length() == 0 || file.getFiles(files, nullptr));
    EXPECT_EQ(file.getError(), "Not a directory");
    EXPECT_FALSE(sub.remove()) << "not empty";
    files = TSimpleArray<FileWrapper>();
    forEachFailure([&] {
        all.getFiles(files, nullptr);
        for (const FileWrapper* found : files)
            delete found;
        files = TSimpleArray<FileWrapper>();
    });
}

TEST(FileWrapper, IsCloned) {
    const TempFolder folder;
    FileWrapper file(folder.write("f", "x"));
    EXPECT_TRUE(file.setEncoding("CP1252") && file.setLF(2));
    Cloneable* result = nullptr;
    ASSERT_EQ(file.clone(&result, true), 0);
    const std::unique_ptr<FileWrapper> copy(dynamic_cast<FileWrapper*>(result));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getFileSpec(), file.getFileSpec());
    EXPECT_EQ(copy->getEncoding(), "CP1252");
    EXPECT_EQ(copy->getLF(), 2);
}

TEST(FileWrapper, KnowsFolders) {
    const std::unique_ptr<FileWrapper> temp(FileWrapper::getTempDir());
    EXPECT_TRUE(temp->getFileSpec().isFolder());
    const std::unique_ptr<FileWrapper> before(FileWrapper::getCurrentDir());
    EXPECT_TRUE(FileWrapper::setCurrentDir(*temp));
    const std::unique_ptr<FileWrapper> now(FileWrapper::getCurrentDir());
    EXPECT_EQ(now->getFileSpec(), temp->getFileSpec());
    EXPECT_EQ(temp->getRelativeURI(), ".");
    EXPECT_TRUE(FileWrapper::setCurrentDir(*before));
    FileWrapper missing(String("no%20such/folder"));
    EXPECT_FALSE(FileWrapper::setCurrentDir(missing));
    EXPECT_EQ(missing.getError(), "File or folder does not exist");
    const std::unique_ptr<FileWrapper> trash(FileWrapper::getTrashDir());
    EXPECT_EQ(trash->getError(), "Not implemented");
    const std::unique_ptr<FileWrapper> none(FileWrapper::getSpecialDir(99));
    EXPECT_EQ(none->getError(), "Cannot execute");
    EXPECT_EQ(FileWrapper::getSystemLF(), isWindows() ? 1 : 3);

    String result;
    EXPECT_TRUE(FileWrapper::encode(text(u"a b/\u00E9%"), result));
    EXPECT_EQ(result, "a%20b/%C3%A9%25");
    EXPECT_TRUE(FileWrapper::decode(result, result));
    EXPECT_EQ(result, text(u"a b/\u00E9%"));
    EXPECT_FALSE(FileWrapper::encode(text(u"\xD800"), result));
    EXPECT_FALSE(FileWrapper::decode("%FF", result));
}

} // namespace
