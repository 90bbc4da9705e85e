#include "shell/DatabaseScript.h"

#include <algorithm>
#include <string>

#include "shell/CellText.h"
#include "shell/DialectNames.h"
#include "shell/DisplayText.h"
#include "shell/Literal.h"

namespace vela::shell {

namespace {

struct ScriptColumn {
    long number;   // in the table
    std::string ownName;
    // In the script; another than its own where that is unusable, or is there twice.
    std::string name;
};

std::string NameText(const string& name)
{
    return std::string(TextAsUtf8(name).text.View());
}

// As the Integer that the column _rowid reads as.
std::string RowIDText(uint32_t rowID)
{
    return std::to_string(static_cast<int32_t>(rowID));
}

// Whether an absent value reads as CREATE TABLE would have it: as the conversion of an empty text.
bool HasPlainDefault(const VelaColumnInfo& column)
{
    const VelaValue& value = column.defaultValue;
    if (value.IsNull())
        return false;
    return IsTextBacked(value.GetType()) ? value.TextView().empty() : value.GetDouble() == 0.0;
}

// The statements that rebuild one table.
class TableScript {
public:
    TableScript(VelaTrans* table, Output* output);

    void WriteCreateTable() const;
    void WriteRows() const;
    void WriteCreateIndexes() const;
    // Columns that had to have other names until now get their own.
    void WriteRenames() const;
    [[nodiscard]] bool HasRenames() const;

private:
    [[nodiscard]] bool HasRename(const ScriptColumn& column) const;
    [[nodiscard]] std::string NameOfColumnID(uint32_t columnID) const;
    void WriteColumnComments() const;
    void WriteRow(uint32_t rowID, bool isNextRowID) const;
    void WriteLastRowID(uint32_t largestRowID) const;
    void WriteComment(const std::string& text) const { mOutput->Write("-- " + text + "\n"); }

