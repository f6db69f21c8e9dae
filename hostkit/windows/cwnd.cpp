#include "cwnd.h"

#include "desktop.h"
#include "hostport.h"
#include "windows.h"

#include <algorithm>
#include <vector>

namespace {

using hostkit::Desktop;
using hostkit::WindowRecord;

CString textOf(HWND window) {
    const int length = ::GetWindowTextLengthW(window);
    CString text;
    ::GetWindowTextW(window, text.GetBuffer(length), length + 1);
    text.ReleaseBuffer();
    return text;
}

} // namespace

// --- Windows and their objects -----------------------------------------------------------------------------

CWnd::~CWnd() {
    if (m_isPermanent) ::DestroyWindow(m_hWnd);
}

CWnd* CWnd::FromHandlePermanent(HWND window) {
    const WindowRecord* record = Desktop::current().find(window);
    return record ? record->object : nullptr;
}

CWnd* CWnd::FromHandle(HWND window) {
    WindowRecord* record = Desktop::current().find(window);
    if (!record) return nullptr;
    if (record->object) return record->object;
    if (!record->temporaryObject) record->temporaryObject = std::make_unique<CWnd>(window);
    return record->temporaryObject.get();
}

void CWnd::windowMade(HWND window) {
    m_hWnd = window;
    m_isPermanent = true;
}

void CWnd::windowGone() {
    m_hWnd = nullptr;
    m_isPermanent = false;
    PostNcDestroy();
}

BOOL CWnd::CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* text, DWORD style, int x, int y,
                    int width, int height, HWND parent, int id) {
    if (m_hWnd) return FALSE;
    const RECT place{x, y, x + width, y + height};
    if (!hostkit::createWindow(exStyle, className, text, style, place, parent, id, this)) return FALSE;
    PreSubclassWindow();
    return TRUE;
}

BOOL CWnd::CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* text, DWORD style,
                    const RECT& rect, CWnd* parent, int id) {
    return CreateEx(exStyle, className, text, style, rect.left, rect.top, hostkit::widthOf(rect),
                    hostkit::heightOf(rect), parent ? parent->GetSafeHwnd() : nullptr, id);
}

BOOL CWnd::DestroyWindow() { return ::DestroyWindow(m_hWnd); }

