// The common state of a boolean: bodies cut into plane cells. Each step is a function of its own file and
// runs once, in the order in which they are declared here; a step that finds a contradiction gives false, and
// the whole is dropped.
#pragma once

#include "lookups.h"
#include "orientation.h"
#include "spacetree.h"
#include "workframe.h"

#include <span>

namespace hostkit::modeler {

/// Points p with normal . p = distance.
struct Plane {
    AcGeVector3d normal;
    double distance = 0;

    double height(const AcGePoint3d& p) const { return normal.dotProduct(p.asVector()) - distance; }
};

/// A segment between two points; split, it is the chain of its children. Two points have one segment, so that
/// faces of all planes see the same splits.
struct Segment {
    Index low = none;
    Index high = none; ///< the greater number
    Index firstChild = none;
    Index childCount = 0;
};

/// A segment as the edge of a face, or as a cut where the face is none.
struct Use {
    Index segment = none;
    Index face = none;
    bool forward = true; ///< seen against the normal of the plane class, the face lies left of low -> high
};

/// Faces of all bodies that lie in one plane within the tolerance.
struct PlaneClass {
    Plane plane;
    Index largest = none;                    ///< the face that gave the plane
    std::array<unsigned char, 2> axes{0, 1}; ///< kept of space: counter-clockwise seen against the normal
    std::vector<Use> uses;
    std::vector<Index> leaves; ///< the segments in the plane, without those that were split; ascending
    Index faceCount = 0;
    bool severalBodies = false;
    bool cut = false;
    Index firstHalfEdge = 0;
    Index lastHalfEdge = 0;
};

/// A part of a plane that no segment crosses and at least one face covers.
struct Cell {
    Index plane = none;
    std::array<int, 2>
        delta{};          ///< what is gained from the front to the back: of the first body, of the others
    Index along = none;   ///< the first face that covers it with the normal of its class
    Index against = none; ///< with the opposite normal
};

/// A segment as the border of the cell at its left. The twin has the number with the last bit turned.
struct HalfEdge {
    Index origin = none;
    Index segment = none;
    Index cell = none;      ///< none where no face covers what lies left
    Index clockwise = none; ///< the next of the same origin, turning clockwise
};

/// How often a place is covered by the first body and by the others.
using Coverage = std::array<int, 2>;

struct Arrangement {
    explicit Arrangement(std::span<const Polyhedron* const> all)
        : bodies(all) {}

    std::span<const Polyhedron* const> bodies; ///< the first, then the others
    double tolerance = 0;
    WorkFrame frame;

    std::vector<Index> pointBases; ///< of each body, and the end
    std::vector<Index> faceBases;
    std::vector<AcGePoint3d> points; ///< in the frame: those of all bodies, then new ones
    std::vector<Index> welded;       ///< of each point of a body: the point that stands for it
    std::vector<bool> clean; ///< the point belongs to a face that passes through: no other body is near
    PointGrid grid{1, 0};    ///< the points of worked faces that are not clean, and all new ones

    std::vector<Index> faceBodies; ///< of each face
    std::vector<Plane> planes;
    std::vector<Box> boxes;
    std::vector<std::array<Index, 2>> meetings; ///< faces of different bodies that may touch
    std::vector<bool> worked;                   ///< the face is in a meeting; the others pass through whole
    std::vector<Index> classes;                 ///< of each worked face
    std::vector<signed char> senses;            ///< its normal along or against that of its class

    std::vector<Segment> segments;
    PairTable segmentNumbers;
    std::vector<Index> cleanEdges; ///< segments that are edges of faces that pass through
    std::vector<Index> children;
    std::vector<PlaneClass> planeClasses;

    std::vector<HalfEdge> halfEdges;
    std::vector<Cell> cells;

    std::vector<Coverage> fronts; ///< of each cell: the coverage on the side of the normal
    std::vector<Index> passing;   ///< of each face that passes through: its component
    std::vector<Coverage> passingFronts;

    Index faceCount() const { return faceBases.back(); }
    int role(Index face) const { return faceBodies[face] == 0 ? 0 : 1; }
    const Polyhedron::Face& face(Index number) const {
        return bodies[faceBodies[number]]->faces[number - faceBases[faceBodies[number]]];
    }
    Index segment(Index first, Index second);
    /// A point that is new, or the one that stands within the tolerance.
    Index weld(const AcGePoint3d& place);
    Planar planar(const PlaneClass& plane, Index point) const {
        return {points[point][plane.axes[0]], points[point][plane.axes[1]]};
    }
    /// Calls found(segment, along) for what a segment has become, in its order from low to high; along: a
    /// piece runs from its own low to its high.
    template <class Found>
    void forLeaves(Index number, bool along, Found&& found) const {
        const Segment& parent = segments[number];
        if (parent.childCount == 0) {
            found(number, along);
            return;
        }
        Index from = parent.low;
        for (Index i = 0; i < parent.childCount; ++i) {
            const Index child = children[parent.firstChild + i];
            const bool same = segments[child].low == from;
            forLeaves(child, along == same, found);
            from = same ? segments[child].high : segments[child].low;
        }
    }
    /// Calls loop(corners, base) for the loops of a face: the points of its body, and what is added to their
    /// numbers.
    template <class Loop>
    void forLoops(Index number, Loop&& loop) const {
        const Index body = faceBodies[number];
        const Polyhedron& shape = *bodies[body];
        const Polyhedron::Face& f = shape.faces[number - faceBases[body]];
        const std::span<const Index> corners(shape.corners);
        for (Index i = f.firstLoop; i < f.firstLoop + f.loopCount; ++i)
            loop(corners.subspan(shape.loopStarts[i], shape.loopStarts[i + 1] - shape.loopStarts[i]),
                 pointBases[body]);
    }
    /// Calls edge(from, to) for the edges of a face; `to` runs through the corners in their order.
    template <class Edge>
    void forEdges(Index number, Edge&& edge) const {
        forLoops(number, [&](std::span<const Index> corners, Index base) {
            Index from = base + corners.back();
            for (const Index corner : corners) {
                edge(from, base + corner);
                from = base + corner;
            }
        });
    }
    /// Of each segment: whether it is a piece of an edge of a face that passes through.
    std::vector<bool> cleanPieces() const;
    Index cornerCount(Index number) const {
        const Polyhedron::Face& f = face(number);
        const auto& starts = bodies[faceBodies[number]]->loopStarts;
        return starts[f.firstLoop + f.loopCount] - starts[f.firstLoop];
    }
};

/// Points and face planes in the frame, boxes; the meetings; which faces are worked. The tolerance is raised
/// to some units in the last place of the largest coordinate.
bool findMeetings(Arrangement& all, double tolerance);
/// One point for those of worked faces that are within the tolerance, and the segments of their edges.
bool weldEdges(Arrangement& all);
/// One class for worked faces that meet, or are neighbours, in one plane.
bool findPlaneClasses(Arrangement& all);
/// The lines in which meeting faces of different planes cross.
bool cutFaces(Arrangement& all);
/// Segments of a plane that cross or lie on each other are split until none do.
bool nodeSegments(Arrangement& all);
/// The cells of each plane, and which faces cover them.
bool findCells(Arrangement& all);
/// How often each side of a cell is covered.
bool findCoverage(Arrangement& all);

} // namespace hostkit::modeler
