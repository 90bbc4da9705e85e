#pragma once

#include <vector>

#include "engine/core/VelaValue.h"

namespace vela {

class VelaExpr;

// AggregateMemo keeps the results of the aggregates inside the operand of another while that one
// goes through its group. They are evaluated over the same group, so their results are the same for
// every record set; without this, each level would cost the size of the group once more.
class AggregateMemo {
public:
    // Null when there is none yet; good until the next Add.
    [[nodiscard]] const VelaValue* Find(const VelaExpr* aggregate) const;
    void Add(const VelaExpr* aggregate, const VelaValue& result);

private:
    struct Entry {
        const VelaExpr* aggregate;
        VelaValue result;
    };

    std::vector<Entry> mEntries;
};

}   // namespace vela
