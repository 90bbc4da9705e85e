#pragma once

#include "shell/ResultFormat.h"

namespace vela::shell {

// Rows as comma-separated values (RFC 4180, lines ending with a line feed), one line of column
// names above each result.
//
// A null is the null text, unquoted; a text that would read the same, the empty text with the
// usual empty null text for instance, is quoted, and so is every text that holds a comma, a
// quote, a line break or a blank at an end. A date or time that was never set is bare. Reading
// the file with .import gives the same nulls and texts back. Texts have their stored bytes,
// converted to UTF-8 where they are stored in another encoding.
class CsvFormat : public ResultFormat {
public:
    CsvFormat(bool headers, std::string nullText);

    void WriteResult(const StatementResult& result, Output* output) override;

private:
    void WriteField(std::string_view text, Output* output) const;

    bool mHeaders;
    std::string mNullText;
};

}   // namespace vela::shell
