#include "dbpolyline.h"

#include "curveintersection.h"
#include "fieldsetters.h"

HOSTKIT_KIT_CLASS(AcDbPolyline, AcDbCurve, L"LWPOLYLINE")

AcDbPolyline::AcDbPolyline(unsigned int vertexCount) { m_points.reserve(vertexCount); }

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& point, double bulge,
                                            double startWidth, double endWidth) {
    if (index > numVerts()) return Acad::eInvalidIndex;
    const bool holds = std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(bulge) &&
                       std::isfinite(startWidth) && std::isfinite(endWidth);
    if (!holds) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    if (bulge != 0.0 && m_bulges.empty()) m_bulges.resize(m_points.size());
    const double start = startWidth < 0.0 ? m_constantWidth : startWidth;
    const double end = endWidth < 0.0 ? m_constantWidth : endWidth;
    const bool hasOwnWidths = start != m_constantWidth || end != m_constantWidth;
    if (hasOwnWidths && m_widths.empty())
        m_widths.resize(m_points.size(), {m_constantWidth, m_constantWidth});
    const auto place = static_cast<std::ptrdiff_t>(index);
    const bool keepBulges = bulge != 0.0 || !m_bulges.empty();
    const bool keepWidths = hasOwnWidths || !m_widths.empty();
    m_points.insert(m_points.begin() + place, point);
    if (keepBulges) m_bulges.insert(m_bulges.begin() + place, bulge);
    if (keepWidths) m_widths.insert(m_widths.begin() + place, {start, end});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const auto place = static_cast<std::ptrdiff_t>(index);
    m_points.erase(m_points.begin() + place);
    if (!m_bulges.empty()) m_bulges.erase(m_bulges.begin() + place);
    if (!m_widths.empty()) m_widths.erase(m_widths.begin() + place);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint2d& point) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    point = m_points[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& point) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    point = hostkit::toWorld(m_normal, AcGePoint3d(m_points[index].x, m_points[index].y, m_elevation));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& point) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    return hostkit::assignIf(std::isfinite(point.x) && std::isfinite(point.y), *this, m_points[index], point);
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    bulge = m_bulges.empty() ? 0.0 : m_bulges[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    if (!std::isfinite(bulge)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    if (bulge != 0.0 && m_bulges.empty()) m_bulges.resize(m_points.size());
    if (!m_bulges.empty()) m_bulges[index] = bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    startWidth = m_widths.empty() ? m_constantWidth : m_widths[index].first;
    endWidth = m_widths.empty() ? m_constantWidth : m_widths[index].second;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double startWidth, double endWidth) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    if (!(startWidth >= 0.0) || !(endWidth >= 0.0) || std::isinf(startWidth) || std::isinf(endWidth))
        return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    if (m_widths.empty()) m_widths.resize(m_points.size(), {m_constantWidth, m_constantWidth});
    m_widths[index] = {startWidth, endWidth};
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
    if (m_widths.empty()) {
        width = m_constantWidth;
        return Acad::eOk;
    }
    const double first = m_widths.front().first;
    for (const auto& [start, end] : m_widths)
        if (start != first || end != first) return Acad::eInvalidInput;
    width = first;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
    const Acad::ErrorStatus status = hostkit::setNonNegativeField(*this, m_constantWidth, width);
    if (status == Acad::eOk) m_widths.clear();
    return status;
}

bool AcDbPolyline::hasWidth() const {
    if (m_widths.empty()) return m_constantWidth != 0.0;
    for (const auto& [start, end] : m_widths)
        if (start != 0.0 || end != 0.0) return true;
    return false;
}

bool AcDbPolyline::isOnlyLines() const {
    for (const double bulge : m_bulges)
        if (bulge != 0.0) return false;
    return true;
}

AcDbPolyline::SegType AcDbPolyline::segType(unsigned int index) const {
    if (index >= numVerts()) return kEmpty;
    hostkit::VertexBuffer unused;
    const hostkit::PolylineShape own = shape(unused);
    if (index >= own.segmentCount()) return kPoint;
    const AcGePoint3d start = own.vertex(index);
    const AcGePoint3d end = own.vertex(index + 1 < numVerts() ? index + 1 : 0);
    if (start.isEqualTo(end)) return kCoincident;
    const double magnitude = std::max(start.largestCoordinate(), end.largestCoordinate());
    return hostkit::isArcSegment(start.distanceTo(end), own.bulge(index), magnitude) ? kArc : kLine;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned int index, AcGeLineSeg2d& segment) const {
    const SegType type = segType(index);
    if (type == kEmpty) return Acad::eInvalidIndex;
    if (type != kLine) return Acad::eNotApplicable;
    segment.set(m_points[index], m_points[index + 1 < numVerts() ? index + 1 : 0]);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned int index, AcGeLineSeg3d& segment) const {
    const SegType type = segType(index);
    if (type == kEmpty) return Acad::eInvalidIndex;
    if (type != kLine) return Acad::eNotApplicable;
    hostkit::VertexBuffer unused;
    const hostkit::PolylineShape own = shape(unused);
    segment.set(own.worldVertex(index), own.worldVertex(index + 1 < numVerts() ? index + 1 : 0));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned int index, AcGeCircArc2d& arc) const {
    const SegType type = segType(index);
    if (type == kEmpty) return Acad::eInvalidIndex;
    if (type != kArc) return Acad::eNotApplicable;
    const AcGePoint2d start = m_points[index];
    const AcGePoint2d end = m_points[index + 1 < numVerts() ? index + 1 : 0];
    const double bulge = m_bulges[index];
    const AcGeVector2d chord = end - start;
    const AcGeVector2d toCenter = chord * 0.5 + chord.perpVector() * ((1.0 - bulge * bulge) / (4.0 * bulge));
    arc.set(start + toCenter, toCenter.length(), 0.0, 4.0 * std::atan(std::abs(bulge)), -toCenter,
            bulge < 0.0);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned int index, AcGeCircArc3d& arc) const {
    const SegType type = segType(index);
    if (type == kEmpty) return Acad::eInvalidIndex;
    if (type != kArc) return Acad::eNotApplicable;
    hostkit::VertexBuffer unused;
    return shape(unused).arcSegment(index, arc) ? Acad::eOk : Acad::eNotApplicable;
}

