// Groups of a record that are more than a field each: corners of triangles, locks and prompts of attributes,
// fit points of splines.
#include "drawingfiles.h"

#include "dbaccess.h"
#include "dbattdef.h"
#include "dbsolid.h"
#include "dbspline.h"
#include "dbtrace.h"

#include <algorithm>
#include <cmath>

using namespace hostkit;
using namespace drawingtest;

namespace {

/// The one object of the class in a drawing of that form.
template <class T, class Check>
void readOne(const std::string& version, const std::string& record, Check&& check) {
    const auto database =
        openDrawingFromMemory(header(version) + entities(record), L"test.dxf", nullptr, quietReading);
    ASSERT_TRUE(database);
    int count = 0;
    DatabaseAccess::forEachObject(*database, [&](AcDbObject& object) {
        const T* const found = T::cast(&object);
        if (found) check(*found);
        count += found != nullptr;
    });
    EXPECT_EQ(count, 1);
}

std::string corners(const std::string& record, int count) {
    std::string text = groups({{0, record}, {8, "0"}});
    for (int i = 0; i < count; ++i)
        text +=
            groups({{10 + i, std::to_string(i) + ".5"}, {20 + i, std::to_string(i * i)}, {30 + i, "3.0"}});
    return text;
}

template <class Figure>
void checkCorners(const std::string& record) {
    for (const int count : {3, 4})
        readOne<Figure>("AC1009", corners(record, count), [&](const Figure& figure) {
            for (int i = 0; i < 4; ++i) {
                const int same = std::min(i, count - 1);
                AcGePoint3d corner;
                ASSERT_EQ(figure.getPointAt(static_cast<Adesk::UInt16>(i), corner), Acad::eOk);
                EXPECT_EQ(corner.x, same + 0.5) << record << ' ' << count << ' ' << i;
                EXPECT_EQ(corner.y, same * same) << record << ' ' << count << ' ' << i;
                EXPECT_EQ(corner.z, 3.0);
            }
        });
}

} // namespace

TEST(RecordRules, aTriangleHasItsThirdCornerTwice) {
    checkCorners<AcDbSolid>("SOLID");
    checkCorners<AcDbTrace>("TRACE");
}

TEST(RecordRules, theLockOfAnAttributeIsToldFromItsVersion) {
    const struct {
        const char* version;
        const char* beforeTag;
        const char* afterTag;
        bool locked;
    } cases[] = {{"AC1027", "0", "1", true},         {"AC1027", "0", "0", false},
                 {"AC1027", "1", "0", false},        {"AC1027", nullptr, "1", true},
                 {"AC1021", "1", nullptr, true},     {"AC1021", nullptr, "1", true},
                 {"AC1021", nullptr, nullptr, false}};
    for (const auto& each : cases) {
        std::string record =
            groups({{0, "ATTDEF"}, {5, "A0"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbText"}});
        record += groups({{10, "0.0"}, {20, "0.0"}, {40, "2.5"}, {1, "S"}, {100, "AcDbAttributeDefinition"}});
        if (each.beforeTag) record += group(280, each.beforeTag);
        record += groups({{3, "Number?"}, {2, "MARK"}, {70, "4"}});
        if (each.afterTag) record += group(280, each.afterTag);
        readOne<AcDbAttributeDefinition>(each.version, record, [&](const AcDbAttributeDefinition& found) {
            EXPECT_EQ(found.lockPositionInBlock(), each.locked) << each.version << ' ' << record;
            EXPECT_EQ(found.promptText(), L"Number?");
            EXPECT_EQ(found.tagName(), L"MARK");
            EXPECT_TRUE(found.isVerifiable());
        });
    }
}

TEST(RecordRules, fitPointsLastUntilAControlPointChanges) {
    std::string record =
        groups({{0, "SPLINE"}, {5, "A0"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbSpline"}});
    record += groups({{70, "8"}, {71, "1"}, {72, "4"}, {73, "2"}, {74, "2"}});
    for (const char* knot : {"0.0", "0.0", "1.0", "1.0"}) record += group(40, knot);
    for (const int code : {10, 11})
        for (const char* x : {"1.0", "5.0"})
            record += groups({{code, x}, {code + 10, "2.0"}, {code + 20, "0.0"}});
    readOne<AcDbSpline>("AC1015", record, [](const AcDbSpline& read) {
        AcDbSpline spline(read);
        EXPECT_EQ(spline.numFitPoints(), 2);
        EXPECT_EQ(spline.setControlPointAt(1, {HUGE_VAL, 0.0, 0.0}), Acad::eInvalidInput);
        EXPECT_EQ(spline.setControlPointAt(2, {6.0, 2.0, 0.0}), Acad::eInvalidIndex);
        EXPECT_EQ(spline.numFitPoints(), 2);
        EXPECT_EQ(spline.setControlPointAt(1, {6.0, 2.0, 0.0}), Acad::eOk);
        EXPECT_EQ(spline.numFitPoints(), 0);
    });
}
