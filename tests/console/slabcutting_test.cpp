// How SLABSTRIPS proves its cuts: cutters that err in every way must be found out, and the opening named.
#include "slabcutting.h"

#include "plantext.h"

#include <gtest/gtest.h>

namespace {

PlanContour planBox(const wchar_t* path, double x, double y, double width, double height) {
    PlanContour contour;
    contour.layer = L"L";
    contour.path = path;
    contour.outline = outlineOf(box(x, y, width, height));
    contour.area = width * height;
    contour.low.set(x, y);
    contour.high.set(x + width, y + height);
    return contour;
}

// As the library gives curves: the caller deletes them.
AcArray<void*> curves(std::initializer_list<std::vector<Vertex>> outlines) {
    AcArray<void*> list;
    for (const std::vector<Vertex>& each : outlines)
        list.append(static_cast<AcDbCurve*>(outlineOf(each).release()));
    return list;
}

bool liesAt(const AcDbCurve& hole, double x) {
    AcDbExtents extents;
    hole.getGeomExtents(extents);
    return extents.minPoint().x > x - 0.5 && extents.maxPoint().x < x + 2.5;
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
        if (m_fault == Fault::nothing) return AcArray<void*>();
        const double split = m_fault == Fault::gap ? 3.5 : m_fault == Fault::overOpening ? 4.5 : 4.0;
        // The right sum in the wrong place, too.
        const double last = m_fault == Fault::outside ? 20 : m_fault == Fault::overlap ? 13.5 : 14;
        return curves({box(0, 0, split, 10), box(4, 0, 2, 4), box(4, 6, 2, 4), box(6, 0, 6, 10),
                       box(12, 0, 2, 4), box(12, 6, 2, 4),
                       box(last, 0, m_fault == Fault::overlap ? 6.5 : 6, 10)});
    }
    AcArray<void*> aroundOne(const CuttingFrame& frame, AcDbPolyline& contour,
                             AcDbCurve& hole) const override {
        if (m_failsAtTwelve && liesAt(hole, 12)) return curves({box(6, 0, 3, 10)});
        return SlabCuts::aroundOne(frame, contour, hole);
    }

private:
    Fault m_fault;
    bool m_failsAtTwelve;
};

class SlabCutting : public ::testing::Test {
protected:
    using Fault = ErringCuts::Fault;
    CutSlab cutWith(
        const ErringCuts& cuts, const std::function<bool(double)>& look = [](double) { return true; }) const {
        return cutSlab(slab, {AcGePoint3d(), AcGeVector3d::kXAxis}, look, cuts);
    }
    PlanContour outline = planBox(L"A", 0, 0, 20, 10);
    PlanContour first = planBox(L"B", 4, 4, 2, 2);
    PlanContour second = planBox(L"C", 12, 4, 2, 2);
    Slab slab{&outline, {{&first, 4.0}, {&second, 4.0}}};
    const Fault faults[5] = {Fault::gap, Fault::overlap, Fault::overOpening, Fault::outside, Fault::nothing};
};

TEST_F(SlabCutting, AFaultOfTheWholeCutIsMadeGoodOneByOne) {
    for (const Fault fault : faults) {
        SCOPED_TRACE(static_cast<int>(fault));
        const CutSlab cut = cutWith(ErringCuts(fault, false));
        EXPECT_TRUE(cut.isProved());
        EXPECT_TRUE(cut.findings.empty());
        EXPECT_NEAR(cut.stripsArea, 192.0, 1e-6);
        EXPECT_NEAR(cut.openingsArea, 8.0, 1e-9);
        EXPECT_EQ(cut.strips.size(), 7u);
    }
}

TEST_F(SlabCutting, AnOpeningThatCannotBeCutAroundIsNamedAndTheRestGoesOn) {
    for (const Fault fault : faults) {
        SCOPED_TRACE(static_cast<int>(fault));
        const CutSlab cut = cutWith(ErringCuts(fault, true));
        EXPECT_FALSE(cut.isProved());
        ASSERT_EQ(cut.findings.size(), 1u);
        EXPECT_EQ(cut.findings[0].path, L"C");
        EXPECT_FALSE(cut.findings[0].reason.empty());
        EXPECT_NEAR(cut.stripsArea - cut.wantedArea(), 4.0, 1e-6) << "the opening is left under its strip";
    }
}

TEST_F(SlabCutting, AsksAtEveryStepWhetherToGoOn) {
    int calls = 0;
    cutWith(ErringCuts(Fault::nothing, false), [&calls](double) { return ++calls < 3; });
    EXPECT_EQ(calls, 3);
}

} // namespace
