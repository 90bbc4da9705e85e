#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace vela {

// LogPayload is what the payload of a log's record is appended to (CommitLogFormat.h). It hands the bytes on in pieces, the first
// of which begins with the record's header.
class LogPayload {
public:
    using Take = std::function<void(std::string_view piece)>;

    LogPayload(std::string header, Take take) : mTake(std::move(take)), mPiece(std::move(header)) {}

    // Where the next bytes are to be appended: an entry's head, a number, an extent.
    [[nodiscard]] std::string* Room()
    {
        if (mPiece.size() >= kPieceSize)
            HandOn();
        return &mPiece;
    }
    // Hands on what is left.
    void End()
    {
        if (!mPiece.empty())
            HandOn();
    }

private:
    static constexpr size_t kPieceSize = size_t{1} << 16;   // about

    void HandOn()
    {
        mTake(mPiece);
        mPiece.clear();
    }

    Take mTake;
    std::string mPiece;
};

}   // namespace vela
