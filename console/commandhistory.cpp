#include "commandhistory.h"

#include "atomicfile.h"
#include "consoletext.h"
#include "systempath.h"
#include "textencoding.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace {

constexpr std::size_t linesKept = 1000;
constexpr std::size_t linesInFile = 2 * linesKept;

} // namespace

std::optional<std::string> CommandHistory::defaultPath() {
    const char* const state = std::getenv("XDG_STATE_HOME");
    if (state && state[0] == '/') return std::string(state) + "/vexotools/history";
    const char* const home = std::getenv("HOME");
    if (home && home[0] == '/') return std::string(home) + "/.local/state/vexotools/history";
    return std::nullopt;
}

CommandHistory::CommandHistory(std::string path)
    : m_path(std::move(path)) {}

std::vector<std::wstring> CommandHistory::read() {
    std::string bytes;
    std::vector<std::wstring> lines;
    if (!hostkit::readWholeFile(m_path, bytes)) return lines;
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::size_t end = rest.find('\n');
        if (const auto line = rest.substr(0, end); !line.empty())
            lines.push_back(onOneLine(wideFromArgument(line)));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    if (!lines.empty()) m_last = lines.back();
    const bool isLong = lines.size() > linesInFile;
    if (lines.size() > linesKept)
        lines.erase(lines.begin(), lines.end() - static_cast<std::ptrdiff_t>(linesKept));
    if (!isLong) return lines;
    hostkit::AtomicFile file(m_path);
    for (const std::wstring& line : lines) file.write(hostkit::utf8FromWide(line) + "\n");
    (void)file.commit(); // else it stays long
    return lines;
}

bool CommandHistory::add(const std::wstring& line, std::wstring& problem) {
    const std::wstring kept = onOneLine(line);
    if (kept == m_last) return true;
    m_last = kept;
    const std::size_t separator = m_path.rfind('/');
    if (separator != std::string::npos) (void)hostkit::makeDirectories(m_path.substr(0, separator));
    const int file = open(m_path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR);
    const std::string bytes = hostkit::utf8FromWide(kept) + "\n";
    // In one piece, so that lines of several consoles stay whole.
    const bool isWritten =
        file >= 0 && write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    if (!isWritten)
        problem = hostkit::pathFromSystem(m_path) + L": the commands cannot be kept for the next run: " +
                  hostkit::wideFromUtf8(std::strerror(errno));
    if (file >= 0) close(file);
    return isWritten;
}
