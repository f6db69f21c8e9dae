#include "vexodualrep.h"

#include "vexoamodelertools.h"

#include "dbarc.h"
#include "dbcircle.h"
#include "dbline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>

using std::numbers::pi;

namespace {

/// Curves of a test, and the array that the tools take.
class Curves {
public:
    Curves& line(double x1, double y1, double x2, double y2, double z = 0) {
        return add(std::make_unique<AcDbLine>(AcGePoint3d(x1, y1, z), AcGePoint3d(x2, y2, z)));
    }
    /// Counter-clockwise about +Z; with `isTurnedOver` the same run about -Z, whose start is the other end.
    Curves& arc(double x, double y, double radius, double start, double end, bool isTurnedOver = false) {
        if (isTurnedOver)
            return add(std::make_unique<AcDbArc>(AcGePoint3d(x, y, 0), -AcGeVector3d::kZAxis, radius,
                                                 pi - end, pi - start));
        return add(std::make_unique<AcDbArc>(AcGePoint3d(x, y, 0), radius, start, end));
    }
    Curves& add(std::unique_ptr<AcDbCurve> curve) {
        m_array.append(static_cast<AcDbCurve*>(curve.get()));
        m_owned.push_back(std::move(curve));
        return *this;
    }
    const AcArray<void*>& array() const { return m_array; }

private:
    std::vector<std::unique_ptr<AcDbCurve>> m_owned;
    AcArray<void*> m_array;
};

Curves rectangle(double x, double y, double width, double height) {
    Curves curves;
    return std::move(curves.line(x, y, x + width, y)
                         .line(x + width, y, x + width, y + height)
                         .line(x + width, y + height, x, y + height)
                         .line(x, y + height, x, y));
}

double volumeOf(const VEXODualRep& solid) { return solid.getBody()->volume(); }

/// A body of the modeller over a rectangle.
std::unique_ptr<VEXODualRep> bodyOn(double x, double y, double width, double height, double rise) {
    auto solid = std::make_unique<VEXODualRep>(false);
    EXPECT_EQ(solid->CreateRegionsFromCurves(rectangle(x, y, width, height).array(), 0.0), Acad::eOk);
    EXPECT_EQ(solid->extrude(nullptr, rise, 0.0), Acad::eOk);
    return solid;
}

/// A solid of the host over the same.
std::unique_ptr<VEXODualRep> solidOn(double x, double y, double width, double height, double rise) {
    AcDbVoidPtrArray regions;
    EXPECT_EQ(AcDbRegion::createFromCurves(rectangle(x, y, width, height).array(), regions), Acad::eOk);
    const std::unique_ptr<AcDbRegion> region(static_cast<AcDbRegion*>(static_cast<AcDbEntity*>(regions[0])));
    auto solid = std::make_unique<VEXODualRep>();
    EXPECT_EQ(solid->extrude(region.get(), rise, 0.0), Acad::eOk);
    return solid;
}

double anyVolume(const VEXODualRep& solid) {
    if (!solid.getUseSolid()) return volumeOf(solid);
    double volume = -1.0;
    AcGePoint3d centre;
    AcDbExtents box;
    EXPECT_EQ(solid.getSolid()->getMassProp(volume, centre, box), Acad::eOk);
    return volume;
}

constexpr Acad::ErrorStatus bad = Acad::eInvalidInput, none = Acad::eCannotExtrudeRegion;

} // namespace

