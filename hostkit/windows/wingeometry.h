// Stand-in for the host's plain figures of the screen. Covers points, sizes and rectangles in pixels; leaves out regions.
#pragma once

#include "windowstypes.h"

struct POINT {
    LONG x = 0;
    LONG y = 0;
};

struct SIZE {
    LONG cx = 0;
    LONG cy = 0;
};

/// The right and bottom edges lie outside.
struct RECT {
    LONG left = 0;
    LONG top = 0;
    LONG right = 0;
    LONG bottom = 0;
};

namespace hostkit {

constexpr LONG widthOf(const RECT& rect) { return rect.right - rect.left; }
constexpr LONG heightOf(const RECT& rect) { return rect.bottom - rect.top; }
constexpr bool isEmpty(const RECT& rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }
constexpr bool contains(const RECT& rect, POINT point) {
    return point.x >= rect.left && point.x < rect.right && point.y >= rect.top && point.y < rect.bottom;
}
constexpr bool contains(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
           inner.bottom <= outer.bottom;
}
constexpr RECT moved(const RECT& rect, LONG x, LONG y) {
    return {rect.left + x, rect.top + y, rect.right + x, rect.bottom + y};
}
constexpr RECT shrunk(const RECT& rect, LONG by) {
    return {rect.left + by, rect.top + by, rect.right - by, rect.bottom - by};
}
/// What both cover; empty where they do not meet.
constexpr RECT common(const RECT& a, const RECT& b) {
    return {a.left > b.left ? a.left : b.left, a.top > b.top ? a.top : b.top,
            a.right < b.right ? a.right : b.right, a.bottom < b.bottom ? a.bottom : b.bottom};
}

} // namespace hostkit
