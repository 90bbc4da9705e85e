#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <unordered_set>

#include "engine/storage/CommitFileAccess.h"
#include "tests/storage/CrashDisk.h"
#include "tests/storage/DatabaseContents.h"
#include "tests/storage/TableFixture.h"

// A varied life of a database on a disk that crashes after every single thing that is done to it, in every way that a
// disk has. Each time the database must open in the state before or after the commit that was under way.
//
// VELA_CRASH_IMAGES says how many images are tried, VELA_CRASH_SEED where the seeds begin.

namespace vela {

namespace {

using Image = CrashDisk::Image;

int64_t NumberFromEnvironment(const char* name, int64_t otherwise)
{
    const char* text = std::getenv(name);
    return text == nullptr ? otherwise : std::atoll(text);
}

DatabaseOnDisk::MakeFiles FilesOn(CrashDisk* disk)
{
    return [disk](bool readOnly) { return std::make_unique<MemoryFileAccess>(disk, readOnly); };
}

size_t HashOf(const Image& image)
{
    size_t hash = 0;
    for (const auto& [name, bytes] : image) {
        hash = hash * 31 + std::hash<std::string>()(name);
        hash = hash * 31 + std::hash<std::string>()(bytes);
    }
    return hash;
}

struct Counts {
    int64_t images = 0;      // made
    int64_t opened = 0;      // those that differ from others of their moment
    int64_t recovered = 0;   // of these, those with a log
    int64_t twice = 0;       // images of crashes during recovery
};

class Life {
public:
    Life(uint32_t seed, Counts* counts) : mRandom(seed), mCounts(counts)
    {
        mSmall = seed % 2 == 0;
        const size_t pieces[] = {1, 100, 1500};
        mAheadPiece = pieces[seed / 2 % 3];
        mDisk.afterEach = [this] { Crash(); };
        Open();
        mBefore = State();
        Commit();
    }

    ~Life() { mDisk.afterEach = nullptr; }
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    // One transaction, or an opening.
    void Step()
    {
        const bool closes = mRandom.OneIn(12);
        const uint32_t most = mRandom.OneIn(3) ? 1 + mRandom.Below(6) : 1;
        const uint32_t changes = closes && mRandom.OneIn(2) ? 0 : most;
        const bool fails = mRandom.OneIn(30);
        if (fails)
            mDisk.FailAt(1 + mRandom.Below(12),
                         mRandom.OneIn(3) ? MemoryDisk::Fault::kForGood : MemoryDisk::Fault::kOnce);
        for (uint32_t i = 0; i < changes; i++)
            Change();
        if (fails)
            mDisk.ClearFault();
        // Rows go ahead of the commit in the meantime.
        EndOfMoment({mBefore});
        if (closes) {
            mDB.reset();
            EndOfMoment({mBefore});
            Open();
            EXPECT_EQ(mBefore, State());
        } else if (mRandom.OneIn(10)) {
            mDB->Rollback();
            EndOfMoment({mBefore});
            EXPECT_EQ(mBefore, State());
        } else if (mRandom.OneIn(5)) {
            CommitWithFault();
        } else {
            Commit();
        }
    }

private:
    void Open()
    {
        mDB = std::make_unique<DatabaseOnDisk>(FilesOn(&mDisk));
        // Small limits make most commits large ones, and most of those that aren't the last of their log.
        if (mSmall)
            mDB->database->Files()->SetLimits({200, 6000, mAheadPiece});
    }
    Texts State() { return Contents(*mDB->database); }

    void Commit()
    {
        ASSERT_TRUE(mDB->Commit()) << mDB->database->CommitErrorText().CString();
        const Texts after = State();
        EndOfMoment({mBefore, after});
        mBefore = after;
        Crash();
        EndOfMoment({after});
    }

    // What fails leaves the state before; what succeeds all the same has happened.
    void CommitWithFault()
    {
        const Texts pending = State();
        mDisk.FailAt(1 + mRandom.Below(25),
                     mRandom.OneIn(3) ? MemoryDisk::Fault::kForGood : MemoryDisk::Fault::kOnce);
        bool committed = mDB->Commit();
        if (!committed) {
            EXPECT_EQ(pending, State());
        }
        mDisk.ClearFault();
        if (!committed && mRandom.OneIn(2)) {
            // By this, what a broken disk may still have of the commit is gone.
            committed = mDB->Commit();
            EXPECT_TRUE(committed) << mDB->database->CommitErrorText().CString();
            const Texts after = State();
            EndOfMoment({mBefore, after});
            mBefore = after;
        } else if (committed) {
            const Texts after = State();
            EndOfMoment({mBefore, after});
            mBefore = after;
        } else {
            mDB->Rollback();
            EXPECT_EQ(mBefore, State());
            AddRow();
            mMoment.clear();   // it may have been found whole until the disk could be mended
            mDisk.afterEach = nullptr;
            ASSERT_TRUE(mDB->Commit()) << mDB->database->CommitErrorText().CString();
            mDisk.afterEach = [this] { Crash(); };
            mBefore = State();
        }
        Crash();
        EndOfMoment({mBefore});
    }

