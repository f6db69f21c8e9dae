// Stand-in for the host's window functions. Covers windows, messages, focus, enabling, modal input, metrics and cursors; leaves out hooks, timers and the clipboard.
#pragma once

#include "wingdi.h"

/// Every function takes any handle: one that names no window of the current port (null, destroyed, of another
/// host) fails with FALSE, 0 or null and changes nothing. Windows live on the current port's desktop
/// (hostkit::Desktop) and are used on the host's thread.

// --- Messages ----------------------------------------------------------------------------------------------

inline constexpr UINT WM_NULL = 0x0000;
inline constexpr UINT WM_CREATE = 0x0001;
inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_MOVE = 0x0003;
inline constexpr UINT WM_SIZE = 0x0005;
inline constexpr UINT WM_ACTIVATE = 0x0006;
inline constexpr UINT WM_SETFOCUS = 0x0007;
inline constexpr UINT WM_KILLFOCUS = 0x0008;
inline constexpr UINT WM_ENABLE = 0x000A;
inline constexpr UINT WM_SETTEXT = 0x000C;
inline constexpr UINT WM_GETTEXT = 0x000D;
inline constexpr UINT WM_GETTEXTLENGTH = 0x000E;
inline constexpr UINT WM_PAINT = 0x000F;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_ERASEBKGND = 0x0014;
inline constexpr UINT WM_SHOWWINDOW = 0x0018;
inline constexpr UINT WM_SETCURSOR = 0x0020;
inline constexpr UINT WM_SETFONT = 0x0030;
inline constexpr UINT WM_GETFONT = 0x0031;
inline constexpr UINT WM_COPYDATA = 0x004A;
/// F1: lParam is a HELPINFO*. It goes to the control with the focus, then to each window around it.
inline constexpr UINT WM_HELP = 0x0053;
inline constexpr UINT WM_SETICON = 0x0080;
inline constexpr UINT WM_NCDESTROY = 0x0082;
inline constexpr UINT WM_GETDLGCODE = 0x0087;
inline constexpr UINT WM_KEYDOWN = 0x0100;
inline constexpr UINT WM_KEYUP = 0x0101;
inline constexpr UINT WM_CHAR = 0x0102;
inline constexpr UINT WM_INITDIALOG = 0x0110;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT WM_MOUSEMOVE = 0x0200;
inline constexpr UINT WM_LBUTTONDOWN = 0x0201;
inline constexpr UINT WM_LBUTTONUP = 0x0202;
inline constexpr UINT WM_USER = 0x0400;

