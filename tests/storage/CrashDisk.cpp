#include "tests/storage/CrashDisk.h"

#include <algorithm>
#include <set>

namespace vela {

namespace {

constexpr size_t kSector = 512;

void Overwrite(std::string* bytes, int64_t position, std::string_view written)
{
    const size_t start = static_cast<size_t>(position);
    if (bytes->size() < start + written.size())
        bytes->resize(start + written.size());
    bytes->replace(start, written.size(), written);
}

}   // namespace

CrashDisk::CrashDisk(const Image& image)
{
    Restore(image);
    mFlushedNames = mFiles;
    for (const auto& [name, file] : mFiles)
        mHistories[file].flushed = *file;
}

void CrashDisk::HasWritten(const File& file, int64_t position, std::string_view bytes)
{
    mHistories[file].unflushed.push_back(
        {position, std::string(bytes), static_cast<int64_t>(file->size())});
    End();
}

void CrashDisk::HasSetLength(const File& file)
{
    mHistories[file].unflushed.push_back({0, "", static_cast<int64_t>(file->size())});
    End();
}

void CrashDisk::HasChangedNames(const NameStep& step)
{
    mUnflushedNames.push_back(step);
    End();
}

void CrashDisk::HasFlushed(const File& file, bool reached)
{
    flushes++;
    History& history = mHistories[file];
    if (reached) {
        Flush(*file, &history);
    } else {
        history.lost.insert(history.lost.end(), history.unflushed.begin(), history.unflushed.end());
        history.unflushed.clear();
    }
    End();
}

void CrashDisk::HasFlushedNames()
{
    flushes++;
    mFlushedNames = mFiles;
    mUnflushedNames.clear();
    End();
}

void CrashDisk::End()
{
    if (afterEach)
        afterEach();
}

// The sectors that were written since the last flush reach the disk as they are now. What an earlier failure has lost gets
// there with them, or not at all.
void CrashDisk::Flush(const std::string& bytes, History* history)
{
    std::set<size_t> sectors;
    for (const Write& write : history->unflushed) {
        const bool cut = write.bytes.empty();
        const size_t start = static_cast<size_t>(cut ? write.length : write.position) / kSector;
        const size_t end =
            (cut ? bytes.size() : static_cast<size_t>(write.position) + write.bytes.size()) /
                kSector +
            1;
        for (size_t sector = start; sector < end; sector++)
            sectors.insert(sector);
    }
    history->flushed.resize(bytes.size());
    for (const size_t sector : sectors)
        if (sector * kSector < bytes.size())
            history->flushed.replace(sector * kSector, kSector, bytes, sector * kSector, kSector);
    std::vector<Write> lost;
    for (const Write& write : history->lost) {
        for (size_t done = 0; done < write.bytes.size();) {
            const size_t position = static_cast<size_t>(write.position) + done;
            const size_t size = std::min(write.bytes.size() - done, kSector - position % kSector);
            if (sectors.count(position / kSector) == 0 && position + size <= bytes.size())
                lost.push_back(
                    {static_cast<int64_t>(position), write.bytes.substr(done, size), -1});
            done += size;
        }
    }
    history->lost = lost;
    history->unflushed.clear();
}

// A file that was made and never written to has none.
const CrashDisk::History& CrashDisk::HistoryOf(const File& file) const
{
    static const History kNone;
    const auto found = mHistories.find(file);
    return found == mHistories.end() ? kNone : found->second;
}

CrashDisk::Image CrashDisk::OnlyFlushed() const
{
    Image image;
    for (const auto& [name, file] : mFlushedNames)
        image[name] = HistoryOf(file).flushed;
    return image;
}

// The steps that the names took reach the disk in order up to some moment, or any of them.
CrashDisk::Image CrashDisk::Crashed(TestRandom* random) const
{
    FilesByName names = mFlushedNames;
    const bool inOrder = random->OneIn(2);
    const uint32_t upTo = random->Below(static_cast<uint32_t>(mUnflushedNames.size()) + 1);
    for (uint32_t i = 0; i < mUnflushedNames.size(); i++)
        if (inOrder ? i < upTo : random->OneIn(2))
            Apply(mUnflushedNames[i], &names);
    Image image;
    for (const auto& [name, file] : names)
        image[name] = CrashedBytes(HistoryOf(file), random);
    return image;
}

// Moment 0 is the last flush, moment k what the file was after its k-th write since. Each sector is as it was at some moment,
// and so is the length; what is missing below the length reads as zeros.
std::string CrashDisk::CrashedBytes(const History& history, TestRandom* random)
{
    std::vector<Write> writes = history.lost;
    writes.insert(writes.end(), history.unflushed.begin(), history.unflushed.end());
    if (writes.empty())
        return history.flushed;
    std::vector<std::string> moments{history.flushed};
    for (const Write& write : writes) {
        moments.push_back(moments.back());
        Overwrite(&moments.back(), write.position, write.bytes);
        if (write.length >= 0)
            moments.back().resize(static_cast<size_t>(write.length));
    }
    const uint32_t count = static_cast<uint32_t>(moments.size());
    const uint32_t way = random->Below(4);
    const uint32_t same = random->Below(count);
    const uint32_t ofLength = way == 0 ? same : random->Below(count);
    std::string bytes(moments[ofLength].size(), '\0');
    for (size_t start = 0; start < bytes.size(); start += kSector) {
        uint32_t moment = same;
        if (way == 1)
            moment = random->OneIn(2) ? 0 : count - 1;
        else if (way >= 2)
            moment = random->Below(count);
        const std::string& from = moments[moment];
        if (start < from.size())
            from.copy(bytes.data() + start, std::min(kSector, bytes.size() - start), start);
    }
    return bytes;
}

}   // namespace vela
