#include "engine/sql/SQLFunctionNode.h"

#include "engine/query/VExprAggregate.h"
#include "engine/query/VExprScalarFunc.h"

namespace vela {

namespace {

bool TakesNoArguments(VelaFuncCode code)
{
    return code == kFuncCurrentDate || code == kFuncCurrentTime || code == kFuncCurrentTimestamp;
}

}   // namespace

void SQLFunctionNode::SetArgument(Argument which, SQLScalarExpNode* argument)
{
    GrowOver(argument);
    mArguments[which] = argument;
}

void SQLFunctionNode::Describe(string* text) const
{
    *text += VelaFuncName(mCode);
    if (TakesNoArguments(mCode) && !mArguments[kFirst])
        return;
    *text += '(';
    DescribeArguments(text);
    *text += ')';
}

VelaExprPtr SQLFunctionNode::ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                               VelaStatus* status) const
{
    VelaExprPtr arguments[3];
    for (int i = kFirst; i <= kThird; i++) {
        if (!mArguments[i])
            continue;
        arguments[i] = mArguments[i]->ConvertToVelaExpr(names, tables, status);
        if (!arguments[i])
            return nullptr;
    }
    if (mCode >= kFuncAvg)
        return std::make_unique<VExprAggregate>(mCode, std::move(arguments[kFirst]), mDistinct);
    return std::make_unique<VExprScalarFunc>(mCode, std::move(arguments[kFirst]),
                                             std::move(arguments[kSecond]),
                                             std::move(arguments[kThird]));
}

void SQLFunctionNode::DescribeArguments(string* text) const
{
    const SQLSyntaxNode* first = mArguments[kFirst];
    const SQLSyntaxNode* second = mArguments[kSecond];
    const SQLSyntaxNode* third = mArguments[kThird];
    if (mCode == kFuncCount && !first) {
        *text += '*';
    } else if (mCode >= kFuncAvg) {
        *text += mDistinct ? "DISTINCT " : "";
        DescribeChild(first, text);
    } else if (mCode == kFuncPosition) {
        DescribeChild(second, text);
        *text += " IN ";
        DescribeChild(first, text);
    } else if (mCode == kFuncSubstring) {
        DescribeChild(first, text);
        *text += " FROM ";
        DescribeChild(second, text);
        *text += third ? " FOR " : "";
        DescribeChild(third, text);
    } else if (mCode == kFuncTrim) {
        DescribeTrim(text);
    } else {
        DescribeChild(first, text);
    }
}

void SQLFunctionNode::DescribeTrim(string* text) const
{
    if (mArguments[kThird]) {
        DescribeText(mArguments[kThird]->Description().Uppercase(), text);
        *text += ' ';
    }
    DescribeChild(mArguments[kSecond], text);
    if (mArguments[kSecond])
        *text += ' ';
    if (mArguments[kThird] || mArguments[kSecond])
        *text += "FROM ";
    DescribeChild(mArguments[kFirst], text);
}

}   // namespace vela
