#include "dbsymtb.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

// Twice, so that each value is set anew and then in its place; groups without a member stay.
template <typename Record>
void expectEveryValueIsKept(short targetCode) {
    Record record;
    hostkit::GroupBlock groups;
    groups.appendInteger(281, 2);
    ASSERT_EQ(record.setGroups(groups), Acad::eOk);
    EXPECT_EQ(record.height(), 1.0);
    EXPECT_EQ(record.viewDirection(), AcGeVector3d::kZAxis);
    for (double base = 10.0; base <= 20.0; base += 10.0) {
        const Acad::ErrorStatus results[] = {record.setWidth(base + 1),
                                             record.setHeight(base + 2),
                                             record.setCenterPoint({base + 3, base}),
                                             record.setTarget({base + 5, base, 7}),
                                             record.setViewDirection({base + 8, base, -1}),
                                             record.setViewTwist(base / 7),
                                             record.setLensLength(base + 11),
                                             record.setFrontClipDistance(-base),
                                             record.setBackClipDistance(-2 * base)};
        for (const Acad::ErrorStatus each : results) EXPECT_EQ(each, Acad::eOk);
        const double kept[] = {record.width() - 1,           record.height() - 2,
                               record.centerPoint().x - 3,   record.centerPoint().y,
                               record.target().x - 5,        record.target().y,
                               record.target().z + base - 7, record.viewDirection().x - 8,
                               record.viewDirection().y,     record.viewDirection().z + base + 1,
                               record.viewTwist() * 7,       record.lensLength() - 11,
                               -record.frontClipDistance(),  record.backClipDistance() / -2};
        for (const double each : kept) EXPECT_DOUBLE_EQ(each, base);
    }
    std::vector<short> codes;
    hostkit::GroupWalker walker(record.groups());
    for (AcDbDxfGroup group; walker.next(group);) codes.push_back(group.code);
    EXPECT_EQ(codes.size(), 10u) << "each once";
    EXPECT_EQ(codes[0], 281);
    EXPECT_EQ(std::count(codes.begin(), codes.end(), targetCode), 1);
}

TEST(Views, EveryValueIsKeptUnderItsCode) {
    expectEveryValueIsKept<AcDbViewTableRecord>(12);
    expectEveryValueIsKept<AcDbViewportTableRecord>(17);
}

TEST(Views, FlagsAndHeightsHaveTheirRules) {
    AcDbViewportTableRecord view;
    view.setPerspectiveEnabled(true);
    view.setBackClipEnabled(true);
    view.setFrontClipAtEye(false);
    EXPECT_EQ(view.viewMode(), 1 | 4 | 16);
    view.setPerspectiveEnabled(false);
    view.setFrontClipEnabled(true);
    view.setFrontClipAtEye(true);
    EXPECT_EQ(view.viewMode(), 2 | 4);
    hostkit::GroupBlock groups; // the later form's height counts; the width is kept as a ratio
    groups.appendReal(40, 100.0);
    groups.appendReal(41, 2.0);
    groups.appendReal(45, 30.0);
    view.setGroups(groups);
    EXPECT_EQ(view.width(), 60.0);
    EXPECT_EQ(view.setHeight(20.0), Acad::eOk);
    EXPECT_EQ(view.height(), 20.0);
    EXPECT_EQ(view.width(), 60.0);
    const double none = std::numeric_limits<double>::quiet_NaN();
    const hostkit::GroupBlock before = view.groups();
    for (const double bad : {0.0, -1.0, none, HUGE_VAL})
        for (const Acad::ErrorStatus each :
             {view.setHeight(bad), view.setWidth(bad), view.setLensLength(bad)})
            EXPECT_EQ(each, Acad::eInvalidInput);
    for (const Acad::ErrorStatus each : {view.setViewTwist(none), view.setFrontClipDistance(HUGE_VAL),
                                         view.setViewDirection({0, 0, 0}), view.setTarget({0, none, 0})})
        EXPECT_EQ(each, Acad::eInvalidInput);
    EXPECT_EQ(view.groups(), before);
}

} // namespace
