#include "vexoconversiontools.h"

#include "cvxlogentry.h"
#include "textencoding.h"

CString VEXOConversionTools::StringAnsiToUnicode(CString text) {
    CVxLogEntry entry(L"VEXOConversionTools::StringAnsiToUnicode");
    constexpr wchar_t lastByte = 0xFF;
    std::wstring wide(text.view());
    for (wchar_t& each : wide)
        if (each >= 0 && each <= lastByte) each = hostkit::wideFromAnsi(static_cast<unsigned char>(each));
    return CString(std::move(wide));
}

CString VEXOConversionTools::StringUnicodeToAnsi(CString text) {
    CVxLogEntry entry(L"VEXOConversionTools::StringUnicodeToAnsi");
    std::wstring bytes(text.view());
    for (wchar_t& each : bytes) each = hostkit::ansiFromWide(each).value_or('?');
    return CString(std::move(bytes));
}
