#include "dbdatabase.h"
#include "dbent.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbsymtb.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {

// What each kind of record is filed by, after every value was set.
template <typename Record>
void expectEveryValueIsKept(short targetCode) {
    Record record;
    hostkit::GroupBlock groups;
    groups.appendInteger(281, 2); // no member tells of it: it stays
    ASSERT_EQ(record.setGroups(groups), Acad::eOk);
    EXPECT_EQ(record.height(), 1.0);
    EXPECT_EQ(record.lensLength(), 50.0);
    EXPECT_TRUE(record.viewDirection().isEqualTo(AcGeVector3d::kZAxis));
    EXPECT_TRUE(record.frontClipAtEye());
    for (int round = 1; round <= 2; ++round) { // the second time in the place of the first
        const double base = 10.0 * round;
        EXPECT_EQ(record.setWidth(base + 1), Acad::eOk);
        EXPECT_EQ(record.setHeight(base + 2), Acad::eOk);
        EXPECT_EQ(record.setCenterPoint({base + 3, base + 4}), Acad::eOk);
        EXPECT_EQ(record.setTarget({base + 5, base + 6, base + 7}), Acad::eOk);
        EXPECT_EQ(record.setViewDirection({base + 8, base + 9, -base}), Acad::eOk);
        EXPECT_EQ(record.setViewTwist(base / 7), Acad::eOk);
        EXPECT_EQ(record.setLensLength(base + 11), Acad::eOk);
        EXPECT_EQ(record.setFrontClipDistance(-base), Acad::eOk);
        EXPECT_EQ(record.setBackClipDistance(-2 * base), Acad::eOk);
        EXPECT_DOUBLE_EQ(record.width(), base + 1);
        EXPECT_EQ(record.height(), base + 2);
        EXPECT_EQ(record.centerPoint(), AcGePoint2d(base + 3, base + 4));
        EXPECT_EQ(record.target(), AcGePoint3d(base + 5, base + 6, base + 7));
        EXPECT_EQ(record.viewDirection(), AcGeVector3d(base + 8, base + 9, -base));
        EXPECT_DOUBLE_EQ(record.viewTwist(), base / 7);
        EXPECT_EQ(record.lensLength(), base + 11);
        EXPECT_EQ(record.frontClipDistance(), -base);
        EXPECT_EQ(record.backClipDistance(), -2 * base);
    }
    std::vector<short> codes;
    bool hasTarget = false;
    hostkit::GroupWalker walker(record.groups());
    for (AcDbDxfGroup group; walker.next(group); codes.push_back(group.code))
        hasTarget |= group.code == targetCode && group.point[0] == 25.0;
    EXPECT_EQ(codes.size(), 10u) << "each once";
    EXPECT_EQ(codes[0], 281);
    EXPECT_TRUE(hasTarget);
}

TEST(Views, EveryValueIsKeptUnderItsCode) {
    expectEveryValueIsKept<AcDbViewTableRecord>(12);
    expectEveryValueIsKept<AcDbViewportTableRecord>(17);
}

TEST(Views, FlagsAreBitsOfOneWord) {
    AcDbViewTableRecord view;
    EXPECT_EQ(view.setPerspectiveEnabled(true), Acad::eOk);
    EXPECT_EQ(view.setBackClipEnabled(true), Acad::eOk);
    EXPECT_EQ(view.setFrontClipAtEye(false), Acad::eOk);
    EXPECT_EQ(view.viewMode(), 1 | 4 | 16);
    EXPECT_FALSE(view.frontClipEnabled());
    EXPECT_EQ(view.setFrontClipEnabled(true), Acad::eOk);
    EXPECT_EQ(view.setPerspectiveEnabled(false), Acad::eOk);
    EXPECT_EQ(view.setFrontClipAtEye(true), Acad::eOk);
    EXPECT_EQ(view.viewMode(), 2 | 4);
}

TEST(Views, WhatIsNoViewIsRefused) {
    AcDbViewportTableRecord view;
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const double bad : {0.0, -1.0, none, HUGE_VAL}) {
        EXPECT_EQ(view.setHeight(bad), Acad::eInvalidInput);
        EXPECT_EQ(view.setWidth(bad), Acad::eInvalidInput);
        EXPECT_EQ(view.setLensLength(bad), Acad::eInvalidInput);
    }
    EXPECT_EQ(view.setViewTwist(none), Acad::eInvalidInput);
    EXPECT_EQ(view.setFrontClipDistance(HUGE_VAL), Acad::eInvalidInput);
    EXPECT_EQ(view.setViewDirection({0.0, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(view.setTarget({0.0, none, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(view.setCenterPoint({none, 0.0}), Acad::eInvalidInput);
    EXPECT_TRUE(view.groups().isEmpty());

    AcDbDatabase database;
    const AcDbSymbolTablePointer<AcDbViewportTable> table(&database, AcDb::kForRead);
    AcDbObjectId id;
    ASSERT_EQ(table->getAt(L"*Active", id), Acad::eOk);
    const AcDbObjectPointer<AcDbViewportTableRecord> active(id, AcDb::kForRead);
    EXPECT_EQ(const_cast<AcDbViewportTableRecord*>(active.object())->setHeight(5.0), Acad::eNotOpenForWrite);
}

// The later form's height counts where a viewport has both, and is the one that is set.
TEST(Views, AViewportMayHaveTwoHeights) {
    AcDbViewportTableRecord viewport;
    hostkit::GroupBlock groups;
    groups.appendReal(40, 100.0);
    groups.appendReal(41, 2.0);
    groups.appendReal(45, 30.0);
    ASSERT_EQ(viewport.setGroups(groups), Acad::eOk);
    EXPECT_EQ(viewport.height(), 30.0);
    EXPECT_EQ(viewport.width(), 60.0);
    EXPECT_EQ(viewport.setHeight(20.0), Acad::eOk);
    EXPECT_EQ(viewport.height(), 20.0);
    EXPECT_EQ(viewport.width(), 60.0);
}

TEST(Reactors, AreToldByIdInTheirOrder) {
    AcDbDatabase database;
    AcDbLine line({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(line.reactors(), nullptr);
    const AcDbObjectId ids[] = {database.layerZero(), database.modelSpaceId()};
    for (const AcDbObjectId id : ids) EXPECT_EQ(line.addPersistentReactor(id), Acad::eOk);
    const AcArray<void*>* reactors = line.reactors();
    ASSERT_NE(reactors, nullptr);
    ASSERT_EQ(reactors->length(), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(acdbIsPersistentReactor(reactors->at(i)));
        EXPECT_EQ(acdbPersistentReactorObjectId(reactors->at(i)), ids[i]);
    }
    EXPECT_FALSE(acdbIsPersistentReactor(&line));
    EXPECT_TRUE(acdbPersistentReactorObjectId(&line).isNull());
    EXPECT_TRUE(acdbPersistentReactorObjectId(nullptr).isNull());
    const AcDbLine copy(line);
    EXPECT_EQ(line.removePersistentReactor(ids[0]), Acad::eOk);
    EXPECT_EQ(line.removePersistentReactor(ids[1]), Acad::eOk);
    EXPECT_EQ(line.reactors(), nullptr);
}

} // namespace
