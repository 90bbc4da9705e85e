#include <cstring>

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

SQLText OperatorText(std::string_view op)
{
    return {op, kEncodingASCII};
}

}   // namespace

// The one place where the routines below call themselves, through parentheses and arguments.
void VelaSQLParser::EvalScalarExp(SQLScalarExpNode** result)
{
    if (mNesting == kMaxNesting) {
        serror(kErrNotSupported);
        return;
    }
    // Most expressions are but a literal or a column in a list.
    if (Kind() != kTokenDelimiter && IsBeforeListEnd() && !IsWord("NOT")) {
        EvalFunction(result);
        return;
    }
    mNesting++;
    EvalOr(result);
    mNesting--;
}

void VelaSQLParser::EvalOr(SQLScalarExpNode** result)
{
    EvalAnd(result);
    if (IsWord("OR"))
        EvalTerms("OR", &VelaSQLParser::EvalAnd, result);
}

void VelaSQLParser::EvalAnd(SQLScalarExpNode** result)
{
    EvalNot(result);
    if (IsWord("AND"))
        EvalTerms("AND", &VelaSQLParser::EvalNot, result);
}

// Makes *result the first operand of an AND or OR, and appends the others, which term reads.
void VelaSQLParser::EvalTerms(const char* op, void (VelaSQLParser::*term)(SQLScalarExpNode**),
                              SQLScalarExpNode** result)
{
    SQLInfixOpNode* junction = Make<SQLInfixOpNode>(OperatorText(op));
    junction->AddOperand(mArena, *result);
    while (SkipWord(op)) {
        SQLScalarExpNode* operand = nullptr;
        (this->*term)(&operand);
        junction->AddOperand(mArena, operand);
    }
    *result = junction;
    CheckHeight(result);
}

void VelaSQLParser::EvalNot(SQLScalarExpNode** result)
{
    SkipWord("NOT");   // and forget it: this grammar knows NOT in "NOT LIKE" alone
    EvalIn(result);
}

void VelaSQLParser::EvalIn(SQLScalarExpNode** result)
{
    EvalCompare(result);
    if (mInsidePosition || !IsWord("IN"))
        return;
    serror(kErrNotSupported);
    *result = Make<SQLLiteralNode>(OperatorText("FALSE"), '\0');
}

void VelaSQLParser::EvalCompare(SQLScalarExpNode** result)
{
    EvalAddSubtract(result);
    if (Kind() == kTokenDelimiter) {
        const std::string_view op = TokenView();
        if (!IsComparison(op))
            return;
        GetToken();
        SQLScalarExpNode* right = nullptr;
        EvalAddSubtract(&right);
        MakeInfix(op, right, result);
    } else if (IsWord("LIKE")) {
        EvalLike(false, result);
    } else if (IsWord("NOT")) {
        EvalNotLike(result);
    }
}

// A NOT behind an operand. Without LIKE it is left for whoever comes next: a column definition may
// go on with NOT NULL.
void VelaSQLParser::EvalNotLike(SQLScalarExpNode** result)
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

void VelaSQLParser::EvalLike(bool negated, SQLScalarExpNode** result)
{
    SQLLikeNode* like = Make<SQLLikeNode>(*result, negated);
    GetToken();
    SQLScalarExpNode* pattern = nullptr;
    EvalAddSubtract(&pattern);
    like->SetPattern(pattern);
    if (SkipWord("ESCAPE")) {
        SQLScalarExpNode* escape = nullptr;
        EvalAddSubtract(&escape);
        like->SetEscape(escape);
    }
    *result = like;
    CheckHeight(result);
}

void VelaSQLParser::EvalAddSubtract(SQLScalarExpNode** result)
{
    EvalMultDiv(result);
    while (IsDelimiter("+") || IsDelimiter("-")) {
        const std::string_view op = TokenView();
        GetToken();
        SQLScalarExpNode* right = nullptr;
        EvalMultDiv(&right);
        MakeInfix(op, right, result);
    }
}

void VelaSQLParser::EvalMultDiv(SQLScalarExpNode** result)
{
    EvalUnarySign(result);
    while (IsDelimiter("*") || IsDelimiter("/")) {
        const std::string_view op = TokenView();
        GetToken();
        SQLScalarExpNode* right = nullptr;
        EvalUnarySign(&right);
        MakeInfix(op, right, result);
    }
}

