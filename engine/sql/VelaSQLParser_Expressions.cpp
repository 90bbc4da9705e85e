#include "engine/sql/SQLFieldRefNode.h"
#include "engine/sql/SQLInfixOpNode.h"
#include "engine/sql/SQLLikeNode.h"
#include "engine/sql/SQLLiteralNode.h"
#include "engine/sql/SQLNegationNode.h"
#include "engine/sql/VelaSQLParser.h"

namespace vela {

namespace {

constexpr auto kFirst = SQLFunctionNode::kFirst;
constexpr auto kSecond = SQLFunctionNode::kSecond;
constexpr auto kThird = SQLFunctionNode::kThird;

bool IsComparison(std::string_view op)
{
    return op == "=" || op == "<>" || op == "<" || op == "<=" || op == ">" || op == ">=";
}

string OperatorText(std::string_view op)
{
    return string(op, kEncodingASCII);
}

}   // namespace

// The one place where the routines below call themselves, through parentheses and arguments.
void VelaSQLParser::EvalScalarExp(SQLScalarExpPtr* result)
{
    if (mNesting == kMaxNesting) {
        serror(kErrNotSupported);
        return;
    }
    // Most expressions are but a literal in a list.
    if ((Kind() == kTokenNumber || Kind() == kTokenString) && IsBeforeListEnd()) {
        EvalAtom(result);
        return;
    }
    mNesting++;
    EvalOr(result);
    mNesting--;
}

void VelaSQLParser::EvalOr(SQLScalarExpPtr* result)
{
    EvalAnd(result);
    if (IsWord("OR"))
        EvalTerms("OR", &VelaSQLParser::EvalAnd, result);
}

void VelaSQLParser::EvalAnd(SQLScalarExpPtr* result)
{
    EvalNot(result);
    if (IsWord("AND"))
        EvalTerms("AND", &VelaSQLParser::EvalNot, result);
}

// Makes *result the first operand of an AND or OR, and appends the others, which term reads.
void VelaSQLParser::EvalTerms(const char* op, void (VelaSQLParser::*term)(SQLScalarExpPtr*),
                              SQLScalarExpPtr* result)
{
    auto junction = std::make_unique<SQLInfixOpNode>(OperatorText(op));
    junction->AddOperand(std::move(*result));
    while (SkipWord(op)) {
        SQLScalarExpPtr operand;
        (this->*term)(&operand);
        junction->AddOperand(std::move(operand));
    }
    *result = std::move(junction);
    CheckHeight(result);
}

void VelaSQLParser::EvalNot(SQLScalarExpPtr* result)
{
    SkipWord("NOT");   // and forget it: this grammar knows NOT in "NOT LIKE" alone
    EvalIn(result);
}

void VelaSQLParser::EvalIn(SQLScalarExpPtr* result)
{
    EvalCompare(result);
    if (mInsidePosition || !IsWord("IN"))
        return;
    serror(kErrNotSupported);
    *result = std::make_unique<SQLLiteralNode>(OperatorText("FALSE"), '\0');
}

void VelaSQLParser::EvalCompare(SQLScalarExpPtr* result)
{
    EvalAddSubtract(result);
    if (Kind() == kTokenDelimiter) {
        const std::string_view op = TokenView();
        if (!IsComparison(op))
            return;
        GetToken();
        SQLScalarExpPtr right;
        EvalAddSubtract(&right);
        MakeInfix(op, std::move(right), result);
    } else if (IsWord("LIKE")) {
        EvalLike(false, result);
    } else if (IsWord("NOT")) {
        EvalNotLike(result);
    }
}

// A NOT behind an operand. Without LIKE it is left for whoever comes next: a column definition may
// go on with NOT NULL.
void VelaSQLParser::EvalNotLike(SQLScalarExpPtr* result)
{
    const std::string_view wordNot = TokenView();
    GetToken();
    if (IsWord("LIKE")) {
        EvalLike(true, result);
        return;
    }
    putback();
    SetCurrentWord(wordNot);
}

void VelaSQLParser::EvalLike(bool negated, SQLScalarExpPtr* result)
{
    auto like = std::make_unique<SQLLikeNode>(std::move(*result), negated);
    GetToken();
    SQLScalarExpPtr operand;
    EvalAddSubtract(&operand);
    like->SetPattern(std::move(operand));
    if (SkipWord("ESCAPE")) {
        EvalAddSubtract(&operand);
        like->SetEscape(std::move(operand));
    }
    *result = std::move(like);
    CheckHeight(result);
}

void VelaSQLParser::EvalAddSubtract(SQLScalarExpPtr* result)
{
    EvalMultDiv(result);
    while (IsDelimiter("+") || IsDelimiter("-")) {
        const std::string_view op = TokenView();
        GetToken();
        SQLScalarExpPtr right;
        EvalMultDiv(&right);
        MakeInfix(op, std::move(right), result);
    }
}

void VelaSQLParser::EvalMultDiv(SQLScalarExpPtr* result)
{
    EvalUnarySign(result);
    while (IsDelimiter("*") || IsDelimiter("/")) {
        const std::string_view op = TokenView();
        GetToken();
        SQLScalarExpPtr right;
        EvalUnarySign(&right);
        MakeInfix(op, std::move(right), result);
    }
}

void VelaSQLParser::EvalUnarySign(SQLScalarExpPtr* result)
{
    const bool isNegation = IsDelimiter("-");
    if (isNegation || IsDelimiter("+"))
        GetToken();
    EvalParen(result);
    if (!isNegation)
        return;
    *result = std::make_unique<SQLNegationNode>(std::move(*result));
    CheckHeight(result);
}

void VelaSQLParser::EvalParen(SQLScalarExpPtr* result)
{
    if (!IsDelimiter("(")) {
        EvalFunction(result);
        return;
    }
    GetToken();
    EvalScalarExp(result);
    CloseParen();
}

// Skips one token, whether it is the parenthesis that is due or not.
void VelaSQLParser::CloseParen()
{
    if (!IsDelimiter(")"))
        serror(kErrUnbalancedParens);
    GetToken();
}

void VelaSQLParser::EvalFunction(SQLScalarExpPtr* result)
{
    VelaFuncCode code = kFuncBitLength;
    if (Kind() != kTokenWord || !IsFunctionName(&code)) {
        EvalAtom(result);
        return;
    }
    auto function = std::make_unique<SQLFunctionNode>(code);
    GetToken();
    if (SkipDelimiter("(")) {
        EvalArguments(code, function.get());
        CloseParen();
    }
    *result = std::move(function);
    CheckHeight(result);
}

bool VelaSQLParser::IsFunctionName(VelaFuncCode* code)
{
    string name = TokenText();
    return GetVelaFuncCode(&name, code);
}

void VelaSQLParser::EvalArguments(VelaFuncCode code, SQLFunctionNode* function)
{
    switch (code) {
        case kFuncCurrentDate:
        case kFuncCurrentTime:
        case kFuncCurrentTimestamp:
            break;
        case kFuncPosition:
            EvalPositionArguments(function);
            break;
        case kFuncSubstring:
            EvalSubstringArguments(function);
            break;
        case kFuncTrim:
            EvalTrimArguments(function);
            break;
        case kFuncAvg:
        case kFuncCount:
        case kFuncMax:
        case kFuncMin:
        case kFuncSum:
            EvalAggregateArgument(code, function);
            break;
        default:
            EvalArgument(kFirst, function);
            break;
    }
}

void VelaSQLParser::EvalArgument(SQLFunctionNode::Argument which, SQLFunctionNode* function)
{
    SQLScalarExpPtr argument;
    EvalScalarExp(&argument);
    function->SetArgument(which, std::move(argument));
}

void VelaSQLParser::EvalAggregateArgument(VelaFuncCode code, SQLFunctionNode* function)
{
    if (code == kFuncCount && SkipDelimiter("*"))
        return;
    const bool isDistinct = SkipWord("DISTINCT");
    if (!isDistinct)
        SkipWord("ALL");
    function->SetDistinct(isDistinct);
    EvalArgument(kFirst, function);
}

// x IN y: what is searched comes second in the text and first in the node.
void VelaSQLParser::EvalPositionArguments(SQLFunctionNode* function)
{
    const bool wasInside = mInsidePosition;
    mInsidePosition = true;
    EvalArgument(kSecond, function);
    mInsidePosition = wasInside;
    if (ExpectWord("IN", kErrKeywordExpected))
        EvalArgument(kFirst, function);
}

void VelaSQLParser::EvalSubstringArguments(SQLFunctionNode* function)
{
    EvalArgument(kFirst, function);
    if (!ExpectWord("FROM", kErrKeywordExpected))
        return;
    EvalArgument(kSecond, function);
    if (SkipWord("FOR"))
        EvalArgument(kThird, function);
    else if (!IsDelimiter(")"))
        serror(kErrKeywordExpected);
}

void VelaSQLParser::EvalTrimArguments(SQLFunctionNode* function)
{
    const bool hasSide = IsWord("LEADING") || IsWord("TRAILING") || IsWord("BOTH");
    if (hasSide) {
        SQLScalarExpPtr side = std::make_unique<SQLLiteralNode>(TokenText(), '\0');
        function->SetArgument(kThird, std::move(side));
        GetToken();
    } else if (Kind() == kTokenWord) {
        serror(kErrKeywordExpected);
    }
    SQLScalarExpPtr text;
    if (!hasSide || !IsWord("FROM"))
        EvalScalarExp(&text);
    if (!hasSide && IsDelimiter(")")) {
        function->SetArgument(kFirst, std::move(text));
        return;
    }
    function->SetArgument(kSecond, std::move(text));
    if (ExpectWord("FROM", kErrKeywordExpected))
        EvalArgument(kFirst, function);
}

void VelaSQLParser::EvalAtom(SQLScalarExpPtr* result)
{
    if (Kind() == kTokenNumber || Kind() == kTokenString) {
        *result = std::make_unique<SQLLiteralNode>(Statement(), TokenView(), Escape());
        GetToken();
    } else if (Kind() == kTokenWord) {
        EvalWord(result);
    } else if (IsDelimiter("*")) {
        *result = std::make_unique<SQLFieldRefNode>(TokenText());
        GetToken();
    } else {
        serror(kErrSyntax);
    }
}

void VelaSQLParser::EvalWord(SQLScalarExpPtr* result)
{
    if (IsWord("TRUE") || IsWord("FALSE")) {
        *result = std::make_unique<SQLLiteralNode>(TokenText(), '\0');
        GetToken();
    } else if (IsWord("DATE") || IsWord("TIME") || IsWord("TIMESTAMP")) {
        EvalDatetime(result);
    } else if (IsWord("FROM")) {
        serror(kErrSyntax);
    } else {
        const char* place = TokenStart();
        *result = std::make_unique<SQLFieldRefNode>(TokenText());
        GetToken();
        if (IsDelimiter("("))
            ErrorAt(kErrUnknownFunction, place);
    }
}

void VelaSQLParser::EvalDatetime(SQLScalarExpPtr* result)
{
    string text = TokenText();
    GetToken();
    if (Kind() != kTokenString) {
        serror(kErrDatetimeIncomplete);
        return;
    }
    text += ' ';
    text += TokenView();
    *result = std::make_unique<SQLLiteralNode>(text, Escape());
    GetToken();
}

void VelaSQLParser::MakeInfix(std::string_view op, SQLScalarExpPtr right, SQLScalarExpPtr* result)
{
    auto infix = std::make_unique<SQLInfixOpNode>(OperatorText(op));
    infix->AddOperand(std::move(*result));
    infix->AddOperand(std::move(right));
    *result = std::move(infix);
    CheckHeight(result);
}

void VelaSQLParser::CheckHeight(SQLScalarExpPtr* expression)
{
    if ((*expression)->Height() <= SQLScalarExpNode::kMaxHeight)
        return;
    serror(kErrNotSupported);
    expression->reset();
}

}   // namespace vela
