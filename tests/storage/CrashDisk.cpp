#include "tests/storage/CrashDisk.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <set>
#include <utility>

#include "engine/storage/NamePattern.h"

namespace vela {

namespace {

constexpr size_t kSector = 512;

std::string KeyOf(const string& name)
{
    return std::string(name.View());
}

void Put(std::string* bytes, int64_t position, std::string_view written)
{
    const size_t start = static_cast<size_t>(position);
    if (bytes->size() < start + written.size())
        bytes->resize(start + written.size());
    bytes->replace(start, written.size(), written);
}

}   // namespace

// An open file of a CrashDisk.
class CrashStream : public RandomAccessMechanism {
public:
    CrashStream(CrashDisk* disk, CrashDisk::FilePtr file, bool readOnly)
        : mDisk(disk), mFile(std::move(file)), mReadOnly(readOnly)
    {}

    bool ReadData(void* buffer, int count, int* bytesRead) override
    {
        const int64_t left = std::max<int64_t>(GetLength() - mPosition, 0);
        const int64_t done = std::clamp<int64_t>(count, 0, left);
        if (done > 0)
            std::memcpy(buffer, mFile->bytes.data() + mPosition, static_cast<size_t>(done));
        mPosition += done;
        if (bytesRead != nullptr)
            *bytesRead = static_cast<int>(done);
        return done == count;
    }
    bool WriteData(const void* buffer, int count) override
    {
        if (mReadOnly || count < 0)
            return Fail(EBADF);
        const bool whole = mDisk->Begin();
        const std::string_view bytes(static_cast<const char*>(buffer),
                                     static_cast<size_t>(whole ? count : count / 2));
        Put(&mFile->bytes, mPosition, bytes);
        mFile->unflushed.push_back({mPosition, std::string(bytes), GetLength()});
        mDisk->bytesWritten += static_cast<int64_t>(bytes.size());
        mDisk->End();
        if (!whole)
            return Fail(ENOSPC);
        mPosition += count;
        return true;
    }
    void Close() override {}
    bool IsEOF() override { return mPosition >= GetLength(); }
    bool SeekFromStart(int64_t offset) override
    {
        mPosition = offset;
        return offset >= 0;
    }
    int64_t GetLength() override { return static_cast<int64_t>(mFile->bytes.size()); }
    bool SetLength(int64_t length) override
    {
        if (mReadOnly || !mDisk->Begin())
            return Fail(EIO);
        mFile->bytes.resize(static_cast<size_t>(length));
        mFile->unflushed.push_back({0, "", length});
        mDisk->End();
        return true;
    }
    int64_t GetPosition() override { return mPosition; }
    // As UnixDataFile: after a failure it fails until the file is opened anew.
    bool FlushToDisk() override
    {
        const bool reached = mDisk->Begin() && !mReadOnly && !mFlushFailed;
        mDisk->flushes++;
        if (reached) {
            CrashDisk::Flush(mFile.get());
        } else {
            mFile->lost.insert(mFile->lost.end(), mFile->unflushed.begin(), mFile->unflushed.end());
            mFile->unflushed.clear();
            mFlushFailed = true;
        }
        mDisk->End();
        return reached || Fail(EIO);
    }
    bool Reserve(int64_t) override { return !mReadOnly && (mDisk->Begin() || Fail(ENOSPC)); }
    int ErrorNumber() const override { return mErrorNumber; }

private:
    bool Fail(int number)
    {
        mErrorNumber = number;
        return false;
    }

