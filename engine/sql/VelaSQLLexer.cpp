#include "engine/sql/VelaSQLLexer.h"

#include <array>

namespace vela {

namespace {

enum CharacterClass : uint8_t { kBlank = 1, kDelimiter = 2, kWordStart = 4, kDigit = 8 };

constexpr std::array<uint8_t, 256> MakeClasses()
{
    std::array<uint8_t, 256> classes{};
    for (size_t c = 1; c <= ' '; c++)
        classes[c] |= kBlank;
    for (const char c : std::string_view("\0\t\r %()*+,-/;<=>\\^", 18))
        classes[static_cast<uint8_t>(c)] |= kDelimiter;
    for (size_t c = 'a'; c <= 'z'; c++)
        classes[c] = classes[c - 'a' + 'A'] = kWordStart;
    classes['_'] = classes['#'] = kWordStart;
    for (size_t c = '0'; c <= '9'; c++)
        classes[c] = kDigit;
    return classes;
}

constexpr std::array<uint8_t, 256> kClasses = MakeClasses();

bool Is(char c, CharacterClass wanted)
{
    return (kClasses[static_cast<uint8_t>(c)] & wanted) != 0;
}

}   // namespace

void VelaSQLLexer::Start(const string& statement)
{
    mStatement = statement;
    mEncoding = statement.empty() ? kEncodingASCII : statement.Encoding();
    mPosition = mTokenStart = mStatement.CString();
    mTokenKind = kTokenNone;
    mTokenText = {};
    mLastError = kNoError;
    mErrorOffset = 0;
}

void VelaSQLLexer::GetToken()
{
    SkipBlanks();
    mTokenStart = mPosition;
    const char first = *mPosition;
    if (Is(first, kDelimiter))
        GetDelimiter();
    else if (Is(first, kWordStart))
        GetWord();
    else if (Is(first, kDigit))
        GetNumber();
    else if (first == '\'')
        GetStringLiteral();
    else
        GetOther();
}

void VelaSQLLexer::serror(ErrorType kind)
{
    ErrorAt(kind, mTokenStart);
}

bool VelaSQLLexer::IsBeforeListEnd() const
{
    const char* next = mPosition;
    while (Is(*next, kBlank))
        next++;
    return *next == ',' || *next == ')';
}

void VelaSQLLexer::SetCurrentWord(std::string_view text)
{
    mTokenKind = kTokenWord;
    mTokenStart = text.data();
    mTokenText = text;
}

void VelaSQLLexer::ErrorAt(ErrorType kind, const char* place)
{
    if (mListener)
        mListener->HandleError(kind);
    if (mLastError != kNoError)
        return;
    mLastError = kind;
    mErrorOffset = static_cast<size_t>(place - mStatement.CString());
}

SQLText VelaSQLLexer::RestOfStatement()
{
    SkipBlanks();
    return {std::string_view(mPosition), mEncoding};
}

// Here and below a loop over bytes has its position in a local variable, which can stay in a register.
void VelaSQLLexer::SkipBlanks()
{
    const char* end = mPosition;
    while (Is(*end, kBlank))
        end++;
    mPosition = end;
}

// Stands at the opening quote. The text is taken also when the literal is wrong.
void VelaSQLLexer::GetStringLiteral()
{
    const char* start = mPosition;
    const char* end = start + 1;
    bool isClosed = false;
    while (!isClosed) {
        while (*end != '\'' && *end != mEscape && *end != '\0')
            end++;
        const char c = *end;
        if (c == '\0')
            break;
        end++;
        if (c == mEscape) {
            if (*end != '\0')
                end++;
        } else if (*end == '\'') {
            end++;
        } else {
            isClosed = true;
        }
    }
    mPosition = end;
    mTokenKind = kTokenString;
    SetText(start);
    if (!isClosed || !Is(*mPosition, kDelimiter))
        serror(kErrSyntax);
}

// Also the end, which two of the delimiters are.
void VelaSQLLexer::GetDelimiter()
{
    const char* start = mPosition;
    if (*start == '\0' || *start == ';') {
        mTokenKind = kTokenEnd;
        return;
    }
    mPosition++;
    const char next = *mPosition;
    if ((*start == '<' && (next == '=' || next == '>')) || (*start == '>' && next == '='))
        mPosition++;
    mTokenKind = kTokenDelimiter;
    SetText(start);
}

void VelaSQLLexer::GetWord()
{
    const char* start = mPosition;
    if (*start == 'N' && start[1] == '\'') {
        mPosition++;
        GetStringLiteral();
        return;
    }
    const char* end = start + 1;
    while (!Is(*end, kDelimiter))
        end++;
    if (*end == '*' && end[-1] == '.')
        end++;
    mPosition = end;
    mTokenKind = kTokenWord;
    SetText(start);
}

void VelaSQLLexer::GetNumber()
{
    const char* start = mPosition;
    const char* end = start;
    while (!Is(*end, kDelimiter)) {
        const bool isExponent = *end++ == 'e';
        if (isExponent && *end != '\0')
            end++;   // whatever it is: the sign of an exponent, most often
    }
    mPosition = end;
    mTokenKind = kTokenNumber;
    SetText(start);
}

// A byte that starts no token.
void VelaSQLLexer::GetOther()
{
    if (*mPosition == '"') {
        mTokenKind = kTokenEnd;
        serror(kErrSyntax);   // quoted identifiers are not part of the dialect
        return;
    }
    mTokenKind = kTokenNone;
    mTokenText = {};
}

void VelaSQLLexer::SetText(const char* from)
{
    mTokenText = std::string_view(from, static_cast<size_t>(mPosition - from));
}

}   // namespace vela
