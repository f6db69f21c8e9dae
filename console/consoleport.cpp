#include "consoleport.h"

#include "runrecord.h"

#include "completion.h"
#include "consoletext.h"
#include "interrupt.h"
#include "meterline.h"
#include "textencoding.h"
#include "tracefile.h"

#include <cerrno>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr std::size_t outputHeld = 65536;
// Work that ends sooner needs no meter.
constexpr std::int64_t shortWork = 250'000'000;
// Of a terminal: the rest of the line goes blank.
constexpr const char* clearToEnd = "\x1B[K";

// Texts of a drawing may hold control characters, which a terminal would obey.
wchar_t shownCharacter(wchar_t character) {
    const bool isControl = character < L' ' || (character >= 0x7F && character < 0xA0);
    const bool isLayout = character == L'\n' || character == L'\t' || character == L'\r';
    return isControl && !isLayout ? L'\uFFFD' : character;
}

std::string shownBytes(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t character : text) hostkit::appendUtf8(bytes, shownCharacter(character));
    return bytes;
}

// False when the other end does not take all of it; a closed pipe ends the program by its signal.
bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

std::size_t terminalColumns(int stream) {
    constexpr std::size_t usual = 80;
    winsize size{};
    return ioctl(stream, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
}

} // namespace

ConsolePort::ConsolePort() = default;
ConsolePort::~ConsolePort() { flush(); }

void ConsolePort::print(std::wstring_view text) {
    m_output += shownBytes(text);
    const std::size_t end = text.rfind(L'\n');
    if (end != std::wstring_view::npos) m_begunLine.clear();
    m_begunLine += text.substr(end == std::wstring_view::npos ? 0 : end + 1);
    if (m_output.size() >= outputHeld) flush();
}

void ConsolePort::flush() {
    if (!m_output.empty()) clearMeter();
    m_hasLostOutput |= !writeAll(STDOUT_FILENO, m_output);
    m_output.clear();
}

bool ConsolePort::isInteractive() { return isatty(STDIN_FILENO) == 1; }

std::size_t ConsolePort::shownColumns() {
    return isatty(STDOUT_FILENO) == 1 ? terminalColumns(STDOUT_FILENO) : 0;
}

bool ConsolePort::watchesDisplay() const { return hostkit::traceActive; }

void ConsolePort::displayChanged(const hostkit::DisplayChange&) {
    constexpr std::int64_t interval = 1'000'000;
    ++m_displayChanges;
    const std::int64_t now = monotonicNanoseconds();
    if (now - m_displayTraced < interval) return;
    m_displayTraced = now;
    traceDisplayChanges();
}

void ConsolePort::traceDisplayChanges() const { hostkit::traceCount(L"shown anew", m_displayChanges); }

bool ConsolePort::interruptRequested() const { return interrupt::isRequested(); }

// Made when a person is first asked for something.
void ConsolePort::makeEditor() {
    if (m_isEditorKnown) return;
    m_isEditorKnown = true;
    m_editor = LineEditor::make();
    const std::optional<std::string> path = CommandHistory::defaultPath();
    if (!m_editor || !path) return;
    m_history.emplace(*path);
    m_editor->remember(m_history->read());
}

void ConsolePort::keepCommand(const std::wstring& line) {
    std::wstring problem;
    if (!m_history || line.find_first_not_of(L" \t") == std::wstring::npos) return;
    if (m_history->add(line, problem)) return;
    reportProblem(L"vexohost: " + problem);
    m_history.reset();
}

