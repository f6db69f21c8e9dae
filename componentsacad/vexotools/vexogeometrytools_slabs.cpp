#include "vexogeometrytools.h"

#include "contourareas.h"
#include "contourloopsegment.h"
#include "stripframe.h"
#include "stripholecut.h"
#include "stripmerge.h"

#include "cvxlogentry.h"
#include "dbpolyline.h"

#include <cmath>
#include <deque>
#include <memory>
#include <vector>

using namespace VEXOGeometryTools;
using namespace vexo;

namespace {

/// A piece of the slab and the openings that it has still to be tried against, in their order.
struct Piece {
    ContourLoop loop;
    std::vector<std::size_t> holes;
};

bool isFinite(const AcGePoint3d& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

/// An opening in the frame; false for a curve that bounds no area there.
bool takeHole(const StripFrame& frame, const AcDbCurve* curve, ContourLoop& loop) {
    const std::unique_ptr<AcDbPolyline> polyline(curve ? ConvertToPolyline(curve) : nullptr);
    return polyline && frame.take(*polyline, loop);
}

/// What the openings have in common with the slab. One that leaves the slab and comes back gives several.
std::vector<Opening> clippedHoles(const StripFrame& frame, const AcArray<void*>& curves) {
    std::vector<Opening> holes;
    for (void* curve : curves) {
        ContourLoop whole;
        if (!takeHole(frame, static_cast<AcDbCurve*>(curve), whole)) continue;
        for (ContourLoop& part : commonArea(frame.contour(), whole)) {
            if (signedArea(part) > sliverArea(boxOf(part))) holes.emplace_back(std::move(part));
        }
    }
    return holes;
}

/// The openings from `first` on whose boxes overlap the loop's box.
std::vector<std::size_t> holesNear(const ContourLoop& loop, const std::vector<Opening>& holes,
                                   const std::vector<std::size_t>& among, std::size_t first) {
    const PlaneBox box = boxOf(loop);
    std::vector<std::size_t> near;
    for (std::size_t k = first; k < among.size(); ++k)
        if (holes[among[k]].box.overlaps(box)) near.push_back(among[k]);
    return near;
}

/// Cuts the piece around the first opening that it has something in common with and appends the parts; false
/// when there is none. Openings before that one have nothing in common with the parts either.
bool cutPiece(const Piece& piece, const std::vector<Opening>& holes, std::deque<Piece>& pieces) {
    for (std::size_t k = 0; k < piece.holes.size(); ++k) {
        std::vector<ContourLoop> parts;
        if (!cutAroundHole(piece.loop, holes[piece.holes[k]], parts)) continue;
        for (ContourLoop& part : parts) {
            std::vector<std::size_t> near = holesNear(part, holes, piece.holes, k + 1);
            pieces.push_back({std::move(part), std::move(near)});
        }
        return true;
    }
    return false;
}

/// The slab cut around all openings, piece by piece in the order in which they come up.
std::vector<ContourLoop> cutAroundHoles(const StripFrame& frame, const std::vector<Opening>& holes) {
    std::vector<std::size_t> all(holes.size());
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = i;
    std::deque<Piece> pieces;
    pieces.push_back({frame.contour(), std::move(all)});
    std::vector<ContourLoop> whole;
    while (!pieces.empty()) {
        const Piece piece = std::move(pieces.front());
        pieces.pop_front();
        if (!cutPiece(piece, holes, pieces)) whole.push_back(piece.loop);
    }
    return whole;
}

void appendCurve(AcArray<void*>& curves, std::unique_ptr<AcDbCurve> curve) {
    if (curve) {
        curves.append(curve.get());
        (void)curve.release();
    }
}

} // namespace

namespace VEXOGeometryTools {

AcArray<void*> splitContourByHole(AcGePoint3d base, AcGeVector3d dir, AcDbPolyline* contour,
                                  AcDbCurve* hole) {
    CVxLogEntry entry(L"VEXOGeometryTools::splitContourByHole");
    AcArray<void*> result;
    if (!contour || !isFinite(base)) return result;
    const StripFrame frame(*contour, dir);
    ContourLoop holeLoop;
    if (!frame.isValid() || !takeHole(frame, hole, holeLoop)) return result;
    std::vector<ContourLoop> parts;
    (void)cutAroundHole(frame.contour(), Opening(std::move(holeLoop)), parts);
    for (const ContourLoop& part : parts) appendCurve(result, frame.give(part, *contour));
    return result;
}

AcArray<void*> splitContourByHoles(AcGePoint3d base, AcGeVector3d dir, AcDbPolyline* contour,
                                   AcArray<void*> holes) {
    CVxLogEntry entry(L"VEXOGeometryTools::splitContourByHoles");
    AcArray<void*> result;
    if (!contour || !isFinite(base)) return result;
    const StripFrame frame(*contour, dir);
    if (!frame.isValid()) return result;
    const std::vector<Opening> clipped = clippedHoles(frame, holes);
    if (clipped.empty()) {
        appendCurve(result, std::unique_ptr<AcDbCurve>(static_cast<AcDbCurve*>(contour->clone())));
        return result;
    }
    std::vector<ContourLoop> strips = cutAroundHoles(frame, clipped);
    mergeStrips(strips);
    for (const ContourLoop& strip : strips) appendCurve(result, frame.give(strip, *contour));
    return result;
}

} // namespace VEXOGeometryTools
