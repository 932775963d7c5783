#include "files/TempFolder.h"
#include "support/FailingAllocator.h"
#include "support/TextSupport.h"

#include <krcore/containers/Array.h>
#include <krcore/files/FileAttribute.h>
#include <krcore/files/FileFilter.h>
#include <krcore/foundation/InitTerm.h>
#include <krcore/values/Variant.h>

#include <cmath>
#include <set>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(FileSpec, IsAValue) {
    const FileSpec file("C:/a/b", true);
    EXPECT_EQ(file.getPath(), "C:\\a\\b");
    FileSpec copy(file);
    EXPECT_EQ(copy, file);
    EXPECT_FALSE(copy.setPath("a%2Fb", false));
    EXPECT_FALSE(copy.setPath(text(u"a\0b"), true));
    EXPECT_EQ(copy, file) << "a refused path changes nothing";
    EXPECT_TRUE(copy.changePath("../c"));
    EXPECT_EQ(copy.getPath(), "C:\\a\\c");
    EXPECT_LT(file, copy);
    copy = FileSpec();
    EXPECT_TRUE(copy.getPath().isEmpty());
    EXPECT_EQ(copy.getAbsoluteURI(true), "");
    EXPECT_FALSE(copy.exists());
    EXPECT_EQ(FileSpec(file, "c").getPath(), "C:\\a\\b\\c");
    FileSpec parent;
    EXPECT_TRUE(file.getParentSpec(parent));
    EXPECT_EQ(parent.getPath(), "C:\\a");
    EXPECT_TRUE(parent.getParentSpec(parent));
    EXPECT_FALSE(parent.getParentSpec(parent)) << "a walk up ends";
    EXPECT_EQ(parent.getDisplayName(), "C:\\");
}

TEST(FileSpec, LivesInAVariant) {
    const FileSpec file("C:\\a", true);
    Variant value(file);
    const Variant copy(value);
    value = FileSpec("C:\\b", true);
    ASSERT_NE(copy.getFileSpec(), nullptr);
    EXPECT_EQ(*copy.getFileSpec(), file);
    EXPECT_EQ(copy.getString(), "[object File]");
    EXPECT_FALSE(copy.getBool());
    EXPECT_TRUE(std::isnan(copy.getDouble()));
    EXPECT_LT(copy.compare(value), 0);
    EXPECT_EQ(copy.compare(Variant(file)), 0);
    Array array;
    array += file;
    EXPECT_EQ(*array.get(0)->getFileSpec(), file);
    forEachFailure([&] {
        Variant other(file);
        other = *array.get(0);
    });
}

TEST(FileSpec, KnowsWhatIsThere) {
    const TempFolder folder;
    const FileSpec file = folder.write("a.txt", "x");
    EXPECT_TRUE(file.exists() && file.isFile() && file.isVisible());
    EXPECT_FALSE(file.isFolder() || file.isAlias() || file.isPackage() || file.isProtected());
    EXPECT_TRUE(folder.spec().isFolder() && !folder.spec().isFile());
    EXPECT_FALSE((folder / "none").exists() || (folder / "none").isVisible());
    EXPECT_FALSE((file.exists() && FileSpec(file, "below").exists()));

    FileSpec spec(file);
    int attributes = 0;
    int settable = 0;
    EXPECT_EQ(spec.setAttributes(FileAttribute::ReadOnly), 0);
    EXPECT_EQ(spec.getAttributes(&attributes, &settable), 0);
    EXPECT_TRUE((attributes & settable & FileAttribute::ReadOnly) != 0 && spec.isProtected());
    EXPECT_EQ(spec.setAttributes(0), 0);
    EXPECT_FALSE(spec.isProtected());
    EXPECT_EQ((folder / "none").getAttributes(nullptr, nullptr), ErrorCode::FileNotFound);
    EXPECT_EQ(spec.getType() + spec.getCreator(), 0U);
    EXPECT_EQ(FileSpec(folder.spec(), ".").getParent(), folder.spec().getPath());
}

TEST(FileSpec, RelativePathsAreInTheCurrentFolder) {
    const TempFolder folder;
    const FileSpec before = FileUtils::getCurrentDir();
    ASSERT_TRUE(before.isFolder());
    folder.write("a b", "x");
    ASSERT_EQ(FileUtils::setCurrentDir(folder.spec()), 0);
    EXPECT_EQ(FileSpec("a%20b").getPath(), (folder / "a b").getPath());
    EXPECT_EQ((folder / "a b").getRelativeURI(), "a%20b");
    EXPECT_EQ(FileSpec("c\\..\\a b", true).getRelativeURI(), "a%20b");
    EXPECT_EQ((folder / "x").getRelativeURI(FileSpec("y", true)), "../x");
    EXPECT_TRUE(FileSpec("a b", true).isFile()) << "a relative platform path";
    EXPECT_EQ(FileUtils::setCurrentDir(folder / "a b"), ErrorCode::FileNotFound);
    EXPECT_EQ(FileUtils::getCurrentDir(), folder.spec());
    EXPECT_EQ(FileUtils::setCurrentDir(before), 0);
    EXPECT_NE(std::filesystem::current_path(), systemPath(folder.spec()))
        << "the process stays where it is";
}

