#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace vela::bench {

// What a workload answered, in a form that two engines' answers can be compared in.
struct Answer {
    uint64_t rows = 0;
    uint64_t digest = 0;
};

[[nodiscard]] inline bool operator==(const Answer& a, const Answer& b)
{
    return a.rows == b.rows && a.digest == b.digest;
}
[[nodiscard]] inline bool operator!=(const Answer& a, const Answer& b)
{
    return !(a == b);
}

// Whether the order of a result's rows is part of the answer.
enum class RowOrder { kAny, kFixed };

// AnswerDigest takes the values of a result, row by row, every byte of each. Numbers count by their
// value as a double, whatever type an engine gives them; texts by their bytes.
class AnswerDigest {
public:
    explicit AnswerDigest(RowOrder order) : mOrder(order) {}

    void AddNull() { Mix(0x6E756C6C); }
    void AddNumber(double number)
    {
        uint64_t bits;
        number = number == 0 ? 0 : number;   // no negative zero
        std::memcpy(&bits, &number, sizeof bits);
        Mix(bits);
    }
    void AddText(std::string_view text)
    {
        Mix(text.size());
        for (size_t i = 0; i < text.size(); i += sizeof(uint64_t)) {
            uint64_t bytes = 0;
            const size_t left = text.size() - i;
            std::memcpy(&bytes, text.data() + i, left < sizeof bytes ? left : sizeof bytes);
            Mix(bytes);
        }
    }
    void EndRow()
    {
        mAnswer.rows++;
        mAnswer.digest = mOrder == RowOrder::kFixed ? (mAnswer.digest ^ mRow) * kFactor + 1
                                                    : mAnswer.digest + mRow;
        mRow = 0;
    }
    [[nodiscard]] Answer Result() const { return mAnswer; }

private:
    static constexpr uint64_t kFactor = 0x9E3779B97F4A7C15;

    void Mix(uint64_t bits)
    {
        mRow = (mRow ^ bits) * kFactor;
        mRow ^= mRow >> 29;
    }

    RowOrder mOrder;
    uint64_t mRow = 0;
    Answer mAnswer;
};

}   // namespace vela::bench
