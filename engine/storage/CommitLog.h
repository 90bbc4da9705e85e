#pragma once

#include <functional>
#include <memory>
#include <string>

#include "engine/storage/CommitLogFormat.h"
#include "engine/storage/LogPayload.h"
#include "engine/storage/VelaFileAccess.h"

namespace vela {

// CommitLog is the log file of a database: records are appended to it and are on the device when Append returns.
//
// The file is made by the first Append, in pieces that are filled with zeros, so that flushing a record usually moves
// nothing but the record. Restart makes it empty by giving it another generation; the next record goes to its start. File
// format: CommitLogFormat.h.
class CommitLog {
public:
    // files is borrowed for the object's life. Opens nothing.
    explicit CommitLog(VelaFileAccess* files);

    // Whether this object has made a log file, which is there still.
    [[nodiscard]] bool IsOpen() const { return mStream != nullptr; }
    // Bytes of the present generation.
    [[nodiscard]] int64_t Size() const { return mPosition - static_cast<int64_t>(kLogAlignment); }
    // What went wrong last, for people.
    [[nodiscard]] const string& ErrorText() const { return mErrorText; }
    [[nodiscard]] int ErrorNumber() const { return mErrorNumber; }

    // Whether there is a log file at all: from an earlier life, until Read and Remove, or Append.
    [[nodiscard]] bool Exists() const;
    // Hands every whole record that ends up to end, a size as Size gives it, to take, which returns false to stop. False: take stopped, or the log
    // could not be read; a torn end is no failure. payload is good for the call alone.
    using TakeRecord = std::function<bool(LogRecordKind kind, std::string_view payload)>;
    [[nodiscard]] bool Read(int64_t end, const TakeRecord& take);

    // Writes a record and flushes it. tell appends the payload, payloadSize bytes, to what it is given; they are written in
    // pieces and never held whole. False: it is not to be taken for written.
    using TellPayload = std::function<void(LogPayload* payload)>;
    [[nodiscard]] bool Append(LogRecordKind kind, uint64_t payloadSize, const TellPayload& tell);
    // All that the records say has reached the device elsewhere: the log is empty again.
    [[nodiscard]] bool Restart();
    // The same, and the file goes.
    [[nodiscard]] bool Remove();

    // Whether an Append or a Restart has failed in such a way that nobody knows what the device has of it. Until Mend or
    // Remove has succeeded nothing can be appended.
    [[nodiscard]] bool IsDoubtful() const { return mDoubt != Doubt::kNone; }
    // Makes sure that the record whose Append failed will not be found, or that those before Restart won't.
    [[nodiscard]] bool Mend();

private:
    enum class Doubt { kNone, kRecord, kHead };

    [[nodiscard]] bool Create();
    [[nodiscard]] bool MakeRoom(int64_t end);
    [[nodiscard]] bool WriteRecord(const LogHeader& header, const TellPayload& tell);
    [[nodiscard]] bool WriteHead();
    void StartAgain();
    bool FailWithStream();
    bool FailWith(int errorNumber);
    bool FailWithFiles();

    VelaFileAccess* mFiles;
    std::unique_ptr<RandomAccessMechanism> mStream;
    int64_t mPosition = kLogAlignment;   // where the next record goes
    uint64_t mGeneration;
    uint32_t mNumber = 0;
    bool mNamed = false;   // the file's name has reached the device
    Doubt mDoubt = Doubt::kNone;
    string mErrorText;
    int mErrorNumber = 0;
};

}   // namespace vela
