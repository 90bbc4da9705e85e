#include "engine/query/VelaExpr.h"

namespace vela {

VelaDataType VelaExpr::GetType(const SimpleVector<VelaTable*>&) const
{
    return kTypeInteger;
}

bool VelaExpr::EvaluateInIsolation(VelaValue* result, VelaDatabase* database) const
{
    VelaEvalContext context;
    context.database = database;
    return Evaluate(context, result);
}

}   // namespace vela
