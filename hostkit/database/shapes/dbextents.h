// Stand-in for the host's AcDbExtents. Covers the axis-parallel box and its growth; leaves out block extents' caching.
#pragma once

#include "acadstrc.h"
#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

/// An axis-parallel box. A fresh one is empty: its minimum lies above its maximum (1e20 against -1e20), so
/// that the first point added sets both.
class AcDbExtents {
public:
    AcDbExtents() = default;
    /// Taken as given, unordered corners too.
    AcDbExtents(const AcGePoint3d& minimum, const AcGePoint3d& maximum)
        : m_minimum(minimum)
        , m_maximum(maximum) {}

    const AcGePoint3d& minPoint() const { return m_minimum; }
    const AcGePoint3d& maxPoint() const { return m_maximum; }
    bool isEmpty() const;
    /// eInvalidInput, and no change, when a coordinate of the minimum is above that of the maximum.
    Acad::ErrorStatus set(const AcGePoint3d& minimum, const AcGePoint3d& maximum);
    /// NaN coordinates are passed over.
    void addPoint(const AcGePoint3d& point);
    /// An empty box adds nothing.
    void addExt(const AcDbExtents& other);
    /// Adds the box moved by the vector; the box itself stays in.
    void expandBy(const AcGeVector3d& vector);
    /// The box of the eight corners moved by the matrix. An empty box stays empty.
    void transformBy(const AcGeMatrix3d& matrix);

private:
    static constexpr double kFar = 1e20;
    AcGePoint3d m_minimum{kFar, kFar, kFar};
    AcGePoint3d m_maximum{-kFar, -kFar, -kFar};
};
