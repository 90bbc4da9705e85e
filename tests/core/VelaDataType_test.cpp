#include "engine/core/VelaDataType.h"

#include <gtest/gtest.h>

#include <string>

namespace vela {
namespace {

TEST(VelaDataType, CodesAreThoseThatFilesHold)
{
    struct {
        int code;
        VelaDataType type;
        const char* name;
        bool textBacked;
    } cases[] = {
        {0, kTypeNone, "None", false},
        {3, kTypeInteger, "Integer", false},
        {5, kTypeString, "String", true},
        {7, kTypeDouble, "Double", false},
        {8, kTypeDate, "Date", true},
        {9, kTypeTime, "Time", true},
        {10, kTypeTimestamp, "Timestamp", true},
        {12, kTypeBoolean, "Boolean", false},
        {14, kTypeBinary, "Binary", true},
    };
    EXPECT_EQ(1u, sizeof(VelaDataType));
    bool isType[256] = {};
    for (const auto& c : cases) {
        EXPECT_EQ(c.code, c.type) << c.name;
        EXPECT_STREQ(c.name, DataTypeName(c.type));
        EXPECT_EQ(c.textBacked, IsTextBacked(c.type)) << c.name;
        isType[c.code] = true;
    }
    for (int code = 0; code < 256; code++) {
        EXPECT_EQ(isType[code], IsDataType(static_cast<uint8_t>(code))) << code;
        if (isType[code])
            continue;
        EXPECT_FALSE(IsTextBacked(static_cast<VelaDataType>(code))) << code;
        EXPECT_EQ(nullptr, DataTypeName(static_cast<VelaDataType>(code))) << code;
    }
}

}   // namespace
}   // namespace vela
