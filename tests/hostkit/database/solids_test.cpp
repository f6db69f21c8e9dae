// Regions and solids against formulas: areas and volumes in closed form, halves that add up, parts that make
// the whole.
#include "drawnpaths.h"

#include "dbarc.h"
#include "dbbody.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbline.h"
#include "dbpolyline.h"
#include "dbregion.h"
#include "dbsol3d.h"
#include "dbspline.h"
#include "geplane.h"
#include "memorydwgfiler.h"
#include "modelercontent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

using std::numbers::pi;
using Curves = std::vector<std::unique_ptr<AcDbCurve>>;

/// What belongs to the caller is freed.
struct Owned {
    AcDbVoidPtrArray list;
    ~Owned() {
        for (void* const each : list) delete static_cast<AcDbEntity*>(each);
    }
    AcDbRegion& region(int i) const { return *static_cast<AcDbRegion*>(list[i]); }
};

Acad::ErrorStatus makeRegions(const Curves& curves, Owned& made) {
    AcDbVoidPtrArray given;
    for (const auto& curve : curves) given.append(curve.get());
    return AcDbRegion::createFromCurves(given, made.list);
}

std::unique_ptr<AcDbPolyline> polyline(std::initializer_list<std::array<double, 3>> vertices,
                                       bool closed = true) {
    auto made = std::make_unique<AcDbPolyline>();
    for (const auto& [x, y, bulge] : vertices) made->addVertexAt(made->numVerts(), {x, y}, bulge);
    made->setClosed(closed);
    return made;
}

template <class... Curve>
Curves curves(Curve&&... curve) {
    Curves all;
    (all.push_back(std::move(curve)), ...);
    return all;
}

std::unique_ptr<AcDbPolyline> rectangle(double x, double y, double width, double height) {
    return polyline({{x, y, 0}, {x + width, y, 0}, {x + width, y + height, 0}, {x, y + height, 0}});
}

std::unique_ptr<AcDb3dSolid> raised(std::unique_ptr<AcDbCurve> outline, double height, double taper = 0.0) {
    Owned regions;
    EXPECT_EQ(makeRegions(curves(std::move(outline)), regions), Acad::eOk);
    auto solid = std::make_unique<AcDb3dSolid>();
    EXPECT_EQ(solid->extrude(&regions.region(0), height, taper), Acad::eOk);
    return solid;
}

double volumeOf(const AcDb3dSolid& solid) {
    double volume = 0.0;
    AcGePoint3d center;
    AcDbExtents box;
    EXPECT_TRUE(solid.isNull() || solid.getMassProp(volume, center, box) == Acad::eOk);
    return volume;
}

