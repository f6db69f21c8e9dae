#include "leaderlines.h"

#include "acgi.h"
#include "arrowblocks.h"
#include "blockdrawing.h"
#include "curvepaths.h"
#include "dbaccess.h"
#include "dbdimstyletable.h"
#include "dimensionoverrides.h"
#include "genurb3d.h"
#include "pathgeometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace hostkit {

namespace {

AcGeMatrix3d axesAt(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y) {
    AcGeMatrix3d matrix;
    return matrix.setToAlignCoordSys(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                                     AcGeVector3d::kZAxis, origin, x, y,
                                     x.crossProduct(y).normal() * x.length());
}

// `towards` leads to the tip.
void drawArrow(AcGiWorldDraw& draw, const AcGePoint3d& tip, const AcGeVector3d& towards,
               const LeaderLine& line) {
    const AcGeVector3d x = towards * line.arrowSize;
    const AcGeVector3d y = line.normal.crossProduct(towards).normal() * line.arrowSize;
    if (!line.arrow.isNull()) return drawBlock(draw, line.arrow, axesAt(tip, x, y));
    PicturePath triangle;
    triangle.moveTo(tip);
    triangle.lineTo(tip - x + y / 6.0);
    triangle.lineTo(tip - x - y / 6.0);
    triangle.close();
    drawArea(draw, triangle);
}

PicturePath pathOf(const LeaderLine& line, double cut) {
    PicturePath path;
    const std::vector<AcGePoint3d>& points = line.points;
    if (line.isCurved && points.size() > 2) {
        AcGePoint3dArray fit;
        for (const AcGePoint3d& point : points) fit.append(point);
        appendSpline(path, AcGeNurbCurve3d(fit, AcGeVector3d(), AcGeVector3d()));
        if (!path.isEmpty()) return path;
    }
    std::vector<AcGePoint3d> chain = points;
    chain[0] += (points[1] - points[0]).normal() * cut;
    return interruptedChain(chain, line.gaps);
}

double distanceTo(const AcGePoint3d& point, const AcGePoint3d& from, const AcGePoint3d& to) {
    const AcGeVector3d run = to - from;
    const double square = run.dotProduct(run);
    const double share = square > 0.0 ? (point - from).dotProduct(run) / square : 0.0;
    return point.distanceTo(from + run * std::clamp(share, 0.0, 1.0));
}

std::size_t nearestSegment(const std::vector<AcGePoint3d>& points, const LeaderGap& gap) {
    std::size_t nearest = 0;
    double least = HUGE_VAL;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const double away =
            distanceTo(gap.from, points[i], points[i + 1]) + distanceTo(gap.to, points[i], points[i + 1]);
        if (away < least) nearest = i;
        least = std::min(least, away);
    }
    return nearest;
}

} // namespace

PicturePath interruptedChain(const std::vector<AcGePoint3d>& points, const std::vector<LeaderGap>& gaps) {
    PicturePath path;
    path.moveTo(points[0]);
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        std::vector<LeaderGap> own;
        for (LeaderGap gap : gaps) {
            if (nearestSegment(points, gap) != i) continue;
            if (points[i].distanceTo(gap.to) < points[i].distanceTo(gap.from)) std::swap(gap.from, gap.to);
            own.push_back(gap);
        }
        std::sort(own.begin(), own.end(), [&](const LeaderGap& a, const LeaderGap& b) {
            return points[i].distanceTo(a.from) < points[i].distanceTo(b.from);
        });
        for (const LeaderGap& gap : own) {
            path.lineTo(gap.from);
            path.moveTo(gap.to);
        }
        path.lineTo(points[i + 1]);
    }
    return path;
}

void drawLeaderLine(AcGiWorldDraw& draw, const LeaderLine& line) {
    if (line.points.size() < 2) return;
    const double cut = line.arrowSize > 0.0 && arrowTraits(line.arrow).endsLine ? line.arrowSize : 0.0;
    const PicturePath path = pathOf(line, cut < line.points[0].distanceTo(line.points[1]) ? cut : 0.0);
    drawPath(draw, path);
    // The first control point of a curve, or the second of a chain, lies on the tangent.
    const AcGeVector3d towards = (line.points[0] - path.points()[1]).normal();
    if (line.arrowSize > 0.0 && !towards.isZeroLength()) drawArrow(draw, line.points[0], towards, line);
}

DimensionVariables styleOfRecord(const AcDbObject& object, const std::wstring& styleName) {
    const AcDbDatabase* const database = object.database();
    if (!database) return {};
    const auto* table = DatabaseAccess::objectOf<AcDbDimStyleTable>(database->dimStyleTableId());
    AcDbObjectId id = table ? table->find(styleName) : AcDbObjectId();
    if (id.isNull()) id = database->dimStyleStandard();
    const auto* style = DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(id);
    DimensionVariables variables = style ? style->variables() : DimensionVariables();
    if (const GroupBlock* const data = object.extendedData()) applyOverrides(*data, database, variables);
    return variables;
}

} // namespace hostkit
