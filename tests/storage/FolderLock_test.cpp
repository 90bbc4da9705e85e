#include "engine/storage/FolderLock.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "tests/storage/TemporaryFolder.h"

namespace vela {

namespace {

using Kind = FolderLock::Kind;

}   // namespace

TEST(FolderLock, OneWriterOrAnyNumberOfReaders)
{
    const struct {
        Kind first;
        Kind second;
        bool both;
    } cases[] = {{Kind::kForReading, Kind::kForReading, true},
                 {Kind::kForReading, Kind::kForWriting, false},
                 {Kind::kForWriting, Kind::kForReading, false},
                 {Kind::kForWriting, Kind::kForWriting, false}};
    for (const auto& c : cases) {
        const TemporaryFolder folder;
        const string path(folder.Path().c_str());
        {
            FolderLock first;
            ASSERT_TRUE(first.Take(path, c.first));
            FolderLock second;
            EXPECT_EQ(c.both, second.Take(path, c.second));
            if (!c.both) {
                EXPECT_STREQ(c.first == Kind::kForReading
                                 ? "The database is being read by this process"
                                 : "The database is open in this process",
                             second.ErrorText().CString());
            }
        }
        FolderLock later;
        EXPECT_TRUE(later.Take(path, c.second)) << "both are gone";
    }
}

TEST(FolderLock, NamesTheOtherProcessAndGoesWithIt)
{
    const TemporaryFolder folder;
    const string path(folder.Path().c_str());
    int ready[2];
    ASSERT_EQ(0, pipe(ready));
    const pid_t child = fork();
    if (child == 0) {
        FolderLock lock;
        const char taken = lock.Take(path, Kind::kForWriting) ? 'y' : 'n';
        if (write(ready[1], &taken, 1) == 1)
            pause();
        _exit(0);
    }
    char taken = 0;
    ASSERT_EQ(1, read(ready[0], &taken, 1));
    ASSERT_EQ('y', taken);
    FolderLock lock;
    EXPECT_FALSE(lock.Take(path, Kind::kForReading));
    EXPECT_EQ("The database is open in process " + std::to_string(child) + " (vela_tests)",
              std::string(lock.ErrorText().View()));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(lock.Take(path, Kind::kForWriting));
    close(ready[0]);
    close(ready[1]);
}

TEST(FolderLock, SeesThatTheFolderHasMoved)
{
    const TemporaryFolder folder;
    const std::string place = folder.File("db");
    std::filesystem::create_directory(place);
    std::filesystem::create_directory_symlink(place, folder.File("link"));
    FolderLock lock;
    ASSERT_TRUE(lock.Take(folder.File("link").c_str(), Kind::kForWriting));
    EXPECT_TRUE(lock.IsStillAt(place.c_str()));
    FolderLock other;
    EXPECT_FALSE(other.Take(place.c_str(), Kind::kForReading)) << "a link leads to the same folder";
    std::filesystem::rename(place, folder.File("elsewhere"));
    EXPECT_FALSE(lock.IsStillAt(place.c_str()));
    std::filesystem::create_directory(place);
    EXPECT_FALSE(lock.IsStillAt(place.c_str())) << "another one of the name";
    EXPECT_FALSE(lock.Take(folder.File("nowhere").c_str(), Kind::kForReading));
    EXPECT_NE(0u, lock.ErrorText().length());
}

}   // namespace vela
