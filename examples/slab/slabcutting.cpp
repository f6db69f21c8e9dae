#include "slabcutting.h"

#include "contouroverlay.h"
#include "dbline.h"
#include "vexogeometrytools.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

// Of the slab's area: what the sum of the strips may be off, and what counts as no area at all.
constexpr double provedWithin = 1e-7;
constexpr double noArea = 1e-9;
constexpr double cutShare = 0.5; // of the work, when the cut by all openings is done

using Outline = std::unique_ptr<AcDbPolyline>;
using Outlines = std::vector<Outline>;

// What comes back from the library belongs to the caller.
Outlines takeOutlines(const AcArray<void*>& curves) {
    Outlines outlines;
    for (void* const each : curves) {
        std::unique_ptr<AcDbCurve> curve(static_cast<AcDbCurve*>(each));
        if (auto* polyline = AcDbPolyline::cast(curve.get())) {
            (void)curve.release();
            outlines.emplace_back(polyline);
        }
    }
    return outlines;
}

double areaOf(const AcDbPolyline& outline) { return std::abs(signedAreaInPlane(outline)); }

double sumOfAreas(const Outlines& outlines) {
    double sum = 0.0;
    for (const Outline& each : outlines) sum += areaOf(*each);
    return sum;
}

// Areas of slab, openings and strips laid over each other.
struct Balance {
    double openings = 0.0; ///< in the slab
    double covered = 0.0;  ///< in the slab, in no opening, in a strip
};

using Views = std::vector<const AcDbPolyline*>;

// In the directions of the strips most of their edges are level or upright, which makes the sweep short.
Outline turned(const AcDbPolyline& outline, const CuttingFrame& frame) {
    Outline copy = copyOf(outline);
    const double angle = std::atan2(frame.direction.y, frame.direction.x);
    copy->transformBy(AcGeMatrix3d::rotation(-angle, AcGeVector3d::kZAxis, frame.base));
    return copy;
}

Balance balanceOf(const AcDbPolyline& slab, const Views& openings, const Outlines& strips,
                  const CuttingFrame& frame) {
    ContourOverlay overlay;
    overlay.add(*turned(slab, frame));
    for (const AcDbPolyline* each : openings) overlay.add(*turned(*each, frame));
    for (const Outline& each : strips) overlay.add(*turned(*each, frame));
    const int firstStrip = 1 + static_cast<int>(openings.size());
    Balance balance;
    overlay.forEachCell([&](const ContourOverlay::Cell& cell) {
        bool isInSlab = false, isInOpening = false, isInStrip = false;
        for (const int contour : cell.contours) {
            isInSlab |= contour == 0;
            isInOpening |= contour > 0 && contour < firstStrip;
            isInStrip |= contour >= firstStrip;
        }
        if (isInSlab && isInOpening) balance.openings += cell.area;
        if (isInSlab && !isInOpening && isInStrip) balance.covered += cell.area;
    });
    return balance;
}

bool isProof(double slabArea, double sum, const Balance& balance, double allowed) {
    const double wanted = slabArea - balance.openings;
    return std::abs(sum - wanted) <= allowed && std::abs(balance.covered - wanted) <= allowed;
}

// Contours that can be merged share an edge, so their boxes touch.
bool boxesTouch(const AcDbPolyline& a, const AcDbPolyline& b) {
    AcDbExtents first, second;
    if (a.getGeomExtents(first) != Acad::eOk || b.getGeomExtents(second) != Acad::eOk) return false;
    return VEXOGeometryTools::IsIntersecting(first, second);
}

Outline merged(AcDbPolyline& a, AcDbPolyline& b) {
    if (!boxesTouch(a, b)) return nullptr;
    std::unique_ptr<AcDbCurve> curve(VEXOGeometryTools::MergeContoursIfTheyHaveOneComonSegment(&a, &b));
    if (!AcDbPolyline::cast(curve.get())) return nullptr;
    return Outline(static_cast<AcDbPolyline*>(curve.release()));
}

// Cuts one opening after the other and keeps of each cut only what its areas prove.
class CarefulCut {
public:
    CarefulCut(const Slab& slab, const CuttingFrame& frame, const SlabCuts& cuts)
        : m_slab(slab)
        , m_frame(frame)
        , m_cuts(cuts)
        , m_allowed(provedWithin * slab.contour->area) {
        m_pieces.push_back(copyOf(*slab.contour->outline));
    }

    void cutAround(const PlanContour& opening) {
        // The library cuts by what of the opening lies in the slab, as its cut by all openings does.
        std::unique_ptr<AcDbCurve> clipped(VEXOGeometryTools::getComonSurfaceFromPolylines(
            m_slab.contour->outline.get(), opening.outline.get()));
        Outlines next;
        bool hasFailed = false;
        for (Outline& piece : m_pieces) {
            Outlines parts;
            const bool isCut = cutPiece(*piece, opening, clipped.get(), parts);
            hasFailed |= !isCut;
            if (isCut)
                std::move(parts.begin(), parts.end(), std::back_inserter(next));
            else
                next.push_back(std::move(piece));
        }
        m_pieces = std::move(next);
        if (hasFailed)
            findings.push_back({opening.layer, opening.path,
                                L"the cut around this opening does not come off: a strip covers it"});
    }

