#include "shell/Session.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "shell/OpenDatabase.h"
#include "shell/ScriptRunner.h"
#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

// A session on a disk that fails when a test says so.
class FaultySession {
public:
    explicit FaultySession(bool keepGoing = false)
    {
        mOptions.keepGoing = keepGoing;
        mOptions.mode = OutputMode::kJsonLines;
        mDatabase = std::make_unique<VelaDatabase>(std::make_unique<MemoryFileAccess>(&mDisk));
        mDatabase->Commit();
        mSession = std::make_unique<Session>(mOptions, *mDatabase, mOutput);
    }

    [[nodiscard]] MemoryDisk& Disk() { return mDisk; }
    [[nodiscard]] bool Run(const std::string& script)
    {
        ScriptRunner runner(*mSession);
        return runner.RunText(script, "script");
    }
    [[nodiscard]] int Finish(bool completed) { return mSession->Finish(completed); }
    [[nodiscard]] std::string Output() { return mOutput.Text(); }
    // Rows of t after opening the database anew.
    [[nodiscard]] size_t StoredRows()
    {
        mDisk.ClearFault();
        VelaDatabase database(std::make_unique<MemoryFileAccess>(&mDisk));
        VelaTrans* table = FindStoredTable(database, "t");
        return table ? table->QtyRows() : 0;
    }

private:
    MemoryDisk mDisk;
    Options mOptions;
    StringOutput mOutput;
    std::unique_ptr<VelaDatabase> mDatabase;
    std::unique_ptr<Session> mSession;
};

constexpr const char* kMakeTable = "CREATE TABLE t (a Integer); INSERT INTO t VALUES (1); COMMIT;";

class SessionErrors : public testing::Test {
protected:
    void SetUp() override { testing::internal::CaptureStderr(); }
    void TearDown() override { testing::internal::GetCapturedStderr(); }
    std::string Errors()
    {
        std::string errors = testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
        return errors;
    }
};

TEST_F(SessionErrors, ACommitThatFailedIsAFailureOfItsStatement)
{
    FaultySession session;
    ASSERT_TRUE(session.Run(kMakeTable));
    session.Disk().FailAt(1, MemoryDisk::Fault::kForGood);
    EXPECT_FALSE(session.Run("INSERT INTO t VALUES (2); COMMIT; INSERT INTO t VALUES (3)"));
    EXPECT_NE(
        std::string::npos,
        session.Output().find("\"sqlstate\": \"58030\", \"message\": \"Error: COMMIT failed: "));
    EXPECT_EQ(0u, Errors().find("script:1:27: 58030 Error: COMMIT failed: "));
    EXPECT_EQ(1, session.Finish(false));
    EXPECT_EQ("veladb: stopped at the failure; open changes were rolled back\n", Errors());
    EXPECT_EQ(1u, session.StoredRows());
}

TEST_F(SessionErrors, AFailedCommitCanBeTriedAgain)
{
    FaultySession session(true);
    ASSERT_TRUE(session.Run(kMakeTable));
    session.Disk().FailAt(1, MemoryDisk::Fault::kOnce);
    EXPECT_TRUE(session.Run("INSERT INTO t VALUES (2); COMMIT; SELECT a FROM t; COMMIT"));
    EXPECT_NE(std::string::npos, session.Output().find("\"rows\": [[1], [2]]"));
    EXPECT_EQ(1, session.Finish(true));
    EXPECT_EQ(2u, session.StoredRows());
}

TEST_F(SessionErrors, AnEarlierFailedCommitIsNotHeldAgainstALaterStatement)
{
    FaultySession session(true);
    session.Disk().FailAt(1, MemoryDisk::Fault::kOnce);
    EXPECT_TRUE(session.Run("CREATE TABLE t (a Integer); COMMIT; SELECT 1"));
    EXPECT_NE(
        std::string::npos,
        session.Output().find("{\"n\": 3, \"canonical\": \"SELECT 1\", \"sqlstate\": \"00000\""));
}

TEST_F(SessionErrors, ACommitThatFailsAtTheEndIsReported)
{
    FaultySession session;
    ASSERT_TRUE(session.Run(kMakeTable));
    ASSERT_TRUE(session.Run("INSERT INTO t VALUES (2)"));
    session.Disk().FailAt(1, MemoryDisk::Fault::kForGood);
    EXPECT_EQ(1, session.Finish(true));
    EXPECT_EQ(0u, Errors().find("veladb: the open changes could not be committed and are lost: "));
    EXPECT_EQ(1u, session.StoredRows());
}

TEST_F(SessionErrors, AnImportThatCantBeCommittedLeavesNothing)
{
    TemporaryFolder folder;
    folder.Write("f.csv", "a\n7\n8\n");
    FaultySession session(true);
    ASSERT_TRUE(session.Run(kMakeTable));
    session.Disk().FailAt(1, MemoryDisk::Fault::kOnce);
    EXPECT_TRUE(session.Run(".import " + folder.File("f.csv") + " t\nSELECT a FROM t"));
    EXPECT_EQ(0u, Errors().find("script:1:1: 58030 Error: Nothing was imported: "));
    EXPECT_NE(std::string::npos, session.Output().find("\"rows\": [[1]]"));
    EXPECT_EQ(1, session.Finish(true));
    EXPECT_EQ(1u, session.StoredRows());
}

TEST_F(SessionErrors, AnIndexAloneIsAnOpenChange)
{
    FaultySession session;
    ASSERT_TRUE(session.Run(kMakeTable));
    ASSERT_TRUE(session.Run("CREATE INDEX i ON t (a)"));
    EXPECT_EQ(0, session.Finish(true));
    EXPECT_TRUE(session.Disk().Contains("t.i.idx"));
}

// Output that takes so many bytes and then fails.
class FullOutput : public Output {
public:
    explicit FullOutput(size_t room) : mRoom(room) {}
    [[nodiscard]] size_t Calls() const { return mCalls; }

protected:
    [[nodiscard]] int Consume(std::string_view text) override
    {
        mCalls++;
        if (text.size() > mRoom)
            return ENOSPC;
        mRoom -= text.size();
        return 0;
    }

private:
    size_t mRoom;
    size_t mCalls = 0;
};

TEST(Output, KeepsItsFirstFailureAndThrowsTheRestAway)
{
    FullOutput output(5);
    output.Write("abc");
    EXPECT_TRUE(output.Flush());
    EXPECT_EQ(0, output.Error());
    output.Write("def");
    EXPECT_FALSE(output.Flush());
    EXPECT_EQ(ENOSPC, output.Error());
    output.Write("g");
    EXPECT_FALSE(output.Flush());
    EXPECT_EQ(2u, output.Calls());
}

TEST(Output, PassesLargeTextsOnBeforeTheyAreFlushed)
{
    FullOutput output(1 << 20);
    output.Write(std::string(1000, 'x'));
    EXPECT_EQ(0u, output.Calls());
    for (int i = 0; i < 1000; i++)
        output.Write(std::string(1000, 'x'));
    EXPECT_GE(output.Calls(), 2u);
    EXPECT_LE(output.Calls(), 10u);
}

}   // namespace
}   // namespace vela::shell
