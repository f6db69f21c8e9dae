#include "lineeditor.h"

#include "consoletext.h"
#include "textencoding.h"

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <histedit.h>
#include <poll.h>
#include <string>
#include <unistd.h>

namespace {

constexpr int historyLength = 1000;
constexpr char escapeKey = '\x1B';
// Within this time a terminal sends what belongs to one key, in milliseconds.
constexpr int keyTime = 50;

volatile std::sig_atomic_t g_isResized = 0;

// The editor turns characters into bytes as the locale says; here that is UTF-8 always.
class Utf8Scope {
public:
    explicit Utf8Scope(locale_t utf8)
        : m_earlier(utf8 ? uselocale(utf8) : nullptr) {}
    ~Utf8Scope() {
        if (m_earlier) uselocale(m_earlier);
    }
    Utf8Scope(const Utf8Scope&) = delete;
    Utf8Scope& operator=(const Utf8Scope&) = delete;

private:
    locale_t m_earlier;
};

class LibeditEditor final : public LineEditor {
public:
    LibeditEditor();
    ~LibeditEditor() override;
    LibeditEditor(const LibeditEditor&) = delete;
    LibeditEditor& operator=(const LibeditEditor&) = delete;

    bool isGood() const { return m_editor && m_commands && m_answers && m_utf8; }
    void remember(const std::vector<std::wstring>& lines) override;
    Typed read(std::wstring_view prompt, bool isCommand, const Completer& completer,
               std::wstring& line) override;

private:
    static LibeditEditor& of(EditLine* editor);
    static wchar_t* promptOf(EditLine* editor) { return of(editor).m_prompt.data(); }
    static int readKey(EditLine* editor, wchar_t* key) { return of(editor).nextKey(*key); }
    static unsigned char completeWord(EditLine* editor, int /*key*/) { return of(editor).complete(); }

    int nextKey(wchar_t& key);
    int stop(Typed how);
    bool readByte(char& byte);
    unsigned char complete();
    void list(const std::vector<std::wstring>& words) const;
    static void enter(HistoryW* history, const std::wstring& line);

