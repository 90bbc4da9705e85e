#include "engine/storage/DamageLog.h"

namespace vela {

const char* DamageText(DamageKind kind)
{
    switch (kind) {
        case DamageKind::kHeader:
            return "no record begins here; what lies behind it may be missing";
        case DamageKind::kUnreadable:
            return "the record here can't be read; what lies behind it may be missing";
        case DamageKind::kBody:
            return "values of the record here can't be read; they are taken for missing ones";
        case DamageKind::kIndexEntry:
            return "the index entry here can't be read; the index is made from the rows";
        case DamageKind::kMissing:
            return "the table's record file is missing or can't be opened; it has no rows";
    }
    return "";
}

void DamageLog::Note(const std::string& file, int64_t offset, DamageKind kind)
{
    if (mPlaces.size() >= kMostPlaces || mKnown.count({file, offset}) != 0)
        return;
    mPlaces.push_back({file, offset, kind});
    mKnown.emplace(file, offset);
}

}   // namespace vela
