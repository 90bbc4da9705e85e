#include "runtime/FileLocator.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(FileLocator, NameIsTheLastComponent)
{
    struct {
        const char* path;
        const char* name;
    } cases[] = {
        {"", ""},       {"/", ""},       {"///", ""},
        {"a", "a"},     {"/a", "a"},     {"/a/b.dat", "b.dat"},
        {"/a/b/", "b"}, {"a//b//", "b"}, {"./x", "x"},
        {"..", ".."},
    };
    for (const auto& c : cases)
        EXPECT_STREQ(c.name, FileLocator(c.path).Name().CString()) << c.path;
}

TEST(FileLocator, ChildIsJoinedByOneSlash)
{
    struct {
        const char* path;
        const char* child;
    } cases[] = {
        {"", "x"}, {"/", "/x"}, {"a", "a/x"}, {"a/", "a/x"}, {"/a/b", "/a/b/x"},
    };
    for (const auto& c : cases)
        EXPECT_STREQ(c.child, FileLocator(c.path).Child("x").Path().CString()) << c.path;
}

TEST(FileLocator, KnowsWhatIsThere)
{
    EXPECT_TRUE(FileLocator("/").Exists());
    EXPECT_TRUE(FileLocator("/").IsFolder());
    EXPECT_TRUE(FileLocator("/dev/null").Exists());
    EXPECT_FALSE(FileLocator("/dev/null").IsFolder());
    EXPECT_FALSE(FileLocator("/dev/null/no such place").Exists());
    EXPECT_FALSE(FileLocator("/dev/null/no such place").IsFolder());
    EXPECT_FALSE(FileLocator().Exists());
}

TEST(FileLocator, APathWithNULNamesNothing)
{
    EXPECT_FALSE(FileLocator(string("/\0etc", 5, kEncodingUTF8)).Exists());
    EXPECT_FALSE(FileLocator(string("/\0", 2, kEncodingUTF8)).IsFolder());
}

}   // namespace
}   // namespace vela
