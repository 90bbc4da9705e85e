#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "runtime/TextEncoding.h"

namespace vela {

// Memory that several storages lie in (see StringArena.h), after this head.
struct StringChunk {
    size_t references;   // storages in it, and the arena that still fills it
    size_t size;         // bytes, with the head

    void Release()
    {
        if (--references == 0)
            Free();
    }
    void Free();
};

// The shared bytes behind a string. Reference counts are plain numbers: a string and its copies
// stay on one thread.
struct StringStorage {
    static constexpr size_t kInChunk = ~(SIZE_MAX / 2);

    uint32_t references;
    TextEncoding encoding;
    size_t length;   // bytes of text, without the NUL that always follows them
    size_t room;     // as Capacity, or kInChunk and the offset in a StringChunk

    // Bytes of text that fit before the storage must move.
    [[nodiscard]] size_t Capacity() const { return (room & kInChunk) ? length : room; }
    char* Bytes() { return reinterpret_cast<char*>(this + 1); }
    const char* Bytes() const { return reinterpret_cast<const char*>(this + 1); }
    void Retain() { ++references; }
    void Release()
    {
        if (--references == 0)
            Free();
    }
    void Free();
    // A storage with one reference and room for capacity bytes; its text has length bytes, not yet
    // set.
    static StringStorage* Create(size_t length, size_t capacity, TextEncoding encoding);
};

// string is the engine's byte string: reference-counted, copied on write, tagged with a text
// encoding.
//
// It may hold any bytes, NUL included. Copying shares the bytes; the first change to a shared
// string copies them. An absent text (default construction) is empty and tagged US-ASCII. Positions
// and counts are bytes, from 0.
class string {
public:
    string() = default;
    string(const char* text,
           TextEncoding encoding = kEncodingASCII);   // NUL-terminated; null is the empty text
    string(const char* bytes, size_t size, TextEncoding encoding);
    string(std::string_view text, TextEncoding encoding);
    string(const string& other) : mStorage(other.mStorage)
    {
        if (mStorage)
            mStorage->Retain();
    }
    string(string&& other) noexcept : mStorage(other.mStorage) { other.mStorage = nullptr; }
    ~string()
    {
        if (mStorage)
            mStorage->Release();
    }
    string& operator=(const string& other)
    {
        if (other.mStorage)
            other.mStorage->Retain();
        if (mStorage)
            mStorage->Release();
        mStorage = other.mStorage;
        return *this;
    }
    string& operator=(string&& other) noexcept
    {
        StringStorage* taken = other.mStorage;
        other.mStorage = mStorage;
        mStorage = taken;
        return *this;
    }

    [[nodiscard]] size_t length() const { return mStorage ? mStorage->length : 0; }
    [[nodiscard]] bool empty() const { return length() == 0; }
    // Never null; a NUL follows the last byte. Good until the string changes or dies.
    [[nodiscard]] const char* CString() const { return mStorage ? mStorage->Bytes() : ""; }
    [[nodiscard]] std::string_view View() const { return {CString(), length()}; }
    // The same, for who takes any bytes.
    operator std::string_view() const { return View(); }
    [[nodiscard]] unsigned char operator[](size_t position) const
    {
        return static_cast<unsigned char>(mStorage->Bytes()[position]);
    }
    [[nodiscard]] TextEncoding Encoding() const
    {
        return mStorage ? mStorage->encoding : kEncodingASCII;
    }
    // Changes the tag alone; the bytes stay.
    void SetEncoding(TextEncoding encoding);

    // Parts of the text, with its encoding. Counts that run past the end take what is there.
    [[nodiscard]] string left(size_t count) const { return mid(0, count); }
    [[nodiscard]] string mid(size_t position, size_t count = SIZE_MAX) const;
    [[nodiscard]] string right(size_t count) const;
    // Without the blanks (bytes 1 to 32) at the start, at the end, or both.
    [[nodiscard]] string TrimLeft() const;
    [[nodiscard]] string TrimRight() const;
    [[nodiscard]] string Trim() const { return TrimLeft().TrimRight(); }
    // UTF-8 text maps one code point to one, whatever the process's locale is; other text maps its
    // ASCII letters.
    [[nodiscard]] string Lowercase() const;
    [[nodiscard]] string Uppercase() const;

