#include "hostwindows.h"

#include "aced.h"
#include "desktop.h"
#include "host.h"

#include <algorithm>

namespace hostkit {
namespace {

constexpr const wchar_t* className = L"HOSTCHILD";

void typeIn(std::wstring text) {
    DeferredItem item;
    item.text = std::move(text);
    if (Host* host = Host::current()) host->deferred().add(std::move(item));
}

// The sender may count the bytes with or without the terminator.
bool takeText(const COPYDATASTRUCT* data) {
    if (!data || !data->lpData || data->cbData % sizeof(wchar_t) != 0) return false;
    const auto* const start = static_cast<const wchar_t*>(data->lpData);
    const auto* const end = start + data->cbData / sizeof(wchar_t);
    typeIn(std::wstring(start, std::find(start, end, L'\0')));
    return true;
}

} // namespace

LRESULT HostWindows::MainWindow::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COPYDATA)
        return takeText(reinterpret_cast<const COPYDATASTRUCT*>(lParam)) ? TRUE : FALSE;
    return CWnd::WindowProc(message, wParam, lParam);
}

LRESULT HostWindows::InputLine::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_CHAR) return CWnd::WindowProc(message, wParam, lParam);
    if (wParam != 0) typeIn(std::wstring(1, static_cast<wchar_t>(wParam)));
    return 0;
}

// Where another host of the same port has the main window, it stays with that one.
CWnd* HostWindows::mainWindow() {
    const HWND window = Desktop::current().mainWindow();
    if (!CWnd::FromHandlePermanent(window)) m_main.SubclassWindow(window);
    return CWnd::FromHandle(window);
}

CWnd* HostWindows::commandLine(CommandLine& made, const wchar_t* text, DWORD style) {
    if (made.frame.GetSafeHwnd()) return &made.frame;
    constexpr RECT place{0, 0, 600, 60};
    Desktop::current().registerClass(className, {});
    if (!made.frame.CreateEx(0, className, text, style, place, mainWindow(), 0)) return nullptr;
    made.line.CreateEx(0, className, L"", WS_CHILD | WS_VISIBLE, place, &made.frame, 1);
    return &made.frame;
}

CWnd* HostWindows::dockedCommandLine() {
    return commandLine(m_docked, L"Command line", WS_CHILD | WS_VISIBLE);
}

CWnd* HostWindows::textCommandLine() { return commandLine(m_text, L"Text window", WS_POPUP); }

CWnd* HostWindows::drawingView() {
    constexpr RECT place{0, 0, 800, 600};
    Desktop::current().registerClass(className, {});
    if (!m_view.GetSafeHwnd() &&
        !m_view.CreateEx(0, className, L"", WS_CHILD | WS_VISIBLE, place, mainWindow(), 0))
        return nullptr;
    return &m_view;
}

} // namespace hostkit

namespace {

hostkit::HostWindows* windowsOfHost() {
    hostkit::Host* host = hostkit::Host::current();
    return host ? &host->windows() : nullptr;
}

} // namespace

HWND adsw_acadMainWnd() {
    hostkit::HostWindows* windows = windowsOfHost();
    return windows ? windows->mainWindow()->GetSafeHwnd() : nullptr;
}

CWnd* acedGetAcadFrame() {
    hostkit::HostWindows* windows = windowsOfHost();
    return windows ? windows->mainWindow() : nullptr;
}

CWnd* acedGetAcadDockCmdLine() {
    hostkit::HostWindows* windows = windowsOfHost();
    return windows ? windows->dockedCommandLine() : nullptr;
}

CWnd* acedGetAcadTextCmdLine() {
    hostkit::HostWindows* windows = windowsOfHost();
    return windows ? windows->textCommandLine() : nullptr;
}

CWnd* acedGetAcadDwgView() {
    hostkit::Host* host = hostkit::Host::current();
    return host && host->documents().curDocument() ? host->windows().drawingView() : nullptr;
}