Adesk::Boolean AcDbPolyline::onSegAt(unsigned int index, const AcGePoint2d& point, double& fraction) const {
    const SegType type = segType(index);
    if (type != kLine && type != kArc) return Adesk::kFalse;
    const AcGePoint2d ends[2] = {m_points[index], m_points[index + 1 < numVerts() ? index + 1 : 0]};
    const double bulges[2] = {m_bulges.empty() ? 0.0 : m_bulges[index], 0.0};
    const hostkit::PolylineShape segment(ends, bulges, 2, false, AcGeVector3d::kZAxis, 0.0);
    return segment.parameterAt(AcGePoint3d(point.x, point.y, 0.0), fraction) == Acad::eOk;
}

void AcDbPolyline::setClosed(Adesk::Boolean closed) { (void)hostkit::assignField(*this, m_closed, closed); }

void AcDbPolyline::reset(Adesk::Boolean reuse, unsigned int vertexCount) {
    if (assertWriteEnabled() != Acad::eOk) return;
    const std::size_t kept = reuse ? std::min<std::size_t>(vertexCount, m_points.size()) : 0;
    m_points.resize(kept);
    if (!m_bulges.empty()) m_bulges.resize(kept);
    if (!m_widths.empty()) m_widths.resize(kept);
    m_points.reserve(vertexCount);
}

Acad::ErrorStatus AcDbPolyline::setElevation(double elevation) {
    return hostkit::setFiniteField(*this, m_elevation, elevation);
}

Acad::ErrorStatus AcDbPolyline::setThickness(double thickness) {
    return hostkit::setFiniteField(*this, m_thickness, thickness);
}

Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& normal) {
    return hostkit::setDirectionField(*this, m_normal, normal);
}

void AcDbPolyline::setPlinegen(bool plinegen) { (void)hostkit::assignField(*this, m_plinegen, plinegen); }

Adesk::Boolean AcDbPolyline::isClosed() const { return m_closed; }

hostkit::PolylineShape AcDbPolyline::shape(hostkit::VertexBuffer&) const {
    return {m_points.data(), m_bulges.empty() ? nullptr : m_bulges.data(),
            m_points.size(), m_closed,
            m_normal,        m_elevation};
}

AcDbCurve* AcDbPolyline::piece(double from, double to) const {
    hostkit::VertexBuffer unused;
    auto result = std::make_unique<AcDbPolyline>();
    result->m_normal = m_normal;
    result->m_elevation = m_elevation;
    result->m_thickness = m_thickness;
    result->m_constantWidth = m_constantWidth;
    result->m_plinegen = m_plinegen;
    for (const hostkit::PartVertex& vertex : shape(unused).part(from, to)) {
        double start = m_constantWidth;
        double end = m_constantWidth;
        (void)getWidthsAt(vertex.segment, start, end);
        const double growth = end - start;
        (void)result->addVertexAt(result->numVerts(), AcGePoint2d(vertex.point.x, vertex.point.y),
                                  vertex.bulge, start + growth * vertex.fromFraction,
                                  start + growth * vertex.toFraction);
    }
    return result.release();
}

Acad::ErrorStatus AcDbPolyline::reverseCurve() {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    // A closed polyline keeps its first vertex, and its closing segment becomes the first one; an open one
    // has no segment behind its last vertex, whose bulge stays where it is.
    const std::ptrdiff_t fixedPoints = m_closed && !m_points.empty() ? 1 : 0;
    const std::ptrdiff_t fixedSegments = m_closed ? 0 : 1;
    std::reverse(m_points.begin() + fixedPoints, m_points.end());
    if (!m_bulges.empty()) {
        std::reverse(m_bulges.begin(), m_bulges.end() - fixedSegments);
        for (double& bulge : m_bulges) bulge = -bulge;
    }
    if (!m_widths.empty()) {
        std::reverse(m_widths.begin(), m_widths.end() - fixedSegments);
        for (auto& [start, end] : m_widths) std::swap(start, end);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    hostkit::PlaneMove move;
    Acad::ErrorStatus status = hostkit::movePlane(m_normal, m_elevation, matrix, !isOnlyLines(), move);
    if (status == Acad::eOk) status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    for (AcGePoint2d& point : m_points) {
        const AcGePoint3d moved = move.map * AcGePoint3d(point.x, point.y, m_elevation);
        point.set(moved.x, moved.y);
    }
    for (auto& [start, end] : m_widths) {
        start *= move.scale;
        end *= move.scale;
    }
    if (move.isMirror)
        for (double& bulge : m_bulges) bulge = -bulge;
    m_constantWidth *= move.scale;
    m_thickness *= move.heightScale;
    m_normal = move.normal;
    m_elevation = move.elevation;
    return Acad::eOk;
}

void AcDbPolyline::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }
