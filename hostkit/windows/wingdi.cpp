#include "wingdi.h"

#include "dialogtemplate.h"
#include "metafilerecorder.h"
#include "painting.h"
#include "winuser.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using hostkit::MetafileRecord;
using hostkit::PaintedItem;
using hostkit::PaintKind;

// What stands where nothing was selected.
HFONT fontOf(HDC dc) { return dc->font ? dc->font : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)); }
HBRUSH brushOf(HDC dc) { return dc->brush ? dc->brush : static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)); }
HPEN penOf(HDC dc) { return dc->pen ? dc->pen : static_cast<HPEN>(GetStockObject(BLACK_PEN)); }
const hostkit::FontFace& faceOf(HDC dc) { return fontOf(dc)->face; }

// Where text begins and its top, by the alignment of its point.
POINT alignedCorner(HDC dc, POINT at, int width) {
    const hostkit::FontFace& face = faceOf(dc);
    const UINT across = dc->textAlign & TA_CENTER, up = dc->textAlign & TA_BASELINE;
    if (across) at.x -= across == TA_CENTER ? (width + 1) / 2 : width;
    if (up) at.y -= up == TA_BASELINE ? face.ascent() : face.height();
    return at;
}

RECT placed(HDC dc, const RECT& rect) { return hostkit::moved(rect, dc->origin.x, dc->origin.y); }

PaintedItem itemOf(HDC dc, PaintKind kind, const RECT& inClient, COLORREF color) {
    PaintedItem item;
    item.kind = kind;
    item.bounds = placed(dc, inClient);
    item.clip = dc->clip;
    item.color = color;
    item.window = dc->window;
    item.isDisabled = dc->isDisabled;
    return item;
}

void add(HDC dc, PaintedItem&& item) {
    if (dc->painting && item.color != hostkit::noColor) dc->painting->items.push_back(std::move(item));
}

// One line of text, its prefix mark taken out.
struct TextLine {
    std::wstring text{};
    int underlined = -1;
    int width = 0;
};

// Where a line that begins at `first` ends when it may be that wide: at a blank, or behind the word that is
// wider by itself.
std::size_t breakBehind(const hostkit::FontFace& face, std::wstring_view line, int width) {
    std::size_t end = hostkit::fittingLength(face, line, width);
    if (end == line.size()) return end;
    if (line[end] == L' ') return end;
    const std::size_t blank = end ? line.rfind(L' ', end - 1) : std::wstring_view::npos;
    if (blank != std::wstring_view::npos && blank > 0) return blank;
    return std::min(line.find(L' ', end), line.size());
}

void addLine(std::vector<TextLine>& lines, const hostkit::FontFace& face, std::wstring_view whole,
             std::size_t first, std::size_t end, std::size_t underlined) {
    TextLine line;
    line.text = whole.substr(first, end - first);
    if (underlined >= first && underlined < end) line.underlined = static_cast<int>(underlined - first);
    line.width = hostkit::textWidth(face, line.text);
    lines.push_back(std::move(line));
}

std::vector<TextLine> linesOf(const hostkit::FontFace& face, std::wstring_view text, int width, UINT format) {
    std::size_t underlined = std::wstring::npos;
    const std::wstring plain =
        format & DT_NOPREFIX ? std::wstring(text) : hostkit::withoutPrefixMarks(text, underlined);
    const std::wstring_view whole = plain;
    std::vector<TextLine> lines;
    if (format & DT_SINGLELINE) {
        addLine(lines, face, whole, 0, whole.size(), underlined);
        return lines;
    }
    for (std::size_t first = 0;;) {
        const std::size_t end = std::min(whole.find_first_of(L"\r\n", first), whole.size());
        std::size_t at = first;
        while ((format & DT_WORDBREAK) && at < end) {
            const std::size_t broken = at + breakBehind(face, whole.substr(at, end - at), width);
            if (broken >= end) break;
            addLine(lines, face, whole, at, broken, underlined);
            at = std::min(whole.find_first_not_of(L' ', broken), end);
        }
        addLine(lines, face, whole, at, end, underlined);
        if (end == whole.size()) break;
        first = end + (whole.substr(end, 2) == L"\r\n" ? 2 : 1);
        // What a last line end opens is no line of its own.
        if (first == whole.size()) break;
    }
    return lines;
}

