// User in a test: scripted answers, a fixed clock and a record of all that was shown; leaves out nothing of
// the port.
#pragma once

#include "hostport.h"
#include "windowaction.h"

#include <deque>
#include <vector>

namespace hostkit {

/// A port that keeps what it is given and answers from lists. Its registry is in memory, its environment its
/// own alone.
class ScriptedPort : public HostPort {
public:
    struct Box {
        std::wstring text;
        std::wstring caption;
        unsigned flags;
    };
    struct Meter {
        std::wstring caption;
        int minimum;
        int maximum;
        std::vector<int> positions;
        bool stopped;
    };

    /// What was shown, in order.
    std::wstring printed;
    std::vector<std::wstring> prompts;
    std::vector<Box> boxes;
    std::vector<Meter> meters;
    std::vector<std::wstring> debug;
    std::vector<std::wstring> problems;

    /// What was to be shown anew, where the test watches: set before the drawing is opened.
    bool isWatchingDisplay = false;
    std::vector<DisplayChange> displayChanges;

    /// Each time that a modal window waited, as it stood there; message boxes too.
    std::vector<ShownWindow> windows;

    /// What is answered: lines until none is left, then Input::end; at windows one action after the other, at
    /// message boxes when none is left the next button, then the refusal.
    std::deque<std::wstring> lines;
    std::deque<int> buttons;
    std::deque<WindowAction> actions;
    /// System metrics that differ from the headless port's.
    std::map<int, int> metrics;

    /// The clock stands still until the test moves it. 2024-02-29 12:34:56 UTC.
    std::int64_t time = 1709210096;
    std::int64_t nanoseconds = 0;

    /// Roots of drives by upper-case letter; a letter without an entry is dropped.
    std::map<wchar_t, std::string> drives;

    void print(std::wstring_view text) override;
    Input readLine(std::wstring_view prompt, std::wstring& line) override;
    void meterStart(std::wstring_view caption, int minimum, int maximum) override;
    void meterStep(int position) override;
    void meterStop() override;
    bool askWindow(const ShownWindow& window, WindowAction& action) override;
    std::optional<int> systemMetric(int number) const override;
    bool watchesDisplay() const override { return isWatchingDisplay; }
    void displayChanged(const DisplayChange& change) override { displayChanges.push_back(change); }
    void debugOutput(std::wstring_view text) override;
    void reportProblem(std::wstring_view text) override;
    std::int64_t now() const override;
    std::int64_t monotonicNanoseconds() const override;
    bool getEnvironment(std::wstring_view name, std::wstring& value) const override;
    void setEnvironment(std::wstring_view name, std::wstring_view value) override;
    std::string driveRoot(wchar_t letter) const override;

    std::map<std::wstring, std::wstring, std::less<>> environment;
};

} // namespace hostkit
