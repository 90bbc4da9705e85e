#include "engine/storage/VelaFolderFileAccess.h"

#include <errno.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/storage/SystemCalls.h"
#include "tests/storage/TemporaryFolder.h"

namespace vela {
namespace {

using Mode = VelaFolderFileAccess::Mode;

std::vector<std::string> Found(const VelaFolderFileAccess& files, const char* pattern)
{
    SimpleVector<string> names;
    files.FindFiles(pattern, &names);
    std::vector<std::string> result;
    for (const string& name : names)
        result.emplace_back(name.View());
    return result;
}

using Names = std::vector<std::string>;

// Everything that can be asked of a name; "good" is the name of another file.
void ExpectRefused(VelaFolderFileAccess& files, const string& name, const std::string& reason)
{
    SCOPED_TRACE(name.CString());
    EXPECT_EQ(nullptr, files.OpenFile(name, false));
    EXPECT_EQ(nullptr, files.OpenFile(name, true));
    EXPECT_FALSE(files.CreateFile(name));
    EXPECT_FALSE(files.DeleteFile(name));
    EXPECT_FALSE(files.RenameFile(name, "new"));
    EXPECT_FALSE(files.RenameFile("good", name));
    EXPECT_FALSE(files.ContainsFile(name));
    const std::string told(files.ErrorText().View());
    EXPECT_NE(std::string::npos, told.find(reason)) << told;
}

class VelaFolderFileAccessTest : public testing::Test {
protected:
    VelaFolderFileAccess Open(Mode mode) const
    {
        return VelaFolderFileAccess(mFolder.Locator(), mode);
    }

