#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/storage/VelaFileAccess.h"

namespace vela {

// MemoryDisk stands in for a folder: files by name, in memory, with a switch for faults. It outlives
// the databases that are opened on it through MemoryFileAccess, so that a test can look at the bytes
// and open again.
//
// Every call that changes something counts as one operation: a write, a change of length, a flush, a
// reservation of room, and creating, deleting, renaming a file. Reads don't count.
class MemoryDisk {
public:
    virtual ~MemoryDisk() = default;

    // What happens from the next operation on that is told to fail.
    enum class Fault {
        kNone,
        kOnce,   // the operation fails; a write may leave half of its bytes
        kForGood   // it fails, and so does every later one: a disk that is full, or a machine that died
    };

    // The number-th operation from now (1: the next one) fails.
    void FailAt(int64_t number, Fault fault);
    void ClearFault() { mFault = Fault::kNone; }
    // Whether the fault has struck since FailAt.
    [[nodiscard]] bool HasFailed() const { return mHasFailed; }
    [[nodiscard]] int64_t Operations() const { return mOperations; }

    [[nodiscard]] bool Contains(const std::string& name) const { return mFiles.count(name) != 0; }
    // The bytes of a file; empty when there is none.
    [[nodiscard]] std::string Bytes(const std::string& name) const;
    void Put(const std::string& name, const std::string& bytes);
    // The same, seen by streams that are open on it.
    void Replace(const std::string& name, const std::string& bytes) { *mFiles.at(name) = bytes; }
    void Remove(const std::string& name) { mFiles.erase(name); }
    // The names of all files but the commit log, which is there while a database is open.
    [[nodiscard]] std::vector<std::string> Names() const;
    // The same files and their bytes, to compare or to go back to.
    [[nodiscard]] std::map<std::string, std::string> Snapshot() const;
    // All files, the commit log among them: what a process that dies now leaves behind.
    [[nodiscard]] std::map<std::string, std::string> AllFiles() const;
    void Restore(const std::map<std::string, std::string>& files);

protected:
    using File = std::shared_ptr<std::string>;
    using FilesByName = std::map<std::string, File>;
    // After it, name has this file, or none.
    struct NameStep {
        std::string from;   // of a renaming
        std::string name;
        File file;
    };
    static void Apply(const NameStep& step, FilesByName* names);

    // For a disk that remembers more than its files; each is called when the thing is done. A write that fails may have
    // written some bytes, which are those.
    virtual void HasWritten(const File&, int64_t, std::string_view) {}
    virtual void HasSetLength(const File&) {}
    virtual void HasChangedNames(const NameStep&) {}
    virtual void HasFlushedNames() {}
    virtual void HasFlushed(const File&, bool /*reached*/) {}
    // Whether a stream whose flush has failed may flush again.
    [[nodiscard]] virtual bool ForgivesFailedFlushes() const { return true; }

    FilesByName mFiles;

private:
    friend class MemoryFileAccess;
    friend class MemoryStream;

    // Counts an operation; false when it is to fail.
    bool Begin();

    Fault mFault = Fault::kNone;
    int64_t mOperations = 0;
    int64_t mFailAt = 0;
    bool mHasFailed = false;
};

// MemoryStream is an open file of a MemoryDisk. It keeps the file when that is deleted or replaced
// under its name, as an open file of a folder does.
class MemoryStream : public RandomAccessMechanism {
public:
    // badSector: the position of the sector that can't be read; -1: none.
    MemoryStream(MemoryDisk* disk, std::shared_ptr<std::string> file, bool readOnly,
                 int64_t badSector = -1);

    bool ReadData(void* buffer, int count, int* bytesRead) override;
    bool WriteData(const void* buffer, int count) override;
    void Close() override;
    bool IsEOF() override { return mPosition >= GetLength(); }
    bool SeekFromStart(int64_t offset) override;
    int64_t GetLength() override { return mFile ? static_cast<int64_t>(mFile->size()) : 0; }
    bool SetLength(int64_t length) override;
    int64_t GetPosition() override { return mPosition; }
    bool FlushToDisk() override;
    bool Reserve(int64_t length) override;
    int ErrorNumber() const override { return mErrorNumber; }

private:
    bool BeginChange();
    bool FailWith(int errorNumber);

    MemoryDisk* mDisk;
    std::shared_ptr<std::string> mFile;
    bool mReadOnly;
    int64_t mBadSector;
    bool mFlushFailed = false;
    int64_t mPosition = 0;
    int mErrorNumber = 0;
};

// A database's files on a MemoryDisk, which the test keeps.
class MemoryFileAccess : public VelaFileAccess {
public:
    explicit MemoryFileAccess(MemoryDisk* disk, bool readOnly = false)
        : mDisk(disk), mReadOnly(readOnly)
    {}

    [[nodiscard]] bool IsOpen() const override { return true; }
    [[nodiscard]] bool IsReadOnly() const override { return mReadOnly; }
    [[nodiscard]] string ErrorText() const override { return mErrorText; }
    [[nodiscard]] std::unique_ptr<RandomAccessMechanism> OpenFile(const string& name,
                                                                  bool create) override;
    bool CreateFile(const string& name) override;
    bool DeleteFile(const string& name) override;
    bool RenameFile(const string& from, const string& to) override;
    [[nodiscard]] bool ContainsFile(const string& name) const override;
    bool FlushNames() override;
    void FindFiles(const string& pattern, SimpleVector<string>* names) const override;

    // Reads that touch the sector at that position of a file fail from its next opening on; below 0: the opening fails.
    void MakeUnreadable(const std::string& name, int64_t position) { mUnreadable[name] = position; }
    static constexpr int64_t kSector = 512;

private:
    // Changes a name that may be changed, if the disk takes it.
    bool Change(const string& name, const MemoryDisk::NameStep& step);
    bool FailWith(int errorNumber);

    MemoryDisk* mDisk;
    bool mReadOnly;
    std::map<std::string, int64_t> mUnreadable;
    string mErrorText;
};

}   // namespace vela
