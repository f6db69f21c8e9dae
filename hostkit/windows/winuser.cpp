#include "winuser.h"

#include "desktop.h"
#include "hostport.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

using hostkit::Desktop;
using hostkit::WindowRecord;

Desktop& desktop() { return Desktop::current(); }
WindowRecord* recordOf(HWND window) { return desktop().find(window); }
std::wstring textOf(const wchar_t* text) { return text ? text : L""; }

LRESULT defaultText(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SETTEXT) {
        window.text = textOf(reinterpret_cast<const wchar_t*>(lParam));
        return TRUE;
    }
    if (message == WM_GETTEXTLENGTH) return static_cast<LRESULT>(window.text.size());
    const auto buffer = reinterpret_cast<wchar_t*>(lParam);
    if (!buffer || wParam == 0) return 0;
    const std::size_t count = std::min(window.text.size(), static_cast<std::size_t>(wParam - 1));
    std::copy_n(window.text.data(), count, buffer);
    buffer[count] = 0;
    return static_cast<LRESULT>(count);
}

// By the control's own style: a dialog chooses its first control before it shows.
void appendTabStops(HWND window, HWND from, std::vector<HWND>& stops) {
    constexpr DWORD wanted = WS_TABSTOP | WS_VISIBLE;
    for (const HWND each : recordOf(window)->children) {
        const WindowRecord& child = *recordOf(each);
        const bool isUsable = (child.style & WS_VISIBLE) && !(child.style & WS_DISABLED);
        if (each == from || (isUsable && (child.style & wanted) == wanted)) stops.push_back(each);
        if (isUsable && (child.exStyle & WS_EX_CONTROLPARENT)) appendTabStops(each, from, stops);
    }
}

// Up through the windows, until one answers.
LRESULT askForHelp(const WindowRecord& window, LPARAM lParam) {
    return window.parent ? desktop().send(window.parent, WM_HELP, 0, lParam) : FALSE;
}

LRESULT eraseWithClassBrush(const WindowRecord& window, WPARAM wParam) {
    const auto context = reinterpret_cast<HDC>(wParam);
    if (!context || !window.windowClass.background) return FALSE;
    RECT client{};
    GetClientRect(window.handle, &client);
    return FillRect(context, &client, window.windowClass.background);
}

LRESULT paintByBehaviour(const WindowRecord& window) {
    const HDC context = BeginPaint(window.handle);
    if (window.behaviour) window.behaviour->paint(window, context);
    EndPaint(window.handle, context);
    return 0;
}

// A child asks its parent first.
LRESULT chooseCursor(const WindowRecord& window, WPARAM wParam, LPARAM lParam) {
    if (window.parent && desktop().send(window.parent, WM_SETCURSOR, wParam, lParam)) return TRUE;
    if (!window.windowClass.cursor) return FALSE;
    SetCursor(window.windowClass.cursor);
    return TRUE;
}

} // namespace

// --- Messages ----------------------------------------------------------------------------------------------

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return desktop().send(window, message, wParam, lParam);
}

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return desktop().post(window, message, wParam, lParam);
}

short GetKeyState(int key) {
    constexpr short held = -128;
    return key == static_cast<int>(VK_SHIFT) && desktop().isShiftHeld() ? held : 0;
}

LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    WindowRecord* record = recordOf(window);
    if (!record) return 0;
    LRESULT answer = 0;
    if (record->behaviour && record->behaviour->handle(*record, message, wParam, lParam, answer))
        return answer;
    switch (message) {
    case WM_SETTEXT:
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH:
        return defaultText(*record, message, wParam, lParam);
    case WM_CLOSE:
        DestroyWindow(window);
        return 0;
    case WM_ERASEBKGND:
        return eraseWithClassBrush(*record, wParam);
    case WM_PAINT:
        return paintByBehaviour(*record);
    case WM_SETFONT:
        record->font = reinterpret_cast<HFONT>(wParam);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(record->font);
    case WM_SETICON:
        return reinterpret_cast<LRESULT>(std::exchange(record->icon, reinterpret_cast<HICON>(lParam)));
    case WM_HELP:
        return askForHelp(*record, lParam);
    case WM_SETCURSOR:
        return chooseCursor(*record, wParam, lParam);
    default:
        return 0;
    }
}

