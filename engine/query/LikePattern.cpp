#include "engine/query/LikePattern.h"

#include <cstring>

namespace vela {

namespace {

bool IsWildcard(char letter)
{
    return letter == '%' || letter == '_';
}

}   // namespace

LikePattern::LikePattern(std::string_view pattern, char escape) : mPattern(pattern), mEscape(escape)
{
    mChunks.emplace_back();
    size_t position = 0;
    while (position < mPattern.size())
        position = AddLiteral(AddWildcards(position));
}

// Takes the run of wildcards at position and returns where it ends. A run with a '%' in it starts a
// new chunk, and its '_', wherever they stand in the run, are the chunk's first bytes.
size_t LikePattern::AddWildcards(size_t position)
{
    const size_t start = position;
    size_t singles = 0;
    for (; position < mPattern.size() && IsWildcard(mPattern[position]); ++position)
        singles += mPattern[position] == '_';
    if (position - start > singles) {
        mChunks.emplace_back();
        mLastNeedsText = std::string_view(mPattern).substr(start) != "%";
    }
    mChunks.back().size += singles;
    return position;
}

// Takes the literal bytes at position, up to a wildcard that no escape protects, and returns where
// they end.
size_t LikePattern::AddLiteral(size_t position)
{
    const size_t start = mLiterals.size();
    while (position < mPattern.size() && !IsWildcard(mPattern[position])) {
        if (mEscape == 0 || mPattern[position] != mEscape) {
            mLiterals += mPattern[position++];
            continue;
        }
        // The escaped byte, and the one after it, which is not looked at either.
        const std::string_view escaped = std::string_view(mPattern).substr(position + 1, 2);
        mLiterals += escaped;
        position += 1 + escaped.size();
    }
    AddPiece(start);
    return position;
}

// Makes the literal bytes from start on a piece of the last chunk.
void LikePattern::AddPiece(size_t start)
{
    const size_t size = mLiterals.size() - start;
    if (size == 0)
        return;
    Chunk& chunk = mChunks.back();
    if (chunk.pieceCount == 0)
        chunk.firstPiece = mPieces.size();
    if (chunk.pieceCount == 0 || size > mPieces[chunk.longestPiece].size)
        chunk.longestPiece = mPieces.size();
    mPieces.push_back({chunk.size, start, size});
    chunk.pieceCount++;
    chunk.size += size;
}

// Every chunk between two '%' is taken where it stands first: what follows a '%' and matches the
// rest of a text also matches with more of the text before it, so a later place can't do better.
bool LikePattern::Matches(std::string_view text) const
{
    if (text.empty())
        return mPattern.empty() || mPattern == "%";
    const Chunk& first = mChunks.front();
    if (mChunks.size() == 1)
        return text.size() == first.size && MatchesAt(first, text.data());
    if (text.size() < first.size || !MatchesAt(first, text.data()))
        return false;

    size_t position = first.size;
    for (size_t i = 1; i + 1 < mChunks.size(); i++) {
        const size_t found = Find(mChunks[i], text, position);
        if (found == std::string_view::npos)
            return false;
        position = found + mChunks[i].size;
    }
    return MatchesEnd(text.substr(position));
}

std::string_view LikePattern::SoughtText() const
{
    const bool isOneBetweenTwo = mChunks.size() == 3 && mChunks.front().size == 0 &&
                                 mChunks.back().size == 0 && !mLastNeedsText;
    const Chunk& chunk = mChunks[mChunks.size() / 2];
    if (!isOneBetweenTwo || chunk.pieceCount != 1 || mPieces[chunk.firstPiece].size != chunk.size)
        return {};
    return std::string_view(mLiterals).substr(mPieces[chunk.firstPiece].start, chunk.size);
}

// Whether the last chunk, after its '%', matches all of rest.
bool LikePattern::MatchesEnd(std::string_view rest) const
{
    const Chunk& last = mChunks.back();
    if (last.size == 0)
        return !rest.empty() || !mLastNeedsText;
    return rest.size() >= last.size && MatchesAt(last, rest.data() + rest.size() - last.size);
}

bool LikePattern::MatchesAt(const Chunk& chunk, const char* text) const
{
    for (size_t i = 0; i < chunk.pieceCount; i++) {
        const Piece& piece = mPieces[chunk.firstPiece + i];
        if (std::memcmp(text + piece.offset, mLiterals.data() + piece.start, piece.size) != 0)
            return false;
    }
    return true;
}

// Searches for the longest piece and looks at the others where it stands.
size_t LikePattern::Find(const Chunk& chunk, std::string_view text, size_t start) const
{
    if (text.size() - start < chunk.size)
        return std::string_view::npos;
    if (chunk.pieceCount == 0)
        return start;
    const Piece& piece = mPieces[chunk.longestPiece];
    const char* const end = text.data() + text.size() - chunk.size + piece.offset + piece.size;
    const char* from = text.data() + start + piece.offset;
    while (const void* hit = memmem(from, static_cast<size_t>(end - from),
                                    mLiterals.data() + piece.start, piece.size)) {
        const char* const candidate = static_cast<const char*>(hit) - piece.offset;
        if (MatchesAt(chunk, candidate))
            return static_cast<size_t>(candidate - text.data());
        from = static_cast<const char*>(hit) + 1;
    }
    return std::string_view::npos;
}

}   // namespace vela
