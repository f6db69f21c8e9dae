#include "slabproof.h"

#include "contour.h"
#include "contouroverlay.h"

#include <cmath>

double areaOf(const AcDbPolyline& outline) { return std::abs(signedAreaInPlane(outline)); }

double sumOfAreas(const Outlines& outlines) {
    double sum = 0.0;
    for (const Outline& each : outlines) sum += areaOf(*each);
    return sum;
}

// Most edges of the strips are level or upright, which makes the sweep short.
Outline turned(const AcDbPolyline& outline, const CuttingFrame& frame) {
    Outline copy = copyOf(outline);
    const double angle = std::atan2(frame.direction.y, frame.direction.x);
    copy->transformBy(AcGeMatrix3d::rotation(-angle, AcGeVector3d::kZAxis, frame.base));
    return copy;
}

Balance balanceOf(const AcDbPolyline& slab, const OutlineViews& openings, const Outlines& strips,
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

bool Balance::isProof(double slabArea, double stripsArea, double allowed) const {
    const double wanted = slabArea - openings;
    return std::abs(stripsArea - wanted) <= allowed && std::abs(covered - wanted) <= allowed;
}
