#include "desktop.h"
#include "metafilerecorder.h"
#include "wingdi.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

namespace {

constexpr int systemColors = 32;

struct SystemColor {
    int number;
    COLORREF color;
};

constexpr SystemColor colorTable[] = {
    {COLOR_ACTIVECAPTION, RGB(0xCC, 0xD9, 0xE8)},
    {COLOR_WINDOW, RGB(0xFF, 0xFF, 0xFF)},
    {COLOR_WINDOWFRAME, RGB(0x64, 0x64, 0x64)},
    {COLOR_WINDOWTEXT, RGB(0, 0, 0)},
    {COLOR_CAPTIONTEXT, RGB(0, 0, 0)},
    {COLOR_HIGHLIGHT, RGB(0x33, 0x66, 0xCC)},
    {COLOR_HIGHLIGHTTEXT, RGB(0xFF, 0xFF, 0xFF)},
    {COLOR_BTNFACE, RGB(0xF0, 0xF0, 0xF0)},
    {COLOR_BTNSHADOW, RGB(0xA0, 0xA0, 0xA0)},
    {COLOR_GRAYTEXT, RGB(0x6D, 0x6D, 0x6D)},
    {COLOR_BTNTEXT, RGB(0, 0, 0)},
};

constexpr int plainWeight = 400;
constexpr int boldWeight = 700;
constexpr int firstBold = 600;

LOGFONTW logicalFont(int height, int weight, const wchar_t* face) {
    LOGFONTW font;
    font.lfHeight = height;
    font.lfWeight = weight;
    std::wcsncpy(font.lfFaceName, face, LF_FACESIZE - 1);
    return font;
}

hostkit::FontFace faceFor(const LOGFONTW& font) {
    return {hostkit::FontFace::emOfHeight(font.lfHeight), font.lfWeight >= firstBold, font.lfUnderline != 0};
}

HostBrush stockBrush(int number, COLORREF color) {
    return {{HostGdiObject::Kind::brush, true, number}, color};
}
HostPen stockPen(int number, COLORREF color) { return {{HostGdiObject::Kind::pen, true, number}, color, 1}; }
HostFont stockFont(int number, const LOGFONTW& font) {
    return {{HostGdiObject::Kind::font, true, number}, faceFor(font), font};
}

LOGFONTW systemFont() {
    constexpr int height = 16;
    constexpr int width = 7;
    constexpr BYTE swiss = 0x22;
    LOGFONTW font = logicalFont(height, boldWeight, L"System");
    font.lfWidth = width;
    font.lfPitchAndFamily = swiss;
    return font;
}

template <class T>
int copied(const T& what, int size, void* buffer) {
    if (!buffer) return sizeof what;
    const int length = std::clamp<int>(size, 0, sizeof what);
    std::memcpy(buffer, &what, static_cast<std::size_t>(length));
    return length;
}

} // namespace

HGDIOBJ GetStockObject(int number) {
    static HostFont gui =
        stockFont(DEFAULT_GUI_FONT, logicalFont(-hostkit::FontFace{}.em, plainWeight, L"MS Shell Dlg"));
    static HostFont system = stockFont(SYSTEM_FONT, systemFont());
    static HostBrush white = stockBrush(WHITE_BRUSH, RGB(0xFF, 0xFF, 0xFF));
    static HostBrush black = stockBrush(BLACK_BRUSH, RGB(0, 0, 0));
    static HostBrush none = stockBrush(NULL_BRUSH, hostkit::noColor);
    static HostPen blackPen = stockPen(BLACK_PEN, RGB(0, 0, 0));
    static HostPen nullPen = stockPen(NULL_PEN, hostkit::noColor);
    HostGdiObject* const objects[] = {&gui, &system, &white, &black, &none, &blackPen, &nullPen};
    for (HostGdiObject* each : objects)
        if (each->stockNumber == number) return each;
    return nullptr;
}

HBRUSH CreateSolidBrush(COLORREF color) { return new HostBrush{{HostGdiObject::Kind::brush}, color}; }

HPEN CreatePen(int style, int width, COLORREF color) {
    return new HostPen{
        {HostGdiObject::Kind::pen}, style == PS_NULL ? hostkit::noColor : color, std::max(width, 1), style};
}

HFONT CreateFontIndirectW(const LOGFONTW* font) {
    return font ? new HostFont{{HostGdiObject::Kind::font}, faceFor(*font), *font} : nullptr;
}

HFONT CreateSizedFont(int height, int weight, bool isUnderlined) {
    constexpr int largest = 1000;
    LOGFONTW font = logicalFont(std::max(-std::abs(height), -largest), weight, L"");
    font.lfUnderline = isUnderlined;
    return CreateFontIndirectW(&font);
}

BOOL DeleteObject(HGDIOBJ object) {
    if (!object || object->isStock) return FALSE;
    for (const auto& each : object->recordedBy)
        if (const auto recorder = each.lock()) recorder->forget(*object);
    hostkit::Desktop::current().forget(object);
    switch (object->kind) {
    case HostGdiObject::Kind::font:
        delete static_cast<HFONT>(object);
        break;
    case HostGdiObject::Kind::brush:
        delete static_cast<HBRUSH>(object);
        break;
    case HostGdiObject::Kind::pen:
        delete static_cast<HPEN>(object);
        break;
    }
    return TRUE;
}

int GetObjectW(HGDIOBJ object, int size, void* buffer) {
    if (!object) return 0;
    if (object->kind == HostGdiObject::Kind::font)
        return copied(static_cast<HFONT>(object)->logical, size, buffer);
    if (object->kind == HostGdiObject::Kind::brush) {
        const COLORREF color = static_cast<HBRUSH>(object)->color;
        const bool isNone = color == hostkit::noColor;
        return copied(LOGBRUSH{isNone ? 1U : 0U, isNone ? 0 : color, 0}, size, buffer);
    }
    const auto& pen = static_cast<const HostPen&>(*object);
    const bool isNone = pen.color == hostkit::noColor;
    return copied(
        LOGPEN{static_cast<UINT>(isNone ? PS_NULL : pen.style), {pen.width, 0}, isNone ? 0 : pen.color}, size,
        buffer);
}

DWORD GetSysColor(int number) {
    for (const SystemColor& each : colorTable)
        if (each.number == number) return each.color;
    return 0;
}

HBRUSH GetSysColorBrush(int number) {
    static std::vector<HostBrush> brushes = [] {
        std::vector<HostBrush> made;
        made.reserve(systemColors);
        for (int i = 0; i < systemColors; ++i)
            made.push_back({{HostGdiObject::Kind::brush, true}, GetSysColor(i)});
        return made;
    }();
    return number >= 0 && number < systemColors ? &brushes[static_cast<std::size_t>(number)] : nullptr;
}
