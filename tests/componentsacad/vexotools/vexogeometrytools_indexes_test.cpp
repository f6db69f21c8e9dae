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
            bool touched = false;
            bool merged = false;
            for (const auto& pair : pairs) {
                if (touched || !pair[0].isEqualTo(pair[1], local)) continue;
                touched = true;
                const AcGeLineSeg3d touch(pair[0], pair[1]);
                if (touch.isOn(pair[2], local) || touch.isOn(pair[3], local)) continue;
                segments[i] = newSegment(pair[2], pair[3]);
                merged = true;
            }
            if (merged) {
                delete a;
                delete b;
                segments.removeAt(j);
                j = i;
            } else if (touched) {
                break;
            }
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

AcArray<void*> copiesOf(const AcArray<void*>& curves) {
    AcArray<void*> copies;
    for (void* curve : curves)
        copies.append(curve ? static_cast<void*>(static_cast<AcGeCurve3d*>(curve)->copy()) : nullptr);
    return copies;
}

void deleteKitCurves(const AcArray<void*>& curves) {
    for (void* curve : curves) delete static_cast<AcGeCurve3d*>(curve);
}

// ---- chains ----

AcDbCurve* chainPlainly(const AcArray<void*>& curves) {
    if (curves.isEmpty()) return nullptr;
    const AcGeTol tolerance = toleranceOf(1e-10);
    auto* chain = AcDbCurve::cast(static_cast<AcDbCurve*>(curves[0])->clone());
    std::vector<int> used{0};
    for (int i = 0; i < curves.length(); ++i) {
        if (std::find(used.begin(), used.end(), i) != used.end()) continue;
        auto* candidate = static_cast<AcDbCurve*>(curves[i]);
        AcGePoint3d start, end, chainEnd;
        if (candidate->getStartPoint(start) != Acad::eOk || candidate->getEndPoint(end) != Acad::eOk)
            continue;
        if (chain->getEndPoint(chainEnd) != Acad::eOk) continue;
        if (!chainEnd.isEqualTo(start, tolerance) && !chainEnd.isEqualTo(end, tolerance)) continue;
        const bool last = static_cast<int>(used.size()) + 1 == curves.length();
        AcDbCurve* longer = concatenateCurves(chain, candidate, last);
        if (!longer) continue;
        delete chain;
        chain = longer;
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

::testing::AssertionResult haveSameVertices(const AcDbCurve* a, const AcDbCurve* b) {
    const AcDbPolyline* first = AcDbPolyline::cast(a);
    const AcDbPolyline* second = AcDbPolyline::cast(b);
    if (!first || !second) {
        const bool same = a && b && a->isA() == b->isA();
        return same ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << "classes differ";
    }
    if (first->numVerts() != second->numVerts() || first->isClosed() != second->isClosed())
        return ::testing::AssertionFailure()
               << first->numVerts() << " and " << second->numVerts() << " vertices";
    for (unsigned int i = 0; i < first->numVerts(); ++i) {
        const AcGePoint2d p = vertexOf(*first, i);
        const AcGePoint2d q = vertexOf(*second, i);
        if (p.x != q.x || p.y != q.y || bulgeOf(*first, i) != bulgeOf(*second, i))
            return ::testing::AssertionFailure() << "vertex " << i;
    }
    return ::testing::AssertionSuccess();
}

// ---- duplicates ----

std::vector<int> duplicatesPlainly(const AcArray<void*>& curves, const AcGeVector3d& viewDir) {
    struct Shadow {
        bool exists = false;
        AcGePoint3d start, end, center;
    };
    const AcGeTol tolerance = toleranceOf(1e-05);
    const AcGePlane plane(AcGePoint3d::kOrigin, viewDir);
    std::vector<Shadow> shadows;
    std::vector<int> kept;
    for (int i = 0; i < curves.length(); ++i) {
        Shadow shadow;
        AcDbCurve* projected = nullptr;
        if (static_cast<AcDbCurve*>(curves[i])->getProjectedCurve(plane, viewDir, projected) == Acad::eOk) {
            shadow.exists = projected->getStartPoint(shadow.start) == Acad::eOk &&
                            projected->getEndPoint(shadow.end) == Acad::eOk;
            if (const auto* arc = AcDbArc::cast(projected)) shadow.center = arc->center();
            if (const auto* ellipse = AcDbEllipse::cast(projected)) shadow.center = ellipse->center();
            delete projected;
        }
        shadows.push_back(shadow);
        kept.push_back(i);
    }
    const auto isOpen = [](const Shadow& s) {
        return s.exists && !s.start.isEqualTo(s.end, AcGeContext::gTol);
    };
    for (std::size_t i = 0; i < shadows.size(); ++i) {
        if (!isOpen(shadows[i])) continue;
        for (std::size_t j = i + 1; j < shadows.size(); ++j) {
            const Shadow& a = shadows[i];
            const Shadow& b = shadows[j];
            if (!isOpen(b) || !a.center.isEqualTo(b.center, tolerance)) continue;
            const bool same = a.start.isEqualTo(b.start, tolerance) && a.end.isEqualTo(b.end, tolerance);
            const bool turned = a.start.isEqualTo(b.end, tolerance) && a.end.isEqualTo(b.start, tolerance);
            if (!same && !turned) continue;
            shadows.erase(shadows.begin() + static_cast<std::ptrdiff_t>(j));
            kept.erase(kept.begin() + static_cast<std::ptrdiff_t>(j));
            --j;
        }
    }
    return kept;
}

} // namespace

TEST(Indexes, CollinearSegmentsMergeAsInThePlainLoops) {
    std::mt19937 random(61);
    int merges = 0;
    for (int round = 0; round < 400; ++round) {
        const double offset = round % 4 == 3 ? 1e6 : 0.0;
        const double tolerance = round % 5 == 0 ? 0.0 : 1.0;
        AcArray<void*> segments = randomSegments(random, 40, offset, 0.0003);
        AcArray<void*> expected = copiesOf(segments);
        ConcatenateLineSegments(segments, tolerance);
        concatenatePlainly(expected, tolerance);
        merges += 40 - segments.length();
        ASSERT_EQ(segments.length(), expected.length()) << round;
        for (int i = 0; i < segments.length(); ++i) {
            ASSERT_EQ(segments[i] == nullptr, expected[i] == nullptr) << round;
            if (!segments[i]) continue;
            const auto* a = static_cast<AcGeCurve3d*>(segments[i]);
            const auto* b = static_cast<AcGeCurve3d*>(expected[i]);
            ASSERT_EQ(a->type(), b->type()) << round;
            if (!a->isKindOf(AcGe::kLineSeg3d)) continue;
            const auto& s = static_cast<const AcGeLineSeg3d&>(*a);
            const auto& t = static_cast<const AcGeLineSeg3d&>(*b);
            ASSERT_TRUE(
                areSame(pointsOf({s.startPoint(), s.endPoint()}), pointsOf({t.startPoint(), t.endPoint()})))
                << round << ", segment " << i;
        }
        deleteKitCurves(segments);
        deleteKitCurves(expected);
    }
    EXPECT_GT(merges, 1000);
}

TEST(Indexes, GapsAndZeroLengthsAreNotBridged) {
    AcArray<void*> segments;
    const auto add = [&](double x1, double x2) { segments.append(newSegment({x1, 0, 0}, {x2, 0, 0})); };
    add(0, 1);
    add(2, 3);
    ConcatenateLineSegments(segments, 1.0);
    EXPECT_EQ(segments.length(), 2);
    add(2, 1);
    add(3, 3);
    ConcatenateLineSegments(segments, 1.0);
    ASSERT_EQ(segments.length(), 2);
    const auto& whole = *static_cast<AcGeLineSeg3d*>(static_cast<AcGeCurve3d*>(segments[0]));
    EXPECT_EQ(whole.startPoint(), AcGePoint3d(0, 0, 0));
    EXPECT_EQ(whole.endPoint(), AcGePoint3d(3, 0, 0));
    deleteKitCurves(segments);
    AcArray<void*> none;
    ConcatenateLineSegments(none, 1.0);
    EXPECT_TRUE(none.isEmpty());
}

TEST(Indexes, ChainsGrowAsInThePlainLoops) {
    std::mt19937 random(62);
    int longest = 0;
    for (int round = 0; round < 400; ++round) {
        const Curves curves(randomCurves(random, 25, round % 4 == 3 ? 1e6 : 0.0, 5e-11));
        const std::unique_ptr<AcDbCurve> chain(createPolyLineFromCurves(curves.array));
        const std::unique_ptr<AcDbCurve> expected(chainPlainly(curves.array));
        ASSERT_TRUE(haveSameVertices(chain.get(), expected.get())) << round;
        if (const AcDbPolyline* polyline = AcDbPolyline::cast(chain.get()))
            longest = std::max(longest, static_cast<int>(polyline->numVerts()));
    }
    EXPECT_GT(longest, 15);
}

TEST(Indexes, AShuffledContourClosesAgain) {
    std::mt19937 random(63);
    const auto whole = polylineOf(randomContour(random, 200), true);
    AcDbVoidPtrArray pieces;
    AcGeDoubleArray cuts;
    for (int i = 0; i < 200; ++i) cuts.append(i);
    ASSERT_EQ(whole->getSplitCurves(cuts, pieces), Acad::eOk);
    std::shuffle(pieces.begin(), pieces.end(), random);
    const Curves shuffled(pieces);
    for (int i = 0; i < shuffled.count(); i += 2) shuffled.curve(i)->reverseCurve();
    const std::unique_ptr<AcDbCurve> chain(createPolyLineFromCurves(pieces));
    const AcDbPolyline* closed = AcDbPolyline::cast(chain.get());
    ASSERT_TRUE(closed);
    EXPECT_TRUE(closed->isClosed());
    EXPECT_EQ(closed->numVerts(), 200u);
    EXPECT_NEAR(areaOf(*closed), areaOf(*whole), 1e-9);
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
        AcArray<void*> expected;
        for (const int kept : duplicatesPlainly(curves.array, view)) expected.append(curves.array[kept]);
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
