// How SLABSTRIPS proves its cuts: strips that err in every way are found out, and the opening is named.
#include "slabcutting.h"

#include "carefulcut.h"
#include "plantext.h"

#include <gtest/gtest.h>

#include <random>

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

Outlines outlinesOf(std::initializer_list<std::vector<Vertex>> boxes) {
    Outlines outlines;
    for (const std::vector<Vertex>& each : boxes) outlines.push_back(outlineOf(each));
    return outlines;
}

// A slab of 20 by 10 with openings of 2 by 2 at (4, 4) and (12, 4).
class SlabCutting : public ::testing::Test {
protected:
    CutSlab cut(const std::function<bool(double)>& look = [](double) { return true; }) const {
        return cutSlab(slab, frame, look);
    }
    bool isProved(const Outlines& strips) const {
        const OutlineViews openings = {first.outline.get(), second.outline.get()};
        return balanceOf(*outline.outline, openings, strips, frame)
            .isProof(outline.area, sumOfAreas(strips), provedWithin * outline.area);
    }
    // The library cuts around closed contours alone, while areas close what is open: the cut by all openings
    // leaves this one under a strip, and so does the cut by it alone.
    void openSecond() { second.outline->setClosed(false); }

    CuttingFrame frame{AcGePoint3d(), AcGeVector3d::kXAxis};
    PlanContour outline = planBox(L"A", 0, 0, 20, 10);
    PlanContour first = planBox(L"B", 4, 4, 2, 2);
    PlanContour second = planBox(L"C", 12, 4, 2, 2);
    Slab slab{&outline, {{&first, 4.0}, {&second, 4.0}}};
};

TEST_F(SlabCutting, AreasTellWhichStripsAreTheSlabWithoutItsOpenings) {
    const struct {
        const char* what;
        double split, last, lastWidth;
        bool isProved;
    } cases[] = {{"as it should be", 4, 14, 6, true},
                 {"a gap", 3.5, 14, 6, false},
                 {"an overlap", 4, 13.5, 6.5, false},
                 {"over an opening", 4.5, 14, 6, false},
                 {"the right sum in the wrong place", 4, 20, 6, false}};
    for (const auto& each : cases)
        EXPECT_EQ(isProved(outlinesOf({box(0, 0, each.split, 10), box(4, 0, 2, 4), box(4, 6, 2, 4),
                                       box(6, 0, 6, 10), box(12, 0, 2, 4), box(12, 6, 2, 4),
                                       box(each.last, 0, each.lastWidth, 10)})),
                  each.isProved)
            << each.what;
    EXPECT_FALSE(isProved({}));
}

TEST_F(SlabCutting, AnOpeningThatCannotBeCutAroundIsNamedAndTheRestGoesOn) {
    CutSlab whole = cut();
    EXPECT_TRUE(whole.isProved() && whole.findings.empty());
    EXPECT_NEAR(whole.stripsArea, 192.0, 1e-6);
    EXPECT_NEAR(whole.openingsArea, 8.0, 1e-9);
    EXPECT_EQ(whole.strips.size(), 7u);

    openSecond();
    const CutSlab partly = cut();
    EXPECT_FALSE(partly.isProved());
    ASSERT_EQ(partly.findings.size(), 1u);
    EXPECT_EQ(partly.findings[0].path, L"C");
    EXPECT_FALSE(partly.findings[0].reason.empty());
    EXPECT_NEAR(partly.stripsArea - partly.wantedArea(), 4.0, 1e-6) << "left under its strip";
    EXPECT_EQ(partly.strips.size(), 4u);
}

TEST_F(SlabCutting, AsksAtEveryStepWhetherToGoOn) {
    openSecond();
    int calls = 0;
    const CutSlab stopped = cut([&calls](double) { return ++calls < 3; });
    EXPECT_EQ(calls, 3);
    EXPECT_TRUE(stopped.strips.empty());
}

// What is cut one by one is the slab as well, whatever the openings share, and is merged as far as it goes.
TEST_F(SlabCutting, OneOpeningAfterTheOtherLeavesTheSlabWithoutThem) {
    std::mt19937 random(20);
    const auto upTo = [&random](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    for (int round = 0; round < 30; ++round) {
        first = planBox(L"B", 1 + upTo(8), upTo(5), 1 + upTo(6), 1 + upTo(6));
        second = planBox(L"C", 1 + upTo(8), upTo(5), 1 + upTo(6), 1 + upTo(6));
        CarefulCut careful(slab, frame);
        careful.cutAround(first);
        careful.cutAround(second);
        careful.mergePieces();
        EXPECT_TRUE(careful.findings.empty()) << "round " << round;
        const Outlines pieces = careful.takePieces();
        EXPECT_TRUE(isProved(pieces)) << "round " << round;
        const CutSlab whole = cut();
        EXPECT_EQ(pieces.size(), whole.strips.size()) << "round " << round;
    }
}

} // namespace
