#include <gtest/gtest.h>

#include <algorithm>

#include "engine/storage/TableColumns.h"
#include "engine/storage/VelaTrans.h"
#include "tests/storage/TableFixture.h"
#include "tests/storage/VelaTransModel.h"

namespace vela {

namespace {

const VelaDataType kColumnTypes[] = {kTypeInteger, kTypeString,    kTypeDouble, kTypeBoolean,
                                     kTypeDate,    kTypeTimestamp, kTypeBinary, kTypeTime};

using Files = std::map<std::string, std::string>;

enum class Kind {
    kPlain,
    kIndexed,
    kLoads   // many rows are added, mostly without nulls; some tables have indexes
};

std::string Shown(bool found, const VelaValue& value)
{
    return found ? ValueText(value) : "none";
}

// One random life of a table, side by side with the model.
class RandomTable {
public:
    // Rows go ahead of the commit as soon as they take aheadPiece bytes; 0: never.
    RandomTable(uint32_t seed, Kind kind, size_t aheadPiece)
        : mRandom(seed),
          mKind(kind),
          mWithIndexes(kind == Kind::kIndexed || (kind == Kind::kLoads && seed % 2 == 0)),
          mDatabase(&mDisk),
          mModel({})
    {
        CommitFileAccess::Limits limits;
        limits.aheadPiece = aheadPiece;
        mDatabase.SetLimits(limits);
        mDatabase.Open();
        std::vector<VelaDataType> types;
        const uint32_t columns = 1 + mRandom.Below(5);
        for (uint32_t i = 0; i < columns; i++)
            types.push_back(kColumnTypes[mRandom.Below(std::size(kColumnTypes))]);
        mTable = mDatabase.Create("t", types);
        TakeColumns();
        mModel = VelaTransModel(mColumns);
        for (uint32_t steps = kind == Kind::kLoads ? mRandom.Below(20) : 0; steps > 0; steps--)
            StepOfNewTable();
        Commit();
    }

    void Step()
    {
        const uint32_t choice = mRandom.Below(16);
        if (mKind == Kind::kLoads && choice != 0)
            for (uint32_t rows = mRandom.Below(6); rows > 0; rows--)
                AddRow();
        if (choice < 4)
            AddRow();
        else if (choice < 8)
            UpdateRow();
        else if (choice < 10)
            DeleteRow(SomeRow());
        else if (choice == 10 && mRandom.OneIn(4))
            DeleteRow(1 + mRandom.Below(40));
        else if (choice == 11 && mWithIndexes)
            ChangeIndexes();
        else if (choice == 12 && mRandom.OneIn(2))
            EndTransaction();
        else if (choice == 13)
            CompareOneByIndex();
        else if (choice == 14)
            CompareColumns();
        else if (choice == 15)
            CompareTable();
    }
    // The files after each commit and opening.
    [[nodiscard]] const std::vector<Files>& History() const { return mHistory; }
    void Finish()
    {
        CompareTable();
        Commit();
        CompareTable();
        CompareColumns();
        Reopen();
        CompareTable();
        CompareColumns();
    }

private:
    // Before the table has files.
    void StepOfNewTable()
    {
        for (uint32_t rows = mRandom.Below(6); rows > 0; rows--)
            AddRow();
        if (mRandom.OneIn(3))
            CompareTable();
        if (mRandom.OneIn(3))
            CompareColumns();
        if (mRandom.OneIn(8))
            UpdateRow();
        if (mRandom.OneIn(8))
            DeleteRow(SomeRow());
    }
    void TakeColumns()
    {
        mColumns.clear();
        for (long number = 1; number < mTable->QtyColumns(); number++)
            mColumns.push_back(
                {mTable->Column(number)->columnID, mTable->Column(number)->defaultValue});
    }
    VelaValue RandomValue()
    {
        const int32_t number = static_cast<int32_t>(mRandom.Below(9)) - 2;
        switch (mKind == Kind::kLoads && !mRandom.OneIn(12) ? 1 + mRandom.Below(8)
                                                            : mRandom.Below(9)) {
            case 0:
                return Null(kColumnTypes[mRandom.Below(std::size(kColumnTypes))]);
            case 1:
            case 2:
                return Int(number);
            case 3:
                return VelaValue::Double(number / 2.0);
            case 4:
                return VelaValue::Boolean(number > 0);
            case 5:
                return VelaValue::Text(kTypeDate, string("1984-05-06"));
            case 6:
                return Str("1984-5-6 7:8:" + std::to_string(mRandom.Below(60)));
            case 7:
                return VelaValue::String(
                    string(std::string(mRandom.Below(40), 'x'),
                           mRandom.OneIn(2) ? kEncodingUTF8 : mRandom.Below(400)));
            default:
                return Str(std::to_string(number));
        }
    }
    // Values for some of the columns, now and then one of them twice or of no column at all.
    VelaTransModel::Values RandomValues(bool all)
    {
        VelaTransModel::Values values;
        for (const VelaTransModel::Column& column : mColumns)
            if (all || !mRandom.OneIn(3))
                values.emplace_back(column.columnID, RandomValue());
        if (mRandom.OneIn(10))
            values.emplace_back(1 + mRandom.Below(8), RandomValue());
        if (mRandom.OneIn(20))
            values.emplace_back(300, RandomValue());
        return values;
    }
    uint32_t SomeRow()
    {
        const std::vector<uint32_t> rows = mModel.GetRowIDs();
        return rows.empty() || mRandom.OneIn(20)
                   ? 1 + mRandom.Below(60)
                   : rows[mRandom.Below(static_cast<uint32_t>(rows.size()))];
    }

