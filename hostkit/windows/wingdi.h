// Stand-in for the host's graphics device interface. Covers device contexts that record text, rectangles, lines and icons, enhanced metafiles that are recorded, fonts, brushes, pens and system colours; leaves out bitmaps, regions and showing a metafile.
#pragma once

#include "fontmetrics.h"
#include "iconresource.h"
#include "wingeometry.h"

#include <memory>
#include <string>
#include <vector>

namespace hostkit {

class MetafileRecorder;
struct Painting;

/// A label without its '&' marks; "&&" is one '&'. `marked` is the place of the marked character in what is
/// left (the last one, of several), or npos.
std::wstring withoutPrefixMarks(std::wstring_view text, std::size_t& marked);

} // namespace hostkit

// --- Objects -----------------------------------------------------------------------------------------------

inline constexpr int LF_FACESIZE = 32;

/// A font as it is asked for.
struct LOGFONTW {
    LONG lfHeight = 0;      ///< above 0 of a line, below 0 of the em; 0 is the default's
    LONG lfWidth = 0;       ///< kept, and not followed: letters have the face's own widths
    LONG lfEscapement = 0;  ///< of the base line, in tenths of a degree, anticlockwise as seen
    LONG lfOrientation = 0; ///< of the letters
    LONG lfWeight = 0;      ///< 400 plain, 700 bold
    BYTE lfItalic = 0;
    BYTE lfUnderline = 0;
    BYTE lfStrikeOut = 0;
    BYTE lfCharSet = 0;
    BYTE lfOutPrecision = 0;
    BYTE lfClipPrecision = 0;
    BYTE lfQuality = 0;
    BYTE lfPitchAndFamily = 0;
    wchar_t lfFaceName[LF_FACESIZE] = {}; ///< at most 31 characters
};

struct HostGdiObject {
    enum class Kind { font, brush, pen };
    Kind kind;
    bool isStock = false;
    int stockNumber = -1; ///< of GetStockObject
    /// The metafiles that hold the object and are told of its end.
    std::vector<std::weak_ptr<hostkit::MetafileRecorder>> recordedBy{};
};
struct HostFont : HostGdiObject {
    hostkit::FontFace face;
    LOGFONTW logical{};
};
struct HostBrush : HostGdiObject {
    COLORREF color; ///< hostkit::noColor paints nothing
};
struct HostPen : HostGdiObject {
    COLORREF color;
    int width;
    int style = 0;
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
inline constexpr int DEFAULT_GUI_FONT = 17;
/// Null for a number without an object. Stock objects are never deleted. The system font is the platform's:
/// 16 high, bold, named "System".
HGDIOBJ GetStockObject(int number);
HBRUSH CreateSolidBrush(COLORREF color);
inline constexpr int PS_SOLID = 0;
inline constexpr int PS_NULL = 5;
/// At least one pixel wide; windows are painted with solid ones, whatever the style. PS_NULL draws nothing.
HPEN CreatePen(int style, int width, COLORREF color);
/// Null for null. There is one face: the name is kept, and letters are as wide as its.
HFONT CreateFontIndirectW(const LOGFONTW* font);
/// The face in that em height (a negative or positive height both mean it; 0 is the default's); weights from
/// 600 on are bold.
HFONT CreateSizedFont(int height, int weight, bool isUnderlined);
/// FALSE for null and stock objects. A context of the current host that has it selected has the stock object
/// from then on; what a metafile draws later still looks as with the deleted one.
BOOL DeleteObject(HGDIOBJ object);

struct LOGBRUSH {
    UINT lbStyle = 0; ///< 0 solid, 1 none
    COLORREF lbColor = 0;
    std::uintptr_t lbHatch = 0;
};
struct LOGPEN {
    UINT lopnStyle = 0;
    POINT lopnWidth{}; ///< in x
    COLORREF lopnColor = 0;
};
/// The object as its LOGFONTW, LOGBRUSH or LOGPEN, cut to that size. Returns the bytes written, or with a
/// null buffer those needed; 0 for null and for a size of none.
int GetObjectW(HGDIOBJ object, int size, void* buffer);

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
    UINT textAlign = 0;
    bool isDisabled = false;
    std::shared_ptr<hostkit::MetafileRecorder> recorder{}; ///< of a metafile's context
};

/// A context that is measured with and draws nowhere, for the screen ("DISPLAY"); null for another driver.
/// All such contexts are alike: a white brush, a black pen and the system font are selected. DeleteDC frees
/// it.
HDC CreateDCW(const wchar_t* driver, const wchar_t* device, const wchar_t* output, const void* settings);
HDC CreateCompatibleDC(HDC dc);
/// Of a metafile's context: what was recorded goes, and no file is made. FALSE for what is none.
BOOL DeleteDC(HDC dc);

