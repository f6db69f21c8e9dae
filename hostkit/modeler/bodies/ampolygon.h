// Stand-in for the host's modeller: PolygonVertexData and MorphingMap. Covers segments that are arcs of a circle; leaves out fillets, arcs by radius or bulge, and morphing.
#pragma once

#include "amgeometry.h"

namespace AModeler {

/// What the segment from a polygon's vertex to the next one is, where it is no straight line.
class PolygonVertexData {
public:
    enum Type { kArc3d = 0 };

    /// `approximation`: the number of sides that a full circle would get; an arc has its share of them, at
    /// least one.
    PolygonVertexData(Type type, const Circle3d& circle, int approximation)
        : m_type(type)
        , m_circle(circle)
        , m_approximation(approximation) {}

    [[nodiscard]] Type type() const { return m_type; }
    [[nodiscard]] const Circle3d& circle() const { return m_circle; }
    [[nodiscard]] int approximation() const { return m_approximation; }

private:
    Type m_type;
    Circle3d m_circle;
    int m_approximation;
};

/// Which vertex of one profile goes to which of the next. Profiles of one body are alike here: only the map
/// that maps nothing is taken.
class MorphingMap {
public:
    static const MorphingMap kNull;
    [[nodiscard]] bool isNull() const { return true; }
};

inline const MorphingMap MorphingMap::kNull{};

} // namespace AModeler
