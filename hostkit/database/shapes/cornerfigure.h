// Flat figures of four corners: what solids and traces do alike; leaves out their classes.
#pragma once

#include "dbent.h"

namespace hostkit {

/// The fields of such a figure; corners are in the coordinates of the normal.
struct CornerFigure {
    AcGePoint3d (&corners)[4];
    AcGeVector3d& normal;
    double& thickness;

    /// The corners stay where they are in the world.
    Acad::ErrorStatus setNormal(AcDbObject& owner, const AcGeVector3d& newNormal);
    /// Any matrix that is not singular: corners stay corners.
    Acad::ErrorStatus transformBy(AcDbObject& owner, const AcGeMatrix3d& matrix);
};

/// The box of the corners in the world.
void setToCorners(AcDbExtents& extents, const AcGePoint3d (&corners)[4], const AcGeVector3d& normal);

} // namespace hostkit
