// Stand-in for the host's outside world. Covers all that a person sees or gives: command line, meter, boxes, debug output, clock, environment, registry, drives; leaves out sound.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace hostkit {

class Desktop;
class OutputFiles;
class RegistryStore;
struct ShownWindow;
struct WindowAction;

/// How a request for a line of input ended.
enum class Input { line, cancelled, end };

/// The one way out of the kit and the library. A console, a test or a server derives from it; what it does
/// not override keeps the headless behaviour told at each function. One port belongs to one host and is used
/// on the host's thread.
class HostPort {
public:
    HostPort();
    virtual ~HostPort();
    HostPort(const HostPort&) = delete;
    HostPort& operator=(const HostPort&) = delete;

    /// Text for the command line, as it stands: no line end is added. Headless: dropped.
    virtual void print(std::wstring_view text);
    /// Sends on what print still holds back. Headless: nothing is held.
    virtual void flush();
    /// Shows the prompt and waits for one line, without its line end. The line is only set for Input::line.
    /// Headless: Input::end.
    virtual Input readLine(std::wstring_view prompt, std::wstring& line);

    /// True once a person has asked for an end (Ctrl-C); long work looks at it between its steps and stops
    /// cleanly. Headless: never.
    virtual bool interruptRequested() const;

    /// The meter in the status bar: a start with its bounds, any number of positions, a stop. Headless:
    /// dropped.
    virtual void meterStart(std::wstring_view caption, int minimum, int maximum);
    virtual void meterStep(int position);
    virtual void meterStop();

    /// A modal box; flags and result are those of MessageBoxW. Headless: the refusing button of the flags.
    virtual int messageBox(std::wstring_view text, std::wstring_view caption, unsigned flags);
    /// A modal window stands there and waits; tells what is done at it next. Asked again until the window has
    /// closed itself. Headless: WindowAction::refuse. A window that stays when it has been refused twice in a
    /// row is closed as cancelled, so that nothing waits for ever.
    virtual WindowAction askWindow(const ShownWindow& window);
    /// The screen's size and the sizes of what stands on it, by the platform's SM numbers; 0 for a number
    /// that is not known. Headless: a screen of 1920 by 1080, a caption of 19, frames of 3, edges of 2,
    /// borders of 1, caption buttons of 18, icons of 32 and small ones of 16.
    virtual int systemMetric(int number) const;
    /// The windows of this port.
    Desktop& desktop();

    /// What only a developer should see. Headless: dropped.
    virtual void debugOutput(std::wstring_view text);
    /// A fault in a file or a setting that someone gave us, one line with file, line and reason. Headless:
    /// standard error.
    virtual void reportProblem(std::wstring_view text);

    /// Seconds since 1970-01-01 00:00 UTC.
    virtual std::int64_t now() const;
    /// Nanoseconds of a clock that never goes back, from any start.
    virtual std::int64_t monotonicNanoseconds() const;

    /// The host's environment variables. False, with value untouched, where there is none of that name.
    /// Headless: what was set on this port, else the environment of the process, which setEnvironment never
    /// changes.
    virtual bool getEnvironment(std::wstring_view name, std::wstring& value) const;
    virtual void setEnvironment(std::wstring_view name, std::wstring_view value);

    /// The registry of this host. Headless: an empty one in memory, until setRegistry gives another.
    virtual RegistryStore& registry();
    void setRegistry(std::unique_ptr<RegistryStore> store);

    /// The files of this run. Whatever writes a file that the user has named asks here first.
    OutputFiles& outputs();

    /// The directory that stands for a drive letter, in the bytes of the file system, without closing
    /// separator. Headless: empty, so that a letter is dropped and "C:\data" is "/data".
    virtual std::string driveRoot(wchar_t letter) const;

private:
    std::unique_ptr<RegistryStore> registry_;
    std::unique_ptr<Desktop> desktop_;
    std::unique_ptr<OutputFiles> outputs_;
    std::map<std::wstring, std::wstring, std::less<>> environment_;
};

/// The port in use; never null. Where none was set, a headless one that lives as long as the process.
HostPort* currentPort();

/// Makes a port the current one for the scope's life and restores the one before it. The port outlives the
/// scope.
class ScopedPort {
public:
    explicit ScopedPort(HostPort& port);
    ~ScopedPort();
    ScopedPort(const ScopedPort&) = delete;
    ScopedPort& operator=(const ScopedPort&) = delete;

private:
    HostPort* previous_;
};

/// The button that a person gets by pressing Enter: the one that the MB_DEFBUTTON flag names among those of
/// the type.
[[nodiscard]] int defaultButton(unsigned flags);
/// The button that changes least, which is taken where nobody is there: Cancel, else No, else Abort, else the
/// only one.
[[nodiscard]] int refusingButton(unsigned flags);
/// The ids of the type's buttons in order, ended by 0.
[[nodiscard]] const int* buttonsOfBox(unsigned flags);

} // namespace hostkit
