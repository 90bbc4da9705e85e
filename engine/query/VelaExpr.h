#pragma once

#include <memory>

#include "engine/core/VelaValue.h"
#include "engine/query/VelaEvalContext.h"

namespace vela {

// VelaExpr is a node of an executable expression. A node owns its children.
//
// Logic is three-valued: the flag that Evaluate returns says whether a value could be computed. False is UNKNOWN.
class VelaExpr {
public:
    VelaExpr() = default;
    VelaExpr(const VelaExpr&) = delete;
    VelaExpr& operator=(const VelaExpr&) = delete;
    virtual ~VelaExpr() = default;

    // The type that Evaluate will produce. Boolean-valued nodes produce Integers.
    [[nodiscard]] virtual VelaDataType GetType(const SimpleVector<VelaTable*>& tables) const;
    // True: result holds the value. False: UNKNOWN; what the node left in result is part of its described behaviour,
    // since conditions are judged by it.
    virtual bool Evaluate(const VelaEvalContext& context, VelaValue* result) const = 0;
    // A readable text; it names a result column whose expression has no name.
    [[nodiscard]] virtual string Description() const = 0;
    // The table among those that the expression refers to whose row in recSet is still unbound and which is to be bound
    // next; -1 for none. single, when given, receives whether the expression depends on no other unbound table.
    virtual long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const = 0;
    // Whether the tree is complete.
    [[nodiscard]] virtual bool Valid() const { return true; }
    [[nodiscard]] virtual bool HasAggregate() const { return false; }

    // Evaluates without rows, group and tables: for constant expressions.
    bool EvaluateInIsolation(VelaValue* result, VelaDatabase* database) const;

    // The result column name that a select item gives; empty when none.
    [[nodiscard]] const string& Name() const { return mName; }
    void SetName(const string& name) { mName = name; }

private:
    string mName;
};

using VelaExprPtr = std::unique_ptr<VelaExpr>;

}  // namespace vela
