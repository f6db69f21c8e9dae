#pragma once

#include "boxasker.h"
#include "hostport.h"

#include <string>

/// The host's port in a terminal or a pipe: the command line is standard output and input, problems and boxes
/// go to standard error, all as UTF-8 whatever the locale. The meter is a line of standard error where that
/// is a terminal, and nothing elsewhere; work that ends within a quarter of a second shows none. A box is
/// drawn as text there and answered as told at BoxAsker.
class ConsolePort final : public hostkit::HostPort {
public:
    ~ConsolePort() override;

    void print(std::wstring_view text) override;
    void flush() override;
    /// Input::cancelled when Ctrl-C came; Input::end when the input is at its end or closed.
    hostkit::Input readLine(std::wstring_view prompt, std::wstring& line) override;
    void meterStart(std::wstring_view caption, int minimum, int maximum) override;
    void meterStep(int position) override;
    void meterStop() override;
    bool askWindow(const hostkit::ShownWindow& window, hostkit::WindowAction& action) override;
    void reportProblem(std::wstring_view text) override;
    bool interruptRequested() const override;

    /// Whether standard output has not taken all of it, as on a full disk.
    bool hasLostOutput() const { return m_hasLostOutput; }
    /// Text to standard error, as it stands.
    void show(std::wstring_view text);
    BoxAsker& boxes() { return m_boxes; }
    /// True when a person types the input.
    static bool isInteractive();

private:
    bool fillInput();
    void clearMeter();

    BoxAsker m_boxes{*this};
    std::string m_output;
    std::string m_input;
    bool m_isAtEnd = false;
    bool m_hasLostOutput = false;
    std::wstring m_meterCaption;
    int m_meterMinimum = 0;
    int m_meterMaximum = 0;
    std::int64_t m_meterBegin = 0; ///< in nanoseconds of the port's clock
    std::wstring m_meterLine;      ///< as shown; empty when none is
};
