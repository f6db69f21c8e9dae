// How a reading or writing tells how far it has come.

#include "sampledrawing.h"

#include "drawingparts.h"

#include "drawingprogress.h"
#include "drawingreader.h"
#include "drawingwriter.h"

#include "dbline.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

using namespace hostkit;

namespace {

class Heard final : public DrawingProgress {
public:
    void reach(double share) override { shares.push_back(share); }
    std::vector<double> shares;
};

void expectWholeWork(const Heard& heard, std::size_t atLeast) {
    EXPECT_TRUE(std::is_sorted(heard.shares.begin(), heard.shares.end()));
    EXPECT_GE(heard.shares.size(), atLeast);
    EXPECT_LE(heard.shares.size(), 300u);
    ASSERT_FALSE(heard.shares.empty());
    EXPECT_GE(heard.shares.front(), 0.0);
    EXPECT_EQ(heard.shares.back(), 1.0);
}

TEST(DrawingProgress, RisesToTheEndInReadingAndInEveryKindOfWriting) {
    const std::unique_ptr<AcDbDatabase> drawing = drawingtest::sampleDrawing();
    for (int i = 0; i < 5000; ++i)
        drawingtest::appendToModelSpace(*drawing, new AcDbLine({0, 0, 0}, {1, double(i), 0}));
    std::string bytes;
    Heard whole;
    WriteOptions writing;
    writing.progress = &whole;
    ASSERT_EQ(writeDrawingToMemory(*drawing, bytes, writing), Acad::eOk);
    expectWholeWork(whole, 100);

    Heard read;
    ReadOptions reading;
    reading.progress = &read;
    const std::unique_ptr<AcDbDatabase> again = openDrawingFromMemory(bytes, L"again", nullptr, reading);
    ASSERT_NE(again, nullptr);
    expectWholeWork(read, 100);

    Heard untouched;
    writing.progress = &untouched;
    std::string written;
    ASSERT_EQ(writeDrawingToMemory(*again, written, writing), Acad::eOk);
    expectWholeWork(untouched, 1);
    drawingtest::appendToModelSpace(*again, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    Heard changed;
    writing.progress = &changed;
    ASSERT_EQ(writeDrawingToMemory(*again, written, writing), Acad::eOk);
    expectWholeWork(changed, 100);
}

TEST(DrawingProgress, AFailedWorkDoesNotTellThatItIsDone) {
    std::string bytes;
    ASSERT_EQ(writeDrawingToMemory(*drawingtest::sampleDrawing(), bytes), Acad::eOk);
    bytes.resize(bytes.size() - bytes.size() / 4);
    Heard heard;
    ReadOptions options;
    options.progress = &heard;
    options.tellPort = false;
    EXPECT_EQ(openDrawingFromMemory(bytes, L"cut", nullptr, options), nullptr);
    ASSERT_FALSE(heard.shares.empty());
    EXPECT_LT(heard.shares.back(), 1.0);
}

} // namespace
