// Stand-in for the host's graphics device interface. Covers device contexts that record text, rectangles, lines and icons, fonts, brushes, pens and system colours; leaves out bitmaps and regions.
#pragma once

#include "fontmetrics.h"
#include "iconresource.h"
#include "wingeometry.h"

#include <string>

namespace hostkit {

struct Painting;

/// A label without its '&' marks; "&&" is one '&'. `marked` is the place of the marked character in what is
/// left (the last one, of several), or npos.
std::wstring withoutPrefixMarks(std::wstring_view text, std::size_t& marked);

} // namespace hostkit

// --- Objects -----------------------------------------------------------------------------------------------

struct HostGdiObject {
    enum class Kind { font, brush, pen };
    Kind kind;
    bool isStock = false;
};
struct HostFont : HostGdiObject {
    hostkit::FontFace face;
};
struct HostBrush : HostGdiObject {
    COLORREF color; ///< hostkit::noColor paints nothing
};
struct HostPen : HostGdiObject {
    COLORREF color;
    int width;
};

constexpr COLORREF RGB(BYTE red, BYTE green, BYTE blue) {
    return static_cast<COLORREF>(red) | static_cast<COLORREF>(green) << 8 | static_cast<COLORREF>(blue) << 16;
}

inline constexpr int WHITE_BRUSH = 0;
inline constexpr int BLACK_BRUSH = 4;
inline constexpr int NULL_BRUSH = 5;
inline constexpr int BLACK_PEN = 7;
inline constexpr int NULL_PEN = 8;
inline constexpr int SYSTEM_FONT = 13;
inline constexpr int DEFAULT_GUI_FONT = 12;
/// Null for a number without an object. Stock objects are never deleted.
HGDIOBJ GetStockObject(int number);
HBRUSH CreateSolidBrush(COLORREF color);
/// Solid, at least one pixel wide.
HPEN CreatePen(int style, int width, COLORREF color);
/// The face in that em height (a negative or positive height both mean it; 0 is the default's); weights from
/// 600 on are bold.
HFONT CreateSizedFont(int height, int weight, bool isUnderlined);
/// FALSE for null and stock objects.
BOOL DeleteObject(HGDIOBJ object);

inline constexpr int COLOR_ACTIVECAPTION = 2;
inline constexpr int COLOR_WINDOW = 5;
inline constexpr int COLOR_WINDOWFRAME = 6;
inline constexpr int COLOR_WINDOWTEXT = 8;
inline constexpr int COLOR_CAPTIONTEXT = 9;
inline constexpr int COLOR_HIGHLIGHT = 13;
inline constexpr int COLOR_HIGHLIGHTTEXT = 14;
inline constexpr int COLOR_BTNFACE = 15;
inline constexpr int COLOR_BTNSHADOW = 16;
inline constexpr int COLOR_GRAYTEXT = 17;
inline constexpr int COLOR_BTNTEXT = 18;
/// Fixed, so that pictures are the same everywhere; 0 for a number without a colour.
DWORD GetSysColor(int number);
/// A stock brush in that colour.
HBRUSH GetSysColorBrush(int number);

// --- Device contexts ---------------------------------------------------------------------------------------

inline constexpr int TRANSPARENT = 1;
inline constexpr int OPAQUE = 2;

struct TEXTMETRICW {
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmAveCharWidth;
};

/// What is drawn is added to the painting; without one it is measured and forgotten.
struct HostDeviceContext {
    hostkit::Painting* painting = nullptr;
    HWND window = nullptr;
    POINT origin{}; ///< of the window's client area in the painting
    RECT clip{};    ///< in the painting
    HFONT font = nullptr;
    HBRUSH brush = nullptr;
    HPEN pen = nullptr;
    COLORREF textColor = 0;
    COLORREF backColor = 0x00FFFFFF;
    int backMode = OPAQUE;
    POINT position{};
    bool isDisabled = false;
};

/// The object that was selected before, of the same kind; null for null.
HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);
COLORREF SetTextColor(HDC dc, COLORREF color);
COLORREF SetBkColor(HDC dc, COLORREF color);
int SetBkMode(HDC dc, int mode);
BOOL GetTextMetricsW(HDC dc, TEXTMETRICW* metrics);
BOOL GetTextExtentPoint32W(HDC dc, const wchar_t* text, int length, SIZE* size);

