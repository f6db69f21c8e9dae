#include "plancontour.h"

#include "contouroverlay.h"

#include <cmath>

namespace {

constexpr double level = 1e-9;    // of a unit normal's part that does not point up
constexpr double sameArea = 1e-9; // of an area, told in two ways

bool isFinite(const AcDbPolyline& polyline) {
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d point;
        double bulge = 0.0;
        polyline.getPointAt(i, point);
        polyline.getBulgeAt(i, bulge);
        if (!std::isfinite(point.x + point.y + point.z) || !std::isfinite(bulge)) return false;
    }
    return true;
}

// The outline in the plane z = 0 with its normal up; bulges turn over with the normal.
std::unique_ptr<AcDbPolyline> seenFromAbove(const AcDbPolyline& polyline) {
    auto flat = std::make_unique<AcDbPolyline>(polyline.numVerts());
    const double turn = polyline.normal().z < 0.0 ? -1.0 : 1.0;
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d point;
        AcGePoint2d last;
        double bulge = 0.0;
        polyline.getPointAt(i, point);
        polyline.getBulgeAt(i, bulge);
        const AcGePoint2d vertex(point.x, point.y);
        const unsigned count = flat->numVerts();
        const bool repeats =
            count > 0 && flat->getPointAt(count - 1, last) == Acad::eOk && last.isEqualTo(vertex);
        if (repeats)
            flat->setBulgeAt(count - 1, turn * bulge);
        else
            flat->addVertexAt(count, vertex, turn * bulge);
    }
    if (endsMeet(*flat)) flat->removeVertexAt(flat->numVerts() - 1);
    flat->setClosed(true);
    return flat;
}

} // namespace

std::optional<PlanContour> planContourOf(const Contour& contour, std::wstring& reason) {
    const auto refuse = [&reason](const wchar_t* text) {
        reason = text;
        return std::nullopt;
    };
    const std::unique_ptr<AcDbPolyline> placed = copyOf(*contour.polyline);
    if (!isFinite(*placed)) return refuse(L"holds what is no number");
    if (placed->transformBy(contour.toWorld) != Acad::eOk)
        return refuse(L"stands in a block whose uneven scales make its arcs no arcs");
    if (!isFinite(*placed)) return refuse(L"holds what is no number");
    const AcGeVector3d normal = placed->normal();
    if (std::hypot(normal.x, normal.y) > level) return refuse(L"does not lie flat");

    PlanContour result;
    result.layer = contour.layer;
    result.path = contour.path;
    result.elevation = placed->elevation() * (normal.z < 0.0 ? -1.0 : 1.0);
    result.outline = seenFromAbove(*placed);
    AcDbExtents box;
    const double area = signedAreaInPlane(*result.outline);
    if (result.outline->numVerts() < 2 || result.outline->getGeomExtents(box) != Acad::eOk)
        return refuse(L"encloses nothing");
    result.low.set(box.minPoint().x, box.minPoint().y);
    result.high.set(box.maxPoint().x, box.maxPoint().y);
    const double overlaid = overlaidArea(*result.outline);
    const double boxArea = (result.high.x - result.low.x) * (result.high.y - result.low.y);
    if (overlaid <= sameArea * boxArea) return refuse(L"encloses nothing");
    // Where a contour crosses itself, what it encloses depends on how it is read.
    if (std::abs(overlaid - std::abs(area)) > sameArea * boxArea) return refuse(L"crosses itself");
    result.area = std::abs(area);
    if (area < 0.0) result.outline->reverseCurve();
    return result;
}