TEST(Regions, areasOfClosedLoopsAreThoseOfTheFormulas) {
    const auto line = [](double x1, double y1, double x2, double y2) {
        return std::make_unique<AcDbLine>(AcGePoint3d(x1, y1, 1), AcGePoint3d(x2, y2, 1));
    };
    AcGePoint3dArray frame;
    for (const auto& [x, y] : {std::pair{0.0, 0.0}, {0.0, 4.0}, {4.0, 4.0}, {4.0, 0.0}})
        frame.append(AcGePoint3d(x, y, 0));
    AcGeDoubleArray knots, weights;
    for (const double knot : {0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 1.0}) knots.append(knot);
    struct {
        const char* name;
        Curves curves;
        double area;
        int parts;
    } cases[] = {
        {"rectangle", curves(rectangle(1, 1, 3, 2)), 6, 4},
        {"lines in any order and sense", curves(line(0, 0, 4, 0), line(0, 3, 0, 0), line(4, 0, 0, 3)), 6, 3},
        {"circle", curves(std::make_unique<AcDbCircle>(AcGePoint3d(5, 5, 2), AcGeVector3d(0, 0, -1), 2.0)),
         4 * pi, 1},
        {"half a disc",
         curves(std::make_unique<AcDbArc>(AcGePoint3d(0, 0, 1), 2.0, 0.0, pi), line(2, 0, -2, 0)), 2 * pi, 2},
        {"slot", curves(polyline({{0, 0, 0}, {4, 0, 1}, {4, 2, 0}, {0, 2, 1}})), 8 + pi, 4},
        {"inward bulges", curves(polyline({{0, 0, 0}, {4, 0, -1}, {4, 2, 0}, {0, 2, -1}})), 8 - pi, 4},
        {"ellipse",
         curves(std::make_unique<AcDbEllipse>(AcGePoint3d(0, 0, 0), AcGeVector3d(0, 0, 1),
                                              AcGeVector3d(0, 3, 0), 0.5)),
         4.5 * pi, 1},
        // The control polygon of a cubic: 3/20 (3 x 16) + ... = 0.6 of the square, closed by its chord.
        {"spline",
         curves(std::make_unique<AcDbSpline>(3, false, false, false, frame, knots, weights),
                std::make_unique<AcDbLine>(frame[3], frame[0])),
         9.6, 33},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        Owned regions;
        ASSERT_EQ(makeRegions(each.curves, regions), Acad::eOk);
        ASSERT_EQ(regions.list.length(), 1);
        double area = 0, perimeter = 0;
        AcGeVector3d normal;
        EXPECT_EQ(regions.region(0).getArea(area), Acad::eOk);
        EXPECT_NEAR(area, each.area, each.parts > 30 ? 0.02 : 1e-12 * each.area);
        EXPECT_EQ(regions.region(0).getNormal(normal), Acad::eOk);
        EXPECT_NEAR(normal.z, 1.0, 1e-12);
        EXPECT_EQ(regions.region(0).getPerimeter(perimeter), Acad::eOk);
        EXPECT_GE(perimeter * perimeter, 4 * pi * area * (1 - 1e-6));
        // Its curves bound it again.
        Owned parts, again;
        EXPECT_EQ(regions.region(0).explode(parts.list), Acad::eOk);
        EXPECT_EQ(parts.list.length(), each.parts);
        ASSERT_EQ(AcDbRegion::createFromCurves(parts.list, again.list), Acad::eOk);
        ASSERT_EQ(again.list.length(), 1);
        double same = 0;
        EXPECT_EQ(again.region(0).getArea(same), Acad::eOk);
        EXPECT_NEAR(same, area, 1e-11 * area);
    }
}

TEST(Regions, onlyClosedFlatLoopsThatDoNotCrossThemselvesBecomeOnes) {
    struct {
        const char* name;
        Curves curves;
        int regions;
    } cases[] = {
        {"nothing", {}, 0},
        {"open", curves(polyline({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}}, false)), 0},
        {"a figure of eight", curves(polyline({{0, 0, 0}, {4, 4, 0}, {4, 0, 0}, {0, 5, 0}})), 0},
        {"no area", curves(polyline({{0, 0, 0}, {4, 4, 0}, {2, 2, 0}})), 0},
        {"not flat",
         curves(std::make_unique<AcDbArc>(AcGePoint3d(0, 0, 0), 2.0, 0.0, pi),
                std::make_unique<AcDbLine>(AcGePoint3d(2, 0, 0), AcGePoint3d(0, 1, 3)),
                std::make_unique<AcDbLine>(AcGePoint3d(0, 1, 3), AcGePoint3d(-2, 0, 0))),
         0},
        {"a hole is a region too",
         curves(rectangle(0, 0, 9, 9), rectangle(1, 1, 2, 2), polyline({{0, 0, 0}, {1, 0, 0}}, false)), 2},
    };
    for (const auto& each : cases) {
        Owned regions;
        EXPECT_EQ(makeRegions(each.curves, regions), each.regions ? Acad::eOk : Acad::eInvalidInput)
            << each.name;
        EXPECT_EQ(regions.list.length(), each.regions) << each.name;
    }
    AcDbVoidPtrArray none, out;
    none.append(nullptr);
    EXPECT_EQ(AcDbRegion::createFromCurves(none, out), Acad::eInvalidInput);
}

