#include "consoleport.h"

#include "consoletext.h"
#include "interrupt.h"
#include "meterline.h"
#include "textencoding.h"

#include <cerrno>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr std::size_t outputHeld = 65536;
// A line longer than this is no command; what is read so far is taken as the line.
constexpr std::size_t longestLine = 1048576;
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

std::size_t terminalColumns() {
    constexpr std::size_t usual = 80;
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
}

} // namespace

ConsolePort::~ConsolePort() { flush(); }

void ConsolePort::print(std::wstring_view text) {
    m_output += shownBytes(text);
    if (m_output.size() >= outputHeld) flush();
}

void ConsolePort::flush() {
    if (!m_output.empty()) clearMeter();
    m_hasLostOutput |= !writeAll(STDOUT_FILENO, m_output);
    m_output.clear();
}

bool ConsolePort::isInteractive() { return isatty(STDIN_FILENO) == 1; }

bool ConsolePort::interruptRequested() const { return interrupt::isRequested(); }

bool ConsolePort::fillInput() {
    for (;;) {
        if (interrupt::isRequested()) return false;
        pollfd watched[2] = {{STDIN_FILENO, POLLIN, 0}, {interrupt::descriptor(), POLLIN, 0}};
        const int ready = poll(watched, 2, -1);
        if (ready < 0 && errno != EINTR) return false;
        if (ready <= 0 || watched[1].revents) continue;
        char buffer[4096];
        const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        m_input.append(buffer, static_cast<std::size_t>(count));
        return true;
    }
}

hostkit::Input ConsolePort::readLine(std::wstring_view prompt, std::wstring& line) {
    if (isInteractive()) print(prompt);
    flush();
    std::size_t searched = 0;
    while (m_input.find('\n', searched) == std::string::npos && m_input.size() < longestLine && !m_isAtEnd) {
        searched = m_input.size();
        if (fillInput()) continue;
        if (interrupt::isRequested()) return hostkit::Input::cancelled;
        m_isAtEnd = true;
    }
    if (m_input.empty()) return hostkit::Input::end;
    const std::size_t end = m_input.find('\n');
    std::string bytes = m_input.substr(0, end);
    m_input.erase(0, end == std::string::npos ? end : end + 1);
    if (!bytes.empty() && bytes.back() == '\r') bytes.pop_back();
    line = wideFromArgument(bytes);
    return hostkit::Input::line;
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
                                  terminalColumns() - 1);
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

void ConsolePort::reportProblem(std::wstring_view text) { show(std::wstring(text) + L"\n"); }
