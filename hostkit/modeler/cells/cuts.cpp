// The lines in which faces of different planes cross.
#include "arrangement.h"

#include <cmath>
#include <cstdlib>

namespace hostkit::modeler {

namespace {

/// A point of a face's border on the line of two planes.
struct Crossing {
    double place = 0;
    Index point = none;
};

/// Where a line runs in a face: from each crossing with an even number to the next.
using Crossings = std::vector<Crossing>;

class Cutter {
public:
    explicit Cutter(Arrangement& all)
        : m_all(all)
        , m_points(2 * all.segments.size()) {}

    bool cut(Index first, Index second) {
        constexpr Index few = 16;
        if (m_all.cornerCount(first) > m_all.cornerCount(second)) std::swap(first, second);
        const AcGeVector3d& normal = planeOf(first).normal;
        const AcGeVector3d line = normal.crossProduct(planeOf(second).normal);
        const double length = line.length();
        if (!(length > 0)) return true;
        m_line = line / length;
        if (!cross(first, m_all.classes[second], m_small)) return false;
        if (m_small[0].empty() && m_small[1].empty()) return true;
        // The run in the smaller face holds the run in both: the larger one shortens it only where that is
        // cheap.
        if (m_all.cornerCount(second) > few) {
            for (const Crossings& run : m_small)
                for (std::size_t i = 0; i + 1 < run.size(); i += 2) add(run[i], run[i + 1], first, second);
            return true;
        }
        if (!cross(second, m_all.classes[first], m_large)) return false;
        for (const Crossings& one : m_small)
            for (const Crossings& other : m_large) addCommon(one, other, first, second);
        return true;
    }

private:
    const Plane& planeOf(Index face) const { return m_all.planeClasses[m_all.classes[face]].plane; }

    // A corner in the plane counts once as above it and once as below: the first run then holds the edges in
    // the plane with the face below them, the second those with the face above.
    bool cross(Index face, Index planeClass, std::array<Crossings, 2>& runs) {
        const Plane& plane = m_all.planeClasses[planeClass].plane;
        runs[0].clear();
        runs[1].clear();
        m_signs.clear();
        bool touching = false;
        bool apart = false;
        m_all.forEdges(face, [&](Index, Index corner) {
            const double height = plane.height(m_all.points[m_all.welded[corner]]);
            const int sign = std::abs(height) <= m_all.tolerance ? 0 : height > 0 ? 1 : -1;
            m_signs.push_back(static_cast<signed char>(sign));
            touching = touching || sign == 0;
            apart = apart || sign != 0;
        });
        if (!apart) return false; // a face in the plane, but not of its class
        collect(face, planeClass, 1, runs[0]);
        if (touching) collect(face, planeClass, -1, runs[1]);
        return true;
    }

    void collect(Index face, Index planeClass, int zero, Crossings& run) {
        const Index body = m_all.faceBodies[face];
        const Polyhedron& shape = *m_all.bodies[body];
        const Polyhedron::Face& f = m_all.face(face);
        const Index start = shape.loopStarts[f.firstLoop];
        for (Index loop = f.firstLoop; loop < f.firstLoop + f.loopCount; ++loop) {
            Index before = shape.loopStarts[loop + 1] - 1;
            for (Index corner = shape.loopStarts[loop]; corner < shape.loopStarts[loop + 1];
                 before = corner++) {
                const int from = m_signs[before - start];
                const int to = m_signs[corner - start];
                if ((from == 0 ? zero : from) == (to == 0 ? zero : to)) continue;
                const Index low = m_all.welded[m_all.pointBases[body] + shape.corners[before]];
                const Index high = m_all.welded[m_all.pointBases[body] + shape.corners[corner]];
                const Index point = from == 0 ? low : to == 0 ? high : pointOn(low, high, planeClass);
                run.push_back({m_line.dotProduct(m_all.points[point].asVector()), point});
            }
        }
        std::sort(run.begin(), run.end(), [](const Crossing& a, const Crossing& b) {
            return a.place != b.place ? a.place < b.place : a.point < b.point;
        });
    }

    // One point for an edge and a plane class, whichever face of the edge asks.
    Index pointOn(Index low, Index high, Index planeClass) {
        if (low > high) std::swap(low, high);
        Index& point = m_points.at(m_all.segment(low, high), planeClass);
        if (point != none) return point;
        const Plane& plane = m_all.planeClasses[planeClass].plane;
        const AcGePoint3d& from = m_all.points[low];
        const AcGePoint3d& to = m_all.points[high];
        const double below = plane.height(from);
        point = m_all.weld(from + (to - from) * (below / (below - plane.height(to))));
        return point;
    }

    void addCommon(const Crossings& one, const Crossings& other, Index first, Index second) {
        std::size_t i = 0;
        std::size_t j = 0;
        while (i + 1 < one.size() && j + 1 < other.size()) {
            const Crossing& low = one[i].place < other[j].place ? other[j] : one[i];
            const Crossing& high = one[i + 1].place < other[j + 1].place ? one[i + 1] : other[j + 1];
            if (low.place < high.place) add(low, high, first, second);
            (one[i + 1].place < other[j + 1].place ? i : j) += 2;
        }
    }

    void add(const Crossing& from, const Crossing& to, Index first, Index second) {
        if (from.point == to.point) return;
        const Index segment = m_all.segment(from.point, to.point);
        for (const Index face : {first, second}) {
            PlaneClass& own = m_all.planeClasses[m_all.classes[face]];
            if (isEdgeOf(face, segment)) continue;
            own.uses.push_back({segment, none, true});
            own.cut = true;
        }
    }

    // What is an edge already is no cut: a face that only touches others with its edges then stays in one
    // piece.
    bool isEdgeOf(Index face, Index segment) const {
        constexpr Index few = 16;
        if (m_all.cornerCount(face) > few) return false;
        const Segment& wanted = m_all.segments[segment];
        bool found = false;
        m_all.forEdges(face, [&](Index from, Index to) {
            from = m_all.welded[from];
            to = m_all.welded[to];
            found = found || (std::min(from, to) == wanted.low && std::max(from, to) == wanted.high);
        });
        return found;
    }

    Arrangement& m_all;
    PairTable m_points; ///< of a segment and a plane class
    AcGeVector3d m_line;
    std::vector<signed char> m_signs;
    std::array<Crossings, 2> m_small;
    std::array<Crossings, 2> m_large;
};

} // namespace

bool cutFaces(Arrangement& all) {
    Cutter cutter(all);
    for (const auto& [first, second] : all.meetings)
        if (all.classes[first] != all.classes[second] && !cutter.cut(first, second)) return false;
    return true;
}

} // namespace hostkit::modeler
