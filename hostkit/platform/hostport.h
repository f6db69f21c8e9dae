// The port to the outside world: all that a person sees or gives: command line, meter, boxes, debug output,
// clock, environment, registry, drives; leaves out sound.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <typeindex>

namespace hostkit {

class OutputFiles;
class RegistryStore;
struct ShownWindow;
struct WindowAction;

/// Something in an open drawing that looks otherwise now, or that somebody asks to see again.
struct DisplayChange {
    enum class Kind : unsigned char {
        entity, ///< of a space: new, changed or restored
        gone,   ///< of a space: erased, or taken back
        redraw, ///< of a space: as before, to be drawn again
        layer,  ///< all that stands on the layer
        block   ///< all that shows the block
    };
    const void* drawing = nullptr; ///< tells the drawings of a host apart
    std::uint64_t handle = 0;      ///< of the entity, the layer or the block
    Kind kind = Kind::entity;
};

/// How large the screen is, in micrometres.
struct ScreenSize {
    int width = 508'000;
    int height = 285'750;
};

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

    /// A modal window stands there and waits; tells what is done at it next. Asked again until the window has
    /// closed itself. False, with the action as it was, where nobody is there: the window is refused. One
    /// that stays when it has been refused twice in a row is closed as cancelled, so that nothing waits for
    /// ever. Headless: false.
    virtual bool askWindow(const ShownWindow& window, WindowAction& action);
    /// The screen's size and the sizes of what stands on it, by the platform's SM numbers; nothing for a
    /// number that the port leaves to GetSystemMetrics. Headless: nothing.
    virtual std::optional<int> systemMetric(int number) const;
    /// What pictures are measured against that are recorded for the screen (CreateEnhMetaFileW). Headless:
    /// 508 by 285.75 mm, so that 1920 by 1080 pixels have 96 to the inch.
    virtual ScreenSize screenSize() const;
    /// What a layer above keeps with the port for as long as it lives (its windows, say), one of each type;
    /// made when it is first asked for.
    template <class T>
    T& kept() {
        std::shared_ptr<void>& found = m_kept[typeid(T)];
        if (!found) found = std::make_shared<T>();
        return *static_cast<T*>(found.get());
    }

    /// Whether somebody looks at the drawings; asked when a drawing is opened. Headless: false.
    virtual bool watchesDisplay() const;
    /// Told where watchesDisplay was true: once when a changed object is closed, once for each that an undo
    /// or the like has put back. Headless: dropped.
    virtual void displayChanged(const DisplayChange& change);

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
    std::unique_ptr<RegistryStore> m_registry;
    std::map<std::type_index, std::shared_ptr<void>> m_kept;
    std::unique_ptr<OutputFiles> m_outputs;
    std::map<std::wstring, std::wstring, std::less<>> m_environment;
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
    HostPort* m_previous;
};

} // namespace hostkit
