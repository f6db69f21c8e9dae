// A program with a class of its own named as one of the library's: this grid knows no point. Were the library
// to take it for its own, no point would have an equal.
#include "contourpointgrid.h"
#include "vexogeometrytools.h"

#include <cstdio>

namespace vexo {

PointGrid::PointGrid(double, double, int) {}
double PointGrid::ordinaryCoordinate(const AcGePoint3d&) { return 0.0; }
void PointGrid::add(const AcGePoint3d&, int) {}
void PointGrid::announce(const AcGePoint3d&) const {}
bool PointGrid::isFar(const AcGePoint3d&) const { return true; }
void PointGrid::cellRange(const AcGePoint3d&, std::int64_t* low, std::int64_t* high) const {
    for (int axis = 0; axis < 3; ++axis) low[axis] = high[axis] = 0;
}
std::size_t PointGrid::bucketOf(std::int64_t, std::int64_t, std::int64_t) const { return 0; }

} // namespace vexo

int main() {
    constexpr int different = 32;
    vexo::PointGrid own(0.0, 0.0, different);
    own.add(AcGePoint3d(), 0);
    const bool ownKnowsNone = !own.anyNear(AcGePoint3d(), [](int) { return true; });

    AcArray<AcGePoint3d> points;
    for (int i = 0; i < 2 * different; ++i) points.append(AcGePoint3d(i % different, 0.0, 0.0));
    AcArray<AcGeVector3d> bulges;
    VEXOGeometryTools::ClearDooblons(points, bulges);
    std::printf("%d of %d points stay; the program's own grid is %s\n", points.length(), 2 * different,
                ownKnowsNone ? "its own" : "the library's");
    return points.length() == different && ownKnowsNone ? 0 : 1;
}