    locale_t m_utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    EditLine* m_editor = nullptr;
    HistoryW* m_commands = nullptr;
    HistoryW* m_answers = nullptr;
    std::wstring m_prompt;
    const Completer* m_completer = nullptr;
    Typed m_stopped = Typed::line; ///< how the line ended, where it did not end as a line
};

LibeditEditor::LibeditEditor() {
    const Utf8Scope utf8(m_utf8);
    m_editor = el_init("vexohost", stdin, stdout, stderr);
    m_commands = history_winit();
    m_answers = history_winit();
    if (!isGood()) return;
    HistEventW event;
    for (HistoryW* each : {m_commands, m_answers}) {
        history_w(each, &event, H_SETSIZE, historyLength);
        history_w(each, &event, H_SETUNIQUE, 1);
    }
    el_wset(m_editor, EL_CLIENTDATA, this);
    el_wset(m_editor, EL_EDITOR, L"emacs");
    el_wset(m_editor, EL_PROMPT, promptOf);
    el_wset(m_editor, EL_GETCFN, readKey);
    el_wset(m_editor, EL_ADDFN, L"complete-word", L"Complete the word", completeWord);
    el_wset(m_editor, EL_BIND, L"^I", L"complete-word", nullptr);
    el_wset(m_editor, EL_BIND, L"^R", L"em-inc-search-prev", nullptr);
    struct sigaction action {};
    action.sa_handler = [](int) { g_isResized = 1; };
    sigemptyset(&action.sa_mask);
    sigaction(SIGWINCH, &action, nullptr);
}

LibeditEditor::~LibeditEditor() {
    const Utf8Scope utf8(m_utf8);
    if (m_editor) el_end(m_editor);
    if (m_commands) history_wend(m_commands);
    if (m_answers) history_wend(m_answers);
    if (m_utf8) freelocale(m_utf8);
}

LibeditEditor& LibeditEditor::of(EditLine* editor) {
    void* self = nullptr;
    el_wget(editor, EL_CLIENTDATA, &self);
    return *static_cast<LibeditEditor*>(self);
}

void LibeditEditor::enter(HistoryW* history, const std::wstring& line) {
    HistEventW event;
    if (line.find_first_not_of(L" \t") != std::wstring::npos)
        history_w(history, &event, H_ENTER, line.c_str());
}

void LibeditEditor::remember(const std::vector<std::wstring>& lines) {
    for (const std::wstring& line : lines) enter(m_commands, line);
}

Typed LibeditEditor::read(std::wstring_view prompt, bool isCommand, const Completer& completer,
                          std::wstring& line) {
    const Utf8Scope utf8(m_utf8);
    HistoryW* const history = isCommand ? m_commands : m_answers;
    m_prompt = prompt;
    m_completer = &completer;
    m_stopped = Typed::line;
    el_wset(m_editor, EL_HIST, history_w, history);
    el_wset(m_editor, EL_PREP_TERM, 1); // so that whoever sees the prompt types to the editor
    std::fputs("\r", stdout);
    int count = 0;
    const wchar_t* const typed = el_wgets(m_editor, &count);
    std::fflush(stdout);
    if (m_stopped != Typed::line) return m_stopped;
    if (!typed || count <= 0) return Typed::end;
    line.assign(typed, static_cast<std::size_t>(count));
    while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r')) line.pop_back();
    enter(history, line);
    return Typed::line;
}

int LibeditEditor::stop(Typed how) {
    m_stopped = how;
    return -1;
}

bool LibeditEditor::readByte(char& byte) {
    ssize_t count = 0;
    do {
        count = ::read(STDIN_FILENO, &byte, 1);
    } while (count < 0 && errno == EINTR);
    return count == 1;
}

// One character of the input; a byte that begins none becomes U+FFFD.
int LibeditEditor::nextKey(wchar_t& key) {
    if (!waitForInput()) return stop(Typed::cancelled);
    if (g_isResized) {
        g_isResized = 0;
        el_resize(m_editor);
    }
    std::string bytes(1, '\0');
    if (!readByte(bytes[0])) return 0;
    pollfd more{STDIN_FILENO, POLLIN, 0};
    if (bytes[0] == escapeKey && poll(&more, 1, keyTime) == 0) return stop(Typed::escape);
    const auto first = static_cast<unsigned char>(bytes[0]);
    const int rest = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
    for (int i = 0; i < rest; ++i) {
        char byte = 0;
        if (!readByte(byte)) return 0;
        bytes += byte;
    }
    const std::wstring character = hostkit::wideFromUtf8(bytes);
    key = character.empty() ? L'\uFFFD' : character[0];
    return 1;
}

unsigned char LibeditEditor::complete() {
    const LineInfoW* const info = el_wline(m_editor);
    const std::wstring_view line(info->buffer, static_cast<std::size_t>(info->cursor - info->buffer));
    const Completion found = (*m_completer)(line);
    if (found.words.empty()) return CC_REFRESH_BEEP;
    std::wstring common = found.words.front();
    for (const std::wstring& each : found.words)
        common.resize(static_cast<std::size_t>(
            std::mismatch(common.begin(), common.end(), each.begin(), each.end()).first - common.begin()));
    const bool isOne = found.words.size() == 1;
    if (isOne && !common.ends_with(L'/')) common += L' ';
    const std::wstring_view typed = line.substr(found.start);
    if (common.size() < typed.size() || (common == typed && !isOne)) {
        list(found.words);
        return CC_REDISPLAY;
    }
    el_wdeletestr(m_editor, static_cast<int>(typed.size()));
    return el_winsertstr(m_editor, common.c_str()) == 0 ? CC_REFRESH : CC_REFRESH_BEEP;
}

void LibeditEditor::list(const std::vector<std::wstring>& words) const {
    constexpr std::size_t most = 100;
    std::wstring text = L"\n";
    for (std::size_t i = 0; i < words.size() && i < most; ++i) text += onOneLine(words[i]) + L"  ";
    if (words.size() > most) text += L"...";
    std::fputs((hostkit::utf8FromWide(text) + "\n").c_str(), stdout);
}

} // namespace

std::unique_ptr<LineEditor> LineEditor::make() {
    const char* const terminal = std::getenv("TERM");
    const bool canEdit = terminal && *terminal && std::string_view(terminal) != "dumb";
    if (!canEdit || isatty(STDIN_FILENO) != 1 || isatty(STDOUT_FILENO) != 1) return nullptr;
    auto editor = std::make_unique<LibeditEditor>();
    if (!editor->isGood()) return nullptr;
    return editor;
}
