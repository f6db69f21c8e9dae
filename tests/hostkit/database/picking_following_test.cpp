#include "drawingparts.h"

#include "acgi.h"
#include "blockdrawing.h"
#include "changelog.h"
#include "db2dpolyline.h"
#include "dbaccess.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dbdim.h"
#include "dblayertable.h"
#include "dbline.h"
#include "dbpoint.h"
#include "entitypicking.h"

#include <algorithm>
#include <functional>

namespace {

using namespace drawingtest;
using hostkit::DatabaseAccess;
using hostkit::PickRegion;

/// A class of an application that is known by what it draws: a block, and a stroke that a clip cuts off.
class Stamp : public AcDbEntity {
public:
    explicit Stamp(AcDbObjectId block)
        : m_block(block) {}
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override {
        hostkit::drawBlock(*draw, m_block, AcGeMatrix3d::kIdentity);
        AcGiClipBoundary clip;
        clip.m_aptPoints.append(AcGePoint2d(-1.0, -1.0));
        clip.m_aptPoints.append(AcGePoint2d(1.0, 1.0));
        draw->geometry().pushClipBoundary(&clip);
        const AcGePoint3d ends[] = {{0.0, 0.0, 0.0}, {2.0, 0.0, 0.0}};
        draw->geometry().polyline(2, ends);
        draw->geometry().popClipBoundary();
        return Adesk::kTrue;
    }

private:
    AcDbObjectId m_block;
};

/// Each change brings something to a place far from all else.
class PickFollowing : public testing::Test {
protected:
    static constexpr double far = 5000.0;

    void SetUp() override {
        for (const wchar_t* name : {L"Small", L"Middle", L"Large", L"Other"})
            m_blocks.push_back(addRecord<AcDbBlockTable>(m_drawing, name));
        m_point = append(m_blocks[0], new AcDbPoint({0, 0, 0}));
        m_middle = append(m_blocks[1], new AcDbBlockReference({1, 0, 0}, m_blocks[0]));
        append(m_blocks[2], new AcDbBlockReference({0, 1, 0}, m_blocks[1]));
        append(m_blocks[3], new AcDbPoint({far, 0, 0}));
        for (int i = 0; i < 60; ++i) {
            append(m_blocks[2], new AcDbPoint({i * 0.1, 3, 0}));
            append(space(), new AcDbLine({double(i), 10, 0}, {double(i), 20, 0}));
        }
        auto* reference = new AcDbBlockReference({0, 0, 0}, m_blocks[2]);
        auto* attribute = new AcDbAttribute;
        attribute->setTag(L"T");
        attribute->setTextString(L"Mark");
        attribute->setHeight(1.0);
        ASSERT_EQ(reference->appendAttribute(attribute), Acad::eOk);
        m_reference = append(space(), reference);
        m_attribute = attribute->objectId();
        auto* dimension = new AcDbDimension(AcDbDimension::kAligned);
        ASSERT_EQ(dimension->setDimBlockId(m_blocks[1]), Acad::eOk);
        m_dimension = append(space(), dimension);
        m_stamp = append(space(), new Stamp(m_blocks[1]));
        auto* polyline =
            new AcDb2dPolyline(AcDb::k2dSimplePoly, pointsOf({{0, 0, 0}, {0, 1, 0}}), 0.0, false);
        m_polyline = append(space(), polyline);
        m_vertex = polyline->vertices().idAt(1);
        m_drawing.disableUndoRecording(false);
    }
    AcDbObjectId space() const { return m_drawing.modelSpaceId(); }
    /// What is picked anywhere far out.
    std::vector<AcDbObjectId> found() {
        const PickRegion region = PickRegion::box({far - 50.0, -50.0}, {far + 50.0, 50.0});
        return pickedEntities(m_drawing, space(), {}, region, hostkit::PickMode::touching);
    }