    TemporaryFolder mFolder;
};

TEST_F(VelaFolderFileAccessTest, OpensTheFolderOrSaysWhyNot)
{
    mFolder.Write("file", "");
    struct {
        const char* name;
        Mode mode;
        bool opens;
        const char* reason;
    } cases[] = {
        {"", Mode::kReadOnly, true, ""},
        {"", Mode::kReadWrite, true, ""},
        {"", Mode::kCreate, true, ""},
        {"missing", Mode::kReadOnly, false, "No such file or directory"},
        {"missing", Mode::kReadWrite, false, "No such file or directory"},
        {"missing", Mode::kCreate, true, ""},
        {"no/parent", Mode::kCreate, false, "No such file or directory"},
        {"file", Mode::kReadOnly, false, "Not a directory"},
        {"file", Mode::kReadWrite, false, "Not a directory"},
        {"file", Mode::kCreate, false, "Not a directory"},
    };
    for (const auto& c : cases) {
        const std::string path = *c.name ? mFolder.File(c.name) : mFolder.Path();
        const VelaFolderFileAccess files(FileLocator(path.c_str()), c.mode);
        EXPECT_EQ(c.opens, files.IsOpen()) << c.name;
        EXPECT_EQ(c.opens ? "" : path + ": " + c.reason, std::string(files.ErrorText().View()));
        EXPECT_EQ(c.mode == Mode::kReadOnly, files.IsReadOnly());
        if (std::string(c.name) == "missing" && c.mode != Mode::kCreate) {
            EXPECT_FALSE(std::filesystem::exists(path)) << "nothing is made by a typing mistake";
        }
    }
    EXPECT_TRUE(std::filesystem::is_directory(mFolder.File("missing")));
}

TEST_F(VelaFolderFileAccessTest, AContainerThatIsNotThereRefusesEverything)
{
    const std::string path = mFolder.File("missing");
    VelaFolderFileAccess files(FileLocator(path.c_str()), Mode::kReadWrite);
    ExpectRefused(files, "t.dat", path + ": No such file or directory");
    EXPECT_FALSE(files.FlushNames());
    EXPECT_EQ(Names{}, Found(files, "*"));
    const FileLocator withNUL(string("/tmp\0x", 6, kEncodingUTF8));
    EXPECT_FALSE(VelaFolderFileAccess(withNUL, Mode::kCreate).IsOpen());
    EXPECT_FALSE(VelaFolderFileAccess(FileLocator(), Mode::kCreate).IsOpen());
}

TEST_F(VelaFolderFileAccessTest, NamesThatLeadOutOfTheFolderAreRefused)
{
    VelaFolderFileAccess files = Open(Mode::kReadWrite);
    mFolder.Write("good", "x");
    for (const char* name : {"", ".", "..", "/", "a/b", "../x", "/etc/passwd", "a/"})
        ExpectRefused(files, name, ": Not a file name");
    ExpectRefused(files, string("good\0x", 6, kEncodingUTF8), ": Not a file name");
    ExpectRefused(files, string("\0", 1, kEncodingUTF8), ": Not a file name");
    EXPECT_EQ(Names{"good"}, Found(files, "*"));
}

TEST_F(VelaFolderFileAccessTest, OddButGoodNamesWork)
{
    VelaFolderFileAccess files = Open(Mode::kReadWrite);
    const std::string longest(255, 'n');
    for (const char* name :
         {"...", ".x", " ", "a\nb", "\xC3\xA9\xFF", "-rf *", "a\\b", longest.c_str()}) {
        const string file(name, kEncodingUTF8);
        EXPECT_TRUE(files.CreateFile(file)) << name;
        EXPECT_TRUE(files.ContainsFile(file)) << name;
        EXPECT_NE(nullptr, files.OpenFile(file, false)) << name;
        EXPECT_TRUE(files.DeleteFile(file)) << name;
        EXPECT_FALSE(files.ContainsFile(file)) << name;
    }
    const std::string tooLong(256, 'n');
    EXPECT_FALSE(files.CreateFile(tooLong.c_str()));
    EXPECT_EQ(tooLong + ": File name too long", std::string(files.ErrorText().View()));
}

TEST_F(VelaFolderFileAccessTest, OpenFile_GivesABigEndianStreamAtTheStart)
{
    VelaFolderFileAccess files = Open(Mode::kReadWrite);
    EXPECT_EQ(nullptr, files.OpenFile("t.dat", false));
    EXPECT_STREQ("t.dat: No such file or directory", files.ErrorText().CString());
    EXPECT_FALSE(std::filesystem::exists(mFolder.File("t.dat")));
    {
        const auto stream = files.OpenFile("t.dat", true);
        ASSERT_NE(nullptr, stream);
        EXPECT_TRUE(stream->WriteLong(0x01020304));
    }
    EXPECT_EQ("\x01\x02\x03\x04", mFolder.Read("t.dat"));
    const auto stream = files.OpenFile("t.dat", true);
    ASSERT_NE(nullptr, stream);
    EXPECT_EQ(4, stream->GetLength()) << "create must not empty an existing file";
    EXPECT_EQ(0, stream->GetPosition());
    int number = 0;
    EXPECT_TRUE(stream->ReadLong(number));
    EXPECT_EQ(0x01020304, number);
}

TEST_F(VelaFolderFileAccessTest, FilesAreEmptiedReplacedAndDeleted)
{
    VelaFolderFileAccess files = Open(Mode::kReadWrite);
    mFolder.Write("new", "new");
    mFolder.Write("t.dat", "old");
    EXPECT_TRUE(files.RenameFile("new", "t.dat"));
    EXPECT_EQ("new", mFolder.Read("t.dat"));
    EXPECT_FALSE(files.RenameFile("missing", "t.dat"));
    EXPECT_STREQ("missing: No such file or directory", files.ErrorText().CString());
    EXPECT_EQ("new", mFolder.Read("t.dat"));
    EXPECT_TRUE(files.CreateFile("t.dat"));
    EXPECT_EQ("", mFolder.Read("t.dat"));
    EXPECT_TRUE(files.CreateFile("u.dat"));
    EXPECT_EQ((Names{"t.dat", "u.dat"}), Found(files, "*"));
    EXPECT_TRUE(files.DeleteFile("t.dat"));
    EXPECT_TRUE(files.DeleteFile("t.dat")) << "missing already";
    EXPECT_EQ(Names{"u.dat"}, Found(files, "*"));
}

TEST_F(VelaFolderFileAccessTest, ReadOnly_ReadsAndChangesNothing)
{
    mFolder.Write("t.dat", "abc");
    ASSERT_EQ(0, chmod(mFolder.File("t.dat").c_str(), 0400)) << "no right to write is needed";
    VelaFolderFileAccess files = Open(Mode::kReadOnly);
    for (const string name : {"t.dat", "new"}) {
        const std::string reason =
            std::string(name.View()) + ": The database is open for reading only";
        EXPECT_FALSE(files.CreateFile(name));
        EXPECT_EQ(reason, files.ErrorText().CString());
        EXPECT_FALSE(files.DeleteFile(name));
        EXPECT_FALSE(files.RenameFile(name, "u.dat"));
        EXPECT_EQ(nullptr, files.OpenFile(name, true));
        EXPECT_EQ(reason, files.ErrorText().CString());
    }
    const auto stream = files.OpenFile("t.dat", false);
    ASSERT_NE(nullptr, stream);
    EXPECT_FALSE(stream->WriteData("X", 1));
    EXPECT_FALSE(stream->SetLength(0));
    char byte = 0;
    EXPECT_TRUE(stream->ReadData(&byte, 1, nullptr));
    EXPECT_EQ('a', byte);
    EXPECT_EQ("abc", mFolder.Read("t.dat"));
    EXPECT_EQ(Names{"t.dat"}, Found(files, "*"));
}

TEST_F(VelaFolderFileAccessTest, FoldersLinksAndPipesAreNoFilesOfTheDatabase)
{
    TemporaryFolder elsewhere;
    elsewhere.Write("secret", "secret");
    ASSERT_TRUE(std::filesystem::create_directory(mFolder.File("folder.dat")));
    ASSERT_EQ(0, symlink(elsewhere.File("secret").c_str(), mFolder.File("link.dat").c_str()));
    ASSERT_EQ(0, symlink(mFolder.File("missing").c_str(), mFolder.File("broken.dat").c_str()));
    ASSERT_EQ(0, mkfifo(mFolder.File("pipe.dat").c_str(), 0600));
    mFolder.Write("good", "mine");
    VelaFolderFileAccess files = Open(Mode::kReadWrite);
    EXPECT_EQ(Names{"good"}, Found(files, "*"));
    for (const char* name : {"folder.dat", "link.dat", "broken.dat", "pipe.dat"})
        ExpectRefused(files, name, std::string(name) + ": Not an ordinary file");
    EXPECT_FALSE(std::filesystem::exists(mFolder.File("missing"))) << "made through the link";
    EXPECT_EQ("secret", elsewhere.Read("secret"));
    EXPECT_EQ("mine", mFolder.Read("good"));
}

TEST_F(VelaFolderFileAccessTest, TheFolderItselfMayBeALink)
{
    TemporaryFolder elsewhere;
    elsewhere.Write("t.dat", "x");
    const std::string link = mFolder.File("link");
    ASSERT_EQ(0, symlink(elsewhere.Path().c_str(), link.c_str()));
    for (const Mode mode : {Mode::kReadOnly, Mode::kReadWrite, Mode::kCreate}) {
        const VelaFolderFileAccess files(FileLocator(link.c_str()), mode);
        EXPECT_TRUE(files.IsOpen());
        EXPECT_EQ(Names{"t.dat"}, Found(files, "*"));
    }
}

TEST_F(VelaFolderFileAccessTest, FindFiles_AppendsMatchesSortedByBytes)
{
    for (const char* name : {"b.dat", "B.dat", "a.dat", "a.map", "\xC3\xA9.dat", "a.x.idx",
                             "a.y.idx", "ab.x.idx", ".dat"})
        mFolder.Write(name, "");
    const VelaFolderFileAccess files = Open(Mode::kReadOnly);
    EXPECT_EQ((Names{".dat", "B.dat", "a.dat", "b.dat", "\xC3\xA9.dat"}), Found(files, "*.dat"));
    EXPECT_EQ((Names{"a.x.idx", "a.y.idx"}), Found(files, "a.*.idx"));
    EXPECT_EQ((Names{"a.map"}), Found(files, "a.map"));
    EXPECT_EQ(Names{}, Found(files, ""));
    EXPECT_EQ(9u, Found(files, "*").size());
    SimpleVector<string> names = {string("zzz")};
    files.FindFiles("b.dat", &names);
    ASSERT_EQ(2u, names.size());
    EXPECT_TRUE(names[0] == "zzz" && names[1] == "b.dat");
}

TEST_F(VelaFolderFileAccessTest, FlushNames_ReachesTheDeviceAndReportsItsFailure)
{
    VelaFolderFileAccess files = Open(Mode::kReadWrite);
    EXPECT_TRUE(files.CreateFile("t.dat"));
    SystemCalls calls;
    EXPECT_TRUE(files.FlushNames());
    EXPECT_EQ(1, calls.synchronisations);
    calls.synchroniseError = EINVAL;
    EXPECT_TRUE(files.FlushNames()) << "a file system that needs no such call";
    calls.synchroniseError = EIO;
    EXPECT_FALSE(files.FlushNames());
    EXPECT_EQ(mFolder.Path() + ": Input/output error", std::string(files.ErrorText().View()));
    calls.synchroniseError = 0;
    VelaFolderFileAccess inNew(FileLocator(mFolder.File("new").c_str()), Mode::kCreate);
    for (const int wanted : {2, 1}) {
        calls.synchronisations = 0;
        EXPECT_TRUE(inNew.FlushNames());
        EXPECT_EQ(wanted, calls.synchronisations) << "the first one reaches the folder above, too";
    }
}

TEST_F(VelaFolderFileAccessTest, ASecondWriterIsRefusedAndReadersGoTogether)
{
    const VelaFolderFileAccess reader = Open(Mode::kReadOnly);
    EXPECT_TRUE(Open(Mode::kReadOnly).IsOpen());
    for (const Mode mode : {Mode::kReadWrite, Mode::kCreate}) {
        const VelaFolderFileAccess writer = Open(mode);
        EXPECT_FALSE(writer.IsOpen());
        EXPECT_EQ(mFolder.Path() + ": The database is being read by this process",
                  std::string(writer.ErrorText().View()));
    }
    EXPECT_TRUE(reader.IsOpen()) << "the refused ones took nothing from it";
}

TEST_F(VelaFolderFileAccessTest, AFolderThatIsGoneIsNotMistakenForAnotherOfItsName)
{
    std::filesystem::create_directory(mFolder.File("db"));
    mFolder.Write("db/t.dat", "mine");
    VelaFolderFileAccess files(FileLocator(mFolder.File("db").c_str()), Mode::kReadWrite);
    const auto stream = files.OpenFile("t.dat", false);
    std::filesystem::rename(mFolder.File("db"), mFolder.File("away"));
    for (const bool another : {false, true}) {
        if (another) {
            std::filesystem::create_directory(mFolder.File("db"));
            mFolder.Write("db/t.dat", "another's");
        }
        EXPECT_FALSE(files.IsOpen());
        EXPECT_FALSE(files.FlushNames());
        EXPECT_EQ(Names{}, Found(files, "*"));
        ExpectRefused(files, "t.dat",
                      mFolder.File("db") + ": The folder has been moved or removed");
    }
    EXPECT_EQ("another's", mFolder.Read("db/t.dat"));
    EXPECT_TRUE(stream->WriteData("M", 1) && stream->FlushToDisk()) << "its own file";
    EXPECT_EQ("Mine", mFolder.Read("away/t.dat"));
    std::filesystem::remove_all(mFolder.File("db"));
    std::filesystem::rename(mFolder.File("away"), mFolder.File("db"));
    EXPECT_TRUE(files.IsOpen()) << "it has come back";
    EXPECT_TRUE(files.ContainsFile("t.dat"));
}

TEST_F(VelaFolderFileAccessTest, ReadOnly_LeavesEveryTimeStamp)
{
    mFolder.Write("t.dat", "abc");
    // Times of access before those of the last change are the ones that a mount usually renews.
    const timespec times[] = {{1000, 0}, {2000, 0}};
    const std::string paths[] = {mFolder.Path(), mFolder.File("t.dat")};
    for (const std::string& path : paths)
        ASSERT_EQ(0, utimensat(AT_FDCWD, path.c_str(), times, 0));
    {
        VelaFolderFileAccess files = Open(Mode::kReadOnly);
        EXPECT_EQ(Names{"t.dat"}, Found(files, "*"));
        const auto stream = files.OpenFile("t.dat", false);
        char bytes[3];
        EXPECT_TRUE(stream && stream->ReadData(bytes, 3, nullptr));
        EXPECT_TRUE(files.ContainsFile("t.dat"));
    }
    for (const std::string& path : paths) {
        struct stat info {};
        ASSERT_EQ(0, stat(path.c_str(), &info));
        EXPECT_EQ(1000, info.st_atim.tv_sec) << path;
        EXPECT_EQ(2000, info.st_mtim.tv_sec) << path;
    }
}

TEST_F(VelaFolderFileAccessTest, AFolderWithoutRightsIsNotOpened)
{
    // Nothing is forbidden to the superuser: be somebody else meanwhile.
    constexpr uid_t kNobody = 65534;
    const uid_t before = geteuid();
    ASSERT_EQ(0, chmod(mFolder.Path().c_str(), 0555));
    if (before == 0) {
        ASSERT_EQ(0, seteuid(kNobody));
    }
    const bool readable = Open(Mode::kReadOnly).IsOpen();
    const VelaFolderFileAccess writable = Open(Mode::kReadWrite);
    ASSERT_EQ(0, seteuid(before));
    EXPECT_TRUE(readable);
    EXPECT_FALSE(writable.IsOpen());
    EXPECT_EQ(mFolder.Path() + ": Permission denied", std::string(writable.ErrorText().View()));
    ASSERT_EQ(0, chmod(mFolder.Path().c_str(), 0700));
}

}   // namespace
}   // namespace vela
