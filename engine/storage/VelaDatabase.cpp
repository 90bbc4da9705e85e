#include "engine/storage/VelaDatabase.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "engine/storage/CommitFileAccess.h"
#include "engine/storage/SchemaData.h"
#include "runtime/LocalClock.h"
#include "runtime/ScopeExit.h"

namespace vela {

namespace {

const char* const kSchemaRecordFile = "_schema.dat";
const char* const kSchemaMapFile = "_schema.map";

const char* const kOutOfMemoryText = "There is not enough memory";

bool ReadWholeFile(RandomAccessMechanism* stream, string* bytes)
{
    const int64_t length = stream->GetLength();
    if (length > INT32_MAX || !stream->SeekFromStart(0))
        return false;
    bytes->Resize(static_cast<size_t>(length));
    return length == 0 ||
           stream->ReadData(bytes->MutableBytes(), static_cast<int>(length), nullptr);
}

}   // namespace

VelaDatabase::VelaDatabase(std::unique_ptr<VelaFileAccess> files)
{
    const bool opened = CatchOutOfMemory([&] {
        mOutOfMemoryText = kOutOfMemoryText;
        mFiles = std::make_unique<CommitFileAccess>(std::move(files));
        UpdateClock();
        NeedTables();
    });
    if (!opened)
        mFiles.reset();
}

VelaDatabase::~VelaDatabase()
{
    CloseTables();
}

void VelaDatabase::CloseTables()
{
    for (VelaTable* table : mOpenTables)
        delete table;
    for (VelaTable* table : mDroppedTables)
        delete table;
    mOpenTables.clear();
    mDroppedTables.clear();
}

void VelaDatabase::OpenSchemaAndTables()
{
    mOpenTables.MakeRoomForOne();
    mOpenTables.push_back(new VelaSchema(mFiles.get(), &mColumnMemory));
    Schema()->LoadAllTables(&mOpenTables);
}

// All of them, or it throws and there are none.
void VelaDatabase::OpenTablesAnew()
{
    ScopeExit close([this] { CloseTables(); });
    if (!mFiles)
        throw std::bad_alloc();
    OpenSchemaAndTables();
    close.Dismiss();
}

string VelaDatabase::OpenErrorText() const
{
    if (!mFiles)
        return kOutOfMemoryText;
    return mFiles->IsOpen() ? string() : mFiles->ErrorText();
}

bool VelaDatabase::IsValid()
{
    bool valid = false;
    return Enter(nullptr,
                 [&] {
                     valid =
                         mFiles->IsOpen() && Schema()->QtyColumns() > 0 && Schema()->QtyRows() > 0;
                 }) &&
           valid;
}

// ---- out of memory

void VelaDatabase::BeginSchemaChange()
{
    mChangingSchema = true;
    mSchemaRowsBefore = Schema()->RowChangeCount();
}

// A schema whose rows are as they were has not been changed in part.
void VelaDatabase::EndOutOfMemory(VelaStatus* status)
{
    if (mFiles && mFiles->IsCommitting())
        mFiles->CancelCommit();
    const bool lost =
        mChangingSchema && !mOpenTables.empty() && Schema()->RowChangeCount() != mSchemaRowsBefore;
    mChangingSchema = false;
    if (lost)
        CloseTables();
    for (VelaTable* table : mOpenTables)
        table->AsStoredTable()->ForgetCaches();
    // With what has been given free there may be memory again. Else the next step tries.
    (void)CatchOutOfMemory([this] { NeedTables(); });
    if (status != nullptr)
        *status = VelaStatus(lost ? kVETransactionLost : kVEOutOfMemory, string());
}

VelaSchema* VelaDatabase::Schema()
{
    return static_cast<VelaSchema*>(OpenTables()[0]);
}

long VelaDatabase::FindOpenTable(std::string_view name)
{
    NeedTables();
    for (size_t i = 0; i < mOpenTables.size(); i++)
        if (mOpenTables[i]->TableName().View() == name)
            return static_cast<long>(i);
    return -1;
}

void VelaDatabase::AddOpenTable(std::unique_ptr<VelaTable> table)
{
    mOpenTables.MakeRoomForOne();
    mOpenTables.push_back(table.release());
}

void VelaDatabase::MoveToDropped(size_t position)
{
    mDroppedTables.push_back(mOpenTables[position]);
    mOpenTables.erase(position);
    // Its files are free for a table that is made under the name.
    mDroppedTables.back()->AsStoredTable()->ForgetChanges();
}

bool VelaDatabase::LastRowID(const string& tableName, uint32_t* rowID)
{
    const long position = FindOpenTable(tableName);
    if (position < 0)
        return false;
    *rowID = mOpenTables[static_cast<size_t>(position)]->AsStoredTable()->LastRowID();
    return true;
}

// ---- transactions

bool VelaDatabase::TransactionInProgress()
{
    return !mDroppedTables.empty() ||
           std::any_of(mOpenTables.begin(), mOpenTables.end(), [](VelaTable* table) {
               return table->AsStoredTable()->HasChangesToCommit();
           });
}

void VelaDatabase::Commit()
{
    mCommitFailed = false;
    mCommitError = string();
    bool committed = false;
    const bool hadMemory = CatchOutOfMemory([&] {
        NeedTables();
        committed = CommitTables();
        if (!committed && mCommitError.empty())
            mCommitError = "unknown error";
    });
    if (committed) {
        FinishCommit();
        return;
    }
    mCommitFailed = true;
    if (mFiles && mFiles->IsCommitting())
        mFiles->CancelCommit();
    for (VelaTable* table : mOpenTables)
        table->AsStoredTable()->CancelCommit();
    if (hadMemory)
        return;
    EndOutOfMemory(nullptr);
    mCommitError = mOutOfMemoryText;
}

// Everything is in the files now: tables that can't note this are opened anew.
void VelaDatabase::FinishCommit()
{
    const bool noted = CatchOutOfMemory([this] {
        for (VelaTable* table : mOpenTables)
            table->AsStoredTable()->FinishCommit();
    });
    if (!noted)
        CloseTables();
    while (!mDroppedTables.empty()) {
        delete mDroppedTables.back();
        mDroppedTables.pop_back();
    }
    (void)CatchOutOfMemory([this] { NeedTables(); });
}

// True: the commit is on the device.
bool VelaDatabase::CommitTables()
{
    const auto isTouched = [](VelaTable* table) { return table->AsStoredTable()->IsTouched(); };
    if (mFiles->IsReadOnly() &&
        (!mDroppedTables.empty() || std::any_of(mOpenTables.begin(), mOpenTables.end(), isTouched)))
        mCommitError = "The database is open for reading only";
    else if (!BeginCommit())
        mCommitError = mFiles->ErrorText();
    else if (WriteTables()) {
        if (mFiles->EndCommit())
            return true;
        mCommitError = mFiles->ErrorText();
    }
    return false;
}

bool VelaDatabase::BeginCommit()
{
    for (VelaTable* table : mOpenTables)
        table->AsStoredTable()->PrepareCommit();
    return mFiles->BeginCommit();
}

bool VelaDatabase::WriteTables()
{
    for (VelaTable* dropped : mDroppedTables) {
        VelaTrans* table = dropped->AsStoredTable();
        // A table that was made again under the name replaces the files.
        if (FindOpenTable(table->TableName()) >= 0 || table->DeleteStorage())
            continue;
        mCommitError = "The files of the dropped table " + table->TableName() +
                       " could not be deleted: " + mFiles->ErrorText();
        return false;
    }
    for (VelaTable* table : mOpenTables)
        if (!table->AsStoredTable()->WriteCommit(&mCommitError))
            return false;
    return true;
}

void VelaDatabase::Rollback()
{
    // Tables that can't go back are closed, which drops what is pending, and opened anew.
    const bool done = CatchOutOfMemory([this] {
        NeedTables();
        RollBackTables();
    });
    if (!done)
        CloseTables();
    (void)CatchOutOfMemory([this] { NeedTables(); });
    mCommitFailed = false;
    mCommitError = string();
}

void VelaDatabase::RollBackTables()
{
    const bool schemaChanged = Schema()->IsTouched() || !mDroppedTables.empty();
    Schema()->Rollback();
    Schema()->PopulateInitialSchema();
    if (schemaChanged)
        ReloadAllTables();
    else
        ReloadTouchedTables();
}

// Tables that the transaction created, altered or dropped are then as the rolled-back schema describes them.
void VelaDatabase::ReloadAllTables()
{
    VelaTable* schema = mOpenTables[0];
    mOpenTables.erase(0);
    CloseTables();
    mOpenTables.push_back(schema);
    Schema()->LoadAllTables(&mOpenTables);
}

void VelaDatabase::ReloadTouchedTables()
{
    for (size_t i = 1; i < mOpenTables.size(); i++) {
        if (!mOpenTables[i]->AsStoredTable()->IsTouched()) {
            mOpenTables[i]->AsStoredTable()->ForgetLastRowID();
            continue;
        }
        const string name = mOpenTables[i]->TableName();
        delete mOpenTables[i];
        mOpenTables[i] = nullptr;
        mOpenTables[i] = Schema()->LoadTable(name).release();
    }
}

// ---- memory

void VelaDatabase::SetColumnMemoryLimit(uint64_t bytes)
{
    mColumnMemory.SetLimit(bytes);
    DropColumns();
}

void VelaDatabase::DropColumns()
{
    for (VelaTable* table : mOpenTables)
        table->AsStoredTable()->DropColumns();
    mColumnMemory.ForgetShortage();
}

// ---- the schema as a block of data

string VelaDatabase::GetSchemaData(VelaStatus* status)
{
    string data;
    Enter(status, [&] { data = ReadSchemaData(status); });
    return data;
}

string VelaDatabase::ReadSchemaData(VelaStatus* status)
{
    if (mOpenTables.empty()) {
        Fail(status, kVETableNotFound, "Schema table not found.");
        return {};
    }
    if (TransactionInProgress()) {
        Fail(status, kVETransactionInProgress,
             "Can't get schema data while transaction is in progress.");
        return {};
    }
    if (!mFiles) {
        Fail(status, kVETableNotFound, "Data files not available.");
        return {};
    }
    // The open schema would go on reading a file that somebody has deleted.
    std::unique_ptr<RandomAccessMechanism> stream;
    if (mFiles->ContainsFile(kSchemaRecordFile))
        stream = mFiles->OpenFile(kSchemaRecordFile, false);
    string bytes;
    if (!stream || !ReadWholeFile(stream.get(), &bytes)) {
        Fail(status, kVETableNotFound, "Schema file not found.");
        return {};
    }
    if (status != nullptr)
        *status = VelaStatus();
    return string(kSchemaDataMark, kEncodingASCII) + bytes;
}

void VelaDatabase::ReplaceSchemaData(const string& data, VelaStatus* status)
{
    Enter(status, [&] { ReplaceSchema(data, status); });
}

void VelaDatabase::ReplaceSchema(const string& data, VelaStatus* status)
{
    if (TransactionInProgress()) {
        Fail(status, kVETransactionInProgress,
             "Can't replace schema while transaction is in progress.");
        return;
    }
    const std::string_view bytes = data.View();
    if (bytes.size() < kSchemaDataMark.size() ||
        !EqualsIgnoringCase(bytes.substr(0, kSchemaDataMark.size()), kSchemaDataMark) ||
        !IsSchemaRecordFile(bytes.substr(kSchemaDataMark.size()))) {
        Fail(status, kVEInvalidParameter, "Invalid schema data.");
        return;
    }
    if (!ReplaceSchemaFile(bytes.substr(kSchemaDataMark.size()))) {
        Fail(status, kVETableNotFound, "Unable to write schema file.");
        return;
    }
    // It is replaced, even if there should be no memory for opening the tables until later.
    CloseTables();
    (void)CatchOutOfMemory([this] { NeedTables(); });
    if (status != nullptr)
        *status = VelaStatus();
}

// The old file stays what the open tables read until they are closed.
bool VelaDatabase::ReplaceSchemaFile(std::string_view bytes)
{
    if (mFiles->IsReadOnly() || !mFiles->BeginCommit())
        return false;
    bool written = mFiles->CreateFile(kSchemaRecordFile) && mFiles->DeleteFile(kSchemaMapFile);
    if (written) {
        const auto stream = mFiles->OpenFile(kSchemaRecordFile, false);
        written = stream && stream->WriteData(bytes.data(), static_cast<int>(bytes.size()));
    }
    if (written && mFiles->EndCommit())
        return true;
    mFiles->CancelCommit();
    return false;
}

// ---- the clock

const DamageLog& VelaDatabase::Damage() const
{
    static const DamageLog none;
    return mFiles ? mFiles->Damage() : none;
}

void VelaDatabase::UpdateClock()
{
    const LocalTime now = CurrentLocalTime();
    char text[64];
    std::snprintf(text, sizeof text, "%d-%02d-%02d", now.year, now.month, now.day);
    mCurrentDate = string(text);
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", now.hour, now.minute, now.second);
    mCurrentTime = string(text);
    mCurrentTimestamp = mCurrentDate + " " + mCurrentTime;
}

}   // namespace vela
