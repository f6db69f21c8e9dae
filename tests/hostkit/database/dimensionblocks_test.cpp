// The block that shows a dimension when the dimension is moved, copied and changed.

#include "drawingpicture.h"
#include "entitymotions.h"
#include "everyentity.h"

#include "actrans.h"
#include "completedimensions.h"
#include "dbaccess.h"
#include "dbopaque.h"
#include "undohistory.h"

#include <functional>

namespace {

using namespace drawingtest;
using motions::isNear;

class DimensionBlocks : public testing::Test {
protected:
    DimensionBlocks() {
        m_flag = addRecord<AcDbBlockTable>(m_drawing, L"FLAG");
        append(m_flag, new AcDbLine({0.0, 0.0, 0.0}, {0.0, 9.0, 1.0}));
        m_block = addRecord<AcDbBlockTable>(m_drawing, L"*D");
        append(m_block, new AcDbLine({1.0, 1.0, 0.0}, {5.0, 2.0, 3.0}));
        EXPECT_EQ(erase(append(m_block, new AcDbPoint({9.0, 9.0, 9.0}))), Acad::eOk);
        append(m_block, new AcDb2dPolyline(AcDb::k2dSimplePoly, pointsOf({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}}),
                                           0.0, false));
        append(m_block, everyentity::reference<AcDbBlockReference>(m_flag).release());
        m_dimension = addDimension();
        // As if it had been read: what is taken back is unchanged again.
        using Access = hostkit::DatabaseAccess;
        Access::forEachObject(m_drawing, [](AcDbObject& each) { Access::markUnchanged(each); });
    }
    void TearDown() override { EXPECT_EQ(m_drawing.numOpenObjects(), 0); }

    AcDbObjectId addDimension() {
        auto dimension = everyentity::dimension();
        EXPECT_EQ(dimension->setDimBlockId(m_block), Acad::eOk);
        return appendToModelSpace(m_drawing, dimension.release());
    }
    void move(AcDbObjectId dimension, const AcGeMatrix3d& matrix) {
        change<AcDbDimension>(dimension,
                              [&](AcDbDimension& each) { EXPECT_EQ(each.transformBy(matrix), Acad::eOk); });
    }
    static AcDbObjectId blockOf(AcDbObjectId dimension) {
        return AcDbObjectPointer<AcDbDimension>(dimension, AcDb::kForRead, true)->dimBlockId();
    }
    /// The points that make up what a block holds: of lines, of vertices, of inserted lines, of attributes.
    static std::vector<AcGePoint3d> pointsIn(AcDbObjectId block, const AcGeMatrix3d& matrix = {}) {
        std::vector<AcGePoint3d> points;
        AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead, true);
        for (const AcDbObjectId id : record->entities()) {
            AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead, true);
            if (const auto* line = AcDbLine::cast(entity.object()))
                points.insert(points.end(), {matrix * line->startPoint(), matrix * line->endPoint()});
            if (const auto* polyline = AcDb2dPolyline::cast(entity.object()))
                for (std::size_t i = 0; i < polyline->vertices().count(); ++i)
                    points.push_back(matrix * polyline->vertexPosition(static_cast<const AcDb2dVertex&>(
                                                  *polyline->vertices().at(i))));
            const auto* reference = AcDbBlockReference::cast(entity.object());
            if (!reference) continue;
            for (const AcGePoint3d& end : pointsIn(reference->blockTableRecord()))
                points.push_back(matrix * (reference->blockTransform() * end));
            for (std::size_t i = 0; i < reference->attributes().count(); ++i)
                points.push_back(matrix *
                                 static_cast<const AcDbText*>(reference->attributes().at(i))->position());
        }
        return points;
    }
    static void expectMoved(AcDbObjectId block, const std::vector<AcGePoint3d>& wanted, double reach) {
        const std::vector<AcGePoint3d> found = pointsIn(block);
        ASSERT_EQ(found.size(), wanted.size());
        for (std::size_t i = 0; i < found.size(); ++i)
            EXPECT_TRUE(isNear(found[i], wanted[i], 100.0 * reach)) << i;
    }

    AcDbDatabase m_drawing;
    AcDbObjectId m_flag;
    AcDbObjectId m_block;
    AcDbObjectId m_dimension;
};

