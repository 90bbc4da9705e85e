#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/storage/VelaFileAccess.h"
#include "tests/storage/StorageTesting.h"

namespace vela {

// CrashDisk is a simulated disk: it knows what has been flushed and what only the system's memory holds, and makes the
// images that a crash could leave at any moment.
//
// Of each file it keeps the flushed bytes and every write and change of length since. Of the names it keeps those that
// were flushed and every creation, deletion and renaming since; flushing a file doesn't flush its name. A disk writes
// sectors of 512 bytes whole or not at all, each as the file was at any moment since the last flush.
class CrashDisk {
public:
    using Image = std::map<std::string, std::string>;

    CrashDisk() = default;
    explicit CrashDisk(const Image& image);

    // Called after each write, change of length, flush, and change of names.
    std::function<void()> afterEach;
    // Counts since the beginning.
    int64_t operations = 0;
    int64_t flushes = 0;   // of files and names
    int64_t bytesWritten = 0;

    // The number-th operation from now on fails, and, with forGood, every later one; a write leaves half of its bytes. A
    // flush that fails loses what it should have flushed: it may reach the disk or not, but never will by a later flush.
    void FailAt(int64_t number, bool forGood);
    void ClearFault() { mFailAt = 0; }
    [[nodiscard]] bool HasFailed() const { return mHasFailed; }

    // As the system's memory has it: what a crash of the process alone leaves.
    [[nodiscard]] Image AllWritten() const;
    // What was flushed, and nothing else.
    [[nodiscard]] Image OnlyFlushed() const;
    // One of the many that a crash of the machine can leave.
    [[nodiscard]] Image Crashed(TestRandom* random) const;

private:
    friend class CrashStream;
    friend class CrashFileAccess;

    struct Write {
        int64_t position;
        std::string bytes;
        int64_t length;   // of the file after it, -1: as before; a change of length has no bytes
    };
    struct File {
        std::string bytes;
        std::string flushed;
        std::vector<Write> unflushed;
        std::vector<Write> lost;   // by a flush that failed
    };
    using FilePtr = std::shared_ptr<File>;
    using Names = std::map<std::string, FilePtr>;
    // After it, name has this file, or none.
    struct NameStep {
        std::string from;   // of a renaming
        std::string name;
        FilePtr file;
    };

    // False when the operation is to fail.
    bool Begin();
    void End();
    static void Flush(File* file);
    static void Apply(const NameStep& step, Names* names);
    static std::string CrashedBytes(const File& file, TestRandom* random);

    Names mNames;
    Names mFlushedNames;
    std::vector<NameStep> mUnflushedNames;
    int64_t mFailAt = 0;
    bool mForGood = false;
    bool mHasFailed = false;
};

// A database's files on a CrashDisk, which outlives it.
class CrashFileAccess : public VelaFileAccess {
public:
    explicit CrashFileAccess(CrashDisk* disk, bool readOnly = false)
        : mDisk(disk), mReadOnly(readOnly)
    {}

    [[nodiscard]] bool IsOpen() const override { return true; }
    [[nodiscard]] bool IsReadOnly() const override { return mReadOnly; }
    [[nodiscard]] string ErrorText() const override { return "Input/output error"; }
    [[nodiscard]] std::unique_ptr<RandomAccessMechanism> OpenFile(const string& name,
                                                                  bool create) override;
    bool CreateFile(const string& name) override;
    bool DeleteFile(const string& name) override;
    bool RenameFile(const string& from, const string& to) override;
    [[nodiscard]] bool ContainsFile(const string& name) const override;
    bool FlushNames() override;
    void FindFiles(const string& pattern, SimpleVector<string>* names) const override;

private:
    bool ChangeNames(const CrashDisk::NameStep& step);

    CrashDisk* mDisk;
    bool mReadOnly;
};

}   // namespace vela
