#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/storage/VelaTable.h"

namespace vela {

// ColumnData holds one column of a table, the rows side by side in table order, each kind of value in its own form.
struct ColumnData {
    enum class Form : uint8_t {
        kUnloaded,
        kIntegers,  // numbers: Integer columns, and Boolean ones as 0 and 1
        kDoubles,
        kTexts,  // text-backed values of the column's type
        kValues  // anything else: values of several types, or with several hundred encodings
    };

    Form form = Form::kUnloaded;
    VelaDataType type = kTypeNone;  // of every value, but in kValues
    std::vector<int32_t> integers;
    std::vector<double> doubles;
    std::vector<uint32_t> textStarts;     // kTexts: where text i starts in texts
    std::vector<uint32_t> textLengths;    // kTexts: bytes of text i
    std::vector<char> texts;              // the bytes of all texts, with gaps where texts were replaced
    std::vector<uint8_t> encodingNumber;  // kTexts: position in encodings; empty when all texts have encodings[0]
    std::vector<TextEncoding> encodings;
    std::vector<bool> nulls;  // empty when no value is null; else one flag a row (not used by kValues)
    std::vector<VelaValue> values;

    [[nodiscard]] bool IsNull(uint32_t row) const { return !nulls.empty() && nulls[row]; }
    [[nodiscard]] std::string_view Text(uint32_t row) const
    {
        return {texts.data() + textStarts[row], textLengths[row]};
    }
    void GetValue(uint32_t row, VelaValue* value) const;
};

// TableColumns offers a table's rows for fast reading: by row number, 0 to RowCount() - 1 in the order of GetRowIDs, with
// pending changes applied. Columns are brought into memory when they are first asked for. What it answers is what the
// table's GetRowIDs and GetValue answer. Good until the table's next change.
class TableColumns {
public:
    virtual ~TableColumns() = default;

    [[nodiscard]] virtual uint32_t RowCount() const = 0;
    [[nodiscard]] virtual const uint32_t* RowIDs() const = 0;
    // The number of a row; kInvalidRowID when it is not among the rows. One hash look-up.
    [[nodiscard]] virtual uint32_t RowNumberOf(uint32_t rowID) = 0;
    // A column for direct access, loaded when it isn't yet; null when it can't be had that way (column 0, a column that is
    // not there, or memory is short): GetValue still answers.
    [[nodiscard]] virtual const ColumnData* Load(long number) = 0;
    // As the table's GetValue of that row.
    virtual bool GetValue(uint32_t row, long number, VelaValue* value) = 0;
};

}  // namespace vela
