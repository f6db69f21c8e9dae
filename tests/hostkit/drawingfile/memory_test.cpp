// Reading and writing drawings where memory runs out.

#include "drawingfiles.h"
#include "failingallocator.h"
#include "sampledrawing.h"

#include "temporaryfolder.h"

#include <algorithm>

using namespace hostkit;
using namespace drawingtest;

namespace {

constexpr std::size_t pointsTried = 500;

enum class Shortage { kOnce, kFromThenOn };

// Does the work with the first, the second, ... allocation failing; a part of them, evenly, where they are
// many. What stands before the work and is looked at behind it has all the memory it wants.
template <class Before, class Work, class Behind>
void failAt(Shortage shortage, Before&& before, Work&& work, Behind&& behind) {
    before();
    FailingAllocator::count();
    auto result = work();
    const std::size_t all = FailingAllocator::stop();
    behind(result, false);
    ASSERT_GT(all, 100u);
    const std::size_t step = std::max<std::size_t>(1, all / pointsTried);
    std::size_t failed = 0;
    for (std::size_t place = 0; place < all && !testing::Test::HasFailure(); place += step) {
        SCOPED_TRACE(testing::Message() << "allocation " << place << " of " << all);
        before();
        FailingAllocator::failAt(place, shortage == Shortage::kFromThenOn);
        result = work();
        FailingAllocator::stop();
        behind(result, FailingAllocator::hasFailed());
        failed += FailingAllocator::hasFailed();
    }
    EXPECT_GT(failed, std::min(all, pointsTried) / 2);
}

} // namespace

class Memory : public testing::TestWithParam<Shortage> {};

TEST_P(Memory, aReadThatRunsOutOfItGivesItsStatus) {
    const TemporaryFolder folder;
    const std::wstring file = wide(folder / "drawing.dxf");
    folder.write("drawing.dxf", saved(*sampleDrawing()));
    ReadReport report;
    failAt(
        GetParam(), [&] { report = {}; }, [&] { return openDrawing(file, &report, quietReading); },
        [&](const std::unique_ptr<AcDbDatabase>& database, bool wasShort) {
            // An allocation that the reader can do without may fail unnoticed.
            EXPECT_TRUE(database || wasShort);
            EXPECT_EQ(report.status, database ? Acad::eOk : Acad::eOutOfMemory);
        });
    EXPECT_TRUE(openDrawing(file)) << "with memory back";
}

TEST_P(Memory, aSaveThatRunsOutOfItKeepsTheOldDrawing) {
    const TemporaryFolder folder;
    const std::wstring file = wide(folder / "drawing.dxf");
    folder.write("drawing.dxf", "old");
    const auto database = sampleDrawing();
    WriteReport report;
    failAt(
        GetParam(), [&] { folder.write("drawing.dxf", "old"); },
        [&] { return writeDrawing(*database, file, quietWriting, &report); },
        [&](Acad::ErrorStatus status, bool wasShort) {
            EXPECT_EQ(status, wasShort && status != Acad::eOk ? Acad::eOutOfMemory : Acad::eOk);
            EXPECT_EQ(report.status, status);
            EXPECT_EQ(folder.read("drawing.dxf") == "old", status != Acad::eOk);
            EXPECT_EQ(folder.count(), 1u) << "nothing is left behind";
        });
}

INSTANTIATE_TEST_SUITE_P(, Memory, testing::Values(Shortage::kOnce, Shortage::kFromThenOn),
                         [](const auto& shortage) {
                             return std::string(shortage.param == Shortage::kOnce ? "once" : "fromThenOn");
                         });
