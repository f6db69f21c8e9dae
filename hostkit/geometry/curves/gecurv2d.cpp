#include "gecurv2d.h"

#include "curvekernel.hpp"

using AcGeKernel::Plane;

Adesk::Boolean AcGeCurve2d::area(double startParam, double endParam, double& value, const AcGeTol&) const {
    value = AcGeKernel::areaAlong<Plane>(*this, startParam, endParam);
    return Adesk::kTrue;
}
