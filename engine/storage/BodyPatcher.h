#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vela {

// BodyPatcher merges changes into record bodies as MergeBodies does, by the quick way where there is one: when the body has a
// value of the same type for each changed column, these types are of fixed sizes, and nothing else of the body would come out
// in another way than it is stored, new bytes take the place of old ones.
//
// It goes by the bytes that list the columns of a body, so it pays where bodies with the same columns follow each other, as
// those of a table mostly do.
class BodyPatcher {
public:
    // Bytes of a body from offset at on that become others.
    struct Difference {
        size_t at;
        std::string_view bytes;   // of FindDifferences: a part of the changes
    };

    // Compares base with the body that MergeBodies(base, changes, MergedNulls::kTakeOut, merged) would make: bodySize is how long
    // that is, which base may go on behind, differences is where it has other bytes. False: it can't, and both are undefined.
    bool FindDifferences(std::string_view base, std::string_view changes,
                         std::vector<Difference>* differences, size_t* bodySize);

private:
    // Some bytes of the payloads: values of fixed sizes up to a changed one, that one, or a text with its numbers.
    struct Step {
        enum Kind : uint8_t { kKept, kBoolean, kChanged, kText } kind;
        uint32_t size;      // of a text: of its numbers
        uint32_t newFrom;   // kChanged: where the new bytes are, behind the list of the changes
    };

    [[nodiscard]] bool Knows(std::string_view base, std::string_view changes) const;
    void Learn(std::string_view base, std::string_view changes);
    bool MakeSteps(std::string_view base, std::string_view changes);
    void AddStep(const Step& step);

    std::string mBaseList;
    std::string mChangesList;
    size_t mChangesSize = 0;
    bool mServes = false;   // bodies and changes with these lists
    std::vector<Step> mSteps;
};

}   // namespace vela
