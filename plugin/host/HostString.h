#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "plugin/MOXAPlugin.h"
#include "plugin/host/Text.h"

namespace vela::host {

class Complaints;

// What a string reference of this host points at.
struct HostString : MOXAstringStruct {
    std::string bytes;
    int32_t references = 1;
};

// StringStore holds every string that somebody has a reference to, and knows when somebody uses
// one that is gone. A null reference is the empty text everywhere, and needs no counting.
class StringStore {
public:
    // Complaints are told of every use of a string that isn't there.
    explicit StringStore(Complaints& complaints) : mComplaints(complaints) {}
    ~StringStore();
    StringStore(const StringStore&) = delete;
    StringStore& operator=(const StringStore&) = delete;

    // A new string with one reference, the caller's.
    [[nodiscard]] MOXAstring Make(std::string bytes, uint32_t encoding);
    void AddReference(MOXAstring text);
    // The last reference takes the string along.
    void Release(MOXAstring text);
    // The string behind a reference; null for a null reference, and for one to nothing. use names
    // the caller in the complaint.
    [[nodiscard]] HostString* Find(MOXAstring text, const char* use);

    // Copies what a reference stands for and gives the reference back.
    [[nodiscard]] Text Take(MOXAstring text);

    [[nodiscard]] size_t Count() const { return mLive.size(); }
    [[nodiscard]] int64_t References() const { return mReferences; }
    // How many strings there have been.
    [[nodiscard]] int64_t Made() const { return mMade; }
    // The strings that are left, as lines for people; at most limit of them.
    [[nodiscard]] std::vector<std::string> DescribeLive(size_t limit) const;

private:
    Complaints& mComplaints;
    std::unordered_set<const MOXAstringStruct*> mLive;
    int64_t mReferences = 0;
    int64_t mMade = 0;
};

// A string for the time of one call: what the host passes as an argument.
class StringArgument {
public:
    StringArgument(StringStore& store, const Text& text)
        : mStore(store), mString(store.Make(text.bytes, text.encoding))
    {}
    ~StringArgument() { mStore.Release(mString); }
    StringArgument(const StringArgument&) = delete;
    StringArgument& operator=(const StringArgument&) = delete;

    [[nodiscard]] MOXAstring Get() const { return mString; }

private:
    StringStore& mStore;
    MOXAstring mString;
};

}   // namespace vela::host
