#include "drawingparts.h"

#include "curvecases.h"
#include "entitymotions.h"
#include "entitypicking.h"
#include "pickingoracle.h"

#include "dbaccess.h"
#include "dbattdef.h"

namespace {

using namespace drawingtest;
using hostkit::isPicked;
using hostkit::NestedPick;
using hostkit::pickedEntities;
using hostkit::pickedEntity;
using hostkit::pickedNested;
using hostkit::PickMode;
using hostkit::PickRegion;
using motions::Random;

PickRegion around(double x, double y, double half = 0.1) {
    return PickRegion::box({x - half, y - half}, {x + half, y + half});
}

class PickingBlocks : public testing::Test {
protected:
    AcDbObjectId addBlock(const std::wstring& name, const AcGePoint3d& origin = {}) {
        const AcDbObjectId id = addRecord<AcDbBlockTable>(m_drawing, name);
        change<AcDbBlockTableRecord>(id, [&](auto& block) { EXPECT_EQ(block.setOrigin(origin), Acad::eOk); });
        return id;
    }
    AcDbObjectId space() const { return m_drawing.modelSpaceId(); }
    AcDbObjectId insert(AcDbObjectId into, AcDbObjectId block, const AcGePoint3d& place) {
        return append(into, new AcDbBlockReference(place, block));
    }
    bool touches(AcDbObjectId entity, const PickRegion& region) const {
        const AcDbObjectPointer<AcDbEntity> opened(entity, AcDb::kForRead);
        return isPicked(*opened.object(), {}, region, PickMode::touching);
    }
    bool holds(AcDbObjectId entity, const PickRegion& region) const {
        const AcDbObjectPointer<AcDbEntity> opened(entity, AcDb::kForRead);
        return isPicked(*opened.object(), {}, region, PickMode::inside);
    }
    std::optional<NestedPick> nested(const PickRegion& region) {
        return pickedNested(m_drawing, space(), {}, region);
    }
    void setLayer(AcDbObjectId entity, AcDbObjectId layer) {
        change<AcDbEntity>(entity, [&](auto& opened) { EXPECT_EQ(opened.setLayer(layer), Acad::eOk); });
    }
    void setLayerState(AcDbObjectId layer, bool isOff, bool isFrozen) {
        change<AcDbLayerTableRecord>(layer, [&](auto& record) {
            EXPECT_EQ(record.setIsOff(isOff), Acad::eOk);
            EXPECT_EQ(record.setIsFrozen(isFrozen), Acad::eOk);
        });
    }

