#include "plothatch.h"

#include "dbhatch.h"
#include "genurb3d.h"
#include "hatchloop.h"
#include "linepattern.h"
#include "plotcurves.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double densestLines = 0.3; // millimetres between lines on paper
constexpr double toneOfLines = 0.3;  // opacity of the tone that stands for lines
constexpr std::size_t mostLines = 4000;
constexpr double fullTurn = 6.283185307179586;

AcGePoint3d inPlane(const AcGePoint2d& point) { return AcGePoint3d(point.x, point.y, 0.0); }

void appendPolylineLoop(PicturePath& path, const hostkit::HatchLoop& loop) {
    const std::size_t count = loop.vertices.size();
    if (count < 2) return;
    PicturePath run;
    run.moveTo(inPlane(loop.vertices.front()));
    for (std::size_t i = 0; i < count; ++i)
        run.bulgeTo(inPlane(loop.vertices[(i + 1) % count]), i < loop.bulges.size() ? loop.bulges[i] : 0.0);
    run.close();
    path.append(run);
}

// Angles of an arc that runs clockwise are filed the other way round.
void appendArcEdge(PicturePath& run, const hostkit::HatchEdge& edge) {
    AcGeVector3d major(edge.radius, 0.0, 0.0);
    AcGeVector3d minor(0.0, edge.radius, 0.0);
    double start = edge.startAngle;
    double end = edge.endAngle;
    if (edge.kind == hostkit::HatchEdge::kEllipArc) {
        major.set(edge.majorAxis.x, edge.majorAxis.y, 0.0);
        minor.set(-edge.majorAxis.y * edge.ratio, edge.majorAxis.x * edge.ratio, 0.0);
    }
    double sweep = end - start;
    if (sweep <= 0.0) sweep += fullTurn;
    if (!edge.isCounterClockwise) {
        start = -start;
        sweep = -sweep;
    }
    run.arc(inPlane(edge.center), major, minor, start, sweep);
}

void appendSplineEdge(PicturePath& run, const hostkit::HatchEdge& edge) {
    AcGePoint3dArray points;
    AcGeKnotVector knots;
    AcGeDoubleArray weights;
    for (const AcGePoint2d& point : edge.controlPoints) points.append(inPlane(point));
    for (const double knot : edge.knots) knots.append(knot);
    for (const double weight : edge.weights) weights.append(weight);
    AcGeNurbCurve3d curve = edge.isRational && weights.length() == points.length()
                                ? AcGeNurbCurve3d(edge.degree, knots, points, weights)
                                : AcGeNurbCurve3d(edge.degree, knots, points);
    if (curve.isEmpty() && edge.fitPoints.size() > 1) {
        AcGePoint3dArray fit;
        for (const AcGePoint2d& point : edge.fitPoints) fit.append(inPlane(point));
        curve = AcGeNurbCurve3d(fit, AcGeVector3d(), AcGeVector3d());
    }
    appendSpline(run, curve);
}

void appendEdgeLoop(PicturePath& path, const hostkit::HatchLoop& loop) {
    PicturePath run;
    for (const hostkit::HatchEdge& edge : loop.edges) {
        switch (edge.kind) {
        case hostkit::HatchEdge::kLine:
            run.lineTo(inPlane(edge.start));
            run.lineTo(inPlane(edge.end));
            break;
        case hostkit::HatchEdge::kCircArc:
        case hostkit::HatchEdge::kEllipArc:
            appendArcEdge(run, edge);
            break;
        case hostkit::HatchEdge::kSpline:
            appendSplineEdge(run, edge);
            break;
        }
    }
    if (run.isEmpty()) return;
    run.close();
    path.append(run);
}

PicturePath boundaryInPlane(const AcDbHatch& hatch) {
    PicturePath path;
    for (const hostkit::HatchLoop& loop : hatch.loops()) {
        // Without islands only the outer loops count; text boxes are islands too.
        const bool isOuter = (loop.type & (AcDbHatch::kExternal | AcDbHatch::kOutermost)) != 0;
        if (hatch.hatchStyle() == AcDbHatch::kIgnore && hatch.numLoops() > 1 && !isOuter) continue;
        if (loop.edges.empty())
            appendPolylineLoop(path, loop);
        else
            appendEdgeLoop(path, loop);
    }
    return path;
}

