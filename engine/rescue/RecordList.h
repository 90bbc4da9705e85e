#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vela {

// RecordList knows where the records of a table lie: 12 bytes for each.
class RecordList {
public:
    struct Place {
        uint32_t rowID;
        uint32_t position;
        bool live;
        bool whole;
    };

    // In file order.
    void Add(const Place& place) { mPlaces.push_back(place); }
    // After the last Add, before the calls below.
    void Sort();

    // By row id; of one row the live ones last; of these, or of the deleted ones, by position.
    [[nodiscard]] const std::vector<Place>& Sorted() const { return mPlaces; }
    // Where the records of a row begin and end in Sorted.
    [[nodiscard]] size_t FirstOf(uint32_t rowID) const;
    [[nodiscard]] size_t EndOf(uint32_t rowID) const;
    // The place in Sorted of the record that is the row: the last live one, as a walk over the
    // records finds it; for a deleted row its last deleted one. Sorted().size() when the row has no
    // record.
    [[nodiscard]] size_t RowOf(uint32_t rowID) const;
    // The same for a live row; Sorted().size() when there is none.
    [[nodiscard]] size_t LiveRowOf(uint32_t rowID) const;
    // Whether the record at this place in Sorted is a live row.
    [[nodiscard]] bool IsLiveRow(size_t place) const;

private:
    std::vector<Place> mPlaces;
};

}   // namespace vela
