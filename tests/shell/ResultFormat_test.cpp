#include "shell/ResultFormat.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

VelaValue Text(std::string_view text, VelaDataType type = kTypeString,
               TextEncoding encoding = kEncodingUTF8)
{
    return VelaValue::Text(type, string(text, encoding));
}

std::string WriteRows(OutputMode mode, VelaTable* rows, const Options& options = Options())
{
    StatementResult result;
    result.number = 1;
    result.sqlState = "00000";
    result.rows = rows;
    StringOutput output;
    MakeFormat(mode, options)->WriteResult(result, &output);
    return output.Text();
}

// The transcript of formats shows whole results; here is what a statement can't bring about.
TEST(JsonLinesFormat, WritesOddCellsAsJson)
{
    const struct {
        VelaValue value;
        const char* json;
    } cases[] = {
        {VelaValue::Integer(-2147483647 - 1), "-2147483648"},
        {VelaValue::Double(-0.0), "-0.0"},
        {Text(std::string_view("\0", 1)), "\"\\u0000\""},
        {Text("\xFF\x01"), "{\"hex\": \"ff01\"}"},
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

TEST(CsvFormat, ConvertsTextsAndKeepsOddOnes)
{
    const struct {
        VelaValue value;
        const char* field;
    } cases[] = {
        {Text("K\xF6ln", kTypeString, kEncodingLatin1), "K\xC3\xB6ln"},
        {Text("\xFF"), "\xFF"},
        {Text("", kTypeDate), ""},
    };
    for (const auto& c : cases) {
        const auto rows =
            ResultTable({kTypeNone, kTypeInteger}, {{c.value, VelaValue::Integer(1)}});
        EXPECT_EQ(std::string("a,b\n") + c.field + ",1\n", WriteRows(OutputMode::kCsv, rows.get()));
    }
}

TEST(TableFormat, ShowsBinaryInHexAndNothingBehindTheLastColumn)
{
    Options options;
    options.headers = false;
    options.nullText = "";
    const auto rows =
        ResultTable({kTypeBinary, kTypeString},
                    {{Text(std::string_view("\0\xFF", 2), kTypeBinary), VelaValue()}});
    EXPECT_EQ("00ff\n", WriteRows(OutputMode::kTable, rows.get(), options));
}

}   // namespace
}   // namespace vela::shell
