#include "engine/rescue/DamagedFile.h"

#include <algorithm>
#include <cstring>

namespace vela {

namespace {

// What a device loses at least when it can't read.
constexpr size_t kSectorSize = 512;
constexpr size_t kLargestRead = size_t{1} << 30;

}   // namespace

DamagedFile::DamagedFile(VelaFileAccess* files, const std::string& name, RescueWatch* watch,
                         size_t blockSize)
    : mStream(files->OpenFile(string(name, kEncodingUTF8), false)),
      mName(name),
      mWatch(watch),
      mBlockSize(blockSize)
{
    mLength = mStream ? std::max<int64_t>(mStream->GetLength(), 0) : 0;
}

const char* DamagedFile::Bytes(int64_t position, size_t count)
{
    const int64_t size = static_cast<int64_t>(count);
    if (position < 0 || count > kLargestRead || size > mLength || position > mLength - size)
        return nullptr;
    if (count == 0)
        return "";
    const int64_t blockEnd = mBlockStart + static_cast<int64_t>(mBlock.size());
    if (position < mBlockStart || position + size > blockEnd)
        ReadBlock(position, std::max(count, mBlockSize));
    return mBlock.data() + (position - mBlockStart);
}

void DamagedFile::ReadBlock(int64_t position, size_t count)
{
    count = static_cast<size_t>(std::min<int64_t>(static_cast<int64_t>(count), mLength - position));
    mBlock.resize(count);
    mBlockStart = position;
    mWatch->BytesRead(static_cast<int64_t>(count));
    if (ReadAt(position, mBlock.data(), count))
        return;
    for (size_t done = 0; done < count && !mWatch->Stopped();) {
        const size_t place = static_cast<size_t>(position) + done;
        const size_t size = std::min(kSectorSize - place % kSectorSize, count - done);
        const int64_t sector = position + static_cast<int64_t>(done);
        if (!ReadAt(sector, mBlock.data() + done, size)) {
            std::memset(mBlock.data() + done, 0, size);
            NoteUnreadable(sector, static_cast<int64_t>(size));
        }
        done += size;
    }
}

bool DamagedFile::ReadAt(int64_t position, char* bytes, size_t count)
{
    return mStream->SeekFromStart(position) &&
           mStream->ReadData(bytes, static_cast<int>(count), nullptr);
}

void DamagedFile::NoteUnreadable(int64_t position, int64_t size)
{
    if (!IsReadable(position, position + size))
        return;   // met before
    if (!mUnreadable.empty() && mUnreadable.back().position + mUnreadable.back().size == position)
        mUnreadable.back().size += size;
    else
        mUnreadable.push_back({position, size});
}

bool DamagedFile::IsReadable(int64_t position, int64_t end) const
{
    return std::none_of(mUnreadable.begin(), mUnreadable.end(), [=](const Range& range) {
        return range.position < end && position < range.position + range.size;
    });
}

}   // namespace vela
