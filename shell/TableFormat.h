#pragma once

#include <vector>

#include "shell/ResultFormat.h"

namespace vela::shell {

// Rows for people: columns aligned by display width and never cut, numbers to the right.
//
//   Name     People
//   -------  -------
//   Berlin   3664088
//   Köln     1087863
//
// Cells are in the shown form of DisplayText.h, so that a row is a line. Rows are read twice,
// once for the widths.
class TableFormat : public ResultFormat {
public:
    TableFormat(bool headers, std::string nullText);

    void WriteResult(const StatementResult& result, Output* output) override;

private:
    struct Column {
        size_t width = 0;
        bool isNumeric = false;   // holds numbers and nulls alone
    };
    struct Cell {
        std::string text;
        size_t columns = 0;
    };

    void ShowValue(const VelaValue& value, Cell* cell) const;
    [[nodiscard]] std::vector<Column> Measure(VelaTable* rows,
                                              const SimpleVector<uint32_t>& rowIDs) const;
    void WriteHeaders(const VelaTable& rows, const std::vector<Column>& columns,
                      Output* output) const;

    bool mHeaders;
    std::string mNullText;
};

}   // namespace vela::shell
