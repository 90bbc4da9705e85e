#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vela {

// CommitLogFormat: the file "_commit.log" in which a commit is written down before any file of the database changes.
// docs/durability.md says what it is for. All numbers are big-endian and unsigned.
//
// The file begins with a head, which tells the generation of the records that count:
//
//   offset  size  content of the head
//        0     4  mark kLogMark "VcLg"
//        4     8  generation, at least 1
//       12     4  CRC-32C (Checksum.h) of the twelve bytes before
//       16   496  zeros
//
// Then come records, each starting at a multiple of kLogAlignment, filled up with zeros. The records that count are those
// from the head on that are whole, have its generation and are numbered 0, 1, 2 ... What follows is left over from an
// earlier generation, torn, or zero. A disk writes aligned 512 bytes whole or not at all, so that the head is always one
// or the other, and no record's writing touches another.
//
//   offset  size  content of a record
//        0     4  mark kLogRecordMark "VcRc"
//        4     4  kind: 1 note, 2 commit
//        8     8  generation, at least 1
//       16     4  number in the generation
//       20     4  CRC-32C (Checksum.h) of the record with these four bytes as zeros, up to offset 32 + P
//       24     8  payload size P, at most kLargestLogPayload
//       32     P  payload: entries, one after another
//
//   size  content of an entry
//      1  kind: 1 file, 2 deletion, 3 replacement; in a note 4 growing, 5 beside
//      2  size N of the name
//      N  the file's name
//   then, of a file (its bytes after the commit; missing files are made):
//      8  kept: so many bytes from its start stay, but for the extents
//      8  length of the whole file
//      4  number of extents; the last one fills the file from kept to length when these differ
//         each: position (8), size S (4), S bytes
//   of a replacement (the file NAME.new, complete, takes the name):
//      8  its length
//   of a growing file (bytes beyond this length have no meaning unless the next commit in the log gives them one):
//      8  length
//   of a deletion, and of a file beside (NAME.new is being written): nothing
//
// Readers check every size against the bytes that are left, and every name (IsLogFileName), before they trust it.
//
// Example, generation 1, number 0: a commit that makes the file "t.map", 2 bytes long, holding "Hi":
//   56 63 52 63  00 00 00 02  00 00 00 00 00 00 00 01  00 00 00 00  F7 9A 70 86  00 00 00 00 00 00 00 2A
//   01  00 05  74 2E 6D 61 70  00 00 00 00 00 00 00 00  00 00 00 00 00 00 00 02  00 00 00 01
//       00 00 00 00 00 00 00 00  00 00 00 02  48 69
extern const char* const kCommitLogName;          // "_commit.log"
constexpr uint32_t kLogMark = 0x56634C67;         // stored in files: never change
constexpr uint32_t kLogRecordMark = 0x56635263;   // stored in files: never change
constexpr size_t kLogHeadSize = 16;
constexpr size_t kLogHeaderSize = 32;   // of a record
constexpr size_t kLogAlignment = 512;
constexpr uint64_t kLargestLogPayload = uint64_t{1} << 30;

enum class LogRecordKind : uint32_t { kNote = 1, kCommit = 2 };
enum class LogEntryKind : uint8_t {
    kFile = 1,
    kDeletion = 2,
    kReplacement = 3,
    kGrowing = 4,
    kBeside = 5
};

struct LogExtent {
    int64_t position = 0;
    std::string_view bytes;
};

// One entry, as a view of the payload that it was read from.
struct LogEntry {
    LogEntryKind kind = LogEntryKind::kFile;
    std::string_view name;
    int64_t kept = 0;
    int64_t length = 0;
    std::vector<LogExtent> extents;
};

struct LogHeader {
    LogRecordKind kind = LogRecordKind::kNote;
    uint64_t generation = 0;
    uint32_t number = 0;
    uint32_t checksum = 0;
    uint64_t payloadSize = 0;
};

// Whether the log may name this file: one of a table, by its ending.
[[nodiscard]] bool IsLogFileName(std::string_view name);
// The name under which a replacement lies until it takes its own.
[[nodiscard]] std::string BesideName(std::string_view name);

constexpr size_t kLogEntryHeadSize = 3;   // before the name
constexpr size_t kLogNumberSize = 8;
constexpr size_t kLogCountSize = 4;
constexpr size_t kLogExtentHeadSize = 12;   // before the bytes

// Appends the kind and name of an entry, a number of 8 bytes, an extent. Extents of a file follow its count.
void AppendLogEntry(std::string* payload, LogEntryKind kind, std::string_view name);
void AppendLogNumber(std::string* payload, int64_t number);
void AppendLogCount(std::string* payload, uint32_t count);
void AppendLogExtent(std::string* payload, int64_t position, std::string_view bytes);

// The head with the zeros behind it, kLogAlignment bytes.
[[nodiscard]] std::string EncodeLogHead(uint64_t generation);
// The generation; 0 when the kLogHeadSize bytes are no head.
[[nodiscard]] uint64_t DecodeLogHead(const char* bytes);

// The header of a record, kLogHeaderSize bytes, with header's checksum as it stands.
[[nodiscard]] std::string EncodeLogHeader(const LogHeader& header);
// Puts the checksum into a header, where there were zeros.
void SetLogChecksum(char* bytes, uint32_t checksum);
// False when the kLogHeaderSize bytes are no header. The checksum is not looked at.
[[nodiscard]] bool DecodeLogHeader(const char* bytes, LogHeader* header);
// The checksum of the header's own bytes, to be carried on over the payload.
[[nodiscard]] uint32_t LogHeaderChecksum(const char* bytes);
// False when the payload is not as described above; entries are then of no use.
[[nodiscard]] bool DecodeLogPayload(std::string_view payload, std::vector<LogEntry>* entries);

}   // namespace vela
