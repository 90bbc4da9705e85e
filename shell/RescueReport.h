#pragma once

#include <string>

#include "engine/rescue/DatabaseFault.h"
#include "engine/rescue/DatabaseRepair.h"
#include "shell/Output.h"

namespace vela::shell {

enum class ReportForm { kText, kJson };

// Prints what a check finds, as it is found: a line per fault and per table, or one JSON document,
// which is complete after Finish.
class CheckReport : public FaultReceiver {
public:
    CheckReport(const std::string& database, ReportForm form, Output* output);

    void AddFault(const DatabaseFault& fault) override;
    void AddTable(const TableSummary& table) override;
    // isComplete: the check came to its end.
    void Finish(bool isComplete);
    [[nodiscard]] uint64_t Faults() const { return mFaults; }

private:
    struct CountedTable {
        TableSummary summary;
        uint64_t faults;
    };

    void PrintTable(const CountedTable& table);
    void PrintTableAsJson(const CountedTable& table);

    ReportForm mForm;
    Output* mOutput;
    uint64_t mFaults = 0;
    uint64_t mFaultsBefore = 0;   // of the tables that are done
    std::vector<CountedTable> mTables;
};

// Prints what a repair saved.
void PrintRepairReport(const RepairReport& report, const std::string& database,
                       const std::string& newDatabase, ReportForm form, Output* output);

}   // namespace vela::shell