void shorten(const hostkit::FontFace& face, TextLine& line, int width) {
    if (line.width <= width) return;
    const std::wstring dots = L"...";
    const int room = std::max(width - hostkit::textWidth(face, dots), 0);
    line.text = line.text.substr(0, hostkit::fittingLength(face, line.text, room)) + dots;
    line.width = hostkit::textWidth(face, line.text);
    if (line.underlined >= static_cast<int>(line.text.size() - dots.size())) line.underlined = -1;
}

void addText(HDC dc, const TextLine& line, int x, int y, const RECT& clip) {
    const hostkit::FontFace& face = faceOf(dc);
    const RECT bounds{x, y, x + line.width, y + face.height()};
    if (dc->backMode == OPAQUE) add(dc, itemOf(dc, PaintKind::fill, bounds, dc->backColor));
    PaintedItem item = itemOf(dc, PaintKind::text, bounds, dc->textColor);
    item.clip = hostkit::common(item.clip, clip);
    item.text = line.text;
    item.face = face;
    item.underlined = line.underlined;
    add(dc, std::move(item));
}

int leftOf(const RECT& rect, int width, UINT format) {
    if (format & DT_CENTER) return rect.left + (hostkit::widthOf(rect) - width) / 2;
    return format & DT_RIGHT ? rect.right - width : rect.left;
}

int topOf(const RECT& rect, int height, UINT format) {
    if (!(format & DT_SINGLELINE)) return rect.top;
    if (format & DT_VCENTER) return rect.top + (hostkit::heightOf(rect) - height) / 2;
    return format & DT_BOTTOM ? rect.bottom - height : rect.top;
}

unsigned numberOf(const wchar_t* resource) {
    return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(resource));
}

void addIcon(HDC dc, int x, int y, HICON icon, int width, int height, bool isDisabled) {
    PaintedItem item = itemOf(dc, PaintKind::icon, {x, y, x + width, y + height}, 0);
    item.iconId = icon->id;
    item.iconWidth = icon->width;
    item.iconHeight = icon->height;
    item.shapes.assign(icon->shapes, icon->shapes + icon->count);
    item.isDisabled = isDisabled;
    add(dc, std::move(item));
}

} // namespace

std::wstring hostkit::withoutPrefixMarks(std::wstring_view text, std::size_t& marked) {
    std::wstring plain;
    marked = std::wstring::npos;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&') {
            if (++i == text.size()) break;
            if (text[i] != L'&') marked = plain.size();
        }
        plain += text[i];
    }
    return plain;
}

// --- Device contexts ---------------------------------------------------------------------------------------

HGDIOBJ SelectObject(HDC dc, HGDIOBJ object) {
    if (!dc || !object) return nullptr;
    if (dc->recorder && !dc->recorder->select(*object)) return nullptr;
    HGDIOBJ before = nullptr;
    switch (object->kind) {
    case HostGdiObject::Kind::font:
        before = fontOf(dc);
        dc->font = static_cast<HFONT>(object);
        break;
    case HostGdiObject::Kind::brush:
        before = brushOf(dc);
        dc->brush = static_cast<HBRUSH>(object);
        break;
    case HostGdiObject::Kind::pen:
        before = penOf(dc);
        dc->pen = static_cast<HPEN>(object);
        break;
    }
    return before;
}

HGDIOBJ GetCurrentObject(HDC dc, UINT kind) {
    if (!dc) return nullptr;
    if (kind == OBJ_FONT) return fontOf(dc);
    if (kind == OBJ_BRUSH) return brushOf(dc);
    return kind == OBJ_PEN ? penOf(dc) : nullptr;
}

COLORREF SetTextColor(HDC dc, COLORREF color) {
    if (!dc) return 0;
    if (dc->recorder) dc->recorder->value(MetafileRecord::setTextColor, color);
    return std::exchange(dc->textColor, color);
}

COLORREF SetBkColor(HDC dc, COLORREF color) {
    if (!dc) return 0;
    if (dc->recorder) dc->recorder->value(MetafileRecord::setBackColor, color);
    return std::exchange(dc->backColor, color);
}

int SetBkMode(HDC dc, int mode) {
    if (!dc) return 0;
    if (dc->recorder) dc->recorder->value(MetafileRecord::setBackMode, static_cast<std::uint32_t>(mode));
    return std::exchange(dc->backMode, mode);
}

