#include "cdialog.h"

#include "afxwin.h"
#include "casefold.h"
#include "desktop.h"
#include "windows.h"

#include <algorithm>

namespace {

using hostkit::Desktop;
using hostkit::WindowRecord;

constexpr int horizontalUnits = 4;
constexpr int verticalUnits = 8;

struct BaseUnits {
    int width;
    int height;
};

BaseUnits baseUnits() {
    TEXTMETRICW metrics{};
    const CClientDC dc(nullptr);
    dc.GetTextMetrics(&metrics);
    return {metrics.tmAveCharWidth, metrics.tmHeight};
}

int pixels(int units, int base, int divisor) { return (units * base + divisor / 2) / divisor; }

bool isPushButton(const WindowRecord& window) {
    const DWORD type = window.style & BS_TYPEMASK;
    return window.className == L"BUTTON" && (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON);
}

bool takesText(const WindowRecord* window) {
    return window && (window->className == L"EDIT" || window->className == L"COMBOBOX");
}

// The windows within, those of inner dialogs too.
void appendControls(HWND window, std::vector<HWND>& controls) {
    for (const HWND each : Desktop::current().find(window)->children) {
        controls.push_back(each);
        appendControls(each, controls);
    }
}

} // namespace

CDialog::CDialog(UINT templateId, CWnd* parent)
    : m_templateId(templateId)
    , m_parent(parent) {}

// Here, while the messages of the end still reach this class.
CDialog::~CDialog() { DestroyWindow(); }

bool CDialog::makeControls(const hostkit::DialogTemplate& description) {
    const BaseUnits base = baseUnits();
    for (std::size_t i = 0; i < description.count; ++i) {
        const hostkit::DialogItem& item = description.items[i];
        if (!CreateWindowExW(0, item.windowClass, L"", item.style | WS_CHILD | WS_VISIBLE,
                             pixels(item.x, base.width, horizontalUnits),
                             pixels(item.y, base.height, verticalUnits),
                             pixels(item.width, base.width, horizontalUnits),
                             pixels(item.height, base.height, verticalUnits), m_hWnd, item.id))
            return false;
    }
    return true;
}

bool CDialog::makeWindow(HWND owner) {
    const hostkit::DialogTemplate* description = hostkit::findDialogTemplate(m_templateId);
    if (!description) return false;
    const BaseUnits base = baseUnits();
    const bool isChild = (description->style & WS_CHILD) != 0;
    const DWORD style = description->style | (isChild ? 0 : WS_POPUP | WS_CAPTION | WS_SYSMENU);
    RECT place{0, 0, pixels(description->width, base.width, horizontalUnits),
               pixels(description->height, base.height, verticalUnits)};
    AdjustWindowRectEx(&place, style, FALSE, 0);
    if (!CreateEx(WS_EX_CONTROLPARENT, L"#32770", L"", style & ~WS_VISIBLE, 0, 0, hostkit::widthOf(place),
                  hostkit::heightOf(place), owner, 0))
        return false;
    if (!makeControls(*description)) {
        DestroyWindow();
        return false;
    }
    if (!isChild) CenterWindow();
    return startWindow();
}

bool CDialog::startWindow() {
    const HWND first = GetNextDlgTabItem(m_hWnd, nullptr, FALSE);
    const LRESULT takesFocus = SendMessageW(WM_INITDIALOG, reinterpret_cast<WPARAM>(first));
    if (takesFocus && !(GetStyle() & WS_CHILD)) ::SetFocus(first);
    if (!::IsWindow(m_hWnd)) return false;
    ShowWindow(SW_SHOW);
    return true;
}

int CDialog::DoModal() {
    const HWND owner = m_parent ? m_parent->GetSafeHwnd() : Desktop::current().mainWindow();
    const HWND top = Desktop::current().topWindow(owner);
    const bool wasEnabled = ::IsWindowEnabled(top);
    m_isRunning = true;
    if (wasEnabled) ::EnableWindow(top, FALSE);
    int result = -1;
    if (makeWindow(owner)) {
        // OnInitDialog may have ended it already.
        result = m_isRunning ? RunModalLoop() : m_modalResult;
        ShowWindow(SW_HIDE);
    }
    m_isRunning = false;
    if (wasEnabled) ::EnableWindow(top, TRUE);
    if (::GetActiveWindow() == m_hWnd) ::SetActiveWindow(top);
    DestroyWindow();
    return result;
}

BOOL CDialog::Create(UINT templateId, CWnd* parent) {
    m_templateId = templateId;
    m_parent = parent;
    return makeWindow(parent ? parent->GetSafeHwnd() : Desktop::current().mainWindow());
}

