#include "engine/sql/QueryStory.h"

#include <string>

#include "engine/storage/VelaTrans.h"

namespace vela {

namespace {

bool IsDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

bool IsPartOfWord(char letter)
{
    return IsDigit(letter) || letter == '_' || letter == '.' || (letter >= 'A' && letter <= 'Z') ||
           (letter >= 'a' && letter <= 'z');
}

std::string Plural(uint64_t count, const char* what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// Expressions describe a column as "A.3": the letter of its table and its number. This puts the statement's names in their
// place, outside of quotes.
class NameTeller {
public:
    explicit NameTeller(const TracedQuery& traced) : mTraced(traced) {}

    [[nodiscard]] std::string TableName(size_t table) const
    {
        return std::string(mTraced.names[table].View());
    }
    [[nodiscard]] std::string ColumnName(size_t table, uint32_t number) const
    {
        const VelaColumnInfo* column =
            mTraced.query.Tables()[table]->Column(static_cast<long>(number));
        return column ? TableName(table) + "." + std::string(column->name.View()) : std::string();
    }
    [[nodiscard]] std::string Text(const VelaExpr& expr) const
    {
        const string description = ConvertEncoding(expr.Description(), kEncodingUTF8);
        const std::string_view text = description.View();
        std::string told;
        bool isQuoted = false;
        for (size_t i = 0; i < text.size();) {
            const size_t size = isQuoted || (i > 0 && IsPartOfWord(text[i - 1]))
                                    ? 0
                                    : AppendColumn(text.substr(i), &told);
            if (size == 0) {
                isQuoted = isQuoted != (text[i] == '\'');
                told += text[i];
            }
            i += size == 0 ? 1 : size;
        }
        return told;
    }

private:
    // Appends the column that text begins with; how many bytes name it, 0 when none does.
    size_t AppendColumn(std::string_view text, std::string* told) const
    {
        const size_t table = static_cast<size_t>(text[0] - 'A');
        size_t end = 2;
        uint32_t number = 0;
        if (text.size() < 3 || text[1] != '.' || text[0] < 'A' ||
            table >= mTraced.query.Tables().size())
            return 0;
        for (; end < text.size() && IsDigit(text[end]) && end < 8; end++)
            number = number * 10 + static_cast<uint32_t>(text[end] - '0');
        const std::string name = end == 2 ? std::string() : ColumnName(table, number);
        *told += name;
        return name.empty() ? 0 : end;
    }

    const TracedQuery& mTraced;
};

// The index that answers for a column: the first one that begins with it.
std::string IndexOf(VelaTable* table, uint32_t number)
{
    VelaTrans* stored = table->AsStoredTable();
    SimpleVector<string> names;
    if (stored != nullptr)
        stored->GetIndexNames(names);
    for (const string& name : names) {
        if (stored->IndexColumns(name)[0] == stored->Column(static_cast<long>(number))->columnID)
            return std::string(name.View());
    }
    return "?";
}

std::string WayText(const LevelTrace& level, const NameTeller& names, VelaTable* table)
{
    const std::string key = level.keyColumn == 0
                                ? "by row number"
                                : "through the index " + IndexOf(table, level.keyColumn) + " on " +
                                      names.ColumnName(level.table, level.keyColumn);
    switch (level.way) {
        case LevelTrace::Way::kUnread:
            return "not read";
        case LevelTrace::Way::kNamedRows:
            return "looked up " + key;
        case LevelTrace::Way::kLookedUpEach:
            return "looked up " + key + ", for each combination so far";
        default:
            return "all rows";
    }
}

const char* UseText(TermUse use)
{
    switch (use) {
        case TermUse::kNamesRows:
            return "names the rows";
        case TermUse::kOverColumn:
            return "in one pass over the column";
        case TermUse::kHash:
            return "by a hash table";
        default:
            return "row by row";
    }
}

void TellLevel(size_t number, const LevelTrace& level, const NameTeller& names, VelaTable* table,
               SimpleVector<string>* lines)
{
    std::string line = std::to_string(number) + ". " + names.TableName(level.table) + ": " +
                       WayText(level, names, table);
    const bool isCounted =
        level.way == LevelTrace::Way::kAllRows || level.way == LevelTrace::Way::kNamedRows;
    if (isCounted)
        line += ", " + std::to_string(level.rowsKept) + " kept";
    if (level.reversed && level.way != LevelTrace::Way::kUnread)
        line += ", the last one first";
    lines->push_back(string(line, kEncodingUTF8));
    for (const TermTrace& term : level.terms)
        lines->push_back(
            string("   " + names.Text(*term.expr) + ": " + UseText(term.use), kEncodingUTF8));
}

}   // namespace

void TellQuery(const TracedQuery& traced, size_t resultRows, SimpleVector<string>* lines)
{
    const NameTeller names(traced);
    for (const VelaExpr* term : traced.trace.constantTerms)
        lines->push_back(string(names.Text(*term) + ": once, before any row", kEncodingUTF8));
    for (size_t i = 0; i < traced.trace.levels.size(); i++) {
        const LevelTrace& level = traced.trace.levels[i];
        TellLevel(i + 1, level, names, traced.query.Tables()[level.table], lines);
    }
    std::string last = Plural(traced.query.RecSetsConsidered(), "combination") + " looked at";
    if (!traced.node.mGroupBy.empty())
        last += ", grouped";
    if (traced.node.mDistinct)
        last += ", duplicates dropped";
    if (!traced.node.mOrderBy.empty())
        last += ", sorted";
    lines->push_back(string(last + ": " + Plural(resultRows, "row"), kEncodingUTF8));
}

}   // namespace vela
