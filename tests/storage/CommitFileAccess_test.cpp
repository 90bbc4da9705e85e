#include "engine/storage/CommitFileAccess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "engine/storage/CommitLogFormat.h"
#include "engine/storage/VelaFolderFileAccess.h"
#include "tests/storage/CrashDisk.h"
#include "tests/storage/DatabaseContents.h"
#include "tests/storage/TableFixture.h"
#include "tests/storage/TemporaryFolder.h"
#include "tests/storage/WholeLogRecord.h"

namespace vela {

namespace {

// "none" when there is no such file.
std::string Read(CommitFileAccess& files, const std::string& name)
{
    const auto stream = files.OpenFile(name.c_str(), false);
    if (!stream)
        return "none";
    std::string bytes(static_cast<size_t>(stream->GetLength()), '\0');
    EXPECT_TRUE(stream->ReadData(bytes.data(), static_cast<int>(bytes.size()), nullptr));
    EXPECT_TRUE(stream->IsEOF());
    for (size_t place = 0; place < bytes.size(); place += 61) {
        const std::string_view atHand = stream->Peek(static_cast<int64_t>(place));
        EXPECT_EQ(bytes.substr(place, atHand.size()), atHand);
    }
    return bytes;
}

class CommitFileAccessTest : public testing::Test {
protected:
    CommitFileAccessTest() { Open(); }
    void Open(bool readOnly = false)
    {
        files.reset();
        files =
            std::make_unique<CommitFileAccess>(std::make_unique<MemoryFileAccess>(&disk, readOnly));
    }
    bool Write(const char* name, int64_t position, std::string_view bytes)
    {
        const auto stream = files->OpenFile(name, false);
        return stream && stream->SeekFromStart(position) &&
               stream->WriteData(bytes.data(), static_cast<int>(bytes.size()));
    }
    std::string Read(const char* name) { return vela::Read(*files, name); }
    std::string Found(const char* pattern)
    {
        SimpleVector<string> names;
        files->FindFiles(pattern, &names);
        std::string text;
        for (const string& name : names)
            text += std::string(name.View()) + " ";
        return text;
    }

    MemoryDisk disk;
    std::unique_ptr<CommitFileAccess> files;
};

std::unique_ptr<CommitFileAccess> OpenFolder(const TemporaryFolder& folder)
{
    return std::make_unique<CommitFileAccess>(std::make_unique<VelaFolderFileAccess>(
        folder.Locator(), VelaFolderFileAccess::Mode::kReadWrite));
}

std::map<std::string, std::string> AllFilesOf(const TemporaryFolder& folder)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        files[entry.path().filename()] = folder.Read(entry.path().filename());
    return files;
}

}   // namespace

TEST_F(CommitFileAccessTest, ReaderOfADeadWritersFilesSeesTheCommitsAndWritesNothing)
{
    disk.Put("a.dat", "0123456789");
    disk.Put("b.dat", "b");
    ASSERT_TRUE(files->BeginCommit());
    EXPECT_TRUE(Write("a.dat", 8, "abcd") && files->DeleteFile("b.dat") &&
                files->CreateFile("c.dat"));
    EXPECT_TRUE(Write("c.dat", 0, "c"));
    ASSERT_TRUE(files->EndCommit());
    // The log has reached the disk, and nothing else has.
    const std::string log = disk.AllFiles().at(kCommitLogName);
    files.reset();
    disk.Restore({{"a.dat", "0123456789"}, {"b.dat", "b"}, {kCommitLogName, log}});
    const auto dead = disk.AllFiles();
    Open(true);
    ASSERT_TRUE(files->IsOpen());
    EXPECT_EQ("01234567abcd", Read("a.dat"));
    EXPECT_EQ("c", Read("c.dat"));
    EXPECT_EQ("a.dat c.dat ", Found("*"));
    ASSERT_TRUE(files->BeginCommit());
    EXPECT_FALSE(Write("a.dat", 0, "x"));
    EXPECT_FALSE(files->CreateFile("d.dat"));
    EXPECT_FALSE(files->DeleteFile("a.dat"));
    EXPECT_TRUE(files->EndCommit()) << "of nothing";
    EXPECT_EQ("01234567abcd", Read("a.dat"));
    files.reset();
    EXPECT_EQ(dead, disk.AllFiles());
    Open();
    EXPECT_EQ("01234567abcd", disk.Bytes("a.dat"));
    EXPECT_EQ("c", disk.Bytes("c.dat"));
    EXPECT_EQ((std::map<std::string, std::string>{{"a.dat", "01234567abcd"}, {"c.dat", "c"}}),
              disk.AllFiles());
}