UINT SetTextAlign(HDC dc, UINT align) {
    constexpr UINT known = TA_CENTER | TA_BASELINE;
    if (!dc || (align & ~known)) return GDI_ERROR;
    if (dc->recorder) dc->recorder->value(MetafileRecord::setTextAlign, align);
    return std::exchange(dc->textAlign, align);
}

BOOL GetTextMetricsW(HDC dc, TEXTMETRICW* metrics) {
    if (!dc || !metrics) return FALSE;
    const hostkit::FontFace& face = faceOf(dc);
    const std::wstring_view letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const int average = hostkit::textWidth(face, letters) / static_cast<int>(letters.size());
    *metrics = {face.height(), face.ascent(), face.descent(), average};
    return TRUE;
}

BOOL GetTextExtentPoint32W(HDC dc, const wchar_t* text, int length, SIZE* size) {
    if (!dc || !size || (!text && length != 0) || length < 0) return FALSE;
    const std::wstring_view view(text ? text : L"", static_cast<std::size_t>(length));
    *size = {hostkit::textWidth(faceOf(dc), view), faceOf(dc).height()};
    return TRUE;
}

BOOL FillRect(HDC dc, const RECT* rect, HBRUSH brush) {
    if (!dc || !rect || !brush || dc->recorder) return FALSE;
    if (!hostkit::isEmpty(*rect)) add(dc, itemOf(dc, PaintKind::fill, *rect, brush->color));
    return TRUE;
}

BOOL FrameRect(HDC dc, const RECT* rect, HBRUSH brush) {
    if (!dc || !rect || !brush || dc->recorder) return FALSE;
    if (!hostkit::isEmpty(*rect)) add(dc, itemOf(dc, PaintKind::frame, *rect, brush->color));
    return TRUE;
}

BOOL Rectangle(HDC dc, int left, int top, int right, int bottom) {
    if (!dc) return FALSE;
    const RECT rect{left, top, right, bottom};
    if (dc->recorder) return dc->recorder->rectangle(rect);
    FillRect(dc, &rect, brushOf(dc));
    if (!hostkit::isEmpty(rect)) add(dc, itemOf(dc, PaintKind::frame, rect, penOf(dc)->color));
    return TRUE;
}

BOOL DrawFocusRect(HDC dc, const RECT* rect) {
    return FrameRect(dc, rect, GetSysColorBrush(COLOR_BTNSHADOW));
}

BOOL MoveToEx(HDC dc, int x, int y, POINT* before) {
    if (!dc) return FALSE;
    if (before) *before = dc->position;
    dc->position = {x, y};
    return dc->recorder ? dc->recorder->moveTo(dc->position) : TRUE;
}

BOOL LineTo(HDC dc, int x, int y) {
    if (!dc) return FALSE;
    const POINT from = std::exchange(dc->position, {x, y});
    if (dc->recorder) return dc->recorder->lineTo(from, dc->position);
    add(dc, itemOf(dc, PaintKind::line, {from.x, from.y, x, y}, penOf(dc)->color));
    return TRUE;
}

BOOL Arc(HDC dc, int left, int top, int right, int bottom, int startX, int startY, int endX, int endY) {
    if (!dc || dc->painting) return FALSE;
    const RECT box{left, top, right, bottom};
    return dc->recorder ? dc->recorder->arc(box, {startX, startY}, {endX, endY}) : TRUE;
}

BOOL Ellipse(HDC dc, int left, int top, int right, int bottom) {
    if (!dc || dc->painting) return FALSE;
    return dc->recorder ? dc->recorder->ellipse({left, top, right, bottom}) : TRUE;
}

BOOL Polygon(HDC dc, const POINT* points, int count) {
    if (!dc || dc->painting || !points || count < 2) return FALSE;
    return dc->recorder ? dc->recorder->polygon(points, count, true) : TRUE;
}

BOOL Polyline(HDC dc, const POINT* points, int count) {
    if (!dc || dc->painting || !points || count < 2) return FALSE;
    return dc->recorder ? dc->recorder->polygon(points, count, false) : TRUE;
}