    AcDbDatabase m_drawing;
};

void scatter(AcDbBlockReference& reference, Random& random, double far) {
    ASSERT_EQ(reference.setNormal(random.direction()), Acad::eOk);
    ASSERT_EQ(reference.setRotation(random.between(0.0, 6.0)), Acad::eOk);
    const auto factor = [&] { return random.between(0.4, 2.5) * random.sign(); };
    ASSERT_EQ(reference.setScaleFactors({factor(), factor(), factor()}), Acad::eOk);
    ASSERT_EQ(reference.setPosition({far + random.between(-9.0, 9.0), far, random.between(-9.0, 9.0)}),
              Acad::eOk);
}

void addArray(AcDbMInsertBlock& array, Random& random) {
    array.setColumns(static_cast<Adesk::UInt16>(random.between(1.0, 4.0)));
    array.setRows(static_cast<Adesk::UInt16>(random.between(1.0, 4.0)));
    array.setColumnSpacing(random.between(-20.0, 20.0));
    array.setRowSpacing(random.between(-20.0, 20.0));
}

TEST_F(PickingBlocks, AreTakenAsTheirMovedEntities) {
    const AcDbObjectId inner = addBlock(L"Inner", {1.0, 2.0, 0.5});
    append(inner, new AcDbCircle({2, 0, 0}, AcGeVector3d(1, 2, 5).normal(), 1.5));
    append(inner, curvecases::polyline({{0, 0, 0.5}, {4, 0, -1.0}, {4, 3}}, true).release());
    const AcDbObjectId outer = addBlock(L"Outer");
    append(outer, new AcDbFace({0, 0, 0}, {3, 0, 0}, {3, 1, 1}, {0, 1, 0}));
    append(outer, curvecases::cubicSpline(true).release());
    Random random(77);
    auto* within = new AcDbBlockReference({}, inner);
    scatter(*within, random, 0.0);
    append(outer, within);
    int judged = 0, taken = 0;
    for (int round = 0; round < 80; ++round) {
        AcDbMInsertBlock reference;
        ASSERT_EQ(reference.setBlockTableRecord(outer), Acad::eOk);
        scatter(reference, random, round % 2 == 0 ? 0.0 : 2e6);
        addArray(reference, random);
        pickingoracle::Figures figures;
        pickingoracle::appendFigures(figures, reference, AcGeMatrix3d());
        const AcGeMatrix3d view = AcGeMatrix3d::rotation(random.between(0.0, 6.0), random.direction());
        for (int i = 0; i < 4; ++i) {
            const auto& line =
                figures[static_cast<std::size_t>(random.between(0.0, double(figures.size())))].lines[0];
            const AcGePoint3d at = view * line[line.size() / 3];
            const double size = std::exp(random.between(-2.0, 4.5));
            const PickRegion region =
                around(at.x + random.between(-size, size), at.y + random.between(-size, size), size);
            const pickingoracle::Judge judge(region, view);
            for (const PickMode mode : {PickMode::touching, PickMode::inside}) {
                const auto verdict =
                    mode == PickMode::touching ? judge.touches(figures) : judge.holds(figures);
                if (verdict == pickingoracle::Verdict::unsure) continue;
                ++judged;
                const bool isTaken = isPicked(reference, {view}, region, mode);
                taken += isTaken;
                ASSERT_EQ(isTaken, verdict == pickingoracle::Verdict::yes) << round;
            }
        }
    }
    EXPECT_GT(judged, 450);
    EXPECT_GT(taken, 120);
}

TEST_F(PickingBlocks, LargeArraysAreNotWalked) {
    const AcDbObjectId block = addBlock(L"Bolt");
    append(block, new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1.0));
    auto* array = new AcDbMInsertBlock;
    ASSERT_EQ(array->setBlockTableRecord(block), Acad::eOk);
    array->setColumns(32767);
    array->setRows(32767);
    array->setColumnSpacing(10.0);
    array->setRowSpacing(-10.0);
    array->setRotation(AcGe::kPi / 2.0);
    const AcDbObjectId id = append(space(), array);
    // Columns run up, rows to the right.
    EXPECT_TRUE(touches(id, around(123451.0, 200000.0)));
    EXPECT_FALSE(touches(id, around(123455.0, 200005.0)));
    EXPECT_FALSE(touches(id, around(-5.0, 200000.0)));
    EXPECT_TRUE(holds(id, PickRegion::box({-1, -1}, {327661.0, 327661.0})));
    EXPECT_FALSE(holds(id, PickRegion::box({-1, -1}, {327660.0, 327661.0})));
    const auto kite = [](double corner) {
        return PickRegion::polygon({{-1, -1}, {corner, -2}, {corner, corner}, {-2, corner}});
    };
    EXPECT_TRUE(holds(id, kite(327663.0)));
    EXPECT_FALSE(holds(id, kite(327660.0)));
    const auto pick = nested(around(123450.0, 200001.0));
    ASSERT_TRUE(pick);
    EXPECT_TRUE((pick->toWorld * AcGePoint3d()).isEqualTo({123450.0, 200000.0, 0.0}));
}

