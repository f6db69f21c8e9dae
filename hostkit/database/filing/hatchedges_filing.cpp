#include "fieldtable.h"
#include "hatchfiling.h"

namespace hostkit {

namespace {

constexpr short kindCode = 72;
constexpr short pointCode = 10;
constexpr short secondPointCode = 11;
constexpr short radiusCode = 40;
constexpr short startAngleCode = 50;
constexpr short endAngleCode = 51;
constexpr short directionCode = 73;

constexpr short degreeCode = 94;
constexpr short rationalCode = 73;
constexpr short periodicCode = 74;
constexpr short knotCountCode = 95;
constexpr short controlCountCode = 96;
constexpr short knotCode = 40;
constexpr short weightCode = 42;
constexpr short fitCountCode = 97;
constexpr short startTangentCode = 12;
constexpr short endTangentCode = 13;

bool readArc(GroupSequence& groups, HatchEdge& edge) {
    if (!groups.needPoint(pointCode, edge.center.x, edge.center.y)) return false;
    if (edge.kind == HatchEdge::kEllipArc &&
        !groups.needPoint(secondPointCode, edge.majorAxis.x, edge.majorAxis.y))
        return false;
    double& size = edge.kind == HatchEdge::kEllipArc ? edge.ratio : edge.radius;
    if (!groups.needReal(radiusCode, size) || !groups.needAngle(startAngleCode, edge.startAngle) ||
        !groups.needAngle(endAngleCode, edge.endAngle))
        return false;
    edge.isCounterClockwise = groups.integerOr(directionCode, 1) != 0;
    return true;
}

bool readFitData(GroupSequence& groups, HatchEdge& edge) {
    for (Adesk::Int64 count = groups.integerOr(fitCountCode, 0); count > 0; --count) {
        AcGePoint2d point;
        if (!groups.needPoint(secondPointCode, point.x, point.y)) return false;
        edge.fitPoints.push_back(point);
    }
    if (!groups.take(startTangentCode)) return true;
    edge.hasTangents = true;
    edge.startTangent.set(groups.group().point[0], groups.group().point[1]);
    return groups.needPoint(endTangentCode, edge.endTangent.x, edge.endTangent.y);
}

// From 2010 on the fit data follows; before, the same code is the count of the loop's sources.
bool readSpline(GroupSequence& groups, HatchEdge& edge, bool hasFitData) {
    Adesk::Int64 degree = 0;
    Adesk::Int64 knots = 0;
    Adesk::Int64 controls = 0;
    if (!groups.needInteger(degreeCode, degree)) return false;
    edge.degree = static_cast<short>(degree);
    edge.isRational = groups.integerOr(rationalCode, 0) != 0;
    edge.isPeriodic = groups.integerOr(periodicCode, 0) != 0;
    if (!groups.needInteger(knotCountCode, knots) || !groups.needInteger(controlCountCode, controls) ||
        !groups.needReals(knotCode, knots, edge.knots))
        return false;
    for (Adesk::Int64 place = 0; place < controls; ++place) {
        AcGePoint2d point;
        if (!groups.needPoint(pointCode, point.x, point.y)) return false;
        edge.controlPoints.push_back(point);
        if (groups.take(weightCode)) edge.weights.push_back(groups.group().real);
    }
    return !hasFitData || readFitData(groups, edge);
}

bool readEdge(AcDbDxfFiler& filer, HatchEdge& edge) {
    GroupSequence groups(filer);
    Adesk::Int64 kind = 0;
    if (!groups.needInteger(kindCode, kind)) return false;
    edge.kind = static_cast<HatchEdge::Kind>(kind & 0xFF);
    switch (kind) {
    case HatchEdge::kLine:
        return groups.needPoint(pointCode, edge.start.x, edge.start.y) &&
               groups.needPoint(secondPointCode, edge.end.x, edge.end.y);
    case HatchEdge::kCircArc:
    case HatchEdge::kEllipArc:
        return readArc(groups, edge);
    case HatchEdge::kSpline:
        return readSpline(groups, edge, filer.dwgVersion() >= AcDb::kDHL_1024);
    default:
        filer.setError(Acad::eBadDxfSequence, L"%d is no kind of hatch edge", static_cast<int>(kind));
        return false;
    }
}

void writeArc(AcDbDxfFiler& filer, const HatchEdge& edge) {
    filer.writeItem(pointCode, edge.center);
    if (edge.kind == HatchEdge::kEllipArc) filer.writeItem(secondPointCode, edge.majorAxis);
    filer.writeReal(radiusCode, edge.kind == HatchEdge::kEllipArc ? edge.ratio : edge.radius);
    filer.writeAngle(startAngleCode, edge.startAngle);
    filer.writeAngle(endAngleCode, edge.endAngle);
    filer.writeInteger(directionCode, edge.isCounterClockwise);
}

void writeFitData(AcDbDxfFiler& filer, const HatchEdge& edge) {
    if (edge.fitPoints.empty()) filer.markOptional();
    filer.writeInteger(fitCountCode, static_cast<Adesk::Int64>(edge.fitPoints.size()));
    for (const AcGePoint2d& point : edge.fitPoints) filer.writeItem(secondPointCode, point);
    if (!edge.hasTangents) return;
    filer.writeItem(startTangentCode, edge.startTangent);
    filer.writeItem(endTangentCode, edge.endTangent);
}

void writeSpline(AcDbDxfFiler& filer, const HatchEdge& edge) {
    filer.writeInteger(degreeCode, edge.degree);
    filer.writeInteger(rationalCode, edge.isRational);
    filer.writeInteger(periodicCode, edge.isPeriodic);
    filer.writeInteger(knotCountCode, static_cast<Adesk::Int64>(edge.knots.size()));
    filer.writeInteger(controlCountCode, static_cast<Adesk::Int64>(edge.controlPoints.size()));
    for (const double knot : edge.knots) filer.writeReal(knotCode, knot);
    for (std::size_t place = 0; place < edge.controlPoints.size(); ++place) {
        filer.writeItem(pointCode, edge.controlPoints[place]);
        if (place < edge.weights.size()) filer.writeReal(weightCode, edge.weights[place]);
    }
    if (filer.dwgVersion() >= AcDb::kDHL_1024) writeFitData(filer, edge);
}

} // namespace

bool readHatchEdges(AcDbDxfFiler& filer, Adesk::Int64 count, std::vector<HatchEdge>& edges) {
    for (Adesk::Int64 place = 0; place < count; ++place)
        if (!readEdge(filer, edges.emplace_back())) return false;
    return true;
}

void writeHatchEdges(AcDbDxfFiler& filer, const std::vector<HatchEdge>& edges) {
    for (const HatchEdge& edge : edges) {
        filer.writeInteger(kindCode, edge.kind);
        if (edge.kind == HatchEdge::kLine) {
            filer.writeItem(pointCode, edge.start);
            filer.writeItem(secondPointCode, edge.end);
        } else if (edge.kind == HatchEdge::kSpline) {
            writeSpline(filer, edge);
        } else {
            writeArc(filer, edge);
        }
    }
}

} // namespace hostkit
