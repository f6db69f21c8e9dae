#include "gegbl.h"

#include <iterator>

namespace AcGe {
namespace {

// The base of each class, in the order of EntityId; a root names itself.
constexpr EntityId kBases[] = {
    kEntity2d,    kEntity3d,    // entities
    kEntity2d,    kEntity3d,    // curves
    kCurve2d,     kCurve3d,     // linear entities
    kLinearEnt2d, kLinearEnt3d, // lines
    kLinearEnt2d, kLinearEnt3d, // segments
    kLinearEnt2d, kLinearEnt3d, // rays
    kCurve2d,     kCurve3d,     // circular arcs
    kCurve2d,     kCurve3d,     // elliptic arcs
    kCurve2d,     kCurve3d,     // splines
    kEntity3d,    kPlanarEnt,   // planar entity, plane
    kEntity2d,    kEntity3d,    // boxes
    kEntity2d,    kEntity3d,    // intersections
};
static_assert(std::size(kBases) == kCurveCurveInt3d + 1);

} // namespace

bool isDerivedFrom(EntityId id, EntityId ancestor) {
    for (;;) {
        if (id == ancestor) return true;
        const EntityId base = kBases[id];
        if (base == id) return false;
        id = base;
    }
}

} // namespace AcGe