    AcDbDatabase m_drawing;
    std::vector<AcDbObjectId> m_blocks;
    AcDbObjectId m_point, m_middle, m_reference, m_attribute, m_dimension, m_stamp, m_polyline, m_vertex;
};

TEST_F(PickFollowing, ChangesReachAllThatShowThem) {
    using Ids = std::vector<AcDbObjectId>;
    struct Case {
        const char* name;
        std::function<void()> change;
        Ids expected;
    };
    const AcGeMatrix3d motion = AcGeMatrix3d::translation({far, 0.0, 0.0});
    const auto move = [&](AcDbObjectId id) {
        change<AcDbEntity>(id, [&](auto& entity) { EXPECT_EQ(entity.transformBy(motion), Acad::eOk); });
    };
    const auto shift = [&](AcDbObjectId block) {
        change<AcDbBlockTableRecord>(block, [&](auto& record) { (void)record.setOrigin({-far, 0.0, 0.0}); });
    };
    const Ids all = {m_reference, m_dimension, m_stamp};
    const std::vector<Case> cases = {
        {"an entity three blocks deep", [&] { move(m_point); }, all},
        {"a block within blocks", [&] { move(m_middle); }, all},
        {"the origin of the innermost block", [&] { shift(m_blocks[0]); }, all},
        {"the origin of the outermost", [&] { shift(m_blocks[2]); }, {m_reference}},
        {"an entity that is new deep within",
         [&] {
             append(m_blocks[0], new AcDbPoint({far, 0, 0}));
         },
         all},
        {"an inner reference to another block",
         [&] {
             change<AcDbBlockReference>(m_middle, [&](auto& inner) {
                 EXPECT_EQ(inner.setBlockTableRecord(m_blocks[3]), Acad::eOk);
             });
         },
         all},
        {"an attribute", [&] { move(m_attribute); }, {m_reference}},
        {"a vertex",
         [&] {
             change<AcDb2dVertex>(m_vertex, [&](auto& vertex) { (void)vertex.setPosition({far, 0, 0}); });
         },
         {m_polyline}},
        {"the reference", [&] { move(m_reference); }, {m_reference}},
    };
    hostkit::ChangeLog& log = DatabaseAccess::changes(m_drawing);
    EXPECT_TRUE(found().empty());
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        log.beginGroup(L"Change");
        each.change();
        log.endGroup();
        EXPECT_EQ(found(), each.expected);
        hostkit::UndoReport report;
        ASSERT_EQ(log.undo(report), Acad::eOk);
        EXPECT_TRUE(found().empty());
    }
}

TEST_F(PickFollowing, WhatIsDrawnCountsAsItIsSeen) {
    const auto takes = [&](double x, double y) {
        const PickRegion region = PickRegion::box({x - 0.1, y - 0.1}, {x + 0.1, y + 0.1});
        const auto ids = pickedEntities(m_drawing, space(), {}, region, hostkit::PickMode::touching);
        return std::count(ids.begin(), ids.end(), m_stamp) == 1;
    };
    AcDbExtents box;
    const auto* stamp = DatabaseAccess::objectOf<AcDbEntity>(m_stamp);
    ASSERT_EQ(stamp->getGeomExtents(box), Acad::eOk);
    EXPECT_EQ(box.maxPoint(), AcGePoint3d(1, 0, 0)) << "the clip bounds the stroke";
    append(m_blocks[0], new AcDbPoint({7, 7, 0}));
    ASSERT_EQ(stamp->getGeomExtents(box), Acad::eOk);
    EXPECT_EQ(box.maxPoint(), AcGePoint3d(8, 7, 0)) << "a point two blocks deep";
    const auto* dimension = DatabaseAccess::objectOf<AcDbEntity>(m_dimension);
    ASSERT_EQ(dimension->getGeomExtents(box), Acad::eOk);
    EXPECT_EQ(box.maxPoint(), AcGePoint3d(8, 7, 0)) << "as large as its block";
    EXPECT_TRUE(takes(0.5, 0.0));
    EXPECT_FALSE(takes(1.8, 0.0)) << "cut off";
    EXPECT_TRUE(takes(8.0, 7.0));
    const AcDbObjectId layer = addRecord<AcDbLayerTable>(m_drawing, L"Hidden");
    change<AcDbEntity>(m_middle, [&](auto& entity) { (void)entity.setLayer(layer); });
    change<AcDbLayerTableRecord>(layer, [](auto& record) { (void)record.setIsFrozen(true); });
    EXPECT_FALSE(takes(8.0, 7.0)) << "a part on a frozen layer";
    EXPECT_TRUE(takes(0.5, 0.0));
}

TEST_F(PickFollowing, EntitiesThatComeAndGoKeepTheirPlaces) {
    hostkit::ChangeLog& log = DatabaseAccess::changes(m_drawing);
    const auto add = [&](double y) {
        log.beginGroup(L"Add");
        const AcDbObjectId id = append(space(), new AcDbPoint({far, y, 0}));
        log.endGroup();
        return id;
    };
    hostkit::UndoReport report;
    EXPECT_TRUE(found().empty());
    for (int round = 0; round < 4; ++round) {
        const AcDbObjectId first = add(1.0);
        const AcDbObjectId second = add(2.0);
        EXPECT_EQ(found(), (std::vector<AcDbObjectId>{first, second}));
        ASSERT_EQ(log.undo(report), Acad::eOk);
        if (round % 2 == 0) {
            EXPECT_EQ(found(), std::vector<AcDbObjectId>{first});
        }
        const AcDbObjectId third = add(100.0);
        EXPECT_EQ(found(), std::vector<AcDbObjectId>{first}) << "nothing is left at the place of what went";
        change<AcDbEntity>(third, [](auto& entity) {
            (void)entity.transformBy(AcGeMatrix3d::translation({0.0, -100.0, 0.0}));
        });
        EXPECT_EQ(found(), (std::vector<AcDbObjectId>{first, third}));
        while (log.groupCount() > 0) ASSERT_EQ(log.undo(report), Acad::eOk);
        EXPECT_TRUE(found().empty());
    }
}

} // namespace
