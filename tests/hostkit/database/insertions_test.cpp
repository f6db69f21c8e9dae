#include "drawingparts.h"

#include "dbaccess.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbcircle.h"
#include "dbdim.h"
#include "dbline.h"
#include "dbminsert.h"
#include "dbsolid.h"
#include "entitymotions.h"

#include <cmath>
#include <limits>

namespace {

using namespace drawingtest;
using hostkit::DatabaseAccess;
using motions::boxOf;
using motions::isNear;
using motions::partsOf;

class Insertions : public testing::Test {
protected:
    AcDbObjectId addBlock(const std::wstring& name, const AcGePoint3d& origin = {}) {
        const AcDbObjectId id = addRecord<AcDbBlockTable>(m_drawing, name);
        change<AcDbBlockTableRecord>(id, [&](auto& block) { EXPECT_EQ(block.setOrigin(origin), Acad::eOk); });
        return id;
    }

    /// A block with a flag: lines and a solid that no symmetry maps on themselves.
    AcDbObjectId addFlag(const std::wstring& name, const AcGePoint3d& origin = {}) {
        const AcDbObjectId block = addBlock(name, origin);
        append(block, new AcDbLine({0.0, 0.0, 0.0}, {0.0, 9.0, 1.0}));
        append(block, new AcDbLine({-1.0, 0.0, 0.0}, {2.0, 0.5, -2.0}));
        append(block, new AcDbSolid({0.0, 9.0, 0.0}, {5.0, 8.0, 0.0}, {0.0, 6.0, 0.0}, {3.0, 5.0, 0.0}));
        return block;
    }

    /// What is seen of an entity, down to what cannot be taken apart.
    void addParts(const AcDbEntity& entity, AcDbExtents& box) {
        const auto* reference = AcDbBlockReference::cast(&entity);
        if (!reference) return box.addExt(boxOf(entity));
        for (const auto& part : partsOf<AcDbEntity>(*reference)) addParts(*part, box);
    }
    AcDbExtents boxOfParts(const AcDbEntity& entity) {
        AcDbExtents box;
        addParts(entity, box);
        return box;
    }

    void TearDown() override { EXPECT_EQ(m_drawing.numOpenObjects(), 0); }