// --- Windows -----------------------------------------------------------------------------------------------

BOOL RegisterClassW(const WNDCLASSW& description) {
    return desktop().registerClass(textOf(description.lpszClassName),
                                   {description.hIcon, description.hCursor, description.hbrBackground});
}

HWND CreateWindowExW(DWORD exStyle, const wchar_t* className, const wchar_t* text, DWORD style, int x, int y,
                     int width, int height, HWND parent, int id) {
    return hostkit::createWindow(exStyle, className, text, style, {x, y, x + width, y + height}, parent, id,
                                 nullptr);
}

BOOL DestroyWindow(HWND window) { return desktop().destroy(window); }
BOOL IsWindow(HWND window) { return recordOf(window) != nullptr; }

BOOL ShowWindow(HWND window, int how) {
    WindowRecord* record = recordOf(window);
    if (!record) return FALSE;
    const bool wasVisible = (record->style & WS_VISIBLE) != 0;
    const bool isVisible = how != SW_HIDE;
    if (wasVisible == isVisible) return wasVisible;
    record->style = isVisible ? record->style | WS_VISIBLE : record->style & ~WS_VISIBLE;
    SendMessageW(window, WM_SHOWWINDOW, isVisible, 0);
    const bool isTop = recordOf(window) && !recordOf(window)->parent;
    if (isVisible && isTop && desktop().topWindow(GetFocus()) != window) SetActiveWindow(window);
    return wasVisible;
}

BOOL IsWindowVisible(HWND window) { return desktop().isVisible(window); }

BOOL EnableWindow(HWND window, BOOL enable) {
    WindowRecord* record = recordOf(window);
    if (!record) return FALSE;
    const bool wasDisabled = (record->style & WS_DISABLED) != 0;
    if (wasDisabled == !enable) return wasDisabled;
    record->style = enable ? record->style & ~WS_DISABLED : record->style | WS_DISABLED;
    if (!enable && GetFocus() && !desktop().isEnabled(GetFocus())) desktop().setFocus(nullptr);
    SendMessageW(window, WM_ENABLE, static_cast<WPARAM>(enable != 0), 0);
    return wasDisabled;
}

BOOL IsWindowEnabled(HWND window) {
    const WindowRecord* record = recordOf(window);
    return record && !(record->style & WS_DISABLED);
}

HWND SetFocus(HWND window) {
    if (window && !recordOf(window)) return nullptr;
    return desktop().setFocus(window);
}
HWND GetFocus() { return desktop().focus(); }
HWND SetActiveWindow(HWND window) { return desktop().setActive(window); }
HWND GetActiveWindow() { return desktop().active(); }

HWND GetParent(HWND window) {
    const WindowRecord* record = recordOf(window);
    if (!record) return nullptr;
    return record->parent ? record->parent : record->owner;
}

HWND GetWindow(HWND window, UINT relation) {
    const WindowRecord* record = recordOf(window);
    if (!record) return nullptr;
    if (relation == GW_OWNER) return record->owner;
    if (relation == GW_CHILD) return record->children.empty() ? nullptr : record->children.front();
    const WindowRecord* parent = recordOf(record->parent);
    if (relation != GW_HWNDNEXT || !parent) return nullptr;
    const auto at = std::find(parent->children.begin(), parent->children.end(), window);
    return at == parent->children.end() || at + 1 == parent->children.end() ? nullptr : *(at + 1);
}

BOOL IsChild(HWND parent, HWND window) {
    const WindowRecord* record = recordOf(window);
    for (; record && record->parent; record = recordOf(record->parent))
        if (record->parent == parent) return TRUE;
    return FALSE;
}

BOOL SetWindowTextW(HWND window, const wchar_t* text) {
    return recordOf(window) && SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
}

int GetWindowTextW(HWND window, wchar_t* buffer, int size) {
    if (!buffer || size <= 0) return 0;
    buffer[0] = 0;
    return static_cast<int>(
        SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(size), reinterpret_cast<LPARAM>(buffer)));
}

int GetWindowTextLengthW(HWND window) {
    return static_cast<int>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0));
}