BOOL TextOutW(HDC dc, int x, int y, const wchar_t* text, int length) {
    if (!dc || !text || length < 0) return FALSE;
    const std::wstring_view view(text, static_cast<std::size_t>(length));
    if (dc->recorder) return dc->recorder->text({x, y}, view, dc->textAlign);
    TextLine line;
    line.text = view;
    line.width = hostkit::textWidth(faceOf(dc), line.text);
    const POINT corner = alignedCorner(dc, {x, y}, line.width);
    addText(dc, line, corner.x, corner.y, dc->clip);
    return TRUE;
}

int DrawTextW(HDC dc, const wchar_t* text, int length, RECT* rect, UINT format) {
    if (!dc || !text || !rect || length < -1 || (dc->recorder && !(format & DT_CALCRECT))) return 0;
    const std::wstring_view view =
        length < 0 ? std::wstring_view(text) : std::wstring_view(text, static_cast<std::size_t>(length));
    const hostkit::FontFace& face = faceOf(dc);
    std::vector<TextLine> lines = linesOf(face, view, static_cast<int>(hostkit::widthOf(*rect)), format);
    const int height = static_cast<int>(lines.size()) * face.height();
    if (format & DT_CALCRECT) {
        int width = 0;
        for (const TextLine& line : lines) width = std::max(width, line.width);
        rect->right = rect->left + width;
        rect->bottom = rect->top + height;
        return height;
    }
    const RECT clip = format & DT_NOCLIP ? dc->clip : placed(dc, *rect);
    int y = topOf(*rect, height, format);
    for (TextLine& line : lines) {
        if (format & DT_END_ELLIPSIS) shorten(face, line, static_cast<int>(hostkit::widthOf(*rect)));
        addText(dc, line, leftOf(*rect, line.width, format), y, clip);
        y += face.height();
    }
    return height;
}

// --- Icons and cursors -------------------------------------------------------------------------------------

HICON LoadIconW(HINSTANCE module, const wchar_t* number) {
    using TableFunction = const hostkit::IconTable* (*)();
    const hostkit::IconTable* table = &hostkit::systemIcons();
    if (module) {
        const auto function =
            reinterpret_cast<TableFunction>(hostkit::moduleFunction(module, "getModuleIconTable"));
        table = function ? function() : nullptr;
    }
    if (!table) return nullptr;
    const HostIcon* const end = table->icons + table->count;
    const HostIcon* const found =
        std::find_if(table->icons, end, [&](const HostIcon& icon) { return icon.id == numberOf(number); });
    // A handle is what callers pass on; nobody writes through it.
    return found == end ? nullptr : const_cast<HICON>(found);
}

HCURSOR LoadCursorW(HINSTANCE module, const wchar_t* number) { return LoadIconW(module, number); }

BOOL GetIconInfo(HICON icon, ICONINFO* info) {
    if (!icon || !info) return FALSE;
    *info = {TRUE, static_cast<DWORD>(icon->width / 2), static_cast<DWORD>(icon->height / 2)};
    return TRUE;
}

BOOL DrawIcon(HDC dc, int x, int y, HICON icon) {
    return DrawIconEx(dc, x, y, icon, GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON));
}

BOOL DrawIconEx(HDC dc, int x, int y, HICON icon, int width, int height) {
    if (!dc || !icon || dc->recorder) return FALSE;
    addIcon(dc, x, y, icon, width ? width : icon->width, height ? height : icon->height, false);
    return TRUE;
}

BOOL DrawStateW(HDC dc, HBRUSH, LPARAM data, int x, int y, int width, int height, UINT flags) {
    if (!dc || !data || dc->recorder) return FALSE;
    const bool isDisabled = (flags & DSS_DISABLED) != 0;
    const UINT kind = flags & 0xF;
    if (kind == DST_ICON) {
        const auto icon = reinterpret_cast<HICON>(data);
        addIcon(dc, x, y, icon, width ? width : icon->width, height ? height : icon->height, isDisabled);
        return TRUE;
    }
    if (kind != DST_TEXT && kind != DST_PREFIXTEXT) return FALSE;
    RECT rect{x, y, x + width, y + height};
    const COLORREF before = dc->textColor;
    if (isDisabled) dc->textColor = GetSysColor(COLOR_GRAYTEXT);
    DrawTextW(dc, reinterpret_cast<const wchar_t*>(data), -1, &rect,
              DT_SINGLELINE | (width ? 0u : DT_NOCLIP) | (kind == DST_TEXT ? DT_NOPREFIX : 0u));
    dc->textColor = before;
    return TRUE;
}
