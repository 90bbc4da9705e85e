#include "tests/query/QueryPair.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>

namespace vela::test {

namespace {

std::string TextOf(const VelaValue& value)
{
    std::ostringstream text;
    text << int{value.GetType()} << (value.IsNull() ? "!" : ":") << value.GetString().View();
    if (IsTextBacked(value.GetType()))
        text << "@" << value.TextEncodingTag();
    if (value.GetType() == kTypeDouble && std::signbit(value.GetDouble()))
        text << "(-)";
    return text.str();
}

std::string TextOf(const ReferenceRow& row)
{
    std::string text;
    for (const VelaValue& value : row.values)
        text += TextOf(value) + " | ";
    if (row.hasSource) {
        text += "from";
        for (const uint32_t rowID : row.source)
            text += " " + std::to_string(rowID);
    }
    return text;
}

ReferenceRow RowOf(VelaTempTable* table, size_t row, size_t tables)
{
    ReferenceRow result;
    for (long column = 0; column < table->QtyColumns(); column++) {
        result.values.emplace_back();
        EXPECT_TRUE(table->GetValue(static_cast<uint32_t>(row), column, &result.values.back()));
    }
    const auto source = table->GetSourceRecSet(static_cast<long>(row));
    result.hasSource = source.has_value();
    for (size_t i = 0; source && i < tables; i++)
        result.source.push_back(source->RowID(i));
    return result;
}

int SortClass(const VelaValue& value)
{
    if (value.GetType() == kTypeDouble)
        return std::isnan(value.GetDouble()) ? -1 : 2;
    return value.GetType() == kTypeInteger ? 1 : 3;
}

// Whether the comparison is an order on these rows: no mixed types, no not-a-number in a key.
bool IsOrderDefined(const ReferenceQuery& query, const std::vector<ReferenceRow>& rows)
{
    for (const long column : query.sortColumns) {
        for (const ReferenceRow& row : rows) {
            const int sortClass = SortClass(row.values[static_cast<size_t>(column)]);
            if (sortClass < 0 ||
                sortClass != SortClass(rows[0].values[static_cast<size_t>(column)]))
                return false;
        }
    }
    return true;
}

std::string Joined(std::vector<std::string> rows, bool inOrder)
{
    if (!inOrder)
        std::sort(rows.begin(), rows.end());
    std::string text;
    for (const std::string& row : rows)
        text += row + "\n";
    return text;
}

std::string Describe(const QueryPair& pair)
{
    std::string text;
    const auto add = [&text](const char* what, const VelaExpr* expr) {
        text += what + std::string(expr ? expr->Description().View() : "none") + "; ";
    };
    for (const VelaExpr* output : pair.reference.outputs)
        add("output ", output);
    add("where ", pair.reference.where);
    for (const VelaExpr* column : pair.reference.groupBy)
        add("group by ", column);
    add("having ", pair.reference.having);
    return text + (pair.reference.distinct ? "distinct" : "");
}

uint32_t FromEnvironment(const char* name, uint32_t otherwise)
{
    const char* text = std::getenv(name);
    return text ? static_cast<uint32_t>(std::strtoul(text, nullptr, 10)) : otherwise;
}

}   // namespace

void ExpectAgreement(QueryPair& pair)
{
    const std::vector<ReferenceRow> expected = RunReference(pair.reference);
    const auto result = pair.query.RunQuery();

    std::vector<std::string> expectedTexts;
    for (const ReferenceRow& row : expected)
        expectedTexts.push_back(TextOf(row));
    std::vector<std::string> texts;
    for (size_t row = 0; row < result->QtyRows(); row++)
        texts.push_back(TextOf(RowOf(result.get(), row, pair.reference.tables.size())));
    const bool inOrder = IsOrderDefined(pair.reference, expected);
    EXPECT_EQ(Joined(expectedTexts, inOrder), Joined(texts, inOrder)) << Describe(pair);
    for (size_t i = 0; i < pair.reference.outputs.size(); i++)
        EXPECT_EQ(pair.reference.outputs[i]->GetType(pair.reference.tables),
                  result->Column(static_cast<long>(i))->Type());
}

void ForEachSeed(uint32_t cases, const std::function<void(uint32_t seed)>& check)
{
    const uint32_t first = FromEnvironment("VELA_QUERY_SEED", 1);
    const uint32_t end = first + FromEnvironment("VELA_QUERY_CASES", cases);
    for (uint32_t seed = first; seed < end && !testing::Test::HasFailure(); seed++) {
        SCOPED_TRACE("VELA_QUERY_SEED=" + std::to_string(seed) + " VELA_QUERY_CASES=1");
        check(seed);
    }
}

}   // namespace vela::test