struct MSG {
    HWND hwnd = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

/// What WM_COPYDATA carries in its lParam; good while the message is sent.
struct COPYDATASTRUCT {
    ULONG_PTR dwData = 0;
    DWORD cbData = 0; ///< bytes
    void* lpData = nullptr;
};

/// What help is asked for.
struct HELPINFO {
    UINT cbSize = sizeof(HELPINFO);
    int iContextType = 1;         ///< a window
    int iCtrlId = 0;              ///< of the control
    HANDLE hItemHandle = nullptr; ///< its window
    DWORD_PTR dwContextId = 0;
    POINT MousePos{};
};

constexpr WORD LOWORD(std::uintptr_t value) { return static_cast<WORD>(value & 0xFFFF); }
constexpr WORD HIWORD(std::uintptr_t value) { return static_cast<WORD>(value >> 16 & 0xFFFF); }
constexpr WPARAM MAKEWPARAM(unsigned low, unsigned high) { return (low & 0xFFFFu) | (high & 0xFFFFu) << 16; }
constexpr LPARAM MAKELPARAM(int x, int y) {
    return static_cast<LPARAM>((static_cast<unsigned>(x) & 0xFFFFu) | (static_cast<unsigned>(y) & 0xFFFFu)
                                                                          << 16);
}

/// Runs the window's procedure and gives its answer.
LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// Behind the messages that wait; FALSE for no window. The loop of the modal window takes it out.
BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

inline constexpr unsigned VK_BACK = 0x08;
inline constexpr unsigned VK_TAB = 0x09;
inline constexpr unsigned VK_RETURN = 0x0D;
inline constexpr unsigned VK_SHIFT = 0x10;
inline constexpr unsigned VK_ESCAPE = 0x1B;
inline constexpr unsigned VK_SPACE = 0x20;
inline constexpr unsigned VK_END = 0x23;
inline constexpr unsigned VK_HOME = 0x24;
inline constexpr unsigned VK_LEFT = 0x25;
inline constexpr unsigned VK_UP = 0x26;
inline constexpr unsigned VK_RIGHT = 0x27;
inline constexpr unsigned VK_DOWN = 0x28;
inline constexpr unsigned VK_DELETE = 0x2E;
inline constexpr unsigned VK_F1 = 0x70;
inline constexpr unsigned VK_F4 = 0x73;
/// Negative while the key is held at the message being handled; Shift alone is known.
short GetKeyState(int key);

// --- Styles ------------------------------------------------------------------------------------------------

inline constexpr DWORD WS_POPUP = 0x80000000u;
inline constexpr DWORD WS_CHILD = 0x40000000u;
inline constexpr DWORD WS_VISIBLE = 0x10000000u;
inline constexpr DWORD WS_DISABLED = 0x08000000u;
inline constexpr DWORD WS_CAPTION = 0x00C00000u;
inline constexpr DWORD WS_BORDER = 0x00800000u;
inline constexpr DWORD WS_DLGFRAME = 0x00400000u;
inline constexpr DWORD WS_VSCROLL = 0x00200000u;
inline constexpr DWORD WS_SYSMENU = 0x00080000u;
inline constexpr DWORD WS_GROUP = 0x00020000u;
inline constexpr DWORD WS_TABSTOP = 0x00010000u;
inline constexpr DWORD WS_EX_CONTROLPARENT = 0x00010000u;
inline constexpr DWORD DS_MODALFRAME = 0x80u;
/// Of a dialog within another: its controls take part in the keys of the one around it.
inline constexpr DWORD DS_CONTROL = 0x400u;
inline constexpr DWORD DS_CENTER = 0x800u;

inline constexpr DWORD BS_PUSHBUTTON = 0x0;
inline constexpr DWORD BS_DEFPUSHBUTTON = 0x1;
inline constexpr DWORD BS_CHECKBOX = 0x2;
inline constexpr DWORD BS_AUTOCHECKBOX = 0x3;
inline constexpr DWORD BS_AUTORADIOBUTTON = 0x9;
inline constexpr DWORD BS_GROUPBOX = 0x7;
inline constexpr DWORD BS_TYPEMASK = 0xF;
inline constexpr DWORD ES_MULTILINE = 0x4;
inline constexpr DWORD ES_AUTOHSCROLL = 0x80;
inline constexpr DWORD ES_READONLY = 0x800;
inline constexpr DWORD ES_WANTRETURN = 0x1000;
inline constexpr DWORD LBS_NOTIFY = 0x1;
inline constexpr DWORD LBS_SORT = 0x2;
inline constexpr DWORD LBS_OWNERDRAWFIXED = 0x10;
inline constexpr DWORD LBS_HASSTRINGS = 0x40;
inline constexpr DWORD CBS_SIMPLE = 0x1;
inline constexpr DWORD CBS_DROPDOWN = 0x2;
inline constexpr DWORD CBS_DROPDOWNLIST = 0x3;
inline constexpr DWORD CBS_SORT = 0x100;
inline constexpr DWORD SS_LEFT = 0x0;
inline constexpr DWORD SS_CENTER = 0x1;
inline constexpr DWORD SS_RIGHT = 0x2;
inline constexpr DWORD SS_ICON = 0x3;
inline constexpr DWORD SS_TYPEMASK = 0x1F;
inline constexpr DWORD SS_NOPREFIX = 0x80;

// --- Messages of the controls ------------------------------------------------------------------------------

inline constexpr UINT BM_GETCHECK = 0xF0;
inline constexpr UINT BM_SETCHECK = 0xF1;
inline constexpr UINT BM_CLICK = 0xF5;
inline constexpr WPARAM BST_UNCHECKED = 0;
inline constexpr WPARAM BST_CHECKED = 1;
inline constexpr UINT BN_CLICKED = 0;
inline constexpr UINT EM_GETSEL = 0xB0;
inline constexpr UINT EM_SETSEL = 0xB1;
inline constexpr UINT EM_REPLACESEL = 0xC2;
inline constexpr UINT EM_LIMITTEXT = 0xC5;
inline constexpr UINT EN_SETFOCUS = 0x100;
inline constexpr UINT EN_KILLFOCUS = 0x200;
inline constexpr UINT EN_CHANGE = 0x300;
inline constexpr UINT STM_SETICON = 0x170;
inline constexpr UINT STM_GETICON = 0x171;
inline constexpr UINT LB_ADDSTRING = 0x180;
inline constexpr UINT LB_INSERTSTRING = 0x181;
inline constexpr UINT LB_DELETESTRING = 0x182;
inline constexpr UINT LB_RESETCONTENT = 0x184;
inline constexpr UINT LB_SETCURSEL = 0x186;
inline constexpr UINT LB_GETCURSEL = 0x188;
inline constexpr UINT LB_GETTEXT = 0x189;
inline constexpr UINT LB_GETTEXTLEN = 0x18A;
inline constexpr UINT LB_GETCOUNT = 0x18B;
inline constexpr UINT LB_SELECTSTRING = 0x18C;
inline constexpr UINT LB_FINDSTRING = 0x18F;
inline constexpr UINT LB_GETITEMDATA = 0x199;
inline constexpr UINT LB_SETITEMDATA = 0x19A;
inline constexpr UINT LB_FINDSTRINGEXACT = 0x1A2;
inline constexpr LRESULT LB_ERR = -1;
inline constexpr UINT LBN_SELCHANGE = 1;
inline constexpr UINT LBN_DBLCLK = 2;
/// Notification of a check list: the user changed a mark.
inline constexpr UINT CLBN_CHKCHANGE = 40;
inline constexpr UINT CB_ADDSTRING = 0x143;
inline constexpr UINT CB_DELETESTRING = 0x144;
inline constexpr UINT CB_GETCOUNT = 0x146;
inline constexpr UINT CB_GETCURSEL = 0x147;
inline constexpr UINT CB_GETLBTEXT = 0x148;
inline constexpr UINT CB_GETLBTEXTLEN = 0x149;
inline constexpr UINT CB_INSERTSTRING = 0x14A;
inline constexpr UINT CB_RESETCONTENT = 0x14B;
inline constexpr UINT CB_FINDSTRING = 0x14C;
inline constexpr UINT CB_SELECTSTRING = 0x14D;
inline constexpr UINT CB_SETCURSEL = 0x14E;
inline constexpr UINT CB_SHOWDROPDOWN = 0x14F;
inline constexpr UINT CB_GETDROPPEDSTATE = 0x157;
inline constexpr UINT CB_GETITEMDATA = 0x150;
inline constexpr UINT CB_SETITEMDATA = 0x151;
inline constexpr UINT CB_FINDSTRINGEXACT = 0x158;
inline constexpr LRESULT CB_ERR = -1;
inline constexpr UINT CBN_SELCHANGE = 1;
inline constexpr UINT CBN_EDITCHANGE = 5;
inline constexpr UINT CBN_DROPDOWN = 7;
inline constexpr UINT CBN_CLOSEUP = 8;
inline constexpr UINT CBN_SELENDOK = 9;
inline constexpr UINT CBN_SELENDCANCEL = 10;

// --- Windows -----------------------------------------------------------------------------------------------

struct WNDCLASSW {
    UINT style = 0;
    HINSTANCE hInstance = nullptr;
    HICON hIcon = nullptr;
    HCURSOR hCursor = nullptr;
    HBRUSH hbrBackground = nullptr;
    const wchar_t* lpszClassName = nullptr;
};

/// A class of windows of that name on the current desktop. FALSE without a name; one that is there stays as
/// it is, and the answer is TRUE. BUTTON, EDIT, STATIC, LISTBOX and COMBOBOX are always there (any case).
BOOL RegisterClassW(const WNDCLASSW& description);
/// Null when the class is unknown, or a child (WS_CHILD) has no parent. The parent of a window that is no
/// child is its owner, or its owner's top window. Places are in pixels: of the screen, or of the parent's
/// client area for a child. `id` is a child's number.
HWND CreateWindowExW(DWORD exStyle, const wchar_t* className, const wchar_t* text, DWORD style, int x, int y,
                     int width, int height, HWND parent, int id);
/// With its children and the windows it owns; WM_DESTROY and WM_NCDESTROY go to each.
BOOL DestroyWindow(HWND window);
BOOL IsWindow(HWND window);

inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOWNORMAL = 1;
inline constexpr int SW_SHOW = 5;
/// TRUE when it was visible before.
BOOL ShowWindow(HWND window, int how);
/// Its own and every parent's style say so.
BOOL IsWindowVisible(HWND window);
/// TRUE when it was disabled before. A disabled window with the focus loses it.
BOOL EnableWindow(HWND window, BOOL enable);
BOOL IsWindowEnabled(HWND window);
/// The window that had the focus. A disabled window cannot take it; null takes it from all. Activates the top
/// window.
HWND SetFocus(HWND window);
HWND GetFocus();
HWND SetActiveWindow(HWND window);
HWND GetActiveWindow();
/// A child's parent, else the owner.
HWND GetParent(HWND window);
inline constexpr UINT GW_HWNDNEXT = 2;
inline constexpr UINT GW_OWNER = 4;
inline constexpr UINT GW_CHILD = 5;
HWND GetWindow(HWND window, UINT relation);
BOOL IsChild(HWND parent, HWND window);

BOOL SetWindowTextW(HWND window, const wchar_t* text);
/// Characters without the terminator; at most size - 1 of them are written, with one.
int GetWindowTextW(HWND window, wchar_t* buffer, int size);
int GetWindowTextLengthW(HWND window);
BOOL GetClientRect(HWND window, RECT* rect);
/// On the screen.
BOOL GetWindowRect(HWND window, RECT* rect);
BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
BOOL ScreenToClient(HWND window, POINT* point);
BOOL ClientToScreen(HWND window, POINT* point);
/// From a client area to the window around it.
BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL hasMenu, DWORD exStyle);
/// Nothing is kept of the screen, so both do nothing but tell whether there is such a window.
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
BOOL UpdateWindow(HWND window);