void CDialog::EndDialog(int result) {
    const bool isModal = m_isRunning;
    m_isRunning = false;
    EndModalLoop(result);
    if (!isModal) ShowWindow(SW_HIDE);
}

BOOL CDialog::OnInitDialog() {
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

LRESULT CDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT answer = 0;
    if (message == WM_INITDIALOG) return OnInitDialog();
    if (message != WM_CLOSE) return CWnd::WindowProc(message, wParam, lParam);
    if (callMap(message, 0, 0, wParam, lParam, answer)) return answer;
    SendMessageW(WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED));
    return 0;
}

BOOL CDialog::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (CWnd::OnCommand(wParam, lParam)) return TRUE;
    if (HIWORD(wParam) != BN_CLICKED) return FALSE;
    if (LOWORD(wParam) == IDOK)
        OnOK();
    else if (LOWORD(wParam) == IDCANCEL)
        OnCancel();
    else
        return FALSE;
    return TRUE;
}

// The button with the focus, else the default button, else OK.
void CDialog::pressDefault() {
    Desktop& desktop = Desktop::current();
    const WindowRecord* focused = desktop.find(::GetFocus());
    if (focused && ::IsChild(m_hWnd, focused->handle) && isPushButton(*focused)) {
        ::SendMessageW(focused->handle, BM_CLICK, 0, 0);
        return;
    }
    const std::vector<HWND> children = desktop.find(m_hWnd)->children;
    for (const HWND each : children) {
        const WindowRecord* child = desktop.find(each);
        if (!isPushButton(*child) || (child->style & BS_TYPEMASK) != BS_DEFPUSHBUTTON) continue;
        if (desktop.isEnabled(each)) ::SendMessageW(each, BM_CLICK, 0, 0);
        return;
    }
    SendMessageW(WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED));
}

// A label's mnemonic leads to the control behind it.
BOOL CDialog::pressMnemonic(wchar_t character) {
    Desktop& desktop = Desktop::current();
    std::vector<HWND> controls;
    appendControls(m_hWnd, controls);
    for (const HWND each : controls) {
        const WindowRecord* child = desktop.find(each);
        wchar_t mnemonic = 0;
        hostkit::labelText(child->text, mnemonic);
        const bool hasLabel = child->className == L"BUTTON" || child->className == L"STATIC";
        if (!hasLabel || mnemonic == 0 || mnemonic != hostkit::foldCase(character)) continue;
        if (!desktop.isVisible(each) || !desktop.isEnabled(each)) continue;
        if (child->className == L"STATIC") {
            ::SetFocus(GetNextDlgTabItem(m_hWnd, each, FALSE));
            return TRUE;
        }
        ::SetFocus(each);
        ::SendMessageW(each, BM_CLICK, 0, 0);
        return TRUE;
    }
    return FALSE;
}

BOOL CDialog::translateKey(const MSG& message) {
    const WindowRecord* focused = Desktop::current().find(::GetFocus());
    const bool wantsReturn = focused && focused->className == L"EDIT" && (focused->style & ES_MULTILINE) &&
                             (focused->style & ES_WANTRETURN);
    // An open list takes the keys that close it.
    if (focused && (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE) &&
        ::SendMessageW(focused->handle, CB_GETDROPPEDSTATE, 0, 0))
        return FALSE;
    switch (message.wParam) {
    case VK_F1: {
        HELPINFO help;
        help.iCtrlId = ::GetDlgCtrlID(::GetFocus());
        help.hItemHandle = ::GetFocus();
        ::SendMessageW(focused ? focused->handle : m_hWnd, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
        return TRUE;
    }
    case VK_TAB:
        ::SetFocus(GetNextDlgTabItem(m_hWnd, ::GetFocus(), GetKeyState(VK_SHIFT) < 0));
        return TRUE;
    case VK_RETURN:
        if (wantsReturn)
            ::SendMessageW(focused->handle, WM_CHAR, L'\n', 0);
        else
            pressDefault();
        return TRUE;
    case VK_ESCAPE:
        SendMessageW(WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED));
        return TRUE;
    default:
        return FALSE;
    }
}

BOOL CDialog::PreTranslateMessage(MSG* message) {
    // Within another window the keys are that window's.
    if (!message || !m_hWnd || (GetStyle() & WS_CHILD)) return FALSE;
    if (message->message == WM_KEYDOWN) return translateKey(*message);
    if (message->message == WM_CHAR && message->wParam != L' ' &&
        !takesText(Desktop::current().find(::GetFocus())))
        return pressMnemonic(static_cast<wchar_t>(message->wParam));
    return FALSE;
}
