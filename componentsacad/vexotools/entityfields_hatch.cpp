#include "entityfields.h"

#include "dbhatch.h"
#include "gearc2d.h"
#include "geell2d.h"
#include "gekvec.h"
#include "gelnsg2d.h"
#include "genurb2d.h"

#include <memory>

namespace vexo {

void file(EntityItems& items, EdgeFields& edge) {
    auto number = static_cast<Adesk::Int16>(edge.index() + 1);
    items.item(number);
    if (items.isReading() && items.isGood()) {
        switch (number) {
        case AcDbHatch::kLine:
            edge.emplace<LineEdgeFields>();
            break;
        case AcDbHatch::kCirArc:
            edge.emplace<ArcEdgeFields>();
            break;
        case AcDbHatch::kEllArc:
            edge.emplace<EllipseEdgeFields>();
            break;
        case AcDbHatch::kSpline:
            edge.emplace<SplineEdgeFields>();
            break;
        default:
            return items.refuse(L"\nError: %d is no edge type", number);
        }
    }
    std::visit([&items](auto& fields) { file(items, fields); }, edge);
}

namespace {

/// The curves of a loop, which the host hands out to be freed.
class LoopCurves {
public:
    LoopCurves() = default;
    LoopCurves(const LoopCurves&) = delete;
    LoopCurves& operator=(const LoopCurves&) = delete;
    ~LoopCurves() {
        for (void* const each : curves) delete static_cast<AcGeCurve2d*>(each);
    }
    void add(AcGeCurve2d* curve, AcDbHatch::HatchEdgeType type) {
        curves.append(curve);
        types.append(type);
    }

    AcGeVoidPointerArray curves;
    AcArray<int> types;
};

LineEdgeFields fieldsOf(const AcGeLineSeg2d& line) { return {line.startPoint(), line.endPoint()}; }

ArcEdgeFields fieldsOf(const AcGeCircArc2d& arc) {
    return {arc.center(), arc.radius(), arc.startAng(),
            arc.endAng(), arc.refVec(), static_cast<Adesk::Int16>(arc.isClockWise() ? 1 : 0)};
}

EllipseEdgeFields fieldsOf(const AcGeEllipArc2d& arc) {
    return {arc.center(),      arc.majorAxis(), arc.minorAxis(), arc.majorRadius(),
            arc.minorRadius(), arc.startAng(),  arc.endAng()};
}

SplineEdgeFields fieldsOf(const AcGeNurbCurve2d& spline) {
    SplineEdgeFields fields;
    int degree = 0;
    Adesk::Boolean rational = Adesk::kFalse, periodic = Adesk::kFalse;
    AcGeKnotVector knots;
    spline.getDefinitionData(degree, rational, periodic, knots, fields.controlPoints, fields.weights);
    fields.degree = degree;
    fields.periodic = periodic ? 1 : 0;
    fields.tolerance = knots.tolerance();
    for (int i = 0; i < knots.length(); ++i) fields.knots.append(knots[i]);
    return fields;
}

EdgeFields fieldsOf(const AcGeCurve2d& curve, int type) {
    switch (type) {
    case AcDbHatch::kLine:
        return fieldsOf(static_cast<const AcGeLineSeg2d&>(curve));
    case AcDbHatch::kCirArc:
        return fieldsOf(static_cast<const AcGeCircArc2d&>(curve));
    case AcDbHatch::kEllArc:
        return fieldsOf(static_cast<const AcGeEllipArc2d&>(curve));
    default:
        return fieldsOf(static_cast<const AcGeNurbCurve2d&>(curve));
    }
}

/// Makes the curve of an edge.
struct CurveMaker {
    LoopCurves& loop;

    void operator()(const LineEdgeFields& edge) const {
        loop.add(new AcGeLineSeg2d(edge.start, edge.end), AcDbHatch::kLine);
    }
    void operator()(const ArcEdgeFields& edge) const {
        loop.add(new AcGeCircArc2d(edge.center, edge.radius, edge.startAngle, edge.endAngle, edge.reference,
                                   edge.clockwise != 0),
                 AcDbHatch::kCirArc);
    }
    void operator()(const EllipseEdgeFields& edge) const {
        loop.add(new AcGeEllipArc2d(edge.center, edge.majorAxis, edge.minorAxis, edge.majorRadius,
                                    edge.minorRadius, edge.startAngle, edge.endAngle),
                 AcDbHatch::kEllArc);
    }
    // The rational flag is not filed: weights say it.
    void operator()(const SplineEdgeFields& edge) const {
        const AcGeKnotVector knots(edge.knots.length(), edge.knots.asArrayPtr(), edge.tolerance);
        const bool periodic = edge.periodic != 0;
        loop.add(edge.weights.isEmpty()
                     ? new AcGeNurbCurve2d(edge.degree, knots, edge.controlPoints, periodic)
                     : new AcGeNurbCurve2d(edge.degree, knots, edge.controlPoints, edge.weights, periodic),
                 AcDbHatch::kSpline);
    }
};

} // namespace

HatchFields fieldsOf(const AcDbHatch& hatch) {
    HatchFields fields;
    fields.normal = hatch.normal();
    fields.elevation = hatch.elevation();
    fields.style = static_cast<Adesk::Int16>(hatch.hatchStyle());
    fields.patternType = static_cast<Adesk::Int16>(hatch.patternType());
    fields.patternName = hatch.patternName();
    for (int i = 0; i < hatch.numLoops(); ++i) {
        LoopCurves loop;
        LoopFields filed;
        if (hatch.getLoopAt(i, filed.type, loop.curves, loop.types) != Acad::eOk) continue;
        filed.edges.reserve(static_cast<std::size_t>(loop.curves.length()));
        for (int edge = 0; edge < loop.curves.length(); ++edge)
            filed.edges.push_back(
                fieldsOf(*static_cast<const AcGeCurve2d*>(loop.curves[edge]), loop.types[edge]));
        fields.loops.push_back(std::move(filed));
    }
    return fields;
}

void setFields(AcDbHatch& hatch, HatchFields&& fields) {
    (void)hatch.setNormal(fields.normal);
    (void)hatch.setElevation(fields.elevation);
    (void)hatch.setHatchStyle(static_cast<AcDbHatch::HatchStyle>(fields.style));
    (void)hatch.setPattern(static_cast<AcDbHatch::HatchPatternType>(fields.patternType), fields.patternName);
    for (int last = hatch.numLoops() - 1; last >= 0; --last)
        if (hatch.removeLoopAt(last) != Acad::eOk) return; // not open for write: nothing is added either
    for (LoopFields& filed : fields.loops) {
        LoopCurves loop;
        const std::vector<EdgeFields> edges = std::move(filed.edges);
        for (const EdgeFields& edge : edges) std::visit(CurveMaker{loop}, edge);
        (void)hatch.appendLoop(filed.type, loop.curves, loop.types);
    }
}

} // namespace vexo