TEST(FileSpec, FollowsShortcuts) {
    const TempFolder folder;
    const FileSpec file = folder.write("target.txt", "x");
    FileSpec alias = folder / "alias";
    ASSERT_EQ(alias.createAlias(file.getPath(), true), 0);
    EXPECT_TRUE(alias.isAlias());
    EXPECT_EQ(alias.getName(), "alias");
    EXPECT_EQ(alias.getResolvedPath(), file.getPath());
    EXPECT_EQ(alias.createAlias(file.getPath(), true), ErrorCode::FileExists);
    const FileSpec found(alias.getAbsoluteURI(false));
    EXPECT_EQ(found, alias) << "the URI leads back, with or without the suffix";

    FileSpec resolved(file);
    EXPECT_EQ(resolved.resolve(), 0) << "no shortcut, nothing to do";
    EXPECT_EQ(resolved, file);
    FileSpec second = folder / "second";
    ASSERT_EQ(second.createAlias(alias.getPath(), true), 0);
    EXPECT_EQ(second.resolve(resolved), 0);
    EXPECT_EQ(resolved, file);
    std::filesystem::remove(systemPath(file));
    EXPECT_EQ(second.resolve(), ErrorCode::FileNotFound);
    EXPECT_EQ(second.getResolvedPath(), second.getPath());

    FileSpec ring = folder / "ring";
    FileSpec back = folder / "back";
    const FileSpec ringAt(isWindows() ? folder / "ring.LNK" : ring);
    ASSERT_EQ(back.createAlias(ringAt.getPath(), true), 0);
    ASSERT_EQ(ring.createAlias(back.getPath(), true), 0);
    EXPECT_EQ(ring.resolve(), ErrorCode::IOError);
}

TEST(FileSpec, NamesFilesThatAreNotThere) {
    const TempFolder folder;
    FileSpec first = folder.spec();
    ASSERT_TRUE(first.tempName());
    EXPECT_EQ(first.getPath(), (folder / "tmp00000001").getPath());
    folder.write("tmp00000001", "");
    folder.write("tmp00000003", "");
    FileSpec second = folder.spec();
    ASSERT_TRUE(second.tempName());
    EXPECT_EQ(second.getName(), "tmp00000002");
    EXPECT_FALSE(second.tempName()) << "no folder";
    EXPECT_EQ(second.getName(), "tmp00000002");
}

TEST(FileSpec, EveryNameSurvives) {
    const TempFolder folder;
    const String names[] = {text(u"\u00E9\U0001F600 %~#"), text(u"\uFFFD\u4E2D")};
    for (const String& name : names) {
        const FileSpec file = folder.write(name, "x");
        EXPECT_TRUE(file.isFile()) << name;
        EXPECT_EQ(FileSpec(file.getAbsoluteURI(true)), file) << name;
    }
    if (isWindows()) return;
    // What is no UTF-8, or would separate, comes with its bytes escaped.
    std::ofstream(systemPath(folder.spec()) / "a\xFF\\b");
    const FileSpec file = folder / text(u"a\xDCFF\xDC5C\x62");
    EXPECT_TRUE(file.isFile());
    EXPECT_EQ(file.getAbsoluteURI(false), "");
    TSimpleArray<FileSpec> files;
    ASSERT_EQ(Folder(folder.spec()).getFiles(files, nullptr), 0);
    std::set<std::string> found;
    for (FileSpec* entry : files) {
        found.insert(toUtf8(entry->getName()));
        EXPECT_TRUE(entry->isFile());
        delete entry;
    }
    EXPECT_EQ(found.size(), 3U);
}

TEST(FileSpec, PathsOfNothingAreRefused) {
    String longName;
    longName.setup('a', 32000);
    const String paths[] = {String("\\\\no-such-server-here\\share\\a"), String("Q:\\none"),
                            String("\\") + longName, text(u"\\a\xD800\x62"), String("c:relative")};
    for (const String& path : paths) {
        const FileSpec file(path, true);
        EXPECT_FALSE(file.exists()) << path.substr(0, 40);
        EXPECT_FALSE(file.isFile() || file.isFolder() || file.isAlias());
        EXPECT_NE(Folder(file).rename("x"), 0);
    }
    if (isWindows()) return;
    // A capital letter in the root would get the URI of a drive.
    EXPECT_FALSE(FileSpec("\\T", true).exists());
    EXPECT_EQ(FileSpec("/T/x").getPath(), "T:\\x");
}

TEST(FileSpec, DialogsNeedAUserInterface) {
    InitTerm::enableUI(false);
    FileSpec file("C:\\a", true);
    Array files;
    EXPECT_FALSE(file.chooseFile("Open", true, nullptr, nullptr, &files));
    EXPECT_FALSE(file.chooseSaveFile("Save", nullptr, nullptr));
    EXPECT_FALSE(file.chooseFolder("Folder"));
    EXPECT_EQ(file.getPath(), "C:\\a");
    EXPECT_EQ(files.length(), 0U);
}

} // namespace
