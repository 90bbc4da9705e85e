#include "runtime/TextEncoding.h"

#include <errno.h>
#include <iconv.h>

#include <bit>
#include <new>
#include <string>

#include "runtime/String.h"

namespace vela {

namespace {

struct EncodingName {
    TextEncoding encoding;
    const char* name;
};

constexpr bool kLittleEndian = std::endian::native == std::endian::little;

// The C library knows no Mac Greek, Turkish, Croatian and Romanian, and there is no ISO 8859-12.
constexpr EncodingName kNames[] = {
    {kEncodingMacRoman, "MACINTOSH"},
    {kEncodingMacCyrillic, "MAC-CYRILLIC"},
    {kEncodingMacCentralEurope, "MAC-CENTRALEUROPE"},
    {kEncodingMacIcelandic, "MAC-IS"},
    {kEncodingUTF16, kLittleEndian ? "UTF-16LE" : "UTF-16BE"},
    {kEncodingLatin1, "ISO-8859-1"},
    {kEncodingLatin1 + 1, "ISO-8859-2"},
    {kEncodingLatin1 + 2, "ISO-8859-3"},
    {kEncodingLatin1 + 3, "ISO-8859-4"},
    {kEncodingLatin1 + 4, "ISO-8859-5"},
    {kEncodingLatin1 + 5, "ISO-8859-6"},
    {kEncodingLatin1 + 6, "ISO-8859-7"},
    {kEncodingLatin1 + 7, "ISO-8859-8"},
    {kEncodingLatin1 + 8, "ISO-8859-9"},
    {kEncodingLatin1 + 9, "ISO-8859-10"},
    {kEncodingLatin1 + 10, "ISO-8859-11"},
    {kEncodingLatin1 + 12, "ISO-8859-13"},
    {kEncodingLatin1 + 13, "ISO-8859-14"},
    {kEncodingLatin1 + 14, "ISO-8859-15"},
    {kEncodingLatin1 + 15, "ISO-8859-16"},
    {kEncodingWindows1252, "CP1252"},
    {kEncodingWindows1250, "CP1250"},
    {kEncodingWindows1251, "CP1251"},
    {kEncodingWindows1253, "CP1253"},
    {kEncodingWindows1254, "CP1254"},
    {kEncodingWindows1255, "CP1255"},
    {kEncodingWindows1256, "CP1256"},
    {kEncodingWindows1257, "CP1257"},
    {kEncodingWindows1258, "CP1258"},
    {kEncodingASCII, "ASCII"},
    {kEncodingUTF8, "UTF-8"},
};

// The pivot of every conversion: each character one wchar_t, a Unicode code point.
constexpr const char* kPivotName = "WCHAR_T";
static_assert(sizeof(wchar_t) == 4, "a wchar_t holds any code point");

// One direction of the C library's conversion.
class Converter {
public:
    Converter(const char* target, const char* source) : mConversion(iconv_open(target, source))
    {
        // A text must not stay unconverted for want of memory.
        if (!IsValid() && errno == ENOMEM)
            throw std::bad_alloc();
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter()
    {
        if (IsValid())
            iconv_close(mConversion);
    }

    [[nodiscard]] bool IsValid() const { return mConversion != reinterpret_cast<iconv_t>(-1); }

    // Converts from the start of *source and appends to target, up to the end or to the first unit
    // that can't be converted. *source becomes what is left. At the end, what the conversion still
    // holds back is appended too.
    void Run(std::string_view* source, std::string* target)
    {
        char* from =
            const_cast<char*>(source->data());   // read only, whatever iconv's declaration says
        size_t left = source->size();
        while (left > 0 && Step(&from, &left, target)) {
        }
        *source = std::string_view(from, left);
        if (left == 0)
            Step(nullptr, nullptr, target);
    }

private:
    // Converts until the source ends, a unit is refused or a block of output is full; true in the
    // last case.
    bool Step(char** from, size_t* left, std::string* target)
    {
        char block[4096];
        char* to = block;
        size_t room = sizeof block;
        const size_t result = iconv(mConversion, from, left, &to, &room);
        target->append(block, sizeof block - room);
        return result == static_cast<size_t>(-1) && errno == E2BIG;
    }

    iconv_t mConversion;
};

void AppendPivot(wchar_t letter, std::string* pivot)
{
    pivot->append(reinterpret_cast<const char*>(&letter), sizeof letter);
}

// The text's code points, "?" for each malformed unit of unitSize bytes.
std::string Decode(Converter& decoder, std::string_view text, size_t unitSize)
{
    std::string pivot;
    decoder.Run(&text, &pivot);
    while (!text.empty()) {
        AppendPivot(L'?', &pivot);
        text.remove_prefix(text.size() < unitSize ? text.size() : unitSize);
        decoder.Run(&text, &pivot);
    }
    return pivot;
}

// The bytes of the code points, "?" for each that the encoding lacks.
std::string Encode(Converter& encoder, std::string_view pivot)
{
    std::string questionMark;
    AppendPivot(L'?', &questionMark);
    std::string text;
    encoder.Run(&pivot, &text);
    while (!pivot.empty()) {
        std::string_view substitute = questionMark;
        encoder.Run(&substitute, &text);
        pivot.remove_prefix(sizeof(wchar_t));
        encoder.Run(&pivot, &text);
    }
    return text;
}

// Whether the bytes mean the same in every named encoding but UTF-16.
bool IsASCII(std::string_view text)
{
    for (const char byte : text) {
        if (static_cast<unsigned char>(byte) >= 0x80)
            return false;
    }
    return true;
}

string Retagged(string text, TextEncoding encoding)
{
    text.SetEncoding(encoding);
    return text;
}

}   // namespace

const char* IconvName(TextEncoding encoding)
{
    for (const EncodingName& name : kNames) {
        if (name.encoding == encoding)
            return name.name;
    }
    return nullptr;
}

string ConvertEncoding(const string& text, TextEncoding target)
{
    const TextEncoding source = text.Encoding();
    const char* sourceName = IconvName(source);
    const char* targetName = IconvName(target);
    if (source == target || text.empty() || !sourceName || !targetName)
        return Retagged(text, target);
    const bool hasWideUnits = source == kEncodingUTF16 || target == kEncodingUTF16;
    if (!hasWideUnits && IsASCII(text.View()))
        return Retagged(text, target);

    Converter decoder(kPivotName, sourceName);
    Converter encoder(targetName, kPivotName);
    if (!decoder.IsValid() || !encoder.IsValid())
        return Retagged(text, target);
    const std::string pivot = Decode(decoder, text.View(), source == kEncodingUTF16 ? 2 : 1);
    return string(Encode(encoder, pivot), target);
}

}   // namespace vela
