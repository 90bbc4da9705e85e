#pragma once

#include <string_view>

#include "runtime/String.h"

namespace vela {

// SQLText is a text in a syntax tree, a name or a literal: a view of bytes that the tree keeps alive, mostly those of the
// statement itself, in the statement's encoding. ToString makes a text that outlives the tree.
class SQLText {
public:
    SQLText() = default;
    SQLText(std::string_view bytes, TextEncoding encoding) : mBytes(bytes), mEncoding(encoding) {}
    // text must outlive it.
    SQLText(const string& text) : SQLText(text.View(), text.Encoding()) {}

    [[nodiscard]] std::string_view View() const { return mBytes; }
    [[nodiscard]] TextEncoding Encoding() const { return mEncoding; }
    [[nodiscard]] bool empty() const { return mBytes.empty(); }
    [[nodiscard]] string ToString() const { return string(mBytes, mEncoding); }
    [[nodiscard]] bool EqualsIgnoringCase(std::string_view other) const
    {
        return vela::EqualsIgnoringCase(mBytes, other);
    }

private:
    std::string_view mBytes;
    TextEncoding mEncoding = kEncodingASCII;
};

}   // namespace vela
