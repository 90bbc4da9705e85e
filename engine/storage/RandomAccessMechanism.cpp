#include "engine/storage/RandomAccessMechanism.h"

#include <bit>

#include "engine/storage/DamageLog.h"

namespace vela {

namespace {

constexpr size_t kLongestPString = 255;

// Encoded integers.
constexpr uint32_t kMore = 0x80;
constexpr uint32_t kNegative = 0x40;
constexpr uint32_t kMostNegative = 0x80000000u;
constexpr int kFirstBits = 6;
constexpr int kFurtherBits = 7;
constexpr int kLongestEncodedInt = 5;

// number as size bytes in the order asked for.
void StoreNumber(uint64_t number, unsigned char* bytes, int size, bool bigEndian)
{
    for (int i = 0; i < size; i++) {
        const int at = bigEndian ? size - 1 - i : i;
        bytes[at] = static_cast<unsigned char>(number >> 8 * i);
    }
}

uint64_t LoadNumber(const unsigned char* bytes, int size, bool bigEndian)
{
    uint64_t number = 0;
    for (int i = 0; i < size; i++) {
        const int at = bigEndian ? i : size - 1 - i;
        number = number << 8 | bytes[at];
    }
    return number;
}

}   // namespace

bool RandomAccessMechanism::FlushToDisk()
{
    return true;
}

bool RandomAccessMechanism::Reserve(int64_t)
{
    return true;
}

bool RandomAccessMechanism::ReadByte(unsigned char& value)
{
    unsigned char byte;
    if (!ReadData(&byte, sizeof byte, nullptr))
        return false;
    value = byte;
    return true;
}

bool RandomAccessMechanism::WriteByte(int value)
{
    const unsigned char byte = static_cast<unsigned char>(value);
    return WriteData(&byte, sizeof byte);
}

bool RandomAccessMechanism::ReadShort(short& value)
{
    unsigned char bytes[2];
    if (!ReadData(bytes, sizeof bytes, nullptr))
        return false;
    value = static_cast<short>(LoadNumber(bytes, sizeof bytes, mBigEndian));
    return true;
}

bool RandomAccessMechanism::WriteShort(int value)
{
    unsigned char bytes[2];
    StoreNumber(static_cast<uint32_t>(value), bytes, sizeof bytes, mBigEndian);
    return WriteData(bytes, sizeof bytes);
}

bool RandomAccessMechanism::ReadLong(int& value)
{
    unsigned char bytes[4];
    if (!ReadData(bytes, sizeof bytes, nullptr))
        return false;
    value = static_cast<int>(static_cast<uint32_t>(LoadNumber(bytes, sizeof bytes, mBigEndian)));
    return true;
}

bool RandomAccessMechanism::WriteLong(int value)
{
    unsigned char bytes[4];
    StoreNumber(static_cast<uint32_t>(value), bytes, sizeof bytes, mBigEndian);
    return WriteData(bytes, sizeof bytes);
}

bool RandomAccessMechanism::ReadDouble(double& value)
{
    unsigned char bytes[8];
    if (!ReadData(bytes, sizeof bytes, nullptr))
        return false;
    value = std::bit_cast<double>(LoadNumber(bytes, sizeof bytes, mBigEndian));
    return true;
}

bool RandomAccessMechanism::WriteDouble(double value)
{
    unsigned char bytes[8];
    StoreNumber(std::bit_cast<uint64_t>(value), bytes, sizeof bytes, mBigEndian);
    return WriteData(bytes, sizeof bytes);
}

bool RandomAccessMechanism::ReadPString(string& value)
{
    unsigned char size;
    char text[kLongestPString];
    if (!ReadByte(size) || !ReadData(text, size, nullptr))
        return false;
    value = string(text, size, kEncodingASCII);
    return true;
}

bool RandomAccessMechanism::WritePString(const string& value)
{
    const std::string_view text = value.View().substr(0, kLongestPString);
    char bytes[1 + kLongestPString];
    bytes[0] = static_cast<char>(text.size());
    text.copy(bytes + 1, text.size());
    return WriteData(bytes, static_cast<int>(1 + text.size()));
}

bool RandomAccessMechanism::WriteLine(const string& value)
{
    string line = value;
    line += '\n';
    return line.length() <= INT32_MAX && WriteData(line.CString(), static_cast<int>(line.length()));
}

bool RandomAccessMechanism::ReadEncodedInt(int& value)
{
    unsigned char byte;
    if (!ReadByte(byte))
        return false;
    const bool isNegative = (byte & kNegative) != 0;
    uint64_t magnitude = byte & (kNegative - 1);
    int shift = kFirstBits;
    for (int count = 1; (byte & kMore) != 0; count++) {
        if (count == kLongestEncodedInt || !ReadByte(byte))
            return false;
        magnitude |= static_cast<uint64_t>(byte & (kMore - 1)) << shift;
        shift += kFurtherBits;
    }
    if (magnitude > UINT32_MAX)
        return false;
    const uint32_t bits = static_cast<uint32_t>(magnitude);
    value = static_cast<int>(
        isNegative ? 0u - bits : bits);   // of the most negative number, the negative is itself
    return true;
}

bool RandomAccessMechanism::WriteEncodedInt(int value)
{
    const uint32_t bits = static_cast<uint32_t>(value);
    const bool hasSign = value < 0 && bits != kMostNegative;
    uint32_t magnitude = hasSign ? 0u - bits : bits;
    unsigned char bytes[kLongestEncodedInt];
    int size = 0;
    uint32_t byte = (magnitude & (kNegative - 1)) | (hasSign ? kNegative : 0);
    magnitude >>= kFirstBits;
    while (magnitude != 0) {
        bytes[size++] = static_cast<unsigned char>(byte | kMore);
        byte = magnitude & (kMore - 1);
        magnitude >>= kFurtherBits;
    }
    bytes[size++] = static_cast<unsigned char>(byte);
    return WriteData(bytes, size);
}

bool RandomAccessMechanism::SetEncryption(bool on)
{
    const bool was = mEncryption;
    mEncryption = on;
    return was;
}

void RandomAccessMechanism::ApplyEncryption(void* buffer, int count)
{
    if (!mEncryption)
        return;
    unsigned char* bytes = static_cast<unsigned char*>(buffer);
    for (int i = 0; i < count; i++) {
        const unsigned char plain = bytes[i];
        bytes[i] = static_cast<unsigned char>(plain ^ mKey);
        mKey ^= plain;
    }
}

void RandomAccessMechanism::ApplyDecryption(void* buffer, int count)
{
    if (!mEncryption)
        return;
    unsigned char* bytes = static_cast<unsigned char*>(buffer);
    for (int i = 0; i < count; i++) {
        bytes[i] = static_cast<unsigned char>(bytes[i] ^ mKey);
        mKey ^= bytes[i];
    }
}

void RandomAccessMechanism::SetDamageLog(DamageLog* log, const string& fileName)
{
    mDamageLog = log;
    mFileName = fileName;
}

void RandomAccessMechanism::NoteDamage(int64_t offset, DamageKind kind) const
{
    if (mDamageLog != nullptr)
        mDamageLog->Note(std::string(mFileName.View()), offset, kind);
}

}   // namespace vela
