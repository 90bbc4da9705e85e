#include "bench/VelaPeer.h"

#include "engine/sql/VelaSQL.h"
#include "engine/storage/VelaFolderFileAccess.h"

namespace vela::bench {

namespace {

vela::string ToText(const std::string& text)
{
    return {text.data(), text.size(), kEncodingUTF8};
}

void AddValue(const VelaValue& value, AnswerDigest* digest)
{
    if (value.IsNull())
        digest->AddNull();
    else if (IsTextBacked(value.GetType()))
        digest->AddText(value.TextView());
    else
        digest->AddNumber(value.GetDouble());
}

void SetValue(const Cell& cell, VelaDataType type, VelaValue* value)
{
    if (const int32_t* integer = std::get_if<int32_t>(&cell))
        value->SetInteger(*integer);
    else if (const double* number = std::get_if<double>(&cell))
        value->SetDouble(*number);
    else
        value->SetText(type, ToText(std::get<std::string>(cell)));
}

Answer ReadRows(VelaTable* table, RowOrder order)
{
    AnswerDigest digest(order);
    const uint32_t rows = static_cast<uint32_t>(table->QtyRows());
    const long columns = table->QtyColumns();
    VelaValue value;
    for (uint32_t row = 0; row < rows; row++) {
        for (long column = 0; column < columns; column++) {
            if (!table->GetValue(row, column, &value))
                Die("a value of a result can't be read");
            AddValue(value, &digest);
        }
        digest.EndRow();
    }
    return digest.Result();
}

}   // namespace

void VelaPeer::Open(const std::string& folder)
{
    auto files = std::make_unique<VelaFolderFileAccess>(FileLocator(ToText(folder)),
                                                        VelaFolderFileAccess::Mode::kReadWrite);
    if (!files->IsOpen())
        Die(folder + " can't be opened: " + files->ErrorText().CString());
    mDatabase = std::make_unique<VelaDatabase>(std::move(files));
    if (!mDatabase->IsValid())
        Die(folder + " holds no valid database");
}

void VelaPeer::Commit()
{
    mDatabase->Commit();
    if (mDatabase->LastCommitFailed())
        Die(std::string("Vela can't commit: ") + mDatabase->CommitErrorText().CString());
}

void VelaPeer::Execute(const std::string& sql)
{
    VelaStatus status;
    VelaSQLExecute(ToText(sql), *mDatabase, &status);
    if (status.State() != kVEStateSuccess)
        Die("Vela refuses " + sql + ": " + status.Description().CString());
}

Answer VelaPeer::Query(const std::string& sql, RowOrder order)
{
    return ReadRows(Select(sql).get(), order);
}

double VelaPeer::QueryNumber(const std::string& sql)
{
    VelaValue value;
    if (!Select(sql)->GetValue(0, 0, &value))
        Die("no answer to " + sql);
    return value.GetDouble();
}

void VelaPeer::CreateTable(const std::string& name, const std::string& columns)
{
    Execute("CREATE TABLE " + name + " (" + columns + ")");
}

void VelaPeer::DropIndex(const std::string& table, const std::string& index)
{
    Execute("DROP INDEX " + table + "." + index);
}

// One row buffer serves all rows; the table copies it.
void VelaPeer::AddRows(const std::string& table, const std::vector<Row>& rows)
{
    const long number = mDatabase->FindOpenTable(ToText(table));
    if (number < 0)
        Die("no table " + table);
    VelaTable* target = mDatabase->OpenTables()[static_cast<size_t>(number)];
    std::vector<VelaValueWithID> values(static_cast<size_t>(target->QtyColumns()) - 1);
    std::vector<VelaDataType> types;
    VelaRow row;
    for (size_t i = 0; i < values.size(); i++) {
        const VelaColumnInfo* column = target->Column(static_cast<long>(i) + 1);
        types.push_back(column->Type());
        values[i].SetColumnID(column->columnID);
        row.push_back(&values[i]);
    }
    for (const Row& cells : rows) {
        for (size_t i = 0; i < values.size(); i++)
            SetValue(cells[i], types[i], &values[i]);
        if (target->AddRow(row, false) == kInvalidRowID)
            Die("Vela refuses a row");
    }
}

std::unique_ptr<VelaTable> VelaPeer::Select(const std::string& sql)
{
    VelaStatus status;
    std::unique_ptr<VelaTable> result = VelaSQLQuery(ToText(sql), *mDatabase, &status);
    if (!result)
        Die("Vela refuses " + sql + ": " + status.Description().CString());
    return result;
}

}   // namespace vela::bench
