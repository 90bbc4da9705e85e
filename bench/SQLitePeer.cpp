#include "bench/SQLitePeer.h"

namespace vela::bench {

namespace {

void AddValue(sqlite3_stmt* statement, int column, AnswerDigest* digest)
{
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL:
            digest->AddNull();
            return;
        case SQLITE_INTEGER:
            digest->AddNumber(static_cast<double>(sqlite3_column_int64(statement, column)));
            return;
        case SQLITE_FLOAT:
            digest->AddNumber(sqlite3_column_double(statement, column));
            return;
        default: {
            const void* text = sqlite3_column_text(statement, column);
            const int size = sqlite3_column_bytes(statement, column);
            digest->AddText({static_cast<const char*>(text), static_cast<size_t>(size)});
        }
    }
}

int BindText(sqlite3_stmt* statement, int number, std::string_view text)
{
    return sqlite3_bind_text(statement, number, text.data(), static_cast<int>(text.size()),
                             SQLITE_STATIC);
}

void BindCell(sqlite3_stmt* statement, int number, const Cell& cell)
{
    if (const int32_t* integer = std::get_if<int32_t>(&cell))
        sqlite3_bind_int(statement, number, *integer);
    else if (const double* value = std::get_if<double>(&cell))
        sqlite3_bind_double(statement, number, *value);
    else
        BindText(statement, number, std::get<std::string>(cell));
}

}   // namespace

void SQLitePeer::Open(const std::string& folder)
{
    Check(sqlite3_open((folder + "/data.sqlite").c_str(), &mDatabase), "open " + folder);
    Execute(mJournal == Journal::kWAL ? "PRAGMA journal_mode = WAL"
                                      : "PRAGMA journal_mode = DELETE");
    Execute("PRAGMA synchronous = FULL");
    Execute("PRAGMA case_sensitive_like = ON");
    if (mCacheMiB > 0)
        Execute("PRAGMA cache_size = " + std::to_string(-1024 * mCacheMiB));
}

void SQLitePeer::Close()
{
    sqlite3_finalize(mPrepared);
    mPrepared = nullptr;
    Check(sqlite3_close(mDatabase), "close");
    mDatabase = nullptr;
}

void SQLitePeer::Execute(const std::string& sql)
{
    Check(sqlite3_exec(mDatabase, sql.c_str(), nullptr, nullptr, nullptr), sql);
}

Answer SQLitePeer::Query(const std::string& sql, RowOrder order)
{
    AnswerDigest digest(order);
    sqlite3_stmt* statement = Compile(sql);
    ReadRows(statement, sql, &digest);
    sqlite3_finalize(statement);
    return digest.Result();
}

double SQLitePeer::QueryNumber(const std::string& sql)
{
    sqlite3_stmt* statement = Compile(sql);
    if (sqlite3_step(statement) != SQLITE_ROW)
        Die("no answer to " + sql);
    const double number = sqlite3_column_double(statement, 0);
    sqlite3_finalize(statement);
    return number;
}

void SQLitePeer::CreateTable(const std::string& name, const std::string& columns)
{
    Execute("CREATE TABLE " + name + " (_rowid INTEGER PRIMARY KEY, " + columns + ")");
}

void SQLitePeer::DropIndex(const std::string&, const std::string& index)
{
    Execute("DROP INDEX " + index);
}

void SQLitePeer::AddRows(const std::string& table, const std::vector<Row>& rows)
{
    std::string sql = "INSERT INTO " + table + " VALUES (NULL";
    for (size_t i = 0; i < rows.front().size(); i++)
        sql += ", ?";
    sqlite3_stmt* insert = Compile(sql + ")");
    for (const Row& cells : rows) {
        for (size_t i = 0; i < cells.size(); i++)
            BindCell(insert, static_cast<int>(i) + 1, cells[i]);
        if (sqlite3_step(insert) != SQLITE_DONE)
            Check(SQLITE_ERROR, "insert a row");
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
}

void SQLitePeer::Prepare(const std::string& sql)
{
    sqlite3_finalize(mPrepared);
    mPrepared = Compile(sql);
}

void SQLitePeer::ReadBound(int64_t key, AnswerDigest* digest)
{
    Check(sqlite3_bind_int64(mPrepared, 1, key), "bind a number");
    ReadRows(mPrepared, "run a prepared statement", digest);
    sqlite3_reset(mPrepared);
}

void SQLitePeer::ReadBound(std::string_view key, AnswerDigest* digest)
{
    Check(BindText(mPrepared, 1, key), "bind a text");
    ReadRows(mPrepared, "run a prepared statement", digest);
    sqlite3_reset(mPrepared);
}

sqlite3_stmt* SQLitePeer::Compile(const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(mDatabase, sql.c_str(), -1, &statement, nullptr), sql);
    return statement;
}

void SQLitePeer::Check(int result, const std::string& what)
{
    if (result != SQLITE_OK)
        Die("SQLite can't " + what + ": " + sqlite3_errmsg(mDatabase));
}

void SQLitePeer::ReadRows(sqlite3_stmt* statement, const std::string& what, AnswerDigest* digest)
{
    const int columns = sqlite3_column_count(statement);
    int step = sqlite3_step(statement);
    for (; step == SQLITE_ROW; step = sqlite3_step(statement)) {
        for (int column = 0; column < columns; column++)
            AddValue(statement, column, digest);
        digest->EndRow();
    }
    if (step != SQLITE_DONE)
        Check(step, what);
}

}   // namespace vela::bench
