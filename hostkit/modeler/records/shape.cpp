#include "shape.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

namespace hostkit::modeler {

AcGePoint3d ShapeCurve::at(double t) const {
    if (kind == Kind::line) return origin + direction * t;
    return origin + major * std::cos(t) + minor() * std::sin(t);
}

double ShapeCurve::parameterOf(const AcGePoint3d& point) const {
    const AcGeVector3d offset = point - origin;
    if (kind == Kind::line) return offset.dotProduct(direction) / direction.lengthSqrd();
    const AcGeVector3d other = minor();
    return std::atan2(offset.dotProduct(other) / other.lengthSqrd(),
                      offset.dotProduct(major) / major.lengthSqrd());
}

AcGeVector3d areaVectorOf(const Shape& shape, const Shape::Face& face) {
    AcGeVector3d sum;
    const AcGePoint3d base = face.surface.origin;
    for (Shape::Index place = shape.loopStarts[face.firstLoop];
         place < shape.loopStarts[face.firstLoop + face.loopCount]; ++place) {
        const Shape::Coedge& coedge = shape.coedges[place];
        const Shape::Edge& edge = shape.edges[coedge.edge];
        const AcGeVector3d start = shape.vertices[edge.start] - base;
        const AcGeVector3d end = shape.vertices[edge.end] - base;
        AcGeVector3d part = start.crossProduct(end);
        if (edge.curve.kind == ShapeCurve::Kind::ellipse)
            part = (edge.curve.origin - base).crossProduct(end - start) +
                   edge.curve.major.crossProduct(edge.curve.minor()) * (edge.to - edge.from);
        sum += coedge.isReversed ? -part : part;
    }
    return sum / 2.0;
}

// --- From flat faces ---------------------------------------------------------------------------------------

namespace {

using Index = Shape::Index;

struct HalfEdge {
    Index coedge = 0;
    Index face = 0;
    bool isReversed = false; ///< runs from the higher vertex to the lower
    double angle = 0.0;      ///< of the face about the edge
};

// The faces at one edge in their order about it. A face that runs along it has its material on the side of
// lower angles, one that runs against it on that of higher ones.
void sortAround(const Polyhedron& body, Index low, Index high, std::vector<HalfEdge>& sides) {
    const AcGeVector3d axis = (body.points[high] - body.points[low]).normal();
    const AcGeVector3d x = axis.perpVector();
    const AcGeVector3d y = axis.crossProduct(x);
    for (HalfEdge& side : sides) {
        const AcGeVector3d inside = body.faces[side.face].normal.crossProduct(side.isReversed ? -axis : axis);
        side.angle = std::atan2(inside.dotProduct(y), inside.dotProduct(x));
    }
    std::sort(sides.begin(), sides.end(),
              [](const HalfEdge& a, const HalfEdge& b) { return a.angle < b.angle; });
}

class ShapeMaking {
public:
    explicit ShapeMaking(const Polyhedron& body)
        : m_body(body) {}

    Shape run() {
        m_shape.vertices = m_body.points;
        m_shape.loopStarts.assign(m_body.loopStarts.begin(), m_body.loopStarts.end());
        m_shape.coedges.resize(m_body.corners.size());
        for (Index face = 0; face < m_body.faces.size(); ++face) addFace(face);
        for (const auto& [low, high] : m_order) addEdges(low, high);
        sortIntoShells();
        return std::move(m_shape);
    }

private:
    void addFace(Index number) {
        const Polyhedron::Face& face = m_body.faces[number];
        const Index begin = m_body.loopStarts[face.firstLoop];
        const AcGePoint3d origin = m_body.points[m_body.corners[begin]];
        AcGeVector3d u = m_body.points[m_body.corners[begin + 1]] - origin;
        Shape::Face made;
        made.surface = {ShapeSurface::Kind::plane, origin, face.normal, u.normal()};
        made.firstLoop = face.firstLoop;
        made.loopCount = face.loopCount;
        m_shape.faces.push_back(made);
        for (Index loop = face.firstLoop; loop < face.firstLoop + face.loopCount; ++loop)
            addLoop(loop, number);
    }

    void addLoop(Index loop, Index face) {
        const Index begin = m_body.loopStarts[loop];
        const Index end = m_body.loopStarts[loop + 1];
        for (Index place = begin; place < end; ++place) {
            const Index from = m_body.corners[place];
            const Index to = m_body.corners[place + 1 == end ? begin : place + 1];
            const std::pair<Index, Index> key = std::minmax(from, to);
            std::vector<HalfEdge>& sides = m_sides[key];
            if (sides.empty()) m_order.push_back(key);
            sides.push_back({place, face, from > to});
        }
    }

