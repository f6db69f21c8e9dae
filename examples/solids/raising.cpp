#include "raising.h"

#include "vexoamodelertools.h"
#include "vexogeometrytools.h"

#include <algorithm>
#include <cmath>

using AModeler::Body;

namespace {

/// Of a bulge: below it a segment is straight to the library.
constexpr double straight = 1e-10;

using OwnedBody = std::unique_ptr<Body>;

struct Contour3d {
    AcArray<AcGePoint3d> points;
    AcArray<double> bulges; ///< arc heights, as many as points
};

/// Each arc as two: three corners are needed for a plane.
Contour3d inHalves(const Contour3d& contour) {
    Contour3d halves;
    const int count = contour.points.length();
    for (int i = 0; i < count; ++i) {
        const AcGePoint3d start = contour.points[i], end = contour.points[(i + 1) % count];
        const double bulge = contour.bulges[i];
        halves.points.append(start);
        if (bulge * bulge <= straight * straight) {
            halves.bulges.append(bulge);
            continue;
        }
        const AcGePoint3d middle = VEXOGeometryTools::getMiddleOf(start, end, bulge, AcGeVector3d::kZAxis);
        const double radius = VEXOGeometryTools::getRadiusFromBulge(start, end, bulge);
        const double chord = start.distanceTo(middle) / 2;
        const double height =
            chord * chord / (radius + std::sqrt(std::max(0.0, radius * radius - chord * chord)));
        halves.points.append(middle);
        for (int half = 0; half < 2; ++half) halves.bulges.append(std::copysign(height, bulge));
    }
    return halves;
}

Contour3d contourAt(const PlanContour& plan, double elevation) {
    Contour3d contour;
    const std::unique_ptr<AcDbPolyline> outline = copyOf(*plan.outline);
    (void)VEXOGeometryTools::convertPolyline(outline.get(), contour.points, contour.bulges);
    while (contour.points.length() > contour.bulges.length())
        contour.points.removeLast(); // the first one again
    for (AcGePoint3d& point : contour.points) point.z = elevation;
    if (contour.points.length() == 2) contour = inHalves(contour);
    // The bridge to the modeller takes the closing arc with its ends exchanged.
    if (!contour.bulges.isEmpty()) contour.bulges.last() = -contour.bulges.last();
    return contour;
}

class Raising {
public:
    Raising(RaisedPlan& plan, const RaisingMeasures& measures)
        : m_plan(plan)
        , m_measures(measures) {}

    Body run() {
        const double thickness = m_measures.thickness;
        for (const Slab& slab : m_plan.slabs.slabs) raiseSlab(slab);
        for (const auto& beam : m_plan.beams)
            addPart(raised(*beam, thickness - m_measures.beamDepth, m_measures.beamDepth));
        for (const auto& column : m_plan.columns)
            addPart(raised(*column, -m_measures.columnHeight, m_measures.columnHeight));
        if (m_parts.empty()) return {};
        return united();
    }

private:
    OwnedBody raised(const PlanContour& contour, double from, double height) {
        const Contour3d outline = contourAt(contour, contour.elevation + from);
        OwnedBody body(VEXOAModelerTools::makeBodyFromPolygonalContourWithArcs(
            outline.points, outline.bulges, AcGeVector3d(0, 0, height), m_measures.deflection, 0.0));
        if (!body) tell(contour, L"the modeller makes no body of it");
        return body;
    }

    void raiseSlab(const Slab& slab) {
        OwnedBody body = raised(*slab.contour, 0.0, m_measures.thickness);
        if (!body) return;
        std::vector<OwnedBody> openings;
        std::vector<const PlanContour*> contours;
        for (const Opening& opening : slab.openings)
            if (OwnedBody hole = raised(*opening.contour, 0.0, m_measures.thickness)) {
                openings.push_back(std::move(hole));
                contours.push_back(opening.contour);
            }
        if (!cutAtOnce(*body, openings))
            for (std::size_t i = 0; i < openings.size(); ++i)
                if (!VEXOAModelerTools::subBodys(body.get(), openings[i].get()))
                    tell(*contours[i], L"the modeller cannot cut it out of its slab");
        addPart(std::move(body));
    }

    static bool cutAtOnce(Body& body, const std::vector<OwnedBody>& openings) {
        try {
            body = body.boolOper(AModeler::kSubtract, pointersTo(openings, 0));
            return true;
        } catch (const AModeler::Error&) {
            return false;
        }
    }

    Body united() {
        try {
            return m_parts.front()->boolOper(AModeler::kUnion, pointersTo(m_parts, 1));
        } catch (const AModeler::Error&) {
            return unitedOneByOne();
        }
    }

    Body unitedOneByOne() {
        for (std::size_t i = 1; i < m_parts.size(); ++i)
            if (!VEXOAModelerTools::addBodys(m_parts.front().get(), m_parts[i].get()))
                m_plan.slabs.findings.push_back({L"", L"", L"a part cannot be joined to the others"});
        return *m_parts.front();
    }

    static std::vector<const Body*> pointersTo(const std::vector<OwnedBody>& bodies, std::size_t first) {
        std::vector<const Body*> pointers;
        for (std::size_t i = first; i < bodies.size(); ++i) pointers.push_back(bodies[i].get());
        return pointers;
    }

    void addPart(OwnedBody body) {
        if (body && !body->isNull()) m_parts.push_back(std::move(body));
    }
    void tell(const PlanContour& contour, const wchar_t* reason) {
        m_plan.slabs.findings.push_back({contour.layer, contour.path, reason});
    }

    RaisedPlan& m_plan;
    const RaisingMeasures& m_measures;
    std::vector<OwnedBody> m_parts;
};

} // namespace

Body raisedBody(RaisedPlan& plan, const RaisingMeasures& measures) { return Raising(plan, measures).run(); }
