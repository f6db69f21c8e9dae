// Slabs with openings become strips: nothing is lost, nothing covered twice, no opening covered.
#include "vexogeometrytools.h"

#include "contourcases.h"
#include "scanlines.h"
#include "slabcases.h"

#include "dbcircle.h"
#include "dbline.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

using namespace VEXOGeometryTools;
using contourcases::polylineOf;
using contourcases::Vertices;
using slabcases::Slab;

namespace {

constexpr double kAreaTolerance = 1e-7;

/// Owns what a tool gave.
struct Strips {
    std::vector<std::unique_ptr<AcDbPolyline>> polylines;

    explicit Strips(const AcArray<void*>& curves) {
        for (void* curve : curves) {
            AcDbPolyline* polyline = AcDbPolyline::cast(static_cast<AcDbCurve*>(curve));
            EXPECT_TRUE(polyline);
            if (polyline)
                polylines.emplace_back(polyline);
            else
                delete static_cast<AcDbCurve*>(curve);
        }
    }
    std::size_t count() const { return polylines.size(); }
};

AcGePoint2d originOf(const AcDbPolyline& polyline) {
    AcGePoint3d point;
    (void)polyline.getPointAt(0, point);
    return {point.x, point.y};
}

scanlines::Figure figureOf(const Slab& slab, const AcGePoint2d& origin) {
    scanlines::Figure figure{scanlines::contourOf(*slab.contour, origin), {}};
    for (const auto& opening : slab.openings) figure.holes.push_back(scanlines::contourOf(*opening, origin));
    return figure;
}

/// Does a segment cross another one, away from both segments' ends.
bool crossesItself(AcDbPolyline& strip) {
    const int count = static_cast<int>(strip.numVerts());
    struct Side {
        AcGeLineSeg3d line;
        AcGeCircArc3d arc;
        bool isArc = false;
    };
    std::vector<Side> sides(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        Side& side = sides[static_cast<std::size_t>(i)];
        (void)getSegmentFromPolyline(&strip, i, side.line, side.arc, side.isArc);
    }
    const auto ends = [](const Side& side) {
        return side.isArc ? std::pair(side.arc.startPoint(), side.arc.endPoint())
                          : std::pair(side.line.startPoint(), side.line.endPoint());
    };
    const AcGeTol fine;
    constexpr double away = 1e-3; // a micron of a slab in millimetres
    for (std::size_t i = 0; i < sides.size(); ++i)
        for (std::size_t j = i + 1; j < sides.size(); ++j) {
            const Side& a = sides[i];
            const Side& b = sides[j];
            AcGePoint3d points[2];
            int found = 0;
            if (!a.isArc && !b.isArc)
                found = a.line.intersectWith(b.line, points[0], fine) ? 1 : 0;
            else if (a.isArc && b.isArc)
                (void)a.arc.intersectWith(b.arc, found, points[0], points[1], fine);
            else
                (void)(a.isArc ? a.arc : b.arc)
                    .intersectWith(a.isArc ? b.line : a.line, found, points[0], points[1], fine);
            for (int k = 0; k < found; ++k) {
                bool atEnd = false;
                for (const Side* side : {&a, &b})
                    atEnd = atEnd || points[k].distanceTo(ends(*side).first) < away ||
                            points[k].distanceTo(ends(*side).second) < away;
                if (!atEnd) return true;
            }
        }
    return false;
}

/// A closed contour's crossings with any line run to and fro in turn, unless it overlaps itself.
bool turnsBack(const std::vector<scanlines::Crossing>& crossings) {
    for (std::size_t i = 1; i < crossings.size(); ++i)
        if (crossings[i].toRight == crossings[i - 1].toRight && crossings[i].y - crossings[i - 1].y > 1e-3)
            return true;
    return false;
}

/// What is wrong with the strips of a slab; nothing when they are its cut.
std::string faultOf(const Slab& slab, const Strips& strips) {
    const AcGePoint2d origin = originOf(*slab.contour);
    const scanlines::Figure figure = figureOf(slab, origin);
    const double whole = std::abs(scanlines::areaOf(figure.slab));
    std::vector<scanlines::Contour> contours;
    double sum = 0.0;
    for (const auto& strip : strips.polylines) {
        if (!strip->isClosed()) return "an open strip";
        if (crossesItself(*strip)) return "a strip that crosses itself";
        contours.push_back(scanlines::contourOf(*strip, origin));
        sum += std::abs(scanlines::areaOf(contours.back()));
    }
    const double error = sum - scanlines::freeArea(figure);
    if (!(std::abs(error) <= kAreaTolerance * whole)) {
        std::ostringstream text;
        text << "areas off by " << error / whole << " of the slab";
        return text.str();
    }
    const std::vector<double> breaks = scanlines::breaksOf(figure);
    const double low = breaks.front();
    const double span = breaks.back() - low;
    for (int k = 0; k < 200; ++k) {
        const double x = low + span * (k + 0.4142) / 200;
        scanlines::Intervals all;
        double lengths = 0.0;
        for (const scanlines::Contour& contour : contours) {
            if (turnsBack(scanlines::crossingsAt(contour, x))) return "a strip that overlaps itself";
            for (const auto& interval : scanlines::intervalsAt(contour, x)) {
                all.push_back(interval);
                lengths += interval.second - interval.first;
            }
        }
        const scanlines::Intervals joined = scanlines::unionOf(all);
        const scanlines::Intervals slabAt = scanlines::intervalsAt(figure.slab, x);
        const double covered = lengths - scanlines::lengthOf(joined);
        const double outside = scanlines::lengthOf(joined) - scanlines::commonLength(joined, slabAt);
        const double onHoles = scanlines::commonLength(joined, figure.holesAt(x));
        if (covered > 1e-2) return "strips that overlap by " + std::to_string(covered);
        if (outside > 1e-2) return "strips outside by " + std::to_string(outside);
        if (onHoles > 1e-2) return "strips over openings by " + std::to_string(onHoles);
    }
    return {};
}

} // namespace

TEST(SplitContourByHoles, StripsAreTheSlabWithoutItsOpeningsForEveryKindOfSlab) {
    constexpr unsigned int seeds = 24;
    for (const auto& outline : slabcases::kOutlines)
        for (const auto& placing : slabcases::kPlacings) {
            int faults = 0;
            std::string first;
            for (unsigned int seed = 0; seed < seeds; ++seed) {
                const Slab slab = slabcases::slabOf(outline.outline, placing.placing, seed);
                const Strips strips(
                    splitContourByHoles(slab.base, slab.dir, slab.contour.get(), slab.holes()));
                const std::string fault = faultOf(slab, strips);
                if (fault.empty()) continue;
                if (faults++ == 0) first = "seed " + std::to_string(seed) + ": " + fault;
            }
            EXPECT_EQ(faults, 0) << outline.name << ", openings " << placing.name << "; " << first;
        }
}
