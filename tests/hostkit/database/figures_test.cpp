#include "dbdim.h"
#include "dbface.h"
#include "dbmain.h"
#include "dbpoint.h"
#include "dbsolid.h"
#include "dbtrace.h"
#include "entitycoordinates.h"
#include "entitymotions.h"

#include "adsdef.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using motions::boxOf;
using motions::isNear;

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

const std::vector<AcGePoint3d> kCorners = {
    {1.0, 2.0, 5.0}, {8.0, 1.0, 5.0}, {2.0, 6.0, 5.0}, {9.0, 9.0, 5.0}};

template <typename Figure>
Figure figure() {
    return Figure(kCorners[0], kCorners[1], kCorners[2], kCorners[3]);
}

template <typename Figure>
AcGePoint3d cornerOf(const Figure& figure, Adesk::UInt16 index) {
    AcGePoint3d point;
    if constexpr (std::is_same_v<Figure, AcDbFace>)
        EXPECT_EQ(figure.getVertexAt(index, point), Acad::eOk);
    else
        EXPECT_EQ(figure.getPointAt(index, point), Acad::eOk);
    return point;
}

template <typename Figure>
class CornerFigures : public testing::Test {};
using CornerFigureTypes = testing::Types<AcDbSolid, AcDbTrace, AcDbFace>;
TYPED_TEST_SUITE(CornerFigures, CornerFigureTypes);

TYPED_TEST(CornerFigures, CornersAndBoxFollowEveryMatrix) {
    for (const motions::Motion& first : motions::all()) {
        for (const motions::Motion& second : motions::all()) {
            TypeParam moved = figure<TypeParam>();
            ASSERT_EQ(moved.transformBy(first.matrix), Acad::eOk);
            ASSERT_EQ(moved.transformBy(second.matrix), Acad::eOk);
            const AcGeMatrix3d whole = second.matrix * first.matrix;
            const double reach = 300.0 * std::max(first.reach(), second.reach());
            for (Adesk::UInt16 i = 0; i < 4; ++i)
                EXPECT_TRUE(isNear(cornerOf(moved, i), whole * kCorners[i], reach))
                    << first.name << ", " << second.name;
            EXPECT_TRUE(isNear(boxOf(*motions::copyOf(moved)), boxOf(kCorners, whole), reach));
        }
    }
    TypeParam still = figure<TypeParam>();
    EXPECT_EQ(still.transformBy(motions::stretch(1.0, 1.0, 0.0)), Acad::eInvalidInput);
    EXPECT_TRUE(isNear(boxOf(still), boxOf(kCorners)));
}

template <typename Figure>
class FlatFigures : public testing::Test {};
using FlatFigureTypes = testing::Types<AcDbSolid, AcDbTrace>;
TYPED_TEST_SUITE(FlatFigures, FlatFigureTypes);

