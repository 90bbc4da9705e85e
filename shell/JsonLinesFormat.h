#pragma once

#include "shell/ResultFormat.h"

namespace vela::shell {

// One JSON object per statement and line, for programs. Keys in this order, always with a blank
// after "," and ":":
//
//   {"n": 1, "canonical": "SELECT a FROM t", "sqlstate": "00000", "message": "",
//    "columns": [{"name": "a", "type": "Integer"}], "rows": [[1], [null]]}
//
// (on one line). canonical is null when the statement did not parse; columns and rows are there
// when a SELECT returned a table. A cell follows its own value's type: Integer a number; Double a
// number with "." or an exponent, or "nan", "inf", "-inf"; Boolean true or false; String, Date,
// Time and Timestamp a string of the stored text; Binary {"hex": "00ff"}, as is a text that is
// not valid UTF-8; null for a null.
class JsonLinesFormat : public ResultFormat {
public:
    [[nodiscard]] bool ShowsCanonical() const override { return true; }
    void WriteResult(const StatementResult& result, Output* output) override;
};

}   // namespace vela::shell