TEST_F(PickingBlocks, ShowWhatTheirLayersLetThem) {
    const AcDbObjectId own = addRecord<AcDbLayerTable>(m_drawing, L"Own");
    const AcDbObjectId other = addRecord<AcDbLayerTable>(m_drawing, L"Other");
    const AcDbObjectId block = addBlock(L"B");
    append(block, new AcDbPoint({0, 0, 0}));
    const AcDbObjectId onOther = append(block, new AcDbPoint({10, 0, 0}));
    const AcDbObjectId hidden = append(block, new AcDbPoint({20, 0, 0}));
    change<AcDbEntity>(hidden, [](auto& entity) { entity.setVisibility(AcDb::kInvisible); });
    setLayer(onOther, other);
    const AcDbObjectId reference = insert(space(), block, {});
    setLayer(reference, own);
    const auto picked = [&](double x) {
        return pickedEntity(m_drawing, space(), {}, around(x, 0)) == reference;
    };
    struct State {
        bool ownOff, ownFrozen, otherOff, otherFrozen, first, second;
    };
    for (const State& state : {State{false, false, false, false, true, true},
                               {true, false, false, false, false, true},
                               {false, true, false, false, false, false},
                               {false, false, true, false, true, false},
                               {false, false, false, true, true, false}}) {
        setLayerState(own, state.ownOff, state.ownFrozen);
        setLayerState(other, state.otherOff, state.otherFrozen);
        EXPECT_EQ(picked(0), state.first);
        EXPECT_EQ(picked(10), state.second);
        EXPECT_FALSE(picked(20));
        const bool showsAny = state.first || state.second;
        // What is not seen is not outside either.
        const auto inside =
            pickedEntities(m_drawing, space(), {}, PickRegion::box({-1, -1}, {state.second ? 11.0 : 1.0, 1}),
                           PickMode::inside);
        EXPECT_EQ(inside.size(), showsAny ? 1U : 0U);
    }
}

TEST_F(PickingBlocks, AttributesStandInTheirOwnPlace) {
    const AcDbObjectId block = addBlock(L"Tag");
    append(block, new AcDbPoint({0, 0, 0}));
    for (const bool isConstant : {false, true}) {
        auto* definition = new AcDbAttributeDefinition;
        definition->setTag(L"T");
        definition->setTextString(L"LONGER");
        definition->setHeight(1.0);
        definition->setPosition({0.0, isConstant ? 5.0 : 10.0, 0.0});
        definition->setConstant(isConstant);
        append(block, definition);
    }
    auto* reference = new AcDbBlockReference({100, 0, 0}, block);
    auto* attribute = new AcDbAttribute;
    attribute->setTag(L"T");
    attribute->setTextString(L"ab");
    attribute->setHeight(1.0);
    attribute->setPosition({200, 0, 0});
    AcDbObjectId attributeId;
    const AcDbObjectId id = append(space(), reference);
    change<AcDbBlockReference>(id, [&](auto& opened) {
        EXPECT_EQ(opened.appendAttribute(attributeId, attribute), Acad::eOk);
        attribute->close();
    });
    EXPECT_TRUE(touches(id, around(200.5, 0.5)));
    EXPECT_TRUE(touches(id, around(103.3, 5.5))) << "a constant one shows its text";
    EXPECT_FALSE(touches(id, around(100.3, 10.5))) << "others are seen in the block alone";
    EXPECT_TRUE(holds(id, PickRegion::box({99, -1}, {202, 7})));
    EXPECT_FALSE(holds(id, PickRegion::box({99, -1}, {105, 7})));
    const auto pick = nested(around(200.5, 0.5));
    ASSERT_TRUE(pick);
    EXPECT_EQ(pick->entity, attributeId);
    EXPECT_EQ(pick->containers, std::vector<AcDbObjectId>{id});
    EXPECT_TRUE(pick->toWorld.isEqualTo(AcGeMatrix3d()));
    change<AcDbAttribute>(attributeId, [](auto& opened) { opened.setInvisible(true); });
    EXPECT_FALSE(touches(id, around(200.5, 0.5)));
}

