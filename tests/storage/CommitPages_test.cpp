#include "engine/storage/CommitPages.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "engine/storage/StringStorageMechanism.h"

namespace vela {
namespace {

void Put(int64_t position, std::string_view bytes, std::string* file)
{
    file->replace(static_cast<size_t>(position), bytes.size(), bytes);
}

// Writes in runs and at random, as records of a table are changed.
TEST(CommitPages, ReadsAndPiecesAgreeWithPlainBytes)
{
    for (unsigned seed = 1; seed <= 40; seed++) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string original(1 + random() % 60000, '\0');
        for (char& byte : original)
            byte = static_cast<char>(random());
        StringStorageMechanism file;
        file.Open(string(original, kEncodingASCII));
        std::string expected = original;
        CommitPages pages;
        size_t position = 0;
        for (int i = 0; i < 300; i++) {
            position = random() % 8 == 0 ? random() % original.size() : position + random() % 700;
            if (position >= original.size())
                continue;
            const size_t size = std::min<size_t>(1 + random() % (random() % 20 == 0 ? 9000 : 12),
                                                 original.size() - position);
            const std::string bytes(size, static_cast<char>(random()));
            ASSERT_TRUE(pages.Write(&file, static_cast<int64_t>(original.size()),
                                    static_cast<int64_t>(position), bytes.data(), size));
            Put(static_cast<int64_t>(position), bytes, &expected);

            const size_t from = random() % original.size();
            std::string read(std::min<size_t>(random() % 10000, original.size() - from), '\0');
            ASSERT_EQ(read.size(),
                      pages.Read(&file, static_cast<int64_t>(from), read.data(), read.size()));
            ASSERT_EQ(expected.substr(from, read.size()), read);
        }
        if (random() % 2 == 0) {
            const size_t length = random() % original.size();
            pages.CutFrom(static_cast<int64_t>(length));
            expected.replace(length, std::string::npos, original.substr(length));
        }
        std::string byChanges = original;
        std::string byPieces = original;
        size_t changes = 0;
        size_t pieces = 0;
        EXPECT_TRUE(pages.ForEachChange([&](int64_t place, std::string_view bytes) {
            Put(place, bytes, &byChanges);
            changes++;
            return true;
        }));
        int64_t end = -1;
        EXPECT_TRUE(pages.ForEachPiece(&file, [&](int64_t place, std::string_view bytes) {
            EXPECT_GT(place, end);
            end = place + static_cast<int64_t>(bytes.size());
            Put(place, bytes, &byPieces);
            pieces++;
            return true;
        }));
        EXPECT_EQ(expected, byChanges);
        EXPECT_EQ(expected, byPieces);
        EXPECT_LE(pieces, changes);
    }
}

TEST(CommitPages, PiecesStopWhenTheyAreRefused)
{
    StringStorageMechanism file;
    file.Open(string(std::string(100000, 'a'), kEncodingASCII));
    CommitPages pages;
    for (const int64_t position : {10, 50000, 99000})
        ASSERT_TRUE(pages.Write(&file, 100000, position, "b", 1));
    int calls = 0;
    EXPECT_FALSE(pages.ForEachPiece(&file, [&](int64_t, std::string_view) { return ++calls < 2; }));
    EXPECT_EQ(2, calls);
}

}   // namespace
}   // namespace vela
