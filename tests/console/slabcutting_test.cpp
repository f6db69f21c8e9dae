// How SLABSTRIPS proves its cuts: cutters that err in every way must be found out, and the opening named.
#include "slabcutting.h"

#include "dbpolyline.h"

#include <gtest/gtest.h>

namespace {

AcDbPolyline* newBox(double x, double y, double width, double height) {
    auto* polyline = new AcDbPolyline(4);
    for (const AcGePoint2d corner : {AcGePoint2d(x, y), AcGePoint2d(x + width, y),
                                     AcGePoint2d(x + width, y + height), AcGePoint2d(x, y + height)})
        polyline->addVertexAt(polyline->numVerts(), corner);
    polyline->setClosed(true);
    return polyline;
}

PlanContour planBox(const wchar_t* path, double x, double y, double width, double height) {
    PlanContour contour;
    contour.layer = L"L";
    contour.path = path;
    contour.outline.reset(newBox(x, y, width, height));
    contour.area = width * height;
    contour.low.set(x, y);
    contour.high.set(x + width, y + height);
    return contour;
}

AcArray<void*> curves(std::initializer_list<AcDbPolyline*> outlines) {
    AcArray<void*> list;
    for (AcDbPolyline* each : outlines) list.append(static_cast<AcDbCurve*>(each));
    return list;
}

bool liesAt(const AcDbCurve& hole, double x) {
    AcDbExtents box;
    hole.getGeomExtents(box);
    return box.minPoint().x > x - 0.5 && box.maxPoint().x < x + 2.5;
}

// The cut by all openings gives what it is told; the cut by one is the library's, but for the opening at x
// = 12.
class ErringCuts : public SlabCuts {
public:
    enum class Fault { gap, overlap, overOpening, outside, nothing };
    explicit ErringCuts(Fault fault, bool failsAtTwelve)
        : m_fault(fault)
        , m_failsAtTwelve(failsAtTwelve) {}

    // Of a slab of 20 by 10 with openings of 2 by 2 at (4, 4) and (12, 4).
    AcArray<void*> aroundAll(const CuttingFrame&, AcDbPolyline&, AcArray<void*>) const override {
        if (m_fault == Fault::nothing) return {};
        const double split = m_fault == Fault::gap ? 3.5 : m_fault == Fault::overOpening ? 4.5 : 4.0;
        AcArray<void*> list = curves({newBox(0, 0, split, 10), newBox(4, 0, 2, 4), newBox(4, 6, 2, 4),
                                      newBox(6, 0, 6, 10), newBox(12, 0, 2, 4), newBox(12, 6, 2, 4)});
        // The right sum in the wrong place, too.
        if (m_fault == Fault::outside)
            list.append(static_cast<AcDbCurve*>(newBox(20, 0, 6, 10)));
        else
            list.append(static_cast<AcDbCurve*>(
                newBox(m_fault == Fault::overlap ? 13.5 : 14, 0, m_fault == Fault::overlap ? 6.5 : 6, 10)));
        return list;
    }
    AcArray<void*> aroundOne(const CuttingFrame& frame, AcDbPolyline& contour,
                             AcDbCurve& hole) const override {
        if (m_failsAtTwelve && liesAt(hole, 12)) return curves({newBox(6, 0, 3, 10)});
        return SlabCuts::aroundOne(frame, contour, hole);
    }

private:
    Fault m_fault;
    bool m_failsAtTwelve;
};

class SlabCutting : public ::testing::TestWithParam<ErringCuts::Fault> {
protected:
    SlabCutting() {
        slab.contour = &outline;
        slab.openings = {{&first, 4.0}, {&second, 4.0}};
    }
    PlanContour outline = planBox(L"A", 0, 0, 20, 10);
    PlanContour first = planBox(L"B", 4, 4, 2, 2);
    PlanContour second = planBox(L"C", 12, 4, 2, 2);
    Slab slab;
    CuttingFrame frame{AcGePoint3d(), AcGeVector3d::kXAxis};
};

TEST_P(SlabCutting, AFaultOfTheWholeCutIsMadeGoodOneByOne) {
    const CutSlab cut = cutSlab(
        slab, frame, [](double) { return true; }, ErringCuts(GetParam(), false));
    EXPECT_TRUE(cut.isProved());
    EXPECT_TRUE(cut.findings.empty());
    EXPECT_NEAR(cut.stripsArea, 192.0, 1e-6);
    EXPECT_NEAR(cut.openingsArea, 8.0, 1e-9);
    EXPECT_EQ(cut.strips.size(), 7u);
}

TEST_P(SlabCutting, AnOpeningThatCannotBeCutAroundIsNamedAndTheRestGoesOn) {
    const CutSlab cut = cutSlab(
        slab, frame, [](double) { return true; }, ErringCuts(GetParam(), true));
    EXPECT_FALSE(cut.isProved());
    ASSERT_EQ(cut.findings.size(), 1u);
    EXPECT_EQ(cut.findings[0].path, L"C");
    EXPECT_FALSE(cut.findings[0].reason.empty());
    EXPECT_NEAR(cut.stripsArea - cut.wantedArea(), 4.0, 1e-6) << "the opening is left under its strip";
}

INSTANTIATE_TEST_SUITE_P(Faults, SlabCutting,
                         ::testing::Values(ErringCuts::Fault::gap, ErringCuts::Fault::overlap,
                                           ErringCuts::Fault::overOpening, ErringCuts::Fault::outside,
                                           ErringCuts::Fault::nothing));

TEST(SlabCuttingBreak, AskedForAtEveryStep) {
    PlanContour outline = planBox(L"A", 0, 0, 20, 10);
    PlanContour opening = planBox(L"B", 4, 4, 2, 2);
    Slab slab{&outline, {{&opening, 4.0}, {&opening, 4.0}}};
    int calls = 0;
    cutSlab(
        slab, {AcGePoint3d(), AcGeVector3d::kYAxis}, [&](double) { return ++calls < 3; },
        ErringCuts(ErringCuts::Fault::nothing, false));
    EXPECT_EQ(calls, 3);
}

} // namespace
