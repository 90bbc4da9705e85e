#pragma once

#include <string>
#include <vector>

#include "engine/core/VelaDataType.h"
#include "shell/Session.h"

namespace vela::shell {

// The column of a file, and of a table, that holds the row ids.
constexpr const char* kRowIDName = "_rowid";

// A column of a file and where its values go.
struct ImportColumn {
    std::string headerName;   // as the file has it
    std::string name;         // in the table
    VelaDataType type = kTypeString;
    uint32_t columnID = 0;
};

// What an import knows and passes from step to step.
struct ImportJob {
    // How many faulty lines are printed; the others are counted.
    static constexpr size_t kReportedFaults = 20;

    Session& session;
    SourcePlace where;
    std::string path;
    std::string tableName;
    char separator = ',';
    std::string content;   // of the file
    std::vector<ImportColumn> columns;
    size_t rows = 0;
    size_t faults = 0;

    // Reports why the import as a whole failed; returns false.
    bool Fail(std::string_view sqlState, const std::string& description) const;
    // Counts what is wrong with a line, and prints it when it is among the first.
    void ReportFault(size_t line, const std::string& reason);
    // Fails for the faults reported.
    bool FailForFaults() const;
};

}   // namespace vela::shell
