#include "shell/CsvReader.h"

#include <csv.h>

#include <algorithm>

namespace vela::shell {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr unsigned char kLaxOptions = CSV_EMPTY_IS_NULL | CSV_REPALL_NL;
constexpr unsigned char kStrictOptions = kLaxOptions | CSV_STRICT | CSV_STRICT_FINI;
constexpr size_t kPieceSize =
    1 << 16;   // bytes handed to the parser at once, so that a stop is soon heeded

int NoByteIsBlank(unsigned char)
{
    return 0;
}

// One reading: the parser, the row under way, and where in the file it stands.
class Reading {
public:
    Reading(char separator, CsvReceiver* receiver) : mReceiver(receiver)
    {
        csv_init(&mParser, kStrictOptions);
        csv_set_delim(&mParser, static_cast<unsigned char>(separator));
        csv_set_space_func(&mParser, NoByteIsBlank);
        csv_set_blk_size(&mParser, kPieceSize);
    }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    ~Reading() { csv_free(&mParser); }

    void Read(std::string_view content);

private:
    static void TakeField(void* bytes, size_t size, void* reading)
    {
        static_cast<Reading*>(reading)->AddField(static_cast<const char*>(bytes), size);
    }
    static void TakeRowEnd(int ending, void* reading)
    {
        static_cast<Reading*>(reading)->EndRow(ending);
    }

    void AddField(const char* bytes, size_t size);
    void EndRow(int ending);
    // Drops the row under way and returns what is left of content after the line of the fault.
    std::string_view SkipFaultyRow(std::string_view content, size_t faultOffset);
    void CountLines(std::string_view text);

    CsvReceiver* mReceiver;
    csv_parser mParser{};
    CsvRow mRow;
    size_t mColumns = 0;      // of the first row
    size_t mLine = 1;         // on which the row under way begins
    size_t mLinesInRow = 0;   // line breaks inside its fields
    int mLastEnding = 0;      // the byte that ended the row before, when nothing came since
    bool mIsFaulty = false;   // the row under way was reported as malformed
    bool mStopped = false;
};

void Reading::Read(std::string_view content)
{
    if (content.starts_with(kByteOrderMark))
        content.remove_prefix(kByteOrderMark.size());
    while (!content.empty() && !mStopped) {
        const size_t size = std::min(content.size(), kPieceSize);
        const size_t used = csv_parse(&mParser, content.data(), size, TakeField, TakeRowEnd, this);
        if (used == size)
            content.remove_prefix(size);
        else if (!mStopped)
            content = SkipFaultyRow(content, used);
    }
    if (mStopped)
        return;
    if (csv_fini(&mParser, TakeField, TakeRowEnd, this) != 0)
        mReceiver->TakeMalformed(mLine + mLinesInRow, "a quote is not closed");
}

void Reading::AddField(const char* bytes, size_t size)
{
    mLastEnding = 0;
    if (!bytes) {
        mRow.AppendBare();
        return;
    }
    mRow.Append(bytes, size);
    CountLines(std::string_view(bytes, size));
}

void Reading::EndRow(int ending)
{
    const bool isSecondOfPair = ending == CSV_LF && mLastEnding == CSV_CR && mRow.FieldCount() == 0;
    mLastEnding = ending;
    if (isSecondOfPair || mStopped)
        return;
    if (mColumns == 0)
        mColumns = mRow.FieldCount();
    if (mRow.FieldCount() == 0 && mColumns == 1 && !mIsFaulty)
        mRow.AppendBare();
    if (mRow.FieldCount() > 0)
        mStopped = !mReceiver->TakeRow(mRow, mLine);
    mRow.Clear();
    mIsFaulty = false;
    mLine += 1 + mLinesInRow;
    mLinesInRow = 0;
}

std::string_view Reading::SkipFaultyRow(std::string_view content, size_t faultOffset)
{
    if (csv_error(&mParser) != CSV_EPARSE) {
        mReceiver->TakeMalformed(mLine, csv_strerror(csv_error(&mParser)));
        mStopped = true;
        return content;
    }
    CountLines(
        std::string_view(reinterpret_cast<const char*>(mParser.entry_buf), mParser.entry_pos));
    mStopped = !mReceiver->TakeMalformed(
        mLine + mLinesInRow, mParser.quoted != 0 ? "text stands behind a closing quote"
                                                 : "a quote stands inside a field without quotes");
    // At the end of a file the parser forgets the field under way and is ready for another file.
    csv_set_opts(&mParser, kLaxOptions);
    csv_fini(&mParser, nullptr, nullptr, nullptr);
    csv_set_opts(&mParser, kStrictOptions);
    mRow.Clear();
    mIsFaulty = true;   // until the end of its line, which comes next
    mLastEnding = 0;
    return content.substr(std::min(content.find_first_of("\r\n", faultOffset), content.size()));
}

void Reading::CountLines(std::string_view text)
{
    for (size_t i = 0; i < text.size(); i++)
        if (text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n')))
            mLinesInRow++;
}

}   // namespace

void CsvRow::Clear()
{
    mBytes.clear();
    mFields.clear();
}

void CsvRow::Append(const char* bytes, size_t size)
{
    mFields.push_back({mBytes.size(), size, false});
    mBytes.append(bytes, size);
}

void CsvRow::AppendBare()
{
    mFields.push_back({mBytes.size(), 0, true});
}

void ReadCsv(std::string_view content, char separator, CsvReceiver* receiver)
{
    Reading(separator, receiver).Read(content);
}

}   // namespace vela::shell