    void AddRow()
    {
        VelaTransModel::Values values = RandomValues(mRandom.OneIn(2));
        if (NamesAColumnTwiceWithANull(values))
            return;   // which of the two an index has after the commit is nobody's promise
        if (mRandom.OneIn(4))
            values.emplace_back(0, Int(static_cast<int32_t>(1 + mRandom.Below(40))));
        TestRow row(values);
        ASSERT_EQ(mModel.AddRow(values), mTable->AddRow(row, mRandom.OneIn(2)));
    }
    bool NamesAColumnTwiceWithANull(const VelaTransModel::Values& values) const
    {
        for (size_t i = 0; i < values.size(); i++)
            for (size_t k = 0; k < i; k++)
                if (values[i].first == values[k].first &&
                    (values[i].second.IsNull() || values[k].second.IsNull()))
                    return true;
        return false;
    }
    void UpdateRow()
    {
        const uint32_t rowID = SomeRow();
        if (rowID >= mModel.NextUnusedRowID())
            return;   // its id would be handed out again
        const std::vector<uint32_t> rows = mModel.GetRowIDs();
        // With an index a row that isn't there would get an entry, which only some ways of reading see.
        if (mWithIndexes && std::find(rows.begin(), rows.end(), rowID) == rows.end())
            return;
        const VelaTransModel::Values values = RandomValues(mRandom.OneIn(4));
        TestRow row(values);
        EXPECT_TRUE(mTable->UpdateRow(rowID, row, mRandom.OneIn(2)));
        mModel.UpdateRow(rowID, values);
    }
    void DeleteRow(uint32_t rowID)
    {
        mTable->DeleteRow(rowID);
        mModel.DeleteRow(rowID);
    }
    void ChangeIndexes()
    {
        const std::string name(1, static_cast<char>('a' + mRandom.Below(3)));
        if (mRandom.OneIn(2)) {
            EXPECT_EQ(mModel.DropIndex(name), mTable->DropIndex(string(name, kEncodingASCII)));
            return;
        }
        std::vector<uint32_t> columnIDs;
        SimpleVector<uint32_t> list;
        for (uint32_t count = 1 + mRandom.Below(2); count > 0; count--) {
            columnIDs.push_back(
                mColumns[mRandom.Below(static_cast<uint32_t>(mColumns.size()))].columnID);
            list.push_back(columnIDs.back());
        }
        EXPECT_EQ(mModel.AddIndex(name, columnIDs),
                  mTable->AddIndex(string(name, kEncodingASCII), list));
    }

    void EndTransaction()
    {
        switch (mRandom.Below(8)) {
            case 0:
                mDatabase.Rollback();
                mTable = mDatabase.Table("t");
                mModel.Reopen(true);
                break;
            case 1:
                mTable->Rollback();
                mModel.Rollback();
                break;
            case 2:
                Reopen();
                break;
            case 3:
                if (!mModel.HasChangesToCommit())
                    AlterTable();
                break;
            default:
                Commit();
                break;
        }
    }
    void Commit()
    {
        ASSERT_TRUE(mDatabase.Commit());
        mModel.Commit();
        mHistory.push_back(mDisk.Snapshot());
    }
    void Reopen()
    {
        const bool withMap = mWithIndexes || !mRandom.OneIn(3);
        mDatabase.database.reset();
        if (!withMap)
            mDisk.Remove("t.map");
        mHistory.push_back(mDisk.Snapshot());
        mDatabase.Open();
        mTable = mDatabase.Table("t");
        mModel.Reopen(withMap);
    }
    void AlterTable()
    {
        if (mColumns.size() > 8)
            return;
        const uint32_t lastRowID = mTable->NextUnusedRowID() - 1;
        mTable = mDatabase.Alter("t", kColumnTypes[mRandom.Below(std::size(kColumnTypes))], "1");
        EXPECT_EQ(lastRowID, mTable->LastRowID());
        TakeColumns();
        mModel.AddColumn(mColumns.back());
        Commit();
        Reopen();
    }

