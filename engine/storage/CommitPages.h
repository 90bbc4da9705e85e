#pragma once

#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/storage/RandomAccessMechanism.h"
#include "engine/storage/RowArena.h"

namespace vela {

// CommitPages is what a commit overwrites of a file: the places that have changed, with their new bytes, page by page. Reads
// see the changes, the file doesn't.
//
// It takes memory in proportion to the changed bytes: only the page that was written last is held whole, since changes mostly
// go through a file from front to back.
class CommitPages {
public:
    CommitPages() = default;
    CommitPages(const CommitPages&) = delete;
    CommitPages& operator=(const CommitPages&) = delete;

    [[nodiscard]] bool IsEmpty() const { return mPages.empty() && mOpen.number < 0; }

    // Notes the count bytes from position as changed. The pages they lie in are read from file, whose bytes end at
    // fileLength, first. False when that fails.
    [[nodiscard]] bool Write(RandomAccessMechanism* file, int64_t fileLength, int64_t position,
                             const char* from, size_t count);
    // Reads the count bytes from position as they are with the changes; file has them all. Says how many came.
    [[nodiscard]] size_t Read(RandomAccessMechanism* file, int64_t position, char* to,
                              size_t count) const;
    // The bytes from position to the end of the page that was written last; none when position isn't in it. Good until the
    // next call. Behind the end of the file they mean nothing.
    [[nodiscard]] std::string_view Peek(int64_t position) const
    {
        const int64_t begin = position - mOpen.number * kPageSize;
        if (mOpen.number < 0 || begin < 0 || begin >= kPageSize)
            return {};
        return {mOpen.bytes.get() + begin, static_cast<size_t>(kPageSize - begin)};
    }
    // Forgets what lies at length and beyond.
    void CutFrom(int64_t length);
    void Clear();

    // Calls take(position, bytes) for each changed place, in order of position. take returns false to stop; the result is
    // the last call's, true when there was none.
    template <class Take>
    bool ForEachChange(const Take& take)
    {
        PutAway();
        for (const auto& [number, changes] : mPages)
            if (!ForEachIn(changes, [&take, start = number * kPageSize](int64_t begin,
                                                                        std::string_view bytes) {
                    return take(start + begin, bytes);
                }))
                return false;
        return true;
    }

    // The same in fewer and larger pieces, for writing them to the file: what has not changed between two places that lie near
    // each other comes along, as file has it; when that can't be read, the result is false. bytes are good during the call
    // only.
    [[nodiscard]] bool ForEachPiece(
        RandomAccessMechanism* file,
        const std::function<bool(int64_t position, std::string_view bytes)>& take);

private:
    static constexpr int64_t kPageSize = 4096;
    // Changes that are no further apart are kept as one: that takes less room in the log than two.
    static constexpr int32_t kNear = 12;
    // In a file, writing so many bytes once more takes less than a call of the system. A page without changes is never among
    // them.
    static constexpr int64_t kNearInFile = 4095;
    // So much stays in the processor's second-level cache.
    static constexpr int64_t kLargestPiece = int64_t{1} << 18;

    // Where a change in a page begins, and how long it is, in front of its bytes.
    struct ChangeHead {
        uint16_t begin;
        uint16_t size;
    };

    // A page with all its bytes.
    struct OpenPage {
        int64_t number = -1;   // position / kPageSize; -1: none is open
        std::unique_ptr<char[]> bytes;
        std::vector<std::pair<int32_t, int32_t>> changes;   // begin, end; sorted, apart
    };

    // By number. The value: the changes in order, each a head and its bytes, a piece of mMemory.
    using Pages = std::map<int64_t, std::string_view>;

    // Calls take(begin, bytes) for each change, as ForEachChange.
    template <class Take>
    static bool ForEachIn(std::string_view changes, const Take& take)
    {
        while (!changes.empty()) {
            ChangeHead head;
            std::memcpy(&head, changes.data(), sizeof head);
            if (!take(head.begin, changes.substr(sizeof head, head.size)))
                return false;
            changes.remove_prefix(sizeof head + head.size);
        }
        return true;
    }

    [[nodiscard]] Pages::iterator FirstFrom(int64_t number) const;
    bool Open(RandomAccessMechanism* file, int64_t fileLength, int64_t number);
    // The open page joins the others.
    void PutAway();
    // Those of a page become the ones in the piece, which was just taken.
    void SetChanges(Pages::iterator page, std::string_view piece);
    void MoveTogether();
    void Note(int32_t begin, int32_t end);
    void Overlay(int64_t position, char* to, size_t count) const;

    RowArena mMemory;
    mutable Pages mPages;                           // the open one as it was before it was opened
    mutable Pages::iterator mLast = mPages.end();   // where FirstFrom was last
    OpenPage mOpen;
};

}   // namespace vela