TEST_F(DimensionBlocks, AMovedOneHasABlockOfItsOwn) {
    m_drawing.disableUndoRecording(false);
    const std::vector<AcGePoint3d> still = pointsIn(m_block);
    for (const bool isShared : {false, true}) {
        for (const motions::Motion& motion : motions::all()) {
            if (!motion.keepsShape) continue;
            SCOPED_TRACE(motion.name);
            const std::vector<AcGePoint3d> wanted = pointsIn(m_block, motion.matrix);
            EXPECT_EQ(wanted.size(), 8u);
            const std::string before = pictureOf(m_drawing);
            hostkit::beginUndoGroup(m_drawing, L"MOVE");
            {
                // Who moves the dimensions of all blocks has the table open.
                AcDbSymbolTablePointer<AcDbBlockTable> table(&m_drawing, AcDb::kForRead);
                move(m_dimension, motion.matrix);
            }
            hostkit::endUndoGroup(m_drawing);
            const AcDbObjectId block = blockOf(m_dimension);
            if (motion.matrix == AcGeMatrix3d()) {
                EXPECT_EQ(block, m_block);
            } else if (motion.matrix.det() < 0.0) {
                EXPECT_TRUE(block.isNull());
                EXPECT_FALSE(m_block.isErased());
            } else {
                ASSERT_TRUE(block.isResident());
                EXPECT_EQ(block == m_block, !isShared);
                expectMoved(block, wanted, motion.reach());
                if (isShared) expectMoved(m_block, still, 1.0);
                EXPECT_FALSE(m_block.isErased());
                AcDbSymbolTablePointer<AcDbBlockTable> table(&m_drawing, AcDb::kForRead);
                const auto* record = hostkit::DatabaseAccess::objectOf<AcDbBlockTableRecord>(block);
                EXPECT_TRUE(record->name().starts_with(L"*D") && record->name().size() > 2);
                EXPECT_EQ(table->find(record->name()), block);
            }
            hostkit::UndoReport report;
            ASSERT_EQ(hostkit::undoLastGroup(m_drawing, report), Acad::eOk);
            EXPECT_EQ(pictureOf(m_drawing), before);
        }
        addDimension(); // and once more, with a block that another one shows
    }
}

TEST_F(DimensionBlocks, CancelAndAbortMakeNone) {
    const std::string before = pictureOf(m_drawing);
    const AcGeMatrix3d matrix = AcGeMatrix3d::scaling(2.0);
    auto* dimension = opened<AcDbDimension>(m_dimension);
    ASSERT_EQ(dimension->transformBy(matrix), Acad::eOk);
    EXPECT_TRUE(dimension->dimBlockId().isNull());
    ASSERT_EQ(dimension->cancel(), Acad::eOk);
    EXPECT_EQ(pictureOf(m_drawing), before);
    for (const bool directly : {true, false}) {
        AcTransaction* const transaction = m_drawing.transactionManager()->startTransaction();
        if (directly) {
            move(m_dimension, matrix);
        } else {
            AcDbObject* held = nullptr;
            ASSERT_EQ(transaction->getObject(held, m_dimension, AcDb::kForWrite), Acad::eOk);
            ASSERT_EQ(AcDbDimension::cast(held)->transformBy(matrix), Acad::eOk);
        }
        m_drawing.transactionManager()->abortTransaction();
        EXPECT_EQ(pictureOf(m_drawing), before) << directly;
    }
    AcTransaction* const transaction = m_drawing.transactionManager()->startTransaction();
    AcDbObject* held = nullptr;
    ASSERT_EQ(transaction->getObject(held, m_dimension, AcDb::kForWrite), Acad::eOk);
    const std::vector<AcGePoint3d> wanted = pointsIn(m_block, matrix * matrix);
    for (int i = 0; i < 2; ++i) ASSERT_EQ(AcDbDimension::cast(held)->transformBy(matrix), Acad::eOk);
    const std::size_t records =
        AcDbSymbolTablePointer<AcDbBlockTable>(&m_drawing, AcDb::kForRead)->numRecords();
    m_drawing.transactionManager()->endTransaction();
    expectMoved(blockOf(m_dimension), wanted, 1.0);
    EXPECT_EQ(AcDbSymbolTablePointer<AcDbBlockTable>(&m_drawing, AcDb::kForRead)->numRecords(), records);
}

TEST_F(DimensionBlocks, AMotionThatWasClosedInATransactionWaitsForTheNextClose) {
    const AcGeMatrix3d matrix = AcGeMatrix3d::scaling(2.0);
    const std::vector<AcGePoint3d> still = pointsIn(m_block), wanted = pointsIn(m_block, matrix);
    auto* dimension = opened<AcDbDimension>(m_dimension);
    ASSERT_EQ(dimension->transformBy(matrix), Acad::eOk);
    m_drawing.transactionManager()->startTransaction();
    ASSERT_EQ(dimension->close(), Acad::eOk);
    expectMoved(m_block, wanted, 1.0);
    m_drawing.transactionManager()->abortTransaction();
    expectMoved(m_block, still, 1.0);
    EXPECT_TRUE(blockOf(m_dimension).isNull());
    change<AcDbDimension>(m_dimension, [](AcDbDimension& each) { each.recordGraphicsModified(); });
    EXPECT_EQ(blockOf(m_dimension), m_block);
    expectMoved(m_block, wanted, 1.0);
}

