#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "engine/storage/RemovedRows.h"
#include "engine/storage/VelaTable.h"
#include "runtime/LargeMemory.h"
#include "runtime/StringArena.h"

namespace vela {

// ColumnData holds one column of a table, the rows side by side in table order, each kind of value in its own form.
struct ColumnData {
    enum class Form : uint8_t {
        kUnloaded,
        kIntegers,   // numbers: Integer columns, and Boolean ones as 0 and 1
        kDoubles,
        kTexts,   // text-backed values of the column's type
        kValues   // anything else: values of several types, or with several hundred encodings
    };

    Form form = Form::kUnloaded;
    VelaDataType type = kTypeNone;   // of every value, but in kValues
    LargeVector<int32_t> integers;
    LargeVector<double> doubles;
    LargeVector<uint32_t> textStarts;    // kTexts: where text i starts in texts
    LargeVector<uint32_t> textLengths;   // kTexts: bytes of text i
    LargeVector<char> texts;    // the bytes of all texts, with gaps where texts were replaced
    size_t gapBytes = 0;        // kTexts: in those gaps
    bool textsInOrder = true;   // kTexts: they lie one after another, in row order and without gaps
    std::vector<uint8_t>
        encodingNumber;   // kTexts: position in encodings; empty when all texts have encodings[0]
    std::vector<TextEncoding> encodings;
    std::vector<bool> nulls;   // a flag for each row up to the last null one; not used by kValues
    std::vector<VelaValue> values;
    size_t valueTextBytes = 0;   // kValues: of all texts that were put in

    // Empties the column and chooses the form for values of a type.
    void Start(VelaDataType columnType);
    // Makes room for rows values.
    void Reserve(size_t rows);
    // Appends a value, or sets that of a row; a value that the form can't hold turns the column into kValues. False when
    // that would be too much: more than 4 GiB of text. The column is then not to be used.
    [[nodiscard]] bool Append(const VelaValue& value);
    [[nodiscard]] bool AppendText(std::string_view text, TextEncoding encoding);
    [[nodiscard]] bool Set(uint32_t row, const VelaValue& value);
    // Takes the rows out; the others keep their order.
    void RemoveRows(const RemovedRows& rows);
    [[nodiscard]] size_t Count() const;
    // Bytes of memory, about.
    [[nodiscard]] size_t MemoryUse() const;

    [[nodiscard]] bool IsNull(uint32_t row) const { return row < nulls.size() && nulls[row]; }
    // Whether every value is an Integer that isn't null.
    [[nodiscard]] bool IsAllIntegers() const
    {
        return form == Form::kIntegers && type == kTypeInteger && nulls.empty();
    }
    [[nodiscard]] std::string_view Text(uint32_t row) const
    {
        return {texts.data() + textStarts[row], textLengths[row]};
    }
    void GetValue(uint32_t row, VelaValue* value) const;
    // Sets count values, targetStep apart, to those of the rows, whose numbers are rowStep apart. arena makes their texts.
    void GetValues(const uint32_t* rows, size_t rowStep, size_t count, StringArena* arena,
                   VelaValue* target, size_t targetStep) const;

private:
    template <class MakeText>
    void GetValue(uint32_t row, VelaValue* value, const MakeText& makeText) const;
    [[nodiscard]] std::string_view TextAhead(uint32_t row) const;
    [[nodiscard]] TextEncoding EncodingOf(uint32_t row) const
    {
        return encodings[encodingNumber.empty() ? 0 : encodingNumber[row]];
    }
    [[nodiscard]] bool StoreText(std::string_view text, TextEncoding encoding, uint32_t row);
    void CloseLargeGaps();
    [[nodiscard]] bool Holds(const VelaValue& value) const;
    void TurnIntoValues();
    void SetNull(uint32_t row, bool null);
};

// The row ids of a table by row number.
using RowIDList = LargeVector<uint32_t>;

// TableColumns offers a table's rows for fast reading: by row number, 0 to RowCount() - 1 in the order of GetRowIDs, with
// pending changes applied. Columns are brought into memory when they are first asked for. What it answers is what the
// table's GetRowIDs and GetValue answer. Good until the table's next change.
class TableColumns {
public:
    // Values of this part of the rows, read one by one, take as long as the pass over the file that loads the column.
    static constexpr uint32_t kPartWorthLoading = 64;

    virtual ~TableColumns() = default;

    [[nodiscard]] virtual uint32_t RowCount() = 0;
    [[nodiscard]] virtual const uint32_t* RowIDs() = 0;
    // The number of a row; kInvalidRowID when it is not among the rows. One hash look-up.
    [[nodiscard]] virtual uint32_t RowNumberOf(uint32_t rowID) = 0;
    // A column for direct access, loaded when it isn't yet; null when it can't be had that way (column 0, a column that is
    // not there, or memory is short): GetValue still answers.
    [[nodiscard]] virtual const ColumnData* Load(long number) = 0;
    // The column when it is in memory already; null also where Load would bring it there. The base has none.
    [[nodiscard]] virtual const ColumnData* Loaded(long /*number*/) const { return nullptr; }
    // A column that is in memory, and the list of the row ids, to be kept beyond the table's changes and its life: of the rows
    // that are there now they go on telling what they tell now. Rows may be added to them. Null when there is nothing to
    // share; the base shares nothing.
    [[nodiscard]] virtual std::shared_ptr<const ColumnData> Share(long /*number*/)
    {
        return nullptr;
    }
    [[nodiscard]] virtual std::shared_ptr<const RowIDList> ShareRowIDs() { return nullptr; }
    // Loads several columns (numbers[i] set: column i) in one pass, where that saves passes. No promise: Load tells. Best
    // asked before anything else, as the rows are counted in the same pass.
    virtual void Prepare(const std::vector<bool>& numbers) { (void)numbers; }
    // As the table's GetValue of that row.
    virtual bool GetValue(uint32_t row, long number, VelaValue* value) = 0;
};

}   // namespace vela
