// Stand-in for the host's geometry globals. Covers the class ids, the global tolerance and forward names; leaves out the library's version and error handlers.
#pragma once

#include "adesk.h"
#include "getol.h"

#include "acarray.h"

#include <cmath>
#include <limits>
#include <numbers>

class AcGeBoundBlock2d;
class AcGeBoundBlock3d;
class AcGeCircArc2d;
class AcGeCircArc3d;
class AcGeCurve2d;
class AcGeCurve3d;
class AcGeCurveCurveInt2d;
class AcGeCurveCurveInt3d;
class AcGeEllipArc2d;
class AcGeEllipArc3d;
class AcGeEntity2d;
class AcGeEntity3d;
class AcGeInterval;
class AcGeKnotVector;
class AcGeLine2d;
class AcGeLine3d;
class AcGeLinearEnt2d;
class AcGeLinearEnt3d;
class AcGeLineSeg2d;
class AcGeLineSeg3d;
class AcGeMatrix2d;
class AcGeMatrix3d;
class AcGeNurbCurve2d;
class AcGeNurbCurve3d;
class AcGePlanarEnt;
class AcGePlane;
class AcGePoint2d;
class AcGePoint3d;
class AcGeRay2d;
class AcGeRay3d;
class AcGeScale3d;
class AcGeVector2d;
class AcGeVector3d;

typedef AcArray<double> AcGeDoubleArray;
typedef AcArray<AcGePoint2d> AcGePoint2dArray;
typedef AcArray<AcGePoint3d> AcGePoint3dArray;
typedef AcArray<AcGeVector2d> AcGeVector2dArray;
typedef AcArray<AcGeVector3d> AcGeVector3dArray;
typedef AcArray<void*> AcGeVoidPointerArray;

/// The kit's global state: there is none but the one tolerance, which is read and never written. Any thread
/// may read it.
struct AcGeContext {
    /// Both fields 1e-10.
    static const AcGeTol gTol;
};
inline constexpr AcGeTol AcGeContext::gTol{};

namespace AcGe {

/// The classes that type() and isKindOf() speak of. Values are the kit's own and are never stored in a
/// drawing.
enum EntityId {
    kEntity2d,
    kEntity3d,
    kCurve2d,
    kCurve3d,
    kLinearEnt2d,
    kLinearEnt3d,
    kLine2d,
    kLine3d,
    kLineSeg2d,
    kLineSeg3d,
    kRay2d,
    kRay3d,
    kCircArc2d,
    kCircArc3d,
    kEllipArc2d,
    kEllipArc3d,
    kNurbCurve2d,
    kNurbCurve3d,
    kPlanarEnt,
    kPlane,
    kBoundBlock2d,
    kBoundBlock3d,
    kCurveCurveInt2d,
    kCurveCurveInt3d
};

/// True when `id` is `ancestor` or a class derived from it.
bool isDerivedFrom(EntityId id, EntityId ancestor);

inline constexpr double kPi = std::numbers::pi;
inline constexpr double kTwoPi = 2.0 * std::numbers::pi;

/// The unit vector along a direction. One that has length 1 but for rounding stays as it is: a direction that
/// is read from an object and set again keeps its bits, however often.
template <class Vector>
Vector unitOf(const Vector& direction) {
    constexpr double rounding = 8.0 * std::numeric_limits<double>::epsilon();
    return std::abs(direction.lengthSqrd() - 1.0) <= rounding ? direction : direction.normal();
}

} // namespace AcGe

/// What the curves' classes of the plane and of space have in common stands once, in templates over these
/// two.
namespace AcGeKernel {

/// The classes of the plane.
struct Plane {
    static constexpr unsigned int dimensions = 2;
    using Point = AcGePoint2d;
    using Vector = AcGeVector2d;
    using Matrix = AcGeMatrix2d;
    using PointArray = AcGePoint2dArray;
    using VectorArray = AcGeVector2dArray;
    using Entity = AcGeEntity2d;
    using Block = AcGeBoundBlock2d;
    using Curve = AcGeCurve2d;
    using Linear = AcGeLinearEnt2d;
    using Line = AcGeLine2d;
    using Ray = AcGeRay2d;
    using Segment = AcGeLineSeg2d;
    using Arc = AcGeCircArc2d;
    using Ellipse = AcGeEllipArc2d;
    using Nurb = AcGeNurbCurve2d;
    using CurveCurveInt = AcGeCurveCurveInt2d;
};

/// The classes of space.
struct Space {
    static constexpr unsigned int dimensions = 3;
    using Point = AcGePoint3d;
    using Vector = AcGeVector3d;
    using Matrix = AcGeMatrix3d;
    using PointArray = AcGePoint3dArray;
    using VectorArray = AcGeVector3dArray;
    using Entity = AcGeEntity3d;
    using Block = AcGeBoundBlock3d;
    using Curve = AcGeCurve3d;
    using Linear = AcGeLinearEnt3d;
    using Line = AcGeLine3d;
    using Ray = AcGeRay3d;
    using Segment = AcGeLineSeg3d;
    using Arc = AcGeCircArc3d;
    using Ellipse = AcGeEllipArc3d;
    using Nurb = AcGeNurbCurve3d;
    using CurveCurveInt = AcGeCurveCurveInt3d;
};

} // namespace AcGeKernel
