#include "plugin/HostText.h"

#include "plugin/HostServices.h"

namespace vela {

namespace {

// Holds a reference of its own while the bytes are read, where the host has both services for it.
class TextLock {
public:
    explicit TextLock(MOXAstring text)
        : mText(HostHasServices({"MOXALockString", "MOXAUnlockString"}) ? text : nullptr)
    {
        if (mText)
            MOXALockString(mText);
    }
    ~TextLock()
    {
        if (mText)
            MOXAUnlockString(mText);
    }
    TextLock(const TextLock&) = delete;
    TextLock& operator=(const TextLock&) = delete;

private:
    MOXAstring mText;
};

}   // namespace

string TextFromHost(MOXAstring text)
{
    if (!text)
        return {};
    const TextLock lock(text);
    const auto size = static_cast<size_t>(text->Length());
    return string(text->CString(), size, text->encoding);
}

string StatementFromHost(MOXAstring text)
{
    const string statement = TextFromHost(text);
    return statement.Encoding() == kEncodingUTF16 ? ConvertEncoding(statement, kEncodingUTF8)
                                                  : statement;
}

MOXAstring TextToHost(const string& text)
{
    if (text.length() > INT32_MAX)
        return nullptr;
    const MOXAstring result = MOXABuildString(text.CString(), static_cast<int32_t>(text.length()));
    if (result)
        MOXASetStringEncoding(result, text.Encoding());
    return result;
}

MOXAstring OutOfMemoryToHost()
{
    constexpr std::string_view kText = "Error: Out of memory.";
    return MOXABuildString(kText.data(), static_cast<int32_t>(kText.size()));
}

OwnedHostText::~OwnedHostText()
{
    if (mText)
        MOXAUnlockString(mText);
}

}   // namespace vela
