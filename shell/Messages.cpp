#include "shell/Messages.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <vector>

#include "shell/DisplayText.h"

namespace vela::shell {

const char* const kStateInputOutput = "58030";

namespace {

constexpr size_t kColumnsBeforeCaret = 70;
constexpr size_t kColumnsAfterCaret = 40;
constexpr std::string_view kCut = "...";

struct ShownCharacter {
    size_t offset;   // of its first byte in the line
    std::string text;
    size_t columns;
};

std::vector<ShownCharacter> ShownCharacters(std::string_view line)
{
    std::vector<ShownCharacter> characters;
    for (size_t offset = 0; offset < line.size();) {
        ShownCharacter character{offset, "", 0};
        if (line[offset] == '\t') {   // stays, so that the caret's line has the same tab stops
            character.text = "\t";
            character.columns = 1;
            offset++;
        } else {
            offset += AppendShown(line.substr(offset), &character.text, &character.columns);
        }
        characters.push_back(character);
    }
    return characters;
}

// What stands on the caret's line below a character, to bring the caret to the character after it.
std::string PaddingBelow(const ShownCharacter& character)
{
    return character.text == "\t" ? "\t" : std::string(character.columns, ' ');
}

// The first of the characters before caret that are shown.
size_t FirstShown(const std::vector<ShownCharacter>& characters, size_t caret)
{
    size_t first = caret;
    size_t columns = 0;
    while (first > 0 && columns < kColumnsBeforeCaret)
        columns += characters[--first].columns;
    return first;
}

}   // namespace

void PrintRaw(std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return;
        if (written > 0)
            text.remove_prefix(static_cast<size_t>(written));
    }
}

void PrintNote(std::string_view text)
{
    PrintRaw("veladb: " + std::string(text) + "\n");
}

void PrintFailure(const SourcePlace& where, std::string_view sqlState, std::string_view description)
{
    std::string line = where.file;
    line +=
        ":" + std::to_string(where.place.line) + ":" + std::to_string(where.place.column) + ": ";
    line += sqlState;
    line += " ";
    line += description;
    line += "\n";
    PrintRaw(line);
}

std::string CaretText(const SourceStatement& statement, size_t offset)
{
    size_t lineStart = 0;
    const std::string_view line = statement.LineAround(offset, &lineStart);
    const std::vector<ShownCharacter> characters = ShownCharacters(line);
    size_t caret = 0;
    while (caret < characters.size() && characters[caret].offset < offset - lineStart)
        caret++;

    const size_t first = FirstShown(characters, caret);
    std::string shown(first > 0 ? kCut : "");
    std::string below(shown.size(), ' ');
    for (size_t i = first; i < caret; i++) {
        shown += characters[i].text;
        below += PaddingBelow(characters[i]);
    }
    size_t columns = 0;
    size_t i = caret;
    for (; i < characters.size() && columns < kColumnsAfterCaret; i++) {
        shown += characters[i].text;
        columns += characters[i].columns;
    }
    if (i < characters.size())
        shown += kCut;
    return shown + "\n" + below + "^\n";
}

void PrintCaret(const SourceStatement& statement, size_t offset)
{
    PrintRaw(CaretText(statement, offset));
}

std::string CountText(size_t count, const std::string& thing)
{
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string SystemErrorText(int error)
{
    return std::generic_category().message(error);
}

}   // namespace vela::shell
