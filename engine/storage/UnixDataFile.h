#pragma once

#include "engine/storage/DataFile.h"
#include "engine/storage/FileDescriptor.h"
#include "engine/storage/FileWindow.h"

namespace vela {

// UnixDataFile is the engine's workhorse: a file of the host file system behind one window of
// buffered bytes.
//
// Cost: reading or rewriting bytes in or next to the window is a copy, without a call to the
// system; so are position, length, end and seeks. Reading on and on fetches ever larger pieces, up
// to 256 KiB; a jump fetches 4 to 8 KiB. Writes that touch the window collect there. Reads and
// writes of 64 KiB and more go past it.
//
// The file's length is kept here, so nobody else may change the file while it is open, but between
// FlushBuffer and the next read or write. Reads see what this object wrote, written out or not.
//
// Failures: a write that fails when the window is written out keeps its bytes; every later flush
// tries them again, and reads go on seeing them. Once the device has refused to take data (a
// failing FlushToDisk), FlushToDisk stays false until the file is opened or created anew: the
// system may have dropped the data without saying so a second time.
class UnixDataFile final : public DataFile {
public:
    UnixDataFile() = default;
    // As Close.
    ~UnixDataFile() override;

    [[nodiscard]] bool Create(const string& path) override;
    [[nodiscard]] bool Open(const string& path, int mode) override;
    [[nodiscard]] bool CreateTemporaryFile(string& name) override;
    [[nodiscard]] bool TemporaryClose() override;
    [[nodiscard]] bool TemporaryReopen() override;
    [[nodiscard]] bool FlushBuffer() override;
    [[nodiscard]] const string& TemporaryPath() const override { return mTemporaryPath; }

    bool ReadData(void* buffer, int count, int* bytesRead) override;
    bool WriteData(const void* buffer, int count) override;
    // Writes the window out. Callers that must know whether that worked flush first; ErrorNumber
    // tells afterwards.
    void Close() override;
    bool IsEOF() override { return mPosition >= mLength; }
    bool SeekFromStart(int64_t offset) override;
    int64_t GetLength() override { return mLength; }
    // False also when bytes before length could not be written out; the length is the new one even
    // then, unless the system refused to change it.
    bool SetLength(int64_t length) override;
    int64_t GetPosition() override { return mPosition; }
    [[nodiscard]] std::string_view Peek(int64_t position) override
    {
        return mWindow.From(position);
    }
    bool FlushToDisk() override;
    // Counts bytes that are not written out yet. True where the file system can't tell.
    [[nodiscard]] bool Reserve(int64_t length) override;
    [[nodiscard]] int ErrorNumber() const override { return mErrorNumber; }

private:
    // Closes, and is no temporary file's any more.
    void Abandon();
    // Makes the file that mFile has just opened the current one.
    bool StartOn(const string& path, bool writable);
    bool IsOrdinaryFile();
    bool FailWith(int errorNumber);

    size_t ReadSlowly(char* to, size_t count);
    size_t ReadSome(int64_t position, char* to, size_t count);
    bool MoveWindow(int64_t position, size_t count);
    bool ReadOn(int64_t position, size_t count);
    void FetchEarly(int64_t position);
    bool ReadAround(int64_t position, size_t count);
    bool Fill(int64_t end);
    size_t ReadPastWindow(int64_t position, char* to, size_t count);

    char* PlaceSlowly(size_t count);
    bool WritePastWindow(const char* from, size_t count);
    bool WriteWindow();
    // How many bytes the file has taken; fewer than count after a failure.
    size_t WriteToFile(int64_t position, const char* from, size_t count);
    void StartEarly(int64_t end, size_t written);

    FileDescriptor mFile;
    string mPath;
    string mTemporaryPath;
    bool mWritable = false;
    FileWindow mWindow;
    int64_t mPosition = 0;
    int64_t mLength = 0;   // with what is not written out yet
    int64_t mFileLength =
        0;   // of the file itself; between it and mLength, what the window lacks is zeros
    // Of writes that followed one another, what the system has not been asked to carry out yet.
    int64_t mRunStart = 0;
    int64_t mRunEnd = 0;
    int64_t mAhead = 0;      // bytes that the last fetch went for
    int64_t mFetchEnd = 0;   // where FetchEarly stopped
    int mErrorNumber = 0;
    bool mUnsynchronised =
        false;   // something was written since the last FlushToDisk that succeeded
    bool mDeviceFailed = false;
};

}   // namespace vela
