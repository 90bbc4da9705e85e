#pragma once

#include <cstddef>
#include <vector>

#include "engine/core/VelaValue.h"

namespace vela {

// ValueBlocks owns the values of a result table. They lie in blocks of memory that never move; what is taken at once lies
// in one block.
class ValueBlocks {
public:
    ValueBlocks() = default;
    ValueBlocks(const ValueBlocks&) = delete;
    ValueBlocks& operator=(const ValueBlocks&) = delete;
    ~ValueBlocks();

    // The next count values, nulls of type None; good until GiveBack takes them, or as long as this object.
    [[nodiscard]] VelaValue* Take(size_t count);
    // Takes back the count values taken last.
    void GiveBack(size_t count);
    // Makes one block for the values of so many rows to come.
    void Reserve(size_t rows, size_t width);

private:
    struct Block {
        VelaValue* values;
        size_t size;
        size_t used;
    };

    void StartBlock(size_t size);

    std::vector<Block> mBlocks;   // the last one is being filled
};

}   // namespace vela