BOOL CWnd::SubclassWindow(HWND window) {
    WindowRecord* record = Desktop::current().find(window);
    if (!record || record->object || m_hWnd) return FALSE;
    record->object = this;
    windowMade(window);
    PreSubclassWindow();
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(int id, CWnd* parent) {
    return parent && SubclassWindow(::GetDlgItem(parent->GetSafeHwnd(), id));
}

// --- What a window has -------------------------------------------------------------------------------------

void CWnd::GetWindowTextW(CString& text) const { text = textOf(m_hWnd); }

int CWnd::GetDlgItemTextW(int id, CString& text) const {
    text = textOf(::GetDlgItem(m_hWnd, id));
    return text.GetLength();
}

void CWnd::ScreenToClient(RECT* rect) const {
    if (!rect) return;
    POINT corner{rect->left, rect->top};
    if (::ScreenToClient(m_hWnd, &corner))
        *rect = hostkit::moved(*rect, corner.x - rect->left, corner.y - rect->top);
}

void CWnd::MoveWindow(const RECT* rect, BOOL repaint) {
    if (rect)
        ::MoveWindow(m_hWnd, rect->left, rect->top, hostkit::widthOf(*rect), hostkit::heightOf(*rect),
                     repaint);
}

void CWnd::CenterWindow(CWnd* other) {
    CRect own, around(0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
    const CRect screen = around;
    if (!::GetWindowRect(m_hWnd, own)) return;
    ::GetWindowRect(other ? other->GetSafeHwnd() : ::GetParent(m_hWnd), around);
    const LONG width = own.Width(), height = own.Height();
    const LONG left = (around.left + around.right - width) / 2;
    const LONG top = (around.top + around.bottom - height) / 2;
    const LONG x = std::max(std::min(left, screen.right - width), screen.left);
    const LONG y = std::max(std::min(top, screen.bottom - height), screen.top);
    ::MoveWindow(m_hWnd, x, y, width, height, FALSE);
}

void CWnd::CheckDlgButton(int id, UINT check) {
    ::SendMessageW(::GetDlgItem(m_hWnd, id), BM_SETCHECK, check, 0);
}

UINT CWnd::IsDlgButtonChecked(int id) const {
    return static_cast<UINT>(::SendMessageW(::GetDlgItem(m_hWnd, id), BM_GETCHECK, 0, 0));
}

void CWnd::SetFont(const CFont* font, BOOL redraw) {
    const HFONT handle = font ? static_cast<HFONT>(*font) : nullptr;
    SendMessageW(WM_SETFONT, reinterpret_cast<WPARAM>(handle), redraw);
}

HICON CWnd::SetIcon(HICON icon, BOOL isBig) {
    return reinterpret_cast<HICON>(
        SendMessageW(WM_SETICON, static_cast<WPARAM>(isBig), reinterpret_cast<LPARAM>(icon)));
}

int CWnd::MessageBoxW(const wchar_t* text, const wchar_t* caption, UINT flags) {
    return ::MessageBoxW(m_hWnd, text, caption, flags);
}

// --- Messages ----------------------------------------------------------------------------------------------

const AFX_MSGMAP* CWnd::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CWnd::GetMessageMap() const { return GetThisMessageMap(); }

bool CWnd::callMap(UINT message, UINT code, int id, WPARAM wParam, LPARAM lParam, LRESULT& answer) {
    for (const AFX_MSGMAP* map = GetMessageMap(); map; map = map->baseMap ? map->baseMap() : nullptr) {
        for (const AFX_MSGMAP_ENTRY* entry = map->entries; entry->thunk; ++entry) {
            const bool isOfId =
                message != WM_COMMAND || (entry->code == code && id >= entry->firstId && id <= entry->lastId);
            if (entry->message != message || !isOfId) continue;
            bool isHandled = true;
            answer = entry->thunk(*this, wParam, lParam, isHandled);
            if (isHandled) return true;
        }
    }
    return false;
}

LRESULT CWnd::receive(UINT message, WPARAM wParam, LPARAM lParam) {
    const MSG before = m_handled;
    m_handled = {m_hWnd, message, wParam, lParam};
    const LRESULT answer = WindowProc(message, wParam, lParam);
    m_handled = before;
    return answer;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT answer = 0;
    if (message == WM_COMMAND && OnCommand(wParam, lParam)) return 0;
    if (message != WM_COMMAND && callMap(message, 0, 0, wParam, lParam, answer)) return answer;
    return DefWindowProcW(message, wParam, lParam);
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    LRESULT answer = 0;
    return callMap(WM_COMMAND, HIWORD(wParam), LOWORD(wParam), wParam, lParam, answer);
}

LRESULT CWnd::DefWindowProcW(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::DefWindowProcW(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() { return DefWindowProcW(m_handled.message, m_handled.wParam, m_handled.lParam); }

BOOL CWnd::PreTranslateMessage(MSG*) { return FALSE; }
void CWnd::PostNcDestroy() {}

// --- Exchange of values ------------------------------------------------------------------------------------

void CWnd::DoDataExchange(CDataExchange*) {}

BOOL CWnd::UpdateData(BOOL save) {
    if (!::IsWindow(m_hWnd)) return FALSE;
    CDataExchange exchange(this, save);
    DoDataExchange(&exchange);
    return TRUE;
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
    if (!control.GetSafeHwnd()) control.SubclassDlgItem(id, exchange->m_pDlgWnd);
}

void DDX_Text(CDataExchange* exchange, int id, CString& value) {
    if (exchange->m_bSaveAndValidate)
        exchange->m_pDlgWnd->GetDlgItemTextW(id, value);
    else
        exchange->m_pDlgWnd->SetDlgItemTextW(id, value);
}

void DDX_Check(CDataExchange* exchange, int id, int& value) {
    if (exchange->m_bSaveAndValidate)
        value = static_cast<int>(exchange->m_pDlgWnd->IsDlgButtonChecked(id));
    else
        exchange->m_pDlgWnd->CheckDlgButton(id, static_cast<UINT>(value));
}

const wchar_t* AfxRegisterWndClass(UINT style, HCURSOR cursor, HBRUSH background, HICON icon) {
    static thread_local CString name;
    name.Format(L"Afx:%x:%p:%p:%p", style, static_cast<const void*>(cursor),
                static_cast<const void*>(background), static_cast<const void*>(icon));
    return RegisterClassW({style, nullptr, icon, cursor, background, name}) ? name.GetString() : nullptr;
}
