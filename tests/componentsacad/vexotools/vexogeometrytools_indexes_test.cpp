// The tools that look neighbours up give what their plain loops give, to the bit, ties and orders included.
#include "vexogeometrytools.h"

#include "contourcases.h"
#include "dbarc.h"
#include "dbellipse.h"
#include "dbline.h"

#include <gtest/gtest.h>

using namespace VEXOGeometryTools;
using namespace contourcases;

namespace {

/// Many ends in common, many collinear runs.
AcGePoint3d latticePoint(std::mt19937& random, double offset, double jitter) {
    const double x = onLattice(random, 5, offset, jitter);
    return {x, onLattice(random, 2, offset, jitter), 0};
}

// ---- collinear segments ----

AcGeCurve3d* newSegment(const AcGePoint3d& start, const AcGePoint3d& end) {
    return new AcGeLineSeg3d(start, end);
}

void concatenatePlainly(AcArray<void*>& segments, double tolerance) {
    const AcGeTol local = toleranceOf(tolerance * 0.001, tolerance * 0.001);
    const auto at = [&](int i) -> AcGeLineSeg3d* {
        auto* curve = static_cast<AcGeCurve3d*>(segments[i]);
        return curve && curve->isKindOf(AcGe::kLineSeg3d) ? static_cast<AcGeLineSeg3d*>(curve) : nullptr;
    };
    for (int i = 0; i < segments.length() - 1; ++i) {
        for (int j = i + 1; j < segments.length(); ++j) {
            const AcGeLineSeg3d* a = at(i);
            const AcGeLineSeg3d* b = at(j);
            if (!a || !b || !a->isColinearTo(*b, AcGeContext::gTol)) continue;
            const AcGePoint3d pairs[4][4] = {
                {b->endPoint(), a->startPoint(), b->startPoint(), a->endPoint()},
                {b->endPoint(), a->endPoint(), a->startPoint(), b->startPoint()},
                {b->startPoint(), a->startPoint(), b->endPoint(), a->endPoint()},
                {b->startPoint(), a->endPoint(), a->startPoint(), b->endPoint()}};
            const auto* const pair = std::find_if(std::begin(pairs), std::end(pairs), [&](const auto& each) {
                return each[0].isEqualTo(each[1], local);
            });
            if (pair == std::end(pairs)) continue;
            const AcGeLineSeg3d touch((*pair)[0], (*pair)[1]);
            if (touch.isOn((*pair)[2], local) || touch.isOn((*pair)[3], local)) break;
            segments[i] = newSegment((*pair)[2], (*pair)[3]);
            delete a;
            delete b;
            segments.removeAt(j);
            j = i;
        }
    }
}

AcArray<void*> randomSegments(std::mt19937& random, int count, double offset, double jitter) {
    AcArray<void*> segments;
    for (int i = 0; i < count; ++i) {
        const AcGePoint3d start = latticePoint(random, offset, jitter);
        const AcGePoint3d end = latticePoint(random, offset, jitter);
        AcGeCurve3d* curve = nullptr;
        if (random() % 20 == 0)
            curve = new AcGeCircArc3d(start, AcGeVector3d::kZAxis, 1.0);
        else if (random() % 20 != 0)
            curve = newSegment(start, end);
        segments.append(curve);
    }
    return segments;
}

/// Where each one starts and ends, in turn; null does nowhere.
AcArray<AcGePoint3d> endsOf(const AcArray<void*>& curves) {
    AcArray<AcGePoint3d> ends;
    for (void* curve : curves) {
        AcGeInterval range;
        AcGePoint3d start(kNaN, kNaN, kNaN), end(kNaN, kNaN, kNaN);
        if (curve) static_cast<AcGeCurve3d*>(curve)->getInterval(range, start, end);
        ends.append(start);
        ends.append(end);
    }
    return ends;
}

void deleteKitCurves(const AcArray<void*>& curves) {
    for (void* curve : curves) delete static_cast<AcGeCurve3d*>(curve);
}

// ---- chains ----

std::unique_ptr<AcDbCurve> chainPlainly(const AcArray<void*>& curves) {
    const AcGeTol tolerance = toleranceOf(1e-10);
    const auto at = [&](int i) { return static_cast<AcDbCurve*>(curves[i]); };
    std::unique_ptr<AcDbCurve> chain(AcDbCurve::cast(at(0)->clone()));
    std::vector<int> used{0};
    for (int i = 0; i < curves.length(); ++i) {
        const AcGePoint3d end = endOf(*chain);
        if (std::find(used.begin(), used.end(), i) != used.end() ||
            (!end.isEqualTo(startOf(*at(i)), tolerance) && !end.isEqualTo(endOf(*at(i)), tolerance)))
            continue;
        const bool isLast = static_cast<int>(used.size()) + 1 == curves.length();
        std::unique_ptr<AcDbCurve> longer(concatenateCurves(chain.get(), at(i), isLast));
        if (!longer) continue;
        chain = std::move(longer);
        used.push_back(i);
        i = -1;
    }
    return chain;
}

AcArray<void*> randomCurves(std::mt19937& random, int count, double offset, double jitter) {
    AcArray<void*> curves;
    for (int i = 0; i < count; ++i) {
        const AcGePoint3d start = latticePoint(random, offset, jitter);
        const AcGePoint3d end = latticePoint(random, offset, jitter);
        AcDbCurve* curve = nullptr;
        if (random() % 4 == 0) {
            auto* arc = new AcDbArc;
            const double chord = start.distanceTo(end);
            if (chord > 0) getArcFromCurve(start, end, chord * 0.2, AcGeVector3d::kZAxis, *arc);
            curve = arc;
        } else if (random() % 8 == 0) {
            curve = polylineOf({{start.x, start.y, 0.3}, {end.x, end.y, 0}, {end.x, start.y, 0}},
                               random() % 3 == 0)
                        .release();
        } else {
            curve = new AcDbLine(start, end);
        }
        curves.append(static_cast<void*>(curve));
    }
    return curves;
}

// ---- duplicates ----

AcArray<void*> withoutDuplicatesPlainly(const AcArray<void*>& curves, const AcGeVector3d& viewDir) {
    struct Shadow {
        AcGePoint3d start, end, center;
    };
    const AcGeTol tolerance = toleranceOf(1e-05);
    const AcGePlane plane(AcGePoint3d::kOrigin, viewDir);
    std::vector<Shadow> seen;
    AcArray<void*> kept;
    for (void* curve : curves) {
        Shadow own;
        AcDbCurve* projected = nullptr;
        if (static_cast<AcDbCurve*>(curve)->getProjectedCurve(plane, viewDir, projected) == Acad::eOk) {
            const std::unique_ptr<AcDbCurve> owner(projected);
            own = {startOf(*projected), endOf(*projected), {}};
            if (const auto* arc = AcDbArc::cast(projected)) own.center = arc->center();
            if (const auto* ellipse = AcDbEllipse::cast(projected)) own.center = ellipse->center();
        }
        const auto isTwin = [&](const Shadow& other) {
            const auto same = [&](const AcGePoint3d& a, const AcGePoint3d& b) {
                return a.isEqualTo(b, tolerance);
            };
            return same(own.center, other.center) &&
                   ((same(own.start, other.start) && same(own.end, other.end)) ||
                    (same(own.start, other.end) && same(own.end, other.start)));
        };
        const bool isOpen = !own.start.isEqualTo(own.end, AcGeContext::gTol);
        if (isOpen && std::any_of(seen.begin(), seen.end(), isTwin)) continue;
        if (isOpen) seen.push_back(own);
        kept.append(curve);
    }
    return kept;
}

} // namespace

