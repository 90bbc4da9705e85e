#include "shell/StatementSplitter.h"

#include <array>
#include <utility>

namespace vela::shell {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char byte)
{
    return byte >= 1 && byte <= ' ';
}

bool IsLineBreak(char byte)
{
    return byte == '\n' || byte == '\r';
}

// The lexer's delimiters, and the line feed, which becomes a blank before the lexer sees it.
constexpr std::array<bool, 256> kEndsWord = [] {
    std::array<bool, 256> result{};
    for (const char byte : std::string_view("\0\t\r\n %()*+,-/;<=>\\^", 19))
        result[static_cast<unsigned char>(byte)] = true;
    return result;
}();

bool EndsWord(char byte)
{
    return kEndsWord[static_cast<unsigned char>(byte)];
}

bool StartsWord(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' ||
           byte == '#';
}

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

bool ContinuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80u;
}

void TrimEnd(SourceStatement* statement)
{
    size_t size = statement->text.size();
    while (size > 0 && IsBlank(statement->text[size - 1]))
        size--;
    statement->text.resize(size);
    statement->source.resize(size);
}

}   // namespace

void TextPlace::Advance(char byte)
{
    const bool isSecondOfPair = byte == '\n' && mAfterCarriageReturn;
    mAfterCarriageReturn = byte == '\r';
    if (IsLineBreak(byte)) {
        line += isSecondOfPair ? 0 : 1;
        column = 1;
    } else if (!ContinuesCharacter(byte)) {
        column++;
    }
}

TextPlace SourceStatement::PlaceOf(size_t offset) const
{
    TextPlace result = place;
    for (size_t i = 0; i < offset && i < source.size(); i++)
        result.Advance(source[i]);
    return result;
}

std::string_view SourceStatement::LineAround(size_t offset, size_t* lineStart) const
{
    size_t start = offset < source.size() ? offset : source.size();
    size_t end = start;
    while (start > 0 && !IsLineBreak(source[start - 1]))
        start--;
    while (end < source.size() && !IsLineBreak(source[end]))
        end++;
    *lineStart = start;
    return std::string_view(source).substr(start, end - start);
}

void StatementSplitter::Feed(std::string_view text)
{
    mBuffer.erase(0, mPosition);
    mPosition = 0;
    mBuffer += text;
}

StatementSplitter::Result StatementSplitter::Next(char escape, SourceStatement* statement)
{
    if (mAtTextStart) {
        if (mBuffer.size() < kByteOrderMark.size() && kByteOrderMark.starts_with(mBuffer) &&
            !mFinished)
            return Result::kNeedsText;
        SkipByteOrderMark();
    }
    while (mPosition < mBuffer.size()) {
        const char byte = mBuffer[mPosition++];
        const bool complete = Take(byte, escape);
        mPlace.Advance(byte);
        if (complete && HandOver(statement))
            return Result::kStatement;
    }
    if (!mFinished)
        return Result::kNeedsText;
    if (mState == State::kDash) {   // a lone "-" ends the text: no comment, but a statement
        mState = State::kBetween;
        if (!mStarted) {
            Start(SourceStatement::Kind::kStatement, escape);
            mCurrent.place = mDashPlace;
        }
        Append('-', '-');
    }
    return mStarted && HandOver(statement) ? Result::kStatement : Result::kEnd;
}

// True when the byte ends a statement or a command.
bool StatementSplitter::Take(char byte, char escape)
{
    if (mState == State::kLiteralQuote && byte != '\'')
        mState = State::kBetween;
    switch (mState) {
        case State::kLiteral:
        case State::kLiteralEscaped:
        case State::kLiteralQuote:
            TakeInLiteral(byte);
            return false;
        case State::kCommand:
            if (IsLineBreak(byte)) {
                mAtLineStart = true;
                return true;
            }
            Append(byte, byte);
            return false;
        case State::kComment:
            if (IsLineBreak(byte))
                TakeBlank(byte);
            else if (mStarted)
                Append(' ', byte);
            return false;
        case State::kDash:
            if (byte == '-') {
                mState = State::kComment;
                if (mStarted) {
                    Append(' ', '-');
                    Append(' ', '-');
                }
                return false;
            }
            mState = State::kBetween;
            mAtLineStart = false;
            if (!mStarted) {
                Start(SourceStatement::Kind::kStatement, escape);
                mCurrent.place = mDashPlace;
            }
            Append('-', '-');
            return TakeOutside(byte, escape);
        default:
            return TakeOutside(byte, escape);
    }
}

