// Arc length dimensions, as drawings hold them.

#include "dbaccess.h"
#include "dbarcdimension.h"
#include "drawingfiles.h"
#include "drawinglisting.h"
#include "drawingparts.h"

#include <cmath>
#include <numbers>
#include <set>

using namespace hostkit;
using namespace drawingtest;

namespace {

constexpr double sixth = std::numbers::pi / 6.0;

// Of radius 5 about (10, 20), from 30 to 90 degrees. The first direction is told otherwise.
std::string drawingWith(const std::string& blockName) {
    const std::string first = textOf(10.0 + 5.0 * std::cos(sixth));
    const std::string head = groups({{0, "ARC_DIMENSION"}, {100, "AcDbEntity"}, {8, "Notes"}, {62, "1"}}) +
                             group(100, "AcDbDimension") + (blockName.empty() ? "" : group(2, blockName));
    const std::string points =
        groups({{10, "10"}, {20, "28"}, {12, "2"}, {22, "3"}, {70, "37"}, {100, "AcDbArcDimension"}}) +
        groups({{13, first}, {23, "22.5"}, {14, "10"}, {24, "25"}, {15, "10"}, {25, "20"}, {70, "1"}}) +
        groups({{40, "0.5"}, {41, textOf(3.0 * sixth)}, {71, "1"}, {16, "7"}, {26, "8"}});
    return header("AC1018") + section("BLOCKS", block("*D1", line())) + entities(head + points);
}

std::unique_ptr<AcDbDatabase> opened(const std::string& bytes) {
    return openDrawingFromMemory(bytes, L"arcs", nullptr, quietReading);
}

const AcDbBlockTableRecord& spaceOf(const AcDbDatabase& drawing) {
    return *DatabaseAccess::objectOf<AcDbBlockTableRecord>(drawing.modelSpaceId());
}

AcDbArcDimension* dimensionOf(const AcDbDatabase& drawing) {
    return DatabaseAccess::objectOf<AcDbArcDimension>(spaceOf(drawing).entities().at(0));
}

} // namespace

TEST(ArcLengthDimensions, MovedOnesSaySoInEveryForm) {
    const auto drawing = opened(drawingWith("*D1"));
    auto* dimension = dimensionOf(*drawing);
    ASSERT_TRUE(dimension);
    double measured = 0.0;
    EXPECT_EQ(dimension->measurement(measured), Acad::eOk);
    EXPECT_NEAR(measured, 5.0 * 2.0 * sixth, 1e-12);
    const std::string fields = saved(*drawing, fromFields);
    EXPECT_EQ(saved(*opened(fields), fromFields), fields);
    EXPECT_EQ(dimensionOf(*opened(fields))->arcStartParam(), 0.5);

    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(2.0 * sixth, AcGeVector3d::kZAxis);
    change<AcDbArcDimension>(dimension->objectId(), [&](AcDbArcDimension& each) {
        EXPECT_EQ(each.transformBy(AcGeMatrix3d::translation({1e6, 0.0, 0.0})), Acad::eOk);
        EXPECT_EQ(each.arcStartParam(), 0.5);
        EXPECT_EQ(each.transformBy(turn * AcGeMatrix3d::translation({-1e6, 0.0, 0.0})), Acad::eOk);
    });
    for (const DrawingVersion version : {DrawingVersion::k2000, DrawingVersion::k2018})
        for (const DrawingCoding coding : {DrawingCoding::kText, DrawingCoding::kBinary}) {
            const auto again = opened(saved(*drawing, {.version = version, .coding = coding}));
            const auto* other = dimensionOf(*again);
            ASSERT_TRUE(other);
            EXPECT_NEAR(other->arcStartParam(), 3.0 * sixth, 1e-9);
            EXPECT_NEAR(other->arcEndParam(), 5.0 * sixth, 1e-9);
            EXPECT_TRUE(other->isPartial() && other->hasLeader() && other->dimBlockId().isResident());
            EXPECT_TRUE(other->centerPoint().isEqualTo(turn * AcGePoint3d(10.0, 20.0, 0.0)));
            EXPECT_TRUE(other->leader1Point().isEqualTo(turn * AcGePoint3d(7.0, 8.0, 0.0)));
        }
}

TEST(ArcLengthDimensions, R12HasWhatIsSeen) {
    for (const char* blockName : {"*D1", ""}) {
        const auto older = opened(saved(*opened(drawingWith(blockName)), DrawingVersion::kR12));
        for (const AcDbObjectId id : spaceOf(*older).entities())
            EXPECT_EQ(DatabaseAccess::objectOf<AcDbEntity>(id)->colorIndex(), 1);
        std::set<std::wstring> kinds;
        for (const ListedEntity& each : listDrawing(*older).entities)
            if (each.space == L"*Model_Space") {
                kinds.insert(each.type + L' ' + each.layer);
                EXPECT_TRUE(!*blockName || each.vertices.at(0) == (std::array{2.0, 3.0, 0.0, 0.0}));
            }
        const std::set<std::wstring> wanted =
            *blockName ? std::set<std::wstring>{L"INSERT Notes"}
                       : std::set<std::wstring>{L"ARC Notes", L"LINE Notes", L"SOLID Notes", L"TEXT Notes"};
        EXPECT_EQ(kinds, wanted) << blockName;
    }
}

// Programs without a fixed number for the class find it by its record.
TEST(ArcLengthDimensions, NewOnesAreAnnounced) {
    AcDbDatabase drawing;
    const AcGePoint3d centre, first(5.0, 0.0, 0.0), second(0.0, 5.0, 0.0), arc(6.0, 6.0, 0.0);
    for (int i = 0; i < 2; ++i) appendToModelSpace(drawing, new AcDbArcDimension(centre, first, second, arc));
    const std::string bytes = saved(drawing, DrawingVersion::k2018);
    EXPECT_EQ(countOf(bytes, "AcDbArcDimension"), 3u);
    EXPECT_EQ(countOf(bytes, group(90, "1025") + group(91, "2")), 1u);
    const auto again = opened(bytes);
    EXPECT_EQ(countOf(saved(*again, fromFields), "AcDbArcDimension"), 3u);
    EXPECT_EQ(dimensionOf(*again)->arcEndParam(), 3.0 * sixth);
}