    CrashDisk* mDisk;
    CrashDisk::FilePtr mFile;
    bool mReadOnly;
    bool mFlushFailed = false;
    int64_t mPosition = 0;
    int mErrorNumber = 0;
};

// ---- CrashDisk

CrashDisk::CrashDisk(const Image& image)
{
    for (const auto& [name, bytes] : image) {
        mNames[name] = std::make_shared<File>();
        mNames[name]->bytes = mNames[name]->flushed = bytes;
    }
    mFlushedNames = mNames;
}

void CrashDisk::FailAt(int64_t number, bool forGood)
{
    mFailAt = operations + number;
    mForGood = forGood;
    mHasFailed = false;
}

bool CrashDisk::Begin()
{
    operations++;
    const bool fails =
        mFailAt != 0 && (operations == mFailAt || (mForGood && operations > mFailAt));
    mHasFailed = mHasFailed || fails;
    return !fails;
}

void CrashDisk::End()
{
    if (afterEach)
        afterEach();
}

// The sectors that were written since the last flush reach the disk as they are now. What an earlier failure has lost gets
// there with them, or not at all.
void CrashDisk::Flush(File* file)
{
    std::set<size_t> sectors;
    for (const Write& write : file->unflushed) {
        const bool cut = write.bytes.empty();
        const size_t start = static_cast<size_t>(cut ? write.length : write.position) / kSector;
        const size_t end =
            (cut ? file->bytes.size() : static_cast<size_t>(write.position) + write.bytes.size()) /
                kSector +
            1;
        for (size_t sector = start; sector < end; sector++)
            sectors.insert(sector);
    }
    file->flushed.resize(file->bytes.size());
    for (const size_t sector : sectors)
        if (sector * kSector < file->bytes.size())
            file->flushed.replace(sector * kSector, kSector, file->bytes, sector * kSector,
                                  kSector);
    std::vector<Write> lost;
    for (const Write& write : file->lost) {
        for (size_t done = 0; done < write.bytes.size();) {
            const size_t position = static_cast<size_t>(write.position) + done;
            const size_t size = std::min(write.bytes.size() - done, kSector - position % kSector);
            if (sectors.count(position / kSector) == 0 && position + size <= file->bytes.size())
                lost.push_back(
                    {static_cast<int64_t>(position), write.bytes.substr(done, size), -1});
            done += size;
        }
    }
    file->lost = lost;
    file->unflushed.clear();
}

void CrashDisk::Apply(const NameStep& step, Names* names)
{
    if (!step.from.empty() && names->erase(step.from) == 0)
        return;   // the name that it takes was never there
    if (step.file)
        (*names)[step.name] = step.file;
    else
        names->erase(step.name);
}

CrashDisk::Image CrashDisk::AllWritten() const
{
    Image image;
    for (const auto& [name, file] : mNames)
        image[name] = file->bytes;
    return image;
}

CrashDisk::Image CrashDisk::OnlyFlushed() const
{
    Image image;
    for (const auto& [name, file] : mFlushedNames)
        image[name] = file->flushed;
    return image;
}

// The steps that the names took reach the disk in order up to some moment, or any of them.
CrashDisk::Image CrashDisk::Crashed(TestRandom* random) const
{
    Names names = mFlushedNames;
    const bool inOrder = random->OneIn(2);
    const uint32_t upTo = random->Below(static_cast<uint32_t>(mUnflushedNames.size()) + 1);
    for (uint32_t i = 0; i < mUnflushedNames.size(); i++)
        if (inOrder ? i < upTo : random->OneIn(2))
            Apply(mUnflushedNames[i], &names);
    Image image;
    for (const auto& [name, file] : names)
        image[name] = CrashedBytes(*file, random);
    return image;
}

// Moment 0 is the last flush, moment k what the file was after its k-th write since. Each sector is as it was at some moment,
// and so is the length; what is missing below the length reads as zeros.
std::string CrashDisk::CrashedBytes(const File& file, TestRandom* random)
{
    std::vector<Write> writes = file.lost;
    writes.insert(writes.end(), file.unflushed.begin(), file.unflushed.end());
    if (writes.empty())
        return file.flushed;
    std::vector<std::string> moments{file.flushed};
    for (const Write& write : writes) {
        moments.push_back(moments.back());
        Put(&moments.back(), write.position, write.bytes);
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

// ---- CrashFileAccess

std::unique_ptr<RandomAccessMechanism> CrashFileAccess::OpenFile(const string& name, bool create)
{
    if (!ContainsFile(name) && (!create || !CreateFile(name)))
        return nullptr;
    auto stream = std::make_unique<CrashStream>(mDisk, mDisk->mNames[KeyOf(name)], mReadOnly);
    stream->SetBigEndian();
    return stream;
}

// An existing file is emptied.
bool CrashFileAccess::CreateFile(const string& name)
{
    if (mReadOnly)
        return false;
    if (ContainsFile(name))
        return OpenFile(name, false)->SetLength(0);
    return ChangeNames({"", KeyOf(name), std::make_shared<CrashDisk::File>()});
}

bool CrashFileAccess::DeleteFile(const string& name)
{
    return !mReadOnly && (!ContainsFile(name) || ChangeNames({"", KeyOf(name), nullptr}));
}

bool CrashFileAccess::RenameFile(const string& from, const string& to)
{
    return !mReadOnly && ContainsFile(from) &&
           ChangeNames({KeyOf(from), KeyOf(to), mDisk->mNames[KeyOf(from)]});
}

bool CrashFileAccess::ChangeNames(const CrashDisk::NameStep& step)
{
    if (!mDisk->Begin())
        return false;
    CrashDisk::Apply(step, &mDisk->mNames);
    mDisk->mUnflushedNames.push_back(step);
    mDisk->End();
    return true;
}

bool CrashFileAccess::ContainsFile(const string& name) const
{
    return mDisk->mNames.count(KeyOf(name)) != 0;
}

bool CrashFileAccess::FlushNames()
{
    if (mReadOnly || !mDisk->Begin())
        return false;
    mDisk->flushes++;
    mDisk->mFlushedNames = mDisk->mNames;
    mDisk->mUnflushedNames.clear();
    mDisk->End();
    return true;
}

void CrashFileAccess::FindFiles(const string& pattern, SimpleVector<string>* names) const
{
    for (const auto& [name, file] : mDisk->mNames)
        if (MatchesNamePattern(name, pattern.View()))
            names->push_back(string(name, kEncodingASCII));
}

}   // namespace vela
