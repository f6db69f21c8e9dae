#include "widepieces.h"

#include "db2dpolyline.h"
#include "dbpolyline.h"
#include "viewpieces.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace hostkit {

namespace {

using Widths = std::pair<double, double>;

struct WideSegment {
    AcGePoint3d start;
    AcGePoint3d end;
    double bulge;
    Widths widths;

    double sweep() const { return 4.0 * std::atan(bulge); }
    /// Left of the run, half as long as the segment is wide there.
    AcGeVector3d sideAt(double share, const AcGeVector3d& normal) const {
        AcGeVector3d run = end - start;
        run.rotateBy(sweep() * (share - 0.5), normal);
        const AcGeVector3d left = normal.crossProduct(run);
        const double width = widths.first + (widths.second - widths.first) * share;
        return left * (width / 2.0 / left.length());
    }
    AcGePoint3d at(double share, const AcGeVector3d& normal) const {
        if (share == 0.0) return start;
        if (share == 1.0) return end;
        // The chord from the start to there, by the angle at the start and the ratio of chords.
        AcGeVector3d run = end - start;
        const double half = sweep() / 2.0;
        run.rotateBy(half * (share - 1.0), normal);
        return start + run * (std::sin(half * share) / std::sin(half));
    }
};

std::vector<PlanePiece> outlineOf(const WideSegment& segment, const AcGeVector3d& normal,
                                  const ViewMap& toView) {
    constexpr int arcsOfTaper = 32;
    const bool tapers = segment.bulge != 0.0 && segment.widths.first != segment.widths.second;
    const int count = tapers ? arcsOfTaper : 1;
    const double bulge = tapers ? std::tan(segment.sweep() / 4.0 / count) : segment.bulge;
    std::vector<PlanePiece> outline;
    AcGePoint3d left = segment.start + segment.sideAt(0.0, normal);
    AcGePoint3d right = segment.start - segment.sideAt(0.0, normal);
    outline.push_back(PlanePiece::segment(toView(left), toView(right)));
    for (int i = 1; i <= count; ++i) {
        const double share = static_cast<double>(i) / count;
        const AcGePoint3d middle = segment.at(share, normal);
        const AcGeVector3d side = segment.sideAt(share, normal);
        appendBulge(outline, toView, left, middle + side, bulge, normal);
        appendBulge(outline, toView, right, middle - side, bulge, normal);
        left = middle + side;
        right = middle - side;
    }
    outline.push_back(PlanePiece::segment(toView(left), toView(right)));
    return outline;
}

void showWidthsBy(RegionProbe& probe, const ViewMap& toView, const PolylineCurve& polyline,
                  const AcGeVector3d& normal, const std::vector<Widths>& widths) {
    VertexBuffer buffer;
    const PolylineShape shape = polyline.shape(buffer);
    for (std::size_t i = 0; i < shape.segmentCount() && !probe.isDecided(); ++i) {
        const WideSegment segment{shape.worldVertex(i), shape.worldVertex((i + 1) % shape.vertexCount()),
                                  shape.bulge(i), widths[i]};
        const bool isWide = segment.widths.first > 0.0 || segment.widths.second > 0.0;
        if (isWide && (segment.end - segment.start).lengthSqrd() > 0.0)
            probe.addWidth(outlineOf(segment, normal, toView));
    }
}

std::vector<Widths> widthsOf(const AcDbPolyline& polyline) {
    std::vector<Widths> widths(polyline.numVerts());
    for (unsigned int i = 0; i < widths.size(); ++i)
        (void)polyline.getWidthsAt(i, widths[i].first, widths[i].second);
    return widths;
}

std::vector<Widths> widthsOf(const AcDb2dPolyline& polyline) {
    std::vector<Widths> widths;
    const Widths general{polyline.defaultStartWidth(), polyline.defaultEndWidth()};
    const SubentityList& vertices = polyline.vertices();
    for (std::size_t i = 0; i < vertices.count(); ++i) {
        const auto* vertex = vertices.isErasedAt(i) ? nullptr : AcDb2dVertex::cast(vertices.at(i));
        if (!vertex || vertex->vertexType() == AcDb::k2dSplineCtlVertex) continue;
        const Widths own{vertex->startWidth(), vertex->endWidth()};
        widths.push_back(own.first == 0.0 && own.second == 0.0 ? general : own);
    }
    return widths;
}

double halfOfLargest(const std::vector<Widths>& widths) {
    double largest = 0.0;
    for (const Widths& each : widths) largest = std::max({largest, each.first, each.second});
    return largest / 2.0;
}

} // namespace

void showWidths(RegionProbe& probe, const ViewMap& toView, const AcDbPolyline& polyline) {
    showWidthsBy(probe, toView, polyline, polyline.normal(), widthsOf(polyline));
}

void showWidths(RegionProbe& probe, const ViewMap& toView, const AcDb2dPolyline& polyline) {
    const std::vector<Widths> widths = widthsOf(polyline);
    if (halfOfLargest(widths) > 0.0) showWidthsBy(probe, toView, polyline, polyline.normal(), widths);
}

double widthBeyondExtents(const AcDbEntity& entity) {
    if (const auto* polyline = AcDbPolyline::cast(&entity))
        return polyline->hasWidth() ? halfOfLargest(widthsOf(*polyline)) : 0.0;
    const auto* chain = AcDb2dPolyline::cast(&entity);
    return chain ? halfOfLargest(widthsOf(*chain)) : 0.0;
}

} // namespace hostkit
