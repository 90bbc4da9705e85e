#pragma once

#include "engine/query/VelaRecSet.h"
#include "engine/storage/TableColumns.h"
#include "runtime/SimpleVector.h"

namespace vela {

class AggregateMemo;
class VelaDatabase;

// What an expression is evaluated against. Everything is borrowed; any pointer may be null.
struct VelaEvalContext {
    const VelaRecSet* recSet = nullptr;   // the current rows
    const VelaRecSetGroup* group =
        nullptr;   // the record sets of the current group; its first one stands in for recSet
    const SimpleVector<VelaTable*>* tables = nullptr;
    VelaDatabase* database = nullptr;   // for the functions that need it

    // One entry per table. Where it is not null, recSet and group name that table's rows by their
    // row number in it; where it is null (or the list is), by row id.
    const SimpleVector<TableColumns*>* columns = nullptr;

    // Inside the operand of an aggregate that holds others: their results so far. VExprAggregate
    // alone sets it.
    AggregateMemo* nestedAggregates = nullptr;
};

}   // namespace vela
