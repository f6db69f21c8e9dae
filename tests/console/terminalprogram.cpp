#include "terminalprogram.h"

#include "runprogram.h"

#include <csignal>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {
constexpr int longestSilence = 20000; // milliseconds, of a program that hangs
}

TerminalProgram::TerminalProgram(const std::vector<std::string>& command,
                                 const std::map<std::string, std::string>& environment,
                                 unsigned short columns) {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = columns;
    m_process = forkpty(&m_terminal, nullptr, nullptr, &size);
    if (m_process < 0) throw std::runtime_error("no terminal");
    if (m_process == 0) becomeProgram(command, environment);
}

TerminalProgram::~TerminalProgram() {
    if (m_process > 0) {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    close(m_terminal);
}

bool TerminalProgram::readSome() {
    pollfd watched{m_terminal, POLLIN, 0};
    if (poll(&watched, 1, longestSilence) <= 0) return false;
    char buffer[4096];
    const ssize_t count = read(m_terminal, buffer, sizeof buffer);
    if (count <= 0) return false;
    m_shown.append(buffer, static_cast<std::size_t>(count));
    return true;
}

bool TerminalProgram::waitFor(const std::string& text) {
    for (;;) {
        const std::size_t at = m_shown.find(text, m_found);
        if (at != std::string::npos) {
            m_found = at + text.size();
            return true;
        }
        if (!readSome()) return false;
    }
}

bool TerminalProgram::type(const std::string& keys) const {
    return write(m_terminal, keys.data(), keys.size()) == static_cast<ssize_t>(keys.size());
}

int TerminalProgram::finish() {
    while (readSome()) {
    }
    // What is silent and has not hung up would wait for ever.
    pollfd watched{m_terminal, POLLIN, 0};
    if (poll(&watched, 1, 0) == 0) kill(m_process, SIGKILL);
    int status = 0;
    waitpid(m_process, &status, 0);
    m_process = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
