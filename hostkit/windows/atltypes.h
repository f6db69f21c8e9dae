// Stand-in for the host's point, size and rectangle classes. Covers what dialogs and painting do with them; leaves out unions and differences.
#pragma once

#include "wingeometry.h"

class CPoint : public POINT {
public:
    CPoint() = default;
    CPoint(LONG left, LONG top) {
        x = left;
        y = top;
    }
    CPoint(const POINT& point)
        : CPoint(point.x, point.y) {}
    void Offset(LONG dx, LONG dy) {
        x += dx;
        y += dy;
    }
};

class CSize : public SIZE {
public:
    CSize() = default;
    CSize(LONG width, LONG height) {
        cx = width;
        cy = height;
    }
    CSize(const SIZE& size)
        : CSize(size.cx, size.cy) {}
};

/// Edges in pixels. Width and height are negative where right lies left of left; nothing is put in order by
/// itself.
class CRect : public RECT {
public:
    CRect() = default;
    CRect(LONG l, LONG t, LONG r, LONG b)
        : RECT{l, t, r, b} {}
    CRect(const RECT& rect)
        : RECT(rect) {}
    CRect(POINT corner, SIZE size)
        : RECT{corner.x, corner.y, corner.x + size.cx, corner.y + size.cy} {}

    LONG Width() const { return right - left; }
    LONG Height() const { return bottom - top; }
    CSize Size() const { return {Width(), Height()}; }
    CPoint TopLeft() const { return {left, top}; }
    CPoint BottomRight() const { return {right, bottom}; }
    CPoint CenterPoint() const { return {(left + right) / 2, (top + bottom) / 2}; }
    BOOL IsRectEmpty() const { return hostkit::isEmpty(*this); }
    BOOL PtInRect(POINT point) const { return hostkit::contains(*this, point); }
    void SetRect(LONG l, LONG t, LONG r, LONG b) { *this = CRect(l, t, r, b); }
    void SetRectEmpty() { *this = CRect(); }
    void OffsetRect(LONG x, LONG y) { *this = CRect(hostkit::moved(*this, x, y)); }
    void InflateRect(LONG x, LONG y) { *this = CRect(left - x, top - y, right + x, bottom + y); }
    void DeflateRect(LONG x, LONG y) { InflateRect(-x, -y); }

    /// For calls that take a rectangle by pointer.
    operator RECT*() { return this; }
    operator const RECT*() const { return this; }
};
