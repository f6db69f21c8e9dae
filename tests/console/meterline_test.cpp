#include "meterline.h"

#include "consoletext.h"

#include <gtest/gtest.h>

namespace {

TEST(MeterLine, HoldsCaptionBarPercentAndTimeLeftAsFarAsTheColumnsGo) {
    EXPECT_EQ(meterLine(L"Opening", 50, 72, 80),
              L"Opening [###############...............]  50 %  1:12 left");
    EXPECT_EQ(meterLine(L"Opening", 100, -1, 80), L"Opening [##############################] 100 %");
    EXPECT_EQ(meterLine(L"Opening", 40, 3723, 40), L"Opening [####......]  40 %  1:02:03 left");
    EXPECT_EQ(meterLine(L"Opening", 40, 5, 26), L"Opening  40 %  0:05 left");
    EXPECT_EQ(meterLine(L"Opening", 40, -1, 10), L"Open  40 %");
    EXPECT_EQ(meterLine(L"Opening", 140, -1, 0), L" 100 %");
    for (std::size_t columns = 20; columns < 90; ++columns)
        EXPECT_LE(columnsOf(meterLine(L"配筋図 plan", 7, 9, columns)), columns);
}

TEST(MeterLine, TheTimeLeftIsTheRestAtThePaceSoFar) {
    constexpr std::int64_t second = 1'000'000'000;
    EXPECT_EQ(secondsLeft(2 * second, 0.25), 6);
    EXPECT_EQ(secondsLeft(2 * second, 0.999), 1) << "never 0 while something is left";
    EXPECT_EQ(secondsLeft(2 * second, 1.0), 0);
    EXPECT_EQ(secondsLeft(second / 2, 0.5), -1) << "too soon to tell";
    EXPECT_EQ(secondsLeft(9 * second, 0.0), -1);
}

} // namespace