TEST_F(PickingBlocks, NestedPicksTellTheWayDown) {
    const AcDbObjectId inner = addBlock(L"Inner", {1, 0, 0});
    const AcDbObjectId low = append(inner, new AcDbCircle({1, 0, 0}, AcGeVector3d::kZAxis, 2.0));
    const AcDbObjectId top = append(inner, new AcDbLine({-9, 0, 0}, {9, 0, 0}));
    const AcDbObjectId outer = addBlock(L"Outer");
    const AcDbObjectId inOuter = insert(outer, inner, {10, 0, 0});
    auto* reference = new AcDbBlockReference({100, 50, 0}, outer);
    reference->setScaleFactors({2.0, 3.0, 1.0});
    const AcDbObjectId inSpace = append(space(), reference);
    auto* dimension = new AcDbDimension(AcDbDimension::kAligned);
    ASSERT_EQ(dimension->setDimBlockId(inner), Acad::eOk);
    const AcDbObjectId dimensionId = append(space(), dimension);
    const AcDbObjectId plain = append(space(), new AcDbPoint({7, 7, 0}));

    const auto expect = [&](const PickRegion& region, AcDbObjectId entity,
                            std::vector<AcDbObjectId> containers, const AcGePoint3d& local,
                            const AcGePoint3d& world) {
        const auto pick = nested(region);
        ASSERT_TRUE(pick);
        EXPECT_EQ(pick->entity, entity);
        EXPECT_EQ(pick->containers, containers);
        EXPECT_TRUE((pick->toWorld * local).isEqualTo(world));
    };
    // The circle's top in the block is (1, 2): 6 above the middle at (120, 50).
    expect(around(120, 56), low, {inOuter, inSpace}, {1, 2, 0}, {120, 56, 0});
    expect(around(124, 50), top, {inOuter, inSpace}, {1, 0, 0}, {120, 50, 0});
    expect(around(7, 7), plain, {}, {7, 7, 0}, {7, 7, 0});
    expect(around(1, 2), low, {dimensionId}, {1, 2, 0}, {1, 2, 0});
    EXPECT_FALSE(nested(around(120, 53)));
    EXPECT_EQ(pickedEntity(m_drawing, space(), {}, around(124, 50)), inSpace);
}

/// Files can say what no program should: blocks in themselves, and more copies than can be counted.
TEST_F(PickingBlocks, ThatHoldThemselvesEnd) {
    std::vector<AcDbObjectId> blocks;
    for (int i = 0; i < 80; ++i) {
        blocks.push_back(addBlock(L"B" + std::to_wstring(i)));
        append(blocks.back(), new AcDbPoint({double(i), 0, 0}));
        for (int twice = 0; twice < 2 && i > 0; ++twice)
            insert(blocks.back(), blocks[std::size_t(i) - 1], {});
    }
    const AcDbObjectId deep = insert(space(), blocks.back(), {});
    EXPECT_TRUE(touches(deep, around(16, 0))) << "64 deep";
    EXPECT_FALSE(touches(deep, around(15, 0)));
    EXPECT_TRUE(nested(around(16, 0)));

    const AcDbObjectId ring = addBlock(L"Ring");
    append(ring, new AcDbPoint({0, 0, 0}));
    auto* self = new AcDbBlockReference({5, 0, 0}, ring);
    const AcDbObjectId selfId = hostkit::DatabaseAccess::add(m_drawing, self, 0, ring);
    const AcDbObjectPointer<AcDbBlockTableRecord> record(ring, AcDb::kForRead);
    hostkit::DatabaseAccess::appendToBlock(const_cast<AcDbBlockTableRecord&>(*record), selfId);
    const AcDbObjectId reference = insert(space(), ring, {1000, 0, 0});
    EXPECT_TRUE(touches(reference, around(1000, 0)));
    EXPECT_FALSE(touches(reference, around(1005, 0)));
    EXPECT_TRUE(holds(reference, around(1000, 0)));
}

} // namespace
