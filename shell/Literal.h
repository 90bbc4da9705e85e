#pragma once

#include <string>

#include "engine/core/VelaValue.h"

namespace vela::shell {

// A value as an INSERT statement says it.
struct Literal {
    // The expression; empty when the column is to be left out, which reads the same.
    std::string text;
    // What the statement can't say and is lost; empty when nothing is.
    std::string loss;
};

// The literal for a value read from a stored column, to be inserted into a column of the value's
// type (a Binary column, for a String from one) while no escape character is set. Reading the
// inserted row gives the same value. Row ids are values of type Integer.
[[nodiscard]] Literal LiteralOf(const VelaValue& value);

}   // namespace vela::shell