bool StatementSplitter::TakeOutside(char byte, char escape)
{
    if (byte == ';')
        return true;
    if (IsBlank(byte)) {
        TakeBlank(byte);
        return false;
    }
    if (byte == '-' && mAtLineStart) {
        mState = State::kDash;
        mDashPlace = mPlace;
        return false;
    }
    mAtLineStart = false;
    if (!mStarted && byte == '.') {
        Start(SourceStatement::Kind::kCommand, escape);
        mState = State::kCommand;
        Append(byte, byte);
        return false;
    }
    if (!mStarted)
        Start(SourceStatement::Kind::kStatement, escape);
    ContinueToken(byte);
    Append(byte, byte);
    return false;
}

void StatementSplitter::TakeInLiteral(char byte)
{
    Append(byte, byte);
    if (mState == State::kLiteralEscaped || mState == State::kLiteralQuote)
        mState = State::kLiteral;
    else if (mEscape != 0 && byte == mEscape)
        mState = State::kLiteralEscaped;
    else if (byte == '\'')
        mState = State::kLiteralQuote;
}

void StatementSplitter::TakeBlank(char byte)
{
    if (mStarted)
        Append(IsLineBreak(byte) ? ' ' : byte, byte);
    if (IsLineBreak(byte))
        mAtLineStart = true;
    if (mState == State::kNumberAfterE)
        mState = State::kNumber;
    else if (mState == State::kNational && !EndsWord(byte))
        mState = State::kWord;
    else if (EndsWord(byte) || (mState != State::kWord && mState != State::kNumber))
        mState = State::kBetween;
}

// Where the bytes of one token stand.
void StatementSplitter::ContinueToken(char byte)
{
    switch (mState) {
        case State::kNumberAfterE:
            mState = State::kNumber;
            return;
        case State::kNational:
            mState = byte == '\'' ? State::kLiteral : State::kWord;
            break;
        default:
            break;
    }
    if (mState == State::kLiteral)
        return;
    if (mState == State::kBetween || EndsWord(byte))
        BeginToken(byte);
    else if (mState == State::kNumber && byte == 'e')
        mState = State::kNumberAfterE;
}

void StatementSplitter::BeginToken(char byte)
{
    if (byte == '\'')
        mState = State::kLiteral;
    else if (byte == 'N')
        mState = State::kNational;
    else if (StartsWord(byte))
        mState = State::kWord;
    else if (IsDigit(byte))
        mState = State::kNumber;
    else
        mState = State::kBetween;
}

void StatementSplitter::Start(SourceStatement::Kind kind, char escape)
{
    mStarted = true;
    mEscape = escape;
    mCurrent.kind = kind;
    mCurrent.place = mPlace;
}

void StatementSplitter::Append(char byte, char sourceByte)
{
    mCurrent.text += byte;
    mCurrent.source += sourceByte;
}

void StatementSplitter::SkipByteOrderMark()
{
    mAtTextStart = false;
    if (std::string_view(mBuffer).substr(mPosition).starts_with(kByteOrderMark))
        mPosition += kByteOrderMark.size();
}

// Gives the current statement away and makes ready for the next. False: it has no text.
bool StatementSplitter::HandOver(SourceStatement* statement)
{
    const bool hasText = mStarted;
    if (hasText) {
        TrimEnd(&mCurrent);
        *statement = std::move(mCurrent);
    }
    mCurrent = SourceStatement();
    mStarted = false;
    mState = State::kBetween;
    return hasText;
}

}   // namespace vela::shell
