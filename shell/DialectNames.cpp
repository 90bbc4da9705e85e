#include "shell/DialectNames.h"

#include <algorithm>
#include <unordered_set>

#include "engine/query/VelaFunctions.h"

namespace vela::shell {

namespace {

constexpr size_t kLongestName = 200;   // bytes

bool StartsName(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' ||
           byte == '#';
}

bool ContinuesName(char byte)
{
    constexpr std::string_view kUnusable = "%()*+,-/;<=>\\^.'\"\x7F";
    return static_cast<unsigned char>(byte) > ' ' && kUnusable.find(byte) == std::string_view::npos;
}

// At most size bytes of text, without the beginning of a cut character at the end.
std::string CutTo(std::string text, size_t size)
{
    if (text.size() <= size)
        return text;
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0u) == 0x80u)
        size--;
    text.resize(size);
    return text;
}

std::string UsableName(const std::string& name, size_t number)
{
    if (name.empty())
        return "column_" + std::to_string(number);
    std::string result = name;
    std::replace_if(
        result.begin(), result.end(), [](char byte) { return !ContinuesName(byte); }, '_');
    if (!StartsName(result[0]))
        result.insert(0, 1, '_');
    return CutTo(result, kLongestName);
}

}   // namespace

bool IsUsableName(std::string_view name)
{
    return !name.empty() && name.size() <= kLongestName && StartsName(name[0]) &&
           std::all_of(name.begin(), name.end(), ContinuesName);
}

std::vector<std::string> UsableNames(const std::vector<std::string>& names, bool reserveRowID)
{
    const std::unordered_set<std::string> wanted(names.begin(), names.end());
    std::unordered_set<std::string> taken;
    if (reserveRowID)
        taken.insert("_rowid");
    std::vector<std::string> result;
    for (size_t i = 0; i < names.size(); i++) {
        const std::string base = UsableName(names[i], i + 1);
        std::string name = base;
        // A made name is not one that another column has as its own.
        for (int suffix = 2; taken.contains(name) || (name != names[i] && wanted.contains(name));
             suffix++)
            name = CutTo(base, kLongestName - 8) + "_" + std::to_string(suffix);
        taken.insert(name);
        result.push_back(name);
    }
    return result;
}

bool NeedsQualifier(std::string_view name)
{
    for (const char* word : {"FROM", "NOT", "NULL", "TRUE", "FALSE", "DATE", "TIME", "TIMESTAMP"})
        if (EqualsIgnoringCase(name, word))
            return true;
    string function(name, kEncodingUTF8);
    return GetVelaFuncCode(&function, nullptr);
}

}   // namespace vela::shell
