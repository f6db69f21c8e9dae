// What a window paints: a record of all that a window paints, and its picture; leaves out pixels.
#pragma once

#include "fontmetrics.h"
#include "iconresource.h"
#include "wingeometry.h"

#include <string>
#include <vector>

namespace hostkit {

enum class PaintKind { fill, frame, line, text, icon };

/// One thing that was painted, in pixels from the upper left corner of the painted window.
struct PaintedItem {
    PaintKind kind = PaintKind::fill;
    RECT bounds; ///< of a line: its two ends, in order
    RECT clip;   ///< nothing shows outside
    COLORREF color = 0;
    HWND window = nullptr; ///< the window or control that painted it

    std::wstring text{}; ///< one line, without prefix marks
    FontFace face{};
    int underlined = -1; ///< position of the character that a key press takes, or -1

    unsigned iconId = 0;
    int iconWidth = 0; ///< of the grid on which the shapes stand
    int iconHeight = 0;
    std::vector<IconShape> shapes{};
    bool isDisabled = false;
};

/// All that one window and the windows in it painted, in that order.
struct Painting {
    SIZE size;
    std::vector<PaintedItem> items{};
};

/// True when a part of the item lies outside its clip.
bool isClipped(const PaintedItem& item);

/// The picture as an SVG document in UTF-8, one unit a pixel. Texts keep their measured widths in viewers
/// that know textLength.
std::string paintingAsSvg(const Painting& painting);

} // namespace hostkit
