#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vela {

// LikePattern is a LIKE pattern prepared for matching many texts. It keeps its own copy of the
// pattern.
//
// '%' stands for any run of bytes, '_' for one byte, every other byte for itself. The escape
// character, unless it is NUL, makes the byte after it literal, and the byte after that one too.
// '%' and '_' stay wildcards when they are named as the escape character; an escape at the very end
// stands for nothing. Where the text is used up, what is left of the pattern must be empty or "%":
// "a%%" does not match "a".
//
// Matching costs at most text length times pattern length, and for a pattern like '%word%' one
// search for the word.
class LikePattern {
public:
    // The empty pattern: matches the empty text.
    LikePattern() : LikePattern(std::string_view(), 0) {}
    LikePattern(std::string_view pattern, char escape);

    // Whether this was made of that pattern and escape.
    [[nodiscard]] bool IsFor(std::string_view pattern, char escape) const
    {
        return mEscape == escape && mPattern == pattern;
    }
    [[nodiscard]] bool Matches(std::string_view text) const;
    // The bytes that a text must contain to match, when that is all that the pattern asks ('%word%'); else empty.
    [[nodiscard]] std::string_view SoughtText() const;

private:
    // Literal bytes that lie together, at offset from the start of their chunk.
    struct Piece {
        size_t offset;
        size_t start;   // in mLiterals
        size_t size;
    };
    // What stands between two '%': a run of known size, of literal pieces with '_' around them.
    struct Chunk {
        size_t size = 0;
        size_t firstPiece = 0;
        size_t pieceCount = 0;
        size_t longestPiece = 0;   // the one to search for; meaningless without pieces
    };

    size_t AddWildcards(size_t position);
    size_t AddLiteral(size_t position);
    void AddPiece(size_t start);

    [[nodiscard]] bool MatchesEnd(std::string_view rest) const;
    // Whether the chunk stands at the start of text, which is at least as long.
    [[nodiscard]] bool MatchesAt(const Chunk& chunk, const char* text) const;
    // The first position, from start on, where the chunk stands in text; npos for none.
    [[nodiscard]] size_t Find(const Chunk& chunk, std::string_view text, size_t start) const;

    std::string mPattern;
    char mEscape;
    std::string mLiterals;         // the bytes of all pieces, without escapes
    std::vector<Piece> mPieces;    // of all chunks
    std::vector<Chunk> mChunks;    // at least one; a '%' between each two
    bool mLastNeedsText = false;   // the last '%' is written in a way that does not match no text
};

}   // namespace vela