    void mergePieces() {
        for (std::size_t a = 0; a < m_pieces.size(); ++a)
            for (std::size_t b = a + 1; b < m_pieces.size(); ++b) {
                Outline joined = merged(*m_pieces[a], *m_pieces[b]);
                if (!joined) continue;
                const double sum = areaOf(*m_pieces[a]) + areaOf(*m_pieces[b]);
                if (std::abs(areaOf(*joined) - sum) > m_allowed) continue;
                m_pieces.erase(m_pieces.begin() + static_cast<std::ptrdiff_t>(b));
                m_pieces[a] = std::move(joined);
                b = a;
            }
    }

    Outlines takePieces() { return std::move(m_pieces); }
    std::vector<Finding> findings;

private:
    // False when the parts are not the piece without the opening.
    bool cutPiece(const AcDbPolyline& piece, const PlanContour& opening, AcDbCurve* clipped,
                  Outlines& parts) const {
        const Views openings = {opening.outline.get()};
        const double area = areaOf(piece);
        const double inOpening = balanceOf(piece, openings, {}, m_frame).openings;
        if (area - inOpening <= noArea * m_slab.contour->area) return true; // nothing is left of it
        if (inOpening > noArea * m_slab.contour->area) {
            AcDbCurve* hole = clipped ? clipped : opening.outline.get();
            parts = takeOutlines(m_cuts.aroundOne(m_frame, *copyOf(piece), *hole));
        } else {
            parts.push_back(copyOf(piece));
        }
        return isProof(area, sumOfAreas(parts), balanceOf(piece, openings, parts, m_frame), m_allowed);
    }

    const Slab& m_slab;
    const CuttingFrame& m_frame;
    const SlabCuts& m_cuts;
    double m_allowed;
    Outlines m_pieces;
};

// The longest run inside the outline on its middle line: its middle is where a number can stand.
AcGePoint2d pointInside(const AcDbPolyline& outline) {
    AcDbExtents box;
    outline.getGeomExtents(box);
    const double middle = (box.minPoint().y + box.maxPoint().y) / 2.0;
    const AcDbLine level(AcGePoint3d(box.minPoint().x, middle, 0.0),
                         AcGePoint3d(box.maxPoint().x, middle, 0.0));
    AcGePoint3dArray points;
    outline.intersectWith(&level, AcDb::kOnBothOperands, points);
    std::vector<double> crossings;
    for (const AcGePoint3d& point : points) crossings.push_back(point.x);
    std::sort(crossings.begin(), crossings.end());
    AcGePoint2d best((box.minPoint().x + box.maxPoint().x) / 2.0, middle);
    double longest = 0.0;
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
        if (crossings[i + 1] - crossings[i] <= longest) continue;
        longest = crossings[i + 1] - crossings[i];
        best.x = (crossings[i] + crossings[i + 1]) / 2.0;
    }
    return best;
}

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
    const AcGePoint2d inside = pointInside(*level);
    const double angle = std::atan2(frame.direction.y, frame.direction.x);
    const AcGePoint3d back = AcGeMatrix3d::rotation(angle, AcGeVector3d::kZAxis, frame.base) *
                             AcGePoint3d(inside.x, inside.y, 0.0);
    strip.inside.set(back.x, back.y);
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

Outlines cutByAll(const Slab& slab, const CuttingFrame& frame, const SlabCuts& cuts) {
    AcArray<void*> holes;
    for (const Opening& opening : slab.openings)
        holes.append(static_cast<AcDbCurve*>(opening.contour->outline.get()));
    return takeOutlines(cuts.aroundAll(frame, *slab.contour->outline, holes));
}

} // namespace

AcArray<void*> SlabCuts::aroundAll(const CuttingFrame& frame, AcDbPolyline& contour,
                                   AcArray<void*> holes) const {
    return VEXOGeometryTools::splitContourByHoles(frame.base, frame.direction, &contour, holes);
}

AcArray<void*> SlabCuts::aroundOne(const CuttingFrame& frame, AcDbPolyline& contour, AcDbCurve& hole) const {
    return VEXOGeometryTools::splitContourByHole(frame.base, frame.direction, &contour, &hole);
}

bool CutSlab::isProved() const {
    const double allowed = provedWithin * slabArea;
    return std::abs(stripsArea - wantedArea()) <= allowed && std::abs(coveredArea - wantedArea()) <= allowed;
}

CutSlab cutSlab(const Slab& slab, const CuttingFrame& frame, const std::function<bool(double)>& look,
                const SlabCuts& cuts) {
    CutSlab cut;
    cut.slabArea = slab.contour->area;
    Views openings;
    for (const Opening& opening : slab.openings) openings.push_back(opening.contour->outline.get());

    Outlines strips = cutByAll(slab, frame, cuts);
    if (!look(cutShare)) return cut;
    Balance balance = balanceOf(*slab.contour->outline, openings, strips, frame);
    if (!isProof(cut.slabArea, sumOfAreas(strips), balance, provedWithin * cut.slabArea)) {
        CarefulCut careful(slab, frame, cuts);
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