// Each cut and each changed byte of a log with two commits: the files end in one of three states, or the opening is refused.
TEST_F(CommitFileAccessTest, DamagedLogsGiveAStateThatWas)
{
    disk.Put("a.dat", "0123456789");
    for (const char* text : {"first", "second"}) {
        ASSERT_TRUE(files->BeginCommit());
        ASSERT_TRUE(Write("a.dat", 8, text));
        ASSERT_TRUE(files->EndCommit());
    }
    const std::string log = disk.AllFiles().at(kCommitLogName).substr(0, 3 * kLogAlignment);
    files.reset();
    const std::vector<std::string> states{"0123456789", "01234567first", "01234567second"};
    std::vector<int> seen(3);
    const auto check = [&](const std::string& damaged, size_t place) {
        disk.Restore({{"a.dat", "0123456789"}, {kCommitLogName, damaged}});
        Open();
        ASSERT_TRUE(files->IsOpen()) << place;
        const auto state = std::find(states.begin(), states.end(), disk.Bytes("a.dat"));
        ASSERT_NE(states.end(), state) << place;
        seen[static_cast<size_t>(state - states.begin())]++;
        EXPECT_FALSE(disk.Contains(kCommitLogName)) << place;
        files.reset();
    };
    for (size_t place = 0; place < log.size(); place++) {
        check(log.substr(0, place), place);
        for (const char byte : {'\x00', '\xFF', static_cast<char>(log[place] ^ 1)}) {
            std::string damaged = log;
            damaged[place] = byte;
            check(damaged, place);
        }
    }
    for (const int count : seen)
        EXPECT_LT(10, count);
}

// What an earlier commit has written to a file may wait in its stream still, when the next one puts a new file in its place.
TEST(CommitFileAccess, NewFileInPlaceOfAnOldOneTakesNothingFromIt)
{
    for (const char* size : {"small", "large"}) {
        TemporaryFolder folder;
        folder.Write("a.dat", std::string(100, 'a'));
        auto files = OpenFolder(folder);
        files->SetLimits({size[0] == 'l' ? size_t{3} : size_t{1000}, 1 << 20, 0});
        const auto old = files->OpenFile("a.dat", false);
        ASSERT_TRUE(files->BeginCommit());
        ASSERT_TRUE(old->SeekFromStart(100) && old->WriteData("b", 1));
        ASSERT_TRUE(files->EndCommit());
        ASSERT_TRUE(files->BeginCommit());
        ASSERT_TRUE(files->CreateFile("a.dat"));
        ASSERT_TRUE(files->OpenFile("a.dat", false)->WriteData("short", 5));
        ASSERT_TRUE(files->EndCommit());
        old->Close();
        files.reset();
        EXPECT_EQ("short", folder.Read("a.dat")) << size;
    }
}

// A flush that fails may lose what it was to flush for good, without the system saying so again.
TEST(CommitFileAccess, OnlyWhatWasFlushedAheadOutlivesACommitWhoseFlushFails)
{
    const std::string first(5000, 'x');
    const std::string second(5000, 'y');
    CrashDisk disk;
    auto files = std::make_unique<CommitFileAccess>(std::make_unique<MemoryFileAccess>(&disk));
    ASSERT_TRUE(files->BeginCommit() && files->CreateFile("a.dat") && files->EndCommit());
    auto stream = files->OpenFile("a.dat", false);
    AheadBytes* ahead = stream->Ahead();
    ASSERT_TRUE(ahead->WriteAhead(first.data(), first.size()) && ahead->FlushAhead());
    ASSERT_TRUE(ahead->WriteAhead(second.data(), second.size()));
    EXPECT_EQ(0, stream->GetLength());
    EXPECT_EQ("", Read(*files, "a.dat")) << "nobody else sees it";

    ASSERT_TRUE(files->BeginCommit() && ahead->TakeAhead(10000));
    EXPECT_EQ(first + second, Read(*files, "a.dat"));
    disk.FailAt(1, MemoryDisk::Fault::kOnce);
    EXPECT_FALSE(files->EndCommit());
    files->CancelCommit();
    EXPECT_EQ(5000, ahead->AheadLength());

    ASSERT_TRUE(files->BeginCommit() && ahead->TakeAhead(5000));
    ASSERT_TRUE(files->EndCommit());
    CrashDisk crashed(disk.OnlyFlushed());
    CommitFileAccess recovered(std::make_unique<MemoryFileAccess>(&crashed));
    EXPECT_EQ(first, Read(recovered, "a.dat"));
}