TEST(DualRepresentation, ArcsStandWhereTheyWereDrawn) {
    // A square of 10 with a half disc of radius 5 on a side; arcs have 71 sides for a full turn.
    const double half = 36 * 12.5 * std::sin(pi / 36);
    const auto rest = [](Curves& curves) -> Curves& {
        return curves.line(10, 0, 10, 10).line(10, 10, 0, 10).line(0, 10, 0, 0);
    };
    Curves first, later, over, last;
    rest(first.arc(5, 0, 5, pi, 2 * pi));
    later.line(0, 10, 0, 0).arc(5, 0, 5, pi, 2 * pi).line(10, 0, 10, 10).line(10, 10, 0, 10);
    over.line(0, 0, 0, 10).line(0, 10, 10, 10).line(10, 10, 10, 0).arc(5, 0, 5, pi, 2 * pi, true);
    last.line(10, 0, 10, 10).line(10, 10, 0, 10).line(0, 10, 0, 0).arc(5, 0, 5, pi, 2 * pi);
    Curves startsOver;
    startsOver.arc(5, 0, 5, pi, 2 * pi, true).line(0, 0, 0, 10).line(0, 10, 10, 10).line(10, 10, 10, 0);
    const struct {
        const char* name;
        const Curves& curves;
        double volume;
    } cases[] = {{"first", first, 100 + half},
                 {"in the midst", later, 100 + half},
                 {"about the other normal, first", startsOver, 100 + half},
                 {"the closing side is straight", last, 100},
                 {"so it is of arcs about the other normal", over, 100}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        VEXODualRep solid(false);
        ASSERT_EQ(solid.CreateRegionsFromCurves(c.curves.array(), 7.0), Acad::eOk);
        for (const double height : {1.0, -2.0}) {
            ASSERT_EQ(solid.extrude(nullptr, height, 0.5), Acad::eOk);
            EXPECT_NEAR(volumeOf(solid), c.volume * std::abs(height), 1e-9);
            EXPECT_TRUE(solid.isValid());
        }
    }
}

TEST(DualRepresentation, ContoursThatAreRefused) {
    Curves lone, there, circle, collinear, crossing, withNull;
    lone.line(0, 0, 4, 0);
    there.line(0, 0, 4, 0).line(4, 0, 0, 0);
    circle.add(std::make_unique<AcDbCircle>(AcGePoint3d(), AcGeVector3d::kZAxis, 3.0));
    collinear.line(0, 0, 1, 1).line(1, 1, 3, 3).line(3, 3, 0, 0);
    crossing.line(0, 0, 4, 4).line(4, 4, 4, 0).line(4, 0, 0, 4).line(0, 4, 0, 0);
    AcArray<void*> nothing = rectangle(0, 0, 1, 1).array();
    nothing.removeAll().append(nullptr);
    for (const AcArray<void*>& curves :
         {AcArray<void*>(), lone.array(), there.array(), circle.array(), collinear.array(), nothing}) {
        VEXODualRep solid(false);
        EXPECT_EQ(solid.CreateRegionsFromCurves(curves, 0.0), bad) << curves.length();
        EXPECT_EQ(solid.extrude(nullptr, 1.0, 0.0), bad);
        EXPECT_TRUE(solid.getBody()->isNull() && !solid.isValid() && !solid.isNull());
    }
    VEXODualRep solid(false);
    EXPECT_EQ(solid.CreateRegionsFromCurves(crossing.array(), 0.0), Acad::eOk);
    EXPECT_EQ(solid.extrude(nullptr, 1.0, 0.0), bad);
    EXPECT_EQ(solid.CreateRegionsFromCurves(rectangle(0, 0, 2, 2).array(), 0.0), Acad::eOk);
    EXPECT_EQ(solid.extrude(nullptr, 0.0, 0.0), bad);
    // One arc is two points and one bulge: its segment, and no bar to the next contour.
    Curves arc;
    arc.arc(0, 0, 1, 0, 2);
    EXPECT_EQ(solid.CreateRegionsFromCurves(arc.array(), 0.0), Acad::eOk);
    EXPECT_EQ(solid.extrude(nullptr, 1.0, 0.0), Acad::eOk);
    EXPECT_NEAR(volumeOf(solid), (23 * std::sin(2.0 / 23) - std::sin(2.0)) / 2, 1e-12);
    EXPECT_EQ(solid.CreateRegionsFromCurves(rectangle(0, 0, 2, 2).array(), 0.0), Acad::eOk);
    EXPECT_EQ(solid.extrude(nullptr, 1.0, 0.0), Acad::eOk);
}