TEST(Indexes, CollinearSegmentsMergeAsInThePlainLoops) {
    std::mt19937 random(61);
    int merges = 0;
    for (int round = 0; round <= 400; ++round) {
        const double offset = round % 4 == 3 ? 1e6 : 0.0;
        const double tolerance = round % 5 == 0 ? 0.0 : 1.0;
        const int count = round == 400 ? 0 : round % 20 == 4 ? 400 : 40; // many at one place too
        std::mt19937 again = random;
        const double jitter = round % 3 ? 0.0003 : 4e-11; // off the place, or off the direction alone
        AcArray<void*> segments = randomSegments(random, count, offset, jitter);
        AcArray<void*> expected = randomSegments(again, count, offset, jitter);
        ConcatenateLineSegments(segments, tolerance);
        concatenatePlainly(expected, tolerance);
        merges += count - segments.length();
        ASSERT_TRUE(areSame(endsOf(segments), endsOf(expected))) << round;
        deleteKitCurves(segments);
        deleteKitCurves(expected);
    }
    EXPECT_GT(merges, 1000);
}

TEST(Indexes, ChainsGrowAsInThePlainLoops) {
    std::mt19937 random(62);
    int longest = 0;
    int closed = 0;
    for (int round = 0; round < 800; ++round) {
        const int count = round % 2 ? 25 : 1 + round % 5; // of few curves all may belong to the chain
        const Curves curves(randomCurves(random, count, round % 4 == 3 ? 1e6 : 0.0, 5e-11));
        const std::unique_ptr<AcDbCurve> chain(createPolyLineFromCurves(curves.array));
        const std::unique_ptr<AcDbCurve> expected = chainPlainly(curves.array);
        ASSERT_EQ(chain->isA(), expected->isA()) << round;
        const AcDbPolyline* polyline = AcDbPolyline::cast(chain.get());
        if (!polyline) continue;
        ASSERT_EQ(verticesOf(*polyline), verticesOf(*AcDbPolyline::cast(expected.get()))) << round;
        ASSERT_EQ(polyline->isClosed(), expected->isClosed()) << round;
        closed += count > 1 && polyline->isClosed();
        longest = std::max(longest, static_cast<int>(polyline->numVerts()));
    }
    EXPECT_GT(longest, 15);
    EXPECT_GT(closed, 5);
}

