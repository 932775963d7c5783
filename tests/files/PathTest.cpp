#include "files/PathText.h"
#include "files/PathUri.h"
#include "support/TextSupport.h"

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(FilePath, FindsTheParent) {
    const struct {
        const char* path;
        const char* parent;
        const char* name;
        const char* extension;
    } rows[] = {
        {"c:\\", "", "", ""},
        {"/", "", "/", ""},
        {"c:\\a", "c:\\", "a", ""},
        {"c:\\a\\b.txt", "c:\\a", "b.txt", "txt"},
        {"\\x", "", "x", ""},
        {"name", "name", "name", ""},
        {"\\\\srv\\share", "\\\\srv", "share", ""},
        {"c:\\a\\b.tar.gz", "c:\\a", "b.tar.gz", "gz"},
        {"c:\\.profile", "c:\\", ".profile", "profile"},
        {"c:\\a.txt.LNK", "c:\\", "a.txt", "txt"},
        {"c:\\.lnk", "c:\\", ".lnk", "lnk"},
        {"c:\\x.lNk", "c:\\", "x", ""},
        {"c:\\a\\", "c:\\a", "", ""},
        {"", "", "", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(PathText::parentOf(row.path), row.parent) << row.path;
        EXPECT_EQ(PathText::nameOf(row.path), row.name) << row.path;
        EXPECT_EQ(PathText::extensionOf(row.path), row.extension) << row.path;
    }
}

TEST(FilePath, FoldsAndResolves) {
    const struct {
        const char* path;
        const char* result;
        const char* root;
    } rows[] = {
        {"x", "D:\\w\\x", ""},
        {"..\\x", "D:\\x", ""},
        {"..\\..\\..\\x", "D:\\x", ""},
        {".\\a\\.\\\\b\\", "D:\\w\\a\\b", ""},
        {"c:\\a\\..\\..\\b", "c:\\b", "c:"},
        {"c:", "c:\\", "c:"},
        {"c:/a/../b", "c:\\b", "c:"},
        {"\\a\\..\\b", "\\b", "\\"},
        {"\\\\s\\t\\..\\u", "\\\\s\\u", "\\\\s\\t"},
        {"\\\\?\\C:\\a\\..", "\\\\?\\C:\\", "\\\\?\\C:"},
        {"\\\\?\\UNC\\s\\t\\u", "\\\\?\\UNC\\s\\t\\u", "\\\\?\\UNC\\s\\t"},
        {"c:a", "D:\\w\\c:a", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(PathText::resolved(row.path, "D:\\w"), row.result) << row.path;
        EXPECT_EQ(PathText::rootNameOf(row.path), row.root) << row.path;
    }
    EXPECT_EQ(PathText::folded("a\\..\\..\\b"), "..\\b");
}

TEST(FileUri, WritesPaths) {
    const struct {
        const char* path;
        const char* uri;
        const char* home;
    } rows[] = {
        {"", "", nullptr},
        {"D:\\Users\\me\\Doc.LNK", "~/Doc", "D:\\Users\\me"},
        {"d:\\users\\ME", "~/", "D:\\Users\\me"},
        {"D:\\Users\\mexico", "/d/Users/mexico", "D:\\Users\\me"},
        {"D:\\x", "~/x", "D:\\"},
        {"\\\\?\\UNC\\srv\\share\\a", "//srv/share/a", nullptr},
        {"\\\\?\\D:\\a", "/d/a", nullptr},
        {"C:\\", "/c", nullptr},
        {"C:", "C:", nullptr},
        {"C:a", "/ca", nullptr},
        {"\\", "/", nullptr},
        {"\\a\\\\", "/a", nullptr},
        {"C:\\Doc.LNK\\", "/c/Doc.LNK", nullptr},
        {".LNK", ".LNK", nullptr},
        {"C:\\a b%#?:\"", "/c/a%20b%25#?:%22", nullptr},
        {"a\\b", "a/b", nullptr},
    };
    for (const auto& row : rows) {
        const String home(row.home);
        EXPECT_EQ(PathUri::fromPath(row.path, row.home ? &home : nullptr),
                  String(row.uri) == "~/" ? "~" : row.uri)
            << row.path;
    }
    EXPECT_EQ(PathUri::fromPath(text(u"C:\\\u00E9\U0001F600"), nullptr), "/c/%C3%A9%F0%9F%98%80");
    EXPECT_EQ(PathUri::fromPath(text(u"C:\\\xD800"), nullptr), "");
}

TEST(FileUri, ReadsWhatItWroteAndMore) {
    const struct {
        const char* uri;
        const char* path; ///< null: refused
    } rows[] = {
        {"", ""},
        {"/c", "C:\\"},
        {"/c/a%20b/%C3%A9", "C:\\a b\\\xE9"},
        {"c:/a", "C:\\a"},
        {"C:\\a\\b", "C:\\a\\b"},
        {"/home/u", "\\home\\u"},
        {"/", "\\"},
        {"//srv/share/a", "\\\\srv\\share\\a"},
        {"~", "D:\\me"},
        {"~/a/../b/.", "D:\\me\\b"},
        {"~you", "D:\\w\\~you"},
        {"a/b", "D:\\w\\a\\b"},
        {"../../../a", "D:\\a"},
        {"%2e%2e/a", "D:\\a"},
        {"file:///c/dir", "C:\\dir"},
        {"FILE:///c:/dir", "C:\\dir"},
        {"file:////srv/share", "\\\\srv\\share"},
        {"file:///~/a", "D:\\me\\a"},
        {"file://a", "D:\\w\\a"},
        {"/~/a", "\\~\\a"},
        {"100%.txt", "D:\\w\\100%.txt"},
        {"a%FFb", "D:\\w\\a%FFb"},
        {"a%2Fb", nullptr},
        {"a%5cb", nullptr},
        {"a%00b", nullptr},
        {"/c:/x", "\\c:\\x"},
    };
    for (const auto& row : rows) {
        String path("untouched");
        EXPECT_EQ(PathUri::toPath(row.uri, "D:\\w", "D:\\me", path), row.path != nullptr)
            << row.uri;
        EXPECT_EQ(path, row.path ? row.path : "untouched") << row.uri;
    }
    String path("untouched");
    EXPECT_FALSE(PathUri::toPath("~", "D:\\w", String(), path));
    EXPECT_FALSE(PathUri::toPath(text(u"a\0b"), "D:\\w", "D:\\me", path));
    const String odd = text(u"D:\\\u00E9 %41#\U0001F600\\;");
    ASSERT_TRUE(PathUri::toPath(PathUri::fromPath(odd, nullptr), "D:\\w", "D:\\me", path));
    EXPECT_EQ(path, odd);
}

TEST(FileUri, FindsTheWay) {
    const struct {
        const char* target;
        const char* base;
        const char* result;
    } rows[] = {
        {"C:\\a\\b", "C:\\a\\x", "../b"},   {"C:\\a\\b", "C:\\a\\b", "."},
        {"C:\\a\\b", "C:\\", "a/b"},        {"C:\\a", "C:\\a\\b\\c", "../.."},
        {"D:\\x\\y", "C:\\a\\b", "/d/x/y"}, {"\\\\s\\t\\u", "C:\\a", "//s/t/u"},
        {"C:\\a b", "C:\\c", "../a%20b"},   {"C:\\A\\b", "C:\\a\\x", "../../A/b"},
        {"C:\\a\\~", "C:\\a", "./~"},       {"\\a\\c:\\x", "\\a", "./c:/x"},
    };
    EXPECT_EQ(PathUri::relative(String(), String()), ".");
    EXPECT_EQ(PathUri::relative(String(), "C:\\a"), "") << "not the root";
    EXPECT_EQ(PathUri::relative(text(u"C:\\\xD800"), "C:\\"), "");
    EXPECT_EQ(PathUri::relative("C:\\a", text(u"C:\\\xD800")), "/c/a");
    for (const auto& row : rows) {
        const String way = PathUri::relative(row.target, row.base);
        EXPECT_EQ(way, row.result) << row.target << " from " << row.base;
        String back;
        ASSERT_TRUE(PathUri::toPath(way, row.base, "D:\\me", back));
        EXPECT_EQ(back, row.target);
    }
}

TEST(FileUri, LongPathsTakeLinearTime) {
    String path("C:");
    for (int level = 0; level < 200000; ++level)
        path += "\\a";
    const String uri = PathUri::fromPath(path, nullptr);
    String back;
    ASSERT_TRUE(PathUri::toPath(uri, String(), String(), back));
    EXPECT_EQ(back, path);
    EXPECT_EQ(PathUri::relative(path, path), ".");
    EXPECT_EQ(PathUri::relative(path, "C:\\a").length(), 2 * 199999 - 1);
}

} // namespace
