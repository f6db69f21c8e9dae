#include "tchar.h"

#include "casefold.h"

#include <charconv>
#include <limits>
#include <string>
#include <string_view>

namespace {

using hostkit::isWhiteSpace;

std::wstring_view viewOf(const wchar_t* text) { return text ? std::wstring_view(text) : std::wstring_view(); }

bool isDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

long long leadingInteger(std::wstring_view text, long long lowest, long long highest) {
    std::size_t at = 0;
    while (at < text.size() && isWhiteSpace(text[at])) ++at;
    bool negative = false;
    if (at < text.size() && (text[at] == L'-' || text[at] == L'+')) negative = text[at++] == L'-';
    // Counted downward: the lowest value has no positive counterpart.
    long long value = 0;
    for (; at < text.size() && isDigit(text[at]); ++at) {
        const int digit = static_cast<int>(text[at] - L'0');
        if (value < (std::numeric_limits<long long>::min() + digit) / 10) return negative ? lowest : highest;
        value = value * 10 - digit;
    }
    if (negative) return value < lowest ? lowest : value;
    return value < -highest ? highest : -value;
}

// The characters of a number in the form that std::from_chars reads, taken from the start of the text.
std::string leadingNumber(std::wstring_view text) {
    std::string number;
    std::size_t at = 0;
    const auto takeDigits = [&] {
        const std::size_t before = number.size();
        while (at < text.size() && isDigit(text[at])) number += static_cast<char>(text[at++]);
        return number.size() > before;
    };
    while (at < text.size() && isWhiteSpace(text[at])) ++at;
    if (at < text.size() && (text[at] == L'-' || text[at] == L'+')) {
        if (text[at++] == L'-') number += '-';
    }
    bool hasDigits = takeDigits();
    if (at < text.size() && text[at] == L'.') {
        ++at;
        number += hasDigits ? "." : "0.";
        hasDigits = takeDigits() || hasDigits;
    }
    if (!hasDigits) return {};
    if (at >= text.size() || std::wstring_view(L"eEdD").find(text[at]) == std::wstring_view::npos)
        return number;
    const std::string mantissa = number;
    ++at;
    number += 'e';
    if (at < text.size() && (text[at] == L'-' || text[at] == L'+')) number += static_cast<char>(text[at++]);
    return takeDigits() ? number : mantissa;
}

// from_chars tells of overflow and underflow alike; the sign of the decimal exponent says which.
double outOfRange(const std::string& number) {
    const double sign = number[0] == '-' ? -1.0 : 1.0;
    const std::size_t exponent = number.find('e');
    const bool tiny = exponent != std::string::npos ? number[exponent + 1] == '-'
                                                    : number.find_first_of("123456789") > number.find('.');
    return sign * (tiny ? 0.0 : std::numeric_limits<double>::infinity());
}

void copyPart(wchar_t* target, std::wstring_view part, int room) {
    if (!target) return;
    const std::size_t length = part.copy(target, static_cast<std::size_t>(room) - 1);
    target[length] = L'\0';
}

} // namespace

int _wtoi(const wchar_t* text) {
    return static_cast<int>(
        leadingInteger(viewOf(text), std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

long long _wtoi64(const wchar_t* text) {
    return leadingInteger(viewOf(text), std::numeric_limits<long long>::min(),
                          std::numeric_limits<long long>::max());
}

double _wtof(const wchar_t* text) {
    const std::string number = leadingNumber(viewOf(text));
    if (number.empty()) return 0.0;
    double value = 0.0;
    const char* end = number.data() + number.size();
    if (std::from_chars(number.data(), end, value).ec == std::errc::result_out_of_range)
        return outOfRange(number);
    return value;
}

int _wcsicmp(const wchar_t* first, const wchar_t* second) {
    return hostkit::compareFolded(viewOf(first), viewOf(second));
}

int _wcsnicmp(const wchar_t* first, const wchar_t* second, std::size_t count) {
    const std::wstring_view a(first ? first : L"", first ? wcsnlen(first, count) : 0);
    const std::wstring_view b(second ? second : L"", second ? wcsnlen(second, count) : 0);
    return hostkit::compareFolded(a, b);
}

wchar_t* _wcslwr(wchar_t* text) {
    for (wchar_t* at = text; at && *at; ++at) *at = hostkit::foldCase(*at);
    return text;
}

wchar_t* _wcsupr(wchar_t* text) {
    for (wchar_t* at = text; at && *at; ++at) *at = hostkit::upperCase(*at);
    return text;
}

wchar_t* lstrcpyW(wchar_t* target, const wchar_t* source) {
    return target && source ? std::wcscpy(target, source) : nullptr;
}

wchar_t* lstrcatW(wchar_t* target, const wchar_t* source) {
    return target && source ? std::wcscat(target, source) : nullptr;
}

int lstrlenW(const wchar_t* text) { return static_cast<int>(viewOf(text).size()); }

int lstrcmpW(const wchar_t* first, const wchar_t* second) {
    const int order = viewOf(first).compare(viewOf(second));
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

int lstrcmpiW(const wchar_t* first, const wchar_t* second) { return _wcsicmp(first, second); }

void _wsplitpath(const wchar_t* path, wchar_t* drive, wchar_t* directory, wchar_t* name, wchar_t* extension) {
    std::wstring_view rest = viewOf(path);
    const std::size_t driveLength = rest.size() >= 2 && rest[1] == L':' ? 2 : 0;
    copyPart(drive, rest.substr(0, driveLength), _MAX_DRIVE);
    rest.remove_prefix(driveLength);

    const std::size_t separator = rest.find_last_of(L"\\/");
    const std::size_t directoryLength = separator == std::wstring_view::npos ? 0 : separator + 1;
    copyPart(directory, rest.substr(0, directoryLength), _MAX_DIR);
    rest.remove_prefix(directoryLength);

    const std::size_t point = rest.rfind(L'.');
    const std::size_t nameLength = point == std::wstring_view::npos ? rest.size() : point;
    copyPart(name, rest.substr(0, nameLength), _MAX_FNAME);
    copyPart(extension, rest.substr(nameLength), _MAX_EXT);
}

void _wmakepath(wchar_t* path, const wchar_t* drive, const wchar_t* directory, const wchar_t* name,
                const wchar_t* extension) {
    if (!path) return;
    std::wstring whole;
    if (!viewOf(drive).empty()) whole.append(1, *drive).append(1, L':');
    whole += viewOf(directory);
    const bool needsSeparator = !viewOf(directory).empty() && whole.back() != L'\\' && whole.back() != L'/';
    if (needsSeparator) whole += L'\\';
    whole += viewOf(name);
    if (!viewOf(extension).empty() && *extension != L'.') whole += L'.';
    whole += viewOf(extension);
    copyPart(path, whole, _MAX_PATH);
}