TEST(Regions, booleansAddUp) {
    const double disc = 36 * std::sin(2 * pi / 72) * 4; // of 72 sides
    const auto area = [](AcDb::BoolOperType operation, double z, std::size_t faces) {
        Owned regions;
        EXPECT_EQ(makeRegions(
                      curves(rectangle(-1, -5, 2, 10),
                             std::make_unique<AcDbCircle>(AcGePoint3d(0, 0, z), AcGeVector3d(0, 0, 1), 2.0)),
                      regions),
                  Acad::eOk);
        if (z != 0.0) {
            EXPECT_EQ(regions.region(1).booleanOper(operation, &regions.region(0)), Acad::eInvalidInput);
            return 0.0;
        }
        EXPECT_EQ(regions.region(1).booleanOper(operation, &regions.region(0)), Acad::eOk);
        EXPECT_TRUE(regions.region(0).isNull());
        double found = 0.0;
        EXPECT_EQ(regions.region(1).getArea(found), Acad::eOk);
        EXPECT_EQ(hostkit::ModelerFiling::content(regions.region(1))->shape()->faces.size(), faces);
        return found;
    };
    const double common = area(AcDb::kBoolIntersect, 0.0, 1);
    EXPECT_NEAR(area(AcDb::kBoolSubtract, 0.0, 2), disc - common, 1e-9);
    EXPECT_NEAR(area(AcDb::kBoolUnite, 0.0, 1), disc + 20 - common, 1e-9);
    EXPECT_NEAR(common, 2 * (std::sqrt(3.0) + 4 * std::asin(0.5)), 0.01);
    area(AcDb::kBoolUnite, 1.0, 1);
}

TEST(Solids, extrusionsHaveTheVolumeOfTheirPrismsAndFrusta) {
    const double slant = std::tan(0.2);
    const auto frustum = [](double low, double high, double height) {
        return height / 3 * (low * low + low * high + high * high);
    };
    EXPECT_NEAR(volumeOf(*raised(rectangle(1, 2, 3, 4), 5)), 60, 1e-12);
    EXPECT_NEAR(volumeOf(*raised(rectangle(1, 2, 3, 4), -5)), 60, 1e-12);
    EXPECT_NEAR(volumeOf(*raised(rectangle(0, 0, 6, 6), 5, 0.2)), frustum(6, 6 - 10 * slant, 5), 1e-11);
    EXPECT_NEAR(volumeOf(*raised(rectangle(0, 0, 6, 6), -5, -0.2)), frustum(6, 6 + 10 * slant, 5), 1e-11);
    const double polygon = 36 * std::sin(pi / 36) * std::cos(pi / 36) * 2; // of 72 sides about 1
    EXPECT_NEAR(
        volumeOf(*raised(std::make_unique<AcDbCircle>(AcGePoint3d(3, 3, 0), AcGeVector3d(0, 0, 1), 2.0), 5)),
        72 * 0.5 * std::sin(2 * pi / 72) * 4 * 5, 1e-11)
        << polygon;
    AcDbExtents box;
    ASSERT_EQ(raised(rectangle(1, 2, 3, 4), -5)->getGeomExtents(box), Acad::eOk);
    EXPECT_TRUE(box.minPoint().isEqualTo({1, 2, -5}) && box.maxPoint().isEqualTo({4, 6, 0}));
    Owned regions;
    ASSERT_EQ(makeRegions(curves(rectangle(0, 0, 2, 2)), regions), Acad::eOk);
    AcDb3dSolid solid;
    EXPECT_EQ(solid.extrude(&regions.region(0), 9, 0.2), Acad::eCannotExtrudeRegion); // its sides meet below
    EXPECT_EQ(solid.extrude(&regions.region(0), 0), Acad::eInvalidInput);
    EXPECT_EQ(solid.extrude(nullptr, 1), Acad::eInvalidInput);
    EXPECT_TRUE(solid.isNull());
}

