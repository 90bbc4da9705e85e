#include "engine/storage/CommitPages.h"

#include <algorithm>
#include <iterator>

namespace vela {

namespace {

// Reads up to count bytes; says how many came.
size_t ReadFrom(RandomAccessMechanism* file, int64_t position, char* to, size_t count)
{
    int bytesRead = 0;
    if (!file->SeekFromStart(position))
        return 0;
    file->ReadData(to, static_cast<int>(count), &bytesRead);
    return static_cast<size_t>(std::max(bytesRead, 0));
}

constexpr size_t kWord = 8;

// How many of the count bytes a and b have in common at their start.
size_t EqualAtStart(const char* a, const char* b, size_t count)
{
    size_t equal = 0;
    while (count - equal >= kWord && std::memcmp(a + equal, b + equal, kWord) == 0)
        equal += kWord;
    while (equal < count && a[equal] == b[equal])
        equal++;
    return equal;
}

// Where the bytes end behind which a and b are equal up to count.
size_t EqualFrom(const char* a, const char* b, size_t count)
{
    while (count >= kWord && std::memcmp(a + count - kWord, b + count - kWord, kWord) == 0)
        count -= kWord;
    while (count > 0 && a[count - 1] == b[count - 1])
        count--;
    return count;
}

// Copies as much of the bytes, which belong at place, as lies among the count bytes at to, which belong at position.
void CopyOver(std::string_view bytes, int64_t place, int64_t position, char* to, size_t count)
{
    const int64_t begin = std::max(place, position);
    const int64_t end = std::min(place + static_cast<int64_t>(bytes.size()),
                                 position + static_cast<int64_t>(count));
    if (begin < end)
        std::memcpy(to + (begin - position), bytes.data() + (begin - place),
                    static_cast<size_t>(end - begin));
}

}   // namespace

void CommitPages::Clear()
{
    mPages.clear();
    mMemory.Clear();
    mLast = mPages.end();
    mOpen = OpenPage();
}

// The first page of that number or a later one. Mostly there is none yet, or it is the one that was asked for last, or the
// next: files are changed from front to back.
CommitPages::Pages::iterator CommitPages::FirstFrom(int64_t number) const
{
    if (mPages.empty() || mPages.rbegin()->first < number)
        return mPages.end();
    if (mLast != mPages.end() && mLast->first < number)
        ++mLast;
    const bool isIt = mLast != mPages.end() && mLast->first >= number &&
                      (mLast == mPages.begin() || std::prev(mLast)->first < number);
    if (!isIt)
        mLast = mPages.lower_bound(number);
    return mLast;
}

bool CommitPages::Open(RandomAccessMechanism* file, int64_t fileLength, int64_t number)
{
    if (mOpen.number == number)
        return true;
    PutAway();
    if (!mOpen.bytes)
        mOpen.bytes = std::make_unique<char[]>(static_cast<size_t>(kPageSize));
    const int64_t start = number * kPageSize;
    const size_t wanted =
        static_cast<size_t>(std::clamp<int64_t>(fileLength - start, 0, kPageSize));
    if (ReadFrom(file, start, mOpen.bytes.get(), wanted) != wanted)
        return false;
    const auto page = FirstFrom(number);
    if (page != mPages.end() && page->first == number)
        ForEachIn(page->second, [this](int32_t begin, std::string_view bytes) {
            std::memcpy(mOpen.bytes.get() + begin, bytes.data(), bytes.size());
            mOpen.changes.emplace_back(begin, begin + static_cast<int32_t>(bytes.size()));
            return true;
        });
    mOpen.number = number;
    return true;
}

void CommitPages::PutAway()
{
    if (mOpen.number >= 0 && !mOpen.changes.empty()) {
        size_t size = 0;
        for (const auto& [begin, end] : mOpen.changes)
            size += sizeof(ChangeHead) + static_cast<size_t>(end - begin);
        char* const piece = static_cast<char*>(mMemory.Take(size, 1));
        char* to = piece;
        for (const auto& [begin, end] : mOpen.changes) {
            const ChangeHead head{static_cast<uint16_t>(begin), static_cast<uint16_t>(end - begin)};
            std::memcpy(to, &head, sizeof head);
            std::memcpy(to + sizeof head, mOpen.bytes.get() + begin, head.size);
            to += sizeof head + head.size;
        }
        const auto place = FirstFrom(mOpen.number);
        SetChanges(mPages.emplace_hint(place, mOpen.number, std::string_view()), {piece, size});
    }
    mOpen.number = -1;
    mOpen.changes.clear();
    if (mMemory.IsWastingMemory())
        MoveTogether();
}

void CommitPages::SetChanges(Pages::iterator page, std::string_view piece)
{
    mMemory.Drop(page->second.size());
    page->second = piece;
}

// Gives back the memory of changes that were replaced.
void CommitPages::MoveTogether()
{
    RowArena memory;
    std::vector<std::string_view> moved;
    moved.reserve(mPages.size());
    for (const auto& [number, changes] : mPages) {
        char* const piece = static_cast<char*>(memory.Take(changes.size(), 1));
        changes.copy(piece, changes.size());
        moved.emplace_back(piece, changes.size());
    }
    size_t next = 0;
    for (auto& [number, changes] : mPages)
        changes = moved[next++];
    mMemory = std::move(memory);
}

// Of the open page.
void CommitPages::Note(int32_t begin, int32_t end)
{
    auto& changes = mOpen.changes;
    if (changes.empty() || changes.back().second + kNear < begin) {
        changes.emplace_back(begin, end);
        return;
    }
    auto first = std::lower_bound(
        changes.begin(), changes.end(), begin,
        [](const auto& change, int32_t place) { return change.second + kNear < place; });
    auto last = first;
    for (; last != changes.end() && last->first <= end + kNear; ++last) {
        begin = std::min(begin, last->first);
        end = std::max(end, last->second);
    }
    changes.insert(changes.erase(first, last), {begin, end});
}

bool CommitPages::Write(RandomAccessMechanism* file, int64_t fileLength, int64_t position,
                        const char* from, size_t count)
{
    while (count > 0) {
        if (!Open(file, fileLength, position / kPageSize))
            return false;
        const int64_t begin = position % kPageSize;
        const size_t size = std::min(count, static_cast<size_t>(kPageSize - begin));
        char* to = mOpen.bytes.get() + begin;
        // What is written over itself need not be written.
        const size_t first = EqualAtStart(to, from, size);
        if (first < size) {
            const size_t last = EqualFrom(to, from, size);
            Note(static_cast<int32_t>(begin + static_cast<int64_t>(first)),
                 static_cast<int32_t>(begin + static_cast<int64_t>(last)));
            std::memcpy(to + first, from + first, last - first);
        }
        position += static_cast<int64_t>(size);
        from += size;
        count -= size;
    }
    return true;
}

size_t CommitPages::Read(RandomAccessMechanism* file, int64_t position, char* to,
                         size_t count) const
{
    const int64_t begin = position - mOpen.number * kPageSize;
    if (mOpen.number >= 0 && begin >= 0 && begin + static_cast<int64_t>(count) <= kPageSize) {
        std::memcpy(to, mOpen.bytes.get() + begin, count);
        return count;
    }
    const size_t came = ReadFrom(file, position, to, count);
    Overlay(position, to, came);
    return came;
}

// Puts the changes into the count bytes at to, which are the file's from position.
void CommitPages::Overlay(int64_t position, char* to, size_t count) const
{
    const int64_t end = position + static_cast<int64_t>(count);
    for (auto page = FirstFrom(position / kPageSize);
         page != mPages.end() && page->first * kPageSize < end; ++page)
        ForEachIn(page->second,
                  [&, start = page->first * kPageSize](int64_t begin, std::string_view bytes) {
                      CopyOver(bytes, start + begin, position, to, count);
                      return true;
                  });
    for (const auto& [first, last] : mOpen.changes)
        CopyOver({mOpen.bytes.get() + first, static_cast<size_t>(last - first)},
                 mOpen.number * kPageSize + first, position, to, count);
}

bool CommitPages::ForEachPiece(
    RandomAccessMechanism* file,
    const std::function<bool(int64_t position, std::string_view bytes)>& take)
{
    std::vector<char> piece;
    int64_t start = 0;
    int64_t end = 0;
    bool hasGaps = false;
    const auto takePiece = [&] {
        const size_t size = static_cast<size_t>(end - start);
        if (piece.size() < size)
            piece.resize(size);
        if (hasGaps && ReadFrom(file, start, piece.data(), size) != size)
            return false;
        Overlay(start, piece.data(), size);
        return take(start, {piece.data(), size});
    };
    const bool taken = ForEachChange([&](int64_t position, std::string_view bytes) {
        const bool goesOn =
            start < end && position - end <= kNearInFile && end - start < kLargestPiece;
        if (!goesOn && start < end && !takePiece())
            return false;
        hasGaps = goesOn && (hasGaps || position > end);
        start = goesOn ? start : position;
        end = position + static_cast<int64_t>(bytes.size());
        return true;
    });
    return taken && (start == end || takePiece());
}

void CommitPages::CutFrom(int64_t length)
{
    PutAway();
    const auto firstCut = mPages.lower_bound((length + kPageSize - 1) / kPageSize);
    for (auto page = firstCut; page != mPages.end(); ++page)
        SetChanges(page, {});
    mPages.erase(firstCut, mPages.end());
    mLast = mPages.end();
    if (mPages.empty() || length % kPageSize == 0)
        return;
    const auto page = std::prev(mPages.end());
    const int64_t end = length - page->first * kPageSize;
    char* const piece = static_cast<char*>(mMemory.Take(page->second.size(), 1));
    size_t size = 0;
    ForEachIn(page->second, [piece, &size, end](int64_t begin, std::string_view bytes) {
        if (begin >= end)
            return false;
        bytes = bytes.substr(0, static_cast<size_t>(end - begin));
        const ChangeHead head{static_cast<uint16_t>(begin), static_cast<uint16_t>(bytes.size())};
        std::memcpy(piece + size, &head, sizeof head);
        bytes.copy(piece + size + sizeof head, bytes.size());
        size += sizeof head + bytes.size();
        return true;
    });
    SetChanges(page, {piece, size});
}

}   // namespace vela