TYPED_TEST(FlatFigures, CornersStayWhenTheNormalTurns) {
    TypeParam flat = figure<TypeParam>();
    ASSERT_EQ(flat.setThickness(4.0), Acad::eOk);
    ASSERT_EQ(flat.setNormal({-1.0, 2.0, 0.5}), Acad::eOk);
    ASSERT_EQ(flat.setNormal({1.0, 1.0, 1.0}), Acad::eOk);
    for (Adesk::UInt16 i = 0; i < 4; ++i) EXPECT_TRUE(isNear(cornerOf(flat, i), kCorners[i]));
    ASSERT_EQ(flat.setPointAt(2, {-4.0, 0.5, 1.0}), Acad::eOk);
    EXPECT_TRUE(isNear(cornerOf(flat, 2), {-4.0, 0.5, 1.0}));
    ASSERT_EQ(flat.transformBy(AcGeMatrix3d::scaling(-0.5)), Acad::eOk);
    EXPECT_NEAR(flat.thickness(), 2.0, 1e-14) << "it goes along the normal, which turns round";
    AcGePoint3d kept(7.0, 7.0, 7.0);
    EXPECT_EQ(flat.getPointAt(4, kept), Acad::eInvalidIndex);
    EXPECT_EQ(kept.x, 7.0);
    EXPECT_EQ(flat.setPointAt(4, kept), Acad::eInvalidIndex);
    EXPECT_EQ(flat.setPointAt(0, {kNoNumber, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(flat.setThickness(kNoNumber), Acad::eInvalidInput);
    EXPECT_EQ(flat.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
}

TEST(Faces, EdgesHideOneByOne) {
    AcDbFace face = figure<AcDbFace>();
    ASSERT_EQ(face.makeEdgeInvisibleAt(1), Acad::eOk);
    ASSERT_EQ(face.makeEdgeInvisibleAt(3), Acad::eOk);
    ASSERT_EQ(face.makeEdgeVisibleAt(1), Acad::eOk);
    for (Adesk::UInt16 i = 0; i < 4; ++i) {
        Adesk::Boolean visible = i == 3;
        ASSERT_EQ(face.isEdgeVisibleAt(i, visible), Acad::eOk);
        EXPECT_EQ(visible, i != 3) << i;
    }
    Adesk::Boolean kept = Adesk::kTrue;
    EXPECT_EQ(face.isEdgeVisibleAt(4, kept), Acad::eInvalidIndex);
    EXPECT_EQ(face.makeEdgeInvisibleAt(4), Acad::eInvalidIndex);
    EXPECT_EQ(face.setVertexAt(4, {}), Acad::eInvalidIndex);
    EXPECT_EQ(face.setVertexAt(0, {HUGE_VAL, 0.0, 0.0}), Acad::eInvalidInput);
}

TEST(Points, MarksTurnWithTheirPlane) {
    for (const motions::Motion& motion : motions::all()) {
        AcDbPoint point({3.0, 4.0, 5.0});
        ASSERT_EQ(point.setEcsRotation(0.5), Acad::eOk);
        ASSERT_EQ(point.setThickness(2.0), Acad::eOk);
        AcGeMatrix3d before, after;
        point.getEcs(before);
        ASSERT_EQ(point.transformBy(motion.matrix), Acad::eOk);
        point.getEcs(after);
        EXPECT_TRUE(isNear(boxOf(point), boxOf({{3.0, 4.0, 5.0}}, motion.matrix))) << motion.name;
        const auto arm = [](double angle) { return AcGeVector3d(std::cos(angle), std::sin(angle), 0.0); };
        const AcGeVector3d wanted = motion.matrix * (before * arm(0.5));
        EXPECT_LT((after * arm(point.ecsRotation())).angleTo(wanted), 1e-7) << motion.name;
        ASSERT_EQ(point.transformBy(motion.matrix.inverse()), Acad::eOk);
        EXPECT_NEAR(std::remainder(point.ecsRotation() - 0.5, AcGe::kTwoPi), 0.0, 1e-12) << motion.name;
    }
    AcDbPoint point;
    EXPECT_EQ(point.setPosition({0.0, kNoNumber, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(point.setEcsRotation(kNoNumber), Acad::eInvalidInput);
    EXPECT_EQ(point.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
}

TEST(Dimensions, MeasureByTheirPoints) {
    for (const auto& [type, rotation, expected] : {std::tuple(AcDbDimension::kRotated, 0.0, 3.0),
                                                   {AcDbDimension::kRotated, AcGe::kPi / 2.0, 4.0},
                                                   {AcDbDimension::kRotated, AcGe::kPi, 3.0},
                                                   {AcDbDimension::kAligned, 1.0, 5.0},
                                                   {AcDbDimension::kRadial, 0.0, 13.0},
                                                   {AcDbDimension::kDiametric, 0.0, 13.0}}) {
        AcDbDimension dimension(type);
        ASSERT_EQ(dimension.setRotation(rotation), Acad::eOk);
        ASSERT_EQ(dimension.setPointOf(13, {1.0, 1.0, 0.0}), Acad::eOk);
        ASSERT_EQ(dimension.setPointOf(14, {4.0, 5.0, 0.0}), Acad::eOk);
        ASSERT_EQ(dimension.setPointOf(10, {0.0, 0.0, 0.0}), Acad::eOk);
        ASSERT_EQ(dimension.setPointOf(15, {5.0, 12.0, 0.0}), Acad::eOk);
        double value = 0.0;
        ASSERT_EQ(dimension.measurement(value), Acad::eOk) << type;
        EXPECT_NEAR(value, expected, 1e-14) << type;
        for (const motions::Motion& motion : motions::all()) {
            const std::unique_ptr<AcDbDimension> moved = motions::copyOf(dimension);
            ASSERT_EQ(moved->transformBy(motion.matrix),
                      motion.keepsShape ? Acad::eOk : Acad::eCannotScaleNonUniformly)
                << motion.name;
            double scale = 1.0;
            EXPECT_EQ(hostkit::isUniform(motion.matrix, scale), motion.keepsShape);
            ASSERT_EQ(moved->measurement(value), Acad::eOk);
            EXPECT_NEAR(value, expected * scale, 1e-9 * scale) << type << " " << motion.name;
        }
    }
    double kept = 8.0;
    // Two lines that are none make no angle.
    EXPECT_EQ(AcDbDimension(AcDbDimension::kTwoLineAngular).measurement(kept), Acad::eNotApplicable);
    EXPECT_EQ(kept, 8.0);
}

TEST(Dimensions, PointsAndTextKeepTheirPlaces) {
    AcDbDimension dimension(AcDbDimension::kAligned);
    AcDbExtents box;
    EXPECT_EQ(dimension.getGeomExtents(box), Acad::eInvalidExtents);
    EXPECT_TRUE(dimension.isUsingDefaultTextPosition());
    ASSERT_EQ(dimension.setPointOf(13, {1.0, 1.0, 2.0}), Acad::eOk);
    ASSERT_EQ(dimension.setTextPosition({5.0, 6.0, 7.0}), Acad::eOk);
    EXPECT_FALSE(dimension.isUsingDefaultTextPosition());
    ASSERT_EQ(dimension.setNormal({0.0, -3.0, 0.0}), Acad::eOk);
    EXPECT_TRUE(isNear(dimension.textPosition(), {5.0, 6.0, 7.0}));
    const std::vector<AcGePoint3d> places = {{1.0, 1.0, 2.0}, {5.0, 6.0, 7.0}};
    EXPECT_TRUE(isNear(boxOf(dimension), boxOf(places)));
    for (const motions::Motion& motion : motions::all()) {
        if (!motion.keepsShape) continue;
        const std::unique_ptr<AcDbDimension> moved = motions::copyOf(dimension);
        ASSERT_EQ(moved->transformBy(motion.matrix), Acad::eOk);
        EXPECT_TRUE(isNear(moved->textPosition(), motion.matrix * places[1], motion.reach())) << motion.name;
        EXPECT_TRUE(isNear(boxOf(*moved), boxOf(places, motion.matrix), motion.reach())) << motion.name;
    }
    for (const int none : {9, 17}) EXPECT_EQ(dimension.setPointOf(none, {}), Acad::eInvalidInput);
    EXPECT_EQ(dimension.setPointOf(13, {kNoNumber, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(dimension.setDimensionText(nullptr), Acad::eInvalidInput);
    ASSERT_EQ(dimension.setDimensionText(L"<> m"), Acad::eOk);
    wchar_t* text = dimension.dimensionText();
    EXPECT_STREQ(text, L"<> m");
    acutDelString(text);
    AcDbDatabase drawing;
    EXPECT_EQ(dimension.setDimensionStyle(drawing.layerZero()), Acad::eNotThatKindOfClass);
    EXPECT_EQ(dimension.setDimBlockId(drawing.layerZero()), Acad::eNotThatKindOfClass);
    EXPECT_EQ(dimension.setDimensionStyle(drawing.dimStyleStandard()), Acad::eOk);
}

TEST(Boxes, GrowFromNothing) {
    AcDbExtents box;
    EXPECT_TRUE(box.isEmpty());
    box.addExt(AcDbExtents());
    box.expandBy({1.0, 1.0, 1.0});
    box.transformBy(AcGeMatrix3d::translation({5.0, 0.0, 0.0}));
    box.addPoint({kNoNumber, 0.0, 0.0});
    EXPECT_TRUE(box.isEmpty());
    box.addPoint({1.0, 2.0, 3.0});
    EXPECT_TRUE(isNear(box, AcDbExtents({1.0, 2.0, 3.0}, {1.0, 2.0, 3.0})));
    box.expandBy({-4.0, 1.0, 0.0});
    EXPECT_TRUE(isNear(box, AcDbExtents({-3.0, 2.0, 3.0}, {1.0, 3.0, 3.0})));
    box.transformBy(AcGeMatrix3d::rotation(AcGe::kPi / 2.0, AcGeVector3d::kZAxis));
    EXPECT_TRUE(isNear(box, AcDbExtents({-3.0, -3.0, 3.0}, {-2.0, 1.0, 3.0})));
    EXPECT_EQ(box.set({0.0, 0.0, 0.0}, {1.0, -1.0, 1.0}), Acad::eInvalidInput);
    EXPECT_EQ(box.set({kNoNumber, 0.0, 0.0}, {1.0, 1.0, 1.0}), Acad::eInvalidInput);
    EXPECT_TRUE(isNear(box, AcDbExtents({-3.0, -3.0, 3.0}, {-2.0, 1.0, 3.0})));
    EXPECT_EQ(box.set({0.0, 0.0, 0.0}, {1.0, 0.0, 1.0}), Acad::eOk);
}

TEST(NormalCoordinates, GoThereAndBackByTheArbitraryAxisRule) {
    motions::Random random(3);
    for (int round = 0; round < 500; ++round) {
        // Every other normal is near the z axis, where the rule takes another axis.
        AcGeVector3d normal = random.direction();
        if (round % 2 == 0) normal = AcGeVector3d(normal.x / 40.0, normal.y / 40.0, random.sign()).normal();
        const AcGePoint3d point = random.point(1000.0);
        const AcGePoint3d local = hostkit::toEntity(normal, point);
        EXPECT_TRUE(isNear(hostkit::toWorld(normal, local), point));
        EXPECT_NEAR(local.z, point.asVector().dotProduct(normal), 1e-11) << "height over the plane";
        const AcGeVector3d x = hostkit::toWorld(normal, AcGeVector3d::kXAxis);
        const bool isNearPole = std::abs(normal.x) < 1.0 / 64.0 && std::abs(normal.y) < 1.0 / 64.0;
        EXPECT_NEAR(isNearPole ? x.y : x.z, 0.0, 1e-15);
        EXPECT_TRUE(x.crossProduct(hostkit::toWorld(normal, AcGeVector3d::kYAxis)).isEqualTo(normal));
    }
}

TEST(NormalCoordinates, MatricesThatKeepAnglesAreUniform) {
    for (const motions::Motion& motion : motions::all()) {
        double scale = -1.0;
        EXPECT_EQ(hostkit::isUniform(motion.matrix, scale), motion.keepsShape) << motion.name;
        if (motion.keepsShape) {
            EXPECT_NEAR(scale, std::cbrt(std::abs(motion.matrix.det())), 1e-12 * scale) << motion.name;
        } else {
            EXPECT_EQ(scale, -1.0);
        }
        EXPECT_TRUE(hostkit::isInvertible(motion.matrix));
    }
    AcGeMatrix3d broken;
    broken.entry[1][3] = kNoNumber;
    EXPECT_FALSE(hostkit::isInvertible(broken));
    EXPECT_FALSE(hostkit::isInvertible(motions::stretch(1.0, 0.0, 1.0)));
}

} // namespace
