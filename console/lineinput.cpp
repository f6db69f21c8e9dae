#include "lineinput.h"

#include "interrupt.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace {

// A line longer than this is no command; what is read so far is taken as the line.
constexpr std::size_t longestLine = 1048576;
constexpr const char* escapeKey = "\x1B";

} // namespace

bool waitForInput() {
    for (;;) {
        if (interrupt::isRequested()) return false;
        pollfd watched[2] = {{STDIN_FILENO, POLLIN, 0}, {interrupt::descriptor(), POLLIN, 0}};
        const int ready = poll(watched, 2, -1);
        if (ready < 0 && errno != EINTR) return true; // the read tells what is wrong
        if (ready > 0 && !watched[1].revents) return true;
    }
}

bool LineInput::fill() {
    while (waitForInput()) {
        char buffer[4096];
        const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        m_held.append(buffer, static_cast<std::size_t>(count));
        return true;
    }
    return false;
}

Typed LineInput::read(std::string& line) {
    const bool isTerminal = isatty(STDIN_FILENO) == 1;
    std::size_t searched = 0;
    while (m_held.find('\n', searched) == std::string::npos && m_held.size() < longestLine && !m_isAtEnd) {
        searched = m_held.size();
        if (fill()) continue;
        if (interrupt::isRequested()) return Typed::cancelled;
        m_isAtEnd = true;
    }
    if (isTerminal) m_isAtEnd = false;
    if (m_held.empty()) return Typed::end;
    const std::size_t end = m_held.find('\n');
    line = m_held.substr(0, end);
    m_held.erase(0, end == std::string::npos ? end : end + 1);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return isTerminal && line == escapeKey ? Typed::escape : Typed::line;
}
