#pragma once

#include "plugin/MOXAPlugin.h"
#include "runtime/String.h"

namespace vela {

// The texts of the host and those of the engine: bytes and encoding number go over unchanged.

// A copy of a text of the host; null gives the empty text.
[[nodiscard]] string TextFromHost(MOXAstring text);
// A copy for use in statements and as a name. No statement can be read in UTF-16, where every other
// byte of its keywords is NUL: such a text is converted to UTF-8. Any other is unchanged.
[[nodiscard]] string StatementFromHost(MOXAstring text);
// A new text of the host, which the caller owns; null when the host can't make it, or the text is
// longer than a host can tell.
[[nodiscard]] MOXAstring TextToHost(const string& text);

// The same of "Error: Out of memory.", without taking memory here.
[[nodiscard]] MOXAstring OutOfMemoryToHost();

// A text of the host that is owned here, and given back.
class OwnedHostText {
public:
    explicit OwnedHostText(MOXAstring text) : mText(text) {}
    ~OwnedHostText();
    OwnedHostText(const OwnedHostText&) = delete;
    OwnedHostText& operator=(const OwnedHostText&) = delete;

    [[nodiscard]] MOXAstring Get() const { return mText; }

private:
    MOXAstring mText;
};

}   // namespace vela
