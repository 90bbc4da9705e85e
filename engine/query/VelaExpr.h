#pragma once

#include <memory>
#include <vector>

#include "engine/core/VelaValue.h"
#include "engine/query/VelaEvalContext.h"

namespace vela {

// Which class a node is of, for those who inspect trees. Each kind but kOther is one class:
// VExprConstant and so on.
enum class ExprKind : uint8_t {
    kConstant,
    kField,
    kMath,
    kCompare,
    kCompareLike,
    kNot,
    kAnd,
    kOr,
    kScalarFunc,
    kAggregate,
    kOther
};

// VelaExpr is a node of an executable expression. A node owns its children.
//
// Logic is three-valued: the flag that Evaluate returns says whether a value could be computed.
// False is UNKNOWN. No operation fails in another way.
//
// Every operation, destruction too, recurses as deep as the tree is; whoever builds a tree from
// text that others wrote bounds its depth.
class VelaExpr {
public:
    VelaExpr() = default;
    VelaExpr(const VelaExpr&) = delete;
    VelaExpr& operator=(const VelaExpr&) = delete;
    virtual ~VelaExpr() = default;

    // The type that Evaluate will produce. Boolean-valued nodes produce Integers.
    [[nodiscard]] virtual VelaDataType GetType(const SimpleVector<VelaTable*>& tables) const;
    // True: result holds the value. False: UNKNOWN; what the node left in result is part of its
    // described behaviour, since conditions are judged by it. A node that promises nothing about an
    // UNKNOWN leaves result untouched.
    virtual bool Evaluate(const VelaEvalContext& context, VelaValue* result) const = 0;
    // A readable text; it names a result column whose expression has no name.
    [[nodiscard]] virtual string Description() const = 0;
    // The table among those that the expression refers to whose row in recSet is still unbound and
    // which is to be bound next; -1 for none. single, when given, receives whether the expression
    // depends on no other unbound table, as far as its class looks.
    virtual long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const = 0;
    // Whether the tree is complete.
    [[nodiscard]] virtual bool Valid() const { return true; }
    [[nodiscard]] virtual bool HasAggregate() const { return false; }

    // Sets tables[t] for every table t that the tree refers to, inside aggregates too. The list
    // grows where needed; its other elements stay.
    virtual void CollectTables(std::vector<bool>* tables) const = 0;

    // Evaluates without rows, group and tables: for constant expressions. database may be null.
    bool EvaluateInIsolation(VelaValue* result, VelaDatabase* database) const;

    [[nodiscard]] ExprKind Kind() const { return mKind; }
    // The result column name that a select item gives; empty when none.
    [[nodiscard]] const string& Name() const { return mName; }
    void SetName(const string& name) { mName = name; }

protected:
    explicit VelaExpr(ExprKind kind) : mKind(kind) {}

private:
    string mName;
    ExprKind mKind = ExprKind::kOther;
};

using VelaExprPtr = std::unique_ptr<VelaExpr>;

}   // namespace vela
