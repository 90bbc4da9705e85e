#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/rescue/DamagedFile.h"

namespace vela {

// MapPairs is a row-position map (engine/storage/RecordFormat.h) as its file has it, read whatever
// its state is. Memory: 8 bytes for each pair that the file has.
class MapPairs {
public:
    struct Pair {
        uint32_t rowID;
        uint32_t position;
    };

    MapPairs(VelaFileAccess* files, const std::string& name, RescueWatch* watch);

    [[nodiscard]] bool IsThere() const { return mIsThere; }
    [[nodiscard]] int64_t Length() const { return mLength; }
    // The first two numbers; 0 when the file is too short for them.
    [[nodiscard]] uint32_t State() const { return mState; }
    [[nodiscard]] uint32_t Count() const { return mCount; }
    // Whether all pairs and the end mark behind them are there.
    [[nodiscard]] bool HasAllPairs() const { return mPairs.size() == mCount; }
    [[nodiscard]] bool HasEndMark() const { return mHasEndMark; }
    [[nodiscard]] bool IsWhole() const;
    [[nodiscard]] const std::vector<Pair>& Pairs() const { return mPairs; }
    // Where a pair lies in the map file.
    [[nodiscard]] static int64_t PositionOf(size_t pair);
    [[nodiscard]] int64_t EndMarkPosition() const { return PositionOf(mCount); }
    [[nodiscard]] const std::vector<DamagedFile::Range>& Unreadable() const { return mUnreadable; }

private:
    bool mIsThere;
    int64_t mLength;
    uint32_t mState = 0;
    uint32_t mCount = 0;
    bool mHasEndMark = false;
    std::vector<Pair> mPairs;
    std::vector<DamagedFile::Range> mUnreadable;
};

}   // namespace vela
