#include "dbmodelergeometry.h"

#include "amerror.h"
#include "bodyediting.h"
#include "modelercontent.h"

#include <array>

using namespace hostkit;

HOSTKIT_KIT_ABSTRACT_CLASS(AcDbModelerGeometry, AcDbEntity)

std::wstring AcDbModelerGeometry::bodyFault() const {
    if (!m_content) return {};
    const std::string& fault = m_content->fault();
    return {fault.begin(), fault.end()};
}

Acad::ErrorStatus AcDbModelerGeometry::findBody(const AModeler::Body*& body) const {
    if (!m_content) return Acad::eNullPtr;
    body = m_content->body();
    return body ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbModelerGeometry::getBody(AModeler::Body& body) const {
    const AModeler::Body* found = nullptr;
    const Acad::ErrorStatus status = findBody(found);
    if (status == Acad::eOk) body = *found;
    return status;
}

Acad::ErrorStatus AcDbModelerGeometry::setContent(ModelerContentPtr content) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_content = std::move(content);
    return status;
}

Acad::ErrorStatus AcDbModelerGeometry::setBody(const AModeler::Body& body) {
    return setContent(body.isNull() ? nullptr : std::make_shared<const ModelerContent>(body));
}

Acad::ErrorStatus AcDbModelerGeometry::getArea(double& area) const {
    if (!m_content) return Acad::eNullPtr;
    if (!m_content->facets()) return Acad::eNotApplicable;
    area = m_content->area();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbModelerGeometry::getGeomExtents(AcDbExtents& extents) const {
    const AcDbExtents box = m_content ? m_content->extents() : AcDbExtents();
    if (box.isEmpty()) return Acad::eInvalidExtents;
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbModelerGeometry::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!m_content) return assertWriteEnabled();
    if (const modeler::Shape* const shape = m_content->shape()) {
        modeler::Shape moved = *shape;
        if (!modeler::transformShape(moved, matrix)) return Acad::eCannotScaleNonUniformly;
        const AModeler::Body* const body = m_content->facetsShareSurfaces() ? m_content->body() : nullptr;
        if (!body) return setContent(std::make_shared<const ModelerContent>(std::move(moved)));
        AModeler::Body copy = *body;
        try {
            copy.transform(matrix);
        } catch (const AModeler::Error&) {
            return Acad::eInvalidInput;
        }
        return setBody(copy);
    }
    std::optional<std::string> data = modeler::movedBodyData(m_content->data(), matrix);
    if (!data) return Acad::eNotApplicable;
    return setContent(std::make_shared<const ModelerContent>(std::move(*data)));
}

// --- Snap points -------------------------------------------------------------------------------------------

namespace {

using modeler::Shape;
using modeler::ShapeCurve;

void appendEdgePoints(const Shape& shape, const Shape::Edge& edge, AcDb::OsnapMode mode,
                      AcGePoint3dArray& points) {
    if (edge.curve.kind == ShapeCurve::Kind::none) return;
    const bool isArc = edge.curve.kind == ShapeCurve::Kind::ellipse;
    if (mode == AcDb::kOsModeEnd) {
        points.append(shape.vertices[edge.start]);
        if (edge.end != edge.start) points.append(shape.vertices[edge.end]);
    } else if (mode == AcDb::kOsModeMid) {
        if (edge.start != edge.end) points.append(edge.curve.at((edge.from + edge.to) / 2.0));
    } else if (mode == AcDb::kOsModeCen && isArc) {
        points.append(edge.curve.origin);
    }
}

AcGePoint3d nearestOnEdge(const Shape::Edge& edge, const AcGePoint3d& picked) {
    double t = edge.curve.parameterOf(picked);
    constexpr double turn = 6.28318530717958647692;
    if (edge.curve.kind == ShapeCurve::Kind::ellipse)
        while (t < edge.from) t += turn;
    return edge.curve.at(std::min(std::max(t, edge.from), edge.to));
}

} // namespace

Acad::ErrorStatus AcDbModelerGeometry::getOsnapPoints(AcDb::OsnapMode mode, Adesk::IntPtr,
                                                      const AcGePoint3d& picked, const AcGePoint3d&,
                                                      const AcGeMatrix3d&, AcGePoint3dArray& points,
                                                      AcDbIntArray&) const {
    if (!m_content) return Acad::eNullPtr;
    const Shape* const shape = m_content->shape();
    if (!shape) return Acad::eNotApplicable;
    AcGePoint3dArray found;
    for (const Shape::Edge& edge : shape->edges) {
        if (mode == AcDb::kOsModeNear && edge.curve.kind != ShapeCurve::Kind::none)
            found.append(nearestOnEdge(edge, picked));
        else
            appendEdgePoints(*shape, edge, mode, found);
    }
    if (mode == AcDb::kOsModeNear && !found.isEmpty()) {
        const AcGePoint3d nearest =
            *std::min_element(found.begin(), found.end(), [&](const AcGePoint3d& a, const AcGePoint3d& b) {
                return a.distanceTo(picked) < b.distanceTo(picked);
            });
        found.removeAll();
        found.append(nearest);
    }
    points.append(found);
    return Acad::eOk;
}