// Random commits on a folder, with small limits, which send large parts to the files before the commit ends, and with large
// ones, against files that are just strings.
TEST(CommitFileAccess, FolderHoldsWhatAModelSays)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto upTo = [&random](size_t n) { return random() % (n + 1); };
    TemporaryFolder folder;
    auto files = OpenFolder(folder);
    std::map<std::string, std::string> committed;
    const auto expectSeen = [&files](const std::map<std::string, std::string>& model) {
        SimpleVector<string> names;
        files->FindFiles("*.dat", &names);
        ASSERT_EQ(model.size(), names.size());
        for (const auto& [name, bytes] : model)
            ASSERT_EQ(bytes, Read(*files, name)) << name;
        EXPECT_EQ(model.count("a.dat") != 0, files->ContainsFile("a.dat"));
    };
    for (int commit = 0; commit < 400; commit++) {
        if (upTo(9) == 0) {
            files.reset();
            ASSERT_EQ(committed, AllFilesOf(folder)) << commit;
            files = OpenFolder(folder);
        }
        const bool large = upTo(1) == 0;
        files->SetLimits({large ? size_t{50} : size_t{1} << 20, upTo(1) == 0 ? 2000 : 1 << 20, 0});
        auto before = AllFilesOf(folder);
        ASSERT_TRUE(files->BeginCommit());
        auto model = committed;
        for (size_t step = upTo(8); step > 0; step--) {
            const std::string name = std::string(1, static_cast<char>('a' + upTo(2))) + ".dat";
            std::string& bytes = model[name];
            const size_t what = upTo(9);
            const auto stream = files->OpenFile(name.c_str(), true);
            ASSERT_TRUE(stream);
            if (what == 0 && files->CreateFile(name.c_str())) {
                bytes.clear();
            } else if (what == 1 && files->DeleteFile(name.c_str())) {
                model.erase(name);
            } else if (what == 2) {
                bytes.resize(upTo(bytes.size()));
                ASSERT_TRUE(stream->SetLength(static_cast<int64_t>(bytes.size())));
            } else {
                const size_t gap = what == 3 ? upTo(20) : 0;
                const size_t position = what < 6 ? bytes.size() + gap : upTo(bytes.size());
                const std::string text(1 + upTo(119), static_cast<char>('A' + upTo(25)));
                bytes.resize(std::max(bytes.size(), position + text.size()));
                bytes.replace(position, text.size(), text);
                ASSERT_TRUE(stream->SeekFromStart(static_cast<int64_t>(position)));
                ASSERT_TRUE(stream->WriteData(text.data(), static_cast<int>(text.size())));
            }
        }
        expectSeen(model);
        if (!large) {
            EXPECT_EQ(before, AllFilesOf(folder)) << "seen outside before the commit ends";
        }
        if (upTo(3) == 0) {
            files->CancelCommit();
            expectSeen(committed);
            continue;
        }
        ASSERT_TRUE(files->EndCommit()) << files->ErrorText().CString();
        committed = model;
        expectSeen(committed);
    }
    files.reset();
    EXPECT_EQ(committed, AllFilesOf(folder));
}

TEST(CommitFileAccess, FolderThatWasMovedFailsCommitsUntilItComesBack)
{
    const TemporaryFolder folder;
    const std::string place = folder.File("db");
    const auto open = [&place] {
        return std::make_unique<CommitFileAccess>(std::make_unique<VelaFolderFileAccess>(
            FileLocator(place.c_str()), VelaFolderFileAccess::Mode::kCreate));
    };
    auto files = open();
    const auto commit = [&files](const char* bytes) {
        if (!files->BeginCommit())
            return false;
        const auto stream = files->OpenFile("a.dat", true);
        return stream && stream->WriteData(bytes, 3) && files->EndCommit();
    };
    ASSERT_TRUE(commit("one"));
    std::filesystem::rename(place, folder.File("away"));
    for (const bool another : {false, true}) {
        if (another)
            std::filesystem::create_directory(place);
        EXPECT_FALSE(commit("two"));
        EXPECT_EQ(place + ": The folder has been moved or removed",
                  std::string(files->ErrorText().View()));
    }
    EXPECT_TRUE(std::filesystem::is_empty(place));
    std::filesystem::remove(place);
    std::filesystem::rename(folder.File("away"), place);
    EXPECT_TRUE(commit("two"));
    std::filesystem::rename(place, folder.File("away"));
    files.reset();   // can't bring anything to its end
    EXPECT_TRUE(std::filesystem::exists(folder.File("away/_commit.log")));
    std::filesystem::rename(folder.File("away"), place);
    files = open();
    EXPECT_EQ("two", folder.Read("db/a.dat"));
    files.reset();
    EXPECT_FALSE(std::filesystem::exists(folder.File("db/_commit.log")));
}

