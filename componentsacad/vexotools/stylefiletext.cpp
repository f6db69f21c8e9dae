#include "stylefiletext.h"

namespace vexo {

// Writing a line gives each character its byte of the code page.
CString toFileText(const CString& text) { return text; }

CString fromFileText(CString text) {
    int at = 0;
    for (const wchar_t each : text.view()) {
        const char byte[] = {static_cast<char>(each), '\0'};
        if (each >= 0x80 && each < 0xA0) text.SetAt(at, CString(byte)[0]);
        ++at;
    }
    return text;
}

} // namespace vexo
