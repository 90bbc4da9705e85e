#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "plugin/host/Text.h"

namespace vela::host {

// Part of a token: bytes that stand as they are, or the sum between braces, such as i%10.
struct TokenPiece {
    std::string text;
    bool isSum = false;
};

// A word, or a text between quotes. A text with an encoding before its quotes is tagged with it
// and compared with it; one without is UTF-8, and equals the same text in ASCII.
struct Token {
    enum class Kind { kWord, kText };

    Kind kind = Kind::kWord;
    std::vector<TokenPiece> pieces;   // without two pieces of bytes in a row
    uint32_t encoding = kUTF8;
    bool isTagged = false;
    bool isBinary = false;   // bytes that are no text: binary"..."

    // The word, when it has no braces; else, and for a text, the empty string.
    [[nodiscard]] std::string_view Word() const;
};

// One line of a program that says something, with the lines of its block when it opens one.
struct ProgramLine {
    size_t number = 0;   // from 1, in the file
    std::vector<Token> tokens;
    std::vector<ProgramLine> block;   // up to its "end", which is left out
};

// What keeps a text from being a program.
struct ProgramError {
    size_t line = 0;
    std::string problem;
};

// Takes a program apart. docs/plugin-host.md describes the language. Blank lines and comments
// leave nothing behind. False: error says what is wrong on which line.
[[nodiscard]] bool ReadProgram(std::string_view text, std::vector<ProgramLine>* lines,
                               ProgramError* error);

}   // namespace vela::host