inline constexpr int GWL_STYLE = -16;
inline constexpr int GWL_EXSTYLE = -20;
DWORD GetWindowLongW(HWND window, int which);
int GetDlgCtrlID(HWND window);
HWND GetDlgItem(HWND window, int id);
/// The control that Tab leads to from `from`: visible, enabled, a tab stop, also within a child that is a
/// WS_EX_CONTROLPARENT; round at the ends. Null when there is none.
HWND GetNextDlgTabItem(HWND window, HWND from, BOOL backward);

/// What the platform does with a message that nobody wants.
LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

HDC BeginPaint(HWND window);
void EndPaint(HWND window, HDC dc);
/// A context to measure with; what is drawn outside WM_PAINT is not kept.
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC dc);

/// The cursor before.
HCURSOR SetCursor(HCURSOR cursor);
HCURSOR GetCursor();

inline constexpr int SM_CXSCREEN = 0;
inline constexpr int SM_CYSCREEN = 1;
inline constexpr int SM_CYCAPTION = 4;
inline constexpr int SM_CXBORDER = 5;
inline constexpr int SM_CYBORDER = 6;
inline constexpr int SM_CXFIXEDFRAME = 7;
inline constexpr int SM_CYFIXEDFRAME = 8;
inline constexpr int SM_CXICON = 11;
inline constexpr int SM_CYICON = 12;
inline constexpr int SM_CXSIZE = 30;
inline constexpr int SM_CYSIZE = 31;
inline constexpr int SM_CXEDGE = 45;
inline constexpr int SM_CYEDGE = 46;
inline constexpr int SM_CXSMICON = 49;
inline constexpr int SM_CYSMICON = 50;
/// A value of the current port (hostkit::HostPort::systemMetric). Where the port leaves it: a screen of 1920
/// by 1080, a caption of 19, frames of 3, edges of 2, borders of 1, caption buttons of 18, icons of 32 and
/// small ones of 16; 0 for a number that is not known.
int GetSystemMetrics(int number);

