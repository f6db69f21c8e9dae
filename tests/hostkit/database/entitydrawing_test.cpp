// What entities draw lies where their geometry says, and primitives are what they are called.
#include "drawnpaths.h"

#include "db2dpolyline.h"
#include "db3dpolyline.h"
#include "dbarc.h"
#include "dbblockreference.h"
#include "dbblocktable.h"
#include "dbblocktablerecord.h"
#include "dbcircle.h"
#include "dbdatabase.h"
#include "dbellipse.h"
#include "dbface.h"
#include "dbhatch.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbpoint.h"
#include "dbpolyline.h"
#include "dbsolid.h"
#include "dbspline.h"
#include "headervariables.h"

#include "geell3d.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <numbers>
#include <random>

using drawntest::Recorder;

namespace {

using std::numbers::pi;
using Made = std::unique_ptr<AcDbEntity>;

void expectBox(const AcDbExtents& box, const AcDbExtents& wanted, const char* what) {
    EXPECT_LT(box.minPoint().distanceTo(wanted.minPoint()), 1e-4) << what;
    EXPECT_LT(box.maxPoint().distanceTo(wanted.maxPoint()), 1e-4) << what;
}

Made bulged(std::mt19937& random) {
    std::uniform_real_distribution<double> value(-3.0, 3.0);
    auto made = std::make_unique<AcDbPolyline>();
    for (int i = 0; i < 5; ++i)
        made->addVertexAt(made->numVerts(), {value(random), value(random)}, value(random) / 3.0);
    made->setClosed(value(random) > 0.0);
    return made;
}

std::vector<Made> someOfEach(std::mt19937& random) {
    std::uniform_real_distribution<double> value(-3.0, 3.0);
    const auto point = [&] { return AcGePoint3d(value(random), value(random), value(random)); };
    const AcGeVector3d normal = AcGeVector3d(value(random), value(random), 4.0).normal();
    std::vector<Made> all;
    all.push_back(std::make_unique<AcDbLine>(point(), point()));
    all.push_back(std::make_unique<AcDbCircle>(point(), normal, 2.0));
    all.push_back(std::make_unique<AcDbArc>(point(), normal, 2.0, value(random) + 4.0, value(random) + 4.0));
    all.push_back(std::make_unique<AcDbEllipse>(point(), normal, normal.perpVector() * 3.0, 0.4, 0.5, 4.0));
    AcGePoint3dArray points;
    for (int i = 0; i < 6; ++i) points.append(point());
    AcGeDoubleArray knots;
    for (const double knot : {0.0, 0.0, 0.0, 0.0, 1.0, 2.5, 3.0, 3.0, 3.0, 3.0}) knots.append(knot);
    all.push_back(std::make_unique<AcDbSpline>(3, false, false, false, points, knots, AcGeDoubleArray()));
    all.push_back(std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, points, true));
    all.push_back(bulged(random));
    auto solid = std::make_unique<AcDbSolid>();
    auto face = std::make_unique<AcDbFace>();
    for (Adesk::UInt16 i = 0; i < 4; ++i) {
        solid->setPointAt(i, AcGePoint3d(value(random), value(random), 0.0));
        face->setVertexAt(i, points[i]);
    }
    all.push_back(std::move(solid));
    all.push_back(std::move(face));
    return all;
}

// The box is reckoned from the geometry, the picture from what is drawn.
TEST(EntityDrawing, FillsTheBoxOfTheEntity) {
    std::mt19937 random(5);
    for (int round = 0; round < 50; ++round)
        for (const Made& entity : someOfEach(random)) {
            Recorder drawn;
            EXPECT_TRUE(entity->worldDraw(&drawn));
            AcDbExtents wanted;
            ASSERT_EQ(entity->getGeomExtents(wanted), Acad::eOk);
            expectBox(drawn.box(), wanted, "drawn");
        }
}