inline constexpr int HORZSIZE = 4;
inline constexpr int VERTSIZE = 6;
inline constexpr int HORZRES = 8;
inline constexpr int VERTRES = 10;
/// The screen in millimetres and in pixels, from the port; 0 for others.
int GetDeviceCaps(HDC dc, int index);

/// The object that was selected before, of the same kind; null for null, and for one that a metafile cannot
/// hold any more.
HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);
inline constexpr UINT OBJ_PEN = 1;
inline constexpr UINT OBJ_BRUSH = 2;
inline constexpr UINT OBJ_FONT = 6;
/// Null for another kind.
HGDIOBJ GetCurrentObject(HDC dc, UINT kind);
COLORREF SetTextColor(HDC dc, COLORREF color);
COLORREF SetBkColor(HDC dc, COLORREF color);
int SetBkMode(HDC dc, int mode);
inline constexpr UINT TA_LEFT = 0;
inline constexpr UINT TA_RIGHT = 2;
inline constexpr UINT TA_CENTER = 6;
inline constexpr UINT TA_TOP = 0;
inline constexpr UINT TA_BOTTOM = 8;
inline constexpr UINT TA_BASELINE = 24;
inline constexpr UINT GDI_ERROR = 0xFFFFFFFF;
/// Where TextOutW's point stands on the text. The alignment before; GDI_ERROR, with nothing changed, for
/// other bits (text that moves the current position).
UINT SetTextAlign(HDC dc, UINT align);
BOOL GetTextMetricsW(HDC dc, TEXTMETRICW* metrics);
BOOL GetTextExtentPoint32W(HDC dc, const wchar_t* text, int length, SIZE* size);

/// Fills, frames, icons and texts in rectangles are for painting: a metafile does not take them (FALSE).
BOOL FillRect(HDC dc, const RECT* rect, HBRUSH brush);
BOOL FrameRect(HDC dc, const RECT* rect, HBRUSH brush);
/// Filled with the brush, framed with the pen.
BOOL Rectangle(HDC dc, int left, int top, int right, int bottom);
BOOL DrawFocusRect(HDC dc, const RECT* rect);
BOOL MoveToEx(HDC dc, int x, int y, POINT* before);
BOOL LineTo(HDC dc, int x, int y);
/// Metafiles follow the font's angle, and no text gives no record; painting writes level.
BOOL TextOutW(HDC dc, int x, int y, const wchar_t* text, int length);

// Into metafiles, and on contexts that draw nowhere; FALSE while a window is painted.

/// The part of the ellipse in the box from the ray towards the one point to the ray towards the other,
/// anticlockwise as seen, all around where the rays are one. Its end belongs to it; the position stays.
BOOL Arc(HDC dc, int left, int top, int right, int bottom, int startX, int startY, int endX, int endY);
BOOL Ellipse(HDC dc, int left, int top, int right, int bottom);
/// Closed, framed with the pen and filled with the brush. FALSE below two points.
BOOL Polygon(HDC dc, const POINT* points, int count);
BOOL Polyline(HDC dc, const POINT* points, int count);

// --- Enhanced metafiles ------------------------------------------------------------------------------------

using HENHMETAFILE = struct HostMetafile*;

/// A context that records into a file, which comes to stand under its name when the context is closed, whole
/// and at once; with a null name into memory. Units are pixels of the screen, y downwards. The reference
/// device is the screen whatever context is given. The frame, in hundredths of a millimetre, is stored as it
/// is given; without one it is what was drawn. `description` has two parts, each with a closing zero, and
/// another zero behind them: "Maker\0Picture\0". Null, with ERROR_PATH_NOT_FOUND or ERROR_ACCESS_DENIED,
/// where the file cannot be made; then nothing was made.
HDC CreateEnhMetaFileW(HDC reference, const wchar_t* file, const RECT* frame, const wchar_t* description);
/// Ends the recording and frees the context. Null for one that records nothing, and, with ERROR_WRITE_FAULT,
/// when the file could not be written: what stood under its name stands there still.
HENHMETAFILE CloseEnhMetaFile(HDC dc);
/// Frees the handle; a file stays. FALSE for null.
BOOL DeleteEnhMetaFile(HENHMETAFILE metafile);
/// The bytes of one in memory: those written, or with a null buffer those needed. 0 for one in a file and for
/// a buffer that is too small.
UINT GetEnhMetaFileBits(HENHMETAFILE metafile, UINT size, BYTE* buffer);

// --- Text in rectangles ------------------------------------------------------------------------------------

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
