#include "engine/storage/StoredTableColumns.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "engine/storage/RecordScanner.h"
#include "engine/storage/VelaTrans.h"

namespace vela {

namespace {

// Of a column that is read value by value, so many are no reason to load it.
constexpr uint32_t kFewValues = 64;
// Changes of so many bytes make no difference to the memory that columns take.
constexpr size_t kUncountedBytes = 64 * 1024;

// Of a payload whose size the type doesn't tell.
constexpr size_t kOwnSize = SIZE_MAX;

size_t PayloadSizeOf(VelaDataType type)
{
    switch (type) {
        case kTypeInteger:
            return 4;
        case kTypeBoolean:
            return 1;
        case kTypeDouble:
            return 8;
        default:
            return kOwnSize;
    }
}

// RecordShape knows where the wanted values of a record are by the bytes that list its columns. Neighbouring records
// mostly have the same ones, and are then taken apart without looking at the list again.
class RecordShape {
public:
    // wanted: the column ids that are asked for, with their column numbers.
    explicit RecordShape(std::vector<std::pair<uint32_t, uint32_t>> wanted)
        : mWanted(std::move(wanted))
    {}

    // Calls take(number, field) for every wanted value of the body, once, up to damage. Says how many there were.
    template <class Take>
    size_t Read(std::string_view body, const Take& take)
    {
        if (mList.empty() || body.substr(0, mList.size()) != mList)
            Learn(body);
        mDamaged = mList.empty();
        const char* payload = body.data() + mList.size();
        const char* end = body.data() + body.size();
        size_t taken = 0;
        RecordField field;
        for (const Entry& entry : mEntries) {
            field.type = entry.type;
            if (entry.size <= static_cast<size_t>(end - payload)) {
                field.payload = {payload, entry.size};
                payload += entry.size;
            } else if (entry.size != kOwnSize || !ReadPayload(&payload, end, &field)) {
                mDamaged = true;
                break;
            }
            if (entry.number == 0)
                continue;
            take(entry.number, field);
            taken++;
        }
        return taken;
    }

    // Whether a wanted value of the last body may have been lost to damage.
    [[nodiscard]] bool IsDamaged() const { return mDamaged; }

private:
    struct Entry {
        uint32_t number;   // 0: not wanted
        VelaDataType type;
        size_t size;   // of the payload
    };

    void Learn(std::string_view body);
    [[nodiscard]] uint32_t NumberOf(uint32_t columnID) const;

