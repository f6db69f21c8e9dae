#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

/// A program with a terminal of its own, as a person uses it: what it shows on both streams, and keys.
class TerminalProgram {
public:
    /// The environment as for becomeProgram.
    TerminalProgram(const std::vector<std::string>& command,
                    const std::map<std::string, std::string>& environment, unsigned short columns = 80);
    ~TerminalProgram();
    TerminalProgram(const TerminalProgram&) = delete;
    TerminalProgram& operator=(const TerminalProgram&) = delete;

    /// Reads until this text stands behind the one that was waited for last; false when the program ends or
    /// shows nothing for long.
    bool waitFor(const std::string& text);
    /// Keys, as the terminal sends them: "\x03" is Ctrl-C, "\x04" Ctrl-D, "\x1B" Escape.
    /// False where nobody is there any more.
    bool type(const std::string& keys) const;
    /// Waits for the end, and makes one of a program that shows nothing for long; the exit code, or 128 +
    /// signal.
    int finish();
    /// All of it so far.
    const std::string& shown() const { return m_shown; }

private:
    bool readSome();

    pid_t m_process = -1;
    int m_terminal = -1;
    std::string m_shown;
    std::size_t m_found = 0; // behind the text that was waited for last
};
