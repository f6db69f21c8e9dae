#include "vexoconversiontools.h"

#include "cvxlogentry.h"
#include "winnls.h"

#include <span>

namespace {

// Below it a byte is its own character in every code page.
constexpr wchar_t firstByte = 0x80;

} // namespace

CString VEXOConversionTools::StringAnsiToUnicode(CString text) {
    CVxLogEntry entry(L"VEXOConversionTools::StringAnsiToUnicode");
    constexpr wchar_t lastByte = 0xFF;
    const int length = text.GetLength();
    for (wchar_t& each : std::span(text.GetBuffer(), static_cast<std::size_t>(length))) {
        if (each < firstByte || each > lastByte) continue;
        const char byte = static_cast<char>(each);
        MultiByteToWideChar(CP_ACP, 0, &byte, 1, &each, 1);
    }
    text.ReleaseBuffer(length);
    return text;
}

CString VEXOConversionTools::StringUnicodeToAnsi(CString text) {
    CVxLogEntry entry(L"VEXOConversionTools::StringUnicodeToAnsi");
    const int length = text.GetLength();
    for (wchar_t& each : std::span(text.GetBuffer(), static_cast<std::size_t>(length))) {
        if (each >= 0 && each < firstByte) continue;
        char byte = 0;
        WideCharToMultiByte(CP_ACP, 0, &each, 1, &byte, 1, nullptr, nullptr);
        each = static_cast<unsigned char>(byte);
    }
    text.ReleaseBuffer(length);
    return text;
}