    VelaTrans* mTable;
    Output* mOutput;
    std::string mName;
    bool mIsSayable;
    std::vector<ScriptColumn> mColumns;
};

TableScript::TableScript(VelaTrans* table, Output* output)
    : mTable(table),
      mOutput(output),
      mName(NameText(table->TableName())),
      mIsSayable(IsUsableName(mName))
{
    std::vector<std::string> ownNames;
    for (long i = 1; i < table->QtyColumns(); i++)
        ownNames.push_back(NameText(table->Column(i)->name));
    const std::vector<std::string> usableNames = UsableNames(ownNames, true);
    for (size_t i = 0; i < ownNames.size(); i++)
        mColumns.push_back({static_cast<long>(i) + 1, ownNames[i], usableNames[i]});
}

void TableScript::WriteCreateTable() const
{
    if (!mIsSayable) {
        WriteComment("Table " + ShownText(mName) + " is left out: a statement can't say its name.");
        return;
    }
    WriteColumnComments();
    std::string columns;
    for (const ScriptColumn& column : mColumns) {
        const char* type = DataTypeName(mTable->Column(column.number)->Type());
        columns += (columns.empty() ? "" : ", ") + column.name + " " + (type ? type : "String");
    }
    mOutput->Write("CREATE TABLE " + mName + " (" + columns + ");\n");
}

void TableScript::WriteColumnComments() const
{
    bool idsAreInOrder = mTable->NextUnusedColumnID() == mColumns.size() + 1;
    for (const ScriptColumn& column : mColumns) {
        const VelaColumnInfo& info = *mTable->Column(column.number);
        const std::string place = "Column " + std::to_string(column.number) + " of " + mName;
        if (column.name != column.ownName && !HasRename(column))
            WriteComment(place + " is called " + column.name + ": a statement can't say " +
                         ShownText(column.ownName) + ".");
        if (!HasPlainDefault(info))
            WriteComment(place + " loses its default, " +
                         ShownText(info.defaultValue.GetSaveString().View()) + ".");
        idsAreInOrder &= info.columnID == static_cast<uint32_t>(column.number);
    }
    if (!idsAreInOrder)
        WriteComment("The columns of " + mName + " get new column ids, from 1 in their order.");
}

void TableScript::WriteRows() const
{
    if (!mIsSayable)
        return;
    SimpleVector<uint32_t> rowIDs;
    mTable->GetRowIDs(&rowIDs);
    uint32_t largest = 0;
    for (const uint32_t rowID : rowIDs) {
        WriteRow(rowID, rowID == largest + 1);
        largest = std::max(largest, rowID);
    }
    WriteLastRowID(largest);
}

// isNextRowID: the table will give the row this id by itself. Without "_rowid" the stored record
// is as it was.
void TableScript::WriteRow(uint32_t rowID, bool isNextRowID) const
{
    std::string columns;
    std::string values;
    bool isComplete = true;
    VelaValue value;
    for (const ScriptColumn& column : mColumns) {
        value.SetNull(kTypeNone);
        if (!mTable->GetValue(rowID, column.number, &value))
            WriteComment("Row " + RowIDText(rowID) + " of " + mName + " can't be read in column " +
                         column.name + ".");
        const Literal literal = LiteralOf(value);
        if (!literal.loss.empty())
            WriteComment("Row " + RowIDText(rowID) + " of " + mName + " loses in column " +
                         column.name + " " + literal.loss);
        isComplete &= !literal.text.empty();
        if (literal.text.empty())
            continue;
        columns += (columns.empty() ? "" : ", ") + column.name;
        values += (values.empty() ? "" : ", ") + literal.text;
    }
    if (!isNextRowID || values.empty()) {
        columns = "_rowid" + (columns.empty() ? "" : ", " + columns);
        values = RowIDText(rowID) + (values.empty() ? "" : ", " + values);
        isComplete = false;
    }
    mOutput->Write("INSERT INTO " + mName);
    if (!isComplete)
        mOutput->Write(" (" + columns + ")");
    mOutput->Write(" VALUES (" + values + ");\n");
}

// Row ids are never handed out twice, those of deleted rows neither: a row that comes and goes
// keeps them used.
void TableScript::WriteLastRowID(uint32_t largestRowID) const
{
    const uint32_t last = mTable->NextUnusedRowID() - 1;
    if (last <= largestRowID)
        return;
    mOutput->Write("INSERT INTO " + mName + " (_rowid) VALUES (" + RowIDText(last) + ");\n");
    mOutput->Write("DELETE FROM " + mName + " WHERE _rowid = " + RowIDText(last) + ";\n");
}

void TableScript::WriteCreateIndexes() const
{
    if (!mIsSayable)
        return;
    SimpleVector<string> names;
    mTable->GetIndexNames(names);
    for (const string& name : names) {
        const std::string nameText = NameText(name);
        if (!IsUsableName(nameText)) {
            WriteComment("Index " + ShownText(nameText) + " of " + mName +
                         " is left out: a statement can't say its name.");
            continue;
        }
        std::string columns;
        for (const uint32_t columnID : mTable->IndexColumns(name))
            columns += (columns.empty() ? "" : ", ") + NameOfColumnID(columnID);
        mOutput->Write("CREATE INDEX " + nameText + " ON " + mName + " (" + columns + ");\n");
    }
}

std::string TableScript::NameOfColumnID(uint32_t columnID) const
{
    const long number = mTable->FindColumnNumber(columnID);
    return number <= 0 ? "_rowid" : mColumns[static_cast<size_t>(number) - 1].name;
}

bool TableScript::HasRename(const ScriptColumn& column) const
{
    return mIsSayable && column.name != column.ownName && IsUsableName(column.ownName);
}

bool TableScript::HasRenames() const
{
    return std::any_of(mColumns.begin(), mColumns.end(),
                       [this](const ScriptColumn& column) { return HasRename(column); });
}

void TableScript::WriteRenames() const
{
    for (const ScriptColumn& column : mColumns)
        if (HasRename(column))
            mOutput->Write("ALTER TABLE " + mName + " RENAME " + column.name + " TO " +
                           column.ownName + ";\n");
}

std::vector<TableScript> ScriptsOf(const std::vector<VelaTrans*>& tables, Output* output)
{
    std::vector<TableScript> scripts;
    scripts.reserve(tables.size());
    for (VelaTrans* table : tables)
        scripts.emplace_back(table, output);
    return scripts;
}

}   // namespace

std::vector<VelaTrans*> UserTables(VelaDatabase& database)
{
    std::vector<VelaTrans*> tables;
    for (VelaTable* table : database.OpenTables()) {
        VelaTrans* stored = table->AsStoredTable();
        if (stored && stored != database.Schema())
            tables.push_back(stored);
    }
    return tables;
}

void WriteSchemaScript(const std::vector<VelaTrans*>& tables, Output* output)
{
    for (const TableScript& script : ScriptsOf(tables, output)) {
        script.WriteCreateTable();
        script.WriteCreateIndexes();
        script.WriteRenames();
    }
}

void WriteDumpScript(const std::vector<VelaTrans*>& tables, Output* output)
{
    const std::vector<TableScript> scripts = ScriptsOf(tables, output);
    output->Write(
        "SET ESCAPE;\n");   // no byte in the texts below is to be taken for an escape character
    for (const TableScript& script : scripts)
        script.WriteCreateTable();
    for (const TableScript& script : scripts)
        script.WriteRows();
    for (const TableScript& script : scripts)
        script.WriteCreateIndexes();
    output->Write("COMMIT;\n");
    // Only now, as ALTER TABLE refuses a table with open changes.
    bool isRenamed = false;
    for (const TableScript& script : scripts) {
        script.WriteRenames();
        isRenamed |= script.HasRenames();
    }
    if (isRenamed)
        output->Write("COMMIT;\n");
}

}   // namespace vela::shell
