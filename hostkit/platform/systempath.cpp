#include "systempath.h"

#include "casefold.h"
#include "hostport.h"
#include "textencoding.h"

#include <algorithm>
#include <dirent.h>
#include <sys/stat.h>
#include <vector>

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

namespace {

struct HostDirectory {
    std::string path{};
};

} // namespace

std::string& hostDirectory() { return currentPort()->kept<HostDirectory>().path; }

std::string platformPath(std::wstring_view path) {
    std::string mapped = mapPath(path);
    if (mapped.empty() || mapped.front() == '/' || hostDirectory().empty()) return mapped;
    return hostDirectory() + (hostDirectory().back() == '/' ? "" : "/") + mapped;
}

namespace {

bool exists(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0;
}

// Names in the directory that differ from the wanted one in case alone, sorted.
std::vector<std::string> namesLike(const std::string& directory, std::string_view wanted) {
    std::vector<std::string> names;
    DIR* const entries = opendir(directory.empty() ? "." : directory.c_str());
    if (!entries) return names;
    const std::wstring wide = pathFromSystem(wanted);
    while (const dirent* each = readdir(entries))
        if (equalFolded(wide, pathFromSystem(each->d_name))) names.emplace_back(each->d_name);
    closedir(entries);
    std::sort(names.begin(), names.end());
    return names;
}

// `front` is there; looks for the rest below it, and tries the next directory where one is a dead end.
bool findBelow(const std::string& front, std::string_view rest, std::string& found) {
    const std::size_t start = rest.find_first_not_of('/');
    if (start == std::string_view::npos) {
        found = front + std::string(rest);
        return true;
    }
    const std::size_t end = std::min(rest.find('/', start), rest.size());
    const std::string head = front + std::string(rest.substr(0, start));
    const std::string_view name = rest.substr(start, end - start);
    if (exists(head + std::string(name)) && findBelow(head + std::string(name), rest.substr(end), found))
        return true;
    for (const std::string& each : namesLike(head, name))
        if (each != name && exists(head + each) && findBelow(head + each, rest.substr(end), found))
            return true;
    return false;
}

} // namespace

std::string findPath(std::wstring_view path) {
    const std::string given = mapPath(path);
    std::string found;
    return exists(given) || !findBelow("", given, found) ? given : found;
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
