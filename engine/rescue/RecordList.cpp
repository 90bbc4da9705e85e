#include "engine/rescue/RecordList.h"

#include <algorithm>
#include <tuple>

namespace vela {

void RecordList::Sort()
{
    std::sort(mPlaces.begin(), mPlaces.end(), [](const Place& a, const Place& b) {
        return std::tie(a.rowID, a.live, a.position) < std::tie(b.rowID, b.live, b.position);
    });
}

size_t RecordList::FirstOf(uint32_t rowID) const
{
    const auto first =
        std::lower_bound(mPlaces.begin(), mPlaces.end(), rowID,
                         [](const Place& place, uint32_t row) { return place.rowID < row; });
    return static_cast<size_t>(first - mPlaces.begin());
}

size_t RecordList::EndOf(uint32_t rowID) const
{
    const auto end =
        std::upper_bound(mPlaces.begin(), mPlaces.end(), rowID,
                         [](uint32_t row, const Place& place) { return row < place.rowID; });
    return static_cast<size_t>(end - mPlaces.begin());
}

size_t RecordList::RowOf(uint32_t rowID) const
{
    const size_t end = EndOf(rowID);
    return end > 0 && mPlaces[end - 1].rowID == rowID ? end - 1 : mPlaces.size();
}

size_t RecordList::LiveRowOf(uint32_t rowID) const
{
    const size_t row = RowOf(rowID);
    return row < mPlaces.size() && mPlaces[row].live ? row : mPlaces.size();
}

bool RecordList::IsLiveRow(size_t place) const
{
    const bool isLast =
        place + 1 == mPlaces.size() || mPlaces[place + 1].rowID != mPlaces[place].rowID;
    return isLast && mPlaces[place].live;
}

}   // namespace vela
