// The window manager: the windows of one port, their order, focus, messages and modal input; leaves out
// several desktops.
#pragma once

#include "windowaction.h"
#include "winuser.h"

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

class CWnd;

namespace hostkit {

class Desktop;
class HostPort;
struct WindowRecord;

/// What a kind of control does by itself. One lives in each of its windows.
class ControlBehaviour {
public:
    virtual ~ControlBehaviour() = default;
    /// True, with the answer set, when the message was the control's.
    virtual bool handle(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam,
                        LRESULT& answer) = 0;
    /// Into the client area.
    virtual void paint(const WindowRecord& window, HDC dc) const = 0;
    /// What stands above all windows while it is open (the list of a combo box), from the corner of the
    /// control's client area; gives its place there, empty where nothing is open.
    virtual RECT paintAbove(const WindowRecord& /*window*/, HDC /*dc*/) const { return {}; }
    /// Kind, marks and items as a person sees them.
    virtual void describe(const WindowRecord& window, ShownControl& control) const = 0;
    /// The user takes that item, as with the mouse. False where there is none.
    virtual bool choose(WindowRecord& /*window*/, int /*item*/) { return false; }
};

/// Messages of a list's marks: from the first one on it is a check list; wParam is the item, lParam the mark.
constexpr UINT listTakeMarks = WM_USER + 0x3F0;
constexpr UINT listGetMark = WM_USER + 0x3F1;
constexpr UINT listSetMark = WM_USER + 0x3F2;

/// By class name: BUTTON, EDIT, STATIC, LISTBOX, COMBOBOX (upper case); null for others.
std::unique_ptr<ControlBehaviour> makeControlBehaviour(const std::wstring& className);

struct WindowClass {
    HICON icon = nullptr;
    HCURSOR cursor = nullptr;
    HBRUSH background = nullptr;
};

struct WindowRecord {
    HWND handle = nullptr;
    HWND parent = nullptr; ///< of a child
    HWND owner = nullptr;  ///< of the others
    std::wstring className{};
    WindowClass windowClass{};
    std::wstring text{};
    DWORD style = 0;
    DWORD exStyle = 0;
    int id = 0;
    RECT place{}; ///< on the screen, or in the parent's client area
    HFONT font = nullptr;
    HICON icon = nullptr;
    std::optional<ShownBox> box{};
    std::vector<HWND> children{}; ///< in tab order
    std::unique_ptr<ControlBehaviour> behaviour{};
    CWnd* object = nullptr;
    std::unique_ptr<CWnd> temporaryObject; ///< made by CWnd::FromHandle where the module has none of its own

    WindowRecord();
    ~WindowRecord();
};

/// The windows of one port. Handles are numbers that are never used twice in a process, so that a stale one
/// finds nothing.
class Desktop {
public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// That of the current port.
    static Desktop& current();
    static Desktop& of(HostPort& port);

    /// Null for a handle that is no window here.
    WindowRecord* find(HWND window);
    /// The host's main window, which covers the screen: made at the first call.
    HWND mainWindow();

    bool registerClass(const std::wstring& name, const WindowClass& windowClass);
    HWND create(std::unique_ptr<WindowRecord> record, CWnd* object);
    bool destroy(HWND window);

    /// Sends WM_COMMAND with that notification to the control's parent.
    void notifyParent(const WindowRecord& control, unsigned code);
    LRESULT send(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool post(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    /// The oldest message that waits; false when there is none.
    bool take(MSG& message);
    /// Runs the message at its window, with the Shift key as it was when it was posted.
    void dispatch(const MSG& message);

    HWND topWindow(HWND window);
    bool isVisible(HWND window);
    bool isEnabled(HWND window);
    HWND setFocus(HWND window);
    HWND focus() const { return m_focus; }
    HWND setActive(HWND window);
    HWND active() const { return m_active; }
    HCURSOR setCursor(HCURSOR cursor);
    HCURSOR cursor() const { return m_cursor; }
    bool isShiftHeld() const { return m_isShiftHeld; }

    /// Of the client area on the screen.
    RECT clientOnScreen(HWND window);
    RECT onScreen(HWND window);

    /// The window as a person sees it, with its painting.
    ShownWindow show(HWND window);
    Painting paint(HWND window);
    /// Does at the window what a person does, by posting messages. False, with the reason set, where that
    /// cannot be done: no such control or item, or it is hidden or disabled.
    bool perform(HWND window, const WindowAction& action, std::wstring& reason);

    /// The innermost modal window, or null.
    HWND modalWindow() const { return m_modal.empty() ? nullptr : m_modal.back(); }
    void pushModal(HWND window) { m_modal.push_back(window); }
    void popModal() { m_modal.pop_back(); }

    /// A context for the window: with `isPaint`, while its WM_PAINT runs, the one of its painting; else one
    /// to measure with. Lives until releaseContext.
    HDC makeContext(HWND window, bool isPaint);
    bool releaseContext(HDC context);
    /// An object of drawing goes: contexts that have it selected have the stock's instead.
    void forget(const HostGdiObject* object);

private:
    struct Queued {
        MSG message;
        bool isShiftHeld;
    };
    /// While one lives, windows that go keep their records.
    class Working {
    public:
        explicit Working(Desktop& desktop)
            : m_desktop(desktop) {
            ++m_desktop.m_sending;
        }
        ~Working() {
            if (--m_desktop.m_sending == 0) m_desktop.m_gone.clear();
        }
        Working(const Working&) = delete;
        Working& operator=(const Working&) = delete;

    private:
        Desktop& m_desktop;
    };
    void paintWindow(HWND window, Painting& painting, POINT origin, const RECT& clip);
    void paintOpenLists(HWND window, Painting& painting, POINT origin);
    void describeControls(HWND window, POINT clientOrigin, std::vector<ShownControl>& controls);
    void forget(HWND window);
    HWND hit(HWND window, POINT& inClient);
    void postKey(HWND window, const WindowAction& action);
    HWND findWithin(HWND window, int id);
    bool performOnControl(HWND window, const WindowAction& action, std::wstring& reason);

    std::map<HWND, std::unique_ptr<WindowRecord>> m_windows;
    /// Gone while messages to it were still running; freed behind the outermost one.
    std::vector<std::unique_ptr<WindowRecord>> m_gone;
    int m_sending = 0;
    std::map<std::wstring, WindowClass> m_classes;
    std::deque<Queued> m_queue;
    std::vector<HWND> m_modal;
    std::vector<std::unique_ptr<HostDeviceContext>> m_contexts;
    HWND m_main = nullptr;
    HWND m_focus = nullptr;
    HWND m_active = nullptr;
    HCURSOR m_cursor = nullptr;
    bool m_isShiftHeld = false;
    const HostDeviceContext* m_painting = nullptr; ///< of the window whose WM_PAINT runs
};

/// CreateWindowExW for a window whose messages go to that object (null: none).
HWND createWindow(DWORD exStyle, const wchar_t* className, const wchar_t* text, DWORD style,
                  const RECT& place, HWND parent, int id, CWnd* object);
/// What stands around the client area of a window of that style.
RECT frameAround(DWORD style);
/// The client area of a window whose corner stands there; of no size where the frame leaves none.
RECT clientOf(const WindowRecord& window, POINT corner);
/// Without prefix marks; `mnemonic` is the marked character in lower case, or 0.
std::wstring labelText(std::wstring_view text, wchar_t& mnemonic);

} // namespace hostkit
