#include "plugin/host/MethodCall.h"

#include <algorithm>
#include <cctype>

#include "plugin/host/Host.h"

namespace vela::host {

namespace {

std::vector<std::string> WordsInLowerCase(const std::string& text)
{
    std::vector<std::string> words(1);
    for (const char c : text) {
        if (c != ' ')
            words.back() += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        else if (!words.back().empty())
            words.emplace_back();
    }
    if (words.back().empty())
        words.pop_back();
    return words;
}

// "name as Type": the type. False for anything else.
bool ReadParameter(const std::string& text, std::vector<std::string>* types)
{
    const std::vector<std::string> words = WordsInLowerCase(text);
    if (words.size() != 3 || words[1] != "as")
        return false;
    types->push_back(words[2]);
    return true;
}

bool ReadParameters(std::string text, std::vector<std::string>* types)
{
    while (text.find_first_not_of(' ') != std::string::npos) {
        const size_t comma = std::min(text.find(','), text.size());
        if (!ReadParameter(text.substr(0, comma), types))
            return false;
        text.erase(0, comma + 1);
    }
    return true;
}

// Calls function with the C type that the result's name fixes. False: no such result is known.
template <typename... Arguments>
bool Invoke(Host& host, MOXAproc function, const std::string& resultType, Value* result,
            Arguments... arguments)
{
    if (resultType.empty()) {
        reinterpret_cast<void (*)(Arguments...)>(function)(arguments...);
        *result = Nothing();
    } else if (resultType == "boolean") {
        *result = reinterpret_cast<MOXAbool (*)(Arguments...)>(function)(arguments...) != 0;
    } else if (resultType == "integer") {
        *result = reinterpret_cast<int32_t (*)(Arguments...)>(function)(arguments...);
    } else if (resultType == "string") {
        const MOXAstring text =
            reinterpret_cast<MOXAstring (*)(Arguments...)>(function)(arguments...);
        *result = Nothing();
        if (text != nullptr)
            *result = host.strings.Take(text);
    } else {
        return false;
    }
    return true;
}

bool InvokeWithOne(Host& host, const MOXAmethodDefinition& method,
                   const MethodDeclaration& declaration, MOXAobject object, const Value& argument,
                   Value* result)
{
    const std::string& type = declaration.parameters[0];
    const auto* text = std::get_if<Text>(&argument);
    const auto* integer = std::get_if<int32_t>(&argument);
    if (type == "string" && text != nullptr) {
        const StringArgument string(host.strings, *text);
        return Invoke(host, method.function, declaration.result, result, object, string.Get());
    }
    // The empty text may come as no string at all.
    if (type == "string" && std::holds_alternative<Nothing>(argument))
        return Invoke(host, method.function, declaration.result, result, object,
                      static_cast<MOXAstring>(nullptr));
    if (type == "integer" && integer != nullptr)
        return Invoke(host, method.function, declaration.result, result, object, *integer);
    return false;
}

}   // namespace

bool ReadDeclaration(const std::string& text, MethodDeclaration* declaration)
{
    const size_t open = text.find('(');
    const size_t close = text.find(')');
    if (open == 0 || open == std::string::npos || close == std::string::npos || close < open)
        return false;
    *declaration = {};
    declaration->name = text.substr(0, open);
    const std::vector<std::string> tail = WordsInLowerCase(text.substr(close + 1));
    if (!tail.empty() && (tail.size() != 2 || tail[0] != "as"))
        return false;
    if (!tail.empty())
        declaration->result = tail[1];
    return ReadParameters(text.substr(open + 1, close - open - 1), &declaration->parameters);
}

bool CallMethod(Host& host, MOXAobject object, const MOXAmethodDefinition& method,
                const std::vector<Value>& arguments, Value* result, std::string* problem)
{
    MethodDeclaration declaration;
    if (!ReadDeclaration(method.declaration, &declaration)) {
        *problem = std::string("this is no declaration: ") + method.declaration;
        return false;
    }
    *problem = std::string("the arguments don't fit ") + method.declaration;
    if (arguments.size() != declaration.parameters.size() || arguments.size() > 1)
        return false;
    if (arguments.empty())
        return Invoke(host, method.function, declaration.result, result, object);
    return InvokeWithOne(host, method, declaration, object, arguments[0], result);
}

}   // namespace vela::host
