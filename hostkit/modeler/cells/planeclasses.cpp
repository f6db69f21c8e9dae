// Welding, and which faces lie in one plane: by tolerance, never by the numbers of the planes.
#include "arrangement.h"

#include <cmath>

namespace hostkit::modeler {

namespace {

// The faces at each segment, chained.
struct SegmentFaces {
    std::vector<Index> last; ///< of each segment: its last use
    struct Entry {
        Index face;
        Index before;
    };
    std::vector<Entry> entries;
};

bool isInPlane(const Arrangement& all, Index face, const Plane& plane, double allowance) {
    bool inside = true;
    all.forEdges(face, [&](Index from, Index) {
        inside = inside && std::abs(plane.height(all.points[all.welded[from]])) <= allowance;
    });
    return inside;
}

// The corners of the smaller face within the tolerance of the plane of the larger one, which is the better
// known.
bool areCoplanar(const Arrangement& all, Index first, Index second) {
    constexpr double nearlyParallel = 0.9;
    if (std::abs(all.planes[first].normal.dotProduct(all.planes[second].normal)) < nearlyParallel)
        return false;
    if (all.boxes[first].diagonalSquared() > all.boxes[second].diagonalSquared()) std::swap(first, second);
    return isInPlane(all, first, all.planes[second], all.tolerance);
}

void joinNeighbours(Arrangement& all, Joined& sets) {
    SegmentFaces at;
    at.last.assign(all.segments.size(), none);
    for (Index f = 0; f < all.faceCount(); ++f) {
        if (!all.worked[f]) continue;
        all.forEdges(f, [&](Index from, Index to) {
            from = all.welded[from];
            to = all.welded[to];
            if (from == to) return;
            Index& last = at.last[all.segment(from, to)];
            for (Index i = last; i != none; i = at.entries[i].before) {
                const Index other = at.entries[i].face;
                if (sets.find(f) != sets.find(other) && areCoplanar(all, f, other)) sets.join(f, other);
            }
            at.entries.push_back({f, last});
            last = static_cast<Index>(at.entries.size() - 1);
        });
    }
}

// Dropping the largest component of the normal keeps the other two as they are: points of a grid stay exact.
std::array<unsigned char, 2> keptAxes(const AcGeVector3d& normal) {
    const unsigned dropped = normal.largestElement();
    const auto first = static_cast<unsigned char>((dropped + 1) % 3);
    const auto second = static_cast<unsigned char>((dropped + 2) % 3);
    if (normal[dropped] > 0) return {first, second};
    return {second, first};
}

void numberClasses(Arrangement& all, Joined& sets) {
    std::vector<Index> largest;
    for (Index f = 0; f < all.faceCount(); ++f) {
        if (!all.worked[f]) continue;
        const Index head = sets.find(f);
        if (head == f) {
            all.classes[f] = static_cast<Index>(all.planeClasses.size());
            all.planeClasses.emplace_back();
            largest.push_back(f);
        }
        all.classes[f] = all.classes[head];
        Index& best = largest[all.classes[f]];
        if (all.boxes[f].diagonalSquared() > all.boxes[best].diagonalSquared()) best = f;
        PlaneClass& own = all.planeClasses[all.classes[f]];
        ++own.faceCount;
        own.severalBodies = own.severalBodies || all.faceBodies[f] != all.faceBodies[head];
    }
    for (Index i = 0; i < largest.size(); ++i) {
        all.planeClasses[i].largest = largest[i];
        all.planeClasses[i].plane = all.planes[largest[i]];
        all.planeClasses[i].axes = keptAxes(all.planeClasses[i].plane.normal);
    }
}

void useEdges(Arrangement& all, Index f) {
    PlaneClass& own = all.planeClasses[all.classes[f]];
    const bool along = all.planes[f].normal.dotProduct(own.plane.normal) > 0;
    all.senses[f] = along ? 1 : -1;
    all.forEdges(f, [&](Index from, Index to) {
        from = all.welded[from];
        to = all.welded[to];
        if (from != to) own.uses.push_back({all.segment(from, to), f, (from < to) == along});
    });
    // A slit is looked at anew: what touched the face there may be gone.
    all.forLoops(f, [&](std::span<const Index> corners, Index) {
        Index before = corners[corners.size() - 2];
        Index at = corners.back();
        for (const Index corner : corners) {
            own.cut = own.cut || corner == before;
            before = at;
            at = corner;
        }
    });
}

} // namespace

bool weldEdges(Arrangement& all) {
    const Index count = all.pointBases.back();
    all.welded.resize(count);
    std::iota(all.welded.begin(), all.welded.end(), Index{0});
    all.clean.assign(count, false);
    std::vector<bool> near(count, false);
    std::size_t edges = 0;
    for (Index f = 0; f < all.faceCount(); ++f) {
        std::vector<bool>& marks = all.worked[f] ? near : all.clean;
        all.forEdges(f, [&](Index from, Index) { marks[from] = true; });
        if (all.worked[f]) edges += all.cornerCount(f);
    }
    all.grid = PointGrid(all.tolerance, edges / 2);
    for (Index p = 0; p < count; ++p) {
        if (!near[p] || all.clean[p]) continue;
        const Index same = all.grid.find(all.points, all.points[p]);
        if (same == none)
            all.grid.add(all.points, p);
        else
            all.welded[p] = same;
    }
    all.segmentNumbers = PairTable(edges);
    all.segments.reserve(edges);
    for (Index f = 0; f < all.faceCount(); ++f) {
        if (!all.worked[f]) continue;
        if (!isInPlane(all, f, all.planes[f], 2 * all.tolerance)) return false;
        all.forEdges(f, [&](Index from, Index to) {
            from = all.welded[from];
            to = all.welded[to];
            if (from != to) all.segment(from, to);
        });
    }
    for (Index f = 0; f < all.faceCount(); ++f)
        if (!all.worked[f])
            all.forEdges(f, [&](Index from, Index to) {
                if (near[from] && near[to]) all.cleanEdges.push_back(all.segment(from, to));
            });
    return true;
}

bool findPlaneClasses(Arrangement& all) {
    all.classes.assign(all.faceCount(), none);
    all.senses.assign(all.faceCount(), 1);
    Joined sets(all.faceCount());
    for (const auto& [first, second] : all.meetings)
        if (sets.find(first) != sets.find(second) && areCoplanar(all, first, second))
            sets.join(first, second);
    joinNeighbours(all, sets);
    numberClasses(all, sets);
    for (Index f = 0; f < all.faceCount(); ++f) {
        if (!all.worked[f]) continue;
        // A chain of planes that each agree with the next may leave the first: not one plane at this
        // tolerance.
        if (!isInPlane(all, f, all.planeClasses[all.classes[f]].plane, 2 * all.tolerance)) return false;
        useEdges(all, f);
    }
    return true;
}

} // namespace hostkit::modeler
