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
// A tree owns all that it needs: the parser may be used again or go. The first error counts. Parsing
// goes on after it and may build some of the tree; who gets a tree together with an error throws it
// away.
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
    // A new node, or list item, of the tree that is being built.
    template <class Node, class... Arguments>
    [[nodiscard]] Node* Make(Arguments&&... arguments)
    {
        return mArena->Make<Node>(std::forward<Arguments>(arguments)...);
    }
    template <class Item>
    void Add(ArenaList<Item>* list, const Item& item)
    {
        list->Add(mArena, item);
    }
    [[nodiscard]] SQLSyntaxNode* EvalStatement();

    // Each routine is entered with the first token of its phrase current, and leaves the first one
    // after it current. It sets *result, to null when there is nothing to build.

    void EvalSelect(SQLSelectNode** result);
    void EvalSelectItem(SQLSelectItemNode** result);
    void EvalTableRef(SQLTableRefNode** result);
    void EvalInsert(SQLSyntaxNode** result);
    void EvalUpdate(SQLSyntaxNode** result);
    void EvalDelete(SQLSyntaxNode** result);
    void EvalSet(SQLSyntaxNode** result);
    void EvalColumnDef(SQLColumnDefNode** result);
    void EvalCreateTable(SQLSyntaxNode** result);
    void EvalCreateIndex(SQLSyntaxNode** result);
    void EvalAlterTable(SQLSyntaxNode** result);
    void EvalDropTable(SQLSyntaxNode** result);
    void EvalDropIndex(SQLSyntaxNode** result);

    // Parts of statements.

    void EvalCreate(SQLSyntaxNode** result);
    void EvalDrop(SQLSyntaxNode** result);
    void EvalSelectList(SQLSelectNode* select);
    void EvalFromList(SQLSelectNode* select);
    void EvalGroupBy(SQLSelectNode* select);
    void EvalOrderBy(SQLSelectNode* select);
    void EvalAlias(SQLScalarExpNode* expression);
    [[nodiscard]] SQLText Unquoted(const SQLText& text);
    void EvalInsertValues(SQLInsertNode* insert);
    bool EvalAssignment(SQLUpdateNode* update);
    bool EvalColumnOption(SQLColumnDefNode* column);
    bool EvalColumnNames(ArenaList<SQLText>* names);
    void EvalAlterAction(SQLAlterTableNode* alter);
    void EvalAlterDrop(SQLAlterTableNode* alter);
    void EvalAlterRename(SQLAlterTableNode* alter);
    void EvalAlterColumn(SQLAlterTableNode* alter);
    bool EvalNamedColumn(SQLAlterTableNode* alter);
    [[nodiscard]] SQLDropBehavior EvalDropBehavior();

    // Expressions, lowest binding first.

    void EvalScalarExp(SQLScalarExpNode** result);
    void EvalOr(SQLScalarExpNode** result);
    void EvalAnd(SQLScalarExpNode** result);
    void EvalNot(SQLScalarExpNode** result);
    void EvalIn(SQLScalarExpNode** result);
    void EvalCompare(SQLScalarExpNode** result);
    void EvalAddSubtract(SQLScalarExpNode** result);
    void EvalMultDiv(SQLScalarExpNode** result);
    void EvalUnarySign(SQLScalarExpNode** result);
    void EvalParen(SQLScalarExpNode** result);
    void EvalFunction(SQLScalarExpNode** result);
    void EvalAtom(SQLScalarExpNode** result);

    // Parts of expressions.

    void EvalTerms(const char* op, void (VelaSQLParser::*term)(SQLScalarExpNode**),
                   SQLScalarExpNode** result);
    void EvalLike(bool negated, SQLScalarExpNode** result);
    void EvalNotLike(SQLScalarExpNode** result);
    void CloseParen();
    void EvalArguments(VelaFuncCode code, SQLFunctionNode* function);
    void EvalArgument(SQLFunctionNode::Argument which, SQLFunctionNode* function);
    void EvalAggregateArgument(VelaFuncCode code, SQLFunctionNode* function);
    void EvalPositionArguments(SQLFunctionNode* function);
    void EvalSubstringArguments(SQLFunctionNode* function);
    void EvalTrimArguments(SQLFunctionNode* function);
    void EvalWord(SQLScalarExpNode** result);
    void EvalDatetime(SQLScalarExpNode** result);
    [[nodiscard]] SQLText Joined(std::string_view keyword, std::string_view literal);
    // Wraps *result as the left operand of op, with right as its right one.
    void MakeInfix(std::string_view op, SQLScalarExpNode* right, SQLScalarExpNode** result);
    // Drops an expression that has grown higher than trees may be, as an error.
    void CheckHeight(SQLScalarExpNode** expression);

    // Skips the word when it is there, and says whether it was.
    bool SkipWord(std::string_view keyword);
    bool SkipDelimiter(std::string_view text);
    // The same for what has to be there; kind is the error when it isn't.
    bool ExpectWord(std::string_view keyword, ErrorType kind);
    bool ExpectDelimiter(std::string_view text, ErrorType kind);
    // Takes any word into name.
    bool ExpectName(SQLText* name, ErrorType kind);
    void ExpectEnd();

    BlockArena* mArena = nullptr;   // of the tree that is being built
    uint32_t mNesting = 0;
    bool mInsidePosition = false;   // IN belongs to POSITION
};

}   // namespace vela
