#include "engine/storage/VelaStorage.h"

#include <algorithm>
#include <cassert>
#include <cstring>

#include "engine/storage/BodyMerge.h"
#include "engine/storage/RecordFormat.h"
#include "runtime/ByteOrder.h"

namespace vela {

namespace {

constexpr size_t kMapHeaderSize = 8;
constexpr size_t kMapPairSize = 8;
// After this many single look-ups in the map file, and one for each so many rows, loading it whole is the better way.
constexpr uint32_t kMaxFileLookups = 32;
constexpr uint32_t kRowsPerLookup = 128;
constexpr size_t kPairsPerBlock = 8192;
// Rows that have moved, as a part of all, up to which their pairs are written one by one.
constexpr size_t kFewMoved = 64;

std::vector<char> EncodedRow(const VelaRow& values)
{
    std::vector<char> body(CalcSchemaAndDataSize(values));
    EncodeRecordBody(body.data(), values);
    return body;
}

// The body that a row has in a record.
std::vector<char> RecordBodyOf(const VelaRow& values)
{
    const std::vector<char> body = EncodedRow(values);
    std::vector<char> stored;
    CopyWithoutNulls({body.data(), body.size()}, &stored);
    return stored;
}

std::string_view ViewOf(const std::vector<char>& bytes)
{
    return {bytes.data(), bytes.size()};
}

bool WriteNumberAt(RandomAccessMechanism* stream, int64_t position, uint32_t number)
{
    char bytes[4];
    StoreBigEndian32(bytes, number);
    return stream->SeekFromStart(position) && stream->WriteData(bytes, sizeof bytes);
}

bool ReadBytesAt(RandomAccessMechanism* stream, int64_t position, char* bytes, size_t count)
{
    return stream->SeekFromStart(position) &&
           stream->ReadData(bytes, static_cast<int>(count), nullptr);
}

}   // namespace

VelaStorage::VelaStorage(RandomAccessMechanism* recordStream, RandomAccessMechanism* mapStream)
    : mFile(recordStream), mMapFile(mapStream)
{
    assert(mFile != nullptr && "mFile");
    if (mFile->GetLength() < static_cast<int64_t>(kMetadataSize))
        mFile->SetLength(kMetadataSize);
}

bool VelaStorage::GoToFirstRecord()
{
    return GoToPosition(kMetadataSize, true);
}

bool VelaStorage::NextRecord()
{
    return mCurrent && GoToPosition(mNextPosition, true);
}

bool VelaStorage::GoToRowID(uint32_t rowID, bool skipDeleted)
{
    if (mCurrent && mRowID == rowID)
        return true;
    int64_t position = 0;
    const bool found = mMapState == MapState::kUnloaded && FindInMapFile(rowID, &position) &&
                       GoToPosition(position, false);
    if (!found && !GoToMappedRow(rowID)) {
        if (MapAgreesWithFile())
            return StandNowhere();
        BuildRowPosMap();
        if (!GoToMappedRow(rowID))
            return StandNowhere();
    }
    return mLive || !skipDeleted || NextRecord();
}

bool VelaStorage::GoToMappedRow(uint32_t rowID)
{
    NeedMap();
    const uint32_t* known = mRowPositions.FindNode(rowID);
    return known != nullptr && GoToPosition(*known, false) && mRowID == rowID;
}

bool VelaStorage::FindPosition(uint32_t rowID, uint32_t* position)
{
    NeedMap();
    const uint32_t* known = mRowPositions.FindNode(rowID);
    if (known != nullptr)
        *position = *known;
    return known != nullptr;
}

size_t VelaStorage::QtyRows()
{
    uint32_t count = 0;
    if (mMapState == MapState::kUnloaded && !mMapDirty && ReadMapHeader(&count))
        return count + mAddedPairs.size();
    NeedMap();
    return mRowPositions.Count();
}

// Whether the map tells of every live record where it is. Reads the whole file the first time; a map that agrees then, or
// was built by a scan, stays so.
bool VelaStorage::MapAgreesWithFile()
{
    if (mMapIsComplete)
        return true;
    RecordScanner scanner(mFile);
    while (scanner.Next()) {
        if (!scanner.Header().live)
            continue;
        const uint32_t* known = mRowPositions.FindNode(scanner.Header().rowID);
        if (known == nullptr || *known != scanner.Position())
            return false;
    }
    mMapIsComplete = true;
    return true;
}

bool VelaStorage::StandNowhere()
{
    mCurrent = false;
    return false;
}

bool VelaStorage::GoToPosition(int64_t position, bool skipDeleted)
{
    mCurrent = false;
    for (int64_t length = mFile->GetLength(); position < length; position = mNextPosition) {
        mPosition = position;
        char room[kRecordHeaderSize];
        const char* bytes = BytesAt(position, sizeof room, room);
        if (bytes == nullptr)
            return HandleError(RecordError::kReadFailed);
        RecordHeader header;
        const int64_t bodyPosition = position + static_cast<int64_t>(kRecordHeaderSize);
        const RecordError error = ParseRecordHeader(bytes, length - bodyPosition, &header);
        if (error != RecordError::kNone)
            return HandleError(error);
        mRowID = header.rowID;
        mLive = header.live;
        mNextPosition = bodyPosition + header.bodySize;
        if (!skipDeleted || header.live) {
            mCurrent = true;
            return true;
        }
    }
    return false;
}

// The count bytes of the record file from position, where they are or, when they don't lie in one piece, in room. Null: they
// can't be read.
const char* VelaStorage::BytesAt(int64_t position, size_t count, char* room)
{
    const std::string_view bytes = mFile->Peek(position);
    if (bytes.size() >= count)
        return bytes.data();
    return ReadBytesAt(mFile, position, room, count) ? room : nullptr;
}

bool VelaStorage::HandleError(RecordError error)
{
    ReportRecordError(error);
    mFile->NoteDamage(mPosition, DamageOf(error));
    return StandNowhere();
}

bool VelaStorage::ReadBody(std::string_view* body)
{
    if (!mCurrent)
        return false;
    const int64_t bodyPosition = mPosition + static_cast<int64_t>(kRecordHeaderSize);
    const size_t size = static_cast<size_t>(mNextPosition - bodyPosition);
    if (mBody.size() < size)
        mBody.resize(size);
    const char* bytes = BytesAt(bodyPosition, size, mBody.data());
    *body = {bytes, bytes != nullptr ? size : 0};
    return bytes != nullptr;
}

bool VelaStorage::ReadRecordValues(VelaRow* values)
{
    std::string_view body;
    if (ReadBody(&body))
        return DecodeRecordBody(body, values);
    DeleteValues(values);
    return false;
}

bool VelaStorage::AddNewRecord(uint32_t rowID, const VelaRow& values)
{
    return AddNewBody(rowID, ViewOf(RecordBodyOf(values)));
}

bool VelaStorage::AddNewBody(uint32_t rowID, std::string_view body)
{
    NeedMap();
    int64_t position = 0;
    if (!MarkRowPosMapDirty() || !AppendBody(rowID, body, &position))
        return false;
    ListRow(rowID, static_cast<uint32_t>(position));
    return true;
}

void VelaStorage::ListRow(uint32_t rowID, uint32_t position)
{
    if (mRowPositions.Contains(rowID))
        mMovedRows.push_back(rowID);   // its earlier pair changes too
    mRowPositions.Append(rowID, position);
}

bool VelaStorage::AddNewestBody(uint32_t rowID, std::string_view body)
{
    mAddedPairs.emplace_back(rowID, 0);
    int64_t position = 0;
    if (!AppendBody(rowID, body, &position)) {
        mAddedPairs.pop_back();
        return false;
    }
    mAddedPairs.back().second = static_cast<uint32_t>(position);
    return true;
}

void VelaStorage::StartWithEmptyMap()
{
    mMapState = MapState::kLoaded;
    mMapIsComplete = true;
}

bool VelaStorage::AddRecord(uint32_t rowID, uint32_t position)
{
    NeedMap();
    if (!MarkRowPosMapDirty())
        return false;
    // A map that was built since the record is there knows it.
    const uint32_t* known = mRowPositions.FindNode(rowID);
    if (known == nullptr || *known != position)
        ListRow(rowID, position);
    mCurrent = false;
    return true;
}

bool VelaStorage::AddNewestRecord(uint32_t rowID, uint32_t position)
{
    mAddedPairs.emplace_back(rowID, position);
    mCurrent = false;
    return true;
}

bool VelaStorage::IsNewest(uint32_t rowID)
{
    uint32_t count = 0;
    return mMapState == MapState::kUnloaded && !mMapDirty && ReadMapHeader(&count) &&
           rowID > (mAddedPairs.empty() ? mLastRowInFile : mAddedPairs.back().first);
}

bool VelaStorage::AppendBody(uint32_t rowID, std::string_view body, int64_t* position)
{
    // It is shorter when it could not be lengthened on opening.
    if (mFile->GetLength() < static_cast<int64_t>(kMetadataSize) &&
        !mFile->SetLength(kMetadataSize))
        return false;
    *position = mFile->GetLength();
    const int64_t endPosition = *position + static_cast<int64_t>(kRecordHeaderSize + body.size());
    mFull = endPosition > kMaxRecordFileSize;
    return !mFull && WriteBodyAt(*position, rowID, body, endPosition);
}

bool VelaStorage::UpdateRecord(const VelaRow& values)
{
    const int64_t oldEnd = mNextPosition;
    const int64_t oldPosition = mPosition;
    if (!UpdateBody(ViewOf(EncodedRow(values))))
        return false;
    const bool moved = mPosition != oldPosition;
    return moved || mFile->GetPosition() == oldEnd;
}

bool VelaStorage::UpdateBody(std::string_view changes)
{
    std::string_view old;
    if (!ReadBody(&old))
        return false;
    size_t size = 0;
    if (mLive && mPatcher.FindDifferences(old, changes, &mDifferences, &size))
        return WriteDifferences(size);
    MergeBodies(old, changes, MergedNulls::kTakeOut, &mMerged);
    const std::string_view body = ViewOf(mMerged);
    const bool fits = body.size() <= old.size();
    if (fits && !mLive)
        return WriteBodyAt(mPosition, mRowID, body, mNextPosition);
    if (fits) {
        mDifferences.assign(1, {0, body});
        return WriteDifferences(body.size());
    }
    const int64_t oldPosition = mPosition;
    char tag[4];
    StoreBigEndian32(tag, kTrashTag);
    return AddNewBody(mRowID, body) && Overwrite(oldPosition, tag, sizeof tag);
}

// Puts what was found to differ into the body of the current record. Leaves the stream behind the body, which is size bytes long.
bool VelaStorage::WriteDifferences(size_t size)
{
    const int64_t bodyPosition = mPosition + static_cast<int64_t>(kRecordHeaderSize);
    for (const auto& [at, bytes] : mDifferences)
        if (!Overwrite(bodyPosition + static_cast<int64_t>(at), bytes.data(), bytes.size())) {
            mCurrent = false;
            return false;
        }
    return mFile->SeekFromStart(bodyPosition + static_cast<int64_t>(size));
}

bool VelaStorage::WriteRecordAt(int64_t position, uint32_t rowID, const VelaRow& values,
                                int64_t endPosition)
{
    return WriteBodyAt(position, rowID, ViewOf(RecordBodyOf(values)), endPosition) &&
           mFile->GetPosition() == endPosition;
}

// Leaves the stream behind the body; bytes between there and endPosition stay as they are.
bool VelaStorage::WriteBodyAt(int64_t position, uint32_t rowID, std::string_view body,
                              int64_t endPosition)
{
    assert(position + static_cast<int64_t>(kRecordHeaderSize + body.size()) <= endPosition);
    const size_t size = kRecordHeaderSize + body.size();
    if (mRecord.size() < size)
        mRecord.resize(size);
    EncodeRecordHeader(
        mRecord.data(), rowID,
        static_cast<uint32_t>(endPosition - position - static_cast<int64_t>(kRecordHeaderSize)));
    std::memcpy(mRecord.data() + kRecordHeaderSize, body.data(), body.size());
    mCurrent = false;
    if (!Overwrite(position, mRecord.data(), size))
        return false;
    mPosition = position;
    mRowID = rowID;
    mNextPosition = endPosition;
    mLive = true;
    mCurrent = true;
    return true;
}

bool VelaStorage::DeleteRecord()
{
    char tag[4];
    StoreBigEndian32(tag, kTrashTag);
    if (!mCurrent || !Overwrite(mPosition, tag, sizeof tag))
        return false;
    mLive = false;
    return true;
}

bool VelaStorage::Overwrite(int64_t position, const char* bytes, size_t count)
{
    return mFile->SeekFromStart(position) && mFile->WriteData(bytes, static_cast<int>(count));
}

void VelaStorage::StreamsWentBack()
{
    mCurrent = false;
    mFull = false;
    mMapState = MapState::kUnloaded;
    mMapDirty = false;
    mMapIsComplete = false;
    mFileLookups = 0;
    mHeaderKnown = false;
    mAddedPairs.clear();
    mPairsInFile = 0;
    mMovedRows.clear();
}

bool VelaStorage::ReadMetadata(string* text)
{
    char block[kMetadataSize];
    int bytesRead = 0;
    if (!mFile->SeekFromStart(0))
        return false;
    const bool whole = mFile->ReadData(block, sizeof block, &bytesRead);
    if (bytesRead <= 0)
        return false;
    std::memset(block + bytesRead, 0, sizeof block - static_cast<size_t>(bytesRead));
    if (text != nullptr)
        *text = string(block, sizeof block, kEncodingASCII);
    return whole;
}

bool VelaStorage::WriteMetadata(const string& text)
{
    char block[kMetadataSize] = {};
    std::memcpy(block, text.CString(), std::min(text.length(), kMetadataSize));
    return Overwrite(0, block, sizeof block);
}

string VelaStorage::ErrorText() const
{
    const int number = mFile->ErrorNumber() != 0 || mMapFile == nullptr ? mFile->ErrorNumber()
                                                                        : mMapFile->ErrorNumber();
    return number == 0 ? string("unknown error") : string(std::strerror(number));
}

bool VelaStorage::FlushToDisk()
{
    if (!mFile->FlushToDisk())
        return false;
    if (mMapFile == nullptr)
        return true;
    if ((mMapDirty && !SaveRowPosMap()) || (!mAddedPairs.empty() && !AppendPairsToFile()))
        return false;
    return mMapFile->FlushToDisk();
}

void VelaStorage::RenewMap()
{
    uint32_t count = 0;
    if (mMapFile == nullptr || (mMapState == MapState::kUnloaded && ReadMapHeader(&count)))
        return;
    NeedMap();
    if (mMapDirty && SaveRowPosMap())
        mMapFile->FlushToDisk();
}

int64_t VelaStorage::MapFileSize(size_t addedRows)
{
    return static_cast<int64_t>(kMapHeaderSize + kMapPairSize * (QtyRows() + addedRows) + 4);
}

void VelaStorage::NeedMap()
{
    if (mMapState == MapState::kLoaded)
        return;
    mMapState = MapState::kLoaded;
    const auto added = std::move(mAddedPairs);
    mAddedPairs.clear();
    if (mMapDirty || !LoadRowPosMap()) {
        BuildRowPosMap();
        return;
    }
    for (const auto& [rowID, position] : added)
        mRowPositions.Append(rowID, position);
    if (!added.empty() && !MarkRowPosMapDirty())
        mMapDirty = true;   // to be saved all the same
}

// The count of pairs, when the file says that it is valid and is long enough for them and the end mark.
bool VelaStorage::ReadMapHeader(uint32_t* count)
{
    if (!mHeaderKnown && !CheckMapHeader(&mPairsByHeader, &mLastRowInFile))
        return false;
    mHeaderKnown = true;
    *count = mPairsByHeader;
    return true;
}

bool VelaStorage::CheckMapHeader(uint32_t* count, uint32_t* lastRow)
{
    char header[kMapHeaderSize];
    if (mMapFile == nullptr || !ReadBytesAt(mMapFile, 0, header, sizeof header))
        return false;
    const int64_t room = mMapFile->GetLength() - static_cast<int64_t>(kMapHeaderSize + 4);
    *count = LoadBigEndian32(header + 4);
    if (LoadBigEndian32(header) != kMapValid || room < 0 || *count > INT32_MAX ||
        *count > room / static_cast<int64_t>(kMapPairSize))
        return false;
    // The last pair, or with none the header, and the end mark.
    char end[kMapPairSize + 4];
    const int64_t position = static_cast<int64_t>(kMapHeaderSize + kMapPairSize * *count);
    if (!ReadBytesAt(mMapFile, position - static_cast<int64_t>(kMapPairSize), end, sizeof end) ||
        LoadBigEndian32(end + kMapPairSize) != kMapEnd)
        return false;
    *lastRow = *count == 0 ? 0 : LoadBigEndian32(end);
    return true;
}

bool VelaStorage::LoadRowPosMap()
{
    uint32_t count = 0;
    if (!ReadMapHeader(&count) || !mMapFile->SeekFromStart(kMapHeaderSize))
        return false;
    mRowPositions.Presize(count);
    std::vector<char> block(std::min<size_t>(count, kPairsPerBlock) * kMapPairSize);
    for (uint32_t left = count; left > 0;) {
        const uint32_t pairs = std::min<uint32_t>(left, kPairsPerBlock);
        if (!mMapFile->ReadData(block.data(), static_cast<int>(pairs * kMapPairSize), nullptr))
            return false;
        for (const char* pair = block.data(); pair < block.data() + pairs * kMapPairSize;
             pair += kMapPairSize)
            mRowPositions.Append(LoadBigEndian32(pair), LoadBigEndian32(pair + 4));
        left -= pairs;
    }
    mMapDirty = false;
    mPairsInFile = count;
    mMovedRows.clear();
    return true;
}

void VelaStorage::BuildRowPosMap()
{
    mMovedRows.clear();
    mRowPositions.Presize(1000);
    mPairsInFile = 0;
    RecordScanner scanner(mFile);
    while (scanner.Next())
        if (scanner.Header().live)
            mRowPositions.Append(scanner.Header().rowID, scanner.Position());
    if (mRowPositions.Count() > 0)
        MarkRowPosMapDirty();
    mMapIsComplete = true;
}

// Looks a row up in a map file that isn't loaded, as long as its pairs are sorted by row id around the place where the row
// should be; what is found is believed only when the record there is that row's.
bool VelaStorage::FindInMapFile(uint32_t rowID, int64_t* position)
{
    uint32_t count = 0;
    if (!ReadMapHeader(&count) || mFileLookups >= kMaxFileLookups + count / kRowsPerLookup)
        return false;
    mFileLookups++;
    uint32_t first = 0;
    uint32_t guess = rowID - 1;   // where it is when rows are numbered from 1 without gaps
    for (uint32_t end = count; first < end;) {
        const uint32_t middle = guess < end ? guess : first + (end - first) / 2;
        guess = UINT32_MAX;
        char pair[kMapPairSize];
        if (!ReadBytesAt(mMapFile, static_cast<int64_t>(kMapHeaderSize + kMapPairSize * middle),
                         pair, sizeof pair))
            return false;
        const uint32_t found = LoadBigEndian32(pair);
        if (found == rowID) {
            *position = LoadBigEndian32(pair + 4);
            char header[kRecordHeaderSize];
            return ReadBytesAt(mFile, *position, header, sizeof header) &&
                   LoadBigEndian32(header + 4) == rowID;
        }
        if (found < rowID)
            first = middle + 1;
        else
            end = middle;
    }
    return false;
}

bool VelaStorage::MarkRowPosMapDirty()
{
    if (mMapDirty)
        return true;
    mHeaderKnown = false;
    if (mMapFile != nullptr && !WriteNumberAt(mMapFile, 0, kMapStale))
        return false;
    mMapDirty = true;
    return true;
}

// Only the pairs that the file doesn't have yet, or not as they are now, are written; the file is then as if it had been
// written whole.
bool VelaStorage::SaveRowPosMap()
{
    const size_t count = mRowPositions.Count();
    if (mPairsInFile > count || mMovedRows.size() > count / kFewMoved)
        mPairsInFile = 0;
    char end[4];
    StoreBigEndian32(end, kMapEnd);
    if (!WriteNumberAt(mMapFile, 0, kMapStale) ||
        !WriteNumberAt(mMapFile, 4, static_cast<uint32_t>(count)) || !SaveMovedPairs() ||
        !SavePairs(mPairsInFile, count) || !mMapFile->WriteData(end, sizeof end) ||
        !WriteNumberAt(mMapFile, 0, kMapValid))
        return false;
    mMapDirty = false;
    mPairsInFile = count;
    mMovedRows.clear();
    return true;
}

// The file is then as if the map had been loaded and saved.
bool VelaStorage::AppendPairsToFile()
{
    const size_t count = mPairsByHeader + mAddedPairs.size();
    std::vector<char> bytes(kMapPairSize * mAddedPairs.size() + 4);
    char* to = bytes.data();
    for (const auto& [rowID, position] : mAddedPairs) {
        StoreBigEndian32(to, rowID);
        StoreBigEndian32(to + 4, position);
        to += kMapPairSize;
    }
    StoreBigEndian32(to, kMapEnd);
    const int64_t end = static_cast<int64_t>(kMapHeaderSize + kMapPairSize * mPairsByHeader);
    if (!WriteNumberAt(mMapFile, 0, kMapStale) ||
        !WriteNumberAt(mMapFile, 4, static_cast<uint32_t>(count)) ||
        !mMapFile->SeekFromStart(end) ||
        !mMapFile->WriteData(bytes.data(), static_cast<int>(bytes.size())) ||
        !WriteNumberAt(mMapFile, 0, kMapValid))
        return false;
    mPairsByHeader = static_cast<uint32_t>(count);
    mLastRowInFile = mAddedPairs.back().first;
    mAddedPairs.clear();
    return true;
}

// A row that has moved more than once is listed as often.
bool VelaStorage::SaveMovedPairs()
{
    if (mMovedRows.empty())
        return true;
    std::sort(mMovedRows.begin(), mMovedRows.end());
    for (size_t i = 0; i < mPairsInFile; i++)
        if (std::binary_search(mMovedRows.begin(), mMovedRows.end(),
                               mRowPositions.GetRowIDByIndex(i)) &&
            !SavePairs(i, i + 1))
            return false;
    return true;
}

// Leaves the stream behind them.
bool VelaStorage::SavePairs(size_t first, size_t end)
{
    if (!mMapFile->SeekFromStart(static_cast<int64_t>(kMapHeaderSize + kMapPairSize * first)))
        return false;
    std::vector<char> block;
    block.reserve(std::min(end - first, kPairsPerBlock) * kMapPairSize);
    for (size_t i = first; i < end; i++) {
        char pair[kMapPairSize];
        const uint32_t rowID = mRowPositions.GetRowIDByIndex(i);
        StoreBigEndian32(pair, rowID);
        StoreBigEndian32(pair + 4, mRowPositions.GetItem(rowID));
        block.insert(block.end(), pair, pair + kMapPairSize);
        if (block.size() < kPairsPerBlock * kMapPairSize && i + 1 < end)
            continue;
        if (!mMapFile->WriteData(block.data(), static_cast<int>(block.size())))
            return false;
        block.clear();
    }
    return true;
}

}   // namespace vela
