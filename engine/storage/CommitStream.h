#pragma once

#include <memory>

#include "engine/storage/CommitFile.h"

namespace vela {

// CommitStream is an open CommitFile: a position in it. Several may be open on one file; they see each other's writes.
class CommitStream final : public RandomAccessMechanism {
public:
    CommitStream(CommitFileAccess* owner, std::shared_ptr<CommitFile> file);
    ~CommitStream() override;

    bool ReadData(void* buffer, int count, int* bytesRead) override;
    bool WriteData(const void* buffer, int count) override;
    void Close() override;
    bool IsEOF() override { return mPosition >= GetLength(); }
    bool SeekFromStart(int64_t offset) override;
    int64_t GetLength() override { return mFile ? mFile->Length() : 0; }
    bool SetLength(int64_t length) override;
    int64_t GetPosition() override { return mPosition; }
    [[nodiscard]] std::string_view Peek(int64_t position) override
    {
        return mFile ? mFile->Peek(position) : std::string_view();
    }
    // During a commit nothing: its end flushes what it must.
    bool FlushToDisk() override;
    [[nodiscard]] bool Reserve(int64_t length) override;
    [[nodiscard]] AheadBytes* Ahead() override;
    [[nodiscard]] int ErrorNumber() const override;

    [[nodiscard]] const std::shared_ptr<CommitFile>& File() const { return mFile; }

private:
    bool FailWith(int errorNumber);

    CommitFileAccess* mOwner;
    std::shared_ptr<CommitFile> mFile;
    int64_t mPosition = 0;
    bool mWritesAhead = false;
    int mErrorNumber = 0;
};

}   // namespace vela
