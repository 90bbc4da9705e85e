// Any bytes as statements: each line of the input is parsed, printed and run. The first byte is the
// escape character of the parse; 0 is none.
//
// Nothing is ever committed, so the folder that the databases are opened on stays empty.

#include <stdlib.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "engine/sql/SQLInsertNode.h"
#include "engine/sql/VelaSQL.h"
#include "engine/sql/VelaSQLParser.h"
#include "engine/storage/VelaDatabase.h"
#include "engine/storage/VelaFolderFileAccess.h"

namespace {

using vela::string;

constexpr size_t kMostStatements = 8;
constexpr size_t kMostCombinations = 20000;   // of rows in a SELECT: more is slow and finds nothing

const char* const kSetup[] = {
    "CREATE TABLE t (a integer, b string, c double, d date)",
    "CREATE TABLE u (a integer, e boolean)",
    "CREATE INDEX i ON t (a, b)",
    "INSERT INTO t VALUES (1, 'one', 1.5, '1994-07-09')",
    "INSERT INTO t VALUES (2, 'two', -0.5, '2020-01-01')",
    "INSERT INTO t (b) VALUES ('left out')",
    "INSERT INTO u VALUES (1, TRUE)",
    "INSERT INTO u VALUES (2, FALSE)",
};

// A folder that lives as long as the process.
class Folder {
public:
    Folder()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "vela_fuzz_XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            abort();
        mPath = pattern;
    }
    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    [[nodiscard]] vela::FileLocator Locator() const { return vela::FileLocator(mPath.c_str()); }

private:
    std::string mPath;
};

const vela::SQLSelectNode* SelectOf(const vela::SQLSyntaxNode& tree)
{
    if (tree.IsSelect())
        return static_cast<const vela::SQLSelectNode*>(&tree);
    if (tree.IsInsert())
        return static_cast<const vela::SQLInsertNode&>(tree).mSelect;
    return nullptr;
}

bool IsSmall(const vela::SQLSyntaxNode& tree, vela::VelaDatabase& database)
{
    const vela::SQLSelectNode* select = SelectOf(tree);
    size_t combinations = 1;
    for (size_t i = 0; select && i < select->mTables.size(); i++) {
        const long position = database.FindOpenTable(select->mTables[i]->mTableName.View());
        if (position >= 0)
            combinations *= database.OpenTables()[static_cast<size_t>(position)]->QtyRows() + 1;
        if (combinations > kMostCombinations)
            return false;
    }
    return true;
}

// Whether to run what was parsed.
bool ParseAndPrint(const string& statement, char escape, vela::VelaDatabase& database)
{
    vela::VelaSQLParser parser(escape);
    const vela::SQLSyntaxNodePtr tree = parser.Evaluate(statement);
    if (parser.ErrorOffset() > statement.length())
        abort();
    if (!tree && parser.LastError() == vela::VelaSQLParser::kNoError)
        abort();
    if (!tree)
        return false;
    const string description = tree->Description();
    if (parser.LastError() != vela::VelaSQLParser::kNoError)
        return false;
    return !tree->IsEndTransaction() && IsSmall(*tree, database);
}

void Run(const string& statement, vela::VelaDatabase& database)
{
    vela::VelaStatus status;
    const auto result = vela::VelaSQLQuery(statement, database, &status);
    vela::VelaSQLExecute(statement, database, &status);
    if (status.Description().empty())
        abort();
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Folder folder;
    if (size == 0)
        return 0;
    vela::VelaDatabase database(std::make_unique<vela::VelaFolderFileAccess>(
        folder.Locator(), vela::VelaFolderFileAccess::Mode::kReadWrite));
    database.UpdateClock();
    for (const char* statement : kSetup)
        vela::VelaSQLExecute(statement, database, nullptr);

    const char escape = static_cast<char>(data[0]);
    if (escape != '\0')
        database.SetEscapeOption(string(&escape, 1, vela::kEncodingASCII));
    std::string_view rest(reinterpret_cast<const char*>(data + 1), size - 1);
    for (size_t i = 0; i < kMostStatements && !rest.empty(); i++) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(line.size() < rest.size() ? line.size() + 1 : line.size());
        const string statement(line, vela::kEncodingUTF8);
        if (ParseAndPrint(statement, escape, database))
            Run(statement, database);
    }
    database.Rollback();
    return 0;
}
