#include "shell/CsvReader.h"

#include <gtest/gtest.h>

#include <random>

#include "shell/CsvFormat.h"
#include "tests/shell/ShellTesting.h"

namespace vela::shell {
namespace {

// Rows as "line: [a|b]", a bare field as "-"; what is malformed as "line! reason".
class Recorder : public CsvReceiver {
public:
    explicit Recorder(size_t limit = SIZE_MAX) : mLimit(limit) {}

    bool TakeRow(const CsvRow& row, size_t line) override
    {
        std::string text = std::to_string(line) + ": [";
        for (size_t i = 0; i < row.FieldCount(); i++)
            text +=
                (i > 0 ? "|" : "") + (row.IsBare(i) ? std::string("-") : std::string(row.Field(i)));
        mEvents.push_back(text + "]");
        return mEvents.size() < mLimit;
    }
    bool TakeMalformed(size_t line, const std::string& reason) override
    {
        mEvents.push_back(std::to_string(line) + "! " + reason);
        return mEvents.size() < mLimit;
    }
    [[nodiscard]] const std::vector<std::string>& Events() const { return mEvents; }

private:
    size_t mLimit;
    std::vector<std::string> mEvents;
};

constexpr const char* kInside = "a quote stands inside a field without quotes";
constexpr const char* kBehind = "text stands behind a closing quote";
constexpr const char* kOpen = "a quote is not closed";

TEST(CsvReader, TakesLinesApart)
{
    const struct {
        std::string content;
        std::vector<std::string> events;
        const char* why;
    } cases[] = {
        {"", {}, "nothing"},
        {"a,b\n1,2\n", {"1: [a|b]", "2: [1|2]"}, "two lines"},
        {"a,b\n1,2", {"1: [a|b]", "2: [1|2]"}, "the last line may lack its end"},
        {"a,b\r\n1,2\r\n", {"1: [a|b]", "2: [1|2]"}, "CR LF"},
        {"a,b\r1,2\r", {"1: [a|b]", "2: [1|2]"}, "CR"},
        {"\xEF\xBB\xBFx,y\n", {"1: [x|y]"}, "a byte order mark"},
        {"a,b\n,\"\"\n", {"1: [a|b]", "2: [-|]"}, "a bare field is not the empty text"},
        {"a,b\n1,\n", {"1: [a|b]", "2: [1|-]"}, "bare at the end"},
        {"a,b\n1,", {"1: [a|b]", "2: [1|-]"}, "bare at the very end"},
        {"a,b\n\n1,2\n\n", {"1: [a|b]", "3: [1|2]"}, "empty lines are skipped, and counted"},
        {"a\n1\n\n2\n", {"1: [a]", "2: [1]", "3: [-]", "4: [2]"}, "but not with one column"},
        {"a\r\n1\r\n\r\n2\r\n", {"1: [a]", "2: [1]", "3: [-]", "4: [2]"}, "nor with CR LF"},
        {"\n\na\n\n", {"3: [a]", "4: [-]"}, "empty lines before the header"},
        {" a , b\n", {"1: [ a | b]"}, "blanks belong to fields"},
        {"\"a,b\"\n", {"1: [a,b]"}, "a separator in quotes"},
        {"\"a\"\"b\",c\n", {"1: [a\"b|c]"}, "a doubled quote"},
        {"\"a\nb\",c\nd,e\n", {"1: [a\nb|c]", "3: [d|e]"}, "a line feed in quotes"},
        {"\"a\r\nb\rc\"\nd\n", {"1: [a\r\nb\rc]", "4: [d]"}, "all line ends in quotes"},
        {"a,b,c\n1\n", {"1: [a|b|c]", "2: [1]"}, "fields are not counted here"},
        {std::string("a\0b\n", 4), {std::string("1: [a\0b]", 8)}, "NUL bytes"},

        {"a\"b,c\nd,e\n", {std::string("1! ") + kInside, "2: [d|e]"}, "a quote inside"},
        {"a\n\"b\"c,d\ne\n", {"1: [a]", std::string("2! ") + kBehind, "3: [e]"}, "text behind"},
        {"a\n\"b\" ,d\ne\n", {"1: [a]", std::string("2! ") + kBehind, "3: [e]"}, "even a blank"},
        {"a\nx,\"b\nb\"c\ne\n", {"1: [a]", std::string("3! ") + kBehind, "4: [e]"}, "its own line"},
        {"a\nb\"\r\nc\n", {"1: [a]", std::string("2! ") + kInside, "3: [c]"}, "CR LF behind it"},
        {"a\nb\"", {"1: [a]", std::string("2! ") + kInside}, "at the very end"},
        {"a\n\"b", {"1: [a]", std::string("2! ") + kOpen}, "not closed"},
        {"a\nx\n\"b\nc\nd\n", {"1: [a]", "2: [x]", std::string("3! ") + kOpen}, "where it began"},
        {"a,b\n1\"\n2\"\n3,4\n",
         {"1: [a|b]", std::string("2! ") + kInside, std::string("3! ") + kInside, "4: [3|4]"},
         "two in a row"},
    };
    for (const auto& c : cases) {
        Recorder recorder;
        ReadCsv(c.content, ',', &recorder);
        EXPECT_EQ(c.events, recorder.Events()) << c.why;
    }
}

TEST(CsvReader, StopsWhenTold)
{
    Recorder recorder(2);
    ReadCsv("a\nb\nc\nd\"\n", ',', &recorder);
    EXPECT_EQ((std::vector<std::string>{"1: [a]", "2: [b]"}), recorder.Events());
    Recorder afterFault(1);
    ReadCsv("a\"\nb\nc\n", ',', &afterFault);
    EXPECT_EQ(1u, afterFault.Events().size());
}

TEST(CsvReader, ReadsFieldsLongerThanAPieceOfTheFile)
{
    const std::string longText(300000, 'x');
    Recorder recorder;
    ReadCsv("a,b\n" + longText + ",\"" + longText + "\"\n1,2\n", ',', &recorder);
    EXPECT_EQ((std::vector<std::string>{"1: [a|b]", "2: [" + longText + "|" + longText + "]",
                                        "3: [1|2]"}),
              recorder.Events());
}

TEST(CsvReader, ReadsBackWhatTheCsvFormatWrote)
{
    const uint32_t seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::string alphabet = "ab,\"\n\r \t;\xC3";
    for (int round = 0; round < 500; round++) {
        const size_t columns = 1 + random() % 3;
        std::vector<std::vector<VelaValue>> rows(random() % 6, std::vector<VelaValue>(columns));
        std::vector<std::string> expected = {"header"};
        for (std::vector<VelaValue>& row : rows) {
            std::string shown = "[";
            for (VelaValue& value : row) {
                std::string text;
                for (size_t i = random() % 4; i > 0; i--)
                    text += alphabet[random() % alphabet.size()];
                const bool isNull = random() % 4 == 0;
                value = isNull ? VelaValue() : VelaValue::String(string(text, kEncodingUTF8));
                shown += (&value == &row[0] ? "" : "|") + (isNull ? "-" : text);
            }
            expected.push_back(shown + "]");
        }
        StringOutput output;
        const auto table = ResultTable(std::vector<VelaDataType>(columns, kTypeString), rows);
        StatementResult result;
        result.rows = table.get();
        CsvFormat(true, "").WriteResult(result, &output);
        Recorder recorder;
        ReadCsv(output.Text(), ',', &recorder);
        ASSERT_EQ(expected.size(), recorder.Events().size()) << output.Text();
        for (size_t i = 1; i < expected.size(); i++)
            ASSERT_EQ(expected[i], recorder.Events()[i].substr(recorder.Events()[i].find('[')))
                << output.Text();
    }
}

}   // namespace
}   // namespace vela::shell