    void addEdges(Index low, Index high) {
        std::vector<HalfEdge>& sides = m_sides[{low, high}];
        if (sides.size() > 2) sortAround(m_body, low, high, sides);
        std::vector<bool> isDone(sides.size(), false);
        for (std::size_t place = 0; place < sides.size(); ++place) {
            if (isDone[place]) continue;
            const std::size_t partner = partnerOf(sides, place, isDone);
            addEdge(sides[place], partner == place ? nullptr : &sides[partner]);
            isDone[place] = isDone[partner] = true;
        }
    }

    // Itself for a free edge.
    static std::size_t partnerOf(const std::vector<HalfEdge>& sides, std::size_t place,
                                 const std::vector<bool>& isDone) {
        const std::size_t count = sides.size();
        for (std::size_t step = 1; step < count; ++step) {
            const std::size_t other = (place + (sides[place].isReversed ? step : count - step)) % count;
            if (!isDone[other] && sides[other].isReversed != sides[place].isReversed) return other;
        }
        return place;
    }

    void addEdge(const HalfEdge& first, const HalfEdge* second) {
        const Index start = m_body.corners[first.coedge];
        const Index end = endOf(first);
        const AcGeVector3d way = m_body.points[end] - m_body.points[start];
        Shape::Edge edge;
        edge.start = start;
        edge.end = end;
        edge.to = way.length();
        edge.curve = {ShapeCurve::Kind::line, m_body.points[start], way / edge.to, {}};
        const auto number = static_cast<Index>(m_shape.edges.size());
        m_shape.edges.push_back(edge);
        m_shape.coedges[first.coedge] = {number, false};
        if (second) m_shape.coedges[second->coedge] = {number, true};
        if (second) join(first.face, second->face);
    }

    Index endOf(const HalfEdge& side) const {
        const auto next = std::upper_bound(m_body.loopStarts.begin(), m_body.loopStarts.end(), side.coedge);
        return m_body.corners[side.coedge + 1 == *next ? *(next - 1) : side.coedge + 1];
    }

    // Faces that hang together by edges are one shell.
    Index rootOf(Index face) {
        m_roots.resize(m_body.faces.size());
        if (!m_hasRoots) std::iota(m_roots.begin(), m_roots.end(), Index{0});
        m_hasRoots = true;
        while (m_roots[face] != face) face = m_roots[face] = m_roots[m_roots[face]];
        return face;
    }
    void join(Index a, Index b) {
        a = rootOf(a);
        b = rootOf(b);
        m_roots[std::max(a, b)] = std::min(a, b);
    }

    // A shell that is wound inward is a cavity of the piece that holds it.
    void sortIntoShells() {
        std::map<Index, Index> shells;
        for (Index face = 0; face < m_shape.faces.size(); ++face) {
            const auto [found, isNew] = shells.try_emplace(rootOf(face), static_cast<Index>(shells.size()));
            m_shape.faces[face].shell = found->second;
        }
        std::stable_sort(m_shape.faces.begin(), m_shape.faces.end(),
                         [](const Shape::Face& a, const Shape::Face& b) { return a.shell < b.shell; });
        giveLumps(shells.size());
    }

    void giveLumps(std::size_t count) {
        std::vector<double> volumes(count, 0.0);
        for (const Shape::Face& face : m_shape.faces)
            volumes[face.shell] +=
                areaVectorOf(m_shape, face).dotProduct(face.surface.origin - m_body.points.front());
        m_shape.shellLumps.assign(count, 0);
        Index lumps = 0;
        for (std::size_t shell = 0; shell < count; ++shell)
            if (volumes[shell] >= 0.0) m_shape.shellLumps[shell] = lumps++;
        for (std::size_t shell = 0; shell < count; ++shell)
            if (volumes[shell] < 0.0) m_shape.shellLumps[shell] = lumpAround(shell, volumes);
    }

    // The smallest piece whose box holds the cavity's.
    Index lumpAround(std::size_t cavity, const std::vector<double>& volumes) const {
        std::size_t best = cavity;
        for (std::size_t shell = 0; shell < volumes.size(); ++shell)
            if (volumes[shell] >= -volumes[cavity] && boxOf(shell).contains(boxOf(cavity)) &&
                (best == cavity || volumes[shell] < volumes[best]))
                best = shell;
        return best == cavity ? 0 : m_shape.shellLumps[best];
    }

