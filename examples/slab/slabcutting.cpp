#include "slabcutting.h"

#include "carefulcut.h"
#include "vexogeometrytools.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double cutShare = 0.5; // of the work, when the cut by all openings is done

Strip stripOf(Outline outline, const CuttingFrame& frame, AcGePoint2d& low) {
    Strip strip;
    strip.area = areaOf(*outline);
    strip.arcs = arcCount(*outline);
    const Outline level = turned(*outline, frame);
    AcDbExtents box;
    level->getGeomExtents(box);
    low.set(box.minPoint().x, box.minPoint().y);
    strip.length = box.maxPoint().x - box.minPoint().x;
    strip.width = box.maxPoint().y - box.minPoint().y;
    strip.outline = std::move(outline);
    return strip;
}

// Numbers run as one reads the strips: rows across the direction, and along it in each row. Rows that
// rounding alone tells apart are one.
void takeStrips(CutSlab& cut, Outlines outlines, const CuttingFrame& frame) {
    struct Placed {
        Strip strip;
        AcGePoint2d low;
        double row = 0.0;
    };
    std::vector<Placed> placed;
    for (Outline& outline : outlines) {
        Placed each;
        each.strip = stripOf(std::move(outline), frame, each.low);
        placed.push_back(std::move(each));
    }
    std::sort(placed.begin(), placed.end(),
              [](const Placed& a, const Placed& b) { return a.low.y < b.low.y; });
    const double sameRow = provedWithin * std::sqrt(cut.slabArea);
    for (std::size_t i = 1; i < placed.size(); ++i)
        placed[i].row = placed[i - 1].row + (placed[i].low.y - placed[i - 1].low.y > sameRow ? 1.0 : 0.0);
    std::stable_sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
        return a.row != b.row ? a.row < b.row : a.low.x < b.low.x;
    });
    for (Placed& each : placed) {
        cut.stripsArea += each.strip.area;
        cut.strips.push_back(std::move(each.strip));
    }
}

Outlines cutByAll(const Slab& slab, const CuttingFrame& frame) {
    AcArray<void*> holes;
    for (const Opening& opening : slab.openings)
        holes.append(static_cast<AcDbCurve*>(opening.contour->outline.get()));
    return takeOutlines(VEXOGeometryTools::splitContourByHoles(frame.base, frame.direction,
                                                               slab.contour->outline.get(), holes));
}

} // namespace

bool CutSlab::isProved() const {
    return Balance{openingsArea, coveredArea}.isProof(slabArea, stripsArea, provedWithin * slabArea);
}

CutSlab cutSlab(const Slab& slab, const CuttingFrame& frame, const std::function<bool(double)>& look) {
    CutSlab cut;
    cut.slabArea = slab.contour->area;
    OutlineViews openings;
    for (const Opening& opening : slab.openings) openings.push_back(opening.contour->outline.get());

    Outlines strips = cutByAll(slab, frame);
    if (!look(cutShare)) return cut;
    Balance balance = balanceOf(*slab.contour->outline, openings, strips, frame);
    if (!balance.isProof(cut.slabArea, sumOfAreas(strips), provedWithin * cut.slabArea)) {
        CarefulCut careful(slab, frame);
        for (std::size_t i = 0; i < slab.openings.size(); ++i) {
            const double share = static_cast<double>(i) / static_cast<double>(slab.openings.size());
            if (!look(cutShare + (1.0 - cutShare) * share)) return cut;
            careful.cutAround(*slab.openings[i].contour);
        }
        careful.mergePieces();
        strips = careful.takePieces();
        cut.findings = std::move(careful.findings);
        balance = balanceOf(*slab.contour->outline, openings, strips, frame);
    }
    cut.openingsArea = balance.openings;
    cut.coveredArea = balance.covered;
    takeStrips(cut, std::move(strips), frame);
    return cut;
}
