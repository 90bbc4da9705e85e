#include "engine/query/AggregateMemo.h"

namespace vela {

const VelaValue* AggregateMemo::Find(const VelaExpr* aggregate) const
{
    for (const Entry& entry : mEntries) {
        if (entry.aggregate == aggregate)
            return &entry.result;
    }
    return nullptr;
}

void AggregateMemo::Add(const VelaExpr* aggregate, const VelaValue& result)
{
    mEntries.push_back({aggregate, result});
}

}   // namespace vela