    std::vector<std::pair<uint32_t, uint32_t>> mWanted;
    std::string mList;
    std::vector<Entry> mEntries;
    bool mDamaged = false;
};

void RecordShape::Learn(std::string_view body)
{
    mEntries.clear();
    mList.clear();
    uint32_t count = 0;
    const char* end = body.data() + body.size();
    const char* from = DecodeByteChunk(body.data(), end, &count);
    for (uint32_t i = 0; i < count && from != nullptr; i++) {
        uint32_t columnID = 0;
        from = DecodeByteChunk(from, end, &columnID);
        if (from == nullptr || from == end)
            break;
        const VelaDataType type = static_cast<VelaDataType>(*from++);
        mEntries.push_back({NumberOf(columnID), type, PayloadSizeOf(type)});
    }
    if (from == nullptr || mEntries.size() != count)
        mEntries.clear();
    else
        mList.assign(body.data(), from);
    while (!mEntries.empty() && mEntries.back().number == 0)
        mEntries.pop_back();
}

// Of a column that a record names twice, the first value counts.
uint32_t RecordShape::NumberOf(uint32_t columnID) const
{
    for (const auto& [id, number] : mWanted) {
        const auto isIt = [wanted = number](const Entry& entry) { return entry.number == wanted; };
        if (id == columnID && std::none_of(mEntries.begin(), mEntries.end(), isIt))
            return number;
    }
    return 0;
}

// Before anything of it is changed: those who share it keep it as it is, and what is changed is a copy.
template <class Shared>
void Unshare(std::shared_ptr<Shared>* shared)
{
    if (shared->use_count() > 1)
        *shared = std::make_shared<Shared>(**shared);
}

// The number of a row id; kInvalidRowID when it is not there. As ids ascend, a row is at most as far from the first and the last
// one as its id is from theirs; without gaps that leaves one place to look at, with few of them few.
uint32_t NumberAmongAscending(const RowIDList& rowIDs, uint32_t rowID)
{
    if (rowIDs.empty() || rowID < rowIDs.front() || rowID > rowIDs.back())
        return kInvalidRowID;
    const size_t last = rowIDs.size() - 1;
    const size_t lowest = last - std::min<size_t>(last, rowIDs.back() - rowID);
    const size_t highest = std::min<size_t>(last, rowID - rowIDs.front());
    const auto found =
        std::lower_bound(rowIDs.begin() + static_cast<std::ptrdiff_t>(lowest),
                         rowIDs.begin() + static_cast<std::ptrdiff_t>(highest), rowID);
    return *found == rowID ? static_cast<uint32_t>(found - rowIDs.begin()) : kInvalidRowID;
}

}   // namespace

StoredTableColumns::StoredTableColumns(VelaTrans* table) : mTable(table) {}

StoredTableColumns::~StoredTableColumns()
{
    Drop();
}

void StoredTableColumns::SetMemory(ColumnMemory* memory)
{
    Drop();
    mMemory = memory;
}

void StoredTableColumns::Drop()
{
    for (const Column& column : mColumns)
        if (mMemory)
            mMemory->Replace(column.memory, 0);
    mRowsKnown = false;
    mRowIDs.reset();
    mNumbersKnown = false;
    mNumbers.RemoveAll();
    mDeletedNumbers.clear();
    mColumns.clear();
}

void StoredTableColumns::Refresh()
{
    if (mColumns.empty()) {
        mColumns.resize(static_cast<size_t>(mTable->QtyColumns()));
        for (size_t number = 0; number < mColumns.size(); number++)
            mColumns[number].id = mTable->Column(static_cast<long>(number))->columnID;
    }
    RemoveDeletedRows();
    if (mUncounted > kUncountedBytes)
        CountAllMemory();
}

void StoredTableColumns::CountAllMemory()
{
    mUncounted = 0;
    for (uint32_t number = 1; number < mColumns.size(); number++)
        if (mColumns[number].memory != 0 || IsLoaded(number))
            CountMemory(number);
}

// Of the column with that id; 0 when there is none. As FindColumnNumber, without its calls, which each updated row would pay for.
uint32_t StoredTableColumns::NumberOf(uint32_t columnID) const
{
    for (uint32_t number = 1; number < mColumns.size(); number++)
        if (mColumns[number].id == columnID)
            return number;
    return 0;
}

void StoredTableColumns::ListRows()
{
    LoadColumns({});
}

uint32_t StoredTableColumns::RowNumberOf(uint32_t rowID)
{
    const uint32_t count = RowCount();
    const RowIDList& rowIDs = *mRowIDs;
    for (uint32_t near = mLastNumber; near < count && near <= mLastNumber + 1; near++)
        if (rowIDs[near] == rowID)
            return mLastNumber = near;
    if (mAscending) {
        const uint32_t number = NumberAmongAscending(rowIDs, rowID);
        return number == kInvalidRowID ? number : mLastNumber = number;
    }
    if (!mNumbersKnown) {
        mNumbers.Presize(count);
        for (uint32_t row = 0; row < count; row++)
            mNumbers.Set(rowIDs[row], row);
        mNumbersKnown = true;
    }
    const uint32_t* number = mNumbers.FindNode(rowID);
    return number == nullptr ? kInvalidRowID : (mLastNumber = *number);
}

bool StoredTableColumns::ListsRow(uint32_t rowID)
{
    return FindsRowsQuickly() && RowNumberOf(rowID) != kInvalidRowID;
}

bool StoredTableColumns::GetLoadedValue(uint32_t rowID, long number, VelaValue* value)
{
    if (!FindsRowsQuickly() || Loaded(number) == nullptr)
        return false;
    const uint32_t row = RowNumberOf(rowID);
    if (row == kInvalidRowID)
        return false;
    mColumns[static_cast<size_t>(number)].data->GetValue(row, value);
    return true;
}

const ColumnData* StoredTableColumns::Load(long number)
{
    if (number < 1 || number >= static_cast<long>(mColumns.size()))
        return nullptr;
    const uint32_t column = static_cast<uint32_t>(number);
    if (mColumns[column].refused)
        return nullptr;
    if (!IsLoaded(column))
        LoadColumns({column});
    return mColumns[column].data.get();
}

const ColumnData* StoredTableColumns::Loaded(long number) const
{
    const bool isThere = number >= 1 && number < static_cast<long>(mColumns.size());
    return isThere ? mColumns[static_cast<size_t>(number)].data.get() : nullptr;
}

std::shared_ptr<const ColumnData> StoredTableColumns::Share(long number)
{
    if (Loaded(number) == nullptr)
        return nullptr;
    return mColumns[static_cast<size_t>(number)].data;
}

std::shared_ptr<const RowIDList> StoredTableColumns::ShareRowIDs()
{
    if (!mRowsKnown)
        ListRows();
    return mRowIDs;
}

void StoredTableColumns::Prepare(const std::vector<bool>& numbers)
{
    std::vector<uint32_t> wanted;
    for (uint32_t number = 1; number < mColumns.size() && number < numbers.size(); number++)
        if (numbers[number] && !IsLoaded(number) && !mColumns[number].refused)
            wanted.push_back(number);
    if (!wanted.empty())
        LoadColumns(wanted);
}

bool StoredTableColumns::GetValue(uint32_t row, long number, VelaValue* value)
{
    if (row >= RowCount() || number < 0 || number >= static_cast<long>(mColumns.size()))
        return false;
    if (number == 0) {
        value->SetInteger(static_cast<int32_t>((*mRowIDs)[row]));
        return true;
    }
    Column& column = mColumns[static_cast<size_t>(number)];
    if (!IsLoaded(static_cast<size_t>(number))) {
        const uint32_t enough = kFewValues + RowCount() / kPartWorthLoading;
        if (!column.refused && ++column.asked >= enough)
            LoadAsked(enough / 2);
        if (!IsLoaded(static_cast<size_t>(number)))
            return mTable->GetValue((*mRowIDs)[row], number, value, true);
    }
    column.data->GetValue(row, value);
    return true;
}

// Loads the columns of which so many values were asked for one by one: whoever asks for one mostly asks for others in turn.
void StoredTableColumns::LoadAsked(uint32_t times)
{
    std::vector<bool> numbers(mColumns.size());
    for (size_t number = 1; number < mColumns.size(); number++)
        numbers[number] = mColumns[number].asked >= times;
    Prepare(numbers);
}

// One pass over the record file, then the inserted rows; lists the rows too when that has not been done.
void StoredTableColumns::LoadColumns(const std::vector<uint32_t>& wanted)
{
    CountAllMemory();
    mListing = !mRowsKnown;
    if (mListing) {
        mRowIDs = std::make_shared<RowIDList>();
        mNumbersKnown = false;
        mLastNumber = 0;
    }
    const size_t expected = mRowsKnown ? mRowIDs->size() : mTable->QtyRows();
    if (mListing)
        mRowIDs->reserve(expected);
    std::vector<uint32_t> numbers;
    for (uint32_t number : wanted) {
        mColumns[number].data = std::make_shared<ColumnData>();
        mColumns[number].data->Start(mTable->Column(static_cast<long>(number))->Type());
        if (!HasRoomFor(number, expected)) {
            Refuse(number);
            continue;
        }
        mColumns[number].data->Reserve(expected);
        CountMemory(number);
        numbers.push_back(number);
    }
    if (numbers.empty() && mRowsKnown)
        return;
    const size_t rows =
        AppendInsertedRows(AppendRowsAhead(AppendStoredRows(numbers), numbers), numbers);
    if (mListing) {
        mAscending = std::adjacent_find(mRowIDs->begin(), mRowIDs->end(), std::greater_equal<>()) ==
                     mRowIDs->end();
        mRowsKnown = true;
    }
    for (uint32_t number : numbers)
        if (mColumns[number].refused || mColumns[number].data->Count() != mRowIDs->size() ||
            rows != mRowIDs->size() || !HasRoomFor(number, 0))
            Refuse(number);
        else
            CountMemory(number);
}

// The ids of columns, with their numbers.
std::vector<std::pair<uint32_t, uint32_t>> StoredTableColumns::WantedOf(
    const std::vector<uint32_t>& numbers) const
{
    std::vector<std::pair<uint32_t, uint32_t>> wanted;
    wanted.reserve(numbers.size());
    for (uint32_t number : numbers)
        wanted.emplace_back(mTable->Column(static_cast<long>(number))->columnID, number);
    return wanted;
}

// The rows of the file with their pending updates; says how many.
size_t StoredTableColumns::AppendStoredRows(const std::vector<uint32_t>& numbers)
{
    VelaStorage* storage = mTable->Storage();
    if (!storage)
        return 0;
    RecordShape shape(WantedOf(numbers));
    const bool changes = mTable->mChangedRows.Count() > 0;
    const bool deletions = mTable->mDeletedRows.Count() > 0;
    size_t rows = 0;
    RecordScanner scanner(storage->RecordStream());
    while (scanner.Next()) {
        const uint32_t rowID = scanner.Header().rowID;
        if (!scanner.Header().live || (deletions && mTable->mDeletedRows.Contains(rowID)))
            continue;
        rows++;
        if (mListing)
            mRowIDs->push_back(rowID);
        if (numbers.empty())
            continue;
        const VTChangedRow* change = changes ? mTable->mChangedRows.GetItem(rowID) : nullptr;
        if (change != nullptr)
            for (uint32_t number : numbers)
                AppendFromChange(*change, number);
        const size_t taken =
            shape.Read(scanner.Body(), [&](uint32_t number, const RecordField& field) {
                if (change == nullptr || HasFewer(number, rows))
                    AppendField(number, field);
            });
        if (shape.IsDamaged())
            storage->RecordStream()->NoteDamage(scanner.Position(), DamageKind::kBody);
        if (taken < numbers.size() || change != nullptr)
            for (uint32_t number : numbers)
                if (HasFewer(number, rows))
                    AppendMissing(number);
    }
    return rows;
}

// Those of the inserted rows that lie in the file, after that many others; says how many there are with them.
size_t StoredTableColumns::AppendRowsAhead(size_t rows, const std::vector<uint32_t>& numbers)
{
    const AheadRows& ahead = mTable->mAhead;
    if (ahead.SafeCount() == 0)
        return rows;
    RecordShape shape(WantedOf(numbers));
    RecordScanner scanner(mTable->mRecordStream.get(), ahead.PositionOf(0), ahead.SafeEnd());
    bool isReadable = true;
    for (size_t i = 0; i < ahead.SafeCount(); i++) {
        const uint32_t rowID = mTable->mChangedRows.GetRowIDByIndex(i);
        rows++;
        if (mListing)
            mRowIDs->push_back(rowID);
        if (numbers.empty())
            continue;
        isReadable = isReadable && scanner.Next() && scanner.Header().rowID == rowID;
        const VTChangedRow* change = mTable->mChangedRows.GetItemByIndex(i);
        const auto take = [&](uint32_t number, const RecordField& field) {
            AppendField(number, field);
        };
        if (change != nullptr)
            AppendInsertedRow(*change, numbers);
        else if (!isReadable || shape.Read(scanner.Body(), take) < numbers.size())
            for (uint32_t number : numbers)
                if (HasFewer(number, rows))
                    Refuse(number);
    }
    return rows;
}

void StoredTableColumns::AppendInsertedRow(const VTChangedRow& change,
                                           const std::vector<uint32_t>& numbers)
{
    for (uint32_t number : numbers)
        if (!AppendFromChange(change, number))
            Refuse(number);
}

// The other inserted rows, after that many others; says how many there are with them.
size_t StoredTableColumns::AppendInsertedRows(size_t rows, const std::vector<uint32_t>& numbers)
{
    for (size_t i = mTable->mAhead.SafeCount(); i < mTable->mChangedRows.Count(); i++) {
        const VTChangedRow* change = mTable->mChangedRows.GetItemByIndex(i);
        if (!change->IsInsert() || mTable->mDeletedRows.Contains(change->RowID()))
            continue;
        rows++;
        if (mListing)
            mRowIDs->push_back(change->RowID());
        AppendInsertedRow(*change, numbers);
    }
    return rows;
}

bool StoredTableColumns::AppendFromChange(const VTChangedRow& change, uint32_t number)
{
    const VelaColumnInfo* info = mTable->Column(static_cast<long>(number));
    VelaValue value;
    if (!change.GetValue(info->columnID, info->Type(), &value))
        return false;
    if (!mColumns[number].refused && !mColumns[number].data->Append(value))
        Refuse(number);
    return true;
}

void StoredTableColumns::AppendMissing(uint32_t number)
{
    const VelaColumnInfo* info = mTable->Column(static_cast<long>(number));
    if (!mColumns[number].refused && !mColumns[number].data->Append(info->defaultValue))
        Refuse(number);
}

void StoredTableColumns::AppendField(uint32_t number, const RecordField& field)
{
    if (mColumns[number].refused)
        return;
    ColumnData& data = *mColumns[number].data;
    if (data.type == field.type && data.form == ColumnData::Form::kIntegers) {
        data.integers.push_back(FieldInteger(field));
    } else if (data.type == field.type && data.form == ColumnData::Form::kDoubles) {
        data.doubles.push_back(FieldDouble(field));
    } else if (data.type == field.type && data.form == ColumnData::Form::kTexts) {
        const TextEncoding encoding = field.type == kTypeString ? field.encoding : kEncodingASCII;
        if (!data.AppendText(field.payload, encoding))
            Refuse(number);
    } else {
        VelaValue value;
        DecodeField(field, &value);
        value.CoerceToType(mTable->Column(static_cast<long>(number))->Type());
        if (!data.Append(value))
            Refuse(number);
    }
}

void StoredTableColumns::Refuse(uint32_t number)
{
    mColumns[number].data.reset();
    mColumns[number].refused = true;
    CountMemory(number);
}

void StoredTableColumns::CountMemory(uint32_t number)
{
    Column& column = mColumns[number];
    const size_t memory = column.data ? column.data->MemoryUse() : 0;
    if (mMemory)
        mMemory->Replace(column.memory, memory);
    column.memory = memory;
}

// Whether the column has room with what it holds and, while it holds nothing yet, with so many rows at their least size.
bool StoredTableColumns::HasRoomFor(uint32_t number, size_t rows)
{
    if (!mMemory)
        return true;
    const Column& column = mColumns[number];
    const bool isNarrow = column.data->form == ColumnData::Form::kIntegers;
    const uint64_t least = uint64_t{rows} * (isNarrow ? sizeof(int32_t) : sizeof(double));
    const uint64_t held = column.data->MemoryUse();
    return mMemory->HasRoomFor(least + (held > column.memory ? held - column.memory : 0));
}

void StoredTableColumns::RowAdded(const VTChangedRow& change)
{
    if (!mRowsKnown || mTable->mDeletedRows.Contains(change.RowID()))
        return;
    if (!mRowIDs->empty() && mRowIDs->back() >= change.RowID())
        mAscending = false;
    if (mNumbersKnown)
        mNumbers.Set(change.RowID(), RowCount());
    mRowIDs->push_back(change.RowID());
    for (uint32_t number = 1; number < mColumns.size(); number++)
        if (IsLoaded(number) && !AppendFromChange(change, number))
            Refuse(number);
    mUncounted += change.Body().size();
}

void StoredTableColumns::RowUpdated(const VTChangedRow& change)
{
    if (!mRowsKnown)
        return;
    const uint32_t row = RowNumberOf(change.RowID());
    if (row == kInvalidRowID)
        return;
    RecordReader reader(change.Body());
    for (RecordField field; reader.Next(&field);) {
        const uint32_t number = NumberOf(field.columnID);
        if (number == 0 || !IsLoaded(number))
            continue;
        if (change.IsInsert())
            FindField(change.Body(), field.columnID, &field);   // the first of several is read
        VelaValue value;
        VTChangedRow::GetValue(field, mTable->Column(static_cast<long>(number))->Type(), &value);
        Unshare(&mColumns[number].data);
        if (!mColumns[number].data->Set(row, value))
            Refuse(number);
    }
    mUncounted += change.Body().size();
}

void StoredTableColumns::RowDeleted(uint32_t rowID)
{
    if (!mRowsKnown)
        return;
    const uint32_t row = RowNumberOf(rowID);
    if (row != kInvalidRowID)
        mDeletedNumbers.push_back(row);
}

void StoredTableColumns::RemoveDeletedRows()
{
    if (!mRowsKnown || mDeletedNumbers.empty())
        return;
    const RemovedRows rows(mDeletedNumbers);
    for (Column& column : mColumns) {
        if (!column.data)
            continue;
        Unshare(&column.data);
        column.data->RemoveRows(rows);
    }
    Unshare(&mRowIDs);
    rows.RemoveFrom(mRowIDs.get());
    mDeletedNumbers.clear();
    mNumbersKnown = false;
    mLastNumber = 0;
}

void StoredTableColumns::Settle()
{
    RemoveDeletedRows();
}

void StoredTableColumns::ChangesCommitted()
{
    for (Column& column : mColumns)
        column.refused = false;
}

}   // namespace vela
