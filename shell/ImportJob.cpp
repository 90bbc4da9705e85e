#include "shell/ImportJob.h"

#include "engine/core/VelaStatus.h"

namespace vela::shell {

bool ImportJob::Fail(std::string_view sqlState, const std::string& description) const
{
    return session.Fail(where, sqlState, description);
}

void ImportJob::ReportFault(size_t line, const std::string& reason)
{
    if (++faults <= kReportedFaults)
        PrintRaw(path + ":" + std::to_string(line) + ": " + reason + "\n");
}

bool ImportJob::FailForFaults() const
{
    if (faults > kReportedFaults)
        PrintRaw(path + ": " + CountText(faults - kReportedFaults, "more faulty line") + "\n");
    return Fail(kVEDataException, "Error: Nothing was imported: " +
                                      CountText(faults, "faulty line") + " in " + path + ".");
}

}   // namespace vela::shell
