#pragma once

#include <cassert>
#include <cstdint>
#include <cstring>

#include "engine/core/VelaDataType.h"
#include "runtime/String.h"

namespace vela {

// VelaValue is the one typed value of the engine: a cell of a record, a constant, an argument, a
// part of an index key.
//
// 16 bytes on every platform: 8 bytes of payload (a signed 32-bit integer for Integer and Boolean,
// a double, or one reference to a shared text for the text-backed types), the type code and the
// null flag. Payload bytes that a type does not use are zero. A null value keeps its type. A value
// of a non-text type never holds a text reference.
class VelaValue {
public:
    // A null value of type None.
    VelaValue() : mPayload(0), mType(kTypeNone), mNull(1) {}
    VelaValue(const VelaValue& other)
        : mPayload(other.mPayload), mType(other.mType), mNull(other.mNull)
    {
        RetainText();
    }
    VelaValue(VelaValue&& other) noexcept
        : mPayload(other.mPayload), mType(other.mType), mNull(other.mNull)
    {
        other.mPayload = 0;
    }
    ~VelaValue() { ReleaseText(); }
    VelaValue& operator=(const VelaValue& other)
    {
        if (this == &other)
            return *this;
        other.RetainText();
        ReleaseText();
        CopyFields(other);
        return *this;
    }
    // Takes the text over; other keeps its type, without a text.
    VelaValue& operator=(VelaValue&& other) noexcept
    {
        if (this == &other)
            return *this;
        ReleaseText();
        CopyFields(other);
        other.mPayload = 0;
        return *this;
    }

    [[nodiscard]] static VelaValue Integer(int32_t number)
    {
        VelaValue value;
        value.SetScalar(kTypeInteger, static_cast<uint32_t>(number));
        return value;
    }
    [[nodiscard]] static VelaValue Boolean(bool truth)
    {
        VelaValue value;
        value.SetScalar(kTypeBoolean, truth ? 1 : 0);
        return value;
    }
    [[nodiscard]] static VelaValue Double(double number)
    {
        VelaValue value;
        value.SetDouble(number);
        return value;
    }
    [[nodiscard]] static VelaValue String(string text)
    {
        return Text(kTypeString, static_cast<string&&>(text));
    }
    [[nodiscard]] static VelaValue Text(VelaDataType type, string text)
    {
        VelaValue value;
        value.SetText(type, static_cast<string&&>(text));
        return value;
    }
    [[nodiscard]] static VelaValue Null(VelaDataType type)
    {
        VelaValue value;
        value.mType = type;
        return value;
    }

    [[nodiscard]] VelaDataType GetType() const { return mType; }
    [[nodiscard]] bool IsNull() const { return mNull != 0; }

    // Each sets the type, clears the null flag and releases the old text first.
    void SetInteger(int32_t number)
    {
        ReleaseText();
        SetScalar(kTypeInteger, static_cast<uint32_t>(number));
    }
    void SetBoolean(bool truth)
    {
        ReleaseText();
        SetScalar(kTypeBoolean, truth ? 1 : 0);
    }
    void SetDouble(double number)
    {
        ReleaseText();
        std::memcpy(&mPayload, &number, sizeof number);
        mType = kTypeDouble;
        mNull = 0;
    }
    void SetString(string text) { SetText(kTypeString, static_cast<string&&>(text)); }
    // type is text-backed.
    void SetText(VelaDataType type, string text)
    {
        assert(IsTextBacked(type));
        ReleaseText();
        mPayload = reinterpret_cast<uintptr_t>(text.ReleaseStorage());
        mType = type;
        mNull = 0;
    }
    void SetNull(VelaDataType type)
    {
        ReleaseText();
        mPayload = 0;
        mType = type;
        mNull = 1;
    }
    // Drops the text and zeroes the payload; type and null flag stay.
    void Clear()
    {
        ReleaseText();
        mPayload = 0;
    }

    // Integer, Boolean: the number; String: its leading decimal integer; Double: truncated; else 0.
    // Null: its payload's, 0.
    [[nodiscard]] int32_t GetInteger() const
    {
        return mType == kTypeInteger || mType == kTypeBoolean ? StoredInteger()
                                                              : ConvertToInteger();
    }
    // Null: 0.0. Double: itself; Integer, Boolean: as a double; String: its leading decimal number;
    // else 0.0.
    [[nodiscard]] double GetDouble() const
    {
        return mType == kTypeDouble ? StoredDouble() : ConvertToDouble();
    }
    // The display form, which is the literal form of SQL: "NULL", decimal texts, "DATE 1984-05-06",
    // "TRUE". Made texts are ASCII; a String or Binary gives its own text, shared.
    [[nodiscard]] string GetString() const;
    // As GetString, but dates and times without their prefix.
    [[nodiscard]] string GetSaveString() const;
    // The stored text of a text-backed value, shared; the absent text for any other value and for
    // null.
    [[nodiscard]] string StoredText() const;
    // The same bytes without sharing them; good until this value changes.
    [[nodiscard]] std::string_view TextView() const
    {
        const StringStorage* text = TextStorage();
        return text ? std::string_view(text->Bytes(), text->length) : std::string_view();
    }

    // The encoding tag of the stored text; US-ASCII when there is none.
    [[nodiscard]] TextEncoding TextEncodingTag() const
    {
        const StringStorage* text = TextStorage();
        return text ? text->encoding : kEncodingASCII;
    }

    // Equality as the index and DISTINCT use it; not symmetric across types, on purpose:
    // null equals null; Integer and Boolean compare with other.GetInteger(); a text-backed value
    // compares its stored text with other.GetString() (so a Date never equals a Date, whose display
    // form has a prefix); a Double compares with the other's payload read as a double, unconverted;
    // any other type equals nothing.
    [[nodiscard]] bool Equals(const VelaValue& other) const;

    // Converts in place. A value of the target type is left untouched; else the null flag is
    // cleared, so a null becomes what its conversion gives (0, "NULL"). Binary and None, as
    // targets, make a String.
    void CoerceToType(VelaDataType target);

private:
    // The conversions from a type other than the one asked for.
    [[nodiscard]] int32_t ConvertToInteger() const;
    [[nodiscard]] double ConvertToDouble() const;
    [[nodiscard]] bool ConvertToBoolean() const;
    void CoerceToTimestamp();

    void CopyFields(const VelaValue& other)
    {
        mPayload = other.mPayload;
        mType = other.mType;
        mNull = other.mNull;
    }
    void SetScalar(VelaDataType type, uint32_t bits)
    {
        mPayload = bits;
        mType = type;
        mNull = 0;
    }
    [[nodiscard]] int32_t StoredInteger() const
    {
        return static_cast<int32_t>(static_cast<uint32_t>(mPayload));
    }
    [[nodiscard]] double StoredDouble() const
    {
        double number;
        std::memcpy(&number, &mPayload, sizeof number);
        return number;
    }
    [[nodiscard]] StringStorage* TextStorage() const
    {
        return IsTextBacked(mType)
                   ? reinterpret_cast<StringStorage*>(static_cast<uintptr_t>(mPayload))
                   : nullptr;
    }
    void RetainText() const
    {
        if (StringStorage* text = TextStorage())
            text->Retain();
    }
    void ReleaseText()
    {
        if (StringStorage* text = TextStorage())
            text->Release();
    }

    alignas(8) uint64_t mPayload;
    VelaDataType mType;
    uint8_t mNull;
};

static_assert(sizeof(VelaValue) == 16, "a value is 16 bytes on every platform");

}   // namespace vela