    // ---- crashes

    void Crash()
    {
        mMoment.push_back(mDisk.AllFiles());
        mMoment.push_back(mDisk.OnlyFlushed());
        const int more = mDisk.flushes % 2 == 0 ? 6 : 4;
        for (int i = 0; i < more; i++)
            mMoment.push_back(mDisk.Crashed(&mRandom));
    }

    // Checks the images since the last call.
    void EndOfMoment(const std::vector<Texts>& allowed)
    {
        std::unordered_set<size_t> seen;
        for (const Image& image : mMoment) {
            mCounts->images++;
            if (seen.insert(HashOf(image)).second)
                Check(image, allowed);
            if (testing::Test::HasFailure())
                break;
        }
        mMoment.clear();
    }

    void Check(const Image& image, const std::vector<Texts>& allowed)
    {
        const bool hasLog = image.count(kCommitLogName) != 0;
        mCounts->opened++;
        mCounts->recovered += hasLog ? 1 : 0;
        const CapturedErrors errors;
        CrashDisk disk(image);
        std::vector<Image> crashes;
        if (hasLog && mRandom.OneIn(20))
            disk.afterEach = [&] { crashes.push_back(disk.Crashed(&mRandom)); };
        Texts seen;
        if (mRandom.OneIn(4)) {
            DatabaseOnDisk reader(FilesOn(&disk), true);
            seen = Contents(*reader.database);
            EXPECT_EQ(0, disk.Operations()) << "a reader wrote";
        }
        DatabaseOnDisk db(FilesOn(&disk));
        disk.afterEach = nullptr;
        const Texts contents = Contents(*db.database);
        const bool isAllowed = std::find(allowed.begin(), allowed.end(), contents) != allowed.end();
        EXPECT_TRUE(isAllowed) << testing::PrintToString(contents) << "\nbefore "
                               << testing::PrintToString(allowed.front()) << "\nafter "
                               << testing::PrintToString(allowed.back());
        if (!seen.empty() && !image.empty() && image.count("_schema.dat") != 0) {
            EXPECT_EQ(contents, seen) << "a reader saw something else";
        }
        EXPECT_EQ("", IndexFault(*db.database));
        const Texts described = DescribedFiles(*db.database);
        const bool isNew = db.database->TransactionInProgress();
        db.database.reset();
        if (!isNew) {
            Texts names;
            for (const auto& [name, bytes] : disk.AllFiles())
                names.push_back(name);
            EXPECT_EQ(testing::PrintToString(described), testing::PrintToString(names))
                << "files that belong to nobody, or are missing";
        }
        EXPECT_EQ(disk.AllFiles(), disk.OnlyFlushed()) << "closed, and not all on the disk";
        for (const Image& crash : crashes)
            CheckRecoveredTwice(crash, contents);
    }

    void CheckRecoveredTwice(const Image& image, const Texts& expected)
    {
        mCounts->images++;
        mCounts->twice++;
        CrashDisk disk(image);
        const DatabaseOnDisk db(FilesOn(&disk));
        EXPECT_EQ(expected, Contents(*db.database));
        EXPECT_EQ("", IndexFault(*db.database));
    }

    // ---- changes

