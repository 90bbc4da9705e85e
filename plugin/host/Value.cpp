#include "plugin/host/Value.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace vela::host {

namespace {

std::string DescribeDouble(double number)
{
    if (!std::isfinite(number))
        return std::isnan(number) ? "nan" : number > 0 ? "inf" : "-inf";
    char digits[40];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
    std::string text(digits, end);
    // A double is told from an integer by its full stop.
    if (text.find_first_of(".e") == std::string::npos)
        text += ".0";
    return text;
}

std::string DescribeMoment(const Moment& moment)
{
    char text[80] = "";
    if (moment.hasDate && moment.hasTime)
        std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", moment.year, moment.month,
                      moment.day, moment.hour, moment.minute, moment.second);
    else if (moment.hasDate)
        std::snprintf(text, sizeof text, "%04d-%02d-%02d", moment.year, moment.month, moment.day);
    else
        std::snprintf(text, sizeof text, "%02d:%02d:%02d", moment.hour, moment.minute,
                      moment.second);
    return text;
}

std::string DescribeBytes(const std::string& bytes)
{
    // Macintosh Roman has no rules of its own for quoting: everything outside ASCII is escaped.
    return "binary" + Quote(Text{bytes, 0}).substr(std::string_view("macroman").size());
}

// Reads numbers parted by separator into *numbers; all of text must be used.
bool ReadNumbers(std::string_view text, char separator, int32_t (&numbers)[3])
{
    for (int i = 0; i < 3; i++) {
        const auto [end, error] =
            std::from_chars(text.data(), text.data() + text.size(), numbers[i]);
        if (error != std::errc() || numbers[i] < 0)
            return false;
        text.remove_prefix(static_cast<size_t>(end - text.data()));
        if (i == 2)
            return text.empty();
        if (text.empty() || text[0] != separator)
            return false;
        text.remove_prefix(1);
    }
    return false;
}

bool ReadDate(std::string_view word, Moment* moment)
{
    int32_t numbers[3];
    if (!ReadNumbers(word, '-', numbers))
        return false;
    moment->hasDate = true;
    moment->year = numbers[0];
    moment->month = numbers[1];
    moment->day = numbers[2];
    return true;
}

bool ReadTime(std::string_view word, Moment* moment)
{
    int32_t numbers[3];
    if (!ReadNumbers(word, ':', numbers))
        return false;
    moment->hasTime = true;
    moment->hour = numbers[0];
    moment->minute = numbers[1];
    moment->second = numbers[2];
    return true;
}

std::optional<Value> MomentFromWord(std::string_view word)
{
    Moment moment;
    const size_t middle = word.find('T');
    const bool isMoment = middle == std::string_view::npos
                              ? ReadDate(word, &moment) || ReadTime(word, &moment)
                              : ReadDate(word.substr(0, middle), &moment) &&
                                    ReadTime(word.substr(middle + 1), &moment);
    return isMoment ? std::optional<Value>(moment) : std::nullopt;
}

template <typename Number>
std::optional<Value> NumberFromWord(std::string_view word)
{
    Number number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size())
        return std::nullopt;
    return Value(number);
}

struct Describer {
    std::string operator()(Nothing) const { return "nothing"; }
    std::string operator()(Null) const { return "null"; }
    std::string operator()(bool truth) const { return truth ? "true" : "false"; }
    std::string operator()(int32_t number) const { return std::to_string(number); }
    std::string operator()(double number) const { return DescribeDouble(number); }
    std::string operator()(const Text& text) const { return Quote(text); }
    std::string operator()(const Bytes& bytes) const { return DescribeBytes(bytes.bytes); }
    std::string operator()(const Moment& moment) const { return DescribeMoment(moment); }
    std::string operator()(HostObject*) const { return "<object>"; }
};

}   // namespace

std::string Describe(const Value& value)
{
    return std::visit(Describer(), value);
}

std::optional<Value> ValueFromWord(std::string_view word)
{
    if (word == "nothing")
        return Value(Nothing());
    if (word == "null")
        return Value(Null());
    if (word == "true" || word == "false")
        return Value(word == "true");
    if (std::optional<Value> integer = NumberFromWord<int32_t>(word))
        return integer;
    // Words such as "nan" and "inf" are numbers here, others with these letters are not.
    if (std::optional<Value> number = NumberFromWord<double>(word))
        return number;
    return MomentFromWord(word);
}

std::string PastedText(const Value& value)
{
    if (const auto* text = std::get_if<Text>(&value))
        return text->bytes;
    if (const auto* bytes = std::get_if<Bytes>(&value))
        return bytes->bytes;
    return Describe(value);
}

}   // namespace vela::host
