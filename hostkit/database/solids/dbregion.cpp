#include "dbregion.h"

#include "amerror.h"
#include "curveloops.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbline.h"
#include "geplane.h"
#include "modelercontent.h"
#include "raisedface.h"

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

/// All faces raised by 1 along the direction, which is their normal or its opposite.
AModeler::Body raisedRegion(const ModelerContent& content, const AcGeVector3d& direction) {
    const modeler::Polyhedron& sheet = *content.facets();
    AModeler::Body whole;
    for (const modeler::Polyhedron::Face& face : sheet.faces) {
        modeler::Polyhedron one = sheet;
        one.faces.assign(1, face);
        const double height = face.normal.dotProduct(direction) > 0.0 ? 1.0 : -1.0;
        const std::optional<AModeler::Body> body = modeler::raisedFace(one, *content.shape(), height, 0.0);
        if (body) whole = whole + *body;
    }
    return whole;
}

/// The faces of the body's top, moved down by 1.
Shape topOf(const AModeler::Body& body, const AcGeVector3d& direction) {
    modeler::Polyhedron sheet = body.toPolyhedron();
    std::erase_if(sheet.faces, [&](const modeler::Polyhedron::Face& face) {
        return face.normal.dotProduct(direction) < 0.5;
    });
    modeler::Polyhedron top;
    for (const AcGePoint3d& point : sheet.points) top.points.push_back(point - direction);
    for (modeler::Polyhedron::Face face : sheet.faces) {
        const auto first = static_cast<std::ptrdiff_t>(sheet.loopStarts[face.firstLoop]);
        const auto last = static_cast<std::ptrdiff_t>(sheet.loopStarts[face.firstLoop + face.loopCount]);
        const modeler::Polyhedron::Index shift =
            static_cast<modeler::Polyhedron::Index>(top.corners.size()) - sheet.loopStarts[face.firstLoop];
        const modeler::Polyhedron::Index loop = face.firstLoop;
        face.firstLoop = top.loopCount();
        for (modeler::Polyhedron::Index each = 1; each <= face.loopCount; ++each)
            top.loopStarts.push_back(sheet.loopStarts[loop + each] + shift);
        top.corners.insert(top.corners.end(), sheet.corners.begin() + first, sheet.corners.begin() + last);
        face.distance -= 1.0;
        top.faces.push_back(face);
    }
    Shape shape = modeler::shapeOf(top);
    for (Shape::Face& face : shape.faces) face.isDouble = true;
    shape.shellLumps.assign(shape.shellLumps.size(), 0);
    return shape;
}

} // namespace

Acad::ErrorStatus AcDbRegion::booleanOper(AcDb::BoolOperType operation, AcDbRegion* other) {
    if (!other || other == this) return Acad::eInvalidInput;
    if (isNull() || other->isNull()) return Acad::eNullPtr;
    if (!m_content->facets() || !other->m_content->facets()) return Acad::eNotApplicable;
    AcGePlane mine, its;
    AcDb::Planarity type{};
    (void)getPlane(mine, type);
    (void)other->getPlane(its, type);
    const AcGeVector3d normal = mine.normal();
    constexpr double parallel = 1e-9;
    if (normal.crossProduct(its.normal()).length() > parallel ||
        std::abs(normal.dotProduct(its.pointOnPlane() - mine.pointOnPlane())) > AModeler::gEpsAbs)
        return Acad::eInvalidInput;
    Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) status = other->assertWriteEnabled();
    if (status != Acad::eOk) return status;
    try {
        const AModeler::Body result = raisedRegion(*m_content, normal)
                                          .boolOper(operation == AcDb::kBoolUnite      ? AModeler::kUnion
                                                    : operation == AcDb::kBoolSubtract ? AModeler::kSubtract
                                                                                       : AModeler::kIntersect,
                                                    raisedRegion(*other->m_content, normal));
        m_content = result.isNull() ? nullptr : std::make_shared<const ModelerContent>(topOf(result, normal));
    } catch (const AModeler::Error&) {
        return Acad::eDegenerateGeometry;
    }
    other->m_content = nullptr;
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
