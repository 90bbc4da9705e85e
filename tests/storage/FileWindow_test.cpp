#include "engine/storage/FileWindow.h"

#include <gtest/gtest.h>

#include <string>

namespace vela {
namespace {

constexpr size_t kLargest = FileWindow::kLargestSize;

bool Put(FileWindow& window, int64_t position, const std::string& bytes)
{
    char* room = window.Place(position, bytes.size());
    if (room)
        bytes.copy(room, bytes.size());
    return room != nullptr;
}

void Load(FileWindow& window, const std::string& bytes)
{
    char* room = window.RoomAtEnd(bytes.size());
    ASSERT_NE(nullptr, room);
    bytes.copy(room, bytes.size());
    window.Added(bytes.size());
}

std::string All(const FileWindow& window)
{
    std::string bytes(static_cast<size_t>(window.End() - window.Start()), '#');
    window.CopyOut(window.Start(), bytes.data(), bytes.size());
    return bytes;
}

TEST(FileWindow, FindsOnlyWhatLiesInsideWhole)
{
    FileWindow window;
    window.Restart(100);
    Load(window, "abcdef");
    struct {
        int64_t position;
        size_t count;
        const char* found;
    } cases[] = {
        {100, 6, "abcdef"},       {100, 7, nullptr},        {99, 1, nullptr},
        {101, 5, "bcdef"},        {101, 6, nullptr},        {105, 1, "f"},
        {106, 1, nullptr},        {99, 7, nullptr},         {0, 1, nullptr},
        {INT64_MAX, 1, nullptr},  {105, SIZE_MAX, nullptr}, {99, SIZE_MAX, nullptr},
        {106, SIZE_MAX, nullptr},
    };
    for (const auto& c : cases) {
        const char* found = window.Find(c.position, c.count);
        if (c.found)
            EXPECT_EQ(c.found, std::string(found, c.count)) << c.position << " " << c.count;
        else
            EXPECT_EQ(nullptr, found) << c.position << " " << c.count;
    }
}

TEST(FileWindow, GrowsToItsLargestSizeAndNoFurther)
{
    FileWindow window;
    std::string model;
    for (int i = 0; model.size() < kLargest; i++) {
        const std::string piece(1024, static_cast<char>('a' + i % 26));
        ASSERT_TRUE(Put(window, static_cast<int64_t>(model.size()), piece));
        model += piece;
    }
    EXPECT_TRUE(model == All(window));
    EXPECT_FALSE(Put(window, static_cast<int64_t>(kLargest), "x"));
    EXPECT_FALSE(Put(window, static_cast<int64_t>(kLargest) - 1, "xy"));
    EXPECT_TRUE(Put(window, static_cast<int64_t>(kLargest) - 1, "x"));
    EXPECT_EQ(nullptr, window.RoomAtEnd(1));
    EXPECT_EQ(nullptr, window.RoomAtEnd(SIZE_MAX));
    EXPECT_EQ(nullptr, window.Place(0, SIZE_MAX));
    EXPECT_EQ(nullptr, window.Place(0, kLargest + 1));
}

TEST(FileWindow, DropBeforeKeepsTheEnd)
{
    struct {
        int64_t position;
        int64_t start;
        const char* left;
    } cases[] = {
        {-5, 100, "abcdef"}, {100, 100, "abcdef"}, {101, 101, "bcdef"},
        {105, 105, "f"},     {106, 106, ""},       {200, 106, ""},
    };
    for (const auto& c : cases) {
        FileWindow window;
        window.Restart(100);
        Load(window, "abcdef");
        window.DropBefore(c.position);
        EXPECT_EQ(c.start, window.Start()) << c.position;
        EXPECT_EQ(c.left, All(window)) << c.position;
    }
}

TEST(FileWindow, CutFromDropsUnwrittenBytesToo)
{
    struct {
        int64_t position;
        const char* left;
        const char* unwritten;
    } cases[] = {
        {200, "abCDef", "CD"}, {106, "abCDef", "CD"}, {105, "abCDe", "CD"},
        {104, "abCD", "CD"},   {103, "abC", "C"},     {102, "ab", ""},
        {101, "a", ""},        {100, "", ""},         {50, "", ""},
    };
    for (const auto& c : cases) {
        FileWindow window;
        window.Restart(100);
        Load(window, "abcdef");
        ASSERT_TRUE(Put(window, 102, "CD"));
        window.CutFrom(c.position);
        EXPECT_EQ(c.left, All(window)) << c.position;
        EXPECT_EQ(c.unwritten, std::string(window.HasUnwritten() ? window.Unwritten() : ""))
            << c.position;
        ASSERT_TRUE(Put(window, window.End(), "z"));
        EXPECT_EQ(std::string(c.left) + "z", All(window)) << c.position;
        EXPECT_EQ('z', window.Unwritten().back()) << c.position;
    }
}

}   // namespace
}   // namespace vela
