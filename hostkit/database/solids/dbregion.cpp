#include "dbregion.h"

#include "curveloops.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbline.h"
#include "geplane.h"
#include "modelercontent.h"

#include <cmath>

using namespace hostkit;
using modeler::Shape;
using modeler::ShapeCurve;

HOSTKIT_KIT_CLASS(AcDbRegion, AcDbModelerGeometry, L"REGION")

Acad::ErrorStatus AcDbRegion::createFromCurves(const AcDbVoidPtrArray& curves, AcDbVoidPtrArray& regions) {
    std::vector<const AcDbCurve*> given;
    for (void* const each : curves) {
        const auto* const curve = AcDbCurve::cast(static_cast<AcRxObject*>(each));
        if (!curve) return Acad::eInvalidInput;
        given.push_back(curve);
    }
    std::vector<Shape> sheets = sheetsOfCurves(given);
    for (Shape& sheet : sheets) {
        auto* const region = new AcDbRegion;
        region->m_content = std::make_shared<const ModelerContent>(std::move(sheet));
        regions.append(region);
    }
    return sheets.empty() ? Acad::eInvalidInput : Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::getArea(double& area) const {
    if (!m_content) return Acad::eNullPtr;
    const Shape* const shape = m_content->shape();
    if (!shape) return Acad::eNotApplicable;
    double sum = 0.0;
    for (const Shape::Face& face : shape->faces) sum += areaVectorOf(*shape, face).length();
    area = sum;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::getPerimeter(double& length) const {
    AcDbVoidPtrArray parts;
    const Acad::ErrorStatus status = explode(parts);
    if (status != Acad::eOk) return status;
    double sum = 0.0;
    for (void* const part : parts) {
        const std::unique_ptr<AcDbCurve> curve(static_cast<AcDbCurve*>(part));
        double end = 0.0, along = 0.0;
        if (curve->getEndParam(end) == Acad::eOk && curve->getDistAtParam(end, along) == Acad::eOk)
            sum += along;
    }
    length = sum;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::getNormal(AcGeVector3d& normal) const {
    if (!m_content) return Acad::eNullPtr;
    const Shape* const shape = m_content->shape();
    if (!shape) return Acad::eNotApplicable;
    const Shape::Face& face = shape->faces.front();
    normal = face.isReversed ? -face.surface.axis : face.surface.axis;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::getPlane(AcGePlane& plane, AcDb::Planarity& type) const {
    AcGeVector3d normal;
    const Acad::ErrorStatus status = getNormal(normal);
    if (status != Acad::eOk) return status;
    plane = AcGePlane(m_content->shape()->faces.front().surface.origin, normal);
    type = AcDb::kPlanar;
    return Acad::eOk;
}

namespace {

AcDbCurve* curveOf(const Shape& shape, const Shape::Edge& edge) {
    const ShapeCurve& curve = edge.curve;
    if (curve.kind == ShapeCurve::Kind::line)
        return new AcDbLine(shape.vertices[edge.start], shape.vertices[edge.end]);
    const bool isWhole = edge.start == edge.end;
    constexpr double round = 1e-12;
    if (std::abs(curve.ratio - 1.0) > round)
        return isWhole ? new AcDbEllipse(curve.origin, curve.direction, curve.major, curve.ratio) : [&] {
            auto* const ellipse = new AcDbEllipse(curve.origin, curve.direction, curve.major, curve.ratio);
            (void)ellipse->setStartParam(edge.from);
            (void)ellipse->setEndParam(edge.to);
            return ellipse;
        }();
    const double radius = curve.major.length();
    if (isWhole) return new AcDbCircle(curve.origin, curve.direction, radius);
    AcGeVector3d x, y;
    AcGe::arbitraryAxes(curve.direction, x, y);
    const double turn = std::atan2(curve.major.dotProduct(y), curve.major.dotProduct(x));
    return new AcDbArc(curve.origin, curve.direction, radius, edge.from + turn, edge.to + turn);
}

} // namespace

Acad::ErrorStatus AcDbRegion::explode(AcDbVoidPtrArray& parts) const {
    if (!m_content) return Acad::eNullPtr;
    const Shape* const shape = m_content->shape();
    if (!shape) return Acad::eNotApplicable;
    for (const Shape::Edge& edge : shape->edges) {
        if (edge.curve.kind == ShapeCurve::Kind::none) continue;
        AcDbCurve* const part = curveOf(*shape, edge);
        (void)part->setPropertiesFrom(this);
        parts.append(part);
    }
    return Acad::eOk;
}