    // Below 0, 0 or above 0. Bytes as unsigned numbers, the shorter text first when one starts the
    // other; encoding tags don't take part. The two differ in name only, kept for the places that
    // promise to respect case.
    [[nodiscard]] int Compare(const string& other) const
    {
        return CompareBytes(View(), other.View());
    }
    [[nodiscard]] int CompareWithCase(const string& other) const { return Compare(other); }
    // ASCII letters are equal in both cases; all else as in Compare.
    [[nodiscard]] bool EqualsIgnoringCase(std::string_view other) const;

    // The result has the encoding of the left side, unless that is empty: then that of the right.
    string& operator+=(const string& other);
    string& operator+=(std::string_view bytes);
    string& operator+=(const char* text) { return *this += std::string_view(text); }
    string& operator+=(char byte) { return *this += std::string_view(&byte, 1); }

    // The bytes for changing in place, unshared first; exactly length() of them. Null when the text
    // is absent.
    [[nodiscard]] char* MutableBytes();
    // Cuts the text or lengthens it with NUL bytes.
    void Resize(size_t size);
    // Makes room for capacity bytes in all, so that growing up to there moves nothing. False, with
    // nothing changed, when there is no memory for it; the operations above take memory for
    // granted.
    [[nodiscard]] bool Reserve(size_t capacity);

    static int CompareBytes(std::string_view a, std::string_view b)
    {
        const size_t common = a.size() < b.size() ? a.size() : b.size();
        const int order = common == 0 ? 0 : std::memcmp(a.data(), b.data(), common);
        if (order != 0)
            return order;
        return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
    }

    // For VelaValue, which keeps the reference in its payload. ReleaseStorage gives the caller this
    // string's reference (null for an absent text) and leaves it absent; AdoptStorage makes a
    // string of a reference that the caller owned.
    [[nodiscard]] StringStorage* ReleaseStorage()
    {
        StringStorage* storage = mStorage;
        mStorage = nullptr;
        return storage;
    }
    [[nodiscard]] static string AdoptStorage(StringStorage* storage)
    {
        string result;
        result.mStorage = storage;
        return result;
    }

private:
    // Whether the storage is unshared and has room for capacity bytes.
    [[nodiscard]] bool IsWritable(size_t capacity) const
    {
        return mStorage && mStorage->references == 1 && mStorage->Capacity() >= capacity;
    }
    // Makes it so; text and tag stay.
    void Unshare(size_t capacity);
    // Copies the text to storage, which has room for it, and keeps it there.
    void MoveTo(StringStorage* storage);

    StringStorage* mStorage = nullptr;
};

[[nodiscard]] inline string operator+(string left, const string& right)
{
    left += right;
    return left;
}
[[nodiscard]] inline bool operator==(const string& a, const string& b)
{
    return a.View() == b.View();
}
[[nodiscard]] inline bool operator!=(const string& a, const string& b)
{
    return !(a == b);
}
// A template, so that a std::string_view that meets a literal isn't compared by making a string of the latter.
template <std::same_as<string> String>
[[nodiscard]] bool operator==(const String& a, std::string_view b)
{
    return a.View() == b;
}
[[nodiscard]] inline string operator+(string left, const char* right)
{
    left += std::string_view(right);
    return left;
}
[[nodiscard]] inline string operator+(const char* left, const string& right)
{
    return string(left) + right;
}

// ASCII letters equal in both cases; lengths must agree.
[[nodiscard]] bool EqualsIgnoringCase(std::string_view a, std::string_view b);

}   // namespace vela
