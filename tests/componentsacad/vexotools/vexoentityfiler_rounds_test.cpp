// What is filed and read and filed again is the same record to the bit, however often: entities of random
// shape.
#include "filedkinds.h"
#include "hosttest.h"

#include <random>

using namespace filedrecords;

namespace {

class EntityFilerRounds : public hostkit::HostTest {
protected:
    double real(double from, double to) { return std::uniform_real_distribution<double>(from, to)(m_random); }
    int integer(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_random); }
    bool coin() { return integer(0, 1) == 1; }
    AcGePoint3d place() { return {real(-1e6, 1e6), real(-1e6, 1e6), real(-1e3, 1e3)}; }
    AcGePoint2d flatPlace() { return {real(-1e4, 1e4), real(-1e4, 1e4)}; }
    AcGeVector3d direction() { return AcGeVector3d(real(-1, 1), real(-1, 1), real(0.1, 1)).normal(); }
    AcGeVector3d axis() {
        const AcGeVector3d axes[] = {{0, 0, 1}, {0, 0, -1}, {1, 0, 0}, {0, -1, 0}};
        return axes[integer(0, 3)];
    }

    AcDbEntity* line() {
        auto* const made = new AcDbLine(place(), place());
        made->setNormal(direction());
        return made;
    }
    // The centre is kept in the coordinates of the normal: to the bit about the axes alone.
    AcDbEntity* arc() { return new AcDbArc(place(), axis(), real(0, 100), real(-9, 9), real(-9, 9)); }
    AcDbEntity* circle() { return new AcDbCircle(place(), axis(), real(0, 100)); }
    AcDbEntity* polyline() {
        auto* const made = new AcDbPolyline;
        made->setNormal(direction());
        made->setElevation(real(-10, 10));
        made->setThickness(real(-10, 10));
        made->setClosed(coin());
        const bool isWide = coin(), isRound = coin();
        for (int i = integer(0, 20); i > 0; --i)
            made->addVertexAt(made->numVerts(), flatPlace(), isRound ? real(-3, 3) : 0.0,
                              isWide ? real(0, 2) : 0.0, isWide ? real(0, 2) : 0.0);
        return made;
    }
    AcDbEntity* ellipse() {
        const AcGeVector3d normal = direction();
        const AcGeVector3d major = normal.crossProduct(direction()) * real(1, 100);
        const double ratio = coin() ? real(0.001, 1) : 1.0;
        switch (integer(0, 2)) {
        case 0:
            return new AcDbEllipse(place(), normal, major, ratio);
        case 1: {
            const double start = integer(-4, 4) * AcGe::kPi / 2.0;
            return new AcDbEllipse(place(), normal, major, ratio, start,
                                   start + integer(1, 4) * AcGe::kPi / 2.0);
        }
        default: {
            auto* const made = new AcDbEllipse(place(), normal, major, ratio);
            made->setStartParam(real(-7, 7));
            made->setEndParam(real(-7, 13));
            return made;
        }
        }
    }
    AcDbEntity* spline() {
        const int degree = integer(1, 5), count = degree + integer(1, 9);
        AcGePoint3dArray points;
        AcGeDoubleArray knots, weights;
        for (int i = 0; i < count; ++i) points.append(place());
        for (int i = 0; i < count; ++i) weights.append(real(0.1, 4));
        for (double knot = real(-1, 1); knots.length() < count + degree + 1; knot += real(0, 1))
            knots.append(knot);
        return new AcDbSpline(degree, coin(), coin(), coin(), points, knots, weights, real(0, 1), real(0, 1));
    }
    AcGeCurve2d* edge(int type) {
        switch (type) {
        case 1:
            return new AcGeLineSeg2d(flatPlace(), flatPlace());
        case 2:
            return new AcGeCircArc2d(flatPlace(), real(0, 50), real(-7, 7), real(-7, 14),
                                     AcGeVector2d(real(-1, 1), real(-1, 1)), coin());
        case 3: {
            const AcGeVector2d major(real(-1, 1), real(-1, 1));
            return new AcGeEllipArc2d(flatPlace(), major, major.perpVector() * (coin() ? 1.0 : -1.0),
                                      real(0, 50), real(0, 50), real(-7, 7), real(-7, 14));
        }
        default: {
            AcGeKnotVector knots(real(0, 0.1));
            AcGePoint2dArray points;
            AcGeDoubleArray weights;
            const int degree = integer(1, 4), count = degree + integer(1, 5);
            for (int i = 0; i < count; ++i) points.append(flatPlace());
            for (int i = 0; i < count; ++i) weights.append(real(0.1, 4));
            for (double knot = real(-1, 1); knots.length() < count + degree + 1; knot += real(0.01, 1))
                knots.append(knot);
            return coin() ? new AcGeNurbCurve2d(degree, knots, points, weights, coin())
                          : new AcGeNurbCurve2d(degree, knots, points, coin());
        }
        }
    }
    AcDbEntity* hatch() {
        auto* const made = new AcDbHatch;
        made->setNormal(direction());
        made->setElevation(real(-10, 10));
        made->setHatchStyle(static_cast<AcDbHatch::HatchStyle>(integer(0, 2)));
        made->setPattern(static_cast<AcDbHatch::HatchPatternType>(integer(0, 2)), L"ANSI31");
        for (int loops = integer(0, 4); loops > 0; --loops) {
            std::vector<std::unique_ptr<AcGeCurve2d>> curves;
            AcGeVoidPointerArray edges;
            AcArray<int> types;
            for (int count = integer(1, 5); count > 0; --count) {
                types.append(integer(1, 4));
                edges.append(curves.emplace_back(edge(types.last())).get());
            }
            EXPECT_EQ(made->appendLoop(integer(0, 1), edges, types), Acad::eOk);
        }
        return made;
    }
    /// A polyline with bulges, whose loop comes back as edges.
    AcDbEntity* hatchOfPolyline() {
        auto* const made = new AcDbHatch;
        made->setPattern(AcDbHatch::kPreDefined, L"SOLID");
        AcGePoint2dArray vertices;
        AcGeDoubleArray bulges;
        for (int i = 0; i < 6; ++i) vertices.append(flatPlace());
        for (int i = 0; i < 6; ++i) bulges.append(coin() ? 0.0 : real(-2, 2));
        made->appendLoop(AcDbHatch::kExternal, vertices, bulges);
        return made;
    }

