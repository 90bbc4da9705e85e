#include "tests/storage/DatabaseContents.h"

#include <algorithm>

#include "tests/storage/StorageTesting.h"

namespace vela {

namespace {

Texts IndexNames(VelaTable* table)
{
    SimpleVector<string> names;
    table->GetIndexNames(names);
    Texts texts;
    for (const string& name : names)
        texts.emplace_back(name.View());
    std::sort(texts.begin(), texts.end());
    return texts;
}

bool Holds(const SimpleVector<uint32_t>& rows, uint32_t rowID)
{
    return std::find(rows.begin(), rows.end(), rowID) != rows.end();
}

// Whether the value that an index gives is the record's, and is found by it.
bool IndexesAgree(VelaTrans* table, uint32_t rowID, long number)
{
    VelaValue value;
    VelaValue stored;
    SimpleVector<uint32_t> rows;
    if (!table->GetValue(rowID, number, &value) || !table->GetValue(rowID, number, &stored, false))
        return false;
    if (ValueText(value) != ValueText(stored))
        return false;
    return !table->FindRowsByIndex(number, stored, &rows) || Holds(rows, rowID);
}

}   // namespace

Texts Contents(VelaDatabase& database)
{
    Texts contents;
    for (VelaTable* table : database.OpenTables()) {
        std::string head = "table " + std::string(table->TableName().View());
        for (long i = 1; i < table->QtyColumns(); i++)
            head += " " + std::string(table->Column(i)->name.View()) + ":" +
                    ValueText(table->Column(i)->defaultValue);
        contents.push_back(head);
        for (const std::string& name : IndexNames(table)) {
            contents.push_back("index " + name);
            for (const uint32_t columnID :
                 table->AsStoredTable()->IndexColumns(string(name, kEncodingASCII)))
                contents.back() += " " + std::to_string(columnID);
        }
        for (const std::string& row : TableText(table))
            contents.push_back(row);
    }
    return contents;
}

std::string IndexFault(VelaDatabase& database)
{
    for (VelaTable* table : database.OpenTables())
        for (const uint32_t rowID : RowIDsOf(table))
            for (long number = 1; number < table->QtyColumns(); number++)
                if (!IndexesAgree(table->AsStoredTable(), rowID, number))
                    return std::string(table->TableName().View()) + " row " +
                           std::to_string(rowID) + ", column " + std::to_string(number);
    return "";
}

Texts DescribedFiles(VelaDatabase& database)
{
    Texts names;
    for (VelaTable* table : database.OpenTables()) {
        const std::string name(table->TableName().View());
        names.push_back(name + ".dat");
        names.push_back(name + ".map");
        for (const std::string& index : IndexNames(table))
            names.push_back(name + "." + index + ".idx");
    }
    std::sort(names.begin(), names.end());
    return names;
}

}   // namespace vela
