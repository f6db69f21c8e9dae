#include "shownspline.h"

#include "dbspline.h"

#include <memory>

namespace hostkit {

AcGeNurbCurve3d shownCurve(const AcDbSpline& spline) {
    AcGeCurve3d* made = nullptr;
    (void)spline.getAcGeCurve(made);
    const std::unique_ptr<AcGeCurve3d> owned(made);
    if (const auto* exact = dynamic_cast<const AcGeNurbCurve3d*>(owned.get())) return *exact;
    AcGePoint3dArray points;
    AcGePoint3d point;
    for (int i = 0; i < spline.numFitPoints(); ++i)
        if (spline.getFitPointAt(i, point) == Acad::eOk) points.append(point);
    return AcGeNurbCurve3d(points, AcGeVector3d(), AcGeVector3d());
}

} // namespace hostkit
