#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vela {

enum class DamageKind {
    kHeader,       // no record begins where one should
    kUnreadable,   // the file ends within a record's header, or the device can't read it
    kBody,         // a record of which values can't be read
    kIndexEntry,   // a record that is not one of its index
    kMissing       // a table's record file is not there or can't be opened; its offset is 0
};
// What was met, for people: "no record begins here; what lies behind it may be missing".
[[nodiscard]] const char* DamageText(DamageKind kind);

struct DamagedPlace {
    std::string file;   // its name within the database
    int64_t offset;     // of the record
    DamageKind kind;
};

// DamageLog keeps what could not be read of a database's files while it was used, each place once.
// Reading goes on around damage, so that this is how one learns of it. Not everything that is wrong
// is met in ordinary use: CheckDatabase (engine/rescue) finds all of it.
class DamageLog {
public:
    // Of so many places at most; later ones are not kept.
    static constexpr size_t kMostPlaces = 1000;

    void Note(const std::string& file, int64_t offset, DamageKind kind);
    // In the order in which they were met; more are added at the end only.
    [[nodiscard]] const std::vector<DamagedPlace>& Places() const { return mPlaces; }

private:
    std::vector<DamagedPlace> mPlaces;
    std::set<std::pair<std::string, int64_t>> mKnown;
};

}   // namespace vela
