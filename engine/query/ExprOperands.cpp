#include "engine/query/ExprOperands.h"

namespace vela {

long ChooseAmongOperands(std::initializer_list<const VelaExpr*> operands, const VelaRecSet& recSet,
                         bool* single)
{
    long chosen = -1;
    bool isOnlyOne = true;
    for (const VelaExpr* operand : operands) {
        const long table = operand ? operand->ChooseWildcardTable(recSet, nullptr) : -1;
        if (chosen == -1)
            chosen = table;
        else if (table != -1 && table != chosen)
            isOnlyOne = false;
    }
    if (single)
        *single = isOnlyOne;
    return chosen;
}

bool AnyHasAggregate(std::initializer_list<const VelaExpr*> operands)
{
    for (const VelaExpr* operand : operands) {
        if (operand && operand->HasAggregate())
            return true;
    }
    return false;
}

void CollectTablesOf(std::initializer_list<const VelaExpr*> operands, std::vector<bool>* tables)
{
    for (const VelaExpr* operand : operands) {
        if (operand)
            operand->CollectTables(tables);
    }
}

bool IsPresentAndValid(const VelaExpr* operand)
{
    return operand && operand->Valid();
}

string DescriptionOf(const VelaExpr* operand)
{
    return operand ? operand->Description() : string();
}

string JoinDescription(std::initializer_list<string> parts)
{
    string description("", kEncodingUTF8);
    for (const string& part : parts)
        description += part.View();
    return description;
}

}   // namespace vela
