#include "plugin/host/HostString.h"

#include <utility>

#include "plugin/host/Complaints.h"

namespace vela::host {

StringStore::~StringStore()
{
    for (const MOXAstringStruct* text : mLive)
        delete static_cast<const HostString*>(text);
}

MOXAstring StringStore::Make(std::string bytes, uint32_t encoding)
{
    auto* made = new HostString;
    made->encoding = encoding;
    made->bytes = std::move(bytes);
    mLive.insert(made);
    mReferences++;
    mMade++;
    return made;
}

void StringStore::AddReference(MOXAstring text)
{
    HostString* found = Find(text, "locking");
    if (found == nullptr)
        return;
    found->references++;
    mReferences++;
}

void StringStore::Release(MOXAstring text)
{
    HostString* found = Find(text, "giving back");
    if (found == nullptr)
        return;
    mReferences--;
    if (--found->references > 0)
        return;
    mLive.erase(text);
    delete found;
}

HostString* StringStore::Find(MOXAstring text, const char* use)
{
    if (text == nullptr)
        return nullptr;
    if (!mLive.contains(text)) {
        mComplaints.Add(std::string(use) + " a string that is not there (any more)");
        return nullptr;
    }
    return static_cast<HostString*>(text);
}

Text StringStore::Take(MOXAstring text)
{
    Text taken{"", kASCII};
    if (const HostString* found = Find(text, "returning"))
        taken = {found->bytes, found->encoding};
    Release(text);
    return taken;
}

std::vector<std::string> StringStore::DescribeLive(size_t limit) const
{
    std::vector<std::string> lines;
    for (const MOXAstringStruct* text : mLive) {
        if (lines.size() == limit)
            break;
        const auto* string = static_cast<const HostString*>(text);
        lines.push_back("string " + Quote(Text{string->bytes.substr(0, 60), string->encoding}) +
                        " with " + std::to_string(string->references) + " reference(s)");
    }
    return lines;
}

}   // namespace vela::host