TEST(Solids, halvesAndBooleansAddUp) {
    const auto slot = [] { return raised(polyline({{0, 0, 0}, {4, 0, 1}, {4, 2, 0}, {0, 2, 1}}), 3); };
    const double whole = volumeOf(*slot());
    auto upper = slot();
    AcDb3dSolid* lower = nullptr;
    ASSERT_EQ(upper->getSlice(AcGePlane(AcGePoint3d(2, 1, 1.3), AcGeVector3d(0.3, 0.2, 1)), true, lower),
              Acad::eOk);
    ASSERT_NE(lower, nullptr);
    const std::unique_ptr<AcDb3dSolid> owned(lower);
    EXPECT_NEAR(volumeOf(*upper) + volumeOf(*lower), whole, 1e-9);
    AcDbExtents box;
    ASSERT_EQ(upper->getGeomExtents(box), Acad::eOk);
    EXPECT_NEAR(box.maxPoint().z, 3.0, 1e-12);
    EXPECT_EQ(upper->getSlice(AcGePlane(AcGePoint3d(0, 0, 9), AcGeVector3d(0, 0, 1)), false, lower),
              Acad::eNoIntersections);

    const auto boolean = [&](AcDb::BoolOperType operation) {
        auto first = slot();
        const auto second = raised(rectangle(1, -1, 2, 7), 2);
        EXPECT_EQ(first->booleanOper(operation, second.get()), Acad::eOk);
        EXPECT_TRUE(second->isNull());
        return volumeOf(*first);
    };
    EXPECT_NEAR(boolean(AcDb::kBoolIntersect), 2 * 2 * 2, 1e-9);
    EXPECT_NEAR(boolean(AcDb::kBoolUnite), whole + 2 * 7 * 2 - 8, 1e-9);
    EXPECT_NEAR(boolean(AcDb::kBoolSubtract), whole - 8, 1e-9);
    auto first = slot();
    EXPECT_EQ(first->booleanOper(AcDb::kBoolSubtract, first.get()), Acad::eInvalidInput);
    AcDb3dSolid none;
    EXPECT_EQ(first->booleanOper(AcDb::kBoolUnite, &none), Acad::eNullPtr);
}

TEST(Solids, explodedFlatFacesHaveTheSurfaceAndEdgesHaveSnapPoints) {
    auto solid = raised(rectangle(0, 0, 2, 3), 4);
    const auto hole = raised(rectangle(0.5, 0.5, 1, 1), 4);
    ASSERT_EQ(solid->booleanOper(AcDb::kBoolSubtract, hole.get()), Acad::eOk);
    Owned faces;
    ASSERT_EQ(solid->explode(faces.list), Acad::eOk);
    ASSERT_EQ(faces.list.length(), 10);
    double sum = 0, area = 0, whole = 0;
    for (int i = 0; i < faces.list.length(); ++i) {
        ASSERT_EQ(faces.region(i).getArea(area), Acad::eOk);
        sum += area;
    }
    ASSERT_EQ(solid->getArea(whole), Acad::eOk);
    EXPECT_NEAR(sum, 2 * (6 - 1) + 10 * 4 + 4 * 4, 1e-9);
    EXPECT_NEAR(whole, sum, 1e-9);
    AcGePoint3dArray ends, middles, nearest;
    AcDbIntArray ids;
    EXPECT_EQ(solid->getOsnapPoints(AcDb::kOsModeEnd, 0, {}, {}, {}, ends, ids), Acad::eOk);
    EXPECT_EQ(solid->getOsnapPoints(AcDb::kOsModeMid, 0, {}, {}, {}, middles, ids), Acad::eOk);
    EXPECT_EQ(solid->getOsnapPoints(AcDb::kOsModeNear, 0, {3, 1, 5}, {}, {}, nearest, ids), Acad::eOk);
    EXPECT_EQ(ends.length(), 48);
    EXPECT_EQ(middles.length(), 24);
    ASSERT_EQ(nearest.length(), 1);
    EXPECT_TRUE(nearest[0].isEqualTo({2, 1, 4}));
}

TEST(Solids, drawTheirEdgesAndFewLinesOfRoundWalls) {
    const auto countOf = [](AcDbEntity& entity) {
        drawntest::Recorder recorder;
        entity.worldDraw(&recorder);
        return recorder.paths.size();
    };
    EXPECT_EQ(countOf(*raised(rectangle(0, 0, 2, 3), 4)), 12u);
    // Two circles of 72 chords and a line a quarter; none of the other 68 edges between facets.
    EXPECT_EQ(
        countOf(*raised(std::make_unique<AcDbCircle>(AcGePoint3d(3, 3, 0), AcGeVector3d(0, 0, 1), 2.0), 5)),
        2 * 72u + 4);
    Owned regions;
    ASSERT_EQ(makeRegions(curves(rectangle(0, 0, 1, 1)), regions), Acad::eOk);
    EXPECT_EQ(countOf(regions.region(0)), 4u);
    AcDb3dSolid none;
    EXPECT_EQ(countOf(none), 0u);
}

