// How solids and regions draw themselves.

#include "acgi.h"
#include "dbmodelergeometry.h"
#include "modelercontent.h"

#include <cmath>
#include <map>
#include <numbers>

namespace {

using hostkit::modeler::Polyhedron;
using Index = Polyhedron::Index;

struct Side {
    Index face = Polyhedron::none, other = Polyhedron::none;
};

/// The quarter of the turn about the surface's axis in which the middle of the facet lies.
int quarterOf(const Polyhedron& body, Index face) {
    const Polyhedron::Face& its = body.faces[face];
    const AcGeVector3d axis = its.surface->axis().direction().normal();
    const AcGeVector3d x = axis.perpVector();
    AcGeVector3d sum;
    for (Index place = body.loopStarts[its.firstLoop]; place < body.loopStarts[its.firstLoop + 1]; ++place)
        sum += body.points[body.corners[place]] - its.surface->axis().point();
    return static_cast<int>(std::floor(std::atan2(sum.dotProduct(axis.crossProduct(x)), sum.dotProduct(x)) /
                                       (std::numbers::pi / 2)));
}

bool isSeen(const Polyhedron& body, const Side& side) {
    if (side.other == Polyhedron::none) return true;
    const auto* const surface = body.faces[side.face].surface;
    if (!surface || surface != body.faces[side.other].surface) return true;
    return quarterOf(body, side.face) != quarterOf(body, side.other);
}

} // namespace

Adesk::Boolean AcDbModelerGeometry::worldDraw(AcGiWorldDraw* draw) {
    const Polyhedron* const body = m_content ? m_content->facets() : nullptr;
    if (!body) return Adesk::kTrue;
    std::map<std::pair<Index, Index>, Side> edges;
    for (Index face = 0; face < body->faces.size(); ++face)
        for (Index loop = body->faces[face].firstLoop;
             loop < body->faces[face].firstLoop + body->faces[face].loopCount; ++loop) {
            const Index begin = body->loopStarts[loop], end = body->loopStarts[loop + 1];
            for (Index place = begin; place < end; ++place) {
                Side& side = edges[std::minmax(body->corners[place],
                                               body->corners[place + 1 == end ? begin : place + 1])];
                (side.face == Polyhedron::none ? side.face : side.other) = face;
            }
        }
    for (const auto& [ends, side] : edges) {
        if (!isSeen(*body, side)) continue;
        const AcGePoint3d line[] = {body->points[ends.first], body->points[ends.second]};
        draw->geometry().polyline(2, line);
    }
    return Adesk::kTrue;
}