TEST(Indexes, ChainsOfFewCurves) {
    EXPECT_EQ(createPolyLineFromCurves(curvesOf({})), nullptr);
    EXPECT_EQ(createPolyLineFromCurves(curvesOf({nullptr})), nullptr);
    AcDbLine line(AcGePoint3d(0, 0, 5), AcGePoint3d(1, 0, 5));
    const std::unique_ptr<AcDbCurve> lone(createPolyLineFromCurves(curvesOf({&line, nullptr})));
    ASSERT_TRUE(AcDbLine::cast(lone.get()));
    EXPECT_EQ(AcDbLine::cast(lone.get())->endPoint(), AcGePoint3d(1, 0, 5));
}

TEST(Indexes, DuplicatesGoAsInThePlainLoops) {
    std::mt19937 random(64);
    int removed = 0;
    const AcGeVector3d views[] = {AcGeVector3d::kZAxis, -AcGeVector3d::kZAxis, AcGeVector3d(0.2, 0.1, 1),
                                  AcGeVector3d::kXAxis};
    for (int round = 0; round < 200; ++round) {
        const AcGeVector3d view = views[round % 4];
        Curves curves(randomCurves(random, 60, round % 5 == 4 ? 1e6 : 0.0, 3e-6));
        const AcArray<void*> expected = withoutDuplicatesPlainly(curves.array, view);
        RemoveDuplicates(curves.array, view);
        ASSERT_TRUE(areSame(curves.array, expected)) << round;
        removed += 60 - curves.count();
    }
    EXPECT_GT(removed, 1000);
}

TEST(Indexes, WhatCannotBeProjectedStays) {
    const auto newLine = [] { return new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)); };
    Curves curves(curvesOf({newLine(), newLine()}));
    RemoveDuplicates(curves.array, AcGeVector3d());
    EXPECT_EQ(curves.count(), 2);
    RemoveDuplicates(curves.array, AcGeVector3d::kXAxis);
    EXPECT_EQ(curves.count(), 2);
    curves.array.append(nullptr);
    curves.array.append(curves.array[0]);
    RemoveDuplicates(curves.array, AcGeVector3d::kZAxis);
    ASSERT_EQ(curves.count(), 2);
    EXPECT_EQ(curves.array[1], nullptr);
}
