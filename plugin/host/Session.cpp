#include "plugin/host/Session.h"

#include <cmath>

namespace vela::host {

Value Session::Last() const
{
    const Value* last = names.Find(kLastName);
    return last == nullptr ? Value(Nothing()) : *last;
}

std::optional<Operand> Session::ReadValue(const ProgramLine& line, size_t* index)
{
    if (!HasToken(line, *index))
        return std::nullopt;
    const Token& token = line.tokens[(*index)++];
    if (token.Word() == "folder") {
        const std::optional<std::string> path = ReadPath(line, (*index)++);
        if (!path)
            return std::nullopt;
        FolderItem* item = host.MakeFolderItem(*path);
        mTemporaries.push_back(item);
        return Operand{static_cast<HostObject*>(item)};
    }
    std::string problem;
    const std::optional<Value> value = names.Evaluate(token, &problem);
    if (!value) {
        report.Fail(problem);
        return std::nullopt;
    }
    return Operand{*value, token.kind == Token::Kind::kWord || token.isTagged};
}

std::optional<Text> Session::ReadText(const ProgramLine& line, size_t index)
{
    const std::optional<Operand> operand = ReadValue(line, &index);
    if (!operand)
        return std::nullopt;
    if (const auto* text = std::get_if<Text>(&operand->value))
        return *text;
    report.Fail("a text is wanted, not " + Describe(operand->value));
    return std::nullopt;
}

std::optional<std::string> Session::ReadName(const ProgramLine& line, size_t index)
{
    if (!HasToken(line, index))
        return std::nullopt;
    std::string problem;
    std::optional<std::string> name = names.Expand(line.tokens[index], &problem);
    if (!name)
        report.Fail(problem);
    return name;
}

std::optional<std::string> Session::ReadPath(const ProgramLine& line, size_t index)
{
    std::optional<std::string> path = ReadName(line, index);
    if (path)
        path = host.PathOf(*path);
    return path;
}

std::optional<int32_t> Session::ReadNumber(const ProgramLine& line, size_t index)
{
    const std::optional<Operand> operand = ReadValue(line, &index);
    if (!operand)
        return std::nullopt;
    if (const auto* number = std::get_if<int32_t>(&operand->value))
        return *number;
    report.Fail("a number is wanted, not " + Describe(operand->value));
    return std::nullopt;
}

DatabaseObject* Session::ReadDatabase(const ProgramLine& line, size_t index)
{
    const std::optional<std::string> name = ReadName(line, index);
    return name ? FindDatabase(*name) : nullptr;
}

CursorObject* Session::ReadCursor(const ProgramLine& line, size_t index)
{
    const std::optional<std::string> name = ReadName(line, index);
    return name ? FindCursor(*name) : nullptr;
}

DatabaseObject* Session::FindDatabase(const std::string& name)
{
    auto* database = dynamic_cast<DatabaseObject*>(FindObject(name));
    if (database == nullptr)
        report.Fail("there is no database " + name);
    else if (database->Engine() == nullptr)
        report.Fail("the database " + name + " has no engine");
    else
        return database;
    return nullptr;
}

CursorObject* Session::FindCursor(const std::string& name)
{
    auto* cursor = dynamic_cast<CursorObject*>(FindObject(name));
    if (cursor == nullptr)
        report.Fail("there is no cursor " + name);
    return cursor;
}

void Session::DropTemporaries()
{
    for (HostObject* object : mTemporaries)
        host.objects.Release(object);
    mTemporaries.clear();
}

Balance Session::CurrentBalance() const
{
    return {host.strings.Count(), host.strings.References(), host.objects.Count(),
            host.objects.References()};
}

bool Session::HasToken(const ProgramLine& line, size_t index)
{
    if (index < line.tokens.size())
        return true;
    report.Stop("something is missing at the end of this line");
    return false;
}

HostObject* Session::FindObject(const std::string& name)
{
    const Value* value = names.Find(name);
    auto* const* object = value == nullptr ? nullptr : std::get_if<HostObject*>(value);
    return object == nullptr ? nullptr : *object;
}

bool Matches(const Operand& wanted, const Value& got)
{
    const auto* wantedText = std::get_if<Text>(&wanted.value);
    const auto* gotText = std::get_if<Text>(&got);
    if (wantedText != nullptr && gotText != nullptr && !wanted.isTagged)
        return wantedText->bytes == gotText->bytes &&
               (gotText->encoding == kUTF8 || gotText->encoding == kASCII);
    const auto* wantedNumber = std::get_if<double>(&wanted.value);
    const auto* gotNumber = std::get_if<double>(&got);
    if (wantedNumber != nullptr && gotNumber != nullptr && std::isnan(*wantedNumber))
        return std::isnan(*gotNumber);
    return wanted.value == got;
}

}   // namespace vela::host