TEST(EntityDrawing, BlocksAreDrawnWhereTheirReferencesStand) {
    std::mt19937 random(9);
    AcDbDatabase database;
    auto* block = new AcDbBlockTableRecord;
    block->setName(L"PART");
    block->setOrigin({1.0, 2.0, 0.0});
    AcDbSymbolTablePointer<AcDbBlockTable> blocks(&database, AcDb::kForWrite);
    ASSERT_EQ(blocks->add(block), Acad::eOk);
    blocks.close();
    AcDbEntity* part = bulged(random).release();
    ASSERT_EQ(block->appendAcDbEntity(part), Acad::eOk);
    const AcDbObjectId id = block->objectId();
    part->close();
    block->close();
    for (const double scale : {2.0, -2.0}) {
        auto* reference = new AcDbBlockReference({5.0, 6.0, 0.0}, id);
        reference->setScaleFactors(AcGeScale3d(scale, 2.0, 2.0));
        reference->setRotation(0.7);
        const AcDbObjectPointer<AcDbBlockTableRecord> model(database.modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(model->appendAcDbEntity(reference), Acad::eOk);
        Recorder drawn;
        reference->worldDraw(&drawn);
        AcGeMatrix3d left;
        drawn.geometry().getModelToWorldTransform(left);
        EXPECT_TRUE(left.isEqualTo(AcGeMatrix3d::kIdentity)) << "each push has its pop";
        AcDbExtents wanted;
        ASSERT_EQ(reference->getGeomExtents(wanted), Acad::eOk);
        expectBox(drawn.box(), wanted, "reference");
        reference->close();
    }
}

// Points of mode 3 and more have figures; one of mode 1 shows nothing.
TEST(EntityDrawing, PointsHaveTheFigureOfTheirDrawing) {
    AcDbDatabase database;
    auto* point = new AcDbPoint({10.0, 20.0, 0.0});
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> model(database.modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(model->appendAcDbEntity(point), Acad::eOk);
    }
    database.header().setReal(L"PDSIZE", 4.0);
    const struct {
        int mode;
        std::size_t dots;
        double reach; // from the point to the sides of the figure; 0: no figure
    } cases[] = {{0, 1, 0.0},  {1, 0, 0.0},  {2, 0, 4.0}, {3, 0, 2.0},
                 {33, 0, 2.0}, {64, 0, 2.0}, {98, 0, 4.0}};
    for (const auto& each : cases) {
        database.header().setInteger(L"PDMODE", each.mode);
        Recorder drawn;
        point->worldDraw(&drawn);
        EXPECT_EQ(drawn.dots.size(), each.dots) << each.mode;
        EXPECT_EQ(drawn.paths.empty(), each.reach == 0.0) << each.mode;
        if (each.reach > 0.0)
            expectBox(
                drawn.box(),
                {{10.0 - each.reach, 20.0 - each.reach, 0.0}, {10.0 + each.reach, 20.0 + each.reach, 0.0}},
                "figure");
    }
    point->close();
}

// Marks: s stroke, a area, x and r endless lines, l letters, c a clip.
TEST(PathPrimitives, AreWhatTheyAreCalled) {
    const AcGePoint3d square[] = {{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}};
    const AcGePoint3d net[] = {{0, 0, 0}, {4, 0, 0}, {0, 3, 0}, {4, 3, 0}};
    const AcGePoint3d ring[] = {{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}, {1, 1, 0}, {2, 1, 0}, {1, 2, 0}};
    const Adesk::Int32 faces[] = {4, 0, 1, 2, 3};
    const Adesk::UInt32 contours = 2, counts[] = {4, 3};
    AcGiClipBoundary clip;
    clip.m_aptPoints.append(AcGePoint2d(0, 0));
    clip.m_aptPoints.append(AcGePoint2d(4, 3));
    AcDbPolyline corner;
    for (int i = 0; i < 4; ++i) corner.addVertexAt(corner.numVerts(), {square[i].x, square[i].y});
    const AcGeVector3d up = AcGeVector3d::kZAxis, right = AcGeVector3d::kXAxis;
    using Draw = std::function<void(Recorder&, AcGiWorldGeometry&)>;
    const struct {
        const char* marks;
        const char* filled;
        AcDbExtents box;
        Draw draw;
    } cases[] = {{"s",
                  "a",
                  {{-2, -2, 0}, {2, 2, 0}},
                  [&](auto&, auto& to) {
                      to.circle({0, 0, 0}, 2.0, up);
                  }},
                 {"s",
                  "a",
                  {{-2, -2, 0}, {2, 2, 0}},
                  [&](auto&, auto& to) {
                      to.circle({2, 0, 0}, {0, 2, 0}, {-2, 0, 0});
                  }},
                 {"s",
                  "s",
                  {{-2, 0, 0}, {2, 2, 0}},
                  [&](auto&, auto& to) {
                      to.circularArc({0, 0, 0}, 2.0, up, right, pi);
                  }},
                 {"s",
                  "s",
                  {{-2, 0, 0}, {2, 2, 0}},
                  [&](auto&, auto& to) {
                      to.circularArc({-2, 0, 0}, {0, 2, 0}, {2, 0, 0});
                  }},
                 {"s",
                  "a",
                  {{0, 0, 0}, {2, 2, 0}},
                  [&](auto&, auto& to) {
                      to.circularArc({0, 0, 0}, 2.0, up, right, pi / 2, kAcGiArcSector);
                  }},
                 {"s",
                  "s",
                  {{-3, 0, 0}, {3, 1, 0}},
                  [&](auto&, auto& to) {
                      to.ellipticalArc(AcGeEllipArc3d({0, 0, 0}, right, AcGeVector3d::kYAxis, 3, 1, 0, pi));
                  }},
                 {"s", "s", {{0, 0, 0}, {4, 3, 0}}, [&](auto&, auto& to) { to.polyline(4, square); }},
                 {"s", "a", {{0, 0, 0}, {4, 3, 0}}, [&](auto&, auto& to) { to.polygon(4, square); }},
                 {"s", "a", {{0, 0, 0}, {4, 3, 0}}, [&](auto&, auto& to) { to.mesh(2, 2, net); }},
                 {"s", "a", {{0, 0, 0}, {4, 3, 0}}, [&](auto&, auto& to) { to.shell(4, square, 5, faces); }},
                 {"s",
                  "a",
                  {{0, 0, 0}, {4, 3, 0}},
                  [&](auto&, auto& to) { to.polyPolygon(1, &contours, nullptr, counts, ring); }},
                 {"s", "s", {{4, 0, 0}, {4, 3, 0}}, [&](auto&, auto& to) { to.pline(corner, 1, 1); }},
                 {"s",
                  "s",
                  {{0, 0, 0}, {4, 3, 0}},
                  [&](auto&, auto& to) {
                      to.image(AcGiImageBGRA32(), {0, 0, 0}, {4, 0, 0}, {0, 3, 0});
                  }},
                 {"c", "c", {{0, 0, 0}, {4, 3, 0}}, [&](auto&, auto& to) { to.pushClipBoundary(&clip); }}};
    int row = 0;
    for (const auto& each : cases) {
        for (const AcGiFillType fill : {kAcGiFillNever, kAcGiFillAlways}) {
            Recorder drawn;
            drawn.subEntityTraits().setFillType(fill);
            AcGeMatrix3d shift = AcGeMatrix3d::translation({10.0, 0.0, 0.0});
            drawn.geometry().pushModelTransform(shift);
            each.draw(drawn, drawn.geometry());
            drawn.geometry().popModelTransform();
            EXPECT_EQ(drawn.marks, fill == kAcGiFillNever ? each.marks : each.filled) << row;
            AcDbExtents wanted = each.box;
            wanted.transformBy(shift);
            expectBox(drawn.box(), wanted, each.marks);
        }
        ++row;
    }
}

} // namespace
