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

void VelaSQLParser::EvalSelect(SQLSelectNode** result)
{
    *result = Make<SQLSelectNode>();
    SQLSelectNode* select = *result;
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
        SQLSelectItemNode* item = nullptr;
        EvalSelectItem(&item);
        if (item)
            Add(&select->mItems, item);
    } while (SkipDelimiter(","));
}

void VelaSQLParser::EvalSelectItem(SQLSelectItemNode** result)
{
    SQLScalarExpNode* expression = nullptr;
    EvalScalarExp(&expression);
    if (LastError() != kNoError)
        return;
    EvalAlias(expression);
    *result = Make<SQLSelectItemNode>(expression);
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
    expression->SetAlias(Make<SQLText>(Unquoted(TokenText())));
    GetToken();
}

// The same treatment as a string literal's, which hardly any alias needs.
SQLText VelaSQLParser::Unquoted(const SQLText& text)
{
    const string value = StringLiteralValue(text.View(), text.Encoding(), Escape());
    if (value == text.View())
        return text;
    return {mArena->Copy(value.View()), text.Encoding()};
}

void VelaSQLParser::EvalFromList(SQLSelectNode* select)
{
    do {
        SQLTableRefNode* table = nullptr;
        EvalTableRef(&table);
        if (table)
            Add(&select->mTables, table);
    } while (SkipDelimiter(","));
}

void VelaSQLParser::EvalTableRef(SQLTableRefNode** result)
{
    SQLText name;
    if (!ExpectName(&name, kErrTableNameExpected))
        return;
    *result = Make<SQLTableRefNode>(name);
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
        SQLText name;
        if (!ExpectName(&name, kErrColumnNameExpected))
            return;
        Add(&select->mGroupBy, Make<SQLFieldRefNode>(name));
    } while (SkipDelimiter(","));
}

void VelaSQLParser::EvalOrderBy(SQLSelectNode* select)
{
    if (!ExpectWord("BY", kErrKeywordExpected))
        return;
    do {
        SQLText name;
        if (!ExpectName(&name, kErrColumnNameExpected))
            return;
        const bool isDescending = SkipWord("DESC");
        if (!isDescending)
            SkipWord("ASC");
        Add(&select->mOrderBy, SQLSelectNode::SortKey{Make<SQLFieldRefNode>(name), isDescending});
    } while (SkipDelimiter(","));
}

void VelaSQLParser::EvalInsert(SQLSyntaxNode** result)
{
    GetToken();
    SQLText name;
    if (!ExpectWord("INTO", kErrIntoExpected) || !ExpectName(&name, kErrTableNameExpected))
        return;
    SQLInsertNode* node = Make<SQLInsertNode>(name);
    *result = node;
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
bool VelaSQLParser::EvalColumnNames(ArenaList<SQLText>* names)
{
    do {
        SQLText name;
        if (!ExpectName(&name, kErrColumnNameExpected))
            return false;
        Add(names, name);
    } while (SkipDelimiter(","));
    return ExpectDelimiter(")", kErrCommaOrParenExpected);
}

void VelaSQLParser::EvalInsertValues(SQLInsertNode* insert)
{
    if (!ExpectDelimiter("(", kErrParenExpected))
        return;
    insert->mValues.Reserve(mArena, insert->mColumns.size());   // as many, when all is well
    do {
        SQLScalarExpNode* value = nullptr;
        EvalScalarExp(&value);
        Add(&insert->mValues, value);
    } while (SkipDelimiter(","));
    ExpectDelimiter(")", kErrCommaOrParenExpected);
}

void VelaSQLParser::EvalUpdate(SQLSyntaxNode** result)
{
    GetToken();
    SQLText name;
    if (!ExpectName(&name, kErrTableNameExpected))
        return;
    SQLUpdateNode* node = Make<SQLUpdateNode>(name);
    *result = node;
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
    SQLText column;
    if (!ExpectName(&column, kErrColumnNameExpected))
        return false;
    Add(&update->mColumns, column);
    Add(&update->mValues, static_cast<SQLScalarExpNode*>(nullptr));
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

void VelaSQLParser::EvalDelete(SQLSyntaxNode** result)
{
    GetToken();
    SQLText name;
    if (!ExpectWord("FROM", kErrFromExpected) || !ExpectName(&name, kErrTableNameExpected))
        return;
    SQLDeleteNode* node = Make<SQLDeleteNode>(name);
    if (SkipWord("WHERE"))
        EvalScalarExp(&node->mWhere);
    *result = node;
    ExpectEnd();
}

void VelaSQLParser::EvalCreateTable(SQLSyntaxNode** result)
{
    GetToken();
    SQLText name;
    if (!ExpectName(&name, kErrTableNameExpected))
        return;
    SQLCreateTableNode* node = Make<SQLCreateTableNode>(name);
    *result = node;
    if (!ExpectDelimiter("(", kErrParenExpected))
        return;
    do {
        SQLColumnDefNode* column = nullptr;
        EvalColumnDef(&column);
        if (column)
            Add(&node->mColumns, column);
    } while (SkipDelimiter(","));
    if (ExpectDelimiter(")", kErrCommaOrParenExpected))
        ExpectEnd();
}

void VelaSQLParser::EvalColumnDef(SQLColumnDefNode** result)
{
    *result = Make<SQLColumnDefNode>();
    SQLColumnDefNode* column = *result;
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

void VelaSQLParser::EvalCreateIndex(SQLSyntaxNode** result)
{
    GetToken();
    SQLText name;
    if (!ExpectName(&name, kErrIndexNameExpected))
        return;
    SQLCreateIndexNode* node = Make<SQLCreateIndexNode>(name);
    *result = node;
    if (ExpectWord("ON", kErrKeywordExpected) &&
        ExpectName(&node->mTableName, kErrTableNameExpected) &&
        ExpectDelimiter("(", kErrParenExpected) && EvalColumnNames(&node->mColumns))
        ExpectEnd();
}

void VelaSQLParser::EvalAlterTable(SQLSyntaxNode** result)
{
    GetToken();
    SQLText name;
    if (!ExpectName(&name, kErrTableNameExpected))
        return;
    SQLAlterTableNode* node = Make<SQLAlterTableNode>(name);
    EvalAlterAction(node);
    *result = node;
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
    auto* column = Make<SQLColumnDefNode>();
    if (!ExpectName(&column->mName, kErrColumnNameExpected))
        return false;
    alter->mColumn = column;
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

void VelaSQLParser::EvalDropTable(SQLSyntaxNode** result)
{
    GetToken();
    SQLText name;
    if (!ExpectName(&name, kErrTableNameExpected))
        return;
    SQLDropTableNode* node = Make<SQLDropTableNode>(name);
    node->mBehavior = EvalDropBehavior();
    *result = node;
    ExpectEnd();
}

SQLDropBehavior VelaSQLParser::EvalDropBehavior()
{
    if (SkipWord("RESTRICT"))
        return SQLDropBehavior::kRestrict;
    return SkipWord("CASCADE") ? SQLDropBehavior::kCascade : SQLDropBehavior::kNotWritten;
}

void VelaSQLParser::EvalDropIndex(SQLSyntaxNode** result)
{
    GetToken();
    SQLText specifier;
    if (!ExpectName(&specifier, kErrTableNameExpected))
        return;
    *result = Make<SQLDropIndexNode>(specifier);
    ExpectEnd();
}

}   // namespace vela