    /// The record of the entity as it comes back, by one filer or the other.
    std::string again(const Kind& kind, std::unique_ptr<AcDbEntity>& entity, bool asText) {
        std::unique_ptr<AcDbEntity> read(kind.make());
        hostkit::MemoryDwgFiler binary(AcDb::kFileFiler);
        hostkit::MemoryDxfFiler text;
        EXPECT_EQ(asText ? kind.dxfOut(&text, entity.get()) : kind.dwgOut(&binary, entity.get()), Acad::eOk);
        binary.seek(0, 0);
        EXPECT_EQ(asText ? kind.dxfIn(&text, read.get()) : kind.dwgIn(&binary, read.get()), Acad::eOk);
        entity = std::move(read);
        return toldBinary(kind, *entity);
    }

    std::mt19937 m_random{20};
};

} // namespace

TEST_F(EntityFilerRounds, GiveTheSameRecordToTheBit) {
    const std::vector<Kind> all = kinds();
    const std::function<AcDbEntity*()> makers[] = {
        [this] { return line(); },   [this] { return arc(); },     [this] { return polyline(); },
        [this] { return circle(); }, [this] { return ellipse(); }, [this] { return spline(); },
        [this] { return spline(); }, [this] { return hatch(); },   [this] { return hatch(); },
    };
    for (std::size_t at = 0; at < all.size(); ++at) {
        for (int round = 0; round < 300; ++round) {
            SCOPED_TRACE(std::string(all[at].name) + ' ' + std::to_string(round));
            std::unique_ptr<AcDbEntity> entity(makers[at]());
            entity->setColorIndex(static_cast<Adesk::UInt16>(integer(0, 256)));
            std::string first = toldBinary(all[at], *entity);
            for (const bool asText : {false, true, true, false})
                ASSERT_EQ(again(all[at], entity, asText), first);
        }
    }
}

TEST_F(EntityFilerRounds, OfPolylineLoopsAreThoseOfTheirEdges) {
    const Kind kind = kinds().back();
    for (int round = 0; round < 100; ++round) {
        std::unique_ptr<AcDbEntity> entity(hatchOfPolyline());
        const auto* const hatch = static_cast<const AcDbHatch*>(entity.get());
        double area = 0.0, readArea = 0.0;
        const Acad::ErrorStatus status = hatch->getArea(area);
        const std::string first = again(kind, entity, false);
        ASSERT_EQ(again(kind, entity, true), first);
        ASSERT_EQ(static_cast<const AcDbHatch*>(entity.get())->getArea(readArea), status);
        EXPECT_NEAR(readArea, area, 1e-9 * std::abs(area));
    }
}
