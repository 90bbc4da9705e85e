#include "engine/sql/VelaSQLParser.h"

#include <iterator>

#include "engine/sql/SQLEndTransactionNode.h"
#include "engine/sql/SQLSetOptionNode.h"

namespace vela {

SQLSyntaxNodePtr VelaSQLParser::Evaluate(const string& statement)
{
    auto memory = std::make_unique<SQLTreeMemory>(statement);
    mArena = &memory->arena;
    Start(statement);
    mNesting = 0;
    mInsidePosition = false;
    GetToken();
    const SQLSyntaxNode* root = EvalStatement();
    mArena = nullptr;
    return root ? SQLSyntaxNodePtr(root, SQLTreeDeleter{memory.release()}) : nullptr;
}

SQLSyntaxNode* VelaSQLParser::EvalStatement()
{
    SQLSyntaxNode* root = nullptr;
    if (IsWord("SELECT")) {
        SQLSelectNode* select = nullptr;
        EvalSelect(&select);
        root = select;
    } else if (IsWord("INSERT")) {
        EvalInsert(&root);
    } else if (IsWord("UPDATE")) {
        EvalUpdate(&root);
    } else if (IsWord("DELETE")) {
        EvalDelete(&root);
    } else if (SkipWord("CREATE")) {
        EvalCreate(&root);
    } else if (SkipWord("ALTER")) {
        if (IsWord("TABLE"))
            EvalAlterTable(&root);
        else
            serror(kErrKeywordExpected);
    } else if (SkipWord("DROP")) {
        EvalDrop(&root);
    } else if (IsWord("COMMIT") || IsWord("ROLLBACK")) {
        root = Make<SQLEndTransactionNode>(IsWord("COMMIT"));
    } else if (IsWord("SET")) {
        EvalSet(&root);
    } else {
        serror(kErrKeywordExpected);
    }
    return root;
}

const char* VelaSQLParser::ErrorMessage(ErrorType kind)
{
    static const char* const kMessages[] = {
        "",
        "SQL Error: keyword expected",
        "SQL Error: table name expected",
        "SQL Error: range variable expected",
        "SQL Error: index name expected",
        "SQL Error: FROM expected",
        "SQL Error: INTO expected",
        "SQL Error: SET expected",
        "SQL Error: unbalanced parentheses",
        "SQL Error: column name expected",
        "SQL Error: comma or parenthesis expected",
        "SQL Error: keyword values expected",
        "SQL Error: parenthesis expected",
        "SQL Error: equals sign expected",
        "SQL Error: assignment value expected",
        "SQL Error: data type expected",
        "SQL Error: datetime literal incomplete",
        "SQL Error: unknown function",
        "SQL Error: feature not supported",
        "SQL Syntax Error",
    };
    const size_t index = static_cast<size_t>(kind);
    return index < std::size(kMessages) ? kMessages[index] : "";
}

void VelaSQLParser::EvalCreate(SQLSyntaxNode** result)
{
    if (IsWord("TABLE"))
        EvalCreateTable(result);
    else if (IsWord("INDEX"))
        EvalCreateIndex(result);
    else
        serror(kErrKeywordExpected);
}

void VelaSQLParser::EvalDrop(SQLSyntaxNode** result)
{
    if (IsWord("TABLE"))
        EvalDropTable(result);
    else if (IsWord("INDEX"))
        EvalDropIndex(result);
    else
        serror(kErrKeywordExpected);
}

void VelaSQLParser::EvalSet(SQLSyntaxNode** result)
{
    GetToken();
    if (!IsWord("ESCAPE")) {
        serror(kErrKeywordExpected);
        return;
    }
    const SQLText name = TokenText();
    *result = Make<SQLSetOptionNode>(name, RestOfStatement());
}

bool VelaSQLParser::SkipWord(std::string_view keyword)
{
    if (!IsWord(keyword))
        return false;
    GetToken();
    return true;
}

bool VelaSQLParser::SkipDelimiter(std::string_view text)
{
    if (!IsDelimiter(text))
        return false;
    GetToken();
    return true;
}

bool VelaSQLParser::ExpectWord(std::string_view keyword, ErrorType kind)
{
    if (SkipWord(keyword))
        return true;
    serror(kind);
    return false;
}

bool VelaSQLParser::ExpectDelimiter(std::string_view text, ErrorType kind)
{
    if (SkipDelimiter(text))
        return true;
    serror(kind);
    return false;
}

bool VelaSQLParser::ExpectName(SQLText* name, ErrorType kind)
{
    if (Kind() != kTokenWord) {
        serror(kind);
        return false;
    }
    *name = TokenText();
    GetToken();
    return true;
}

void VelaSQLParser::ExpectEnd()
{
    if (!IsEnd())
        serror(kErrKeywordExpected);
}

}   // namespace vela
