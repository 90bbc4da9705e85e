#include "engine/query/VExprConstant.h"

#include "engine/query/ExprOperands.h"

namespace vela {

namespace {

// The text between single quotes, those inside it doubled.
string Quoted(const string& text)
{
    const string readable = ConvertEncoding(text, kEncodingUTF8);
    string quoted("'", kEncodingUTF8);
    for (const char letter : readable.View()) {
        if (letter == '\'')
            quoted += letter;
        quoted += letter;
    }
    quoted += '\'';
    return quoted;
}

}   // namespace

VExprConstant::VExprConstant(const VelaValue& value) : VelaExpr(ExprKind::kConstant), mValue(value)
{}

VelaDataType VExprConstant::GetType(const SimpleVector<VelaTable*>&) const
{
    return mValue.GetType();
}

bool VExprConstant::Evaluate(const VelaEvalContext&, VelaValue* result) const
{
    *result = mValue;
    return true;
}

string VExprConstant::Description() const
{
    if (mValue.IsNull() || !IsTextBacked(mValue.GetType()))
        return JoinDescription({mValue.GetString()});
    string text = Quoted(mValue.StoredText());
    switch (mValue.GetType()) {
        case kTypeDate:
            return JoinDescription({"DATE ", text});
        case kTypeTime:
            return JoinDescription({"TIME ", text});
        case kTypeTimestamp:
            return JoinDescription({"TIMESTAMP ", text});
        default:
            return text;
    }
}

long VExprConstant::ChooseWildcardTable(const VelaRecSet&, bool* single) const
{
    if (single)
        *single = true;
    return -1;
}

void VExprConstant::CollectTables(std::vector<bool>*) const {}

}   // namespace vela
