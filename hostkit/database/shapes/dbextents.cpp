#include "dbextents.h"

#include <algorithm>
#include <cmath>

bool AcDbExtents::isEmpty() const {
    return m_minimum.x > m_maximum.x || m_minimum.y > m_maximum.y || m_minimum.z > m_maximum.z;
}

Acad::ErrorStatus AcDbExtents::set(const AcGePoint3d& minimum, const AcGePoint3d& maximum) {
    const bool ordered = minimum.x <= maximum.x && minimum.y <= maximum.y && minimum.z <= maximum.z;
    if (!ordered) return Acad::eInvalidInput;
    m_minimum = minimum;
    m_maximum = maximum;
    return Acad::eOk;
}

void AcDbExtents::addPoint(const AcGePoint3d& point) {
    if (std::isnan(point.x) || std::isnan(point.y) || std::isnan(point.z)) return;
    m_minimum.set(std::min(m_minimum.x, point.x), std::min(m_minimum.y, point.y),
                  std::min(m_minimum.z, point.z));
    m_maximum.set(std::max(m_maximum.x, point.x), std::max(m_maximum.y, point.y),
                  std::max(m_maximum.z, point.z));
}

void AcDbExtents::addExt(const AcDbExtents& other) {
    if (other.isEmpty()) return;
    addPoint(other.m_minimum);
    addPoint(other.m_maximum);
}

void AcDbExtents::expandBy(const AcGeVector3d& vector) {
    if (isEmpty()) return;
    addExt(AcDbExtents(m_minimum + vector, m_maximum + vector));
}

void AcDbExtents::transformBy(const AcGeMatrix3d& matrix) {
    if (isEmpty()) return;
    const AcGePoint3d ends[2] = {m_minimum, m_maximum};
    AcDbExtents moved;
    for (unsigned int corner = 0; corner < 8; ++corner)
        moved.addPoint(matrix *
                       AcGePoint3d(ends[corner & 1].x, ends[corner >> 1 & 1].y, ends[corner >> 2].z));
    *this = moved;
}
