#include "engine/storage/DataFileCleaner.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "engine/storage/UnixDataFile.h"
#include "tests/storage/TemporaryFolder.h"

namespace vela {
namespace {

TEST(DataFileCleaner, TakesATemporaryFileFromDiskOpenOrClosed)
{
    for (const bool closed : {false, true}) {
        string path;
        {
            DataFileCleaner cleaner(std::make_unique<UnixDataFile>());
            ASSERT_TRUE(cleaner.File()->CreateTemporaryFile(path));
            EXPECT_TRUE(std::filesystem::exists(path.CString()));
            if (closed)
                cleaner.File()->Close();
        }
        EXPECT_FALSE(std::filesystem::exists(path.CString())) << closed;
    }
}

TEST(DataFileCleaner, AFileThatWasTemporaryOnceIsNotTakenForOne)
{
    TemporaryFolder folder;
    string path;
    {
        DataFileCleaner cleaner(std::make_unique<UnixDataFile>());
        ASSERT_TRUE(cleaner.File()->CreateTemporaryFile(path));
        ASSERT_TRUE(cleaner.File()->Create(folder.File("mine").c_str()));
        EXPECT_TRUE(cleaner.File()->WriteData("abc", 3));
    }
    EXPECT_EQ("abc", folder.Read("mine"));
    EXPECT_EQ(nullptr, DataFileCleaner(nullptr).File());
    EXPECT_TRUE(std::filesystem::remove(path.CString())) << "the file it left is not its any more";
}

}   // namespace
}   // namespace vela