    void CompareTable()
    {
        ASSERT_EQ(mModel.GetRowIDs(), RowIDsOf(mTable));
        EXPECT_EQ(mModel.QtyRows(), mTable->QtyRows());
        EXPECT_EQ(mModel.HasChangesToCommit(), mTable->HasChangesToCommit());
        EXPECT_EQ(mModel.NextUnusedRowID(), mTable->NextUnusedRowID());
        EXPECT_EQ(mModel.LastRowID(), mTable->LastRowID());
        const std::vector<uint32_t> rows = mModel.GetRowIDs();
        for (uint32_t rowID = 1; rowID < mModel.NextUnusedRowID() + 2; rowID++) {
            EXPECT_EQ(mModel.ContainsRow(rowID), mTable->ContainsRow(rowID)) << rowID;
            EXPECT_EQ(std::find(rows.begin(), rows.end(), rowID) != rows.end(),
                      mTable->HasRow(rowID))
                << rowID;
            for (size_t number = 1; number <= mColumns.size(); number++)
                CompareValue(rowID, number);
        }
    }
    void CompareValue(uint32_t rowID, size_t number)
    {
        const bool useIndexes = !mRandom.OneIn(3);
        VelaValue expected;
        VelaValue value;
        const bool found = mModel.GetValue(rowID, number, useIndexes, &expected);
        EXPECT_EQ(
            Shown(found, expected),
            Shown(mTable->GetValue(rowID, static_cast<long>(number), &value, useIndexes), value))
            << "row " << rowID << ", column " << number;
    }
    void CompareOneByIndex()
    {
        const size_t number = 1 + mRandom.Below(static_cast<uint32_t>(mColumns.size()));
        VelaValue key = RandomValue();
        if (!mModel.GetValue(SomeRow(), number, false, &key))
            key.CoerceToType(mColumns[number - 1].defaultValue.GetType());
        SimpleVector<uint32_t> rows;
        if (mTable->FindRowsByIndex(static_cast<long>(number), key, &rows)) {
            EXPECT_EQ(mModel.RowsWith(number, key), std::vector<uint32_t>(rows.begin(), rows.end()))
                << ValueText(key);
        } else {
            EXPECT_EQ(0u, rows.size());
        }
    }
    void CompareColumns()
    {
        TableColumns* columns = mTable->Columns();
        const std::vector<uint32_t> rows = mModel.GetRowIDs();
        ASSERT_EQ(rows, std::vector<uint32_t>(columns->RowIDs(),
                                              columns->RowIDs() + columns->RowCount()));
        if (mRandom.OneIn(3)) {
            std::vector<bool> wanted;
            for (size_t i = 0; i <= mColumns.size(); i++)
                wanted.push_back(mRandom.OneIn(2));
            columns->Prepare(wanted);
        }
        for (size_t number = 1; number <= mColumns.size(); number++) {
            const ColumnData* data =
                mRandom.OneIn(3) ? nullptr : columns->Load(static_cast<long>(number));
            for (uint32_t row = 0; row < rows.size(); row++) {
                VelaValue expected;
                VelaValue value;
                const bool found = mModel.GetValue(rows[row], number, true, &expected);
                EXPECT_EQ(Shown(found, expected),
                          Shown(columns->GetValue(row, static_cast<long>(number), &value), value))
                    << "row " << rows[row] << ", column " << number;
                if (data == nullptr)
                    continue;
                data->GetValue(row, &value);
                EXPECT_EQ(Shown(found, expected), ValueText(value)) << "loaded, row " << rows[row];
            }
        }
        for (uint32_t rowID = 0; rowID < 50; rowID++) {
            const auto place = std::find(rows.begin(), rows.end(), rowID);
            EXPECT_EQ(
                place == rows.end() ? kInvalidRowID : static_cast<uint32_t>(place - rows.begin()),
                columns->RowNumberOf(rowID));
        }
    }

    TestRandom mRandom;
    Kind mKind;
    bool mWithIndexes;
    MemoryDisk mDisk;
    DatabaseOnDisk mDatabase;
    VelaTrans* mTable = nullptr;
    std::vector<VelaTransModel::Column> mColumns;
    VelaTransModel mModel;
    std::vector<Files> mHistory;
};

std::vector<Files> HistoryOf(uint32_t seed, Kind kind, size_t aheadPiece)
{
    SCOPED_TRACE("seed " + std::to_string(seed) + ", ahead from " + std::to_string(aheadPiece));
    RandomTable table(seed, kind, aheadPiece);
    for (int step = 0; step < 300 && !testing::Test::HasFailure(); step++) {
        SCOPED_TRACE("step " + std::to_string(step));
        table.Step();
    }
    if (!testing::Test::HasFailure())
        table.Finish();
    return table.History();
}

}   // namespace

TEST(VelaTransRandom, TablesAgreeWithTheModel)
{
    for (uint32_t seed = 1; seed <= 150 && !HasFailure(); seed++)
        HistoryOf(seed, Kind::kPlain, 0);
}

TEST(VelaTransRandom, TablesWithIndexesAgreeWithTheModel)
{
    for (uint32_t seed = 1001; seed <= 1150 && !HasFailure(); seed++)
        HistoryOf(seed, Kind::kIndexed, 0);
}

TEST(VelaTransRandom, RowsThatGoAheadOfTheCommitChangeNeitherResultsNorFiles)
{
    for (uint32_t seed = 2001; seed <= 2060 && !HasFailure(); seed++) {
        const std::vector<Files> plain = HistoryOf(seed, Kind::kLoads, 0);
        for (const size_t piece : {1, 200, 1000})
            EXPECT_TRUE(plain == HistoryOf(seed, Kind::kLoads, piece)) << seed << ", " << piece;
    }
}

}   // namespace vela