TEST_F(DimensionBlocks, WhatIsShownElsewhereStaysWhereItIs) {
    const AcGeMatrix3d matrix = AcGeMatrix3d::translation({7.0, 0.0, 0.0});
    const AcDbObjectId second = addDimension(), third = addDimension();
    ASSERT_EQ(erase(third), Acad::eOk);
    const std::vector<AcGePoint3d> still = pointsIn(m_block), wanted = pointsIn(m_block, matrix);
    move(m_dimension, matrix);
    EXPECT_EQ(blockOf(second), m_block);
    expectMoved(m_block, still, 1.0);
    expectMoved(blockOf(m_dimension), wanted, 1.0);
    // Two that are moved at one time.
    auto* one = opened<AcDbDimension>(second);
    ASSERT_EQ(erase(third, false), Acad::eOk);
    auto* other = opened<AcDbDimension>(third);
    ASSERT_EQ(one->transformBy(matrix), Acad::eOk);
    ASSERT_EQ(other->transformBy(matrix), Acad::eOk);
    ASSERT_EQ(one->close(), Acad::eOk);
    expectMoved(m_block, still, 1.0);
    ASSERT_EQ(other->close(), Acad::eOk);
    expectMoved(blockOf(second), wanted, 1.0);
    expectMoved(m_block, wanted, 1.0);
    EXPECT_EQ(blockOf(third), m_block) << "nobody else shows it any more";
    append(m_drawing.paperSpaceId(), new AcDbBlockReference({}, m_block));
    move(third, matrix);
    expectMoved(m_block, wanted, 1.0);
    const AcDbObjectId own = blockOf(third);
    {
        const AcDbObjectId part =
            AcDbObjectPointer<AcDbBlockTableRecord>(own, AcDb::kForRead)->entities().back();
        AcDbObjectPointer<AcDbEntity> looking(part, AcDb::kForRead);
        move(third, matrix);
    }
    EXPECT_NE(blockOf(third), own) << "somebody looked at a part of it";
    expectMoved(own, pointsIn(m_block, matrix), 1.0);
    expectMoved(blockOf(third), pointsIn(own, matrix), 1.0);
}

TEST_F(DimensionBlocks, ErasedOnesKeepTheirs) {
    const AcGeMatrix3d matrix = AcGeMatrix3d::translation({7.0, 0.0, 0.0});
    const AcDbObjectId second = addDimension();
    ASSERT_EQ(erase(second), Acad::eOk);
    const std::vector<AcGePoint3d> still = pointsIn(m_block), wanted = pointsIn(m_block, matrix);
    move(m_dimension, matrix);
    ASSERT_EQ(erase(second, false), Acad::eOk);
    EXPECT_EQ(blockOf(second), m_block);
    expectMoved(m_block, still, 1.0);
    change<AcDbDimension>(second, [&](AcDbDimension& each) {
        EXPECT_EQ(each.transformBy(matrix), Acad::eOk);
        EXPECT_EQ(each.erase(), Acad::eOk);
    });
    EXPECT_TRUE(blockOf(second).isNull());
    expectMoved(m_block, still, 1.0);
    ASSERT_EQ(erase(second, false), Acad::eOk);
    expectMoved(blockOf(second), wanted, 1.0);
}

TEST_F(DimensionBlocks, CopiesGetTheirsInTheDrawing) {
    const AcGeMatrix3d matrix = AcGeMatrix3d::translation({7.0, 1.0, 0.0});
    const auto movedCopy = [&] {
        AcDbEntity* copy = nullptr;
        EXPECT_EQ(
            AcDbObjectPointer<AcDbDimension>(m_dimension, AcDb::kForRead)->getTransformedCopy(matrix, copy),
            Acad::eOk);
        return copy;
    };
    const std::vector<AcGePoint3d> still = pointsIn(m_block), wanted = pointsIn(m_block, matrix);
    const AcDbObjectId copy = appendToModelSpace(m_drawing, movedCopy());
    expectMoved(blockOf(copy), wanted, 1.0);
    EXPECT_EQ(blockOf(m_dimension), m_block);
    expectMoved(m_block, still, 1.0);
    AcDbDatabase other;
    const AcDbObjectId abroad = appendToModelSpace(other, movedCopy());
    EXPECT_TRUE(blockOf(abroad).isNull());
}

