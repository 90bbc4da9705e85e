#pragma once

#include <cstdint>
#include <string_view>

#include "runtime/String.h"

namespace vela {

class AheadBytes;
class DamageLog;
enum class DamageKind;

// RandomAccessMechanism is the byte stream through which the engine reaches every file: a position,
// a length, raw reads and writes, and on top of them typed ones in a selectable byte order.
// Concrete streams supply the raw operations.
//
// Offsets and lengths are bytes from the start of the stream.
class RandomAccessMechanism {
public:
    RandomAccessMechanism() = default;
    RandomAccessMechanism(const RandomAccessMechanism&) = delete;
    RandomAccessMechanism& operator=(const RandomAccessMechanism&) = delete;
    virtual ~RandomAccessMechanism() = default;

    // Reads up to count bytes at the position and moves it on. bytesRead, when given, receives how
    // many came. True when all count bytes came; a short read at the end of the stream is false.
    virtual bool ReadData(void* buffer, int count, int* bytesRead) = 0;
    // Writes count bytes at the position, lengthening the stream as needed. False when any of them
    // could not be written.
    virtual bool WriteData(const void* buffer, int count) = 0;
    virtual void Close() = 0;
    // Whether the position is at or past the end.
    virtual bool IsEOF() = 0;
    // Any offset from 0 may be sought, also past the end; a write there fills the gap with zeros.
    // False for a negative one.
    virtual bool SeekFromStart(int64_t offset) = 0;
    virtual int64_t GetLength() = 0;
    // Cuts the stream, or lengthens it with zero bytes. False when that failed. A position past the
    // new end stays.
    virtual bool SetLength(int64_t length) = 0;
    virtual int64_t GetPosition() = 0;
    // The bytes from position on as they lie in memory, to be read where they are: as many as are at hand in one piece, often
    // none; never more than the stream has. Good until the next call of the stream, or of another one of the same file. The
    // stream's own position stays. The base has none.
    [[nodiscard]] virtual std::string_view Peek(int64_t) { return {}; }
    // Everything written so far reaches the device before this returns. False: some of it may not
    // have. The base does nothing and returns true.
    virtual bool FlushToDisk();
    // Makes sure that the stream can grow to this length without running out of room; its length
    // stays. False when the device lacks the room. A stream that can't tell, as the base, says
    // true.
    [[nodiscard]] virtual bool Reserve(int64_t length);
    // What may be written ahead of the next commit. The stream's, and all of it is given up when that is closed. Null where there
    // are no commits, as in the base.
    [[nodiscard]] virtual AheadBytes* Ahead() { return nullptr; }
    // The error number (errno) of the last operation that failed; 0 when none has, or the stream
    // doesn't know.
    [[nodiscard]] virtual int ErrorNumber() const { return 0; }
    // The byte order of the typed multi-byte operations. Streams start little-endian.
    virtual void SetBigEndian() { mBigEndian = true; }
    virtual void SetLittleEndian() { mBigEndian = false; }

    // Typed operations. Reads are true only when the full width came; else the argument is
    // unchanged.
    bool ReadByte(unsigned char& value);
    bool WriteByte(int value);
    bool ReadShort(short& value);
    bool WriteShort(int value);
    bool ReadLong(int& value);
    bool WriteLong(int value);
    bool ReadDouble(double& value);
    bool WriteDouble(double value);

    // A length byte, then that many bytes. A longer text is cut to its first 255 bytes on writing.
    bool ReadPString(string& value);
    bool WritePString(const string& value);
    // The text followed by a line feed.
    bool WriteLine(const string& value);
    // A signed integer in one to five bytes. First byte: 0x80 more follow, 0x40 the number is
    // negative, low 6 bits of the magnitude; each further byte: 0x80 more follow, 7 bits. The most
    // negative number is written as its unsigned bits without the sign. Reading refuses more than
    // five bytes.
    bool ReadEncodedInt(int& value);
    bool WriteEncodedInt(int value);

    // Scrambling of buffers. Nothing in the engine turns it on; the two functions change nothing
    // while it is off. SetEncryption returns the previous flag. Encryption replaces each byte by
    // byte XOR key, then the key (32 bits, its low byte used) by key XOR the plain byte; decryption
    // is the inverse.
    bool SetEncryption(bool on);
    void SetEncryptionKey(uint32_t key) { mKey = key; }
    void ApplyEncryption(void* buffer, int count);
    void ApplyDecryption(void* buffer, int count);

    // Where readers tell of damage that they meet, and under which file name. The log is borrowed;
    // null, as at first: nowhere.
    void SetDamageLog(DamageLog* log, const string& fileName);
    void NoteDamage(int64_t offset, DamageKind kind) const;

private:
    DamageLog* mDamageLog = nullptr;
    string mFileName;   // for the log
    bool mEncryption = false;
    uint32_t mKey = 0;
    bool mBigEndian = false;
};

}   // namespace vela
