#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/storage/BodyPatcher.h"
#include "engine/storage/RandomAccessMechanism.h"
#include "engine/storage/RecordScanner.h"
#include "engine/storage/RowMap.h"

namespace vela {

// VelaStorage keeps the rows of one table in a record file and finds them by row id.
//
// It works on two streams that its owner opened and closes: the record stream, which must outlive it, and the map
// stream, which may be null. It always stands on one record, or on none; "current" below means that one.
// Row ids are chosen by the caller. Space of deleted records is never used again. File formats: RecordFormat.h.
class VelaStorage {
public:
    // Lengthens a record file of less than 256 bytes to that. The row-position map is loaded, or built by a scan when the
    // map stream has no valid one, as soon as it is needed.
    VelaStorage(RandomAccessMechanism* recordStream, RandomAccessMechanism* mapStream);
    VelaStorage(const VelaStorage&) = delete;
    VelaStorage& operator=(const VelaStorage&) = delete;

    // Positions on the first live record, or from the current on the next one. False at the end, where nothing is current,
    // and at a bad header, which is reported on the standard error stream.
    [[nodiscard]] bool GoToFirstRecord();
    [[nodiscard]] bool NextRecord();
    // Positions on the record of rowID. Free when it is current; else one hash look-up. A map that
    // doesn't know the row, or misleads, is compared with the file once, by a scan, and built anew
    // when it was wrong. skipDeleted passes over a deleted record to the next live one, of another
    // row: callers that want this very row set it to false. False: no such row, or a header can't be
    // read; nothing is current then.
    [[nodiscard]] bool GoToRowID(uint32_t rowID, bool skipDeleted);
    [[nodiscard]] uint32_t GetRowID() const { return mRowID; }
    // Whether the current record is a live one.
    [[nodiscard]] bool IsLive() const { return mLive; }
    // Where the current record starts in the file.
    [[nodiscard]] uint32_t Position() const { return static_cast<uint32_t>(mPosition); }
    // Where the record of a row starts, by the map alone; false when the map doesn't know it.
    [[nodiscard]] bool FindPosition(uint32_t rowID, uint32_t* position);
    // Row ids in the map's list: a row that moved is counted once more, until the map is built anew.
    [[nodiscard]] size_t QtyRows();

    // Reads the current record: resizes the list, whose surplus values are deleted. False when the record is damaged.
    bool ReadRecordValues(VelaRow* values);
    // The bytes of the current record's body; good until the next call. False when they can't be read.
    bool ReadBody(std::string_view* body);

    // Appends a record and stands on it; null values are left out. False when it could not be written, or would pass 4 GiB.
    bool AddNewRecord(uint32_t rowID, const VelaRow& values);
    // The same with the values as a record body without nulls.
    bool AddNewBody(uint32_t rowID, std::string_view body);
    // The same for a row id that IsNewest: the map need not be loaded for it. Its pair goes to the map file with the next
    // FlushToDisk.
    bool AddNewestBody(uint32_t rowID, std::string_view body);
    // Of a new table: the map knows no rows, whatever lies in the record file.
    void StartWithEmptyMap();
    // The same with a record that lies in the file already, of which only the map has to learn; nothing is current then.
    bool AddRecord(uint32_t rowID, uint32_t position);
    bool AddNewestRecord(uint32_t rowID, uint32_t position);
    // Whether the map is still in its file, unread, and its rows end with a lower row id.
    [[nodiscard]] bool IsNewest(uint32_t rowID);
    // Merges values, matched by column id, into the current record; columns not named keep what they hold, null values are
    // taken out. A record that has outgrown its place moves to the end of the file, where it is current, and keeps its row
    // id. False: a write failed; also when the record, complete, leaves slack in its old place.
    bool UpdateRecord(const VelaRow& values);
    // The same with the new values as a record body, in which null ones are fields of type None. False: a write failed.
    bool UpdateBody(std::string_view changes);
    // Writes a record from position to endPosition, which must hold it, and stands on it; null values are left out. False: a
    // write failed, or the values end before endPosition.
    bool WriteRecordAt(int64_t position, uint32_t rowID, const VelaRow& values,
                       int64_t endPosition);
    // Marks the current record deleted. The map still knows it.
    bool DeleteRecord();

    // The 256-byte block: cut or padded with zeros on writing, given whole on reading. False when it can't be had whole.
    bool ReadMetadata(string* text);
    bool WriteMetadata(const string& text);

    // The streams have gone back to an earlier state, that of the last commit: forgets what was learnt of them since.
    void StreamsWentBack();

    // Whether a write was refused because the file would have passed 4 GiB.
    [[nodiscard]] bool IsFull() const { return mFull; }
    // What went wrong on the streams, for people.
    [[nodiscard]] string ErrorText() const;

    // Saves the map when it has changed and flushes both streams to the device.
    [[nodiscard]] bool FlushToDisk();
    // Saves the map when its file has no valid one, of a table that needs no commit otherwise. The map is only a shortcut: when
    // it can't be saved it stays marked as stale.
    void RenewMap();
    [[nodiscard]] RandomAccessMechanism* RecordStream() const { return mFile; }
    // Bytes that the map file takes with added more rows.
    [[nodiscard]] int64_t MapFileSize(size_t addedRows);

private:
    enum class MapState { kUnloaded, kLoaded };

    bool GoToPosition(int64_t position, bool skipDeleted);
    const char* BytesAt(int64_t position, size_t count, char* room);
    bool GoToMappedRow(uint32_t rowID);
    bool MapAgreesWithFile();
    bool StandNowhere();
    bool WriteBodyAt(int64_t position, uint32_t rowID, std::string_view body, int64_t endPosition);
    bool WriteDifferences(size_t size);
    bool HandleError(RecordError error);
    bool Overwrite(int64_t position, const char* bytes, size_t count);
    void NeedMap();
    bool LoadRowPosMap();
    void BuildRowPosMap();
    bool SaveRowPosMap();
    bool SaveMovedPairs();
    bool SavePairs(size_t first, size_t end);
    bool MarkRowPosMapDirty();
    bool ReadMapHeader(uint32_t* count);
    bool CheckMapHeader(uint32_t* count, uint32_t* lastRow);
    bool AppendPairsToFile();
    void ListRow(uint32_t rowID, uint32_t position);
    bool AppendBody(uint32_t rowID, std::string_view body, int64_t* position);
    bool FindInMapFile(uint32_t rowID, int64_t* position);

    RandomAccessMechanism* mFile;
    int64_t mPosition = 0;   // of the current record's header
    uint32_t mRowID = kInvalidRowID;
    int64_t mNextPosition = 0;
    RandomAccessMechanism* mMapFile;
    RowMap<uint32_t> mRowPositions;
    bool mMapDirty = false;

    bool mCurrent = false;
    bool mLive = false;
    MapState mMapState = MapState::kUnloaded;
    uint32_t mFileLookups = 0;   // rows found in the map file without loading it
    bool mHeaderKnown = false;   // of the map file, as it is now
    uint32_t mPairsByHeader = 0;
    uint32_t mLastRowInFile = 0;   // of the last of these pairs
    std::vector<std::pair<uint32_t, uint32_t>>
        mAddedPairs;           // to be appended to the map file, which isn't loaded
    size_t mPairsInFile = 0;   // how many pairs at the start of the map file are as they should be
    std::vector<uint32_t> mMovedRows;   // rows whose pairs among these have changed since
    bool mMapIsComplete =
        false;   // every live record is in the map: a row that it doesn't know is not there
    std::vector<char> mBody;
    std::vector<char> mMerged;
    std::vector<char> mRecord;
    BodyPatcher mPatcher;
    std::vector<BodyPatcher::Difference> mDifferences;

    bool mFull = false;
};

}   // namespace vela
