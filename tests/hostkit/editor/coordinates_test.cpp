#include "acdbads.h"
#include "aced.h"
#include "currentview.h"
#include "dbcircle.h"
#include "dbdatabase.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "drawingreader.h"
#include "headervariables.h"
#include "hosttest.h"

#include <cmath>
#include <functional>
#include <numbers>
#include <random>

namespace {

resbuf system(int code) {
    resbuf record{};
    record.restype = RTSHORT;
    record.resval.rint = static_cast<short>(code);
    return record;
}

resbuf normal(double x, double y, double z) {
    resbuf record{};
    record.restype = RT3DPOINT;
    record.resval.rpoint[0] = x;
    record.resval.rpoint[1] = y;
    record.resval.rpoint[2] = z;
    return record;
}

class CoordinatesTest : public hostkit::HostTest {
protected:
    void setUcs(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y,
                const std::wstring& front = L"UCS") {
        const auto set = [&](const wchar_t* name, double a, double b, double c) {
            const double values[] = {a, b, c};
            database().header().setPoint(front + name, values, 3);
        };
        set(L"ORG", origin.x, origin.y, origin.z);
        set(L"XDIR", x.x, x.y, x.z);
        set(L"YDIR", y.x, y.y, y.z);
    }
    void setView(const AcGePoint3d& target, const AcGeVector3d& direction, double twist) {
        AcDbObjectId id;
        const AcDbSymbolTablePointer<AcDbViewportTable> table(&database(), AcDb::kForRead);
        ASSERT_EQ(table->getAt(L"*Active", id), Acad::eOk);
        const AcDbObjectPointer<AcDbViewportTableRecord> record(id, AcDb::kForWrite);
        ASSERT_EQ(record->setTarget(target), Acad::eOk);
        ASSERT_EQ(record->setViewDirection(direction), Acad::eOk);
        ASSERT_EQ(record->setViewTwist(twist), Acad::eOk);
    }
    AcGePoint3d moved(const AcGePoint3d& point, const resbuf& from, const resbuf& to, bool isVector = false) {
        const ads_point given = {point.x, point.y, point.z};
        ads_point result = {-1.0, -2.0, -3.0};
        EXPECT_EQ(acedTrans(given, &from, &to, isVector, result), RTNORM);
        return {result[0], result[1], result[2]};
    }
    static void expectNear(const AcGePoint3d& found, const AcGePoint3d& wanted, double tolerance = 1e-12) {
        EXPECT_NEAR(found.x, wanted.x, tolerance);
        EXPECT_NEAR(found.y, wanted.y, tolerance);
        EXPECT_NEAR(found.z, wanted.z, tolerance);
    }
};

// Worked by hand: a system turned by a quarter about z and moved; a view from the front, turned by a quarter.
TEST_F(CoordinatesTest, KnownPointsGoToKnownPlaces) {
    setUcs({10.0, 20.0, 30.0}, {0.0, 1.0, 0.0}, {-1.0, 0.0, 0.0});
    setView({100.0, 200.0, 300.0}, {0.0, -5.0, 0.0}, std::numbers::pi / 2.0);
    const struct {
        const char* name;
        resbuf from, to;
        AcGePoint3d point, wanted, wantedVector;
    } cases[] = {
        {"UCS to world", system(1), system(0), {1, 2, 3}, {8, 21, 33}, {-2, 1, 3}},
        {"world to UCS", system(0), system(1), {8, 21, 33}, {1, 2, 3}, {21, -8, 33}},
        {"world to display", system(0), system(2), {107, 195, 309}, {-9, 7, 5}, {-309, 107, -195}},
        {"display to world", system(2), system(0), {-9, 7, 5}, {107, 195, 309}, {7, -5, 9}},
        {"normal along x", normal(2, 0, 0), system(0), {1, 2, 3}, {3, 1, 2}, {3, 1, 2}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        expectNear(moved(each.point, each.from, each.to), each.wanted, 1e-9);
        expectNear(moved(each.point, each.from, each.to, true), each.wantedVector, 1e-9);
    }
}

// Whatever the systems: back gives the point again, by way of a third system the same, and a displacement is
// the difference of two points; a thousand kilometres out, too. Worst error seen: 5.8e-10 at 1e6.
TEST_F(CoordinatesTest, WaysBetweenSystemsAgree) {
    std::mt19937 random(20261121);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    const auto vector = [&] { return AcGeVector3d(unit(random), unit(random), unit(random) + 1.5); };
    const auto point = [&](double size) {
        return AcGePoint3d(size * unit(random), size * unit(random), size * unit(random));
    };
    for (int round = 0; round < 200; ++round) {
        const double far = round % 2 ? 1e6 : 10.0;
        const AcGeVector3d x = vector(), tilted = vector();
        setUcs(point(far), x, tilted.crossProduct(x));
        setView(point(far), vector(), unit(random) * 4.0);
        const AcGeVector3d axis = vector();
        const resbuf systems[] = {system(0), system(1), system(2), normal(axis.x, axis.y, axis.z)};
        const resbuf &from = systems[random() % 4], &by = systems[random() % 4], &to = systems[random() % 4];
        const AcGePoint3d start = point(far), end = point(far);
        const double tolerance = far * 2e-15;
        expectNear(moved(moved(start, from, to), to, from), start, tolerance);
        expectNear(moved(moved(start, from, by), by, to), moved(start, from, to), tolerance);
        const AcGeVector3d way = end - start;
        const AcGeVector3d wanted = moved(end, from, to) - moved(start, from, to);
        expectNear(moved({way.x, way.y, way.z}, from, to, true), {wanted.x, wanted.y, wanted.z}, tolerance);
        if (HasFailure()) return;
    }
}

TEST_F(CoordinatesTest, AnEntityHasTheSystemOfItsNormal) {
    AcDbCircle* circle = new AcDbCircle({1.0, 2.0, 3.0}, AcGeVector3d(0.0, 1.0, 1.0).normal(), 4.0);
    AcDbObjectId id;
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(space->appendAcDbEntity(id, circle), Acad::eOk);
    }
    resbuf entity{};
    entity.restype = RTENAME;
    ASSERT_EQ(acdbGetAdsName(entity.resval.rlname, id), Acad::eOk);
    const resbuf same = normal(0.0, 7.0, 7.0), world = system(0);
    expectNear(moved({5.0, 6.0, 7.0}, entity, world), moved({5.0, 6.0, 7.0}, same, world));
    circle->erase();
    circle->close();
    ads_point result = {1.0, 2.0, 3.0};
    EXPECT_EQ(acedTrans(result, &entity, &world, 0, result), RTERROR);
    ASSERT_EQ(acdbGetAdsName(entity.resval.rlname, database().layerZero()), Acad::eOk);
    EXPECT_EQ(acedTrans(result, &entity, &world, 0, result), RTERROR);
}

TEST_F(CoordinatesTest, WhatIsNoSystemIsRefused) {
    const resbuf world = system(0), display = system(2), sheet = system(3);
    resbuf text{};
    text.restype = RTSTR;
    const struct {
        const char* name;
        resbuf from, to;
    } cases[] = {{"code 4", system(4), world},
                 {"code -1", world, system(-1)},
                 {"a text", text, world},
                 {"no direction", normal(0, 0, 0), world},
                 {"endless", normal(HUGE_VAL, 0, 1), world},
                 {"sheet from world", world, sheet},
                 {"sheet in model space", display, sheet},
                 {"sheet to sheet", sheet, sheet}};
    ads_point point = {1.0, 2.0, 3.0}, result = {7.0, 8.0, 9.0};
    for (const auto& each : cases)
        EXPECT_EQ(acedTrans(point, &each.from, &each.to, 0, result), RTERROR) << each.name;
    EXPECT_EQ(acedTrans(nullptr, &world, &world, 0, result), RTERROR);
    EXPECT_EQ(acedTrans(point, nullptr, &world, 0, result), RTERROR);
    giveLockBack();
    ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    EXPECT_EQ(acedTrans(point, &world, &world, 0, result), RTERROR);
    EXPECT_EQ(result[0] + result[1] + result[2], 24.0);
}

TEST_F(CoordinatesTest, ADegenerateUserSystemIsTheWorld) {
    const AcGeVector3d none(0.0, 0.0, 0.0), x(1.0, 0.0, 0.0), endless(HUGE_VAL, 0.0, 0.0);
    const std::pair<AcGeVector3d, AcGeVector3d> cases[] = {
        {none, x}, {x, none}, {x, x}, {x, -x}, {endless, x}};
    for (const auto& [xAxis, yAxis] : cases) {
        setUcs({5.0, 5.0, 5.0}, xAxis, yAxis);
        expectNear(moved({1.0, 2.0, 3.0}, system(1), system(0)), {1.0, 2.0, 3.0}, 0.0);
    }
    // Axes that are long and not quite perpendicular: x counts, y follows.
    setUcs({5.0, 5.0, 5.0}, {0.0, 4.0, 0.0}, {-2.0, 1.0, 0.0});
    EXPECT_EQ(database().ucsydir(), AcGeVector3d(-1.0, 0.0, 0.0));
    setUcs({1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, {0.0, 1.0, 0.0}, L"PUCS");
    EXPECT_EQ(database().pucsxdir(), AcGeVector3d::kZAxis);
    EXPECT_EQ(database().pucsorg(), AcGePoint3d(1.0, 0.0, 0.0));
    EXPECT_EQ(database().ucsorg(), AcGePoint3d(5.0, 5.0, 5.0));
}

// --- On a sheet

std::string viewport(int number, const std::string& groups) {
    return "0\nVIEWPORT\n5\n" + std::to_string(50 + number) +
           "\n100\nAcDbEntity\n67\n1\n8\n0\n100\nAcDbViewport\n10\n200.0\n20\n100.0\n30\n0.0\n40\n80."
           "0\n41\n60.0\n69\n" +
           std::to_string(number) + "\n" + groups;
}

// Viewport 2 shows the model from the front at a scale of 1 to 10; viewport 3 is damaged.
const std::string sheetDrawing =
    "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$"
    "TILEMODE\n70\n0\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n" +
    viewport(1, "12\n0.0\n22\n0.0\n45\n60.0\n") +
    viewport(2, "12\n30.0\n22\n40.0\n16\n0.0\n26\n-1.0\n36\n0.0\n17\n1000.0\n27\n2000.0\n37\n3000.0\n"
                "42\n35.0\n45\n600.0\n51\n0.0\n90\n16389\n") +
    viewport(3, "12\n30.0\n22\n40.0\n16\n0.0\n26\n0.0\n36\n0.0\n45\n600.0\n") +
    viewport(5, "45\n600.0\n51\n90.0\n") + "0\nENDSEC\n0\nEOF\n";

TEST_F(CoordinatesTest, AViewportOfTheSheetScalesTheModelIntoIt) {
    auto drawing = hostkit::openDrawingFromMemory(sheetDrawing, L"sheet.dxf");
    ASSERT_TRUE(drawing);
    AcApDocument* document = session.host().documents().adopt(std::move(drawing), L"sheet.dxf");
    const resbuf display = system(2), sheet = system(3);
    expectNear(moved({7.0, 8.0, 9.0}, display, sheet), {7.0, 8.0, 9.0}, 0.0); // on the sheet itself

    document->setSheetViewport(2);
    const hostkit::CurrentView view = hostkit::currentView(*document);
    EXPECT_EQ(view.mode, 5);
    EXPECT_EQ(view.lensLength, 35.0);
    expectNear(moved({40.0, 20.0, 10.0}, display, sheet), {201.0, 98.0, 1.0});
    expectNear(moved({201.0, 98.0, 1.0}, sheet, display), {40.0, 20.0, 10.0});
    expectNear(moved({10.0, 20.0, 30.0}, display, sheet, true), {1.0, 2.0, 3.0});
    expectNear(moved({1001.0, 1998.0, 3003.0}, system(0), display), {1.0, 3.0, 2.0});

    document->setSheetViewport(5);
    EXPECT_NEAR(hostkit::currentView(*document).twist, AcGe::kPi / 2.0, 1e-15);
    for (const int number : {3, 4}) {
        document->setSheetViewport(number);
        ads_point point = {1.0, 2.0, 3.0};
        EXPECT_EQ(acedTrans(point, &display, &sheet, 0, point), RTERROR) << number;
        EXPECT_EQ(hostkit::currentView(*document).direction, AcGeVector3d::kZAxis) << number;
    }
}

} // namespace
