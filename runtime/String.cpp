#include "runtime/String.h"

#include <new>

#include "runtime/CaseMapping.h"
#include "runtime/LargeMemory.h"

namespace vela {

namespace {

constexpr size_t kLargestCapacity = SIZE_MAX / 2;

// Bytes of memory for a text of capacity bytes and its NUL: the next size that the allocator would
// hand out anyway.
size_t AllocationSize(size_t capacity)
{
    constexpr size_t kStep = 16;
    constexpr size_t kAllocatorOverhead = sizeof(size_t);
    const size_t needed = sizeof(StringStorage) + capacity + 1 + kAllocatorOverhead;
    return (needed + kStep - 1) / kStep * kStep - kAllocatorOverhead;
}

StringStorage* Initialise(void* memory, size_t length, size_t allocated, TextEncoding encoding)
{
    const size_t capacity = allocated - sizeof(StringStorage) - 1;
    StringStorage* storage = new (memory) StringStorage{1, encoding, length, capacity};
    storage->Bytes()[length] = '\0';
    return storage;
}

// As StringStorage::Create; null when there is no memory for it.
StringStorage* TryCreate(size_t length, size_t capacity, TextEncoding encoding)
{
    if (capacity > kLargestCapacity)
        return nullptr;
    const size_t allocated = AllocationSize(capacity);
    void* memory = ::operator new(allocated, std::nothrow);
    return memory ? Initialise(memory, length, allocated, encoding) : nullptr;
}

bool IsBlank(char byte)
{
    return byte >= 1 && byte <= 32;
}

// The capacity for a text that needs at least needed bytes. One that has outgrown its place grows
// by half, so that appending byte by byte stays linear.
size_t GrownCapacity(const StringStorage* old, size_t needed)
{
    if (!old || needed <= old->Capacity())
        return old && old->length > needed ? old->length : needed;
    const size_t grown = old->Capacity() + old->Capacity() / 2;
    return grown > needed ? grown : needed;
}

void CopyBytes(char* to, const char* from, size_t size)
{
    if (size > 0)
        std::memcpy(to, from, size);
}

}   // namespace

void StringChunk::Free()
{
    LargeMemory::GiveBack(this, size);
}

void StringStorage::Free()
{
    if (room & kInChunk)
        reinterpret_cast<StringChunk*>(reinterpret_cast<char*>(this) - (room & ~kInChunk))
            ->Release();
    else
        ::operator delete(this);
}

StringStorage* StringStorage::Create(size_t length, size_t capacity, TextEncoding encoding)
{
    if (capacity > kLargestCapacity)
        throw std::bad_alloc();
    const size_t allocated = AllocationSize(capacity);
    return Initialise(::operator new(allocated), length, allocated, encoding);
}

string::string(const char* text, TextEncoding encoding)
    : string(text ? std::string_view(text) : std::string_view(), encoding)
{}

string::string(const char* bytes, size_t size, TextEncoding encoding)
    : string(std::string_view(bytes, size), encoding)
{}

string::string(std::string_view text, TextEncoding encoding)
{
    if (text.empty() && encoding == kEncodingASCII)
        return;
    mStorage = StringStorage::Create(text.size(), text.size(), encoding);
    CopyBytes(mStorage->Bytes(), text.data(), text.size());
}

void string::SetEncoding(TextEncoding encoding)
{
    if (Encoding() == encoding)
        return;
    Unshare(length());
    mStorage->encoding = encoding;
}

string string::mid(size_t position, size_t count) const
{
    const size_t start = position < length() ? position : length();
    const size_t available = length() - start;
    const size_t taken = count < available ? count : available;
    if (taken == length())
        return *this;
    return string(CString() + start, taken, Encoding());
}

string string::right(size_t count) const
{
    return count >= length() ? *this : mid(length() - count, count);
}

string string::TrimLeft() const
{
    const std::string_view text = View();
    size_t start = 0;
    while (start < text.size() && IsBlank(text[start]))
        start++;
    return mid(start);
}

string string::TrimRight() const
{
    const std::string_view text = View();
    size_t end = text.size();
    while (end > 0 && IsBlank(text[end - 1]))
        end--;
    return left(end);
}

string string::Lowercase() const
{
    return MapCase(*this, LetterCase::kLower);
}

string string::Uppercase() const
{
    return MapCase(*this, LetterCase::kUpper);
}

bool string::EqualsIgnoringCase(std::string_view other) const
{
    return vela::EqualsIgnoringCase(View(), other);
}

string& string::operator+=(const string& other)
{
    if (!empty())
        return *this += other.View();
    if (!other.empty())
        *this = other;
    return *this;
}

string& string::operator+=(std::string_view bytes)
{
    if (bytes.empty())
        return *this;
    const size_t size = length() + bytes.size();
    // The bytes may be our own, which a growing text gives up: hold on to them until they are
    // copied.
    const string old = mStorage && size > mStorage->Capacity() ? *this : string();
    Unshare(size);
    std::memcpy(mStorage->Bytes() + mStorage->length, bytes.data(), bytes.size());
    mStorage->length = size;
    mStorage->Bytes()[size] = '\0';
    return *this;
}

bool string::Reserve(size_t capacity)
{
    if (IsWritable(capacity))
        return true;
    StringStorage* storage = TryCreate(length(), GrownCapacity(mStorage, capacity), Encoding());
    if (!storage)
        return false;
    MoveTo(storage);
    return true;
}

char* string::MutableBytes()
{
    if (!mStorage)
        return nullptr;
    Unshare(mStorage->length);
    return mStorage->Bytes();
}

void string::Resize(size_t size)
{
    const size_t old = length();
    if (size == old)
        return;
    if (size < old && mStorage->references > 1) {
        *this = string(CString(), size, Encoding());
        return;
    }
    Unshare(size);
    if (size > old)
        std::memset(mStorage->Bytes() + old, 0, size - old);
    mStorage->length = size;
    mStorage->Bytes()[size] = '\0';
}

void string::Unshare(size_t capacity)
{
    if (!IsWritable(capacity))
        MoveTo(StringStorage::Create(length(), GrownCapacity(mStorage, capacity), Encoding()));
}

void string::MoveTo(StringStorage* storage)
{
    CopyBytes(storage->Bytes(), CString(), length());
    if (mStorage)
        mStorage->Release();
    mStorage = storage;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); i++) {
        if (ToLowerASCII(a[i]) != ToLowerASCII(b[i]))
            return false;
    }
    return true;
}

}   // namespace vela
