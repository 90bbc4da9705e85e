#include "engine/storage/CommitPages.h"

#include <algorithm>
#include <cstring>
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

}   // namespace

CommitPages::Page* CommitPages::Need(RandomAccessMechanism* file, int64_t fileLength,
                                     int64_t number)
{
    const auto found = FirstFrom(number);
    if (found != mPages.end() && found->first == number)
        return &found->second;
    const int64_t start = number * kPageSize;
    const size_t wanted =
        static_cast<size_t>(std::clamp<int64_t>(fileLength - start, 0, kPageSize));
    auto bytes = std::make_unique<char[]>(static_cast<size_t>(kPageSize));
    if (ReadFrom(file, start, bytes.get(), wanted) != wanted)
        return nullptr;
    mLast = mPages.emplace_hint(found, number, Page{std::move(bytes), {}});
    return &mLast->second;
}

// The first page of that number or a later one. Mostly it is the one that was asked for last, or the next: files are changed
// from front to back.
CommitPages::Pages::iterator CommitPages::FirstFrom(int64_t number) const
{
    if (mLast != mPages.end() && mLast->first < number)
        ++mLast;
    const bool isIt = mLast != mPages.end() && mLast->first >= number &&
                      (mLast == mPages.begin() || std::prev(mLast)->first < number);
    if (!isIt)
        mLast = mPages.lower_bound(number);
    return mLast;
}

void CommitPages::Note(Page* page, int32_t begin, int32_t end)
{
    auto& changes = page->changes;
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
        Page* page = Need(file, fileLength, position / kPageSize);
        if (page == nullptr)
            return false;
        const int64_t begin = position % kPageSize;
        const size_t size = std::min(count, static_cast<size_t>(kPageSize - begin));
        char* to = page->bytes.get() + begin;
        // What is written over itself need not be written.
        size_t first = 0;
        size_t last = size;
        while (first < last && to[first] == from[first])
            first++;
        while (first < last && to[last - 1] == from[last - 1])
            last--;
        std::memcpy(to + first, from + first, last - first);
        if (first < last)
            Note(page, static_cast<int32_t>(begin + static_cast<int64_t>(first)),
                 static_cast<int32_t>(begin + static_cast<int64_t>(last)));
        position += static_cast<int64_t>(size);
        from += size;
        count -= size;
    }
    return true;
}

// What lies between changed pages is read in one go.
size_t CommitPages::Read(RandomAccessMechanism* file, int64_t position, char* to,
                         size_t count) const
{
    size_t done = 0;
    auto next = FirstFrom(position / kPageSize);
    while (done < count) {
        const int64_t place = position + static_cast<int64_t>(done);
        const size_t left = count - done;
        if (next != mPages.end() && next->first == place / kPageSize) {
            const int64_t begin = place % kPageSize;
            const size_t size = std::min(left, static_cast<size_t>(kPageSize - begin));
            std::memcpy(to + done, next->second.bytes.get() + begin, size);
            done += size;
            ++next;
            continue;
        }
        const int64_t end = next == mPages.end() ? INT64_MAX : next->first * kPageSize;
        const size_t size = static_cast<size_t>(std::min(static_cast<int64_t>(left), end - place));
        const size_t came = ReadFrom(file, place, to + done, size);
        done += came;
        if (came != size)
            break;
    }
    return done;
}

bool CommitPages::ForEachPiece(
    const std::function<bool(int64_t position, std::string_view bytes)>& take) const
{
    std::string piece;
    int64_t start = 0;
    const bool taken = ForEachChange([&](int64_t position, std::string_view bytes) {
        const int64_t end = start + static_cast<int64_t>(piece.size());
        if (piece.empty() || position - end > kNearInFile || piece.size() >= kLargestPiece) {
            if (!piece.empty() && !take(start, piece))
                return false;
            piece.clear();
            start = position;
        } else {
            AppendBytes(end, position, &piece);
        }
        piece.append(bytes);
        return true;
    });
    return taken && (piece.empty() || take(start, piece));
}

// All of it lies in pages that are here.
void CommitPages::AppendBytes(int64_t begin, int64_t end, std::string* to) const
{
    while (begin < end) {
        const int64_t pageEnd = std::min((begin / kPageSize + 1) * kPageSize, end);
        const Page& page = FirstFrom(begin / kPageSize)->second;
        to->append(page.bytes.get() + begin % kPageSize, static_cast<size_t>(pageEnd - begin));
        begin = pageEnd;
    }
}

void CommitPages::CutFrom(int64_t length)
{
    mPages.erase(mPages.lower_bound((length + kPageSize - 1) / kPageSize), mPages.end());
    mLast = mPages.end();
    if (mPages.empty() || length % kPageSize == 0)
        return;
    auto& [number, page] = *mPages.rbegin();
    const int64_t end = length - number * kPageSize;
    while (!page.changes.empty() && page.changes.back().first >= end)
        page.changes.pop_back();
    if (!page.changes.empty() && page.changes.back().second > end)
        page.changes.back().second = static_cast<int32_t>(end);
}

}   // namespace vela
