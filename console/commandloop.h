#pragma once

#include "consoleport.h"
#include "host.h"
#include "script.h"

#include <string>
#include <vector>

/// Runs the commands of a session, from a list or as they are typed, until one ends it. Needs a running
/// session (consoleState).
class CommandLoop {
public:
    CommandLoop(hostkit::Host& host, ConsolePort& port, bool isQuiet)
        : m_host(host)
        , m_port(port)
        , m_isQuiet(isQuiet) {}

    /// In order, until one fails (unless the session keeps going), Ctrl-C comes or QUIT; the exit code.
    int runLines(const std::wstring& source, const std::vector<ScriptLine>& lines);
    /// From standard input: a person's in a terminal, else as a list of lines; the exit code.
    int runPrompt();
    /// False when the command failed, which is told with the place where it stands.
    bool runLine(const std::wstring& where, const std::wstring& line, hostkit::MoreInput more);

private:
    int runInteractively();
    void tellCancelled(const std::wstring& name, const hostkit::CommandResult& result, bool hasChanged);
    int fail(int code, const std::wstring& problem);

    hostkit::Host& m_host;
    ConsolePort& m_port;
    bool m_isQuiet;
};
