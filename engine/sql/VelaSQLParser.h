#pragma once

#include "engine/query/VelaFunctions.h"
#include "engine/sql/SQLColumnDefNode.h"
#include "engine/sql/SQLDropBehavior.h"
#include "engine/sql/SQLFunctionNode.h"
#include "engine/sql/SQLSelectNode.h"
#include "engine/sql/VelaSQLLexer.h"

namespace vela {

class SQLAlterTableNode;
class SQLInsertNode;
class SQLUpdateNode;

// VelaSQLParser turns the text of one statement into a syntax tree, by recursive descent. It knows no
// tables: names are collected as written.
//
// The first error counts. Parsing goes on after it and may build some of the tree; who gets a tree
// together with an error throws it away.
// Parentheses, signs and calls may be nested kMaxNesting deep, and expression trees may be
// SQLScalarExpNode::kMaxHeight high; beyond that the error is kErrNotSupported. The stack that a
// parse takes is bounded by that, the time is linear in the length of the statement.
class VelaSQLParser : public VelaSQLLexer {
public:
    static constexpr uint32_t kMaxNesting = 250;

    using VelaSQLLexer::VelaSQLLexer;

    // The statement's tree, or null when there is none; LastError() says whether it may be used.
    [[nodiscard]] SQLSyntaxNodePtr Evaluate(const string& statement);

    // The message for people; empty for kNoError.
    [[nodiscard]] static const char* ErrorMessage(ErrorType kind);

private:
    // Each routine is entered with the first token of its phrase current, and leaves the first one
    // after it current. It sets *result, to null when there is nothing to build.

    void EvalSelect(std::unique_ptr<SQLSelectNode>* result);
    void EvalSelectItem(std::unique_ptr<SQLSelectItemNode>* result);
    void EvalTableRef(std::unique_ptr<SQLTableRefNode>* result);
    void EvalInsert(SQLSyntaxNodePtr* result);
    void EvalUpdate(SQLSyntaxNodePtr* result);
    void EvalDelete(SQLSyntaxNodePtr* result);
    void EvalSet(SQLSyntaxNodePtr* result);
    void EvalColumnDef(std::unique_ptr<SQLColumnDefNode>* result);
    void EvalCreateTable(SQLSyntaxNodePtr* result);
    void EvalCreateIndex(SQLSyntaxNodePtr* result);
    void EvalAlterTable(SQLSyntaxNodePtr* result);
    void EvalDropTable(SQLSyntaxNodePtr* result);
    void EvalDropIndex(SQLSyntaxNodePtr* result);

    // Parts of statements.

    void EvalCreate(SQLSyntaxNodePtr* result);
    void EvalDrop(SQLSyntaxNodePtr* result);
    void EvalSelectList(SQLSelectNode* select);
    void EvalFromList(SQLSelectNode* select);
    void EvalGroupBy(SQLSelectNode* select);
    void EvalOrderBy(SQLSelectNode* select);
    void EvalAlias(SQLScalarExpNode* expression);
    void EvalInsertValues(SQLInsertNode* insert);
    bool EvalAssignment(SQLUpdateNode* update);
    bool EvalColumnOption(SQLColumnDefNode* column);
    bool EvalColumnNames(SimpleVector<string>* names);
    void EvalAlterAction(SQLAlterTableNode* alter);
    void EvalAlterDrop(SQLAlterTableNode* alter);
    void EvalAlterRename(SQLAlterTableNode* alter);
    void EvalAlterColumn(SQLAlterTableNode* alter);
    bool EvalNamedColumn(SQLAlterTableNode* alter);
    [[nodiscard]] SQLDropBehavior EvalDropBehavior();

    // Expressions, lowest binding first.

    void EvalScalarExp(SQLScalarExpPtr* result);
    void EvalOr(SQLScalarExpPtr* result);
    void EvalAnd(SQLScalarExpPtr* result);
    void EvalNot(SQLScalarExpPtr* result);
    void EvalIn(SQLScalarExpPtr* result);
    void EvalCompare(SQLScalarExpPtr* result);
    void EvalAddSubtract(SQLScalarExpPtr* result);
    void EvalMultDiv(SQLScalarExpPtr* result);
    void EvalUnarySign(SQLScalarExpPtr* result);
    void EvalParen(SQLScalarExpPtr* result);
    void EvalFunction(SQLScalarExpPtr* result);
    void EvalAtom(SQLScalarExpPtr* result);

    // Parts of expressions.

    void EvalTerms(const char* op, void (VelaSQLParser::*term)(SQLScalarExpPtr*),
                   SQLScalarExpPtr* result);
    void EvalLike(bool negated, SQLScalarExpPtr* result);
    void EvalNotLike(SQLScalarExpPtr* result);
    void CloseParen();
    bool IsFunctionName(VelaFuncCode* code);
    void EvalArguments(VelaFuncCode code, SQLFunctionNode* function);
    void EvalArgument(SQLFunctionNode::Argument which, SQLFunctionNode* function);
    void EvalAggregateArgument(VelaFuncCode code, SQLFunctionNode* function);
    void EvalPositionArguments(SQLFunctionNode* function);
    void EvalSubstringArguments(SQLFunctionNode* function);
    void EvalTrimArguments(SQLFunctionNode* function);
    void EvalWord(SQLScalarExpPtr* result);
    void EvalDatetime(SQLScalarExpPtr* result);
    // Wraps *result as the left operand of op, with right as its right one.
    void MakeInfix(std::string_view op, SQLScalarExpPtr right, SQLScalarExpPtr* result);
    // Drops an expression that has grown higher than trees may be, as an error.
    void CheckHeight(SQLScalarExpPtr* expression);

    // Skips the word when it is there, and says whether it was.
    bool SkipWord(std::string_view keyword);
    bool SkipDelimiter(std::string_view text);
    // The same for what has to be there; kind is the error when it isn't.
    bool ExpectWord(std::string_view keyword, ErrorType kind);
    bool ExpectDelimiter(std::string_view text, ErrorType kind);
    // Takes any word into name.
    bool ExpectName(string* name, ErrorType kind);
    void ExpectEnd();

    uint32_t mNesting = 0;
    bool mInsidePosition = false;   // IN belongs to POSITION
};

}   // namespace vela
