#pragma once

#include <cstdint>

namespace vela {

class string;

// A text-encoding tag: 32 bits that name how the bytes of a text are to be read. Tags are stored in
// record files with every String value, so their numbers never change. A tag that is not listed is
// carried along unchanged and its text treated as one byte per character.
using TextEncoding = uint32_t;

constexpr TextEncoding kEncodingMacRoman = 0x0000;
constexpr TextEncoding kEncodingMacGreek = 0x0006;
constexpr TextEncoding kEncodingMacCyrillic = 0x0007;
constexpr TextEncoding kEncodingMacCentralEurope = 0x001D;
constexpr TextEncoding kEncodingMacTurkish = 0x0023;
constexpr TextEncoding kEncodingMacCroatian = 0x0024;
constexpr TextEncoding kEncodingMacIcelandic = 0x0025;
constexpr TextEncoding kEncodingMacRomanian = 0x0026;
constexpr TextEncoding kEncodingUTF16 =
    0x0100;   // two bytes per character, in the machine's byte order
constexpr TextEncoding kEncodingLatin1 = 0x0201;   // ISO 8859-1; 0x0201 + n is ISO 8859-(n + 1)
constexpr TextEncoding kEncodingWindows1252 = 0x0500;
constexpr TextEncoding kEncodingWindows1250 = 0x0501;
constexpr TextEncoding kEncodingWindows1251 = 0x0502;
constexpr TextEncoding kEncodingWindows1253 = 0x0503;
constexpr TextEncoding kEncodingWindows1254 = 0x0504;
constexpr TextEncoding kEncodingWindows1255 = 0x0505;
constexpr TextEncoding kEncodingWindows1256 = 0x0506;
constexpr TextEncoding kEncodingWindows1257 = 0x0507;
constexpr TextEncoding kEncodingWindows1258 = 0x0508;
constexpr TextEncoding kEncodingASCII = 0x0600;   // also the tag of an absent text
constexpr TextEncoding kEncodingUTF8 = 0x08000100;

// The name under which the C library's iconv knows an encoding; null when it has none (the tag is
// not listed above).
[[nodiscard]] const char* IconvName(TextEncoding encoding);

// text in another encoding, tagged with it. A text that already has that tag, an empty text, or a
// pair of encodings of which one has no name comes back with its bytes unchanged and the new tag.
// Bytes that are malformed in the old encoding, and characters that the new one lacks, become "?";
// nothing is dropped silently.
[[nodiscard]] string ConvertEncoding(const string& text, TextEncoding target);

}   // namespace vela
