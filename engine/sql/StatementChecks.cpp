#include "engine/sql/StatementChecks.h"

namespace vela {

bool FindOpenTable(VelaDatabase& database, const SQLText& name, size_t* position,
                   VelaStatus* status)
{
    const long found = database.FindOpenTable(name.View());
    if (found < 0)
        return FailTableNotFound(name, status);
    *position = static_cast<size_t>(found);
    return true;
}

bool FindOpenTable(VelaDatabase& database, const SQLText& name, VelaTable** table,
                   VelaStatus* status)
{
    size_t position = 0;
    if (!FindOpenTable(database, name, &position, status))
        return false;
    *table = database.OpenTables()[position];
    return true;
}

int64_t FindColumnID(const VelaTable& table, std::string_view name, long* position)
{
    const long number = table.FindColumnNamed(name);
    if (number < 0)
        return -1;
    if (position)
        *position = number;
    return table.Column(number)->columnID;
}

bool TypeCodeFromName(const SQLText& name, VelaDataType* type, VelaStatus* status)
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
    return Fail(status, kVEInvalidParameter, "Error: Invalid type \"" + name.ToString() + "\".");
}

bool CheckNewName(const SQLText& name, VelaStatus* status)
{
    constexpr size_t kLongest = 200;   // leaves room in a file name for the rest of it
    bool isGood = name.View().size() <= kLongest;
    for (const char c : name.View()) {
        const bool isControl = static_cast<unsigned char>(c) < ' ' || c == '\x7F';
        if (c == '/' || c == '.' || isControl)
            isGood = false;
    }
    return isGood ||
           Fail(status, kVEInvalidParameter, "Error: Invalid name " + name.ToString() + ".");
}

bool FailTableNotFound(const SQLText& name, VelaStatus* status)
{
    return Fail(status, kVETableNotFound, "Error: Table " + name.ToString() + " not found.");
}

bool FailTableExists(const SQLText& name, VelaStatus* status)
{
    return Fail(status, kVETableAlreadyExists,
                "Error: Table " + name.ToString() + " already exists.");
}

bool FailTableInTransaction(const SQLText& name, VelaStatus* status)
{
    return Fail(status, kVEInvalidTransactionState,
                "Error: Table " + name.ToString() + " has a transaction in progress.");
}

bool FailColumnNotFound(const SQLText& name, VelaStatus* status)
{
    return Fail(status, kVEColumnNotFound, "Error: Column " + name.ToString() + " not found.");
}

bool FailColumnExists(const SQLText& name, VelaStatus* status)
{
    return Fail(status, kVEColumnAlreadyExists,
                "Error: Column " + name.ToString() + " already exists.");
}

}   // namespace vela