// A crash after the second of two commits: the file has been cut by it, the bytes of the first have not arrived.
TEST_F(CommitFileAccessTest, CutFileDoesNotLoseWhatWasWrittenBefore)
{
    disk.Put("a.dat", "0123456789");
    ASSERT_TRUE(files->BeginCommit());
    EXPECT_TRUE(Write("a.dat", 2, "xy") && Write("a.dat", 10, "0123456789"));
    ASSERT_TRUE(files->EndCommit());
    const int64_t before = disk.Operations();
    ASSERT_TRUE(files->BeginCommit());
    EXPECT_TRUE(files->OpenFile("a.dat", false)->SetLength(5));
    ASSERT_TRUE(files->EndCommit());
    // Flushed before, the first needs no record any more.
    EXPECT_LE(before + 4, disk.Operations());
    const std::string log = disk.AllFiles().at(kCommitLogName);
    files.reset();
    disk.Restore({{"a.dat", "01xy4"}, {kCommitLogName, log}});
    CapturedErrors errors;
    Open();
    EXPECT_EQ("01xy4", disk.Bytes("a.dat"));
    EXPECT_EQ("", errors.Text());
}

TEST_F(CommitFileAccessTest, LogTakenAwayMakesCommitsFail)
{
    disk.Put("a.dat", "0123456789");
    ASSERT_TRUE(files->BeginCommit() && Write("a.dat", 2, "x") && files->EndCommit());
    disk.Remove(kCommitLogName);
    EXPECT_FALSE(files->BeginCommit());
    EXPECT_EQ("_commit.log: No such file or directory", std::string(files->ErrorText().View()));
}

// What was on its way to a file may be gone when its flush has failed: no commit builds on the file before it was written again.
TEST_F(CommitFileAccessTest, WhatAFailedFlushHasLostIsThereForTheNextCommit)
{
    int lost = 0;
    for (int64_t call = 1; call < 10; call++) {
        disk.Restore({{"a.dat", "0123456789"}});
        Open();
        files->SetLimits({1 << 20, 0, 0});   // each commit is followed by a flush of its files
        ASSERT_TRUE(files->BeginCommit() && Write("a.dat", 10, "first") && files->EndCommit());
        ASSERT_TRUE(files->BeginCommit() && Write("a.dat", 15, "second"));
        disk.FailAt(call, MemoryDisk::Fault::kOnce);
        const bool committed = files->EndCommit();
        disk.ClearFault();
        if (!committed)
            files->CancelCommit();
        if (committed && disk.HasFailed() && files->ErrorText().View().starts_with("a.dat")) {
            disk.Replace("a.dat", "0123456789first");
            lost++;
        }
        ASSERT_TRUE(files->BeginCommit()) << call;
        EXPECT_EQ(committed ? "0123456789firstsecond" : "0123456789first", Read("a.dat")) << call;
        files->CancelCommit();
        files.reset();
        EXPECT_EQ(committed ? "0123456789firstsecond" : "0123456789first", disk.Bytes("a.dat"))
            << call;
    }
    EXPECT_EQ(2, lost) << "writing it and flushing it";
}

// A log with good checksums that says what can't be.
TEST_F(CommitFileAccessTest, LogThatMisleadsHarmsNoOtherFile)
{
    const auto logOf = [](const std::string& payload) {
        return EncodeLogHead(1) + WholeLogRecord({LogRecordKind::kCommit, 1, 0, 0, 0}, payload);
    };
    std::string missing;
    AppendLogEntry(&missing, LogEntryKind::kFile, "missing.dat");
    AppendLogNumber(&missing, 10);
    AppendLogNumber(&missing, 10);
    AppendLogCount(&missing, 0);
    std::string tooLong;
    AppendLogEntry(&tooLong, LogEntryKind::kFile, "a.dat");
    AppendLogNumber(&tooLong, int64_t{1} << 60);
    AppendLogNumber(&tooLong, int64_t{1} << 60);
    AppendLogCount(&tooLong, 0);
    std::string noBeside;
    AppendLogEntry(&noBeside, LogEntryKind::kReplacement, "a.dat");
    AppendLogNumber(&noBeside, 5);
    const struct {
        std::string payload;
        bool opens;
        bool tells;
        const char* why;
    } cases[] = {
        {"", true, false, "a commit of nothing"},
        {missing, true, true, "a file that is missing"},
        {tooLong, true, true, "a file that is longer than it is"},
        {noBeside, true, false, "it has its name already"},
        {"rubbish", false, false, "no entry"},
    };
    for (const auto& c : cases) {
        disk.Restore({{"a.dat", "0123456789"}, {kCommitLogName, logOf(c.payload)}});
        CapturedErrors errors;
        Open();
        EXPECT_EQ(c.opens, files->IsOpen()) << c.why;
        EXPECT_EQ(c.opens, files->ErrorText().empty()) << c.why;
        EXPECT_EQ(c.tells, !errors.Text().empty()) << c.why;
        EXPECT_EQ("0123456789", disk.Bytes("a.dat")) << c.why;
        EXPECT_EQ(!c.opens, disk.Contains(kCommitLogName)) << c.why;
        EXPECT_EQ(c.opens, files->ContainsFile("a.dat")) << "a refused one refuses everything";
    }
}

}   // namespace vela
