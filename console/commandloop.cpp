#include "commandloop.h"

#include "consolestate.h"
#include "exitcodes.h"
#include "interrupt.h"
#include "runrecord.h"
#include "textencoding.h"
#include "timelimit.h"
#include "undohistory.h"

namespace {

// Of the current document.
int undoSteps(hostkit::Host& host) {
    const AcApDocument* document = host.documents().curDocument();
    return document ? hostkit::undoGroupCount(*document->database()) : 0;
}

} // namespace

int CommandLoop::runLines(const std::wstring& source, const std::vector<ScriptLine>& lines) {
    bool hasFailed = false;
    for (const ScriptLine& line : lines) {
        const std::wstring where = line.number ? source + L":" + std::to_wstring(line.number) : source;
        if (!runLine(where, line.text, hostkit::MoreInput::none)) hasFailed = true;
        if (interrupt::isRequested()) return exitcode::interrupted;
        if (hasFailed && !consoleState().keepsGoing) return exitcode::commandFailed;
        if (consoleState().wantsToQuit) break;
    }
    return m_host.endInput() && !hasFailed ? exitcode::ok : exitcode::commandFailed;
}

int CommandLoop::runPrompt() {
    if (ConsolePort::isInteractive()) return runInteractively();
    for (std::size_t number = 1; !consoleState().wantsToQuit; ++number) {
        std::wstring line;
        const hostkit::Input input = m_port.readLine(L"", line);
        if (input == hostkit::Input::cancelled) return exitcode::interrupted;
        if (input == hostkit::Input::end) break;
        if (parseScript(hostkit::utf8FromWide(line)).empty()) continue;
        if (!runLine(L"standard input:" + std::to_wstring(number), line, hostkit::MoreInput::none))
            return exitcode::commandFailed;
        if (interrupt::isRequested()) return exitcode::interrupted;
    }
    return m_host.endInput() ? exitcode::ok : exitcode::commandFailed;
}

// A person who types goes on after a mistake, and a wish to stop ends the running command alone.
int CommandLoop::runInteractively() {
    if (!m_isQuiet) m_port.print(L"Type HELP for the commands, QUIT to leave.\n");
    while (!consoleState().wantsToQuit) {
        std::wstring line;
        const Typed typed = m_port.readCommand(line);
        if (interrupt::isEndRequested()) return exitcode::interrupted;
        if (typed == Typed::end) line = L"QUIT";
        if (typed == Typed::cancelled) m_port.print(L"QUIT ends the program.\n");
        const bool isCommand = typed == Typed::end || typed == Typed::line;
        if (isCommand && !parseScript(hostkit::utf8FromWide(line)).empty())
            runLine(L"", line, hostkit::MoreInput::ask);
        if (interrupt::isEndRequested() || timelimit::isOver()) return exitcode::interrupted;
        interrupt::withdraw();
    }
    (void)m_host.endInput();
    return exitcode::ok;
}

int CommandLoop::fail(int code, const std::wstring& problem) {
    m_port.reportProblem(L"vexohost: " + problem);
    return code;
}

bool CommandLoop::runLine(const std::wstring& where, const std::wstring& line, hostkit::MoreInput more) {
    const int steps = undoSteps(m_host);
    const auto start = std::chrono::steady_clock::now();
    const hostkit::CommandResult result = m_host.run(line, more);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    if (RunRecord* record = consoleState().record)
        record->addCommand({line, result.status, result.reason, took.count()});
    m_port.flush();
    if (m_host.hasThrown()) consoleState().hasThrown = true;
    hostkit::CommandInput words(line, hostkit::MoreInput::none);
    std::wstring name;
    words.nextWord(name);
    if (interrupt::isRequested() && !timelimit::isOver()) {
        if (more == hostkit::MoreInput::ask) tellCancelled(name, result, undoSteps(m_host) > steps);
        return result.status == Acad::eOk;
    }
    if (result.status == Acad::eOk) return true;
    const std::wstring reason = result.reason.empty() ? L"the command failed" : result.reason;
    fail(exitcode::commandFailed, (where.empty() ? L"" : where + L": ") + name + L": " + reason + L" (" +
                                      acadErrorStatusText(result.status) + L")");
    return false;
}

void CommandLoop::tellCancelled(const std::wstring& name, const hostkit::CommandResult& result,
                                bool hasChanged) {
    std::wstring text = L"vexohost: " + name + L": cancelled";
    if (!result.reason.empty()) text += L": " + result.reason;
    if (hasChanged) text += L"; what it had changed stays, UNDO takes it back";
    m_port.reportProblem(text);
}
