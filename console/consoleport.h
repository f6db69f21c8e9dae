#pragma once

#include "boxasker.h"
#include "commandhistory.h"
#include "hostport.h"
#include "lineeditor.h"
#include "lineinput.h"

#include <string>

class RunRecord;

/// The host's port in a terminal or a pipe: the command line is standard output and input, problems and boxes
/// go to standard error, all as UTF-8 whatever the locale. The meter is a line of standard error where that
/// is a terminal, and nothing elsewhere; work that ends within a quarter of a second shows none. A box is
/// drawn as text there and answered as told at BoxAsker.
class ConsolePort final : public hostkit::HostPort {
public:
    ConsolePort();
    ~ConsolePort() override;

    void print(std::wstring_view text) override;
    void flush() override;
    /// Input::cancelled when Ctrl-C came or a person typed Escape, which is a wish to stop likewise;
    /// Input::end when the input is at its end or closed.
    hostkit::Input readLine(std::wstring_view prompt, std::wstring& line) override;
    /// The same, where Escape is one more answer.
    Typed readTyped(std::wstring_view prompt, std::wstring& line);
    /// The next command of a person, which is kept for later runs.
    Typed readCommand(std::wstring& line);
    void meterStart(std::wstring_view caption, int minimum, int maximum) override;
    void meterStep(int position) override;
    void meterStop() override;
    bool askWindow(const hostkit::ShownWindow& window, hostkit::WindowAction& action) override;
    void reportProblem(std::wstring_view text) override;
    bool interruptRequested() const override;
    /// While a timeline is written: it shows how much was to be shown anew so far, at most every millisecond.
    bool watchesDisplay() const override;
    void displayChanged(const hostkit::DisplayChange& change) override;
    void traceDisplayChanges() const;

    /// Whether standard output has not taken all of it, as on a full disk.
    bool hasLostOutput() const { return m_hasLostOutput; }
    /// Problems are told to the record too; null for none.
    void recordProblemsIn(RunRecord* record) { m_record = record; }
    /// Text to standard error, as it stands.
    void show(std::wstring_view text);
    BoxAsker& boxes() { return m_boxes; }
    /// True when a person types the input.
    static bool isInteractive();
    /// Of the terminal that standard output is; 0 where it is none.
    static std::size_t shownColumns();

private:
    void clearMeter();
    void makeEditor();
    Typed readEdited(std::wstring_view prompt, bool isCommand, std::wstring& line);
    Typed readPlain(std::wstring& line);
    void keepCommand(const std::wstring& line);

    BoxAsker m_boxes{*this};
    std::string m_output;
    std::wstring m_begunLine; ///< of what was printed, which a prompt goes on with
    LineInput m_input;
    std::unique_ptr<LineEditor> m_editor; ///< null where lines are not edited
    bool m_isEditorKnown = false;
    std::optional<CommandHistory> m_history;
    RunRecord* m_record = nullptr;
    bool m_hasLostOutput = false;
    long long m_displayChanges = 0;
    std::int64_t m_displayTraced = 0; ///< when, by the port's clock
    std::wstring m_meterCaption;
    int m_meterMinimum = 0;
    int m_meterMaximum = 0;
    std::int64_t m_meterBegin = 0; ///< in nanoseconds of the port's clock
    std::wstring m_meterLine;      ///< as shown; empty when none is
};
