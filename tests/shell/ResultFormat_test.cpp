#include "shell/ResultFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

VelaValue Text(std::string_view text, VelaDataType type = kTypeString,
               TextEncoding encoding = kEncodingUTF8)
{
    return VelaValue::Text(type, string(text, encoding));
}

std::string Write(OutputMode mode, const StatementResult& result,
                  const Options& options = Options())
{
    StringOutput output;
    MakeFormat(mode, options)->WriteResult(result, &output);
    return output.Text();
}

std::string WriteRows(OutputMode mode, VelaTable* rows, const Options& options = Options())
{
    StatementResult result;
    result.number = 1;
    result.sqlState = "00000";
    result.rows = rows;
    return Write(mode, result, options);
}

TEST(JsonLinesFormat, WritesTheLineToTheByte)
{
    const auto rows =
        ResultTable({kTypeInteger}, {{VelaValue::Integer(1)}, {VelaValue::Null(kTypeInteger)}});
    StatementResult result;
    result.number = 1;
    result.canonical = string("SELECT a FROM t", kEncodingUTF8);
    result.sqlState = "00000";
    result.rows = rows.get();
    EXPECT_EQ(
        "{\"n\": 1, \"canonical\": \"SELECT a FROM t\", \"sqlstate\": \"00000\", \"message\": "
        "\"\", "
        "\"columns\": [{\"name\": \"a\", \"type\": \"Integer\"}], \"rows\": [[1], [null]]}\n",
        Write(OutputMode::kJsonLines, result));

    StatementResult failure;
    failure.number = 12345678901;
    failure.sqlState = "07000";
    failure.message = string("SQL \"Error\"", kEncodingASCII);
    EXPECT_EQ(
        "{\"n\": 12345678901, \"canonical\": null, \"sqlstate\": \"07000\", \"message\": \"SQL "
        "\\\"Error\\\"\"}\n",
        Write(OutputMode::kJsonLines, failure));
}

TEST(JsonLinesFormat, WritesEachCellByItsOwnType)
{
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        VelaValue value;
        const char* json;
    } cases[] = {
        {VelaValue::Integer(-2147483647 - 1), "-2147483648"},
        {VelaValue::Double(5), "5.0"},
        {VelaValue::Double(-20), "-20.0"},
        {VelaValue::Double(0.1), "0.1"},
        {VelaValue::Double(-0.0), "-0.0"},
        {VelaValue::Double(1e300), "1.0e+300"},
        {VelaValue::Double(2.5e-7), "2.5e-7"},
        {VelaValue::Double(999999999999999), "999999999999999.0"},
        {VelaValue::Double(std::nan("")), "\"nan\""},
        {VelaValue::Double(inf), "\"inf\""},
        {VelaValue::Double(-inf), "\"-inf\""},
        {VelaValue::Boolean(true), "true"},
        {VelaValue::Boolean(false), "false"},
        {VelaValue::Null(kTypeString), "null"},
        {VelaValue(), "null"},
        {Text(""), "\"\""},
        {Text("a\"b\\c"), "\"a\\\"b\\\\c\""},
        {Text("a\nb\x01"), "\"a\\nb\\u0001\""},
        {Text(std::string_view("\0", 1)), "\"\\u0000\""},
        {Text("K\xC3\xB6ln/"), "\"K\xC3\xB6ln/\""},
        {Text("\x7F"), "\"\x7F\""},
        {Text("\xFF\x01"), "{\"hex\": \"ff01\"}"},
        {Text("1994-07-09", kTypeDate), "\"1994-07-09\""},
        {Text("12:34:56", kTypeTime), "\"12:34:56\""},
        {Text("1994-07-09 12:34:56", kTypeTimestamp), "\"1994-07-09 12:34:56\""},
        {Text(std::string_view("\0\xFF", 2), kTypeBinary), "{\"hex\": \"00ff\"}"},
        {Text("ab", kTypeBinary), "{\"hex\": \"6162\"}"},
        {Text("", kTypeBinary), "{\"hex\": \"\"}"},
        {Text("K\xF6ln", kTypeString, kEncodingLatin1), "\"K\xC3\xB6ln\""},
        {Text("a", kTypeString, kEncodingUTF16), "{\"hex\": \"61\"}"},
        {Text("\xC3\xB6", kTypeString, kEncodingASCII), "\"\xC3\xB6\""},
    };
    for (const auto& c : cases) {
        const auto rows = ResultTable({kTypeNone}, {{c.value}});
        const std::string line = WriteRows(OutputMode::kJsonLines, rows.get());
        EXPECT_NE(std::string::npos, line.find(std::string("\"rows\": [[") + c.json + "]]}\n"))
            << line;
        EXPECT_TRUE(nlohmann::json::accept(line)) << line;
    }
}

