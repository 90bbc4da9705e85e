#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vela {

// Every text over the letters of up to that length, the empty one first.
inline std::vector<std::string> AllTexts(std::string_view letters, size_t longest)
{
    std::vector<std::string> texts = {""};
    for (size_t i = 0; i < texts.size() && texts[i].size() < longest; i++) {
        for (const char letter : letters)
            texts.push_back(texts[i] + letter);
    }
    return texts;
}

}   // namespace vela