TEST(Solids, goThroughFilersAndMotionsWithTheirMeasures) {
    auto solid = raised(polyline({{0, 0, 0}, {4, 0, 1}, {4, 2, 0}, {0, 2, 1}}), 3);
    const double volume = volumeOf(*solid);
    AcGeMatrix3d matrix, turn;
    matrix.setToScaling(2.0, {1, 1, 1});
    turn.setToRotation(0.7, {1, 2, 3});
    ASSERT_EQ(solid->transformBy(turn * matrix), Acad::eOk);
    EXPECT_NEAR(volumeOf(*solid), 8 * volume, 1e-9);
    AcGeMatrix3d uneven;
    uneven.setCoordSystem({0, 0, 0}, {2, 0, 0}, {0, 1, 0}, {0, 0, 1});
    EXPECT_EQ(solid->transformBy(uneven), Acad::eCannotScaleNonUniformly);
    hostkit::MemoryDwgFiler filer(AcDb::kCopyFiler);
    ASSERT_EQ(solid->dwgOutFields(&filer), Acad::eOk);
    ASSERT_EQ(filer.seek(0, 0), Acad::eOk);
    AcDb3dSolid read;
    ASSERT_EQ(read.dwgInFields(&filer), Acad::eOk);
    EXPECT_NEAR(volumeOf(read), 8 * volume, 1e-9);
}

TEST(Solids, momentsOfAMovedBoxAreThoseOfTheFormulas) {
    const double size[] = {2, 3, 7}; // in ascending order of length: the largest moment is about the shortest
    auto box = raised(rectangle(-1, -1.5, 2, 3), 7);
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 2, -0.5), AcGePoint3d(0, 0, 3.5));
    const AcGePoint3d middle(10, -20, 33.5);
    ASSERT_EQ(box->transformBy(AcGeMatrix3d::translation({10, -20, 30}) * turn), Acad::eOk);
    double volume = 0, moments[3], products[3], principal[3], radii[3];
    AcGePoint3d centroid;
    AcGeVector3d axes[3];
    AcDbExtents extents;
    ASSERT_EQ(box->getMassProp(volume, centroid, moments, products, principal, axes, radii, extents),
              Acad::eOk);
    EXPECT_NEAR(volume, 42, 1e-9);
    EXPECT_NEAR(centroid.distanceTo(middle), 0.0, 1e-9);
    double aboutWorld[3][3] = {}; // of the box's own axes, turned, and of its mass in the middle
    for (int own = 0; own < 3; ++own) {
        AcGeVector3d axis(own == 0, own == 1, own == 2);
        axis.transformBy(turn);
        const double square = 42 * size[own] * size[own] / 12;
        for (unsigned int i = 0; i < 3; ++i)
            for (unsigned int j = 0; j < 3; ++j) aboutWorld[i][j] += square * axis[i] * axis[j];
        const double other =
            (size[0] * size[0] + size[1] * size[1] + size[2] * size[2] - size[own] * size[own]) / 12;
        EXPECT_NEAR(principal[2 - own], 42 * other, 1e-7);
        EXPECT_NEAR(std::abs(axes[2 - own].dotProduct(axis)), 1.0, 1e-9);
    }
    EXPECT_NEAR(axes[0].crossProduct(axes[1]).dotProduct(axes[2]), 1.0, 1e-9);
    const AcGeVector3d m = middle.asVector();
    for (unsigned int i = 0; i < 3; ++i) {
        const unsigned int j = (i + 1) % 3, k = (i + 2) % 3;
        const auto of = [&](unsigned int a, unsigned int b) { return aboutWorld[a][b] + 42 * m[a] * m[b]; };
        EXPECT_NEAR(moments[i], of(j, j) + of(k, k), 1e-6);
        EXPECT_NEAR(products[i], of(i, j), 1e-6);
        EXPECT_NEAR(radii[i] * radii[i] * 42, moments[i], 1e-6);
    }
}

} // namespace
