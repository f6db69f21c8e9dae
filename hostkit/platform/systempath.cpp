#include "systempath.h"

#include "hostport.h"
#include "textencoding.h"

namespace hostkit {

namespace {

constexpr wchar_t reservedBase = 0xDC00;

bool isSeparator(wchar_t character) { return character == L'\\' || character == L'/'; }

bool isReserved(wchar_t character) {
    return (character >= reservedBase + 0x80 && character <= reservedBase + 0xFF) ||
           character == reservedBase + L'\\';
}

bool startsWithDrive(std::wstring_view path) {
    if (path.size() < 2 || path[1] != L':') return false;
    return (path[0] >= L'A' && path[0] <= L'Z') || (path[0] >= L'a' && path[0] <= L'z');
}

} // namespace

std::string mapPath(std::wstring_view path) {
    path = path.substr(0, path.find(L'\0'));
    std::string result;
    if (startsWithDrive(path)) {
        result = currentPort()->driveRoot(path[0]);
        path.remove_prefix(2);
        if (!result.empty() && (path.empty() || !isSeparator(path[0]))) result += '/';
    }
    for (const wchar_t character : path) {
        if (isSeparator(character))
            result += '/';
        else if (isReserved(character))
            result += static_cast<char>(character - reservedBase);
        else
            appendUtf8(result, character);
    }
    return result;
}

std::wstring pathFromSystem(std::string_view path) {
    std::wstring result;
    result.reserve(path.size());
    while (!path.empty()) {
        std::optional<Utf8Fault> fault;
        std::size_t valid = path.size();
        std::wstring text = wideFromUtf8(path, &fault);
        if (fault) {
            valid = fault->offset;
            text = wideFromUtf8(path.substr(0, valid));
        }
        for (const wchar_t character : text) result += character == L'\\' ? reservedBase + L'\\' : character;
        path.remove_prefix(valid);
        if (path.empty()) break;
        result += static_cast<wchar_t>(reservedBase + static_cast<unsigned char>(path[0]));
        path.remove_prefix(1);
    }
    return result;
}

std::wstring_view fileNameOfPath(std::wstring_view path) {
    const std::size_t separator = path.find_last_of(L"\\/");
    return separator == std::wstring_view::npos ? path : path.substr(separator + 1);
}

} // namespace hostkit
