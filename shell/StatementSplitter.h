#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vela::shell {

// A place in a text: both from 1. Columns count characters (UTF-8 code points), not bytes.
struct TextPlace {
    size_t line = 1;
    size_t column = 1;

    // Moves past one byte. A line feed, a carriage return, or the pair of them ends a line.
    void Advance(char byte);

private:
    bool mAfterCarriageReturn = false;
};

// One statement or command of a script.
struct SourceStatement {
    enum class Kind { kStatement, kCommand };

    Kind kind = Kind::kStatement;
    // To be handed on: without ";", line breaks and comment lines outside literals made blanks.
    std::string text;
    std::string source;   // as written; byte i of it became byte i of text
    TextPlace place;      // of the first byte

    // The place of the byte at offset; an offset past the end counts as the end.
    [[nodiscard]] TextPlace PlaceOf(size_t offset) const;
    // The part of source that lies on the line of the byte at offset, without line breaks.
    // *lineStart receives its offset.
    [[nodiscard]] std::string_view LineAround(size_t offset, size_t* lineStart) const;
};

// StatementSplitter takes a script's text apart into statements, as its text comes in.
//
// A statement ends at a ";" outside string literals, or at the end of the text. What is a literal
// follows the lexer: "'" where a token may begin, with N before it or not, opens one, and inside
// it a doubled quote, and any byte after the escape character, is text. Quotes inside of words
// and numbers open nothing. A line whose first bytes, blanks apart, are "--" is a comment unless
// it begins inside a literal. Where a statement would begin, a "." begins a command, which ends
// with its line. Statements without text are skipped; blanks around a statement are not part of
// it. A UTF-8 byte order mark at the start of the text is skipped.
class StatementSplitter {
public:
    enum class Result { kStatement, kNeedsText, kEnd };

    // Adds text to what is to be split.
    void Feed(std::string_view text);
    // No more text will come.
    void Finish() { mFinished = true; }

    // Gives the next statement or command. The escape character (0: none) may change between
    // statements, and so is asked for each time; it counts for statements that begin after this
    // call. kNeedsText: Feed or Finish first. kEnd: there is none left.
    [[nodiscard]] Result Next(char escape, SourceStatement* statement);

    // Whether a statement or command has begun of which the end has not been seen.
    [[nodiscard]] bool InStatement() const { return mStarted; }

private:
    enum class State {
        kBetween,   // where a token may begin
        kDash,      // after a "-" that may begin a comment line
        kComment,
        kCommand,
        kWord,
        kNational,   // after an N that may belong to a literal
        kNumber,
        kNumberAfterE,   // the lexer takes the byte after an "e" into the number, whatever it is
        kLiteral,
        kLiteralEscaped,
        kLiteralQuote,   // after a quote inside a literal: its end, or half of a doubled one
    };

    bool Take(char byte, char escape);
    bool TakeOutside(char byte, char escape);
    void TakeInLiteral(char byte);
    void TakeBlank(char byte);
    void BeginToken(char byte);
    void ContinueToken(char byte);
    void Start(SourceStatement::Kind kind, char escape);
    void Append(char byte, char sourceByte);
    void SkipByteOrderMark();
    [[nodiscard]] bool HandOver(SourceStatement* statement);

    std::string mBuffer;    // text fed and not yet used up
    size_t mPosition = 0;   // of the next byte in mBuffer
    bool mFinished = false;
    bool mAtTextStart = true;

    State mState = State::kBetween;
    bool mStarted = false;      // mCurrent has bytes
    bool mAtLineStart = true;   // only blanks so far in this line
    char mEscape = 0;           // for the current statement
    TextPlace mPlace;           // of the next byte
    TextPlace mDashPlace;       // of the byte that brought State::kDash
    SourceStatement mCurrent;
};

}   // namespace vela::shell
