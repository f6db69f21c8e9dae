#include "gegbl.h"

namespace AcGe {
namespace {

// Each class with its base; a root names itself.
EntityId baseOf(EntityId id) {
    switch (id) {
    case kCurve2d:
    case kBoundBlock2d:
    case kCurveCurveInt2d:
        return kEntity2d;
    case kCurve3d:
    case kPlanarEnt:
    case kBoundBlock3d:
    case kCurveCurveInt3d:
        return kEntity3d;
    case kLinearEnt2d:
    case kCircArc2d:
    case kEllipArc2d:
    case kNurbCurve2d:
        return kCurve2d;
    case kLinearEnt3d:
    case kCircArc3d:
    case kEllipArc3d:
    case kNurbCurve3d:
        return kCurve3d;
    case kLine2d:
    case kLineSeg2d:
    case kRay2d:
        return kLinearEnt2d;
    case kLine3d:
    case kLineSeg3d:
    case kRay3d:
        return kLinearEnt3d;
    case kPlane:
        return kPlanarEnt;
    default:
        return id;
    }
}

} // namespace

bool isDerivedFrom(EntityId id, EntityId ancestor) {
    for (;;) {
        if (id == ancestor) return true;
        const EntityId base = baseOf(id);
        if (base == id) return false;
        id = base;
    }
}

} // namespace AcGe
