#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vela::shell {

// One line of a CSV or TSV file, taken apart.
class CsvRow {
public:
    [[nodiscard]] size_t FieldCount() const { return mFields.size(); }
    // Whether the field is empty and not in quotes: no value, in contrast to the empty text "".
    [[nodiscard]] bool IsBare(size_t field) const { return mFields[field].isBare; }
    [[nodiscard]] std::string_view Field(size_t field) const
    {
        return std::string_view(mBytes).substr(mFields[field].start, mFields[field].size);
    }

    void Clear();
    void Append(const char* bytes, size_t size);
    void AppendBare();

private:
    struct FieldPlace {
        size_t start;
        size_t size;
        bool isBare;
    };

    std::string mBytes;
    std::vector<FieldPlace> mFields;
};

// Receives what a CSV file holds, in order. Lines count from 1 and are those of the file: a field
// in quotes may span some, and its row counts as the line on which it begins.
class CsvReceiver {
public:
    virtual ~CsvReceiver() = default;
    // row is good for the call alone. False stops the reading.
    virtual bool TakeRow(const CsvRow& row, size_t line) = 0;
    // A row that breaks the rules: a quote inside an unquoted field, text after a closing quote,
    // a quote never closed. It is left out; reading goes on with the line after the fault. False
    // stops the reading.
    virtual bool TakeMalformed(size_t line, const std::string& reason) = 0;
};

// Takes a whole file's content apart (RFC 4180 with any separator and any line ends; blanks
// belong to fields). A UTF-8 byte order mark at the start is skipped. Empty lines are skipped,
// but in a file of one column: there an empty line is a row with a bare field.
void ReadCsv(std::string_view content, char separator, CsvReceiver* receiver);

}   // namespace vela::shell
