#include "plugin/Cursor.h"

#include <utility>

#include "runtime/NumberText.h"

using vela::SimpleVector;
using vela::string;
using vela::VelaColumnInfo;
using vela::VelaDatabase;
using vela::VelaTable;

namespace {

// The column of the number that a source column names, in the open table of that name; null when
// there is none.
const VelaColumnInfo* FindSourceColumn(VelaDatabase& database, const string& tableName, long number)
{
    const long position = database.FindOpenTable(tableName);
    if (position < 0)
        return nullptr;
    return database.OpenTables()[static_cast<size_t>(position)]->Column(number);
}

}   // namespace

constinit dbCursor* dbCursor::sFirst = nullptr;

dbCursor::dbCursor(dbDatabase* handle, std::unique_ptr<VelaTable> result,
                   const SimpleVector<string>& tableNames, const SimpleVector<long>& sourceColumns)
    : mTable(std::move(result)),
      mResult(dynamic_cast<vela::VelaTempTable*>(mTable.get())),
      mHandle(handle),
      mTableNames(tableNames)
{
    mTable->GetRowIDs(&mRowIDs);
    FindSources(sourceColumns);
    mNext = sFirst;
    if (mNext)
        mNext->mPrevious = this;
    sFirst = this;
}

dbCursor::~dbCursor()
{
    (mPrevious ? mPrevious->mNext : sFirst) = mNext;
    if (mNext)
        mNext->mPrevious = mPrevious;
}

void dbCursor::FindSources(const SimpleVector<long>& sourceColumns)
{
    constexpr int kTableShift = 16;
    constexpr long kColumnMask = 0xFFFF;
    mSources.resize(static_cast<size_t>(ColumnCount()));
    for (size_t i = 0; i < mSources.size() && i < sourceColumns.size(); i++) {
        if (sourceColumns[i] < 0)
            continue;
        const auto table = static_cast<size_t>(sourceColumns[i] >> kTableShift);
        if (table >= mTableNames.size())
            continue;
        const VelaColumnInfo* column = FindSourceColumn(*mHandle->database, mTableNames[table],
                                                        sourceColumns[i] & kColumnMask);
        if (column)
            mSources[i] = {false, table, column->columnID};
    }
}

int32_t dbCursor::ColumnCount() const
{
    return static_cast<int32_t>(mTable->QtyColumns());
}

bool dbCursor::HasColumn(int32_t column) const
{
    return column >= 0 && column < ColumnCount();
}

string dbCursor::ColumnName(int32_t column) const
{
    const VelaColumnInfo* info = mTable->Column(column);
    if (info && !info->name.empty())
        return info->name;
    return "VelaCursorColumnName (column " + vela::IntegerText(column) + ")";
}

vela::VelaDataType dbCursor::ColumnType(int32_t column) const
{
    if (!HasColumn(column))
        return vela::kTypeNone;
    const vela::VelaDataType declared = mTable->Column(column)->Type();
    vela::VelaValue first;
    const bool hasFirst = SourceOf(column).isComputed && RowCount() > 0 &&
                          mTable->GetValue(0, column, &first) && !first.IsNull();
    return hasFirst ? first.GetType() : declared;
}

int32_t dbCursor::RowCount() const
{
    return static_cast<int32_t>(mRowIDs.size());
}

bool dbCursor::MoveTo(int64_t row)
{
    if (row < 0)
        mCurrent = -1;
    else
        mCurrent = row < RowCount() ? static_cast<int32_t>(row) : RowCount();
    return IsOnRow();
}

bool dbCursor::GetValue(int32_t column, vela::VelaValue* value) const
{
    return HasColumn(column) && IsOnLiveRow() &&
           mTable->GetValue(mRowIDs[static_cast<size_t>(mCurrent)], column, value);
}

VelaDatabase* dbCursor::Database() const
{
    return mHandle && mDatabaseIsOpen ? mHandle->database : nullptr;
}

vela::VelaStatus* dbCursor::Status() const
{
    return mHandle ? &mHandle->status : nullptr;
}

const dbCursor::Source& dbCursor::SourceOf(int32_t column) const
{
    return mSources[static_cast<size_t>(column)];
}

std::optional<vela::VelaRecSet> dbCursor::SourceRows() const
{
    if (!mResult)
        return {};
    return mResult->GetSourceRecSet(mCurrent);
}

bool dbCursor::IsOnLiveRow() const
{
    return IsOnRow() && mRowIDs[static_cast<size_t>(mCurrent)] != vela::kInvalidRowID;
}

void dbCursor::NoteCurrentRowDeleted()
{
    mRowIDs[static_cast<size_t>(mCurrent)] = vela::kInvalidRowID;
}

void dbCursor::DatabaseClosed(const dbDatabase* handle)
{
    for (dbCursor* cursor = sFirst; cursor; cursor = cursor->mNext) {
        if (cursor->mHandle == handle)
            cursor->mDatabaseIsOpen = false;
    }
}

void dbCursor::HandleEnded(const dbDatabase* handle)
{
    for (dbCursor* cursor = sFirst; cursor; cursor = cursor->mNext) {
        if (cursor->mHandle == handle)
            cursor->mHandle = nullptr;
    }
}
