#include "vexoprogressbar.h"

#include "host.h"
#include "scriptedport.h"
#include "vexoacadprogressbar.h"
#include "vexoprogressbarsmart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

struct ProgressBar : testing::Test {
    hostkit::ScriptedPort port;
    hostkit::Host host{port};
    const std::vector<int>& positions() const { return port.meters.back().positions; }
    using Positions = std::vector<int>;
};

TEST_F(ProgressBar, ALoopCountsWorkDone) {
    VEXOProgressBar bar(L"Bars", 100);
    ASSERT_EQ(port.meters.size(), 1u);
    EXPECT_EQ(port.meters.back().caption, L"Bars");
    EXPECT_EQ(port.meters.back().maximum, 100);
    bar.nextIteration();
    EXPECT_EQ(positions(), Positions{});
    bar.setPhaseIterations(4);
    for (int i = 0; i < 4; ++i) bar.nextIteration();
    EXPECT_EQ(positions(), (Positions{25, 50, 75}));
    bar.nextIteration();
    EXPECT_EQ(positions().size(), 3u) << "the level is closed";
    // The next stage spends from where this one stopped.
    bar.setPhasePercent(20);
    bar.setPhaseIterations(2);
    bar.nextIteration();
    bar.nextIteration();
    EXPECT_EQ(positions().back(), 85);
}

TEST_F(ProgressBar, NestedLevelsShareThePhase) {
    VEXOProgressBar bar(L"", 100);
    bar.setPhaseIterations(2);
    Positions after;
    for (int outer = 0; outer < 2; ++outer) {
        bar.nextIteration();
        bar.setPhaseIterations(0); // opens nothing
        bar.setPhaseIterations(2);
        for (int inner = 0; inner < 2; ++inner) {
            bar.nextIteration();
            after.push_back(positions().empty() ? 0 : positions().back());
        }
    }
    // Where the inner level closes, the outer's next call marks again; its last one closed it, so that the
    // second inner level stands alone.
    EXPECT_EQ(after, (Positions{0, 25, 25, 75}));

    VEXOProgressBar deep(L"", 100);
    deep.setPhaseIterations(2);
    deep.setPhaseIterations(2);
    for (int i = 0; i < 3; ++i) deep.nextIteration();
    EXPECT_EQ(positions(), Positions{25}) << "inner 0 and 25; the outer one is marked";
    deep.nextIteration();
    EXPECT_EQ(positions(), (Positions{25, 75}));
}

TEST_F(ProgressBar, SuspensionRatioAndSmallStepsAsTheyAre) {
    VEXOProgressBar bar(L"", 100);
    bar.setPhaseIterations(4);
    bar.nextIteration();
    bar.setSuspended(true);
    bar.nextIteration();
    bar.setSuspended(false);
    bar.setCurrentRatio(0.5);
    bar.nextIteration();
    EXPECT_EQ(positions(), Positions{12}) << "the suspended call is lost";

    for (int i = 0; i < 1000; ++i) bar.increaseProgressBar(1.0 / 512);
    EXPECT_EQ(positions(), (Positions{12, 13, 14})) << "the host hears of whole numbers only";

    VEXOProgressBar copy(bar);
    copy.increaseProgressBar(1);
    EXPECT_EQ(positions().back(), 15);
    bar.increaseProgressBar(std::numeric_limits<double>::infinity());
    EXPECT_EQ(positions().back(), 100);
    bar.increaseProgressBar(std::nan(""));
    EXPECT_EQ(positions().back(), 0);
}

TEST_F(ProgressBar, TheGlobalOneServesDeepToolsWhileItsScopeStands) {
    VEXOProgressBarSmart::newIteration(3);
    VEXOProgressBarSmart::nextIteration();
    EXPECT_TRUE(port.meters.empty());
    {
        const VEXOProgressBarSmart scope(L"Styles");
        VEXOProgressBarSmart::setPhasePercent(50);
        VEXOProgressBarSmart::newIteration(2);
        VEXOProgressBarSmart::nextIteration();
        VEXOProgressBarSmart::Suspend(false);
        VEXOProgressBarSmart::setCurrentRatio(2);
        VEXOProgressBarSmart::nextIteration();
        EXPECT_EQ(positions(), Positions{50});
        EXPECT_FALSE(port.meters.back().stopped);
    }
    EXPECT_TRUE(port.meters.back().stopped);
    EXPECT_EQ(VEXOProgressBarSmart::m_pProgressBar, nullptr);
}

TEST_F(ProgressBar, APlainMeterMovesToPositionsAndPercents) {
    {
        VEXOAcadProgressBar plain;
        EXPECT_EQ(port.meters.back().maximum, 100);
        EXPECT_EQ(plain.moveToPercent(101), -1);
        EXPECT_EQ(plain.moveToPercent(-1), -1);
        EXPECT_EQ(plain.moveToPercent(33), 0);
        EXPECT_EQ(plain.moveToPos(40), 0);
        EXPECT_EQ(positions(), (Positions{33, 40}));
    }
    EXPECT_TRUE(port.meters.back().stopped);
    VEXOAcadProgressBar shifted(L"Shifted", 10, 30);
    shifted.moveToPercent(60);
    // (10 + 20 * 60) / 100 = 12.1, where an interpolation would stand at 22.
    EXPECT_EQ(positions(), Positions{12});
}

} // namespace
