#include "plugin/host/Names.h"

#include <algorithm>
#include <utility>

#include "plugin/host/HostObject.h"

namespace vela::host {

namespace {

constexpr std::string_view kOperators = "+-*/%";

HostObject* ObjectIn(const Value& value)
{
    auto* const* object = std::get_if<HostObject*>(&value);
    return object == nullptr ? nullptr : *object;
}

std::string Trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(' ');
    const size_t last = text.find_last_not_of(' ');
    return first == std::string_view::npos ? "" : std::string(text.substr(first, last - first + 1));
}

// False: a division by 0.
bool Apply(char operation, int64_t operand, int64_t* number)
{
    if (operand == 0 && (operation == '/' || operation == '%'))
        return false;
    switch (operation) {
        case '+':
            *number += operand;
            break;
        case '-':
            *number -= operand;
            break;
        case '*':
            *number *= operand;
            break;
        case '/':
            *number /= operand;
            break;
        default:
            *number %= operand;
    }
    *number = static_cast<int32_t>(*number);   // so that no sum can overflow
    return true;
}

// The digits of a sum, in the units of the text that they are pasted into.
std::string InUnitsOf(const Token& token, const std::string& pasted)
{
    if (token.kind == Token::Kind::kWord || token.encoding != kUTF16)
        return pasted;
    std::string units;
    for (const char c : pasted)
        AppendCodePoint(static_cast<unsigned char>(c), kUTF16, &units);
    return units;
}

}   // namespace

void Names::Set(const std::string& name, const Value& value)
{
    HostObject* before = nullptr;
    if (const Value* found = Find(name))
        before = ObjectIn(*found);
    mValues[name] = value;
    mObjects.Release(before);
}

void Names::SetAndHold(const std::string& name, const Value& value)
{
    if (HostObject* object = ObjectIn(value))
        mObjects.AddReference(object);
    Set(name, value);
}

void Names::Remove(const std::string& name)
{
    Set(name, Nothing());
    mValues.erase(name);
}

void Names::Clear()
{
    while (!mValues.empty())
        Remove(std::string(mValues.begin()->first));
}

const Value* Names::Find(const std::string& name) const
{
    const auto found = mValues.find(name);
    return found == mValues.end() ? nullptr : &found->second;
}

std::optional<std::string> Names::Expand(const Token& token, std::string* problem) const
{
    std::string bytes;
    for (const TokenPiece& piece : token.pieces) {
        if (!piece.isSum) {
            bytes += piece.text;
            continue;
        }
        const std::optional<Value> value = EvaluateSum(piece.text, problem);
        if (!value)
            return std::nullopt;
        bytes += InUnitsOf(token, PastedText(*value));
    }
    return bytes;
}

std::optional<Value> Names::Evaluate(const Token& token, std::string* problem) const
{
    if (token.kind == Token::Kind::kWord && token.pieces.size() == 1 && token.pieces[0].isSum)
        return EvaluateSum(token.pieces[0].text, problem);
    const std::optional<std::string> bytes = Expand(token, problem);
    if (!bytes)
        return std::nullopt;
    if (token.kind == Token::Kind::kText)
        return token.isBinary ? Value(Bytes{*bytes}) : Value(Text{*bytes, token.encoding});
    if (std::optional<Value> value = ValueFromWord(*bytes))
        return value;
    if (const Value* named = Find(*bytes))
        return *named;
    *problem = "there is no " + *bytes;
    return std::nullopt;
}

std::optional<Value> Names::EvaluateSum(std::string_view sum, std::string* problem) const
{
    const std::string all = Trimmed(sum);
    if (const Value* named = Find(all))
        return *named;
    std::optional<int64_t> total;
    char operation = '+';
    for (size_t begin = 0; begin <= all.size();) {
        // A sign may stand where a term begins.
        const size_t end = std::min(all.find_first_of(kOperators, begin + 1), all.size());
        const std::optional<int64_t> term =
            EvaluateTerm(Trimmed(std::string_view(all).substr(begin, end - begin)), problem);
        if (!term)
            return std::nullopt;
        int64_t number = total.value_or(0);
        if (!Apply(operation, *term, &number)) {
            *problem = "a division by 0 in {" + all + "}";
            return std::nullopt;
        }
        total = number;
        operation = end < all.size() ? all[end] : '\0';
        begin = end + 1;
    }
    return Value(static_cast<int32_t>(*total));
}

std::optional<int64_t> Names::EvaluateTerm(const std::string& term, std::string* problem) const
{
    const Value* named = Find(term);
    const std::optional<Value> value = named != nullptr ? *named : ValueFromWord(term);
    if (value && std::holds_alternative<int32_t>(*value))
        return std::get<int32_t>(*value);
    *problem = "\"" + term + "\" is no number here";
    return std::nullopt;
}

}   // namespace vela::host
