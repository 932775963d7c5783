#include "files/TempFolder.h"
#include "support/FailingAllocator.h"

#include <krcore/files/FileFilter.h>
#include <krcore/foundation/InitTerm.h>

#include <set>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

std::string namesIn(const FileSpec& spec, const FileFilter* filter, int expected = 0) {
    TSimpleArray<FileSpec> files;
    EXPECT_EQ(Folder(spec).getFiles(files, filter), expected);
    std::set<std::string> sorted;
    for (FileSpec* file : files) {
        sorted.insert(toUtf8(file->getName()));
        delete file;
    }
    std::string names;
    for (const std::string& name : sorted)
        names += name + ' ';
    return names;
}

TEST(Folder, IsMadeRenamedAndRemoved) {
    const TempFolder temp;
    Folder deep(temp / "a\\b\\c");
    EXPECT_EQ(deep.create(), 0);
    EXPECT_TRUE(deep.exists());
    EXPECT_EQ(deep.create(), ErrorCode::FileExists);
    EXPECT_EQ(Folder(temp / "a").remove(), ErrorCode::IOError) << "not empty";
    EXPECT_EQ(deep.rename("d"), 0);
    EXPECT_EQ(deep.getFileSpec(), temp / "a\\b\\d");
    EXPECT_EQ(deep.rename("x\\y"), ErrorCode::BadArgument);
    EXPECT_EQ(deep.rename(".."), ErrorCode::BadArgument);
    Folder other(temp / "a\\b\\e");
    EXPECT_EQ(other.create(), 0);
    EXPECT_EQ(other.rename("d"), ErrorCode::FileExists);
    EXPECT_EQ(deep.remove(), 0);
    EXPECT_EQ(deep.remove(), ErrorCode::FileNotFound);
    temp.write("file", "x");
    EXPECT_NE(Folder(temp / "file\\below").create(), 0);
    EXPECT_EQ(Folder(temp / "file").create(), ErrorCode::FileExists);
    EXPECT_EQ(Folder(temp / "file").remove(), ErrorCode::FileNotFound) << "no folder";
}

TEST(Folder, ListsByMask) {
    const TempFolder temp;
    for (const char* name : {"a.txt", "B.TXT", "c.md", ".hidden", "plain"})
        temp.write(name, "");
    Folder(temp / "sub.txt").create();
    const FileFilter texts(" *.txt ; *.md");
    EXPECT_EQ(namesIn(temp.spec(), &texts), "B.TXT a.txt c.md sub.txt ");
    EXPECT_EQ(namesIn(temp.spec(), nullptr), ".hidden B.TXT a.txt c.md plain sub.txt ");
    EXPECT_EQ(namesIn(temp / "none", nullptr, ErrorCode::FileNotFound), "");
    EXPECT_EQ(namesIn(temp / "plain", nullptr, ErrorCode::FileNotFound), "");
    TSimpleArray<FileSpec> files;
    forEachFailure([&] {
        Folder(temp.spec()).getFiles(files, nullptr);
        for (FileSpec* file : files)
            delete file;
        files = TSimpleArray<FileSpec>();
    });
}

TEST(FileFilter, Matches) {
    const struct {
        const char* masks;
        const char* name;
        bool matches;
    } rows[] = {
        {"", "a", true},           {" ", "a", true},          {"*", "", true},
        {"*.*", "plain", true},    {"*.txt", "a.TXT", true},  {"*.txt", ".txt", true},
        {"*.txt", "a.tx", false},  {"a?c", "abc", true},      {"a?c", "ac", false},
        {"a*b*c", "aXbYbc", true}, {"a*b*c", "aXbYb", false}, {"x;;y", "y", true},
        {"x;;y", "", false},       {"**", "anything", true},  {"?", "", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FileFilter(row.masks).matches(row.name), row.matches)
            << row.masks << " " << row.name;
    String hostile;
    String name;
    for (int i = 0; i < 2000; ++i) {
        hostile += "*a";
        name += 'a';
    }
    EXPECT_FALSE(FileFilter(hostile + 'b').matches(name));
}

TEST(FileUtils, FindsTheSpecialFolders) {
    for (const int kind :
         {FileUtils::TempDir, FileUtils::StartupDir, FileUtils::SystemStartupDir}) {
        FileSpec folder;
        EXPECT_EQ(FileUtils::getSpecialDir(kind, folder), 0) << kind;
        EXPECT_TRUE(folder.isFolder()) << kind;
    }
    FileSpec folder("C:\\stays", true);
    EXPECT_EQ(FileUtils::getTrashDir(folder), ErrorCode::NotImplemented);
    EXPECT_EQ(FileUtils::getSpecialDir(0, folder), ErrorCode::CannotExecute);
    EXPECT_EQ(FileUtils::getSpecialDir(12, folder), ErrorCode::CannotExecute);
    if (!isWindows()) {
        EXPECT_EQ(FileUtils::getSystemDir(folder), ErrorCode::IOError);
    }
    EXPECT_EQ(folder.getPath(), "C:\\stays");
    for (int kind = FileUtils::SystemDir; kind <= FileUtils::CommonFilesX86Dir; ++kind) {
        if (FileUtils::getSpecialDir(kind, folder) == 0) {
            EXPECT_FALSE(folder.getPath().isEmpty()) << kind;
        }
    }
    EXPECT_EQ(FileUtils::getSystemLF(), isWindows() ? CRLFEncoding::CRLF : CRLFEncoding::LF);

    const TempFolder temp;
    const FileSpec program = temp.write("program", "");
    const std::string host = systemPath(program).string();
    InitTerm::setStartupSpec(host.c_str());
    EXPECT_EQ(FileUtils::getStartupDir(folder), 0);
    EXPECT_EQ(folder, temp.spec()) << "the folder of the file that the host named";
}

TEST(FileUtils, CopiesWhole) {
    const TempFolder temp;
    const std::string bytes(200000, 'x');
    const FileSpec source = temp.write("source", bytes);
    FileSpec target = temp.write("target", "old");
    EXPECT_EQ(FileUtils::copy(source, target), 0);
    EXPECT_EQ(bytesOf(target), bytes);
    EXPECT_EQ(FileUtils::copy(source, source), 0);
    EXPECT_EQ(bytesOf(source), bytes);
    EXPECT_EQ(FileUtils::copy(temp / "none", target), ErrorCode::FileNotFound);
    EXPECT_NE(FileUtils::copy(temp.spec(), target), 0) << "a folder";
    EXPECT_NE(FileUtils::copy(source, temp.spec()), 0) << "onto a folder";
    EXPECT_EQ(FileUtils::copy(source, temp / "no\\target"), ErrorCode::FileNotFound);
    EXPECT_EQ(bytesOf(target), bytes) << "what failed changed nothing";
    EXPECT_EQ(namesIn(temp.spec(), nullptr), "source target ") << "and left nothing behind";
}

} // namespace
