#include "carefulcut.h"

#include "vexogeometrytools.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

// Of the slab's area: what counts as no area at all.
constexpr double noArea = 1e-9;

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

} // namespace

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

CarefulCut::CarefulCut(const Slab& slab, const CuttingFrame& frame)
    : m_slab(slab)
    , m_frame(frame)
    , m_allowed(provedWithin * slab.contour->area) {
    m_pieces.push_back(copyOf(*slab.contour->outline));
}

void CarefulCut::cutAround(const PlanContour& opening) {
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

void CarefulCut::mergePieces() {
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

// False when the parts are not the piece without the opening.
bool CarefulCut::cutPiece(const AcDbPolyline& piece, const PlanContour& opening, AcDbCurve* clipped,
                          Outlines& parts) const {
    const OutlineViews openings = {opening.outline.get()};
    const double area = areaOf(piece);
    const double inOpening = balanceOf(piece, openings, {}, m_frame).openings;
    if (area - inOpening <= noArea * m_slab.contour->area) return true; // nothing is left of it
    if (inOpening > noArea * m_slab.contour->area) {
        AcDbCurve* hole = clipped ? clipped : opening.outline.get();
        parts = takeOutlines(VEXOGeometryTools::splitContourByHole(m_frame.base, m_frame.direction,
                                                                   copyOf(piece).get(), hole));
    } else {
        parts.push_back(copyOf(piece));
    }
    return balanceOf(piece, openings, parts, m_frame).isProof(area, sumOfAreas(parts), m_allowed);
}
