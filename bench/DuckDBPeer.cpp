#include "bench/DuckDBPeer.h"

#include <chrono>
#include <cstdio>

namespace vela::bench {

namespace {

using Type = DuckDBLibrary::Type;

// Days since 1970-01-01 as Vela and SQLite give a date: text.
void AddDate(int32_t days, AnswerDigest* digest)
{
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{days}}};
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                  unsigned{date.month()}, unsigned{date.day()});
    digest->AddText(text);
}

void AddText(const DuckDBLibrary::Text& text, AnswerDigest* digest)
{
    constexpr uint32_t kInPlace = 12;
    digest->AddText({text.size <= kInPlace ? text.start : text.bytes, text.size});
}

double ToDouble(const DuckDBLibrary::Hugeint& number)
{
    constexpr double kTwoTo64 = 18446744073709551616.0;
    return static_cast<double>(number.upper) * kTwoTo64 + static_cast<double>(number.lower);
}

void AddValue(Type type, const void* data, uint64_t row, AnswerDigest* digest)
{
    switch (type) {
        case Type::kInteger:
            return digest->AddNumber(static_cast<const int32_t*>(data)[row]);
        case Type::kBigint:
            return digest->AddNumber(static_cast<double>(static_cast<const int64_t*>(data)[row]));
        case Type::kDouble:
            return digest->AddNumber(static_cast<const double*>(data)[row]);
        case Type::kHugeint:
            return digest->AddNumber(
                ToDouble(static_cast<const DuckDBLibrary::Hugeint*>(data)[row]));
        case Type::kDate:
            return AddDate(static_cast<const int32_t*>(data)[row], digest);
        case Type::kVarchar:
            return AddText(static_cast<const DuckDBLibrary::Text*>(data)[row], digest);
    }
    Die("DuckDB answers in a type that is not known here: " + std::to_string(type));
}

}   // namespace

void DuckDBPeer::Open(const std::string& folder)
{
    Check(mLibrary.open((folder + "/data.duckdb").c_str(), &mDatabase), "open " + folder);
    Check(mLibrary.connect(mDatabase, &mConnection), "connect to " + folder);
    Execute("SET threads = 1");
}

void DuckDBPeer::Close()
{
    if (mConnection != nullptr)
        mLibrary.disconnect(&mConnection);
    if (mDatabase != nullptr)
        mLibrary.close(&mDatabase);
}

void DuckDBPeer::Execute(const std::string& sql)
{
    DuckDBLibrary::Result result = Run(sql);
    mLibrary.destroy_result(&result);
}

Answer DuckDBPeer::Query(const std::string& sql, RowOrder order)
{
    AnswerDigest digest(order);
    DuckDBLibrary::Result result = Run(sql);
    std::vector<Type> types(mLibrary.column_count(&result));
    for (uint64_t column = 0; column < types.size(); column++)
        types[column] = mLibrary.column_type(&result, column);
    while (Handle chunk = mLibrary.fetch_chunk(result)) {
        DigestChunk(chunk, types, &digest);
        mLibrary.destroy_data_chunk(&chunk);
    }
    mLibrary.destroy_result(&result);
    return digest.Result();
}

double DuckDBPeer::QueryNumber(const std::string& sql)
{
    DuckDBLibrary::Result result = Run("SELECT CAST((" + sql + ") AS DOUBLE)");
    Handle chunk = mLibrary.fetch_chunk(result);
    if (chunk == nullptr)
        Die("no answer to " + sql);
    const double number = *static_cast<const double*>(
        mLibrary.vector_get_data(mLibrary.data_chunk_get_vector(chunk, 0)));
    mLibrary.destroy_data_chunk(&chunk);
    mLibrary.destroy_result(&result);
    return number;
}

// The sequence numbers the rows that statements add.
void DuckDBPeer::CreateTable(const std::string& name, const std::string& columns)
{
    Execute("CREATE SEQUENCE rows_of_" + name);
    Execute("CREATE TABLE " + name + " (_rowid integer DEFAULT nextval('rows_of_" + name + "'), " +
            columns + ")");
}

void DuckDBPeer::DropIndex(const std::string&, const std::string& index)
{
    Execute("DROP INDEX " + index);
}

void DuckDBPeer::AddRows(const std::string& table, const std::vector<Row>& rows)
{
    Handle appender = nullptr;
    Check(mLibrary.appender_create(mConnection, nullptr, table.c_str(), &appender),
          "append to " + table);
    int32_t& rowCount = mRowCounts[table];
    for (const Row& cells : rows) {
        Check(mLibrary.append_int32(appender, ++rowCount), "append a number");
        for (const Cell& cell : cells)
            Append(appender, cell);
        Check(mLibrary.appender_end_row(appender), "append a row");
    }
    Check(mLibrary.appender_destroy(&appender), "append to " + table);
}

DuckDBLibrary::Result DuckDBPeer::Run(const std::string& sql)
{
    DuckDBLibrary::Result result;
    if (mLibrary.query(mConnection, sql.c_str(), &result) != 0)
        Die("DuckDB can't " + sql + ": " + mLibrary.result_error(&result));
    return result;
}

void DuckDBPeer::Check(int result, const std::string& what) const
{
    if (result != 0)
        Die("DuckDB can't " + what);
}

void DuckDBPeer::Append(Handle appender, const Cell& cell) const
{
    if (const int32_t* integer = std::get_if<int32_t>(&cell))
        return Check(mLibrary.append_int32(appender, *integer), "append a number");
    if (const double* number = std::get_if<double>(&cell))
        return Check(mLibrary.append_double(appender, *number), "append a number");
    const std::string& text = std::get<std::string>(cell);
    Check(mLibrary.append_varchar_length(appender, text.data(), text.size()), "append a text");
}

void DuckDBPeer::DigestChunk(Handle chunk, const std::vector<Type>& types,
                             AnswerDigest* digest) const
{
    struct Column {
        const void* data;
        const uint64_t* validity;
    };
    std::vector<Column> columns;
    for (uint64_t column = 0; column < types.size(); column++) {
        const Handle vector = mLibrary.data_chunk_get_vector(chunk, column);
        columns.push_back({mLibrary.vector_get_data(vector), mLibrary.vector_get_validity(vector)});
    }
    const uint64_t rows = mLibrary.data_chunk_get_size(chunk);
    for (uint64_t row = 0; row < rows; row++) {
        for (size_t column = 0; column < columns.size(); column++) {
            const uint64_t* validity = columns[column].validity;
            if (validity != nullptr && (validity[row / 64] >> row % 64 & 1) == 0)
                digest->AddNull();
            else
                AddValue(types[column], columns[column].data, row, digest);
        }
        digest->EndRow();
    }
}

}   // namespace vela::bench
