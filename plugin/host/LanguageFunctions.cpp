#include "plugin/host/LanguageFunctions.h"

#include <optional>
#include <string>
#include <string_view>

#include "plugin/host/Host.h"

namespace vela::host {

namespace {

// What a save info of this host begins with: bytes that are no text, so that they show whether all
// of them come back.
constexpr std::string_view kSaveInfoMark("\0\xFFINFO'\\", 8);

std::string BytesOf(MOXAstring text, const char* use)
{
    const HostString* found = Host::Current().strings.Find(text, use);
    return found == nullptr ? std::string() : found->bytes;
}

MOXAfolderItem MakeItem(const std::string& path)
{
    return Host::Current().MakeFolderItem(path)->Reference();
}

MOXAfolderItem AskForItem(const char* dialog)
{
    Dialogs& dialogs = Host::Current().dialogs;
    dialogs.asked++;
    if (dialogs.answers.empty()) {
        Host::Current().complaints.Add(std::string(dialog) + " opens, and nobody is to answer it");
        return nullptr;
    }
    const std::optional<std::string> answer = dialogs.answers.front();
    dialogs.answers.pop_front();
    return answer ? MakeItem(*answer) : nullptr;
}

MOXAfolderItem GetOpenFolderItem(MOXAstring filter)
{
    Dialogs& dialogs = Host::Current().dialogs;
    dialogs.filter = BytesOf(filter, "GetOpenFolderItem with");
    dialogs.defaultName.clear();
    return AskForItem("GetOpenFolderItem");
}

MOXAfolderItem GetSaveFolderItem(MOXAstring filter, MOXAstring defaultName)
{
    Dialogs& dialogs = Host::Current().dialogs;
    dialogs.filter = BytesOf(filter, "GetSaveFolderItem with");
    dialogs.defaultName = BytesOf(defaultName, "GetSaveFolderItem with");
    return AskForItem("GetSaveFolderItem");
}

MOXAfolderItem GetFolderItem(MOXAstring path)
{
    return MakeItem(BytesOf(path, "GetFolderItem with"));
}

// The path of item seen from relativeTo when it lies below it; else the whole path.
MOXAstring GetSaveInfo(MOXAfolderItem itemReference, MOXAfolderItem relativeToReference)
{
    Host& host = Host::Current();
    const auto* item = host.objects.Find<FolderItem>(itemReference, "GetSaveInfo of");
    const auto* from = host.objects.Find<FolderItem>(relativeToReference, "GetSaveInfo with");
    if (item == nullptr)
        return nullptr;
    std::string path = item->Path();
    if (from != nullptr && path.starts_with(from->Path() + "/"))
        path.erase(0, from->Path().size() + 1);
    return host.strings.Make(std::string(kSaveInfoMark) + path, kMOXAEncodingMacRoman);
}

MOXAfolderItem GetRelative(MOXAfolderItem itemReference, MOXAstring saveInfo)
{
    auto* item = Host::Current().objects.Find<FolderItem>(itemReference, "GetRelative of");
    const std::string info = BytesOf(saveInfo, "GetRelative with");
    if (item == nullptr || !info.starts_with(kSaveInfoMark))
        return nullptr;
    const std::string path = info.substr(kSaveInfoMark.size());
    return MakeItem(path.starts_with('/') ? path : item->Path() + "/" + path);
}

struct LanguageFunction {
    const char* name;   // by which it can be withheld
    const char* declaration;
    MOXAproc function;
};

template <typename Function>
MOXAproc AsProc(Function* function)
{
    return reinterpret_cast<MOXAproc>(function);
}

template <size_t kCount>
MOXAproc FindIn(const LanguageFunction (&functions)[kCount], const char* declaration)
{
    const std::string_view wanted = declaration == nullptr ? "" : declaration;
    for (const LanguageFunction& function : functions)
        if (wanted == function.declaration)
            return Host::Current().Offers(function.name) ? function.function : nullptr;
    Host::Current().complaints.Add("asking for a function that this host doesn't know: " +
                                   std::string(wanted));
    return nullptr;
}

}   // namespace

MOXAproc FindGlobalFunction(const char* declaration)
{
    static const LanguageFunction kFunctions[] = {
        {"GetOpenFolderItem", "GetOpenFolderItem(filter As String) As FolderItem",
         AsProc(GetOpenFolderItem)},
        {"GetSaveFolderItem",
         "GetSaveFolderItem(filter As String, defaultName As String) As FolderItem",
         AsProc(GetSaveFolderItem)},
        {"GetFolderItem", "GetFolderItem(path As String) As FolderItem", AsProc(GetFolderItem)},
    };
    return FindIn(kFunctions, declaration);
}

MOXAproc FindObjectFunction(MOXAobject object, const char* declaration)
{
    static const LanguageFunction kFunctions[] = {
        {"GetSaveInfo", "GetSaveInfo(relativeTo As FolderItem) As String", AsProc(GetSaveInfo)},
        {"GetRelative", "GetRelative(saveInfo As String) As FolderItem", AsProc(GetRelative)},
    };
    if (Host::Current().objects.Find<FolderItem>(object, "MOXALoadObjectMethod of") == nullptr)
        return nullptr;
    return FindIn(kFunctions, declaration);
}

}   // namespace vela::host
