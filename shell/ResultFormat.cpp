#include "shell/ResultFormat.h"

#include "shell/CsvFormat.h"
#include "shell/JsonLinesFormat.h"
#include "shell/TableFormat.h"

namespace vela::shell {

std::unique_ptr<ResultFormat> MakeFormat(OutputMode mode, const Options& options)
{
    switch (mode) {
        case OutputMode::kCsv:
            return std::make_unique<CsvFormat>(options.headers, options.nullText.value_or(""));
        case OutputMode::kJsonLines:
            return std::make_unique<JsonLinesFormat>();
        case OutputMode::kTable:
            break;
    }
    return std::make_unique<TableFormat>(options.headers, options.nullText.value_or("NULL"));
}

}   // namespace vela::shell
