#include "plugin/host/ProgramText.h"

#include <optional>

namespace vela::host {

namespace {

constexpr size_t kMaxBlockDepth = 16;

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// LineReader takes one line apart into tokens. After a failure problem says what is wrong.
class LineReader {
public:
    explicit LineReader(std::string_view line) : mRest(line) {}

    [[nodiscard]] bool ReadTokens(std::vector<Token>* tokens)
    {
        for (SkipBlanks(); !mRest.empty() && mRest[0] != '#'; SkipBlanks()) {
            Token token;
            if (!ReadToken(&token))
                return false;
            tokens->push_back(std::move(token));
        }
        return true;
    }
    [[nodiscard]] const std::string& Problem() const { return mProblem; }

private:
    bool Fail(std::string problem)
    {
        mProblem = std::move(problem);
        return false;
    }
    void SkipBlanks()
    {
        while (!mRest.empty() && IsBlank(mRest[0]))
            mRest.remove_prefix(1);
    }
    bool ReadToken(Token* token)
    {
        std::string word;
        while (!mRest.empty() && !IsBlank(mRest[0]) && mRest[0] != '"') {
            if (mRest[0] == '{') {
                AddBytes(&word, token);
                if (!ReadSum(token))
                    return false;
                continue;
            }
            word += mRest[0];
            mRest.remove_prefix(1);
        }
        if (!mRest.empty() && mRest[0] == '"')
            return ReadText(word, token);
        AddBytes(&word, token);
        return true;
    }
    static void AddBytes(std::string* bytes, Token* token)
    {
        if (!bytes->empty())
            token->pieces.push_back({std::move(*bytes), false});
        bytes->clear();
    }
    bool ReadSum(Token* token)
    {
        const size_t end = mRest.find('}');
        if (end == std::string_view::npos)
            return Fail("\"{\" without \"}\"; write \\{ for the character itself");
        token->pieces.push_back({std::string(mRest.substr(1, end - 1)), true});
        mRest.remove_prefix(end + 1);
        return true;
    }
    // The rest begins with the opening quote; prefix is what stood before it.
    bool ReadText(const std::string& prefix, Token* token)
    {
        token->kind = Token::Kind::kText;
        if (!prefix.empty() || !token->pieces.empty()) {
            token->isBinary = prefix == "binary";
            const std::optional<uint32_t> encoding =
                token->isBinary ? std::optional<uint32_t>(0) : EncodingFromName(prefix);
            if (!encoding || !token->pieces.empty())
                return Fail("\"" + prefix + "\" before a text is no encoding");
            token->encoding = *encoding;
            token->isTagged = true;
            mRawUnits = prefix.starts_with("0x");
        }
        mRest.remove_prefix(1);
        std::string bytes;
        while (!mRest.empty() && mRest[0] != '"') {
            if (mRest[0] == '{') {
                AddBytes(&bytes, token);
                if (!ReadSum(token))
                    return false;
            } else if (!(mRest[0] == '\\' ? ReadEscape(token->encoding, &bytes)
                                          : ReadCharacter(token->encoding, &bytes))) {
                return false;
            }
        }
        if (mRest.empty())
            return Fail("a text has no closing quote");
        AddBytes(&bytes, token);
        mRest.remove_prefix(1);
        if (!mRest.empty() && !IsBlank(mRest[0]))
            return Fail("a blank is missing after a text");
        return true;
    }
    [[nodiscard]] bool IsUTF16(uint32_t encoding) const { return encoding == kUTF16 && !mRawUnits; }
    void AppendCharacter(uint32_t character, uint32_t encoding, std::string* bytes) const
    {
        AppendCodePoint(character, IsUTF16(encoding) ? kUTF16 : kUTF8, bytes);
    }
    bool ReadCharacter(uint32_t encoding, std::string* bytes)
    {
        uint32_t codePoint = 0;
        const size_t length = ReadUTF8(mRest, &codePoint);
        if (length == 0)
            return Fail("the program is not in UTF-8 here");
        if (codePoint >= 0x80 && encoding != kUTF8 && !IsUTF16(encoding))
            return Fail("a character outside ASCII is written by its bytes here, as \\xHH");
        AppendCharacter(codePoint, encoding, bytes);
        mRest.remove_prefix(length);
        return true;
    }
    bool ReadEscape(uint32_t encoding, std::string* bytes)
    {
        const char kind = mRest.size() < 2 ? '\0' : mRest[1];
        static constexpr std::string_view kKinds = "nrt0\"\\{}#";
        static constexpr std::string_view kMeanings("\n\r\t\0\"\\{}#", 9);
        const size_t known = kind == '\0' ? std::string_view::npos : kKinds.find(kind);
        mRest.remove_prefix(mRest.size() < 2 ? 1 : 2);
        if (known != std::string_view::npos) {
            AppendCharacter(static_cast<unsigned char>(kMeanings[known]), encoding, bytes);
            return true;
        }
        if (kind == 'x')
            return ReadByteEscape(encoding, bytes);
        if (kind == 'u')
            return ReadCodePointEscape(encoding, bytes);
        return Fail("an escape is one of \\n \\r \\t \\0 \\\" \\\\ \\{ \\} \\# \\xHH \\u{H...}");
    }
    bool ReadByteEscape(uint32_t encoding, std::string* bytes)
    {
        if (IsUTF16(encoding))
            return Fail("utf16 takes \\u{H...}; for single bytes write 0x0100\"...\"");
        const int high = mRest.empty() ? -1 : HexDigit(mRest[0]);
        const int low = mRest.size() < 2 ? -1 : HexDigit(mRest[1]);
        if (high < 0 || low < 0)
            return Fail("\\x needs two hexadecimal digits");
        *bytes += static_cast<char>(high * 16 + low);
        mRest.remove_prefix(2);
        return true;
    }
    bool ReadCodePointEscape(uint32_t encoding, std::string* bytes)
    {
        uint32_t codePoint = 0;
        size_t i = 1;
        for (; i < mRest.size() && i < 8 && HexDigit(mRest[i]) >= 0; i++)
            codePoint = codePoint * 16 + static_cast<uint32_t>(HexDigit(mRest[i]));
        if (mRest.empty() || mRest[0] != '{' || i == 1 || i >= mRest.size() || mRest[i] != '}' ||
            codePoint > 0x10FFFF)
            return Fail("\\u needs a code point in braces, as in \\u{1F600}");
        if (codePoint >= 0x80 && encoding != kUTF8 && !IsUTF16(encoding))
            return Fail("\\u beyond ASCII is for utf8 and utf16 texts");
        AppendCharacter(codePoint, encoding, bytes);
        mRest.remove_prefix(i + 1);
        return true;
    }