BOOL FillRect(HDC dc, const RECT* rect, HBRUSH brush);
BOOL FrameRect(HDC dc, const RECT* rect, HBRUSH brush);
/// Filled with the brush, framed with the pen.
BOOL Rectangle(HDC dc, int left, int top, int right, int bottom);
BOOL DrawFocusRect(HDC dc, const RECT* rect);
BOOL MoveToEx(HDC dc, int x, int y, POINT* before);
BOOL LineTo(HDC dc, int x, int y);
BOOL TextOutW(HDC dc, int x, int y, const wchar_t* text, int length);

inline constexpr UINT DT_LEFT = 0x0;
inline constexpr UINT DT_CENTER = 0x1;
inline constexpr UINT DT_RIGHT = 0x2;
inline constexpr UINT DT_VCENTER = 0x4;
inline constexpr UINT DT_BOTTOM = 0x8;
inline constexpr UINT DT_WORDBREAK = 0x10;
inline constexpr UINT DT_SINGLELINE = 0x20;
inline constexpr UINT DT_NOCLIP = 0x100;
inline constexpr UINT DT_CALCRECT = 0x400;
inline constexpr UINT DT_NOPREFIX = 0x800;
inline constexpr UINT DT_END_ELLIPSIS = 0x8000;
/// Text into a rectangle; length -1 means up to the terminator. Lines end at CR, LF or both, unless
/// DT_SINGLELINE holds, with which line ends have no width; DT_WORDBREAK breaks lines at blanks that are
/// wider than the rectangle, and a word that is wider by itself stays whole. DT_VCENTER and DT_BOTTOM count
/// with DT_SINGLELINE only. Without DT_NOPREFIX an '&' marks the next character, "&&" is one '&'. Drawing is
/// clipped to the rectangle unless DT_NOCLIP holds. With DT_CALCRECT nothing is drawn; the rectangle's right
/// and bottom are set to what the text takes. Returns the text's height; 0 for a null argument.
int DrawTextW(HDC dc, const wchar_t* text, int length, RECT* rect, UINT format);

// --- Icons and cursors -------------------------------------------------------------------------------------

inline const wchar_t* MAKEINTRESOURCEW(unsigned id) {
    return reinterpret_cast<const wchar_t*>(static_cast<std::uintptr_t>(id));
}
inline constexpr unsigned IDI_APPLICATION = 32512;
inline constexpr unsigned IDI_ERROR = 32513;
inline constexpr unsigned IDI_QUESTION = 32514;
inline constexpr unsigned IDI_WARNING = 32515;
inline constexpr unsigned IDI_INFORMATION = 32516;
inline constexpr unsigned IDC_ARROW = 32650;
inline constexpr unsigned IDC_IBEAM = 32651;
inline constexpr unsigned IDC_WAIT = 32652;

struct ICONINFO {
    BOOL fIcon = TRUE;
    DWORD xHotspot = 0; ///< of an icon: half its width
    DWORD yHotspot = 0;
};

/// The icon with that number (MAKEINTRESOURCEW) in the module's table; a null module asks the platform's own.
/// Null where there is none. Icons belong to their module and are never destroyed.
HICON LoadIconW(HINSTANCE module, const wchar_t* number);
HCURSOR LoadCursorW(HINSTANCE module, const wchar_t* number);
BOOL GetIconInfo(HICON icon, ICONINFO* info);
/// In the size that the platform's metrics give icons.
BOOL DrawIcon(HDC dc, int x, int y, HICON icon);
/// A width or height of 0 is the icon's own.
BOOL DrawIconEx(HDC dc, int x, int y, HICON icon, int width, int height);

inline constexpr UINT DST_TEXT = 0x1;
inline constexpr UINT DST_PREFIXTEXT = 0x2;
inline constexpr UINT DST_ICON = 0x3;
inline constexpr UINT DSS_NORMAL = 0x0;
inline constexpr UINT DSS_DISABLED = 0x20;
/// An icon (`data` is its handle) or a text (`data` points to it) in that place and size, as it looks in that
/// state. FALSE for other kinds.
BOOL DrawStateW(HDC dc, HBRUSH brush, LPARAM data, int x, int y, int width, int height, UINT flags);
