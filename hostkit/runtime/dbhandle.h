// Stand-in for the host's object handle. Covers the 64-bit value and its hexadecimal text; leaves out nothing callers use.
#pragma once

#include "adesk.h"

#include <compare>

/// An object's number in its drawing, kept from session to session. Zero is no handle.
class AcDbHandle {
public:
    constexpr AcDbHandle() = default;
    constexpr explicit AcDbHandle(Adesk::UInt64 value)
        : m_value(value) {}
    /// From hexadecimal text; anything that is not wholly hexadecimal, or over 16 digits, gives the null
    /// handle.
    explicit AcDbHandle(const wchar_t* text);

    constexpr Adesk::UInt64 value() const { return m_value; }
    constexpr Adesk::UInt32 low() const { return static_cast<Adesk::UInt32>(m_value); }
    constexpr Adesk::UInt32 high() const { return static_cast<Adesk::UInt32>(m_value >> 32); }
    constexpr bool isNull() const { return m_value == 0; }
    constexpr void setNull() { m_value = 0; }
    /// Upper-case hexadecimal without leading zeros; the buffer has room for 17 characters.
    bool getIntoAsciiBuffer(wchar_t* buffer) const;
    constexpr auto operator<=>(const AcDbHandle&) const = default;

private:
    Adesk::UInt64 m_value = 0;
};
