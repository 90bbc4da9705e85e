#include "engine/storage/CommitLogFormat.h"

#include "engine/storage/Checksum.h"
#include "runtime/ByteOrder.h"

namespace vela {

namespace {

constexpr size_t kChecksumOffset = 20;
constexpr std::string_view kBesideEnding = ".new";

void AppendBigEndian32(std::string* to, uint32_t number)
{
    char bytes[4];
    StoreBigEndian32(bytes, number);
    to->append(bytes, sizeof bytes);
}

// Takes the payload apart from its start on; every step checks what is left.
class PayloadReader {
public:
    explicit PayloadReader(std::string_view bytes) : mLeft(bytes) {}

    [[nodiscard]] bool AtEnd() const { return mLeft.empty(); }
    [[nodiscard]] size_t Left() const { return mLeft.size(); }
    bool Take(size_t size, std::string_view* bytes)
    {
        if (size > mLeft.size())
            return false;
        *bytes = mLeft.substr(0, size);
        mLeft.remove_prefix(size);
        return true;
    }
    // A number of that many bytes, not negative as an int64_t.
    bool TakeNumber(size_t size, int64_t* number)
    {
        std::string_view bytes;
        if (!Take(size, &bytes))
            return false;
        uint64_t value = 0;
        for (const char byte : bytes)
            value = value << 8 | static_cast<unsigned char>(byte);
        *number = static_cast<int64_t>(value);
        return *number >= 0;
    }

private:
    std::string_view mLeft;
};

bool ReadExtents(PayloadReader* reader, LogEntry* entry)
{
    int64_t count = 0;
    if (!reader->TakeNumber(4, &count) ||
        static_cast<uint64_t>(count) > reader->Left() / kLogExtentHeadSize)
        return false;
    for (int64_t i = 0; i < count; i++) {
        LogExtent extent;
        int64_t size = 0;
        if (!reader->TakeNumber(8, &extent.position) || !reader->TakeNumber(4, &size) ||
            !reader->Take(static_cast<size_t>(size), &extent.bytes))
            return false;
        const bool fillsTheEnd =
            i + 1 == count && entry->length > entry->kept && extent.position == entry->kept;
        const int64_t end = fillsTheEnd ? entry->length : entry->kept;
        if (extent.position > end || size > end - extent.position ||
            (fillsTheEnd && size != entry->length - entry->kept))
            return false;
        entry->extents.push_back(extent);
    }
    return entry->length <= entry->kept ||
           (!entry->extents.empty() && entry->extents.back().position == entry->kept);
}

bool ReadEntry(PayloadReader* reader, LogEntry* entry)
{
    int64_t kind = 0;
    int64_t nameSize = 0;
    if (!reader->TakeNumber(1, &kind) || !reader->TakeNumber(2, &nameSize) ||
        !reader->Take(static_cast<size_t>(nameSize), &entry->name) || !IsLogFileName(entry->name))
        return false;
    entry->kind = static_cast<LogEntryKind>(kind);
    switch (entry->kind) {
        case LogEntryKind::kFile:
            return reader->TakeNumber(8, &entry->kept) && reader->TakeNumber(8, &entry->length) &&
                   entry->kept <= entry->length && ReadExtents(reader, entry);
        case LogEntryKind::kReplacement:
        case LogEntryKind::kGrowing:
            return reader->TakeNumber(8, &entry->length);
        case LogEntryKind::kDeletion:
        case LogEntryKind::kBeside:
            return true;
    }
    return false;
}

}   // namespace

const char* const kCommitLogName = "_commit.log";

bool IsLogFileName(std::string_view name)
{
    if (name.find('/') != std::string_view::npos || name.find('\0') != std::string_view::npos)
        return false;
    for (const std::string_view ending : {".dat", ".map", ".idx"})
        if (name.size() > ending.size() && name.ends_with(ending))
            return true;
    return false;
}

std::string BesideName(std::string_view name)
{
    return std::string(name).append(kBesideEnding);
}

void AppendLogEntry(std::string* payload, LogEntryKind kind, std::string_view name)
{
    payload->push_back(static_cast<char>(kind));
    payload->push_back(static_cast<char>(name.size() >> 8));
    payload->push_back(static_cast<char>(name.size()));
    payload->append(name);
}

void AppendLogNumber(std::string* payload, int64_t number)
{
    char bytes[8];
    StoreBigEndian64(bytes, static_cast<uint64_t>(number));
    payload->append(bytes, sizeof bytes);
}

void AppendLogCount(std::string* payload, uint32_t count)
{
    AppendBigEndian32(payload, count);
}

void AppendLogExtent(std::string* payload, int64_t position, std::string_view bytes)
{
    char head[kLogExtentHeadSize];
    StoreBigEndian64(head, static_cast<uint64_t>(position));
    StoreBigEndian32(head + kLogNumberSize, static_cast<uint32_t>(bytes.size()));
    payload->append(head, sizeof head);
    payload->append(bytes);
}

std::string EncodeLogHead(uint64_t generation)
{
    std::string head;
    AppendBigEndian32(&head, kLogMark);
    AppendLogNumber(&head, static_cast<int64_t>(generation));
    AppendBigEndian32(&head, Checksum(0, head.data(), head.size()));
    head.resize(kLogAlignment);
    return head;
}

uint64_t DecodeLogHead(const char* bytes)
{
    const bool isHead =
        LoadBigEndian32(bytes) == kLogMark && LoadBigEndian32(bytes + 12) == Checksum(0, bytes, 12);
    return isHead ? LoadBigEndian64(bytes + 4) : 0;
}

std::string EncodeLogHeader(const LogHeader& header)
{
    std::string bytes;
    AppendBigEndian32(&bytes, kLogRecordMark);
    AppendBigEndian32(&bytes, static_cast<uint32_t>(header.kind));
    AppendLogNumber(&bytes, static_cast<int64_t>(header.generation));
    AppendBigEndian32(&bytes, header.number);
    AppendBigEndian32(&bytes, header.checksum);
    AppendLogNumber(&bytes, static_cast<int64_t>(header.payloadSize));
    return bytes;
}

void SetLogChecksum(char* bytes, uint32_t checksum)
{
    StoreBigEndian32(bytes + kChecksumOffset, checksum);
}

bool DecodeLogHeader(const char* bytes, LogHeader* header)
{
    const uint32_t kind = LoadBigEndian32(bytes + 4);
    header->kind = static_cast<LogRecordKind>(kind);
    header->generation = LoadBigEndian64(bytes + 8);
    header->number = LoadBigEndian32(bytes + 16);
    header->checksum = LoadBigEndian32(bytes + kChecksumOffset);
    header->payloadSize = LoadBigEndian64(bytes + 24);
    return LoadBigEndian32(bytes) == kLogRecordMark && (kind == 1 || kind == 2) &&
           header->generation != 0 && header->payloadSize <= kLargestLogPayload;
}

uint32_t LogHeaderChecksum(const char* bytes)
{
    char header[kLogHeaderSize];
    std::memcpy(header, bytes, sizeof header);
    StoreBigEndian32(header + kChecksumOffset, 0);
    return Checksum(0, header, sizeof header);
}

bool DecodeLogPayload(std::string_view payload, std::vector<LogEntry>* entries)
{
    PayloadReader reader(payload);
    while (!reader.AtEnd()) {
        LogEntry entry;
        if (!ReadEntry(&reader, &entry))
            return false;
        entries->push_back(std::move(entry));
    }
    return true;
}

}   // namespace vela