TEST(JsonLinesFormat, NamesEveryType)
{
    const auto rows = ResultTable({kTypeInteger, kTypeString, kTypeDouble, kTypeDate, kTypeTime,
                                   kTypeTimestamp, kTypeBoolean, kTypeBinary, kTypeNone},
                                  {});
    const nlohmann::json line =
        nlohmann::json::parse(WriteRows(OutputMode::kJsonLines, rows.get()));
    const char* const types[] = {"Integer",   "String",  "Double", "Date", "Time",
                                 "Timestamp", "Boolean", "Binary", "None"};
    for (size_t i = 0; i < std::size(types); i++)
        EXPECT_EQ(types[i], line["columns"][i]["type"]);
    EXPECT_TRUE(line["rows"].is_array() && line["rows"].empty());
}

TEST(CsvFormat, QuotesWhatWouldBeReadOtherwise)
{
    const struct {
        VelaValue value;
        const char* nullText;
        const char* field;
    } cases[] = {
        {Text("abc"), "", "abc"},
        {Text(""), "", "\"\""},
        {VelaValue::Null(kTypeString), "", ""},
        {VelaValue::Null(kTypeString), "NULL", "NULL"},
        {Text("NULL"), "NULL", "\"NULL\""},
        {Text(""), "NULL", "\"\""},
        {Text("a,b"), "", "\"a,b\""},
        {Text("a\"b"), "", "\"a\"\"b\""},
        {Text("\""), "", "\"\"\"\""},
        {Text("a\nb"), "", "\"a\nb\""},
        {Text("a\rb"), "", "\"a\rb\""},
        {Text(" a"), "", "\" a\""},
        {Text("\ta"), "", "\"\ta\""},
        {Text("a\t"), "", "\"a\t\""},
        {Text("a b;c"), "", "a b;c"},
        {VelaValue::Integer(-5), "", "-5"},
        {VelaValue::Double(2.5), "", "2.5"},
        {VelaValue::Boolean(true), "", "TRUE"},
        {Text("1994-07-09", kTypeDate), "", "1994-07-09"},
        {Text("", kTypeDate), "", ""},
        {Text("", kTypeDate), "NULL", ""},
        {Text("K\xF6ln", kTypeString, kEncodingLatin1), "", "K\xC3\xB6ln"},
        {Text("\xFF"), "", "\xFF"},
    };
    for (const auto& c : cases) {
        Options options;
        options.nullText = c.nullText;
        const auto rows =
            ResultTable({kTypeNone, kTypeInteger}, {{c.value, VelaValue::Integer(1)}});
        EXPECT_EQ(std::string("a,b\n") + c.field + ",1\n",
                  WriteRows(OutputMode::kCsv, rows.get(), options));
    }
}

TEST(CsvFormat, LeavesHeadersOut)
{
    Options options;
    options.headers = false;
    const auto rows = ResultTable({kTypeInteger}, {{VelaValue::Integer(1)}});
    EXPECT_EQ("1\n", WriteRows(OutputMode::kCsv, rows.get(), options));
}

TEST(TableFormat, AlignsByWidthNumbersToTheRight)
{
    const auto rows = ResultTable(
        {kTypeString, kTypeInteger, kTypeNone, kTypeString},
        {{Text("K\xC3\xB6ln"), VelaValue::Integer(5), VelaValue::Double(1.5), Text("x")},
         {Text("\xE6\x97\xA5\xE6\x9C\xAC\xE6\xB5\xB7"), VelaValue::Integer(-12), Text("two"),
          Text("")},
         {Text("a\nb"), VelaValue::Null(kTypeInteger), VelaValue(), Text("last one")}});
    EXPECT_EQ(
        "a          b  c     d\n"
        "------  ----  ----  --------\n"
        "K\xC3\xB6ln       5  1.5   x\n"
        "\xE6\x97\xA5\xE6\x9C\xAC\xE6\xB5\xB7   -12  two\n"
        "a\\nb    NULL  NULL  last one\n",
        WriteRows(OutputMode::kTable, rows.get()));
}

TEST(TableFormat, HeedsItsOptionsAndShowsBinaryInHex)
{
    Options options;
    options.headers = false;
    options.nullText = "";
    const auto rows =
        ResultTable({kTypeBinary, kTypeString},
                    {{Text(std::string_view("\0\xFF", 2), kTypeBinary), VelaValue()}});
    EXPECT_EQ("00ff\n", WriteRows(OutputMode::kTable, rows.get(), options));
    const auto empty = ResultTable({kTypeInteger, kTypeString}, {});
    EXPECT_EQ("a  b\n-  -\n", WriteRows(OutputMode::kTable, empty.get()));
}

TEST(TableFormat, StatementsWithoutRowsPrintNothing)
{
    StatementResult result;
    result.sqlState = "00000";
    EXPECT_EQ("", Write(OutputMode::kTable, result));
    EXPECT_EQ("", Write(OutputMode::kCsv, result));
}

}   // namespace
}   // namespace vela::shell
