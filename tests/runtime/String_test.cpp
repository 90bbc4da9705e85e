#include "runtime/String.h"

#include <gtest/gtest.h>

#include <string>

namespace vela {
namespace {

// The bytes of a text with NULs in it, for messages and comparisons.
std::string Bytes(const string& text)
{
    return std::string(text.View());
}

template <size_t N>
string WithNULs(const char (&bytes)[N])
{
    return string(bytes, N - 1, kEncodingUTF8);
}

TEST(String, AbsentTextIsEmptyASCIIAndSafeToAsk)
{
    const string absent;
    EXPECT_EQ(0u, absent.length());
    EXPECT_TRUE(absent.empty());
    EXPECT_STREQ("", absent.CString());
    EXPECT_EQ(kEncodingASCII, absent.Encoding());
    EXPECT_EQ(0, absent.Compare(string("")));
    EXPECT_TRUE(absent == "");
    EXPECT_EQ("", Bytes(absent.left(3) + absent.mid(1, 2) + absent.right(9)));
    EXPECT_EQ("", Bytes(absent.Trim().Uppercase().Lowercase()));

    const char* nothing = nullptr;
    EXPECT_TRUE(string(nothing).empty());
    string changed;
    EXPECT_EQ(nullptr, changed.MutableBytes());
    changed.Resize(0);
    changed += std::string_view();
    EXPECT_EQ(nullptr, changed.MutableBytes());
}

TEST(String, PartsStayInsideTheText)
{
    struct {
        size_t position, count;
        const char* mid;
        const char* why;
    } cases[] = {
        {0, 0, "", "nothing from the start"},
        {0, 3, "abc", "up to the middle"},
        {0, 6, "abcdef", "exactly all"},
        {0, 7, "abcdef", "one more than there is"},
        {1, 5, "bcdef", "to the very end"},
        {1, 6, "bcdef", "one past the end"},
        {5, 1, "f", "the last byte"},
        {6, 1, "", "at the end"},
        {7, 1, "", "past the end"},
        {SIZE_MAX, 1, "", "far past the end"},
        {2, SIZE_MAX, "cdef", "count + position would wrap"},
    };
    const string text("abcdef");
    for (const auto& c : cases)
        EXPECT_EQ(c.mid, Bytes(text.mid(c.position, c.count))) << c.why;

    struct {
        size_t count;
        const char* left;
        const char* right;
    } ends[] = {
        {0, "", ""},
        {1, "a", "f"},
        {5, "abcde", "bcdef"},
        {6, "abcdef", "abcdef"},
        {7, "abcdef", "abcdef"},
        {SIZE_MAX, "abcdef", "abcdef"},
    };
    for (const auto& c : ends) {
        EXPECT_EQ(c.left, Bytes(text.left(c.count))) << c.count;
        EXPECT_EQ(c.right, Bytes(text.right(c.count))) << c.count;
    }
}

TEST(String, TrimTakesBytes1To32AndNoOthers)
{
    struct {
        const char* text;
        const char* left;
        const char* right;
        const char* both;
    } cases[] = {
        {"abc", "abc", "abc", "abc"},
        {"  a b  ", "a b  ", "  a b", "a b"},
        {"\t\r\n\x01 x\x01\x1F\x20", "x\x01\x1F\x20", "\t\r\n\x01 x", "x"},
        {"!a!", "!a!", "!a!", "!a!"},
        {"\x7Fx\x7F", "\x7Fx\x7F", "\x7Fx\x7F", "\x7Fx\x7F"},
        {"\xA0x\xA0", "\xA0x\xA0", "\xA0x\xA0", "\xA0x\xA0"},
        {"   ", "", "", ""},
    };
    for (const auto& c : cases) {
        const string text(c.text);
        EXPECT_EQ(c.left, Bytes(text.TrimLeft())) << c.text;
        EXPECT_EQ(c.right, Bytes(text.TrimRight())) << c.text;
        EXPECT_EQ(c.both, Bytes(text.Trim())) << c.text;
    }
    const string nul = WithNULs("\0a\0");
    EXPECT_EQ(Bytes(nul), Bytes(nul.Trim())) << "NUL is no blank";
}

TEST(String, CompareOrdersUnsignedBytesAndTheShorterFirst)
{
    const string ordered[] = {
        string(),       WithNULs("\0"),     WithNULs("\0\0"), string("A"),
        string("Z"),    string("a"),        WithNULs("a\0"),  string("a\x01"),
        string("aa"),   string("ab"),       string("b"),      string("\x7F"),
        string("\x80"), string("\xC3\xA9"), string("\xFF"),   string("\xFF\xFF"),
    };
    const int count = sizeof ordered / sizeof ordered[0];
    for (int i = 0; i < count; i++) {
        for (int j = 0; j < count; j++) {
            const int order = ordered[i].Compare(ordered[j]);
            EXPECT_EQ(i < j, order < 0) << i << " " << j;
            EXPECT_EQ(i > j, order > 0) << i << " " << j;
            EXPECT_EQ(i == j, ordered[i] == ordered[j]) << i << " " << j;
            EXPECT_EQ(i != j, ordered[i] != ordered[j]) << i << " " << j;
            EXPECT_EQ(order, ordered[i].CompareWithCase(ordered[j])) << i << " " << j;
        }
    }
}

TEST(String, EqualsIgnoringCaseFoldsASCIILettersAlone)
{
    struct {
        const char* a;
        const char* b;
        bool equal;
        const char* why;
    } cases[] = {
        {"", "", true, "both empty"},
        {"Date", "dATE", true, "letters of both cases"},
        {"az", "AZ", true, "ends of the alphabet"},
        {"@", "`", false, "the bytes before A and a"},
        {"[", "{", false, "the bytes behind Z and z"},
        {"date", "dat", false, "a prefix"},
        {"dat", "date", false, "a prefix, the other way round"},
        {"date1", "date2", false, "another digit"},
        {"\xC4", "\xE4", false, "Latin-1 letters"},
        {"\xC3\x84", "\xC3\xA4", false, "UTF-8 letters"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.equal, string(c.a).EqualsIgnoringCase(c.b)) << c.why;
        EXPECT_EQ(c.equal, EqualsIgnoringCase(c.b, c.a)) << c.why;
    }
    EXPECT_FALSE(EqualsIgnoringCase(std::string_view("a\0", 2), "a"));
}

TEST(String, CopiesShareTheirBytesUntilOneChanges)
{
    const string original("shared");
    string copy = original;
    string assigned;
    assigned = original;
    EXPECT_EQ(original.CString(), copy.CString());
    EXPECT_EQ(original.CString(), assigned.CString());
    EXPECT_EQ(original.CString(), original.mid(0).CString()) << "the whole text is shared";
    EXPECT_EQ(original.CString(), original.Trim().CString()) << "nothing to trim";

    copy.MutableBytes()[0] = 'S';
    EXPECT_STREQ("Shared", copy.CString());
    EXPECT_STREQ("shared", original.CString());
    assigned += "!";
    EXPECT_STREQ("shared!", assigned.CString());
    EXPECT_STREQ("shared", original.CString());
}

TEST(String, AbsentTextIsLengthenedWithNULs)
{
    string absent;
    absent.Resize(2);
    EXPECT_EQ(std::string("\0\0", 2), Bytes(absent));
}

TEST(String, AppendingTakesTheEncodingOfTheFirstTextThatHasBytes)
{
    const string latin("\xE9", kEncodingLatin1);
    const string utf8("\xC3\xA9", kEncodingUTF8);
    EXPECT_EQ(kEncodingLatin1, (latin + utf8).Encoding());
    EXPECT_EQ(kEncodingUTF8, (utf8 + latin).Encoding());
    EXPECT_EQ(kEncodingLatin1, (string() + latin).Encoding());
    EXPECT_EQ(kEncodingLatin1, (string("", kEncodingUTF8) + latin).Encoding());
    EXPECT_EQ(kEncodingUTF8, (utf8 + string()).Encoding());
    EXPECT_EQ(kEncodingUTF8, (string("", kEncodingUTF8) + string()).Encoding());
    EXPECT_EQ(kEncodingASCII, ("DATE " + utf8).Encoding());
    EXPECT_EQ("DATE \xC3\xA9", Bytes("DATE " + utf8));
    EXPECT_EQ("x y", Bytes(string("x") + " y"));
}

TEST(String, ReserveRefusesWhatNoMemoryCanHold)
{
    string text("abc");
    EXPECT_FALSE(text.Reserve(SIZE_MAX));
    EXPECT_FALSE(text.Reserve(SIZE_MAX - 10));
    EXPECT_STREQ("abc", text.CString());
    EXPECT_TRUE(text.Reserve(1 << 20));
    const char* bytes = text.CString();
    text.Resize(1 << 20);
    EXPECT_EQ(bytes, text.CString()) << "reserved room is used in place";
    EXPECT_EQ('c', text[2]);
}

TEST(String, StorageIsHandedOverWithItsReference)
{
    string text("abc", kEncodingUTF8);
    const string copy = text;
    StringStorage* storage = text.ReleaseStorage();
    ASSERT_NE(nullptr, storage);
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(2u, storage->references);
    {
        const string adopted = string::AdoptStorage(storage);
        EXPECT_EQ(copy.CString(), adopted.CString());
    }
    EXPECT_STREQ("abc", copy.CString());
    EXPECT_EQ(nullptr, string().ReleaseStorage());
    EXPECT_TRUE(string::AdoptStorage(nullptr).empty());
}

}   // namespace
}   // namespace vela
