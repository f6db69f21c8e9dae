#include "dbhatch.h"

#include "dbline.h"
#include "dbpoint.h"
#include "fieldsetters.h"
#include "flatmotion.h"
#include "hatchcurves.h"
#include "hatchlines.h"
#include "hatchpatterns.h"

#include "casefold.h"
#include "handover.h"

#include <algorithm>
#include <cmath>

HOSTKIT_KIT_CLASS(AcDbHatch, AcDbEntity, L"HATCH")

using hostkit::HatchEdge;
using hostkit::HatchLoop;
using hostkit::LoopCurves;

// Plain fields.

Acad::ErrorStatus AcDbHatch::setElevation(double elevation) {
    return hostkit::setFiniteField(*this, m_elevation, elevation);
}

Acad::ErrorStatus AcDbHatch::setNormal(const AcGeVector3d& normal) {
    return hostkit::setDirectionField(*this, m_normal, normal);
}

Acad::ErrorStatus AcDbHatch::setAssociative(bool associative) {
    return hostkit::assignField(*this, m_associative, associative);
}

Acad::ErrorStatus AcDbHatch::setHatchStyle(HatchStyle style) {
    return hostkit::assignIf(style >= kNormal && style <= kIgnore, *this, m_style,
                             static_cast<Adesk::Int16>(style));
}