BOOL GetClientRect(HWND window, RECT* rect) {
    if (!rect || !recordOf(window)) return FALSE;
    const RECT client = desktop().clientOnScreen(window);
    *rect = {0, 0, hostkit::widthOf(client), hostkit::heightOf(client)};
    return TRUE;
}

BOOL GetWindowRect(HWND window, RECT* rect) {
    if (!rect || !recordOf(window)) return FALSE;
    *rect = desktop().onScreen(window);
    return TRUE;
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL) {
    WindowRecord* record = recordOf(window);
    if (!record) return FALSE;
    record->place = {x, y, x + std::max(width, 0), y + std::max(height, 0)};
    SendMessageW(window, WM_MOVE, 0, MAKELPARAM(x, y));
    RECT client{};
    GetClientRect(window, &client);
    SendMessageW(window, WM_SIZE, 0, MAKELPARAM(client.right, client.bottom));
    return TRUE;
}

BOOL ScreenToClient(HWND window, POINT* point) {
    if (!point || !recordOf(window)) return FALSE;
    const RECT client = desktop().clientOnScreen(window);
    *point = {point->x - client.left, point->y - client.top};
    return TRUE;
}

BOOL ClientToScreen(HWND window, POINT* point) {
    if (!point || !recordOf(window)) return FALSE;
    const RECT client = desktop().clientOnScreen(window);
    *point = {point->x + client.left, point->y + client.top};
    return TRUE;
}

BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL, DWORD) {
    if (!rect) return FALSE;
    const RECT frame = hostkit::frameAround(style);
    *rect = {rect->left - frame.left, rect->top - frame.top, rect->right + frame.right,
             rect->bottom + frame.bottom};
    return TRUE;
}

BOOL InvalidateRect(HWND window, const RECT*, BOOL) { return IsWindow(window); }
BOOL UpdateWindow(HWND window) { return IsWindow(window); }

DWORD GetWindowLongW(HWND window, int which) {
    const WindowRecord* record = recordOf(window);
    if (!record) return 0;
    return which == GWL_STYLE ? record->style : which == GWL_EXSTYLE ? record->exStyle : 0;
}

int GetDlgCtrlID(HWND window) {
    const WindowRecord* record = recordOf(window);
    return record ? record->id : 0;
}

HWND GetDlgItem(HWND window, int id) {
    const WindowRecord* record = recordOf(window);
    if (!record) return nullptr;
    for (const HWND each : record->children)
        if (GetDlgCtrlID(each) == id) return each;
    return nullptr;
}

HWND GetNextDlgTabItem(HWND window, HWND from, BOOL backward) {
    if (!recordOf(window)) return nullptr;
    std::vector<HWND> stops;
    appendTabStops(window, from, stops);
    if (backward) std::reverse(stops.begin(), stops.end());
    if (stops.empty()) return nullptr;
    const auto at = std::find(stops.begin(), stops.end(), from);
    if (at == stops.end() || at + 1 == stops.end()) return stops.front();
    return *(at + 1);
}

HDC BeginPaint(HWND window) { return desktop().makeContext(window, true); }
void EndPaint(HWND, HDC dc) { desktop().releaseContext(dc); }
HDC GetDC(HWND window) { return desktop().makeContext(window, false); }
int ReleaseDC(HWND, HDC dc) { return desktop().releaseContext(dc); }

HCURSOR SetCursor(HCURSOR cursor) { return desktop().setCursor(cursor); }
HCURSOR GetCursor() { return desktop().cursor(); }

int GetSystemMetrics(int number) {
    static constexpr int metrics[][2] = {
        {SM_CXSCREEN, 1920},  {SM_CYSCREEN, 1080},  {SM_CYCAPTION, 19}, {SM_CXBORDER, 1},  {SM_CYBORDER, 1},
        {SM_CXFIXEDFRAME, 3}, {SM_CYFIXEDFRAME, 3}, {SM_CXICON, 32},    {SM_CYICON, 32},   {SM_CXSIZE, 18},
        {SM_CYSIZE, 18},      {SM_CXEDGE, 2},       {SM_CYEDGE, 2},     {SM_CXSMICON, 16}, {SM_CYSMICON, 16},
    };
    if (const std::optional<int> told = hostkit::currentPort()->systemMetric(number)) return *told;
    for (const auto& each : metrics)
        if (each[0] == number) return each[1];
    return 0;
}