    Texts TableNames()
    {
        Texts names;
        for (size_t i = 1; i < mDB->database->OpenTables().size(); i++)
            names.emplace_back(mDB->database->OpenTables()[i]->TableName().View());
        return names;
    }
    VelaTrans* AnyTable()
    {
        const Texts names = TableNames();
        return names.empty()
                   ? nullptr
                   : mDB->Table(names[mRandom.Below(static_cast<uint32_t>(names.size()))]);
    }
    std::string SomeText()
    {
        const uint32_t size = mRandom.OneIn(8) ? 300 + mRandom.Below(700) : mRandom.Below(30);
        return std::string(size, static_cast<char>('a' + mRandom.Below(26)));
    }
    void AddRow()
    {
        VelaTrans* table = AnyTable();
        if (table == nullptr) {
            CreateTable();
            return;
        }
        TestRow row{{1, Int(static_cast<int32_t>(mRandom.Below(20)))}, {2, Str(SomeText())}};
        table->AddRow(row, false);
    }
    void CreateTable()
    {
        for (const char* name : {"t", "u", "longer_name"}) {
            if (mDB->Table(name) != nullptr)
                continue;
            mDB->Create(name, {kTypeInteger, kTypeString});
            return;
        }
    }
    // A stored or pending row of some table; false when there is none.
    bool AnyRow(VelaTrans** table, uint32_t* rowID)
    {
        *table = AnyTable();
        if (*table == nullptr)
            return false;
        const std::vector<uint32_t> rows = RowIDsOf(*table);
        if (rows.empty())
            return false;
        *rowID = rows[mRandom.Below(static_cast<uint32_t>(rows.size()))];
        return true;
    }
    void Change()
    {
        VelaTrans* table = nullptr;
        uint32_t rowID = 0;
        switch (mRandom.Below(16)) {
            case 0:
                CreateTable();
                for (uint32_t i = mRandom.OneIn(2) ? mRandom.Below(40) : 0; i > 0; i--)
                    AddRow();
                break;
            case 1:
                table = AnyTable();
                if (table != nullptr && !table->HasChangesToCommit() && mRandom.OneIn(2))
                    mDB->Drop(std::string(table->TableName().View()));
                break;
            case 2: {
                table = AnyTable();
                if (table == nullptr || table->HasChangesToCommit())
                    break;
                const std::string name(table->TableName().View());
                mDB->Drop(name);
                mDB->Create(name, {kTypeInteger, kTypeString});
                break;
            }
            case 3:
                table = AnyTable();
                if (table != nullptr && !table->HasChangesToCommit() && table->QtyColumns() < 5)
                    mDB->Alter(std::string(table->TableName().View()), kTypeInteger, "7");
                break;
            case 4:
            case 5:
                if ((table = AnyTable()) != nullptr)
                    table->AddIndex(mRandom.OneIn(2) ? "i" : "j",
                                    mRandom.OneIn(2) ? SimpleVector<uint32_t>{1}
                                                     : SimpleVector<uint32_t>{2, 1});
                break;
            case 6:
                if ((table = AnyTable()) != nullptr)
                    table->DropIndex(mRandom.OneIn(2) ? "i" : "j");
                break;
            case 7:
            case 8:
                if (AnyRow(&table, &rowID)) {
                    TestRow values{{1, Int(static_cast<int32_t>(mRandom.Below(20)))}};
                    table->UpdateRow(rowID, values, false);
                }
                break;
            case 9:
            case 10:
                if (AnyRow(&table, &rowID)) {
                    TestRow values{{2, Str(SomeText() + "longer than it was before")}};
                    table->UpdateRow(rowID, values, false);
                }
                break;
            case 11:
            case 12:
                if (AnyRow(&table, &rowID))
                    table->DeleteRow(rowID);
                break;
            case 13:
                for (uint32_t i = 12 + mRandom.Below(30); i > 0; i--)
                    AddRow();
                break;
            default:
                AddRow();
                break;
        }
    }

    TestRandom mRandom;
    Counts* mCounts;
    bool mSmall;
    size_t mAheadPiece;
    CrashDisk mDisk;
    std::unique_ptr<DatabaseOnDisk> mDB;
    Texts mBefore;
    std::vector<Image> mMoment;
};

}   // namespace

TEST(CrashRecovery, EveryImageOpensInTheStateBeforeOrAfter)
{
    const int64_t wanted = NumberFromEnvironment("VELA_CRASH_IMAGES", 20000);
    const uint32_t firstSeed = static_cast<uint32_t>(NumberFromEnvironment("VELA_CRASH_SEED", 1));
    Counts counts;
    for (uint32_t seed = firstSeed; counts.images < wanted && !HasFailure(); seed++) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Life life(seed, &counts);
        for (int step = 0; step < 25 && !HasFailure(); step++) {
            SCOPED_TRACE("step " + std::to_string(step));
            life.Step();
        }
    }
    std::printf(
        "crash images: %lld made, %lld different ones opened, %lld of them with a log, %lld "
        "during recovery\n",
        static_cast<long long>(counts.images), static_cast<long long>(counts.opened),
        static_cast<long long>(counts.recovered), static_cast<long long>(counts.twice));
}

}   // namespace vela
