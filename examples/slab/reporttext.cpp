#include "reporttext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {

std::wstring wide(const char* begin, const char* end) { return std::wstring(begin, end); }

std::wstring csvField(const std::wstring& text) {
    if (text.find_first_of(L",\"\r\n") == std::wstring::npos) return text;
    std::wstring quoted = L"\"";
    for (const wchar_t character : text) {
        if (character == L'"') quoted += L'"';
        quoted += character;
    }
    return quoted + L"\"";
}

} // namespace

std::wstring handleText(AcDbHandle handle) {
    wchar_t text[17] = L"";
    (void)handle.getIntoAsciiBuffer(text);
    return text;
}

std::wstring fixedNumber(double value, int decimals) {
    char text[400];
    const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    if (result.ec != std::errc()) return L"?";
    const std::wstring number = wide(text, result.ptr);
    // What rounds to nothing has no sign.
    const bool isZero = number.find_first_of(L"123456789") == std::wstring::npos;
    return isZero && number.starts_with(L'-') ? number.substr(1) : number;
}

std::wstring fullNumber(double value) {
    char text[64];
    return wide(text, std::to_chars(text, text + sizeof text, value).ptr);
}

std::wstring jsonNumber(double value) { return std::isfinite(value) ? fullNumber(value) : L"null"; }

std::wstring withUnit(const std::wstring& heading, const std::wstring& unit, const wchar_t* power) {
    return heading + L" [" + (unit.empty() ? L"units" : unit) + power + L"]";
}

std::wstring alignedTable(const std::vector<TableRow>& rows, const std::string& alignment,
                          const std::vector<std::size_t>& ruled) {
    std::vector<std::size_t> widths;
    for (const TableRow& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    std::wstring text;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        std::wstring line;
        for (std::size_t i = 0; i < rows[r].size(); ++i) {
            const std::wstring blanks(widths[i] - rows[r][i].size(), L' ');
            line += (i ? L"  " : L"") + (alignment[i] == 'r' ? blanks + rows[r][i] : rows[r][i] + blanks);
        }
        line.erase(line.find_last_not_of(L' ') + 1);
        text += line + L"\n";
        if (std::find(ruled.begin(), ruled.end(), r) == ruled.end()) continue;
        for (std::size_t i = 0; i < widths.size(); ++i)
            text += (i ? L"  " : L"") + std::wstring(widths[i], L'-');
        text += L"\n";
    }
    return text;
}

std::wstring csvLine(const TableRow& fields) {
    std::wstring line;
    for (std::size_t i = 0; i < fields.size(); ++i) line += (i ? L"," : L"") + csvField(fields[i]);
    return line + L"\n";
}

std::wstring jsonText(const std::wstring& text) {
    std::wstring quoted = L"\"";
    for (const wchar_t character : text) {
        constexpr const wchar_t* digits = L"0123456789abcdef";
        if (character == L'"' || character == L'\\')
            (quoted += L'\\') += character;
        else if (character >= L' ')
            quoted += character;
        else
            ((quoted += L"\\u00") += digits[character >> 4 & 1]) += digits[character & 15];
    }
    return quoted + L"\"";
}

std::wstring unitName(int insunits) {
    constexpr const wchar_t* names[] = {L"",   L"in",  L"ft",  L"mi", L"mm", L"cm", L"m",
                                        L"km", L"uin", L"mil", L"yd", L"A",  L"nm", L"um",
                                        L"dm", L"dam", L"hm",  L"Gm", L"au", L"ly", L"pc"};
    constexpr int count = static_cast<int>(std::size(names));
    return insunits > 0 && insunits < count ? names[insunits] : L"";
}
