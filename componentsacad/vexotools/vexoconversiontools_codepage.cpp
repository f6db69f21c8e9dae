#include "vexoconversiontools.h"

#include "cvxlogentry.h"
#include "winnls.h"

#include <string>

namespace {

// Below it a byte is its own character in every code page.
constexpr wchar_t firstByte = 0x80;

} // namespace

CString VEXOConversionTools::StringAnsiToUnicode(CString text) {
    CVxLogEntry entry(L"VEXOConversionTools::StringAnsiToUnicode");
    constexpr wchar_t lastByte = 0xFF;
    std::wstring wide(text.view());
    for (wchar_t& each : wide) {
        const char byte = static_cast<char>(each);
        if (each >= firstByte && each <= lastByte) MultiByteToWideChar(CP_ACP, 0, &byte, 1, &each, 1);
    }
    return CString(std::move(wide));
}

CString VEXOConversionTools::StringUnicodeToAnsi(CString text) {
    CVxLogEntry entry(L"VEXOConversionTools::StringUnicodeToAnsi");
    std::wstring bytes(text.view());
    for (wchar_t& each : bytes) {
        if (each >= 0 && each < firstByte) continue;
        char byte = 0;
        WideCharToMultiByte(CP_ACP, 0, &each, 1, &byte, 1, nullptr, nullptr);
        each = static_cast<unsigned char>(byte);
    }
    return CString(std::move(bytes));
}