Acad::ErrorStatus AcDbHatch::setPattern(HatchPatternType type, const wchar_t* name) {
    if (!name || !*name || type < kUserDefined || type > kCustomDefined) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_patternType = static_cast<Adesk::Int16>(type);
    m_patternName = name;
    m_solidFill = hostkit::equalFolded(name, L"SOLID");
    const hostkit::PredefinedPattern* const known =
        type == kPreDefined ? hostkit::predefinedPattern(name) : nullptr;
    if (known) m_patternLines = hostkit::definitionLines(*known, m_patternAngle, m_patternScale);
    if (type == kUserDefined)
        m_patternLines = hostkit::userDefinedLines(m_patternAngle, m_patternScale, m_patternDouble);
    if (m_solidFill) m_patternLines.clear();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setPatternAngle(double angle) {
    return hostkit::setFiniteField(*this, m_patternAngle, angle);
}

Acad::ErrorStatus AcDbHatch::setPatternScale(double scale) {
    return hostkit::setPositiveField(*this, m_patternScale, scale);
}

Acad::ErrorStatus AcDbHatch::setPatternDouble(bool isDouble) {
    return hostkit::assignField(*this, m_patternDouble, isDouble);
}

Acad::ErrorStatus AcDbHatch::getPatternDefinitionAt(int index, double& angle, double& baseX, double& baseY,
                                                    double& offsetX, double& offsetY,
                                                    AcGeDoubleArray& dashes) const {
    if (index < 0 || index >= numPatternDefinitions()) return Acad::eInvalidIndex;
    const hostkit::HatchPatternLine& line = m_patternLines[static_cast<std::size_t>(index)];
    angle = line.angle;
    baseX = line.base.x;
    baseY = line.base.y;
    offsetX = line.offset.x;
    offsetY = line.offset.y;
    dashes.removeAll();
    for (const double dash : line.dashes) dashes.append(dash);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setPatternDefinitions(std::vector<hostkit::HatchPatternLine> lines) {
    return hostkit::assignField(*this, m_patternLines, std::move(lines));
}

// Loops.

namespace {

bool isIndex(int index, const std::vector<HatchLoop>& loops) {
    return index >= 0 && static_cast<std::size_t>(index) < loops.size();
}

int edgeTypeOf(const AcGeCurve2d& curve) {
    switch (curve.type()) {
    case AcGe::kLineSeg2d:
        return AcDbHatch::kLine;
    case AcGe::kCircArc2d:
        return AcDbHatch::kCirArc;
    case AcGe::kEllipArc2d:
        return AcDbHatch::kEllArc;
    default:
        return AcDbHatch::kSpline;
    }
}

} // namespace

Adesk::Int32 AcDbHatch::loopTypeAt(int index) const {
    return isIndex(index, m_loops) ? m_loops[static_cast<std::size_t>(index)].type : 0;
}

Acad::ErrorStatus AcDbHatch::getLoopAt(int index, Adesk::Int32& type, AcGeVoidPointerArray& edges,
                                       AcArray<int>& edgeTypes) const {
    if (!isIndex(index, m_loops)) return Acad::eInvalidIndex;
    const HatchLoop& loop = m_loops[static_cast<std::size_t>(index)];
    type = loop.type;
    edges.removeAll();
    edgeTypes.removeAll();
    for (std::unique_ptr<AcGeCurve2d>& curve : hostkit::curvesOf(loop)) {
        edgeTypes.append(edgeTypeOf(*curve));
        hostkit::handOver(edges, curve);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getLoopAt(int index, Adesk::Int32& type, AcGePoint2dArray& vertices,
                                       AcGeDoubleArray& bulges) const {
    if (!isIndex(index, m_loops)) return Acad::eInvalidIndex;
    const HatchLoop& loop = m_loops[static_cast<std::size_t>(index)];
    if (!(loop.type & kPolyline)) return Acad::eNotApplicable;
    type = loop.type;
    vertices.removeAll();
    bulges.removeAll();
    for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
        vertices.append(loop.vertices[i]);
        bulges.append(loop.hasBulges ? loop.bulges[i] : 0.0);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::appendLoop(Adesk::Int32 type, const AcGePoint2dArray& vertices,
                                        const AcGeDoubleArray& bulges) {
    if (!bulges.isEmpty() && bulges.length() != vertices.length()) return Acad::eInvalidInput;
    HatchLoop loop;
    loop.type = type | kPolyline;
    for (int i = 0; i < vertices.length(); ++i) {
        const double bulge = bulges.isEmpty() ? 0.0 : bulges[i];
        if (!std::isfinite(vertices[i].x + vertices[i].y) || !std::isfinite(bulge))
            return Acad::eInvalidInput;
        loop.vertices.push_back(vertices[i]);
        loop.bulges.push_back(bulge);
        loop.hasBulges = loop.hasBulges || bulge != 0.0;
    }
    if (loop.vertices.size() > 2 && loop.vertices.front() == loop.vertices.back()) {
        loop.vertices.pop_back();
        loop.bulges.pop_back();
    }
    if (!loop.hasBulges) loop.bulges.clear();
    if (loop.vertices.size() < 2) return Acad::eInvalidInput;
    return appendLoop(std::move(loop));
}

Acad::ErrorStatus AcDbHatch::appendLoop(Adesk::Int32 type, const AcGeVoidPointerArray& edges,
                                        const AcArray<int>& edgeTypes) {
    if (edges.isEmpty() || edges.length() != edgeTypes.length()) return Acad::eInvalidInput;
    HatchLoop loop;
    loop.type = type & ~kPolyline;
    loop.edges.reserve(static_cast<std::size_t>(edges.length()));
    for (int i = 0; i < edges.length(); ++i) {
        const auto* curve = static_cast<const AcGeCurve2d*>(edges[i]);
        HatchEdge& edge = loop.edges.emplace_back();
        if (!curve || !hostkit::edgeOf(*curve, edge) || edge.kind != edgeTypes[i]) return Acad::eInvalidInput;
    }
    return appendLoop(std::move(loop));
}

Acad::ErrorStatus AcDbHatch::appendLoop(HatchLoop&& loop) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_loops.push_back(std::move(loop));
    return status;
}

Acad::ErrorStatus AcDbHatch::removeLoopAt(int index) {
    if (!isIndex(index, m_loops)) return Acad::eInvalidIndex;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_loops.erase(m_loops.begin() + index);
    return status;
}

AcDbObjectIdArray AcDbHatch::getAssocObjIds() const {
    AcDbObjectIdArray ids;
    for (const HatchLoop& loop : m_loops)
        for (const AcDbObjectId id : loop.sources)
            if (!ids.contains(id)) ids.append(id);
    return ids;
}

// Geometry.

hostkit::HatchArea AcDbHatch::filledArea(double deviation) const {
    return hostkit::HatchArea(m_loops, m_style, deviation);
}

Acad::ErrorStatus AcDbHatch::getArea(double& area) const {
    for (const HatchLoop& loop : m_loops)
        if ((loop.type & kNotClosed) || !loop.isClosed) return Acad::eNotApplicable;
    area = filledArea().area();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::evaluateHatch(bool underestimateNumLines) const {
    const hostkit::HatchArea area = filledArea();
    if (area.isEmpty()) return Acad::eDegenerateGeometry;
    if (m_solidFill) return Acad::eOk;
    const Acad::ErrorStatus status =
        hostkit::forEachStroke(area, m_patternLines, hostkit::kMostHatchStrokes,
                               [&](const hostkit::HatchStroke&) { return underestimateNumLines; });
    if (status != Acad::eOk || underestimateNumLines) return status;
    const double estimate = hostkit::estimatedStrokes(area, m_patternLines);
    return estimate <= hostkit::kMostHatchStrokes ? Acad::eOk : Acad::eOutOfRange;
}

Acad::ErrorStatus AcDbHatch::explode(AcDbVoidPtrArray& parts) const {
    if (m_solidFill) return Acad::eNotApplicable;
    const hostkit::HatchArea area = filledArea();
    if (area.isEmpty()) return Acad::eDegenerateGeometry;
    const AcGeMatrix3d toWorld = hostkit::arbitraryAxisSystem(m_normal);
    std::vector<std::unique_ptr<AcDbEntity>> made;
    const auto inWorld = [&](const AcGePoint2d& point) {
        return toWorld * AcGePoint3d(point.x, point.y, m_elevation);
    };
    const auto add = [&](const hostkit::HatchStroke& stroke) {
        if (stroke.isDot())
            made.push_back(std::make_unique<AcDbPoint>(inWorld(stroke.from)));
        else
            made.push_back(std::make_unique<AcDbLine>(inWorld(stroke.from), inWorld(stroke.to)));
        (void)made.back()->setPropertiesFrom(this);
        return true;
    };
    const Acad::ErrorStatus status =
        hostkit::forEachStroke(area, m_patternLines, hostkit::kMostHatchStrokes, add);
    if (status != Acad::eOk) return status;
    for (std::unique_ptr<AcDbEntity>& part : made) hostkit::handOver(parts, part);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getGeomExtents(AcDbExtents& extents) const {
    AcGeVector3d xAxis, yAxis;
    AcGe::arbitraryAxes(m_normal, xAxis, yAxis);
    LoopCurves curves;
    for (const HatchLoop& loop : m_loops)
        for (std::unique_ptr<AcGeCurve2d>& curve : hostkit::curvesOf(loop))
            curves.push_back(std::move(curve));
    if (curves.empty()) return Acad::eInvalidExtents;
    AcGePoint3d minimum, maximum;
    for (unsigned int i = 0; i < 3; ++i) {
        const AcGeVector2d direction(xAxis[i], yAxis[i]);
        const double height = m_normal[i] * m_elevation;
        maximum[i] = height + hostkit::reachAlong(curves, direction);
        minimum[i] = height - hostkit::reachAlong(curves, -direction);
    }
    return extents.set(minimum, maximum);
}

namespace {

/// Moves a hatch' plane geometry; the motion keeps shapes wherever there is anything round.
class LoopMotion {
public:
    LoopMotion(const hostkit::FlatMotion& motion, double elevation)
        : m_motion(motion)
        , m_elevation(elevation) {}

    void move(AcGePoint2d& point) const {
        const AcGePoint3d moved = m_motion.point({point.x, point.y, m_elevation});
        point.set(moved.x, moved.y);
    }
    void move(std::vector<AcGePoint2d>& points) const {
        for (AcGePoint2d& point : points) move(point);
    }
    void move(HatchLoop& loop) const {
        move(loop.vertices);
        if (m_motion.isMirror())
            for (double& bulge : loop.bulges) bulge = -bulge;
        for (HatchEdge& edge : loop.edges) move(edge);
    }
    void move(hostkit::HatchPatternLine& line) const {
        move(line.base);
        line.angle = m_motion.angle(line.angle);
        line.offset = m_motion.vector(line.offset);
        for (double& dash : line.dashes) dash *= m_motion.scale();
    }

private:
    void move(HatchEdge& edge) const {
        move(edge.start);
        move(edge.end);
        move(edge.center);
        move(edge.controlPoints);
        move(edge.fitPoints);
        edge.startTangent = m_motion.vector(edge.startTangent);
        edge.endTangent = m_motion.vector(edge.endTangent);
        edge.majorAxis = m_motion.vector(edge.majorAxis);
        edge.given.reset();
        edge.radius *= m_motion.scale();
        if (edge.kind == HatchEdge::kCircArc && !m_motion.isShift()) turnArc(edge);
        if (m_motion.isMirror()) edge.isCounterClockwise = !edge.isCounterClockwise;
    }
    // Angles of a circular arc count from the x axis, against the clock or with it as the arc runs.
    void turnArc(HatchEdge& edge) const {
        const double sweep = edge.endAngle - edge.startAngle;
        const double start = m_motion.angle(edge.isCounterClockwise ? edge.startAngle : -edge.startAngle);
        const bool runsCounterClockwise = edge.isCounterClockwise != m_motion.isMirror();
        edge.startAngle = runsCounterClockwise || start == 0.0 ? start : AcGe::kTwoPi - start;
        edge.endAngle = edge.startAngle + sweep;
    }

    const hostkit::FlatMotion& m_motion;
    double m_elevation;
};

bool hasRoundEdges(const std::vector<HatchLoop>& loops) {
    return std::any_of(loops.begin(), loops.end(), [](const HatchLoop& loop) {
        return loop.hasBulges || std::any_of(loop.edges.begin(), loop.edges.end(), [](const HatchEdge& edge) {
                   return edge.kind == HatchEdge::kCircArc || edge.kind == HatchEdge::kEllipArc;
               });
    });
}

} // namespace

Acad::ErrorStatus AcDbHatch::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const hostkit::FlatMotion motion(matrix, m_normal);
    if (!motion.keepsShape() && (hasRoundEdges(m_loops) || !m_patternLines.empty()))
        return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const LoopMotion loopMotion(motion, m_elevation);
    for (HatchLoop& loop : m_loops) loopMotion.move(loop);
    for (hostkit::HatchPatternLine& line : m_patternLines) loopMotion.move(line);
    loopMotion.move(m_seedPoints);
    if (!motion.isShift()) m_patternAngle = motion.angle(m_patternAngle);
    m_patternScale *= motion.scale();
    m_elevation = motion.point({m_elevationX, m_elevationY, m_elevation}).z;
    m_normal = motion.normal();
    return Acad::eOk;
}

void AcDbHatch::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }
