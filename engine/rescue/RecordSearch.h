#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/rescue/BodyReader.h"
#include "engine/rescue/DamagedFile.h"
#include "engine/storage/RecordScanner.h"

namespace vela {

// A record that was found in a file, live or deleted.
struct FoundRecord {
    int64_t position = 0;
    RecordHeader header;
    BodyFault fault = BodyFault::kNone;   // kNone: the record is whole
    int64_t faultPosition = 0;
    int64_t end = 0;   // where its body ends: behind the last payload when it is whole
    bool lengthIsWrong =
        false;   // its length doesn't lead to its end, or leads over another record

    [[nodiscard]] bool IsWhole() const { return fault == BodyFault::kNone; }
};

// Bytes in which no record could be found.
struct PassedBytes {
    enum class Reason {
        kTag,
        kLength,
        kCut,
        kCovered
    };   // kCovered: by a record with a wrong length
    int64_t position = 0;
    int64_t size = 0;
    Reason reason = Reason::kTag;
};

// RecordSearch walks the records of a record file from header to header. Where a header is broken,
// it goes on at the next bytes that are a whole record; and it looks for whole records within the
// reach of records whose length may be wrong, so that each record whose own bytes are whole is
// found.
//
// Bytes that look like a record may also be part of a text, or be left over where a record became
// shorter. Within another record's reach they are believed when the table's map lists them, or when
// the map is no good itself.
class RecordSearch {
public:
    enum class Step { kRecord, kPassed, kEnd };

    // mapName: the table's map; empty when there is none, as for an index.
    RecordSearch(VelaFileAccess* files, const std::string& name, const std::string& mapName,
                 RescueWatch* watch);

    [[nodiscard]] DamagedFile& File() { return mFile; }
    // For reading the fields of a found record.
    [[nodiscard]] DamagedFile& Payloads() { return mPayloads; }

    Step Next();
    [[nodiscard]] const FoundRecord& Record() const { return mRecord; }
    [[nodiscard]] const PassedBytes& Passed() const { return mPassed; }
    // Deleted and live records that are whole, and bytes passed over, so far.
    [[nodiscard]] int64_t BytesPassedOver() const { return mBytesPassedOver; }

private:
    bool ReadHeader(int64_t position, FoundRecord* record, PassedBytes::Reason* reason);
    void Inspect(FoundRecord* record, int64_t limit);
    bool TrustBodyOverLength(FoundRecord* record);
    [[nodiscard]] bool IsBoundary(int64_t position);
    [[nodiscard]] bool IsWholeRecordAt(int64_t position, bool deletedToo);
    [[nodiscard]] int64_t FindRecord(int64_t from, int64_t end, bool within);
    [[nodiscard]] bool MapAllows(int64_t position);
    void LoadMap();
    Step StepOver(const FoundRecord& record);
    Step PassOver(int64_t position, int64_t end, PassedBytes::Reason reason);

    VelaFileAccess* mFiles;
    std::string mMapName;
    DamagedFile mFile;
    DamagedFile mPayloads;
    int64_t mLength;
    int64_t mNext;
    FoundRecord mRecord;
    PassedBytes mPassed;
    int64_t mBytesPassedOver = 0;
    bool mPending = false;   // mPassed is still to be told, after the record before it

    bool mMapLoaded = false;
    bool mMapIsGood = false;
    std::vector<uint32_t> mMapPositions;   // sorted
};

}   // namespace vela
