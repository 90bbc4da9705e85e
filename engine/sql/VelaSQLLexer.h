#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "engine/sql/SQLText.h"
#include "runtime/CaseMapping.h"

namespace vela {

class VelaSQLErrorListener;

// VelaSQLLexer reads the text of one statement token by token and keeps the first error found in it.
//
// The statement ends at its first NUL byte, or at a ";" where a token would start; what follows is
// never read. Keywords are not reserved: they are words, told apart by their text. All bytes are
// welcome; those that start no token give kTokenNone for ever.
//
//   blank       bytes 1 to 32
//   delimiter   NUL, tab, carriage return, blank, and % ( ) * + , - / ; < = > \ ^
//   word        starts with a letter, "_" or "#" and runs to the next delimiter; "T.*" is one word
//   number      starts with a digit and runs to the next delimiter; a lower-case "e" takes the byte
//               after it along, so 1.0e-5 is one token and 1.0E-5 three
//   string      '...' or N'...', a quote inside doubled or after the escape character
//
// Line feed and "." are not delimiters: words and numbers run on over them. That is part of the
// dialect; front ends for people turn line breaks into blanks first.
class VelaSQLLexer {
public:
    enum ErrorType {
        kNoError = 0,
        kErrKeywordExpected = 1,
        kErrTableNameExpected = 2,
        kErrRangeVarExpected = 3,
        kErrIndexNameExpected = 4,
        kErrFromExpected = 5,
        kErrIntoExpected = 6,
        kErrSetExpected = 7,
        kErrUnbalancedParens = 8,
        kErrColumnNameExpected = 9,
        kErrCommaOrParenExpected = 10,
        kErrValuesExpected = 11,
        kErrParenExpected = 12,
        kErrEqualsExpected = 13,
        kErrAssignValueExpected = 14,
        kErrDataTypeExpected = 15,
        kErrDatetimeIncomplete = 16,
        kErrUnknownFunction = 17,
        kErrNotSupported = 18,
        kErrSyntax = 19,
    };

    enum TokenKind : uint32_t {
        kTokenNone = 0,        // a byte that starts no token; the text is empty
        kTokenDelimiter = 1,   // one delimiter byte, or "<=", "<>", ">="
        kTokenWord = 2,
        kTokenNumber = 3,
        kTokenString = 4,   // the text has its quotes, doubled quotes and escapes still in it
        kTokenEnd = 5,      // the text is still that of the token before
    };

    // escape is the byte that makes the next one literal inside string literals; 0 for none.
    // listener, which may be null, must outlive the lexer.
    explicit VelaSQLLexer(char escape, VelaSQLErrorListener* listener = nullptr)
        : mListener(listener), mEscape(escape)
    {}

    // Stands before the first token of statement, with no error and no token. Keeps a share of it.
    void Start(const string& statement);
    // Reads the next token. At the end it answers kTokenEnd as often as it is asked.
    void GetToken();
    // Goes back to the start of the current token, so that GetToken reads it again.
    void putback() { mPosition = mTokenStart; }
    // Tells the listener, and keeps kind and place when it is the first error. Changes nothing else.
    void serror(ErrorType kind);

    [[nodiscard]] TokenKind Kind() const { return mTokenKind; }
    // The bytes of the current token, inside the statement.
    [[nodiscard]] std::string_view TokenView() const { return mTokenText; }
    // The same as a text in the statement's encoding.
    [[nodiscard]] SQLText TokenText() const { return {mTokenText, mEncoding}; }
    [[nodiscard]] bool IsEnd() const { return mTokenKind == kTokenEnd; }
    // Whether the token is this word, in any case. keyword is upper case.
    [[nodiscard]] bool IsWord(std::string_view keyword) const
    {
        // Most words differ in length or first letter: cheaper than a call.
        return mTokenKind == kTokenWord && mTokenText.size() == keyword.size() &&
               ToUpperASCII(mTokenText[0]) == keyword[0] && EqualsIgnoringCase(mTokenText, keyword);
    }
    [[nodiscard]] bool IsDelimiter(std::string_view text) const
    {
        // At most two bytes, seldom the same: cheaper than a call.
        return mTokenKind == kTokenDelimiter && mTokenText[0] == text[0] &&
               mTokenText.size() == text.size() && mTokenText.back() == text.back();
    }

    // The first error, kNoError when there was none.
    [[nodiscard]] ErrorType LastError() const { return mLastError; }
    // Bytes from the start of the statement to the token at which the first error was found; to the
    // end of the statement when it ended too early. 0 when there was no error.
    [[nodiscard]] size_t ErrorOffset() const { return mErrorOffset; }
    [[nodiscard]] char Escape() const { return mEscape; }

protected:
    // Whether a comma or a closing parenthesis comes next.
    [[nodiscard]] bool IsBeforeListEnd() const;
    // Makes a word that was already passed the current token again. text lies in the statement.
    void SetCurrentWord(std::string_view text);
    // As serror, for an error that is found when its token was already passed.
    void ErrorAt(ErrorType kind, const char* place);
    [[nodiscard]] const char* TokenStart() const { return mTokenStart; }
    // What is left of the statement after the current token, from its first byte that is no blank.
    [[nodiscard]] SQLText RestOfStatement();

private:
    void SkipBlanks();
    void GetStringLiteral();
    void GetDelimiter();
    void GetWord();
    void GetNumber();
    void GetOther();
    void SetText(const char* from);

    VelaSQLErrorListener* mListener;
    ErrorType mLastError = kNoError;
    char mEscape;
    TokenKind mTokenKind = kTokenNone;
    string mStatement;   // keeps the bytes alive
    TextEncoding mEncoding = kEncodingASCII;
    const char* mPosition = "";   // the next byte to read
    const char* mTokenStart = mPosition;
    std::string_view mTokenText;
    size_t mErrorOffset = 0;
};

// Hears of every error that a parser raises, also of those after the first.
class VelaSQLErrorListener {
public:
    virtual ~VelaSQLErrorListener() = default;
    virtual void HandleError(VelaSQLLexer::ErrorType kind) = 0;
};

}   // namespace vela