// The editor shows the line that the prompt stands in, with what was printed there before.
Typed ConsolePort::readEdited(std::wstring_view prompt, bool isCommand, std::wstring& line) {
    const std::size_t end = prompt.rfind(L'\n');
    if (end != std::wstring_view::npos) {
        print(prompt.substr(0, end + 1));
        prompt.remove_prefix(end + 1);
    }
    flush();
    std::wstring shown;
    for (const wchar_t character : m_begunLine) shown += shownCharacter(character);
    for (const wchar_t character : prompt) shown += shownCharacter(character);
    m_begunLine.clear();
    if (columnsOf(shown) >= terminalColumns(STDOUT_FILENO) && shown.size() > prompt.size()) {
        print(L"\n");
        flush();
    }
    const Typed typed = m_editor->read(shown, isCommand, isCommand ? completeCommand : completeFile, line);
    if (typed != Typed::line) print(L"\n");
    flush();
    return typed;
}

Typed ConsolePort::readTyped(std::wstring_view prompt, std::wstring& line) {
    if (!isInteractive()) return readPlain(line);
    makeEditor();
    if (m_editor) return readEdited(prompt, false, line);
    print(prompt);
    return readPlain(line);
}

Typed ConsolePort::readCommand(std::wstring& line) {
    constexpr std::wstring_view prompt = L"Command: ";
    makeEditor();
    if (!m_editor) {
        print(prompt);
        return readPlain(line);
    }
    const Typed typed = readEdited(prompt, true, line);
    if (typed == Typed::line) keepCommand(line);
    return typed;
}

Typed ConsolePort::readPlain(std::wstring& line) {
    flush();
    std::string bytes;
    const Typed typed = m_input.read(bytes);
    if (typed == Typed::line) line = wideFromArgument(bytes);
    m_begunLine.clear();
    // The line of an Escape has ended by itself.
    if (isInteractive() && (typed == Typed::cancelled || typed == Typed::end)) print(L"\n");
    return typed;
}

hostkit::Input ConsolePort::readLine(std::wstring_view prompt, std::wstring& line) {
    switch (readTyped(prompt, line)) {
    case Typed::line:
        return hostkit::Input::line;
    case Typed::end:
        return hostkit::Input::end;
    case Typed::escape:
        interrupt::request();
        break;
    case Typed::cancelled:
        break;
    }
    return hostkit::Input::cancelled;
}

void ConsolePort::clearMeter() {
    if (!m_meterLine.empty()) writeAll(STDERR_FILENO, std::string("\r") + clearToEnd);
    m_meterLine.clear();
}

void ConsolePort::meterStart(std::wstring_view caption, int minimum, int maximum) {
    clearMeter();
    m_meterCaption = caption;
    m_meterMinimum = minimum;
    m_meterMaximum = maximum;
    m_meterBegin = monotonicNanoseconds();
}

// A terminal is slow, and a person sees no more than whole percents and seconds: the line is only written
// where it differs from the one that stands there.
void ConsolePort::meterStep(int position) {
    const double range = static_cast<double>(m_meterMaximum) - m_meterMinimum;
    const std::int64_t soFar = monotonicNanoseconds() - m_meterBegin;
    if (range <= 0.0 || soFar < shortWork || isatty(STDERR_FILENO) != 1) return;
    const double share = (static_cast<double>(position) - m_meterMinimum) / range;
    std::wstring line = meterLine(m_meterCaption, static_cast<int>(share * 100.0), secondsLeft(soFar, share),
                                  terminalColumns(STDERR_FILENO) - 1);
    if (line == m_meterLine) return;
    flush();
    writeAll(STDERR_FILENO, '\r' + shownBytes(line) + clearToEnd);
    m_meterLine = std::move(line);
}

void ConsolePort::meterStop() { clearMeter(); }

bool ConsolePort::askWindow(const hostkit::ShownWindow& window, hostkit::WindowAction& action) {
    action = m_boxes.ask(window);
    return true;
}

void ConsolePort::show(std::wstring_view text) {
    flush();
    clearMeter();
    writeAll(STDERR_FILENO, shownBytes(text));
}

void ConsolePort::reportProblem(std::wstring_view text) {
    if (m_record) m_record->addProblem(text);
    show(std::wstring(text) + L"\n");
}
