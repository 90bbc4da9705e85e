#include "engine/rescue/RecordSearch.h"

#include <algorithm>
#include <cstring>

#include "engine/rescue/MapPairs.h"
#include "engine/storage/RecordFormat.h"
#include "runtime/ByteOrder.h"

namespace vela {

namespace {

constexpr size_t kBlockSize = size_t{1} << 16;
constexpr size_t kPayloadBlockSize = size_t{1} << 12;
// Much less than a block, so that going on behind a place that was no record seldom reads the block
// again.
constexpr int64_t kSearchStep = 1 << 10;
constexpr int64_t kHeader = static_cast<int64_t>(kRecordHeaderSize);
constexpr int64_t kTagSize = 4;

bool IsTag(uint32_t tag)
{
    return tag == kRecordTag || tag == kTrashTag;
}

}   // namespace

RecordSearch::RecordSearch(VelaFileAccess* files, const std::string& name,
                           const std::string& mapName, RescueWatch* watch)
    : mFiles(files),
      mMapName(mapName),
      mFile(files, name, watch, kBlockSize),
      mPayloads(files, name, watch, kPayloadBlockSize),
      mLength(std::min(mFile.Length(), kMaxRecordFileSize)),
      mNext(static_cast<int64_t>(kMetadataSize))
{
    watch->StartFile(name, mLength);
}

RecordSearch::Step RecordSearch::Next()
{
    if (mPending) {
        mPending = false;
        return Step::kPassed;
    }
    if (mNext >= mLength || mFile.Watch()->Stopped())
        return Step::kEnd;
    FoundRecord record;
    PassedBytes::Reason reason = PassedBytes::Reason::kTag;
    if (ReadHeader(mNext, &record, &reason))
        return StepOver(record);
    if (reason == PassedBytes::Reason::kLength && TrustBodyOverLength(&record))
        return StepOver(record);
    return PassOver(mNext, FindRecord(mNext + 1, mLength, false), reason);
}

// The header, and what is behind it as far as its length goes. False: it is none; its tag and row
// id are set when the length alone is wrong.
bool RecordSearch::ReadHeader(int64_t position, FoundRecord* record, PassedBytes::Reason* reason)
{
    record->position = position;
    const char* bytes =
        mLength - position < kHeader ? nullptr : mFile.Bytes(position, kRecordHeaderSize);
    *reason = PassedBytes::Reason::kCut;
    if (bytes == nullptr)
        return false;
    const uint32_t tag = LoadBigEndian32(bytes);
    record->header.live = tag == kRecordTag;
    record->header.rowID = LoadBigEndian32(bytes + 4);
    *reason = IsTag(tag) ? PassedBytes::Reason::kLength : PassedBytes::Reason::kTag;
    if (ParseRecordHeader(bytes, mLength - position - kHeader, &record->header) !=
            RecordError::kNone ||
        !mFile.IsReadable(position, position + kHeader))
        return false;
    Inspect(record, position + kHeader + record->header.bodySize);
    // A length that leads to a record or the end is believed, whatever the body says.
    if (!record->IsWhole() && !IsBoundary(record->end))
        TrustBodyOverLength(record);
    return true;
}

void RecordSearch::Inspect(FoundRecord* record, int64_t limit)
{
    const int64_t body = record->position + kHeader;
    const int64_t size = limit - record->position;
    const bool isSmall = size <= static_cast<int64_t>(kBlockSize);
    if (isSmall)   // it then lies in the block as a whole, and one view of the file will do
        (void)mFile.Bytes(record->position, static_cast<size_t>(size));
    BodyReader reader(&mFile, isSmall ? &mFile : &mPayloads, body, limit);
    FieldPlace field;
    while (reader.Next(&field)) {
    }
    record->fault = reader.Fault();
    record->faultPosition = reader.Position();
    record->end = record->IsWhole() ? reader.Position() : limit;
}

// Whether the body of a record with a length that can't be right is whole all the same, with a
// record or the file's end behind it. The record is then that one.
bool RecordSearch::TrustBodyOverLength(FoundRecord* record)
{
    FoundRecord longer = *record;
    Inspect(&longer, mLength);
    if (!longer.IsWhole() || !IsBoundary(longer.end))
        return false;
    *record = longer;
    record->lengthIsWrong = true;
    record->header.bodySize = static_cast<uint32_t>(longer.end - record->position - kHeader);
    return true;
}

bool RecordSearch::IsBoundary(int64_t position)
{
    if (position == mLength)
        return true;
    const char* tag = mLength - position < kTagSize ? nullptr : mFile.Bytes(position, kTagSize);
    return tag != nullptr && IsTag(LoadBigEndian32(tag));
}

RecordSearch::Step RecordSearch::StepOver(const FoundRecord& record)
{
    mRecord = record;
    const int64_t end = record.position + kHeader + record.header.bodySize;
    const int64_t from = record.IsWhole() ? record.end : record.position + kTagSize;
    const int64_t inside = from < end ? FindRecord(from, end, true) : end;
    mNext = inside;
    if (inside == end)
        return Step::kRecord;
    mRecord.lengthIsWrong = true;
    if (!mRecord.IsWhole())
        mRecord.end = inside;
    else if (inside > mRecord.end) {
        PassOver(mRecord.end, inside, PassedBytes::Reason::kCovered);
        mPending = true;
    }
    return Step::kRecord;
}

RecordSearch::Step RecordSearch::PassOver(int64_t position, int64_t end, PassedBytes::Reason reason)
{
    mPassed = {position, end - position, reason};
    mBytesPassedOver += end - position;
    mNext = end;
    return Step::kPassed;
}

// The position of the first whole record that begins in from .. end - 1; end when there is none.
// within: the place lies in the reach of a record.
int64_t RecordSearch::FindRecord(int64_t from, int64_t end, bool within)
{
    while (from < end && mLength - from >= kHeader && !mFile.Watch()->Stopped()) {
        const int64_t left = std::min<int64_t>(mLength - from, kSearchStep);
        const char* bytes = mFile.Bytes(from, static_cast<size_t>(left));
        const int64_t starts = std::min(left - kTagSize + 1, end - from);
        int64_t i = 0;
        while (i < starts && !IsTag(LoadBigEndian32(bytes + i)))
            i++;
        from += i;
        if (i == starts)
            continue;
        if (IsWholeRecordAt(from, !within) && (!within || MapAllows(from)))
            return from;
        from++;
    }
    return end;
}

bool RecordSearch::IsWholeRecordAt(int64_t position, bool deletedToo)
{
    FoundRecord record;
    PassedBytes::Reason reason = PassedBytes::Reason::kTag;
    const bool read = ReadHeader(position, &record, &reason) ||
                      (reason == PassedBytes::Reason::kLength && TrustBodyOverLength(&record));
    return read && record.IsWhole() && (deletedToo || record.header.live);
}

// Whether the map speaks for a record at a place where another one lies already, or can't say.
bool RecordSearch::MapAllows(int64_t position)
{
    LoadMap();
    return !mMapIsGood || std::binary_search(mMapPositions.begin(), mMapPositions.end(),
                                             static_cast<uint32_t>(position));
}

// A map is good when it is whole and each of its pairs leads to a header of the pair's row.
void RecordSearch::LoadMap()
{
    if (mMapLoaded)
        return;
    mMapLoaded = true;
    if (mMapName.empty())
        return;
    const MapPairs map(mFiles, mMapName, mFile.Watch());
    mMapIsGood = map.IsWhole();
    for (const MapPairs::Pair& pair : map.Pairs()) {
        const char* header = mMapIsGood ? mPayloads.Bytes(pair.position, 8) : nullptr;
        if (header == nullptr || !IsTag(LoadBigEndian32(header)) ||
            LoadBigEndian32(header + 4) != pair.rowID) {
            mMapIsGood = false;
            return;
        }
        mMapPositions.push_back(pair.position);
    }
    std::sort(mMapPositions.begin(), mMapPositions.end());
}

}   // namespace vela
