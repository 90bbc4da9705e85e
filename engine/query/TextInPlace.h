#pragma once

#include <string_view>

#include "engine/query/VelaExpr.h"

namespace vela {

// A text-backed value that is not null, where it lies.
struct TextInPlace {
    VelaDataType type = kTypeNone;
    std::string_view text;   // the stored text
};

// The value of a constant, or of a column that is held in memory as texts, without making a
// VelaValue of it. False when expr's value can't be had that way: then Evaluate tells. text is good
// until the table changes.
bool FindTextInPlace(const VelaExpr& expr, const VelaEvalContext& context, TextInPlace* text);

}   // namespace vela
