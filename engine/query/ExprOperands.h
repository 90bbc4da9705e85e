#pragma once

#include <initializer_list>

#include "engine/query/VelaExpr.h"

namespace vela {

// What nodes with several operands do alike. An operand may be null: it is missing, names no table,
// holds no aggregate and is described by the empty text.

// The first operand's answer that is not -1. single, when given, receives whether no other operand
// answers with another table; what the operands say about their own single does not count.
long ChooseAmongOperands(std::initializer_list<const VelaExpr*> operands, const VelaRecSet& recSet,
                         bool* single);

[[nodiscard]] bool AnyHasAggregate(std::initializer_list<const VelaExpr*> operands);

void CollectTablesOf(std::initializer_list<const VelaExpr*> operands, std::vector<bool>* tables);

[[nodiscard]] bool IsPresentAndValid(const VelaExpr* operand);

[[nodiscard]] string DescriptionOf(const VelaExpr* operand);

// The parts one after another, tagged UTF-8: the encoding of every description.
[[nodiscard]] string JoinDescription(std::initializer_list<string> parts);

}   // namespace vela
