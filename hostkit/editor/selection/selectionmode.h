// Mode of a selection: the method and options of its text; leaves out what they select.
#pragma once

#include <optional>
#include <string_view>

namespace hostkit {

enum class SelectionMethod : unsigned char {
    ask,
    implied,
    previous,
    last,
    wholeDrawing,
    currentSpace,
    window,
    crossing,
    box,
    windowPolygon,
    crossingPolygon,
    fence,
    group,
    point
};

/// As told at acedSSGet.
struct SelectionMode {
    SelectionMethod method = SelectionMethod::ask;
    bool isSingle = false;       ///< S
    bool picksOnly = false;      ///< "." while the user is asked: a miss does not begin a window
    bool hasPrompts = false;     ///< $
    bool hasKeywords = false;    ///< K
    bool isNested = false;       ///< N
    bool allowsRepeats = false;  ///< D
    bool takesAllMet = false;    ///< E
    bool skipsLocked = false;    ///< L
    bool skipsViewports = false; ///< P
};

/// Nothing for a text that is none.
std::optional<SelectionMode> parseSelectionMode(std::wstring_view text);

} // namespace hostkit