TEST_F(DimensionBlocks, WhatCannotBeMovedIsDropped) {
    append(m_block, new AcDbOpaqueEntity(L"UNKNOWN"));
    const std::vector<AcGePoint3d> still = pointsIn(m_block);
    const std::size_t count = hostkit::DatabaseAccess::stubCount(m_drawing);
    move(m_dimension, AcGeMatrix3d::translation({7.0, 0.0, 0.0}));
    EXPECT_TRUE(blockOf(m_dimension).isNull());
    expectMoved(m_block, still, 1.0);
    EXPECT_EQ(hostkit::DatabaseAccess::stubCount(m_drawing), count);
    // A save draws it anew; what nobody could move stays.
    EXPECT_EQ(hostkit::completeDimensions(m_drawing), 1);
    EXPECT_FALSE(blockOf(m_dimension).isNull());
    EXPECT_FALSE(m_block.isErased());
}

TEST_F(DimensionBlocks, OtherChangesDropIt) {
    const AcDbObjectId style = addRecord<AcDbDimStyleTable>(m_drawing, L"OTHER");
    using Set = std::function<Acad::ErrorStatus(AcDbDimension&)>;
    const std::vector<std::pair<bool, Set>> cases = {
        {true, [](auto& each) { return each.setPointOf(13, AcGePoint3d(1.0, 1.0, 0.0)); }},
        {false, [](auto& each) { return each.setPointOf(13, AcGePoint3d(1.0, 1.0, 1e-12)); }},
        {true, [](auto& each) { return each.setTextPosition(AcGePoint3d(3.0, 3.5, 0.0)); }},
        {false, [](auto& each) { return each.setTextPosition(AcGePoint3d(3.0, 3.0, 0.0)); }},
        {true, [](auto& each) { return each.setRotation(0.25); }},
        {false, [](auto& each) { return each.setRotation(0.5); }},
        {true, [](auto& each) { return each.setDimensionText(L""); }},
        {false, [](auto& each) { return each.setDimensionText(L"<> m"); }},
        {true, [](auto& each) { return each.setNormal(AcGeVector3d(0.0, 0.0, 2.0)); }},
        {false, [](auto& each) { return each.setNormal(AcGeVector3d(0.0, 0.0, -1.0)); }},
        {true, [](auto& each) { return each.setDimensionStyle(each.dimensionStyle()); }},
        {false, [&](auto& each) { return each.setDimensionStyle(style); }},
        {false, [](auto& each) { return each.setDimBlockId(AcDbObjectId()); }},
        {true, [](auto& each) { return each.transformBy(AcGeMatrix3d()); }}};
    change<AcDbDimension>(m_dimension, [&](AcDbDimension& each) {
        ASSERT_EQ(each.setDimensionStyle(m_drawing.dimStyleStandard()), Acad::eOk);
    });
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const auto& [keeps, set] = cases[i];
        for (const bool isMoved : {false, true}) {
            std::unique_ptr<AcDbDimension> copy =
                motions::copyOf(*AcDbObjectPointer<AcDbDimension>(m_dimension, AcDb::kForRead).object());
            ASSERT_EQ(copy->setDimBlockId(m_block), Acad::eOk);
            // A dimension that was moved has no block yet; it gets none either.
            if (isMoved && keeps) continue;
            if (isMoved) (void)copy->transformBy(AcGeMatrix3d::translation({1.0, 0.0, 0.0}));
            ASSERT_EQ(set(*copy), Acad::eOk) << i;
            const AcDbObjectId id = appendToModelSpace(m_drawing, copy.release());
            EXPECT_EQ(blockOf(id), keeps ? m_block : AcDbObjectId()) << i << isMoved;
        }
    }
    AcDbDimension lonely;
    EXPECT_EQ(lonely.setDimBlockId(m_drawing.layerZero()), Acad::eNotThatKindOfClass);
}

// Other programs show the block displaced by that point: what they show moves as the dimension does.
TEST_F(DimensionBlocks, ThePointOfTheBlockTurnsAlong) {
    change<AcDbDimension>(m_dimension, [&](AcDbDimension& each) {
        ASSERT_EQ(each.setPointOf(12, {100.0, 0.0, 0.0}), Acad::eOk);
        ASSERT_EQ(each.setDimBlockId(m_block), Acad::eOk);
    });
    const AcGeMatrix3d turn =
        AcGeMatrix3d::translation({7.0, 8.0, 0.0}) * AcGeMatrix3d::rotation(0.5, AcGeVector3d::kZAxis);
    const std::vector<AcGePoint3d> shown =
        pointsIn(m_block, turn * AcGeMatrix3d::translation({100.0, 0.0, 0.0}));
    move(m_dimension, turn);
    const AcGePoint3d place = AcDbObjectPointer<AcDbDimension>(m_dimension, AcDb::kForRead)->pointOf(12);
    const std::vector<AcGePoint3d> written =
        pointsIn(blockOf(m_dimension), AcGeMatrix3d::translation(place.asVector()));
    ASSERT_EQ(written.size(), shown.size());
    for (std::size_t i = 0; i < shown.size(); ++i) EXPECT_LT(written[i].distanceTo(shown[i]), 1e-9) << i;
}

} // namespace
