#include "engine/storage/CommitLogFormat.h"

#include <gtest/gtest.h>

#include "engine/storage/Checksum.h"
#include "tests/storage/StorageTesting.h"
#include "tests/storage/WholeLogRecord.h"

namespace vela {

namespace {

std::string FileEntry(std::string_view name, int64_t kept, int64_t length,
                      const std::vector<LogExtent>& extents)
{
    std::string payload;
    AppendLogEntry(&payload, LogEntryKind::kFile, name);
    AppendLogNumber(&payload, kept);
    AppendLogNumber(&payload, length);
    AppendLogCount(&payload, static_cast<uint32_t>(extents.size()));
    for (const LogExtent& extent : extents)
        AppendLogExtent(&payload, extent.position, extent.bytes);
    return payload;
}

bool Decodes(std::string_view payload)
{
    std::vector<LogEntry> entries;
    return DecodeLogPayload(payload, &entries);
}

}   // namespace

TEST(Checksum, IsCRC32CInOnePieceAndInMany)
{
    EXPECT_EQ(0u, Checksum(0, "", 0));
    EXPECT_EQ(0xE3069283u, Checksum(0, "123456789", 9));
    EXPECT_EQ(0x8A9136AAu, Checksum(0, std::string(32, '\0').data(), 32));
    EXPECT_EQ(0x62A8AB43u, Checksum(0, std::string(32, '\xFF').data(), 32));
    for (size_t cut = 0; cut <= 9; cut++)
        EXPECT_EQ(0xE3069283u, Checksum(Checksum(0, "123456789", cut), "123456789" + cut, 9 - cut))
            << cut;
}

TEST(CommitLogFormat, RecordAndHeadAreTheseBytes)
{
    const std::string payload = FileEntry("t.map", 0, 2, {{0, "Hi"}});
    const std::string record = WholeLogRecord({LogRecordKind::kCommit, 1, 0, 0, 0}, payload);
    EXPECT_EQ(ToHex(FromHex("56 63 52 63  00 00 00 02  00 00 00 00 00 00 00 01  00 00 00 00"
                            "F7 9A 70 86  00 00 00 00 00 00 00 2A"
                            "01  00 05  74 2E 6D 61 70  00 00 00 00 00 00 00 00"
                            "00 00 00 00 00 00 00 02  00 00 00 01"
                            "00 00 00 00 00 00 00 00  00 00 00 02  48 69")),
              ToHex(record));
    LogHeader header;
    ASSERT_TRUE(DecodeLogHeader(record.data(), &header));
    EXPECT_EQ(LogRecordKind::kCommit, header.kind);
    EXPECT_EQ(1u, header.generation);
    EXPECT_EQ(0u, header.number);
    EXPECT_EQ(payload.size(), header.payloadSize);
    EXPECT_EQ(header.checksum,
              Checksum(LogHeaderChecksum(record.data()), payload.data(), payload.size()));

    const std::string head = EncodeLogHead(1);
    EXPECT_EQ(kLogAlignment, head.size());
    EXPECT_EQ(ToHex(FromHex("56 63 4C 67  00 00 00 00 00 00 00 01  D3 5D 1A A6")),
              ToHex(head.substr(0, kLogHeadSize)));
    EXPECT_EQ(1u, DecodeLogHead(head.data()));
    EXPECT_EQ(0x123456789Au, DecodeLogHead(EncodeLogHead(0x123456789A).data()));
    for (size_t place = 0; place < kLogHeadSize; place++) {
        std::string damaged = head;
        damaged[place] = static_cast<char>(damaged[place] ^ 1);
        EXPECT_EQ(0u, DecodeLogHead(damaged.data())) << place;
    }
}

TEST(CommitLogFormat, EntriesComeBack)
{
    std::string payload =
        FileEntry("t.dat", 300, 310, {{0, "head"}, {296, "tail"}, {300, "0123456789"}});
    AppendLogEntry(&payload, LogEntryKind::kDeletion, "u.i.idx");
    AppendLogEntry(&payload, LogEntryKind::kReplacement, "t.j.idx");
    AppendLogNumber(&payload, int64_t{1} << 33);
    AppendLogEntry(&payload, LogEntryKind::kGrowing, "t.map");
    AppendLogNumber(&payload, 12);
    AppendLogEntry(&payload, LogEntryKind::kBeside, "t.k.idx");
    std::vector<LogEntry> entries;
    ASSERT_TRUE(DecodeLogPayload(payload, &entries));
    ASSERT_EQ(5u, entries.size());
    EXPECT_EQ("t.dat", entries[0].name);
    EXPECT_EQ(300, entries[0].kept);
    EXPECT_EQ(310, entries[0].length);
    ASSERT_EQ(3u, entries[0].extents.size());
    EXPECT_EQ(296, entries[0].extents[1].position);
    EXPECT_EQ("tail", entries[0].extents[1].bytes);
    EXPECT_EQ(LogEntryKind::kDeletion, entries[1].kind);
    EXPECT_EQ(int64_t{1} << 33, entries[2].length);
    EXPECT_EQ(12, entries[3].length);
    EXPECT_EQ("t.k.idx", entries[4].name);
    // Every cut but those between two entries.
    size_t whole = 0;
    for (size_t cut = 0; cut < payload.size(); cut++)
        whole += Decodes(std::string_view(payload).substr(0, cut)) ? 1 : 0;
    EXPECT_EQ(5u, whole);
}

TEST(CommitLogFormat, EntriesThatMislead)
{
    const struct {
        std::string payload;
        bool good;
        const char* why;
    } cases[] = {
        {FileEntry("t.dat", 0, 0, {}), true, "an empty file"},
        {FileEntry("t.dat", 10, 10, {{6, "abcd"}}), true, "up to the end of what stays"},
        {FileEntry("t.dat", 10, 10, {{7, "abcd"}}), false, "beyond it"},
        {FileEntry("t.dat", 10, 12, {{10, "ab"}}), true, "the new end"},
        {FileEntry("t.dat", 10, 12, {{10, "a"}}), false, "not all of the new end"},
        {FileEntry("t.dat", 10, 12, {{10, "abc"}}), false, "more than it"},
        {FileEntry("t.dat", 10, 12, {}), false, "no new end"},
        {FileEntry("t.dat", 10, 12, {{10, "ab"}, {0, "x"}}), false, "the new end isn't last"},
        {FileEntry("t.dat", 10, 12, {{11, "b"}}), false, "a gap before it"},
        {FileEntry("t.dat", 10, 8, {}), false, "shorter than what stays"},
        {FileEntry("t.dat", -1, 8, {}), false, "a negative size"},
        {FileEntry("t.dat", 0, INT64_MAX, {{0, "ab"}}), false, "a length without bytes"},
        {FileEntry("../t.dat", 0, 0, {}), false, "a name that leads out of the folder"},
        {FileEntry("t.txt", 0, 0, {}), false, "a file that isn't a table's"},
        {FileEntry(kCommitLogName, 0, 0, {}), false, "the log itself"},
        {FileEntry(".dat", 0, 0, {}), false, "an ending without a name"},
        {FileEntry(std::string_view("a\0.dat", 6), 0, 0, {}), false, "a NUL"},
        {FromHex("06 00 05 74 2E 64 61 74"), false, "an unknown kind"},
        {FromHex(
             "01 00 05 74 2E 64 61 74 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 FF FF FF FF"),
         false, "billions of extents"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.good, Decodes(c.payload)) << c.why;
}

}   // namespace vela
