#include "curvecases.h"

#include <limits>
#include <random>

using namespace curvecases;

namespace {

/// Numbers as a damaged drawing may hold them.
double anyNumber(std::mt19937& random) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double numbers[] = {0.0,   -0.0,   1.0,    -3.0,     1e-12,     1e9, 1e18,
                              1e300, -1e300, 5e-324, infinity, -infinity, NAN};
    return numbers[random() % std::size(numbers)];
}

AcGePoint3d anyPoint(std::mt19937& random) {
    const double x = anyNumber(random);
    const double y = anyNumber(random);
    return {x, y, random() % 2 ? 0.0 : anyNumber(random)};
}

AcGeVector3d anyVector(std::mt19937& random) { return anyPoint(random).asVector(); }

std::unique_ptr<AcDbCurve> anyCurve(std::mt19937& random) {
    const AcGePoint3d place = anyPoint(random);
    switch (random() % 5) {
    case 0:
        return std::make_unique<AcDbLine>(place, anyPoint(random));
    case 1:
        return std::make_unique<AcDbArc>(place, anyVector(random), anyNumber(random), anyNumber(random),
                                         anyNumber(random));
    case 2:
        return std::make_unique<AcDbCircle>(place, anyVector(random), anyNumber(random));
    case 3:
        return std::make_unique<AcDbEllipse>(place, anyVector(random), anyVector(random), anyNumber(random),
                                             anyNumber(random), anyNumber(random));
    default:
        std::vector<Vertex> vertices;
        for (int i = 0; i < 4; ++i)
            vertices.push_back({anyNumber(random), anyNumber(random), anyNumber(random)});
        return polyline(vertices, random() % 2 == 0);
    }
}

/// Every question once; what fails hands nothing out.
void askEverything(const AcDbCurve& curve, const AcDbCurve& other, std::mt19937& random) {
    AcGePoint3d point;
    AcGeVector3d vector;
    double number = 0.0;
    (void)curve.getStartPoint(point);
    (void)curve.getEndParam(number);
    (void)curve.getPointAtParam(anyNumber(random), point);
    (void)curve.getParamAtPoint(anyPoint(random), number);
    (void)curve.getDistAtParam(number, number);
    (void)curve.getParamAtDist(anyNumber(random), number);
    (void)curve.getFirstDeriv(number, vector);
    (void)curve.getSecondDeriv(number, vector);
    (void)curve.getClosestPointTo(anyPoint(random), point, random() % 2 == 0);
    (void)curve.getClosestPointTo(anyPoint(random), AcGeVector3d(0, 1, 1), point);
    (void)curve.getArea(number);
    AcDbExtents extents;
    if (curve.getGeomExtents(extents) == Acad::eOk) {
        EXPECT_FALSE(extents.isEmpty());
    }
    Pieces pieces;
    AcGeDoubleArray cuts;
    for (int i = 0; i < 3; ++i) cuts.append(anyNumber(random));
    (void)curve.getSplitCurves(cuts, pieces.array);
    AcDbCurve* projected = nullptr;
    const AcGePlane plane(anyPoint(random), anyVector(random));
    if (curve.getProjectedCurve(plane, anyVector(random), projected) != Acad::eOk) {
        EXPECT_EQ(projected, nullptr);
    }
    delete projected;
    AcGePoint3dArray points;
    (void)curve.intersectWith(&other, static_cast<AcDb::Intersect>(random() % 4), points);
}

} // namespace

TEST(CurvesOfADamagedDrawing, NeitherCrashNorHang) {
    std::mt19937 random(20261);
    for (int round = 0; round < 4000; ++round) {
        SCOPED_TRACE(round);
        const std::unique_ptr<AcDbCurve> curve = anyCurve(random);
        const std::unique_ptr<AcDbCurve> other = anyCurve(random);
        askEverything(*curve, *other, random);
        AcGeMatrix3d matrix;
        matrix(random() % 3, random() % 4) = anyNumber(random);
        (void)curve->transformBy(matrix);
        (void)curve->reverseCurve();
    }
}