TEST(DualRepresentation, BothFormsCombineAndCutAlike) {
    for (const auto& make : {bodyOn, solidOn}) {
        const struct {
            AcDb::BoolOperType operation;
            double volume;
        } cases[] = {{AcDb::kBoolUnite, 40}, {AcDb::kBoolIntersect, 4}, {AcDb::kBoolSubtract, 12}};
        for (const auto& c : cases) {
            const auto a = make(0, 0, 4, 2, 2), b = make(3, 0, 7, 2, 2);
            EXPECT_EQ(a->booleanOper(c.operation, nullptr), bad);
            EXPECT_EQ(a->booleanOper(c.operation, b.get()), Acad::eOk);
            EXPECT_NEAR(anyVolume(*a), c.volume, 1e-9);
        }
        for (const double sense : {1.0, -1.0}) {
            const auto solid = make(0, 0, 4, 2, 2);
            AcDb3dSolid* slice = nullptr;
            const AcGePlane plane({1, 0, 0}, AcGeVector3d(sense, 0, 0)),
                beside({9, 0, 0}, AcGeVector3d(-1, 0, 0));
            EXPECT_EQ(solid->getSlice(beside, 0, slice), Acad::eOk);
            EXPECT_NEAR(anyVolume(*solid), 16, 1e-12);
            EXPECT_EQ(solid->getSlice(plane, 0, slice), Acad::eOk);
            EXPECT_NEAR(anyVolume(*solid), sense > 0 ? 12 : 4, 1e-12); // what the normal points to
            AcGePlane again({sense > 0 ? 2.0 : 0.5, 0, 0}, AcGeVector3d(1, 0, 0));
            EXPECT_EQ(solid->getSlice(&again, false, slice), none);
            EXPECT_EQ(solid->getSlice(nullptr, true, slice), none);
            const double cut = sense > 0 ? 8 : 2; // by a pointer solids alone
            EXPECT_NEAR(anyVolume(*solid), solid->getUseSolid() ? cut : sense > 0 ? 12 : 4, 1e-12);
            EXPECT_EQ(slice, nullptr);
        }
    }
    // Without material the modeller's form keeps its body and says 150.
    const auto a = bodyOn(0, 0, 4, 2, 2), far = bodyOn(50, 0, 1, 1, 1);
    EXPECT_EQ(a->booleanOper(AcDb::kBoolIntersect, far.get()), none);
    EXPECT_EQ(a->booleanOper(AcDb::kBoolSubtract, a.get()), none);
    EXPECT_EQ(a->booleanOper(static_cast<AcDb::BoolOperType>(3), far.get()), none);
    EXPECT_NEAR(volumeOf(*a), 16, 1e-12);
    EXPECT_EQ(a->booleanOper(AcDb::kBoolUnite, solidOn(0, 0, 1, 1, 1).get()), bad);
}

TEST(DualRepresentation, WhoHoldsWhat) {
    VEXODualRep solid, body(false);
    EXPECT_TRUE(solid.getUseSolid() && solid.getSolid() && !solid.getBody() && !solid.isValid());
    EXPECT_TRUE(!body.getUseSolid() && body.getBody() && !body.getSolid());

    const auto box = bodyOn(0, 0, 1, 2, 3);
    const std::unique_ptr<VEXODualRep> clone(&box->clone()), ofSolid(&solidOn(0, 0, 1, 2, 3)->clone());
    EXPECT_NE(clone->getBody(), box->getBody());
    EXPECT_NEAR(anyVolume(*clone), 6, 1e-12);
    EXPECT_NEAR(anyVolume(*ofSolid), 6, 1e-12);

    VEXODualRep target(false);
    EXPECT_EQ(target.CreateRegionsFromCurves(rectangle(0, 0, 5, 5).array(), 0.0), Acad::eOk);
    target = *ofSolid;
    EXPECT_TRUE(target.getUseSolid() && target.isValid() && target.getSolid() != ofSolid->getSolid());
    EXPECT_EQ(target.getBody(), nullptr);
    target = *box;
    target = *&target;
    EXPECT_NEAR(volumeOf(target), 6, 1e-12);
    EXPECT_EQ(target.extrude(nullptr, 1.0, 0.0), Acad::eOk); // of the contour that stayed its own
    EXPECT_NEAR(volumeOf(target), 25, 1e-12);

    VEXODualRep copy(target);
    EXPECT_EQ(copy.getBody(), target.getBody());
    AModeler::Body* released = nullptr;
    EXPECT_TRUE(copy.ReleaseRepr(released) && copy.isNull() && copy.ReleaseRepr(released));
    EXPECT_EQ(released, nullptr);
    EXPECT_EQ(copy.extrude(nullptr, 1.0, 0.0), none);
    AcDb3dSolid* slice = nullptr;
    EXPECT_EQ(copy.getSlice(AcGePlane(), 0, slice), none);
    EXPECT_EQ(copy.booleanOper(AcDb::kBoolUnite, &target), none);
    EXPECT_EQ(target.booleanOper(AcDb::kBoolUnite, &copy), none);
}