void VelaSQLParser::EvalUnarySign(SQLScalarExpNode** result)
{
    const bool isNegation = IsDelimiter("-");
    if (isNegation || IsDelimiter("+"))
        GetToken();
    EvalParen(result);
    if (!isNegation)
        return;
    *result = Make<SQLNegationNode>(*result);
    CheckHeight(result);
}

void VelaSQLParser::EvalParen(SQLScalarExpNode** result)
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

void VelaSQLParser::EvalFunction(SQLScalarExpNode** result)
{
    VelaFuncCode code = kFuncBitLength;
    if (Kind() != kTokenWord || !FindVelaFunc(TokenView(), &code)) {
        EvalAtom(result);
        return;
    }
    SQLFunctionNode* function = Make<SQLFunctionNode>(code);
    GetToken();
    if (SkipDelimiter("(")) {
        EvalArguments(code, function);
        CloseParen();
    }
    *result = function;
    CheckHeight(result);
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
    SQLScalarExpNode* argument = nullptr;
    EvalScalarExp(&argument);
    function->SetArgument(which, argument);
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
        SQLScalarExpNode* side = Make<SQLLiteralNode>(TokenText(), '\0');
        function->SetArgument(kThird, side);
        GetToken();
    } else if (Kind() == kTokenWord) {
        serror(kErrKeywordExpected);
    }
    SQLScalarExpNode* text = nullptr;
    if (!hasSide || !IsWord("FROM"))
        EvalScalarExp(&text);
    if (!hasSide && IsDelimiter(")")) {
        function->SetArgument(kFirst, text);
        return;
    }
    function->SetArgument(kSecond, text);
    if (ExpectWord("FROM", kErrKeywordExpected))
        EvalArgument(kFirst, function);
}

void VelaSQLParser::EvalAtom(SQLScalarExpNode** result)
{
    if (Kind() == kTokenNumber || Kind() == kTokenString) {
        *result = Make<SQLLiteralNode>(TokenText(), Escape());
        GetToken();
    } else if (Kind() == kTokenWord) {
        EvalWord(result);
    } else if (IsDelimiter("*")) {
        *result = Make<SQLFieldRefNode>(TokenText());
        GetToken();
    } else {
        serror(kErrSyntax);
    }
}

void VelaSQLParser::EvalWord(SQLScalarExpNode** result)
{
    if (IsWord("TRUE") || IsWord("FALSE")) {
        *result = Make<SQLLiteralNode>(TokenText(), '\0');
        GetToken();
    } else if (IsWord("DATE") || IsWord("TIME") || IsWord("TIMESTAMP")) {
        EvalDatetime(result);
    } else if (IsWord("FROM")) {
        serror(kErrSyntax);
    } else {
        const char* place = TokenStart();
        *result = Make<SQLFieldRefNode>(TokenText());
        GetToken();
        if (IsDelimiter("("))
            ErrorAt(kErrUnknownFunction, place);
    }
}

void VelaSQLParser::EvalDatetime(SQLScalarExpNode** result)
{
    const std::string_view keyword = TokenView();
    GetToken();
    if (Kind() != kTokenString) {
        serror(kErrDatetimeIncomplete);
        return;
    }
    *result = Make<SQLLiteralNode>(Joined(keyword, TokenView()), Escape());
    GetToken();
}

// Both with a blank between them.
SQLText VelaSQLParser::Joined(std::string_view keyword, std::string_view literal)
{
    const size_t size = keyword.size() + 1 + literal.size();
    char* bytes = static_cast<char*>(mArena->Allocate(size, 1));
    std::memcpy(bytes, keyword.data(), keyword.size());
    bytes[keyword.size()] = ' ';
    std::memcpy(bytes + keyword.size() + 1, literal.data(), literal.size());
    return {{bytes, size}, TokenText().Encoding()};
}

void VelaSQLParser::MakeInfix(std::string_view op, SQLScalarExpNode* right,
                              SQLScalarExpNode** result)
{
    SQLInfixOpNode* infix = Make<SQLInfixOpNode>(OperatorText(op));
    infix->AddOperand(mArena, *result);
    infix->AddOperand(mArena, right);
    *result = infix;
    CheckHeight(result);
}

void VelaSQLParser::CheckHeight(SQLScalarExpNode** expression)
{
    if ((*expression)->Height() <= SQLScalarExpNode::kMaxHeight)
        return;
    serror(kErrNotSupported);
    *expression = nullptr;
}

}   // namespace vela
