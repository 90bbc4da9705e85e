#include "shell/Import.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <unordered_set>

#include "engine/sql/VelaSQL.h"
#include "shell/DialectNames.h"
#include "shell/DisplayText.h"
#include "shell/ImportReceivers.h"
#include "shell/OpenDatabase.h"

namespace vela::shell {

namespace {

using Clock = std::chrono::steady_clock;

bool ReadWholeFile(ImportJob* job)
{
    const int descriptor = open(job->path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return job->Fail(kStateInputOutput,
                         "Error: Can't open " + job->path + ": " + SystemErrorText(errno) + ".");
    constexpr size_t kPieceSize = 1 << 20;
    ssize_t size = 0;
    do {
        const size_t start = job->content.size();
        job->content.resize(start + kPieceSize);
        size = read(descriptor, job->content.data() + start, kPieceSize);
        job->content.resize(start + (size > 0 ? static_cast<size_t>(size) : 0));
    } while (size > 0 || (size < 0 && errno == EINTR));
    const int error = errno;
    close(descriptor);
    return size == 0 || job->Fail(kStateInputOutput, "Error: Can't read " + job->path + ": " +
                                                         SystemErrorText(error) + ".");
}

// Reads the names of the columns, made usable, with "_rowid" as it is.
bool ReadHeader(ImportJob* job)
{
    HeaderReceiver receiver;
    ReadCsv(job->content, job->separator, &receiver);
    if (!receiver.Fault().empty())
        return job->Fail(kVEDataException, "Error: The header of " + job->path + " is malformed, " +
                                               receiver.Fault() + ".");
    if (receiver.Names().empty())
        return job->Fail(
            kVEDataException,
            "Error: " + job->path + " is empty; a header line with the columns' names is missing.");
    const std::vector<std::string> names = UsableNames(receiver.Names(), false);
    for (size_t i = 0; i < names.size(); i++)
        job->columns.push_back({receiver.Names()[i], names[i], kTypeString, 0});
    return true;
}

// The number of the column of that name; -1 when there is none.
long FindColumn(const VelaTrans& table, const std::string& name)
{
    for (long i = 0; i < table.QtyColumns(); i++)
        if (table.Column(i)->name == name)
            return i;
    return -1;
}

// Looks the file's columns up in the table, each under its own name, or else under the one that a
// new table would have given it.
bool MatchColumns(ImportJob* job, const VelaTrans& table)
{
    std::unordered_set<long> matched;
    for (ImportColumn& column : job->columns) {
        long number = FindColumn(table, column.headerName);
        if (number < 0 || matched.contains(number))
            number = FindColumn(table, column.name);
        if (number < 0 || !matched.insert(number).second)
            return job->Fail(kVEColumnNotFound, "Error: Column " + ShownText(column.headerName) +
                                                    " not found in table " + job->tableName +
                                                    "; nothing was imported.");
        column.name = table.Column(number)->name.View();
        column.columnID = table.Column(number)->columnID;
        column.type = table.Column(number)->Type();
    }
    return true;
}

void NoteNames(const ImportJob& job)
{
    for (const ImportColumn& column : job.columns) {
        if (column.name != column.headerName)
            PrintNote("column \"" + ShownText(column.headerName) + "\" is called " + column.name +
                      ", as statements need a plain name");
        else if (NeedsQualifier(column.name))
            PrintNote("column " + column.name + " has to be called " + job.tableName + "." +
                      column.name + " in expressions");
    }
}

// Makes the table, with the columns found. Sets the ids of the columns.
bool CreateTable(ImportJob* job)
{
    std::string columns;
    for (const ImportColumn& column : job->columns)
        if (column.name != kRowIDName)
            columns +=
                (columns.empty() ? "" : ", ") + column.name + " " + DataTypeName(column.type);
    VelaStatus status;
    const std::string statement = "CREATE TABLE " + job->tableName + " (" + columns + ")";
    VelaSQLExecute(string(statement, kEncodingUTF8), job->session.Database(), &status);
    if (status.State() != kVEStateSuccess)
        return job->Fail(status.State(), std::string(status.Description().View()));
    const VelaTrans* table = FindStoredTable(job->session.Database(), job->tableName);
    return table && MatchColumns(job, *table);
}

bool CheckNewTable(ImportJob* job)
{
    if (!IsUsableName(job->tableName))
        return job->Fail(kVEInvalidParameter,
                         "Error: \"" + ShownText(job->tableName) + "\" can't be a table's name.");
    if (job->columns.size() == 1 && job->columns[0].name == kRowIDName)
        return job->Fail(kVEDataException, "Error: " + job->path + " has no column but _rowid.");
    TypeReceiver receiver(job);
    ReadCsv(job->content, job->separator, &receiver);
    for (size_t i = 0; i < job->columns.size(); i++)
        job->columns[i].type =
            job->columns[i].name == kRowIDName ? kTypeInteger : receiver.TypeOf(i);
    return job->faults == 0 || job->FailForFaults();
}

bool CheckRows(ImportJob* job, VelaTrans* table)
{
    CheckReceiver receiver(job, table);
    ReadCsv(job->content, job->separator, &receiver);
    if (receiver.HasTooManyRows())
        return job->Fail(kVEIntegrityConstraintViolation,
                         "Error: Nothing was imported: the row ids of the table run out.");
    return job->faults == 0 || job->FailForFaults();
}

void ReportSpeed(const ImportJob& job, Clock::time_point start, bool committed)
{
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    char text[128];
    std::snprintf(text, sizeof text, " in %.3f s, %.0f rows per second", seconds,
                  seconds > 0 ? static_cast<double>(job.rows) / seconds : 0.0);
    PrintNote(CountText(job.rows, "row") + " imported into " + job.tableName + text +
              (committed ? "" : "; not committed yet, as changes were open before"));
}

bool AddRows(ImportJob* job, VelaTrans* table)
{
    AddReceiver receiver(job, table);
    ReadCsv(job->content, job->separator, &receiver);
    return receiver.Added() == job->rows ||
           job->Fail(kVEIntegrityConstraintViolation, "Error: The table refused row " +
                                                          std::to_string(receiver.Added() + 1) +
                                                          " of " + job->path + ".");
}

bool Commit(const ImportJob& job)
{
    VelaDatabase& database = job.session.Database();
    database.Commit();
    return !database.LastCommitFailed() ||
           job.Fail(kStateInputOutput,
                    "Error: Nothing was imported: the rows could not be committed: " +
                        std::string(database.CommitErrorText().View()) + ".");
}

// From the checked file to the committed rows. What it left when it failed is for the caller to
// roll back.
bool Load(ImportJob* job, bool isNewTable, bool commits)
{
    if (isNewTable && !CreateTable(job))
        return false;
    VelaTrans* table = FindStoredTable(job->session.Database(), job->tableName);
    return table && AddRows(job, table) && (!commits || Commit(*job));
}

bool EndsWith(const std::string& path, std::string_view ending)
{
    return path.size() >= ending.size() &&
           EqualsIgnoringCase(std::string_view(path).substr(path.size() - ending.size()), ending);
}

}   // namespace

bool ImportFile(Session& session, const SourcePlace& where, const std::string& path,
                const std::string& tableName)
{
    const Clock::time_point start = Clock::now();
    ImportJob job{session, where, path, tableName, ',', "", {}, 0, 0};
    if (EndsWith(path, ".tsv") || EndsWith(path, ".tab"))
        job.separator = '\t';
    if (session.IsReadOnly())
        return job.Fail(kVEInvalidTransactionState,
                        "Error: The database is open for reading only.");
    if (EqualsIgnoringCase(tableName, kSchemaTableName) || EqualsIgnoringCase(tableName, "_TABLES"))
        return job.Fail(
            kVEInvalidParameter,
            "Error: " + tableName + " belongs to the database; rows can't be imported into it.");
    if (!ReadWholeFile(&job) || !ReadHeader(&job))
        return false;

    VelaTrans* table = FindStoredTable(session.Database(), tableName);
    if (!(table ? MatchColumns(&job, *table) : CheckNewTable(&job)) || !CheckRows(&job, table))
        return false;
    const bool commits = !HasOpenChanges(session.Database());
    if (!Load(&job, !table, commits)) {
        if (commits)
            session.Database().Rollback();
        return false;
    }
    if (!table)
        NoteNames(job);
    ReportSpeed(job, start, commits);
    return true;
}

}   // namespace vela::shell
