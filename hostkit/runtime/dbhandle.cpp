#include "dbhandle.h"

AcDbHandle::AcDbHandle(const wchar_t* text) {
    constexpr int mostDigits = 16;
    Adesk::UInt64 value = 0;
    int digits = 0;
    for (; text && *text; ++text, ++digits) {
        const wchar_t c = *text;
        unsigned digit;
        if (c >= L'0' && c <= L'9')
            digit = static_cast<unsigned>(c - L'0');
        else if (c >= L'a' && c <= L'f')
            digit = static_cast<unsigned>(c - L'a') + 10;
        else if (c >= L'A' && c <= L'F')
            digit = static_cast<unsigned>(c - L'A') + 10;
        else
            return;
        if (digits == mostDigits) return;
        value = value << 4 | digit;
    }
    m_value = value;
}

bool AcDbHandle::getIntoAsciiBuffer(wchar_t* buffer) const {
    int digits = 1;
    while (digits < 16 && m_value >> (4 * digits)) ++digits;
    for (int i = 0; i < digits; ++i) buffer[i] = L"0123456789ABCDEF"[m_value >> (4 * (digits - 1 - i)) & 15];
    buffer[digits] = L'\0';
    return true;
}