    std::string_view mRest;
    std::string mProblem;
    bool mRawUnits = false;   // UTF-16 given byte by byte
};

bool IsWord(const ProgramLine& line, size_t index, std::string_view word)
{
    return index < line.tokens.size() && line.tokens[index].Word() == word;
}

bool OpensBlock(const ProgramLine& line)
{
    return IsWord(line, 0, "repeat") || IsWord(line, 0, "walk") || IsWord(line, 0, "every") ||
           (IsWord(line, 0, "expect") && (IsWord(line, 1, "rows") || IsWord(line, 1, "query")));
}

// Takes the next line off text; a last one without a line feed counts, too.
std::string_view TakeLine(std::string_view* text)
{
    const size_t end = text->find('\n');
    const std::string_view line = text->substr(0, end);
    text->remove_prefix(end == std::string_view::npos ? text->size() : end + 1);
    return line;
}

}   // namespace

std::string_view Token::Word() const
{
    if (kind != Kind::kWord || pieces.size() != 1 || pieces[0].isSum)
        return {};
    return pieces[0].text;
}

bool ReadProgram(std::string_view text, std::vector<ProgramLine>* lines, ProgramError* error)
{
    // The blocks that are open, the innermost last. A block's lines lie in the last line of the
    // block around it, so that none of these pointers moves while it is in use.
    std::vector<std::vector<ProgramLine>*> open = {lines};
    for (size_t number = 1; !text.empty(); number++) {
        LineReader reader(TakeLine(&text));
        ProgramLine line;
        line.number = number;
        *error = {number, ""};
        if (!reader.ReadTokens(&line.tokens)) {
            error->problem = reader.Problem();
            return false;
        }
        if (line.tokens.empty())
            continue;
        if (IsWord(line, 0, "end") && line.tokens.size() == 1) {
            if (open.size() == 1) {
                error->problem = "\"end\" without a block";
                return false;
            }
            open.pop_back();
            continue;
        }
        const bool opensBlock = OpensBlock(line);
        open.back()->push_back(std::move(line));
        if (opensBlock)
            open.push_back(&open.back()->back().block);
        if (open.size() > kMaxBlockDepth) {
            error->problem = "blocks are nested too deeply";
            return false;
        }
    }
    if (open.size() == 1)
        return true;
    *error = {(*open[open.size() - 2]).back().number, "this block has no \"end\""};
    return false;
}

}   // namespace vela::host
