// Stand-in for the host's window class. Covers creation, texts, places, focus, messages through maps, data exchange and modal loops; leaves out scrolling, menus and tool tips.
#pragma once

#include "cdc.h"
#include "messagemap.h"
#include "windows.h"

class CDataExchange;

/// A window with its handle. One that made its window (Create, CreateEx) or was attached to a control gets
/// its messages; destroying it destroys the window. Calls on a CWnd without a window fail as the functions of
/// winuser.h do.
class CWnd {
public:
    CWnd() = default;
    /// Looks at a window, without its messages and without owning it.
    explicit CWnd(HWND window)
        : m_hWnd(window) {}
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    /// The handle; null where there is no window.
    HWND GetSafeHwnd() const { return m_hWnd; }
    /// The object of that window, or one that stands for it as long as the window lives; null for no window.
    static CWnd* FromHandle(HWND window);
    /// The object that gets the window's messages, or null.
    static CWnd* FromHandlePermanent(HWND window);

    /// See CreateWindowExW.
    virtual BOOL CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* text, DWORD style, int x,
                          int y, int width, int height, HWND parent, int id);
    BOOL CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* text, DWORD style, const RECT& rect,
                  CWnd* parent, int id);
    virtual BOOL DestroyWindow();
    /// Takes over the messages of a window that has no object yet.
    BOOL SubclassWindow(HWND window);
    BOOL SubclassDlgItem(int id, CWnd* parent);

    void SetWindowTextW(const wchar_t* text) { ::SetWindowTextW(m_hWnd, text); }
    void GetWindowTextW(CString& text) const;
    int GetWindowTextLengthW() const { return ::GetWindowTextLengthW(m_hWnd); }
    void GetClientRect(RECT* rect) const { ::GetClientRect(m_hWnd, rect); }
    void GetWindowRect(RECT* rect) const { ::GetWindowRect(m_hWnd, rect); }
    void ScreenToClient(POINT* point) const { ::ScreenToClient(m_hWnd, point); }
    void ScreenToClient(RECT* rect) const;
    void MoveWindow(const RECT* rect, BOOL repaint = TRUE);
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE) {
        ::MoveWindow(m_hWnd, x, y, width, height, repaint);
    }
    /// In the middle of the other window, or of the owner, or of the screen; wholly on the screen where it
    /// has room there.
    void CenterWindow(CWnd* other = nullptr);
    BOOL ShowWindow(int how) { return ::ShowWindow(m_hWnd, how); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    CWnd* SetActiveWindow() { return FromHandle(::SetActiveWindow(m_hWnd)); }
    static CWnd* GetActiveWindow() { return FromHandle(::GetActiveWindow()); }
    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    CWnd* GetWindow(UINT relation) const { return FromHandle(::GetWindow(m_hWnd, relation)); }
    CWnd* GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    void SetDlgItemTextW(int id, const wchar_t* text) { ::SetWindowTextW(::GetDlgItem(m_hWnd, id), text); }
    int GetDlgItemTextW(int id, CString& text) const;
    void CheckDlgButton(int id, UINT check);
    UINT IsDlgButtonChecked(int id) const;
    DWORD GetStyle() const { return ::GetWindowLongW(m_hWnd, GWL_STYLE); }
    DWORD GetExStyle() const { return ::GetWindowLongW(m_hWnd, GWL_EXSTYLE); }
    void SetFont(const CFont* font, BOOL redraw = TRUE);
    /// Gives the icon of the caption; the one before.
    HICON SetIcon(HICON icon, BOOL isBig);
    void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    LRESULT SendMessageW(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageW(m_hWnd, message, wParam, lParam);
    }
    BOOL PostMessageW(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::PostMessageW(m_hWnd, message, wParam, lParam);
    }
    int MessageBoxW(const wchar_t* text, const wchar_t* caption = nullptr, UINT flags = MB_OK);

    /// With TRUE the values go from the controls to the members, with FALSE to the controls. FALSE when a
    /// value was refused.
    BOOL UpdateData(BOOL save = TRUE);

    /// Takes messages out of the queue and asks the port for what is done at this window, until EndModalLoop.
    /// Gives the value of EndModalLoop; -1 when the window goes before it was called. A window without an
    /// owner is told as a problem and runs all the same.
    int RunModalLoop(DWORD flags = 0);
    void EndModalLoop(int result);
    BOOL ContinueModal() const { return m_isModal; }

    /// Before a message reaches its window: asked at the window itself, then at each parent. TRUE: done.
    virtual BOOL PreTranslateMessage(MSG* message);

    HWND m_hWnd = nullptr;

    // What the window manager calls: a message, the window's making and its end.
    LRESULT receive(UINT message, WPARAM wParam, LPARAM lParam);
    void windowMade(HWND window);
    void windowGone();

protected:
    friend class CDialog;
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProcW(UINT message, WPARAM wParam, LPARAM lParam);
    virtual void DoDataExchange(CDataExchange* exchange);
    /// The window is this object's from now on.
    virtual void PreSubclassWindow() {}
    /// After the window is gone.
    virtual void PostNcDestroy();
    /// The default of the message being handled.
    LRESULT Default();

    BOOL OnHelpInfo(HELPINFO*) { return static_cast<BOOL>(Default()); }
    void OnPaint() { Default(); }
    void OnClose() { Default(); }
    void OnDestroy() { Default(); }
    BOOL OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
    BOOL OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }

private:
    bool callMap(UINT message, UINT code, int id, WPARAM wParam, LPARAM lParam, LRESULT& answer);

    MSG m_handled;
    bool m_isPermanent = false; ///< gets the window's messages and destroys it
    bool m_isModal = false;
    int m_modalResult = -1;
};

/// Where values of a dialog go in UpdateData.
class CDataExchange {
public:
    CDataExchange(CWnd* dialog, BOOL save)
        : m_bSaveAndValidate(save)
        , m_pDlgWnd(dialog) {}
    BOOL m_bSaveAndValidate;
    CWnd* m_pDlgWnd;
};

/// Attaches the member to the control, at the first exchange.
void DDX_Control(CDataExchange* exchange, int id, CWnd& control);
void DDX_Text(CDataExchange* exchange, int id, CString& value);
void DDX_Check(CDataExchange* exchange, int id, int& value);

/// Registers a class without a name of its own and gives the name made for it; the same arguments give the
/// same name.
const wchar_t* AfxRegisterWndClass(UINT style, HCURSOR cursor = nullptr, HBRUSH background = nullptr,
                                   HICON icon = nullptr);