// --- Message boxes -----------------------------------------------------------------------------------------

inline constexpr UINT MB_OK = 0x0;
inline constexpr UINT MB_OKCANCEL = 0x1;
inline constexpr UINT MB_ABORTRETRYIGNORE = 0x2;
inline constexpr UINT MB_YESNOCANCEL = 0x3;
inline constexpr UINT MB_YESNO = 0x4;
inline constexpr UINT MB_RETRYCANCEL = 0x5;
inline constexpr UINT MB_TYPEMASK = 0xF;
inline constexpr UINT MB_ICONHAND = 0x10;
inline constexpr UINT MB_ICONSTOP = MB_ICONHAND;
inline constexpr UINT MB_ICONERROR = MB_ICONHAND;
inline constexpr UINT MB_ICONQUESTION = 0x20;
inline constexpr UINT MB_ICONEXCLAMATION = 0x30;
inline constexpr UINT MB_ICONWARNING = MB_ICONEXCLAMATION;
inline constexpr UINT MB_ICONINFORMATION = 0x40;
inline constexpr UINT MB_ICONMASK = 0xF0;
inline constexpr UINT MB_DEFBUTTON1 = 0x0;
inline constexpr UINT MB_DEFBUTTON2 = 0x100;
inline constexpr UINT MB_DEFBUTTON3 = 0x200;
inline constexpr UINT MB_DEFMASK = 0xF00;

inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDABORT = 3;
inline constexpr int IDRETRY = 4;
inline constexpr int IDIGNORE = 5;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

/// Shows the system's own box, over the window that is modal now or the main one, until a button is taken,
/// and returns its id; closing it is the refusing button (systembox.h). The button texts are French. A null
/// text or caption counts as empty; the owner is not looked at.
int MessageBoxW(HWND owner, const wchar_t* text, const wchar_t* caption, UINT flags);
