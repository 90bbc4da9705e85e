#include "engine/query/VExprMath.h"

#include <gtest/gtest.h>

#include "tests/query/ExprTesting.h"

namespace vela {
namespace {

std::unique_ptr<VExprMath> Math(const VelaValue& left, char op, const VelaValue& right)
{
    return std::make_unique<VExprMath>(Expr(left), op, Expr(right));
}

TEST(VExprMath, EveryPairOfTypes)
{
    const VelaValue values[] = {
        I(7),
        D(2.5),
        Text("12ab"),
        B(true),
        Date("1994-07-09"),
        Time("12:34:06"),
        Timestamp("1994-07-09 1:2"),
        Binary("9"),
        Null(kTypeNone),
    };
    // Left down, right across, in the order of values. i Integer, d Double, s String, . UNKNOWN.
    const char* const plus[] = {
        "idiiiiiii",   // Integer
        "ddddddddd",   // Double
        "sssssssss",   // String
        "id.......",   // Boolean
        "id.......",   // Date
        "id.......",   // Time
        "id.......",   // Timestamp
        "id.......",   // Binary
        "id.......",   // NULL
    };
    const SimpleVector<VelaTable*> noTables;
    for (const char op : {'+', '-', '*', '/'}) {
        for (size_t l = 0; l < std::size(values); l++) {
            for (size_t r = 0; r < std::size(values); r++) {
                const auto expr = Math(values[l], op, values[r]);
                SCOPED_TRACE(expr->Description().CString());
                char expected = plus[l][r];
                if (expected == 's' && op != '+')
                    expected = '.';
                VelaValue result;
                const bool flag = expr->Evaluate({}, &result);
                const bool divisionByZero = op == '/' && expected == 'i' && r != 0 && r != 2 &&
                                            r != 3;   // integer forms of the others are 0
                EXPECT_EQ(expected != '.' && !divisionByZero, flag);
                const VelaDataType type = expected == 'i'   ? kTypeInteger
                                          : expected == 'd' ? kTypeDouble
                                          : expected == 's' ? kTypeString
                                                            : kTypeNone;
                EXPECT_EQ(type, expr->GetType(noTables));
                if (expected != '.')
                    EXPECT_EQ(type, result.GetType());
                else
                    EXPECT_EQ(Shown(values[l]), Shown(result)) << "what the left operand left";
            }
        }
    }
    for (const VelaValue& value : {values[0], values[1]})   // there is no such operator
        EXPECT_EQ("UNKNOWN leaving " + Shown(value), Outcome(*Math(value, '?', value)));
    EXPECT_EQ(kTypeNone, VExprMath(Expr(1), '+', nullptr).GetType(noTables));
    EXPECT_EQ(kTypeNone, VExprMath(nullptr, '+', Expr(1)).GetType(noTables));
}

TEST(VExprMath, JoinedTextsMeetInOneEncoding)
{
    const VelaValue ascii = Text("ab");
    const VelaValue utf8 = UTF8("\xC3\xA9");
    const VelaValue latin1 = Latin1("\xE9");
    const VelaValue utf16 = UTF16(u"\u00E9");
    const VelaValue empty = Text("");
    struct {
        const VelaValue& left;
        const VelaValue& right;
        VelaValue joined;
        const char* why;
    } cases[] = {
        {utf8, utf8, UTF8("\xC3\xA9\xC3\xA9"), "nothing to do"},
        {ascii, utf8, UTF8("ab\xC3\xA9"), "ASCII gives way"},
        {utf8, ascii,
         UTF8("\xC3\xA9"
              "ab"),
         "also on the right"},
        {utf8, latin1, UTF8("\xC3\xA9\xC3\xA9"), "the right one is converted"},
        {latin1, utf8, Latin1("\xE9\xE9"), "to the left"},
        {utf16, ascii,
         UTF16(u"\u00E9"
               u"ab"),
         "two bytes a character"},
        {ascii, utf16, UTF16(u"ab\u00E9"), "ASCII gives way here, too"},
        {empty, utf16, utf16, "an empty text has no say"},
        {utf16, empty, utf16, "on neither side"},
    };
    for (const auto& c : cases) {
        VelaValue result;
        ASSERT_TRUE(Math(c.left, '+', c.right)->Evaluate({}, &result)) << c.why;
        EXPECT_TRUE(c.joined.TextView() == result.TextView()) << c.why;
        EXPECT_EQ(c.joined.StoredText().Encoding(), result.StoredText().Encoding()) << c.why;
    }
}

}   // namespace
}   // namespace vela
