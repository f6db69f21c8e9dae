#include "flatmotion.h"

#include "entitycoordinates.h"

#include <cmath>

namespace hostkit {

namespace {

/// How far lengths may differ, relative, and directions be from a right angle, for a shape to be kept.
constexpr double kShapeTolerance = 1e-10;

AcGeVector3d column(const AcGeMatrix3d& matrix, unsigned int index) {
    return {matrix(0, index), matrix(1, index), matrix(2, index)};
}

} // namespace

bool isShift(const AcGeMatrix3d& matrix) {
    for (unsigned int row = 0; row < 3; ++row)
        for (unsigned int column = 0; column < 3; ++column)
            if (matrix(row, column) != (row == column ? 1.0 : 0.0)) return false;
    return true;
}

FlatMotion::FlatMotion(const AcGeMatrix3d& matrix, const AcGeVector3d& normal)
    : m_normal(normal)
    , m_isShift(hostkit::isShift(matrix))
    , m_isStill(m_isShift && matrix(0, 3) == 0.0 && matrix(1, 3) == 0.0 && matrix(2, 3) == 0.0) {
    const AcGeMatrix3d system = arbitraryAxisSystem(normal);
    if (!m_isShift) {
        const AcGeVector3d moved = matrix * normal;
        // Plain division: a small drawing scaled down has short vectors that are directions all the same.
        m_normal = (matrix * column(system, 0)).crossProduct(matrix * column(system, 1));
        m_normal /= m_normal.length();
        if (m_normal.dotProduct(moved) < 0.0) m_normal.negate();
        m_normalScale = m_normal.dotProduct(moved);
    }
    if (m_isShift)
        m_local.setToTranslation(toEntity(normal, matrix.translation()));
    else
        m_local = arbitraryAxisSystem(m_normal).transpose() * matrix * system;
    m_x.set(m_local(0, 0), m_local(1, 0));
    m_y.set(m_local(0, 1), m_local(1, 1));
}

bool FlatMotion::keepsShape() const {
    const double length = m_x.length();
    return std::abs(length - m_y.length()) <= kShapeTolerance * length &&
           std::abs(m_x.dotProduct(m_y)) <= kShapeTolerance * length * length;
}

AcGePoint3d FlatMotion::point(const AcGePoint3d& point) const { return m_local * point; }

double FlatMotion::angle(double angle) const {
    if (m_isShift) return angle;
    const AcGeVector2d moved = vector({std::cos(angle), std::sin(angle)});
    const double turned = std::atan2(moved.y, moved.x);
    return turned < 0.0 ? turned + AcGe::kTwoPi : turned;
}

} // namespace hostkit
