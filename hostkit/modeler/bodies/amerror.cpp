#include "amerror.h"

#include <map>

namespace AModeler {
namespace {

/// "eRadiusMustBePositive" becomes "Radius must be positive"; abbreviations in capitals stay.
std::wstring inWords(const char* name) {
    const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
    std::wstring words;
    for (const char* c = name + 1; *c; ++c) {
        const bool begins = isCapital(*c) && !(c > name + 1 && isCapital(c[-1]));
        if (*c == '_') {
            words += L"; ";
        } else if (words.empty() || !begins) {
            words += static_cast<wchar_t>(*c);
        } else {
            if (words.back() != L' ') words += L' ';
            words += isCapital(c[1]) ? static_cast<wchar_t>(*c) : static_cast<wchar_t>(*c - 'A' + 'a');
        }
    }
    return words;
}

const std::map<int, std::wstring>& texts() {
    static const std::map<int, std::wstring> all{{eOk, L"No error"},
#define AMODELER_TEXT(number, name) {number, inWords(#name)},
                                                 AMODELER_ERROR_CODES(AMODELER_TEXT)
#undef AMODELER_TEXT
    };
    return all;
}

} // namespace

const wchar_t* errorString(ErrorCode code) {
    const auto found = texts().find(code);
    return found == texts().end() ? L"Unknown error" : found->second.c_str();
}

Error::Error(ErrorCode code)
    : m_code(code) {
    for (const wchar_t* c = errorString(code); *c; ++c) m_text += static_cast<char>(*c);
}

} // namespace AModeler