    struct Box {
        AcGePoint3d low{1e300, 1e300, 1e300}, high{-1e300, -1e300, -1e300};
        [[nodiscard]] bool contains(const Box& o) const {
            return low.x <= o.low.x && low.y <= o.low.y && low.z <= o.low.z && high.x >= o.high.x &&
                   high.y >= o.high.y && high.z >= o.high.z;
        }
    };
    Box boxOf(std::size_t shell) const {
        Box box;
        for (const Shape::Face& face : m_shape.faces)
            for (Index place = m_shape.loopStarts[face.firstLoop];
                 face.shell == shell && place < m_shape.loopStarts[face.firstLoop + face.loopCount];
                 ++place) {
                const AcGePoint3d& p = m_shape.vertices[m_shape.startOf(m_shape.coedges[place])];
                box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y), std::min(box.low.z, p.z)};
                box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y), std::max(box.high.z, p.z)};
            }
        return box;
    }

    const Polyhedron& m_body;
    Shape m_shape;
    std::map<std::pair<Index, Index>, std::vector<HalfEdge>> m_sides;
    std::vector<std::pair<Index, Index>> m_order; // of the edges, as the faces name them
    std::vector<Index> m_roots;
    bool m_hasRoots = false;
};

} // namespace

Shape shapeOf(const Polyhedron& polyhedron) { return ShapeMaking(polyhedron).run(); }

// --- Motions -----------------------------------------------------------------------------------------------

namespace {

AcGeVector3d turned(const AcGeMatrix3d& matrix, const AcGeVector3d& vector, double scale) {
    return (matrix * vector) / scale;
}

void moveSurface(ShapeSurface& surface, const AcGeMatrix3d& matrix, double scale) {
    surface.origin.transformBy(matrix);
    surface.axis = turned(matrix, surface.axis, scale);
    surface.major = turned(matrix, surface.major, surface.kind == ShapeSurface::Kind::cone ? 1.0 : scale);
    surface.radius *= scale;
    surface.minorRadius *= scale;
}

void moveEdge(Shape::Edge& edge, const AcGeMatrix3d& matrix, double scale, bool isMirrored) {
    ShapeCurve& curve = edge.curve;
    curve.origin.transformBy(matrix);
    curve.major = matrix * curve.major;
    curve.direction = turned(matrix, curve.direction, scale);
    if (curve.kind == ShapeCurve::Kind::line) {
        edge.from *= scale;
        edge.to *= scale;
    } else if (isMirrored) {
        curve.direction = -curve.direction;
    }
}

} // namespace

bool transformShape(Shape& shape, const AcGeMatrix3d& matrix) {
    const AcGeVector3d x = matrix * AcGeVector3d::kXAxis;
    const AcGeVector3d y = matrix * AcGeVector3d::kYAxis;
    const AcGeVector3d z = matrix * AcGeVector3d::kZAxis;
    const double scale = x.length();
    constexpr double rounding = 1e-10; // of the scale
    const auto isOff = [&](double value) { return !(std::abs(value) <= rounding * scale * scale); };
    if (!(scale > 0.0) || isOff(y.lengthSqrd() - scale * scale) || isOff(z.lengthSqrd() - scale * scale) ||
        isOff(x.dotProduct(y)) || isOff(x.dotProduct(z)) || isOff(y.dotProduct(z)))
        return false;
    const bool isMirrored = x.crossProduct(y).dotProduct(z) < 0.0;
    for (AcGePoint3d& vertex : shape.vertices) vertex.transformBy(matrix);
    for (Shape::Edge& edge : shape.edges) moveEdge(edge, matrix, scale, isMirrored);
    for (Shape::Face& face : shape.faces) moveSurface(face.surface, matrix, scale);
    if (!isMirrored) return true;
    // The faces lie to the right of their coedges now.
    for (std::size_t loop = 0; loop + 1 < shape.loopStarts.size(); ++loop)
        std::reverse(shape.coedges.begin() + shape.loopStarts[loop],
                     shape.coedges.begin() + shape.loopStarts[loop + 1]);
    for (Shape::Coedge& coedge : shape.coedges) coedge.isReversed = !coedge.isReversed;
    return true;
}

} // namespace hostkit::modeler
