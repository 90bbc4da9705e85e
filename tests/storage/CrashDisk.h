#pragma once

#include <functional>

#include "tests/storage/MemoryFileAccess.h"
#include "tests/storage/StorageTesting.h"

namespace vela {

// CrashDisk is a disk that knows what has been flushed and what only the system's memory holds, and makes the images that
// a crash could leave at any moment.
//
// Of each file it keeps the flushed bytes and every write and change of length since. Of the names it keeps those that
// were flushed and every creation, deletion and renaming since; flushing a file doesn't flush its name. A disk writes
// sectors of 512 bytes whole or not at all, each as the file was at any moment since the last flush. A flush that fails
// loses what it should have flushed: it may reach the disk or not, but never will by a later flush.
class CrashDisk : public MemoryDisk {
public:
    using Image = std::map<std::string, std::string>;

    CrashDisk() = default;
    explicit CrashDisk(const Image& image);

    // Called after each write, change of length, flush, and change of names.
    std::function<void()> afterEach;
    // Flushes of files and names since the beginning.
    int64_t flushes = 0;

    // What was flushed, and nothing else.
    [[nodiscard]] Image OnlyFlushed() const;
    // One of the many that a crash of the machine can leave.
    [[nodiscard]] Image Crashed(TestRandom* random) const;

protected:
    void HasWritten(const File& file, int64_t position, std::string_view bytes) override;
    void HasSetLength(const File& file) override;
    void HasChangedNames(const NameStep& step) override;
    void HasFlushed(const File& file, bool reached) override;
    void HasFlushedNames() override;
    // As UnixDataFile: after a failure it fails until the file is opened anew.
    [[nodiscard]] bool ForgivesFailedFlushes() const override { return false; }

private:
    struct Write {
        int64_t position;
        std::string bytes;
        int64_t length;   // of the file after it, -1: as before; a change of length has no bytes
    };
    struct History {
        std::string flushed;
        std::vector<Write> unflushed;
        std::vector<Write> lost;   // by a flush that failed
    };

    void End();
    const History& HistoryOf(const File& file) const;
    static void Flush(const std::string& bytes, History* history);
    static std::string CrashedBytes(const History& history, TestRandom* random);

    std::map<File, History> mHistories;
    FilesByName mFlushedNames;
    std::vector<NameStep> mUnflushedNames;
};

}   // namespace vela