    AcDbDatabase m_drawing;
};

void scatter(AcDbBlockReference& reference, motions::Random& random, bool unequal) {
    const double x = random.between(0.2, 3.0) * random.sign();
    ASSERT_EQ(reference.setNormal(random.direction()), Acad::eOk);
    ASSERT_EQ(reference.setPosition(random.point(50.0)), Acad::eOk);
    ASSERT_EQ(reference.setRotation(random.between(-7.0, 7.0)), Acad::eOk);
    const double y = unequal ? random.between(0.2, 3.0) : std::abs(x);
    const double z = unequal ? random.between(0.2, 3.0) : std::abs(x);
    ASSERT_EQ(reference.setScaleFactors({x, y * random.sign(), z * random.sign()}), Acad::eOk);
}

testing::AssertionResult isNear(const AcGeMatrix3d& found, const AcGeMatrix3d& wanted, double reach = 1.0) {
    for (const AcGePoint3d& probe :
         {AcGePoint3d(), AcGePoint3d(1, 0, 0), AcGePoint3d(0, 1, 0), AcGePoint3d(0, 0, 1)}) {
        const testing::AssertionResult result = motions::isNear(found * probe, wanted * probe, reach);
        if (!result) return result;
    }
    return testing::AssertionSuccess();
}

TEST_F(Insertions, TransformIsTheProductAndComesBack) {
    const AcDbObjectId block = addFlag(L"FLAG", {2.0, 3.0, 4.0});
    motions::Random random(4);
    for (int round = 0; round < 20; ++round) {
        for (const motions::Motion& motion : motions::all()) {
            AcDbBlockReference reference({}, block);
            scatter(reference, random, round % 2 == 0);
            const AcGeMatrix3d before = reference.blockTransform();
            const AcGeScale3d scales = reference.scaleFactors();
            const double rotation = reference.rotation();
            const Acad::ErrorStatus status = reference.transformBy(motion.matrix);
            ASSERT_EQ(status, motion.keepsShape ? Acad::eOk : Acad::eCannotScaleNonUniformly) << motion.name;
            const AcGeMatrix3d matrix = motion.keepsShape ? motion.matrix : AcGeMatrix3d();
            EXPECT_TRUE(isNear(reference.blockTransform(), matrix * before)) << motion.name;
            ASSERT_EQ(reference.transformBy(matrix.inverse()), Acad::eOk);
            EXPECT_TRUE(isNear(reference.blockTransform(), before, motion.reach())) << motion.name;
            EXPECT_NEAR(reference.scaleFactors().sx, scales.sx, 1e-11) << motion.name;
            EXPECT_NEAR(reference.scaleFactors().sz, scales.sz, 1e-11) << motion.name;
            EXPECT_NEAR(std::remainder(reference.rotation() - rotation, AcGe::kTwoPi), 0.0, 1e-11)
                << motion.name;
        }
    }
}

TEST_F(Insertions, StretchAlongTheAxesIsTakenUpAndSkewIsRefused) {
    const AcDbObjectId block = addFlag(L"FLAG");
    AcDbBlockReference reference({1.0, 2.0, 3.0}, block);
    ASSERT_EQ(reference.transformBy(motions::stretch(-2.0, 3.0, 0.5)), Acad::eOk);
    EXPECT_TRUE(reference.scaleFactors().isEqualTo({-2.0, 3.0, 0.5}));
    EXPECT_EQ(reference.rotation(), 0.0);
    EXPECT_TRUE(isNear(reference.position(), {-2.0, 6.0, 1.5}));

    const AcGeMatrix3d before = reference.blockTransform();
    const AcGeMatrix3d turnAfterStretch =
        motions::stretch(1.0, 2.0, 1.0) * AcGeMatrix3d::rotation(0.5, {0, 0, 1});
    EXPECT_EQ(reference.transformBy(turnAfterStretch), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(reference.setBlockTransform(turnAfterStretch), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(reference.setBlockTransform(motions::stretch(1.0, 0.0, 1.0)), Acad::eInvalidInput);
    EXPECT_TRUE(isNear(reference.blockTransform(), before));
    ASSERT_EQ(reference.setBlockTransform(AcGeMatrix3d::translation({5.0, 0.0, 0.0})), Acad::eOk);
    EXPECT_TRUE(isNear(reference.blockTransform(), AcGeMatrix3d::translation({5.0, 0.0, 0.0})));
}

TEST_F(Insertions, BoxOfElevatedMirroredAndTurnedBlocks) {
    const AcDbObjectId block = addBlock(L"BAR", {1.0, 0.0, 0.0});
    append(block, new AcDbLine({1.0, 0.0, 0.0}, {4.0, 1.0, 2.0}));
    struct Case {
        const char* name;
        AcGeScale3d scale;
        double rotation;
        AcGeVector3d normal;
        AcDbExtents box;
    };
    const AcGeVector3d up(0.0, 0.0, 1.0);
    const double quarter = AcGe::kPi / 2.0;
    const Case cases[] = {{"elevated", {1, 1, 1}, 0.0, up, {{10, 20, 30}, {13, 21, 32}}},
                          {"mirrored", {-1, 1, 1}, 0.0, up, {{7, 20, 30}, {10, 21, 32}}},
                          {"stretched and turned", {2, 3, 1}, quarter, up, {{7, 20, 30}, {10, 26, 32}}},
                          {"seen from below", {1, 1, 1}, 0.0, -up, {{7, 20, 28}, {10, 21, 30}}},
                          {"upright", {1, 1, 1}, 0.0, {0, -1, 0}, {{10, 18, 30}, {13, 20, 31}}},
                          {"eighth of a turn",
                           {1, 1, 1},
                           quarter / 2.0,
                           up,
                           {{10, 20, 30}, {10 + std::sqrt(2.0), 20 + 2.0 * std::sqrt(2.0), 32}}}};
    for (const Case& c : cases) {
        AcDbBlockReference reference({10.0, 20.0, 30.0}, block);
        reference.setNormal(c.normal);
        reference.setRotation(c.rotation);
        reference.setScaleFactors(c.scale);
        EXPECT_TRUE(isNear(boxOf(reference), c.box)) << c.name;
    }
    AcDbBlockReference ofNothing({}, addBlock(L"NOTHING"));
    AcDbExtents kept({0, 0, 0}, {1, 1, 1});
    EXPECT_EQ(ofNothing.getGeomExtents(kept), Acad::eInvalidExtents);
    EXPECT_TRUE(isNear(kept, AcDbExtents({0, 0, 0}, {1, 1, 1})));
    EXPECT_EQ(AcDbBlockReference().getGeomExtents(kept), Acad::eInvalidExtents);
}

TEST_F(Insertions, BoxIsThatOfThePartsHoweverDeep) {
    motions::Random random(11);
    for (int round = 0; round < 30; ++round) {
        const std::wstring number = std::to_wstring(round);
        AcDbObjectId inner = addFlag(L"FLAG" + number, random.point(5.0));
        for (int level = 0; level < 3; ++level) {
            const AcDbObjectId outer =
                addBlock(L"LEVEL" + number + L"-" + std::to_wstring(level), random.point(5.0));
            for (int copy = 0; copy < 2; ++copy) {
                AcDbBlockReference* reference = new AcDbBlockReference({}, inner);
                scatter(*reference, random, false);
                append(outer, reference);
            }
            append(outer, new AcDbLine(random.point(20.0), random.point(20.0)));
            inner = outer;
        }
        AcDbBlockReference whole({}, inner);
        scatter(whole, random, false);
        EXPECT_TRUE(isNear(boxOf(whole), boxOfParts(whole))) << round;
    }
}

void fill(AcDbMInsertBlock& array, AcDbObjectId block, Adesk::UInt16 columns, double columnSpacing,
          Adesk::UInt16 rows, double rowSpacing) {
    ASSERT_EQ(array.setBlockTableRecord(block), Acad::eOk);
    ASSERT_EQ(array.setColumns(columns), Acad::eOk);
    ASSERT_EQ(array.setColumnSpacing(columnSpacing), Acad::eOk);
    ASSERT_EQ(array.setRows(rows), Acad::eOk);
    ASSERT_EQ(array.setRowSpacing(rowSpacing), Acad::eOk);
}

TEST_F(Insertions, ArraysAreSeenInEveryPlace) {
    motions::Random random(6);
    const AcDbObjectId block = addFlag(L"FLAG", {1.0, 1.0, 1.0});
    for (const motions::Motion& motion : motions::all()) {
        AcDbMInsertBlock array;
        fill(array, block, 4, 17.0, 3, -25.0);
        scatter(array, random, false);
        EXPECT_TRUE(isNear(boxOf(array), boxOfParts(array)));
        const auto before = partsOf<AcDbEntity>(array);
        EXPECT_EQ(before.size(), 36u);
        AcDbExtents moved;
        for (const auto& part : before) {
            ASSERT_EQ(part->transformBy(motion.matrix), Acad::eOk);
            moved.addExt(boxOf(*part));
        }
        if (!motion.keepsShape) continue;
        ASSERT_EQ(array.transformBy(motion.matrix), Acad::eOk) << motion.name;
        EXPECT_TRUE(isNear(boxOf(array), moved)) << motion.name;
    }
    const AcDbObjectId holder = addBlock(L"HOLDER");
    auto* nested = new AcDbMInsertBlock;
    fill(*nested, block, 1, 0.0, 5, 30.0);
    append(holder, nested);
    AcDbBlockReference turned({}, holder);
    scatter(turned, random, false);
    EXPECT_TRUE(isNear(boxOf(turned), boxOfParts(turned)));

    AcDbMInsertBlock huge;
    fill(huge, block, 32767, 1.0, 32767, 2.0);
    EXPECT_TRUE(isNear(boxOf(huge), AcDbExtents({-2.0, -1.0, -3.0}, {32770.0, 65540.0, 0.0})));
    EXPECT_EQ(huge.setColumns(0), Acad::eInvalidInput);
    EXPECT_EQ(huge.setRows(32768), Acad::eInvalidInput);
}

TEST_F(Insertions, ABlockCannotBePutIntoItself) {
    const AcDbObjectId outer = addBlock(L"OUTER");
    const AcDbObjectId middle = addBlock(L"MIDDLE");
    const AcDbObjectId inner = addFlag(L"INNER");
    append(outer, new AcDbBlockReference({}, middle));
    const AcDbObjectId inMiddle = append(middle, new AcDbBlockReference({}, inner));
    AcDbObjectPointer<AcDbBlockReference> reference(inMiddle, AcDb::kForWrite);
    EXPECT_EQ(reference->setBlockTableRecord(outer), Acad::eCyclicReference);
    EXPECT_EQ(reference->setBlockTableRecord(middle), Acad::eCyclicReference);
    EXPECT_EQ(reference->setBlockTableRecord(AcDbObjectId()), Acad::eNullObjectId);
    EXPECT_EQ(reference->setBlockTableRecord(m_drawing.layerZero()), Acad::eNotThatKindOfClass);
    EXPECT_EQ(reference->blockTableRecord(), inner);
    AcDbDatabase other;
    EXPECT_EQ(reference->setBlockTableRecord(other.modelSpaceId()), Acad::eInvalidInput);
    EXPECT_EQ(reference->setBlockTableRecord(addFlag(L"ANOTHER")), Acad::eOk);
    EXPECT_EQ(reference->setBlockTableRecord(inner), Acad::eOk);
    const auto enter = [](AcDbObjectId block, std::unique_ptr<AcDbEntity> entity) {
        AcDbObjectPointer<AcDbBlockTableRecord> opened(block, AcDb::kForWrite);
        AcDbObjectId id;
        const Acad::ErrorStatus status = opened->appendAcDbEntity(id, entity.get());
        EXPECT_EQ(id.isNull(), status != Acad::eOk);
        if (status == Acad::eOk) entity.release()->close();
        return status;
    };
    const auto referenceTo = [](AcDbObjectId block) {
        return std::make_unique<AcDbBlockReference>(AcGePoint3d(), block);
    };
    const auto dimensionOf = [](AcDbObjectId block) {
        auto dimension = std::make_unique<AcDbDimension>();
        EXPECT_EQ(dimension->setDimBlockId(block), Acad::eOk);
        return dimension;
    };
    const AcDbObjectId space = m_drawing.modelSpaceId();
    for (const AcDbObjectId block : {outer, middle, inner}) {
        EXPECT_EQ(enter(inner, referenceTo(block)), Acad::eCyclicReference);
        EXPECT_EQ(enter(inner, dimensionOf(block)), Acad::eCyclicReference);
        EXPECT_EQ(enter(space, referenceTo(block)), Acad::eOk);
    }
    EXPECT_EQ(enter(space, referenceTo(space)), Acad::eCyclicReference);
    EXPECT_EQ(enter(outer, referenceTo(inner)), Acad::eOk);
    const AcDbObjectId once = addBlock(L"ONCE");
    ASSERT_EQ(erase(append(once, new AcDbBlockReference({}, middle))), Acad::eOk);
    EXPECT_EQ(enter(middle, referenceTo(once)), Acad::eOk) << "what is erased does not count";
    EXPECT_EQ(enter(addBlock(L"SHOWN"), dimensionOf(outer)), Acad::eOk);
    EXPECT_EQ(
        enter(outer, referenceTo(
                         AcDbSymbolTablePointer<AcDbBlockTable>(&m_drawing, AcDb::kForRead)->find(L"SHOWN"))),
        Acad::eCyclicReference);
}

/// Each level shows the one below it twice: 2^40 flags, all turned.
TEST_F(Insertions, BlocksThatMultiplyAreReckonedInTime) {
    AcDbObjectId inner = addFlag(L"FLAG");
    const double far = 100.0;
    for (int level = 0; level < 40; ++level) {
        const AcDbObjectId outer = addBlock(L"LEVEL" + std::to_wstring(level));
        for (const double side : {-1.0, 1.0}) {
            AcDbBlockReference* reference = new AcDbBlockReference({side * far, 0.0, 0.0}, inner);
            reference->setRotation(side * 0.1);
            reference->setScaleFactors(AcGeScale3d(0.4));
            append(outer, reference);
        }
        inner = outer;
    }
    AcDbBlockReference whole({}, inner);
    whole.setRotation(0.3);
    AcDbExtents box;
    ASSERT_EQ(whole.getGeomExtents(box), Acad::eOk);
    EXPECT_LT(box.minPoint().x, -far);
    EXPECT_GT(box.maxPoint().x, far);
    EXPECT_LT(box.maxPoint().x, 4.0 * far);
}

template <class Attribute = AcDbAttribute>
Attribute* newAttribute(const wchar_t* tag, const AcGePoint3d& position) {
    auto* const attribute = new Attribute;
    attribute->setTag(tag);
    attribute->setTextString(L"value");
    attribute->setHeight(2.0);
    attribute->setPosition(position);
    return attribute;
}

TEST_F(Insertions, AttributesBelongToTheReference) {
    // "value" from 50 on: five letters of a third of 6 units, less the blank behind the last one.
    constexpr double kEnd = 50.0 + 25.0 / 3.0;
    const AcDbObjectId block = addFlag(L"FLAG");
    append(block, newAttribute<AcDbAttributeDefinition>(L"FAR", {1000.0, 0.0, 0.0}));
    AcDbBlockReference free({}, block);
    const AcDbExtents bare = boxOf(free);
    EXPECT_LT(bare.maxPoint().x, 100.0) << "a definition that asks for a value is not seen";

    ASSERT_EQ(free.appendAttribute(newAttribute(L"SEEN", {50.0, 0.0, 0.0})), Acad::eOk);
    AcDbAttribute* hidden = newAttribute(L"HIDDEN", {500.0, 0.0, 0.0});
    hidden->setInvisible(true);
    ASSERT_EQ(free.appendAttribute(hidden), Acad::eOk);
    EXPECT_EQ(free.appendAttribute(nullptr), Acad::eNullObjectPointer);
    EXPECT_NEAR(boxOf(free).maxPoint().x, kEnd, 1e-9);
    EXPECT_TRUE(isNear(boxOf(free), boxOfParts(free)));

    ASSERT_EQ(free.transformBy(AcGeMatrix3d::translation({7.0, 0.0, 0.0})), Acad::eOk);
    EXPECT_NEAR(boxOf(free).maxPoint().x, kEnd + 7.0, 1e-9);
    const std::unique_ptr<AcDbBlockReference> copy = motions::copyOf(free);
    ASSERT_EQ(free.transformBy(motions::stretch(-1.0, 1.0, 1.0)), Acad::eOk);
    EXPECT_NEAR(boxOf(*copy).maxPoint().x, kEnd + 7.0, 1e-9) << "a copy has attributes of its own";
    EXPECT_NEAR(boxOf(free).minPoint().x, -kEnd - 7.0, 1e-9);
    const std::unique_ptr<AcDbObjectIterator> walk(copy->attributeIterator());
    int count = 0;
    for (; !walk->done(); walk->step()) count += AcDbAttribute::cast(walk->entity()) != nullptr;
    EXPECT_EQ(count, 2);
}

TEST_F(Insertions, ResidentAttributesMoveTogetherOrNotAtAll) {
    AcDbBlockReference* made = new AcDbBlockReference({}, addFlag(L"FLAG"));
    ASSERT_EQ(made->appendAttribute(newAttribute(L"FIRST", {1.0, 0.0, 0.0})), Acad::eOk);
    const AcDbObjectId id = append(m_drawing.modelSpaceId(), made);
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
    AcDbObjectId second;
    AcDbAttribute* attribute = newAttribute(L"SECOND", {2.0, 0.0, 0.0});
    ASSERT_EQ(reference->appendAttribute(second, attribute), Acad::eOk);
    EXPECT_EQ(attribute->ownerId(), id);

    const AcGeMatrix3d step = AcGeMatrix3d::translation({10.0, 0.0, 0.0});
    EXPECT_EQ(reference->transformBy(step), Acad::eWasOpenForWrite);
    EXPECT_TRUE(isNear(reference->position(), AcGePoint3d()));
    const AcDbObjectId first = reference->attributes().idAt(0);
    AcDbAttribute* looked = nullptr;
    const auto expectFirstAt = [&](const AcGePoint3d& place) {
        ASSERT_EQ(reference->openAttribute(looked, first, AcDb::kForRead), Acad::eOk);
        EXPECT_TRUE(isNear(looked->position(), place));
        looked->close();
    };
    expectFirstAt({1.0, 0.0, 0.0});
    EXPECT_EQ(reference->openAttribute(looked, id, AcDb::kForRead), Acad::eKeyNotFound);

    ASSERT_EQ(attribute->erase(), Acad::eOk);
    attribute->close();
    ASSERT_EQ(reference->transformBy(step), Acad::eOk);
    expectFirstAt({11.0, 0.0, 0.0});
    EXPECT_EQ(reference->openAttribute(looked, second, AcDb::kForRead), Acad::eWasErased);
    ASSERT_EQ(reference->erase(), Acad::eOk);
    EXPECT_TRUE(first.isErased());
    ASSERT_EQ(reference->erase(false), Acad::eOk);
    EXPECT_FALSE(first.isErased());
    EXPECT_TRUE(second.isErased()) << "it was erased by itself";
}

TEST_F(Insertions, WhatCannotFollowIsNotTakenApart) {
    const AcDbObjectId block = addFlag(L"FLAG");
    append(block, new AcDbCircle({0.0, 0.0, 0.0}, AcGeVector3d::kZAxis, 4.0));
    AcDbBlockReference reference({}, block);
    ASSERT_EQ(reference.setScaleFactors({2.0, 1.0, 1.0}), Acad::eOk);
    AcDbVoidPtrArray parts;
    EXPECT_EQ(reference.explode(parts), Acad::eCannotScaleNonUniformly);
    EXPECT_TRUE(parts.isEmpty());
    EXPECT_EQ(AcDbBlockReference().explode(parts), Acad::eNullObjectId);
    EXPECT_NEAR(boxOf(reference).minPoint().x, -8.0, 1e-12) << "the box stretches all the same";
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const AcGeScale3d& bad : {AcGeScale3d(0.0, 1.0, 1.0), AcGeScale3d(1.0, 1.0, nan)})
        EXPECT_EQ(reference.setScaleFactors(bad), Acad::eInvalidInput);
    EXPECT_EQ(reference.setPosition({nan, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(reference.setRotation(nan), Acad::eInvalidInput);
    EXPECT_EQ(reference.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_TRUE(reference.scaleFactors().isEqualTo({2.0, 1.0, 1.0}));
}

} // namespace
