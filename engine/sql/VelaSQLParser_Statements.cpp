#include "engine/sql/SQLAlterTableNode.h"
#include "engine/sql/SQLCreateIndexNode.h"
#include "engine/sql/SQLCreateTableNode.h"
#include "engine/sql/SQLDeleteNode.h"
#include "engine/sql/SQLDropIndexNode.h"
#include "engine/sql/SQLDropTableNode.h"
#include "engine/sql/SQLInsertNode.h"
#include "engine/sql/SQLLiteralNode.h"
#include "engine/sql/SQLUpdateNode.h"
#include "engine/sql/VelaSQLParser.h"

namespace vela {

void VelaSQLParser::EvalSelect(std::unique_ptr<SQLSelectNode>* result)
{
    *result = std::make_unique<SQLSelectNode>();
    SQLSelectNode* select = result->get();
    GetToken();
    if (SkipWord("DISTINCT") || SkipWord("UNIQUE"))
        select->mDistinct = true;
    else
        SkipWord("ALL");
    EvalSelectList(select);
    if (IsEnd() || !ExpectWord("FROM", kErrFromExpected))
        return;
    EvalFromList(select);
    if (SkipWord("WHERE"))
        EvalScalarExp(&select->mWhere);
    if (SkipWord("GROUP"))
        EvalGroupBy(select);
    if (SkipWord("HAVING"))
        EvalScalarExp(&select->mHaving);
    if (SkipWord("ORDER"))
        EvalOrderBy(select);
    ExpectEnd();
}

void VelaSQLParser::EvalSelectList(SQLSelectNode* select)
{
    do {
        std::unique_ptr<SQLSelectItemNode> item;
        EvalSelectItem(&item);
        if (item)
            select->mItems.push_back(std::move(item));
    } while (SkipDelimiter(","));
}

void VelaSQLParser::EvalSelectItem(std::unique_ptr<SQLSelectItemNode>* result)
{
    SQLScalarExpPtr expression;
    EvalScalarExp(&expression);
    if (LastError() != kNoError)
        return;
    EvalAlias(expression.get());
    *result = std::make_unique<SQLSelectItemNode>(std::move(expression));
}

void VelaSQLParser::EvalAlias(SQLScalarExpNode* expression)
{
    const bool hasAs = SkipWord("AS");
    const bool isOver = IsEnd() || IsDelimiter(",") || IsWord("FROM");
    if (isOver && !hasAs)
        return;
    if (isOver || Kind() != kTokenWord) {
        serror(kErrRangeVarExpected);
        return;
    }
    expression->SetAlias(StringLiteralValue(TokenText(), Escape()));
    GetToken();
}

void VelaSQLParser::EvalFromList(SQLSelectNode* select)
{
    do {
        std::unique_ptr<SQLTableRefNode> table;
        EvalTableRef(&table);
        if (table)
            select->mTables.push_back(std::move(table));
    } while (SkipDelimiter(","));
}

void VelaSQLParser::EvalTableRef(std::unique_ptr<SQLTableRefNode>* result)
{
    string name;
    if (!ExpectName(&name, kErrTableNameExpected))
        return;
    *result = std::make_unique<SQLTableRefNode>(name);
    const bool hasAs = SkipWord("AS");
    const bool isClause = IsWord("WHERE") || IsWord("ORDER") || IsWord("GROUP") || IsWord("HAVING");
    if (hasAs || (Kind() == kTokenWord && !isClause))
        ExpectName(&(*result)->mRangeVariable, kErrRangeVarExpected);
}

void VelaSQLParser::EvalGroupBy(SQLSelectNode* select)
{
    if (!ExpectWord("BY", kErrKeywordExpected))
        return;
    do {
        string name;
        if (!ExpectName(&name, kErrColumnNameExpected))
            return;
        select->mGroupBy.push_back(std::make_unique<SQLFieldRefNode>(name));
    } while (SkipDelimiter(","));
}

void VelaSQLParser::EvalOrderBy(SQLSelectNode* select)
{
    if (!ExpectWord("BY", kErrKeywordExpected))
        return;
    do {
        string name;
        if (!ExpectName(&name, kErrColumnNameExpected))
            return;
        const bool isDescending = SkipWord("DESC");
        if (!isDescending)
            SkipWord("ASC");
        select->mOrderBy.push_back({std::make_unique<SQLFieldRefNode>(name), isDescending});
    } while (SkipDelimiter(","));
}

void VelaSQLParser::EvalInsert(SQLSyntaxNodePtr* result)
{
    GetToken();
    string name;
    if (!ExpectWord("INTO", kErrIntoExpected) || !ExpectName(&name, kErrTableNameExpected))
        return;
    auto insert = std::make_unique<SQLInsertNode>(name);
    SQLInsertNode* node = insert.get();
    *result = std::move(insert);
    if (SkipDelimiter("(") && !EvalColumnNames(&node->mColumns))
        return;
    if (IsWord("SELECT")) {
        EvalSelect(&node->mSelect);
        return;
    }
    if (SkipWord("DEFAULT")) {
        node->mDefaultValues = true;
        if (!ExpectWord("VALUES", kErrValuesExpected))
            return;
    } else if (ExpectWord("VALUES", kErrValuesExpected)) {
        EvalInsertValues(node);
    }
    ExpectEnd();
}

// Column words separated by commas, closed by a parenthesis.
bool VelaSQLParser::EvalColumnNames(SimpleVector<string>* names)
{
    do {
        string name;
        if (!ExpectName(&name, kErrColumnNameExpected))
            return false;
        names->push_back(name);
    } while (SkipDelimiter(","));
    return ExpectDelimiter(")", kErrCommaOrParenExpected);
}

void VelaSQLParser::EvalInsertValues(SQLInsertNode* insert)
{
    if (!ExpectDelimiter("(", kErrParenExpected))
        return;
    do {
        SQLScalarExpPtr value;
        EvalScalarExp(&value);
        insert->mValues.push_back(std::move(value));
    } while (SkipDelimiter(","));
    ExpectDelimiter(")", kErrCommaOrParenExpected);
}

void VelaSQLParser::EvalUpdate(SQLSyntaxNodePtr* result)
{
    GetToken();
    string name;
    if (!ExpectName(&name, kErrTableNameExpected))
        return;
    auto update = std::make_unique<SQLUpdateNode>(name);
    SQLUpdateNode* node = update.get();
    *result = std::move(update);
    if (!ExpectWord("SET", kErrSetExpected))
        return;
    do {
        if (!EvalAssignment(node))
            return;
    } while (SkipDelimiter(","));
    if (SkipWord("WHERE"))
        EvalScalarExp(&node->mWhere);
    ExpectEnd();
}

bool VelaSQLParser::EvalAssignment(SQLUpdateNode* update)
{
    string column;
    if (!ExpectName(&column, kErrColumnNameExpected))
        return false;
    update->mColumns.push_back(column);
    update->mValues.push_back(nullptr);
    if (!ExpectDelimiter("=", kErrEqualsExpected))
        return false;
    // Nothing between "=" and what may follow a value: said here, where the value is known to be
    // missing, and not by EvalAtom, which could only say "syntax error".
    if (IsEnd() || IsDelimiter(",") || IsDelimiter(")") || IsWord("WHERE")) {
        serror(kErrAssignValueExpected);
        return true;
    }
    EvalScalarExp(&update->mValues.back());
    return true;
}

void VelaSQLParser::EvalDelete(SQLSyntaxNodePtr* result)
{
    GetToken();
    string name;
    if (!ExpectWord("FROM", kErrFromExpected) || !ExpectName(&name, kErrTableNameExpected))
        return;
    auto node = std::make_unique<SQLDeleteNode>(name);
    if (SkipWord("WHERE"))
        EvalScalarExp(&node->mWhere);
    *result = std::move(node);
    ExpectEnd();
}

void VelaSQLParser::EvalCreateTable(SQLSyntaxNodePtr* result)
{
    GetToken();
    string name;
    if (!ExpectName(&name, kErrTableNameExpected))
        return;
    auto create = std::make_unique<SQLCreateTableNode>(name);
    SQLCreateTableNode* node = create.get();
    *result = std::move(create);
    if (!ExpectDelimiter("(", kErrParenExpected))
        return;
    do {
        std::unique_ptr<SQLColumnDefNode> column;
        EvalColumnDef(&column);
        if (column)
            node->mColumns.push_back(std::move(column));
    } while (SkipDelimiter(","));
    if (ExpectDelimiter(")", kErrCommaOrParenExpected))
        ExpectEnd();
}

void VelaSQLParser::EvalColumnDef(std::unique_ptr<SQLColumnDefNode>* result)
{
    *result = std::make_unique<SQLColumnDefNode>();
    SQLColumnDefNode* column = result->get();
    if (!ExpectName(&column->mName, kErrColumnNameExpected) ||
        !ExpectName(&column->mTypeName, kErrDataTypeExpected))
        return;
    while (Kind() == kTokenWord) {
        if (!EvalColumnOption(column))
            return;
    }
}

// One of PRIMARY KEY, NOT NULL and DEFAULT. False: none of them, or not complete.
bool VelaSQLParser::EvalColumnOption(SQLColumnDefNode* column)
{
    if (SkipWord("PRIMARY")) {
        column->mPrimaryKey = ExpectWord("KEY", kErrKeywordExpected);
        return column->mPrimaryKey;
    }
    if (SkipWord("NOT")) {
        column->mNotNull = ExpectWord("NULL", kErrKeywordExpected);
        return column->mNotNull;
    }
    if (!SkipWord("DEFAULT"))
        return false;
    EvalScalarExp(&column->mDefault);
    return LastError() == kNoError;
}

void VelaSQLParser::EvalCreateIndex(SQLSyntaxNodePtr* result)
{
    GetToken();
    string name;
    if (!ExpectName(&name, kErrIndexNameExpected))
        return;
    auto create = std::make_unique<SQLCreateIndexNode>(name);
    SQLCreateIndexNode* node = create.get();
    *result = std::move(create);
    if (ExpectWord("ON", kErrKeywordExpected) &&
        ExpectName(&node->mTableName, kErrTableNameExpected) &&
        ExpectDelimiter("(", kErrParenExpected) && EvalColumnNames(&node->mColumns))
        ExpectEnd();
}

void VelaSQLParser::EvalAlterTable(SQLSyntaxNodePtr* result)
{
    GetToken();
    string name;
    if (!ExpectName(&name, kErrTableNameExpected))
        return;
    auto node = std::make_unique<SQLAlterTableNode>(name);
    EvalAlterAction(node.get());
    *result = std::move(node);
    ExpectEnd();
}

void VelaSQLParser::EvalAlterAction(SQLAlterTableNode* alter)
{
    if (IsWord("ADD") || IsWord("MODIFY")) {
        alter->mAction =
            IsWord("ADD") ? SQLAlterTableNode::kAddColumn : SQLAlterTableNode::kModifyColumn;
        GetToken();
        SkipWord("COLUMN");
        EvalColumnDef(&alter->mColumn);
    } else if (SkipWord("DROP")) {
        EvalAlterDrop(alter);
    } else if (SkipWord("RENAME")) {
        EvalAlterRename(alter);
    } else if (SkipWord("ALTER")) {
        EvalAlterColumn(alter);
    } else {
        serror(kErrKeywordExpected);
    }
}

// [COLUMN] column, for the actions that only name it.
bool VelaSQLParser::EvalNamedColumn(SQLAlterTableNode* alter)
{
    SkipWord("COLUMN");
    auto column = std::make_unique<SQLColumnDefNode>();
    if (!ExpectName(&column->mName, kErrColumnNameExpected))
        return false;
    alter->mColumn = std::move(column);
    return true;
}

void VelaSQLParser::EvalAlterDrop(SQLAlterTableNode* alter)
{
    alter->mAction = SQLAlterTableNode::kDropColumn;
    if (EvalNamedColumn(alter))
        alter->mBehavior = EvalDropBehavior();
}

void VelaSQLParser::EvalAlterRename(SQLAlterTableNode* alter)
{
    if (SkipWord("TO")) {
        alter->mAction = SQLAlterTableNode::kRenameTable;
        ExpectName(&alter->mNewName, kErrTableNameExpected);
        return;
    }
    alter->mAction = SQLAlterTableNode::kRenameColumn;
    if (EvalNamedColumn(alter) && ExpectWord("TO", kErrKeywordExpected))
        ExpectName(&alter->mNewName, kErrColumnNameExpected);
}

// column DROP DEFAULT, or column SET [DEFAULT] value.
void VelaSQLParser::EvalAlterColumn(SQLAlterTableNode* alter)
{
    alter->mAction = SQLAlterTableNode::kDropDefault;
    if (!EvalNamedColumn(alter))
        return;
    if (SkipWord("DROP")) {
        ExpectWord("DEFAULT", kErrKeywordExpected);
        return;
    }
    if (!ExpectWord("SET", kErrKeywordExpected))
        return;
    alter->mAction = SQLAlterTableNode::kSetDefault;
    if (IsWord("DEFAULT")) {
        GetToken();
        if (IsEnd())
            SetCurrentWord(TokenView());   // the word is the value itself
    }
    EvalScalarExp(&alter->mColumn->mDefault);
}

void VelaSQLParser::EvalDropTable(SQLSyntaxNodePtr* result)
{
    GetToken();
    string name;
    if (!ExpectName(&name, kErrTableNameExpected))
        return;
    auto node = std::make_unique<SQLDropTableNode>(name);
    node->mBehavior = EvalDropBehavior();
    *result = std::move(node);
    ExpectEnd();
}

SQLDropBehavior VelaSQLParser::EvalDropBehavior()
{
    if (SkipWord("RESTRICT"))
        return SQLDropBehavior::kRestrict;
    return SkipWord("CASCADE") ? SQLDropBehavior::kCascade : SQLDropBehavior::kNotWritten;
}

void VelaSQLParser::EvalDropIndex(SQLSyntaxNodePtr* result)
{
    GetToken();
    string specifier;
    if (!ExpectName(&specifier, kErrTableNameExpected))
        return;
    *result = std::make_unique<SQLDropIndexNode>(specifier);
    ExpectEnd();
}

}   // namespace vela
