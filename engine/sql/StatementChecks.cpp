#include "engine/sql/StatementChecks.h"

namespace vela {

bool FindOpenTable(VelaDatabase& database, const string& name, size_t* position, VelaStatus* status)
{
    const long found = database.FindOpenTable(name);
    if (found < 0)
        return FailTableNotFound(name, status);
    *position = static_cast<size_t>(found);
    return true;
}

bool FindOpenTable(VelaDatabase& database, const string& name, VelaTable** table,
                   VelaStatus* status)
{
    size_t position = 0;
    if (!FindOpenTable(database, name, &position, status))
        return false;
    *table = database.OpenTables()[position];
    return true;
}

int64_t FindColumnID(const VelaTable& table, const string& name, long* position)
{
    const long columns = table.QtyColumns();
    for (long number = 0; number < columns; number++) {
        const VelaColumnInfo* column = table.Column(number);
        if (!column || column->name != name)
            continue;
        if (position)
            *position = number;
        return column->columnID;
    }
    return -1;
}

bool FindColumn(const VelaTable& table, const string& name, long* position, VelaStatus* status)
{
    return FindColumnID(table, name, position) >= 0 || FailColumnNotFound(name, status);
}

bool TypeCodeFromName(const string& name, VelaDataType* type, VelaStatus* status)
{
    struct {
        const char* name;
        VelaDataType type;
    } const types[] = {
        {"integer", kTypeInteger}, {"string", kTypeString},       {"text", kTypeString},
        {"varchar", kTypeString},  {"boolean", kTypeBoolean},     {"date", kTypeDate},
        {"time", kTypeTime},       {"timestamp", kTypeTimestamp}, {"double", kTypeDouble},
        {"float", kTypeDouble},    {"binary", kTypeBinary},       {"blob", kTypeBinary},
    };
    for (const auto& candidate : types) {
        if (!name.EqualsIgnoringCase(candidate.name))
            continue;
        *type = candidate.type;
        return true;
    }
    return Fail(status, kVEInvalidParameter, "Error: Invalid type \"" + name + "\".");
}

bool CheckNewName(const string& name, VelaStatus* status)
{
    constexpr size_t kLongest = 200;   // leaves room in a file name for the rest of it
    bool isGood = name.length() <= kLongest;
    for (const char c : name.View()) {
        const bool isControl = static_cast<unsigned char>(c) < ' ' || c == '\x7F';
        if (c == '/' || c == '.' || isControl)
            isGood = false;
    }
    return isGood || Fail(status, kVEInvalidParameter, "Error: Invalid name " + name + ".");
}

bool FailTableNotFound(const string& name, VelaStatus* status)
{
    return Fail(status, kVETableNotFound, "Error: Table " + name + " not found.");
}

bool FailTableExists(const string& name, VelaStatus* status)
{
    return Fail(status, kVETableAlreadyExists, "Error: Table " + name + " already exists.");
}

bool FailTableInTransaction(const string& name, VelaStatus* status)
{
    return Fail(status, kVEInvalidTransactionState,
                "Error: Table " + name + " has a transaction in progress.");
}

bool FailColumnNotFound(const string& name, VelaStatus* status)
{
    return Fail(status, kVEColumnNotFound, "Error: Column " + name + " not found.");
}

bool FailColumnExists(const string& name, VelaStatus* status)
{
    return Fail(status, kVEColumnAlreadyExists, "Error: Column " + name + " already exists.");
}

}   // namespace vela
