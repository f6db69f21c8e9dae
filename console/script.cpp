#include "script.h"

#include "atomicfile.h"
#include "consoletext.h"
#include "systempath.h"
#include "textencoding.h"

#include <cerrno>
#include <cstring>

std::vector<ScriptLine> parseScript(std::string_view bytes) {
    const std::wstring text = wideFromArgument(bytes);
    std::vector<ScriptLine> lines;
    std::size_t number = 0;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = text.find_first_of(L"\r\n", start);
        if (end == std::wstring::npos) end = text.size();
        ++number;
        const std::wstring line = text.substr(start, end - start);
        const std::size_t first = line.find_first_not_of(L" \t");
        if (first != std::wstring::npos && line[first] != L';') lines.push_back({number, line.substr(first)});
        start = end + (text.compare(end, 2, L"\r\n") == 0 ? 2 : 1);
    }
    return lines;
}

std::optional<std::vector<ScriptLine>> readScript(const std::wstring& file, std::wstring& reason) {
    std::string bytes;
    if (!hostkit::readWholeFile(hostkit::mapPath(file), bytes)) {
        reason = hostkit::wideFromUtf8(std::strerror(errno));
        return std::nullopt;
    }
    if (bytes.find('\0') != std::string::npos) {
        reason = L"this is no text file";
        return std::nullopt;
    }
    return parseScript(bytes);
}