struct Box {
    AcGePoint2d low{HUGE_VAL, HUGE_VAL};
    AcGePoint2d high{-HUGE_VAL, -HUGE_VAL};
};

Box boxOf(const PicturePath& path) {
    Box box;
    for (const AcGePoint3d& point : path.points()) {
        box.low.set(std::min(box.low.x, point.x), std::min(box.low.y, point.y));
        box.high.set(std::max(box.high.x, point.x), std::max(box.high.y, point.y));
    }
    return box;
}

std::vector<PatternLine> patternOf(const AcDbHatch& hatch) {
    std::vector<PatternLine> lines;
    for (int i = 0; i < hatch.numPatternDefinitions(); ++i) {
        PatternLine line;
        AcGeDoubleArray dashes;
        hatch.getPatternDefinitionAt(i, line.angle, line.base.x, line.base.y, line.offset.x, line.offset.y,
                                     dashes);
        line.dashes.assign(dashes.begin(), dashes.end());
        lines.push_back(std::move(line));
    }
    return lines;
}

// How much longer than in the hatch's plane a line of this direction is in the world.
double stretch(const AcGeMatrix3d& plane, double angle) {
    return (plane * AcGeVector3d(std::cos(angle), std::sin(angle), 0.0)).length();
}

void drawFamily(PictureSink& sink, const PatternLine& line, const std::vector<PatternStroke>& strokes,
                const AcGeMatrix3d& plane, double elevation, const StrokeStyle& style) {
    StrokeStyle dashed = style;
    const double scale = stretch(plane, line.angle);
    const DashArray pattern = dashArray(line.dashes, scale);
    dashed.dashes = pattern.dashes;
    for (const PatternStroke& stroke : strokes) {
        PicturePath path;
        path.moveTo(plane * AcGePoint3d(stroke.from.x, stroke.from.y, elevation));
        path.lineTo(plane * AcGePoint3d(stroke.to.x, stroke.to.y, elevation));
        dashed.dashStart = pattern.dashes.empty() ? 0.0 : pattern.start + stroke.dashStart * scale;
        sink.stroke(path, dashed);
    }
}

} // namespace

void drawHatch(PictureSink& sink, const AcDbHatch& hatch, const AcGeMatrix3d& toWorld,
               const StrokeStyle& style) {
    const PicturePath local = boundaryInPlane(hatch);
    if (local.isEmpty()) return;
    AcGeMatrix3d plane;
    hatch.getEcs(plane);
    plane.preMultBy(toWorld);
    PicturePath boundary = local;
    boundary.transformBy(plane * AcGeMatrix3d::translation(AcGeVector3d(0.0, 0.0, hatch.elevation())));

    const std::vector<PatternLine> pattern = patternOf(hatch);
    const bool isMeasuring = sink.scale() == 0.0;
    if (hatch.isSolidFill() || isMeasuring) return sink.fill(boundary, style.rgb, 1.0);
    const Box box = boxOf(local);
    std::vector<std::vector<PatternStroke>> families;
    bool isTone = pattern.empty();
    for (const PatternLine& line : pattern) {
        const double spacing = spacingOf(line) * stretch(plane, line.angle + fullTurn / 4.0) * sink.scale();
        families.push_back(strokesOf(line, box.low, box.high, mostLines));
        isTone |= spacing > 0.0 && spacing < densestLines;
    }
    if (isTone) return sink.fill(boundary, style.rgb, toneOfLines);
    StrokeStyle thin = style;
    thin.lineweight = 0.0;
    sink.beginClip(boundary);
    for (std::size_t i = 0; i < pattern.size(); ++i)
        drawFamily(sink, pattern[i], families[i], plane, hatch.elevation(), thin);
    sink.endClip();
}
