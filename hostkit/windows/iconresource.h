// Stand-in for the host's icons. Covers icons as small drawings that a module exports; leaves out bitmaps and icon files.
#pragma once

#include "windowstypes.h"

#include <cstddef>

namespace hostkit {

constexpr COLORREF noColor = 0xFFFFFFFFu;

/// One figure of an icon, on a grid of the icon's own pixels: a polygon's or line's points, or two corners of
/// a rectangle or an ellipse. Later figures lie above earlier ones.
struct IconShape {
    enum class Kind { rectangle, ellipse, polygon, line };
    Kind kind;
    COLORREF fill;
    COLORREF stroke;
    float strokeWidth;
    int points;
    float coordinates[16];
};

} // namespace hostkit

/// An icon or a cursor. Lives as long as the module that brings it.
struct HostIcon {
    unsigned id;
    int width;
    int height;
    const hostkit::IconShape* shapes;
    std::size_t count;
};

namespace hostkit {

/// A module with icons exports, undecorated: const hostkit::IconTable* getModuleIconTable();
struct IconTable {
    const HostIcon* icons;
    std::size_t count;
};

/// The platform's own icons and cursors, by their ids from 32512 on.
const IconTable& systemIcons();

} // namespace hostkit
