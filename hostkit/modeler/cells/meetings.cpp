// The broad phase: which faces of different bodies may touch. All others pass through as they are.
#include "arrangement.h"

#include <cmath>

namespace hostkit::modeler {

namespace {

void numberBodies(Arrangement& all) {
    all.pointBases.assign(1, 0);
    all.faceBases.assign(1, 0);
    all.faceBodies.clear();
    for (Index body = 0; body < all.bodies.size(); ++body) {
        const Polyhedron& shape = *all.bodies[body];
        all.pointBases.push_back(all.pointBases.back() + static_cast<Index>(shape.points.size()));
        all.faceBases.push_back(all.faceBases.back() + static_cast<Index>(shape.faces.size()));
        all.faceBodies.resize(all.faceBases.back(), body);
    }
}

std::vector<Box> bodyBoxes(const Arrangement& all) {
    std::vector<Box> boxes(all.bodies.size());
    for (std::size_t i = 0; i < boxes.size(); ++i)
        for (const AcGePoint3d& p : all.bodies[i]->points) boxes[i].add(p);
    return boxes;
}

void placePoints(Arrangement& all, const std::vector<Box>& boxes, double tolerance) {
    constexpr double units = 0x1p-46; // 64 units in the last place
    double largest = 0;
    for (const Box& box : boxes)
        if (!box.empty())
            largest = std::max({largest, box.low.largestCoordinate(), box.high.largestCoordinate()});
    all.tolerance = std::max(tolerance, units * largest);
    all.frame = WorkFrame(all.bodies, boxes);
    all.points.clear();
    all.points.reserve(all.pointBases.back() + 64);
    for (const Polyhedron* body : all.bodies)
        for (const AcGePoint3d& p : body->points) all.points.push_back(all.frame.placeInside(p));
}

// The corners of a face lie in its plane, and its loops run counter-clockwise about its normal.
bool placeFaces(Arrangement& all) {
    all.planes.resize(all.faceCount());
    all.boxes.assign(all.faceCount(), Box());
    for (Index f = 0; f < all.faceCount(); ++f) {
        double low = Box::infinity;
        double high = -Box::infinity;
        const AcGeVector3d normal = all.frame.directionInside(all.face(f).normal);
        Box& box = all.boxes[f];
        AcGeVector3d area;
        const AcGePoint3d& first = all.points[all.pointBases[all.faceBodies[f]]];
        all.forEdges(f, [&](Index from, Index to) {
            box.add(all.points[from]);
            const double height = normal.dotProduct(all.points[from].asVector());
            low = std::min(low, height);
            high = std::max(high, height);
            area += (all.points[from] - first).crossProduct(all.points[to] - first);
        });
        if (!(high - low <= 4 * all.tolerance) || !(area.dotProduct(normal) > 0)) return false;
        all.planes[f] = {normal, (low + high) / 2};
        box.inflate(all.tolerance);
    }
    return true;
}

// Faces that may meet another body by its box. With several others each may meet each, and the tree decides.
std::vector<Index> candidates(const Arrangement& all) {
    std::array<Box, 2> sides;
    for (Index f = 0; f < all.faceCount(); ++f)
        sides[static_cast<std::size_t>(all.role(f))].add(all.boxes[f]);
    std::vector<Index> faces;
    for (Index f = 0; f < all.faceCount(); ++f) {
        const int role = all.role(f);
        if ((role == 1 && all.bodies.size() > 2) ||
            all.boxes[f].meets(sides[static_cast<std::size_t>(1 - role)]))
            faces.push_back(f);
    }
    return faces;
}

bool liesAside(const Arrangement& all, Index face, const Plane& plane) {
    const double gap = 2 * all.tolerance;
    bool above = true;
    bool below = true;
    all.forEdges(face, [&](Index from, Index) {
        const double height = plane.height(all.points[from]);
        above = above && height > gap;
        below = below && height < -gap;
    });
    return above || below;
}

// The smaller face against the plane of the larger always; the other way round only where that is cheap.
bool mayTouch(const Arrangement& all, Index first, Index second) {
    constexpr Index few = 64;
    if (all.cornerCount(first) > all.cornerCount(second)) std::swap(first, second);
    if (liesAside(all, first, all.planes[second])) return false;
    return all.cornerCount(second) > few || !liesAside(all, second, all.planes[first]);
}

} // namespace

bool findMeetings(Arrangement& all, double tolerance) {
    numberBodies(all);
    placePoints(all, bodyBoxes(all), tolerance);
    if (!placeFaces(all)) return false;
    all.worked.assign(all.faceCount(), false);
    const std::vector<Index> faces = candidates(all);
    std::vector<Box> boxes;
    boxes.reserve(faces.size());
    for (const Index f : faces) boxes.push_back(all.boxes[f]);
    const SpaceTree tree(boxes);
    for (Index i = 0; i < faces.size(); ++i)
        tree.query(boxes[i], [&](Index j) {
            if (j <= i || all.faceBodies[faces[i]] == all.faceBodies[faces[j]]) return;
            if (!mayTouch(all, faces[i], faces[j])) return;
            all.meetings.push_back({faces[i], faces[j]});
            all.worked[faces[i]] = all.worked[faces[j]] = true;
        });
    return true;
}

} // namespace hostkit::modeler
