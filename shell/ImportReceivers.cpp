#include "shell/ImportReceivers.h"

#include <algorithm>
#include <memory>

#include "engine/storage/RecordFormat.h"
#include "runtime/ScopeExit.h"
#include "shell/DisplayText.h"

namespace vela::shell {

namespace {

constexpr uint32_t kLargestRowID = 0xFFFFFFFE;

}   // namespace

bool HeaderReceiver::TakeRow(const CsvRow& row, size_t)
{
    for (size_t i = 0; i < row.FieldCount(); i++)
        mNames.emplace_back(row.Field(i));
    return false;
}

bool HeaderReceiver::TakeMalformed(size_t line, const std::string& reason)
{
    mFault = "line " + std::to_string(line) + ": " + reason;
    return false;
}

bool BodyReceiver::TakeRow(const CsvRow& row, size_t line)
{
    if (mIsHeader) {
        mIsHeader = false;
        return true;
    }
    const size_t expected = mJob->columns.size();
    if (row.FieldCount() == expected)
        return TakeGoodRow(row, line);
    mJob->ReportFault(line, "the line has " + CountText(row.FieldCount(), "field") +
                                ", the header has " + std::to_string(expected));
    return true;
}

bool BodyReceiver::TakeMalformed(size_t line, const std::string& reason)
{
    mJob->ReportFault(line, reason);
    return true;
}

bool TypeReceiver::TakeGoodRow(const CsvRow& row, size_t)
{
    for (size_t i = 0; i < mTypes.size(); i++)
        if (!row.IsBare(i))
            mTypes[i].Add(row.Field(i));
    return true;
}

CheckReceiver::CheckReceiver(ImportJob* job, VelaTrans* table)
    : BodyReceiver(job), mTable(table), mNextRowID(table ? table->NextUnusedRowID() : 1)
{
    for (const ImportColumn& column : job->columns)
        mGivesRowIDs |= column.name == kRowIDName;
}

bool CheckReceiver::TakeGoodRow(const CsvRow& row, size_t line)
{
    Job().rows++;
    uint32_t rowID = mNextRowID;
    for (size_t i = 0; i < row.FieldCount(); i++)
        if (!row.IsBare(i) && !CheckField(row, i, line, &rowID))
            return true;
    if (mGivesRowIDs && !mRowIDs.insert(rowID).second) {
        ReportTaken(rowID, line);
        return true;
    }
    mHasTooManyRows |= rowID > kLargestRowID;
    mNextRowID = std::max(mNextRowID, rowID + 1);
    return !mHasTooManyRows;
}

// False: the field can't be stored, which has been reported. *rowID receives the row's id when the
// field gives it.
bool CheckReceiver::CheckField(const CsvRow& row, size_t field, size_t line, uint32_t* rowID)
{
    const ImportColumn& column = Job().columns[field];
    VelaValue value;
    if (!ConvertField(row.Field(field), column.type, &value)) {
        Job().ReportFault(line, "\"" + ShownText(row.Field(field)) + "\" in column " +
                                    ShownText(column.headerName) + " is no " +
                                    DataTypeName(column.type));
        return false;
    }
    return column.name != kRowIDName || TakeRowID(value.GetInteger(), line, rowID);
}

// False: that can't be the row's id, which has been reported.
bool CheckReceiver::TakeRowID(int32_t number, size_t line, uint32_t* rowID)
{
    *rowID = static_cast<uint32_t>(number);
    if (*rowID == kInvalidRowID)
        Job().ReportFault(line, std::to_string(number) + " can't be a row id");
    else if (mTable && mTable->ContainsRow(*rowID))
        ReportTaken(*rowID, line);
    else
        return true;
    return false;
}

void CheckReceiver::ReportTaken(uint32_t rowID, size_t line)
{
    Job().ReportFault(line,
                      "the row id " + std::to_string(static_cast<int32_t>(rowID)) + " is taken");
}

bool AddReceiver::TakeGoodRow(const CsvRow& row, size_t)
{
    VelaRow values;
    const ScopeExit discard([&] { DeleteValues(&values); });
    values.reserve(row.FieldCount());
    for (size_t i = 0; i < row.FieldCount(); i++) {
        if (row.IsBare(i))
            continue;
        auto value = std::make_unique<VelaValueWithID>(Job().columns[i].columnID);
        if (ConvertField(row.Field(i), Job().columns[i].type, value.get()))
            values.push_back(value.release());
    }
    if (mTable->AddRow(values, true) == kInvalidRowID)
        return false;
    mAdded++;
    return true;
}

}   // namespace vela::shell
