#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/storage/RandomAccessMechanism.h"

namespace vela {

// CommitPages is what a commit overwrites of a file: pages of the file in memory, each with the places that have changed.
// Reads see the changes, the file doesn't.
class CommitPages {
public:
    CommitPages() = default;
    CommitPages(const CommitPages&) = delete;
    CommitPages& operator=(const CommitPages&) = delete;

    [[nodiscard]] bool IsEmpty() const { return mPages.empty(); }

    // Notes the count bytes from position as changed. The pages they lie in are read from file, whose bytes end at
    // fileLength, first. False when that fails.
    [[nodiscard]] bool Write(RandomAccessMechanism* file, int64_t fileLength, int64_t position,
                             const char* from, size_t count);
    // Reads the count bytes from position as they are with the changes; file has them all. Says how many came.
    [[nodiscard]] size_t Read(RandomAccessMechanism* file, int64_t position, char* to,
                              size_t count) const;
    // Forgets what lies at length and beyond.
    void CutFrom(int64_t length);
    void Clear()
    {
        mPages.clear();
        mLast = mPages.end();
    }

    // Calls take(position, bytes) for each changed place, in order of position. take returns false to stop; the result is
    // the last call's, true when there was none.
    template <class Take>
    bool ForEachChange(const Take& take) const
    {
        for (const auto& [number, page] : mPages)
            for (const auto& [begin, end] : page.changes)
                if (!take(number * kPageSize + begin,
                          std::string_view(page.bytes.get() + begin,
                                           static_cast<size_t>(end - begin))))
                    return false;
        return true;
    }

    // The same in fewer and larger pieces, for writing them to the file: what has not changed between two places that lie near
    // each other comes along. bytes are good during the call only.
    [[nodiscard]] bool ForEachPiece(
        const std::function<bool(int64_t position, std::string_view bytes)>& take) const;

private:
    static constexpr int64_t kPageSize = 4096;
    // Changes that are no further apart are kept as one: that takes less room in the log than two.
    static constexpr int32_t kNear = 12;
    // In a file, writing so many bytes once more takes less than a call of the system.
    static constexpr int64_t kNearInFile = 512;
    static constexpr size_t kLargestPiece = size_t{1} << 20;

    struct Page {
        std::unique_ptr<char[]> bytes;
        std::vector<std::pair<int32_t, int32_t>> changes;   // begin, end; sorted, apart
    };

    using Pages = std::map<int64_t, Page>;

    void AppendBytes(int64_t begin, int64_t end, std::string* to) const;
    [[nodiscard]] Pages::iterator FirstFrom(int64_t number) const;
    Page* Need(RandomAccessMechanism* file, int64_t fileLength, int64_t number);
    static void Note(Page* page, int32_t begin, int32_t end);

    mutable Pages mPages;                           // by number: position / kPageSize
    mutable Pages::iterator mLast = mPages.end();   // where FirstFrom was last
};

}   // namespace vela
