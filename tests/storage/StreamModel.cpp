#include "tests/storage/StreamModel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace vela {
namespace {

constexpr size_t kLongest = 3000000;

class Comparison {
public:
    Comparison(RandomAccessMechanism& stream, unsigned seed, std::string* model)
        : mStream(stream), mRandom(seed), mModel(model)
    {}

    void Step()
    {
        const size_t choice = mRandom() % 100;
        if (choice < 40)
            Read();
        else if (choice < 75)
            Write();
        else if (choice < 97)
            Seek();
        else
            SetLength();
        ASSERT_EQ(static_cast<int64_t>(mModel->size()), mStream.GetLength());
        ASSERT_EQ(static_cast<int64_t>(mPosition), mStream.GetPosition());
        ASSERT_EQ(mPosition >= mModel->size(), mStream.IsEOF());
        const size_t near = mPosition - std::min(mPosition, mRandom() % size_t{300});
        const std::string_view atHand = mStream.Peek(static_cast<int64_t>(near));
        ASSERT_TRUE(atHand.empty() || mModel->compare(near, atHand.size(), atHand) == 0) << near;
    }
    unsigned Random() { return static_cast<unsigned>(mRandom()); }

private:
    // Mostly the sizes of records and their parts, sometimes those of blocks.
    size_t RandomSize()
    {
        const size_t choice = mRandom() % 100;
        return mRandom() % (choice < 30 ? 16 : choice < 90 ? 300 : choice < 97 ? 9000 : 200000);
    }

    void Read()
    {
        const size_t count = RandomSize();
        std::string bytes(count, '#');
        int came = -1;
        const bool all = mStream.ReadData(bytes.data(), static_cast<int>(count), &came);
        const std::string expected =
            mPosition < mModel->size() ? mModel->substr(mPosition, count) : "";
        ASSERT_EQ(expected.size(), static_cast<size_t>(came)) << count << " at " << mPosition;
        ASSERT_EQ(expected.size() == count, all);
        ASSERT_TRUE(expected == bytes.substr(0, expected.size())) << count << " at " << mPosition;
        mPosition += expected.size();
    }

    void Write()
    {
        if (mPosition + 200000 > kLongest)
            return;
        const std::string bytes = PatternBytes(RandomSize(), Random());
        ASSERT_TRUE(mStream.WriteData(bytes.data(), static_cast<int>(bytes.size())));
        if (bytes.empty())
            return;
        if (mModel->size() < mPosition + bytes.size())
            mModel->resize(mPosition + bytes.size());
        mModel->replace(mPosition, bytes.size(), bytes);
        mPosition += bytes.size();
    }

    void Seek()
    {
        const size_t near = mRandom() % 2000;
        switch (mRandom() % 5) {
            case 0:
                mPosition = mRandom() % (mModel->size() + 1000);
                break;
            case 1:
                mPosition = mModel->size();
                break;
            case 2:
                mPosition = std::min(mPosition + near, kLongest);
                break;
            default:
                mPosition -= std::min(mPosition, near);
                break;
        }
        ASSERT_TRUE(mStream.SeekFromStart(static_cast<int64_t>(mPosition)));
    }

    void SetLength()
    {
        size_t length = mModel->size();
        switch (mRandom() % 4) {
            case 0:
                length += mRandom() % 10000;
                break;
            case 1:
                length = mRandom() % (length + 1);
                break;
            case 2:
                length -= std::min<size_t>(length, mRandom() % 500);
                break;
            default:
                break;
        }
        ASSERT_TRUE(mStream.SetLength(static_cast<int64_t>(length)));
        mModel->resize(length);
    }

    RandomAccessMechanism& mStream;
    std::mt19937 mRandom;
    std::string* mModel;
    size_t mPosition = 0;
};

}   // namespace

void CompareWithString(RandomAccessMechanism& stream, unsigned seed, int count, std::string* model,
                       const std::function<void(unsigned)>& extra)
{
    model->clear();
    Comparison comparison(stream, seed, model);
    for (int i = 0; i < count; i++) {
        comparison.Step();
        if (extra && i % 16 == 0)
            extra(comparison.Random());
        if (testing::Test::HasFatalFailure()) {
            ADD_FAILURE() << "at operation " << i << " of seed " << seed;
            return;
        }
    }
}

std::string PatternBytes(size_t count, unsigned seed)
{
    std::string bytes(count, '\0');
    uint32_t state = seed * 2654435761u + 1;
    for (char& byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

}   // namespace vela
