#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "engine/core/VelaStatus.h"
#include "engine/storage/VelaTable.h"
#include "shell/Options.h"
#include "shell/Output.h"

namespace vela::shell {

// What came of one statement.
struct StatementResult {
    uint64_t number = 0;   // from 1, over the whole run
    // Absent when the text did not parse, or when the format does not show it.
    std::optional<string> canonical;
    std::string sqlState;
    string message;              // the status's description; empty for success
    VelaTable* rows = nullptr;   // the table that a SELECT returned; borrowed
};

// ResultFormat prints what came of a statement. One object serves a whole run.
class ResultFormat {
public:
    ResultFormat() = default;
    ResultFormat(const ResultFormat&) = delete;
    ResultFormat& operator=(const ResultFormat&) = delete;
    virtual ~ResultFormat() = default;

    // Whether WriteResult shows StatementResult::canonical, which takes a parse of its own to get.
    [[nodiscard]] virtual bool ShowsCanonical() const { return false; }
    // Prints a statement that succeeded or failed. A failure's message is printed elsewhere too,
    // for people.
    virtual void WriteResult(const StatementResult& result, Output* output) = 0;
};

// The format for a mode, with the settings of options that it heeds.
[[nodiscard]] std::unique_ptr<ResultFormat> MakeFormat(OutputMode mode, const Options& options);

}   // namespace vela::shell
