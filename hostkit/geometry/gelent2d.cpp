#include "gelent2d.h"

#include "geline2d.h"
#include "gelnsg2d.h"
#include "geray2d.h"
#include "linearkernel.hpp"

using AcGeKernel::LinearMeeting;
using AcGeKernel::Plane;

AcGeLinearEnt2d& AcGeLinearEnt2d::transformBy(const AcGeMatrix2d& matrix) {
    m_origin.transformBy(matrix);
    if (m_interval.isBounded()) {
        m_end.transformBy(matrix);
        m_step = m_end - m_origin;
        return *this;
    }
    m_step.transformBy(matrix).normalize();
    m_end = m_origin + m_step;
    return *this;
}

Adesk::Boolean AcGeLinearEnt2d::isEqualTo(const AcGeEntity2d& entity, const AcGeTol& tol) const {
    if (entity.type() != type()) return Adesk::kFalse;
    const auto& other = static_cast<const AcGeLinearEnt2d&>(entity);
    if (m_interval.isBounded())
        return m_origin.isEqualTo(other.m_origin, tol) && m_end.isEqualTo(other.m_end, tol);
    if (!m_step.isEqualTo(other.m_step, tol)) return Adesk::kFalse;
    if (m_interval.isBoundedBelow()) return m_origin.isEqualTo(other.m_origin, tol);
    return AcGeCurve2d::isOn(other.m_origin, tol);
}

AcGeVector2d AcGeLinearEnt2d::direction() const {
    if (!m_interval.isBounded()) return m_step;
    const double size = m_step.length();
    return size > 0.0 ? m_step / size : AcGeVector2d::kIdentity;
}

void AcGeLinearEnt2d::getLine(AcGeLine2d& line) const { line.set(m_origin, direction()); }

void AcGeLinearEnt2d::getPerpLine(const AcGePoint2d& point, AcGeLine2d& line) const {
    line.set(point, direction().perpVector());
}

Adesk::Boolean AcGeLinearEnt2d::isParallelTo(const AcGeLinearEnt2d& line, const AcGeTol& tol) const {
    return AcGeKernel::areParallel<Plane>(*this, line, tol);
}

Adesk::Boolean AcGeLinearEnt2d::isPerpendicularTo(const AcGeLinearEnt2d& line, const AcGeTol& tol) const {
    return direction().isPerpendicularTo(line.direction(), tol);
}

Adesk::Boolean AcGeLinearEnt2d::isColinearTo(const AcGeLinearEnt2d& line, const AcGeTol& tol) const {
    return AcGeKernel::areColinear<Plane>(*this, line, tol);
}

Adesk::Boolean AcGeLinearEnt2d::intersectWith(const AcGeLinearEnt2d& line, AcGePoint2d& point,
                                              const AcGeTol& tol) const {
    AcGeInterval run;
    return AcGeKernel::meetLinear<Plane>(*this, line, point, run, tol) == LinearMeeting::kPoint;
}

Adesk::Boolean AcGeLinearEnt2d::overlap(const AcGeLinearEnt2d& line, AcGeLinearEnt2d*& common,
                                        const AcGeTol& tol) const {
    common = nullptr;
    AcGePoint2d point;
    AcGeInterval run;
    if (AcGeKernel::meetLinear<Plane>(*this, line, point, run, tol) != LinearMeeting::kRun)
        return Adesk::kFalse;
    common = AcGeKernel::partOf<AcGeLine2d, AcGeRay2d, AcGeLineSeg2d>(*this, run);
    return Adesk::kTrue;
}

AcGePoint2d AcGeLinearEnt2d::evalPoint(double param) const {
    // Counted from the nearer end, so that both ends of a segment come out as they were given.
    if (param > 0.5 && m_interval.isBounded()) return m_end - m_step * (1.0 - param);
    return m_origin + m_step * param;
}

AcGePoint2d AcGeLinearEnt2d::evalPoint(double param, int numDeriv, AcGeVector2dArray& derivatives) const {
    derivatives.setLogicalLength(std::max(numDeriv, 0)).setAll(AcGeVector2d::kIdentity);
    if (numDeriv > 0) derivatives[0] = m_step;
    return evalPoint(param);
}

double AcGeLinearEnt2d::paramOfClosestPoint(const AcGePoint2d& point) const {
    return m_interval.clamp(paramOf(point, AcGeContext::gTol));
}

double AcGeLinearEnt2d::paramOf(const AcGePoint2d& point, const AcGeTol&) const {
    const double stepSquared = m_step.lengthSqrd();
    return stepSquared > 0.0 ? m_step.dotProduct(point - m_origin) / stepSquared : 0.0;
}

Adesk::Boolean AcGeLinearEnt2d::isLinear(AcGeLine2d& line, const AcGeTol& tol) const {
    if (m_step.isZeroLength(tol)) return Adesk::kFalse;
    getLine(line);
    return Adesk::kTrue;
}

double AcGeLinearEnt2d::length(double fromParam, double toParam, const AcGeTol&) const {
    return std::abs(toParam - fromParam) * m_step.length();
}

double AcGeLinearEnt2d::paramAtLength(double datumParam, double length, Adesk::Boolean forward,
                                      const AcGeTol&) const {
    const double size = m_step.length();
    if (!(size > 0.0)) return datumParam;
    return forward ? datumParam + length / size : datumParam - length / size;
}

Adesk::Boolean AcGeLinearEnt2d::area(double, double, double& value, const AcGeTol&) const {
    value = 0.0;
    return Adesk::kTrue;
}

AcGeBoundBlock2d AcGeLinearEnt2d::orthoBoundBlock() const { return AcGeKernel::blockOf<Plane>(*this); }

void AcGeLinearEnt2d::getSamplePoints(double fromParam, double toParam, double, AcGePoint2dArray& points,
                                      AcGeDoubleArray& params) const {
    points.removeAll();
    params.removeAll();
    for (double param : {fromParam, toParam}) {
        points.append(evalPoint(param));
        params.append(param);
    }
}
