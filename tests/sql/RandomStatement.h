#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace vela {

// RandomStatement writes statements of the dialect at random: all of them right, with keywords in any
// case and any blanks between tokens. No keyword is used as a name, and LIKE stands only where its
// canonical text, which has no parentheses around it, reads the same: as a condition or a term of
// one. So what it writes must parse, and the canonical text of it must parse to itself.
class RandomStatement {
public:
    explicit RandomStatement(uint32_t seed) : mRandom(seed) {}

    [[nodiscard]] std::string Next();

private:
    [[nodiscard]] uint32_t Below(uint32_t end) { return static_cast<uint32_t>(mRandom() % end); }
    [[nodiscard]] bool Chance(uint32_t percent) { return Below(100) < percent; }

    void Rule(const std::string& name, int depth);
    void Items(const std::string& items, int depth);
    void Put(const std::string& token);

    std::mt19937 mRandom;
    std::string mText;
};

}   // namespace vela
