#include "ambody.h"

#include "amerror.h"
#include "bodystorage.h"
#include "combination.h"

#include <cmath>
#include <unordered_map>

namespace AModeler {

using namespace hostkit::modeler;

Body::Body() = default;
Body::Body(Body&& other) noexcept
    : m_faceList(std::exchange(other.m_faceList, nullptr))
    , m_vertexList(std::exchange(other.m_vertexList, nullptr))
    , m_storage(std::move(other.m_storage)) {}
Body::~Body() = default;

Body& Body::operator=(Body&& other) noexcept {
    if (this == &other) return *this;
    m_faceList = std::exchange(other.m_faceList, nullptr);
    m_vertexList = std::exchange(other.m_vertexList, nullptr);
    m_storage = std::move(other.m_storage);
    return *this;
}

Body& Body::operator=(const Body& other) {
    if (this != &other) *this = Body(other);
    return *this;
}

void Body::init() { *this = Body(); }

BodyParts& Body::storage() {
    if (!m_storage) m_storage = std::make_unique<BodyParts>();
    return *m_storage;
}

Surface* Body::newSurface(const Line3d& axis, double radius) {
    return storage().surfaces.emplace_back(std::make_shared<Surface>(axis, radius)).get();
}

namespace {

/// The parts of one kind with their copies, found by the marks that the parts bear while a body is copied.
template <class T>
class Copies {
public:
    explicit Copies(PartPool<T>& pool)
        : m_pool(pool) {}
    T* add(const T& part) {
        part.setMark(static_cast<std::uint32_t>(m_parts.size()));
        m_parts.push_back(&part);
        return m_copies.emplace_back(m_pool.make());
    }
    /// Null for what was not added: an edge of a face that was taken out of the body.
    [[nodiscard]] T* of(const T* part) const {
        const bool known = part && part->mark() < m_parts.size() && m_parts[part->mark()] == part;
        return known ? m_copies[part->mark()] : nullptr;
    }
    [[nodiscard]] const std::vector<T*>& all() const { return m_copies; }
    [[nodiscard]] T* first() const { return m_copies.empty() ? nullptr : m_copies.front(); }
    void chain() const {
        for (std::size_t i = 0; i < m_copies.size(); ++i)
            m_copies[i]->setNext(i + 1 < m_copies.size() ? m_copies[i + 1] : nullptr);
    }

private:
    PartPool<T>& m_pool;
    std::vector<const T*> m_parts;
    std::vector<T*> m_copies;
};

} // namespace

Body::Body(const Body& other) {
    if (!other.m_storage) return;
    BodyParts& own = storage();
    own.surfaces = other.m_storage->surfaces;
    Copies<Vertex> vertices(own.vertices);
    Copies<Face> faces(own.faces);
    Copies<Edge> edges(own.edges);
    for (const Vertex* vertex = other.m_vertexList; vertex; vertex = vertex->next())
        *vertices.add(*vertex) = *vertex;
    forEachFace(other, [&](const Face& face) {
        faces.add(face)->takeValuesOf(face);
        forEachEdge(face, [&](Edge& edge) { *edges.add(edge) = edge; });
    });
    for (Edge* edge : edges.all()) {
        edge->setNext(edges.of(edge->next()));
        edge->setPrev(edges.of(edge->prev()));
        edge->setPartner(edges.of(edge->partner()));
        edge->setVertex(vertices.of(edge->vertex()));
        edge->setFace(faces.of(edge->face()));
    }
    for (Face* face : faces.all()) face->setEdgeLoop(edges.of(face->edgeLoop()));
    vertices.chain();
    faces.chain();
    m_vertexList = vertices.first();
    m_faceList = faces.first();
}

int Body::faceCount() const {
    int count = 0;
    forEachFace(*this, [&](const Face&) { ++count; });
    return count;
}

int Body::edgeCount() const {
    int count = 0;
    forEachFace(*this, [&](const Face& face) { count += face.edgeCount(); });
    return count;
}

int Body::vertexCount() const {
    int count = 0;
    for (const Vertex* vertex = m_vertexList; vertex; vertex = vertex->next()) ++count;
    return count;
}

namespace {

bool isLinked(const Edge& edge) {
    const Edge *next = edge.next(), *partner = edge.partner();
    return next && next->prev() == &edge && next->face() == edge.face() && partner && partner != &edge &&
           partner->partner() == &edge && partner->next() && partner->vertex() == next->vertex() &&
           edge.vertex() == partner->next()->vertex();
}

bool isLinked(const Face& face) {
    const Edge* edge = face.edgeLoop();
    if (!edge) return false;
    do {
        if (!edge->vertex() || edge->face() != &face || !isLinked(*edge)) return false;
        edge = edge->next();
    } while (edge != face.edgeLoop());
    return true;
}

/// Every edge of the face is longer than the tolerance.
bool hasLengths(const Face& face) {
    bool all = true;
    forEachEdge(face,
                [&](const Edge& edge) { all = all && !edge.point().isEqual(edge.next()->point(), gEpsAbs); });
    return all;
}

} // namespace

bool Body::isValid(int level) const {
    bool valid = true;
    forEachFace(*this, [&](const Face& face) {
        valid = valid && isLinked(face) && (level == 0 || (face.isPlanar() && hasLengths(face)));
    });
    return valid;
}

Body Body::operator+(const Body& other) const { return boolOper(kUnion, other); }
Body Body::operator-(const Body& other) const { return boolOper(kSubtract, other); }
Body Body::operator*(const Body& other) const { return boolOper(kIntersect, other); }

Body Body::boolOper(BooleanOperationType type, const Body& other, FailurePolicy) const {
    const std::array<const Body*, 1> others{&other};
    return boolOper(type, others);
}

namespace {

Operation operationOf(BooleanOperationType type) {
    switch (type) {
    case kUnion:
        return Operation::unite;
    case kSubtract:
        return Operation::subtract;
    case kIntersect:
        return Operation::intersect;
    }
    throw Error(eBadInput);
}

} // namespace

Body Body::boolOper(BooleanOperationType type, std::span<const Body* const> others) const {
    const Operation operation = operationOf(type);
    std::vector<Polyhedron> arrays;
    std::vector<const Polyhedron*> operands;
    std::vector<const Body*> sources{this};
    arrays.reserve(others.size());
    for (const Body* other : others) {
        if (!other) throw Error(eBodyPointerIsNull);
        if (other->isNull()) continue;
        operands.push_back(&arrays.emplace_back(other->toPolyhedron()));
        sources.push_back(other);
    }
    if (operands.empty()) return type == kIntersect ? Body() : *this;
    const std::optional<Polyhedron> result = combine(operation, toPolyhedron(), operands, gEpsAbs);
    if (result) return fromPolyhedron(*result, sources);
    const bool allValid =
        std::all_of(sources.begin(), sources.end(), [](const Body* b) { return b->isValid(); });
    throw Error(allValid ? eInternalError : eBadBodyGeometry);
}

Interval3d Body::interval(double enlargement) const {
    Interval3d box;
    for (const Vertex* vertex = m_vertexList; vertex; vertex = vertex->next()) box.add(vertex->point());
    box.enlarge(enlargement);
    return box;
}

namespace {

/// The end of the box farthest along the normal, and the one farthest against it.
std::pair<double, double> reach(const Body& body, const Plane& plane) {
    std::pair<double, double> ends{0.0, 0.0};
    for (const Vertex* vertex = body.vertexList(); vertex; vertex = vertex->next()) {
        const double distance = plane.distanceTo(vertex->point());
        ends.first = std::min(ends.first, distance);
        ends.second = std::max(ends.second, distance);
    }
    return ends;
}

/// A box with one side in the plane that holds all of the body behind it.
Body boxBehind(const Plane& plane, const Interval3d& box) {
    const AcGePoint3d middle = box.getMin() + (box.getMax() - box.getMin()) / 2;
    const double size = 4 * (box.getMax() - box.getMin()).length();
    const AcGeVector3d u = plane.normal().perpVector().normal() * size;
    const AcGeVector3d v = plane.normal().crossProduct(u);
    const AcGePoint3d centre = plane.project(middle);
    const std::array<Point3d, 4> corners{centre - u - v, centre + u - v, centre + u + v, centre - u + v};
    return Body::extrusion(corners.data(), nullptr, 4, plane.normal(), plane.normal() * -size, centre);
}

} // namespace

bool Body::planeIntersectsBody(const Plane& plane) const {
    const auto [behind, before] = reach(*this, plane);
    return behind < -gEpsAbs && before > gEpsAbs;
}

void Body::section(const Plane& plane, FailurePolicy policy) {
    if (plane.isNull()) throw Error(eBadPlane);
    if (isNull()) return;
    const auto [behind, before] = reach(*this, plane);
    if (!(before > gEpsAbs)) return;
    if (behind < -gEpsAbs)
        *this = boolOper(kIntersect, boxBehind(plane, interval()), policy);
    else
        init();
}

void Body::scale(double factor, const AcGePoint3d& fixedPoint) {
    if (!(factor > 0.0) || !std::isfinite(factor)) throw Error(eScaleFactorMustBePositive);
    transform(AcGeMatrix3d::scaling(factor, fixedPoint));
}

namespace {

/// Turns the loop round: each edge then begins where it ended.
void reverseLoop(Face& face) {
    std::vector<std::pair<Edge*, Vertex*>> edges;
    forEachEdge(face, [&](Edge& edge) { edges.emplace_back(&edge, edge.next()->vertex()); });
    for (auto [edge, vertex] : edges) {
        Edge* next = edge->next();
        edge->setNext(edge->prev());
        edge->setPrev(next);
        edge->setVertex(vertex);
    }
}

} // namespace

void Body::transform(const AcGeMatrix3d& matrix) {
    if (isNull()) return;
    const double determinant = matrix.det();
    if (!std::isfinite(determinant) || determinant == 0.0) throw Error(eBadTransform);
    Body moved(*this);
    for (Vertex* vertex = moved.m_vertexList; vertex; vertex = vertex->next()) {
        AcGePoint3d point = vertex->point();
        vertex->setPoint(point.transformBy(matrix));
    }
    std::unordered_map<const Surface*, Surface*> newOnes;
    for (std::shared_ptr<Surface>& surface : moved.m_storage->surfaces) {
        auto own = std::make_shared<Surface>(*surface);
        own->transform(matrix);
        newOnes[surface.get()] = own.get();
        surface = std::move(own);
    }
    forEachFace(moved, [&](Face& face) {
        if (face.surface()) face.setSurface(newOnes.at(face.surface()));
        if (determinant < 0.0) reverseLoop(face);
        face.deletePlane();
    });
    *this = std::move(moved);
}

namespace {

/// Sums over the fans of all loops, about a point near the body: there and back along a bridge cancels.
struct Sums {
    double volume6 = 0.0; ///< six times the volume
    AcGeVector3d moment;  ///< 24 times the first moment about the point
    double area = 0.0;
    Body::SecondMoments second120; ///< 120 times the second moments about the point

    /// A tetrahedron of that volume between the point and three others.
    void addSecond(double volume6Of, const AcGeVector3d& a, const AcGeVector3d& b, const AcGeVector3d& c) {
        const AcGeVector3d sum = a + b + c;
        const auto of = [&](unsigned int i, unsigned int j) {
            return volume6Of * (a[i] * a[j] + b[i] * b[j] + c[i] * c[j] + sum[i] * sum[j]);
        };
        second120.xx += of(0, 0);
        second120.yy += of(1, 1);
        second120.zz += of(2, 2);
        second120.xy += of(0, 1);
        second120.yz += of(1, 2);
        second120.zx += of(2, 0);
    }
};

Sums sumsOf(const Body& body, const AcGePoint3d& about) {
    Sums sums;
    forEachFace(body, [&](const Face& face) {
        AcGeVector3d area2;
        const AcGeVector3d first = face.edgeLoop() ? face.edgeLoop()->point() - about : AcGeVector3d();
        forEachEdge(face, [&](const Edge& edge) {
            const AcGeVector3d b = edge.point() - about, c = edge.next()->point() - about;
            const AcGeVector3d across = (b - first).crossProduct(c - first);
            const double volume = first.dotProduct(across);
            area2 += across;
            sums.volume6 += volume;
            sums.moment += (first + b + c) * volume;
            sums.addSecond(volume, first, b, c);
        });
        sums.area += area2.length() / 2;
    });
    return sums;
}

} // namespace

double Body::volume() const { return isNull() ? 0.0 : sumsOf(*this, m_vertexList->point()).volume6 / 6; }

double Body::surfaceArea() const { return isNull() ? 0.0 : sumsOf(*this, m_vertexList->point()).area; }

Point3d Body::centerOfGravity() const {
    if (isNull()) return {};
    const AcGePoint3d about = m_vertexList->point();
    const Sums sums = sumsOf(*this, about);
    if (sums.volume6 == 0.0) return {};
    return about + sums.moment / (4 * sums.volume6);
}

Body::SecondMoments Body::secondMoments() const {
    SecondMoments moments;
    if (isNull()) return moments;
    const AcGeVector3d about = m_vertexList->point().asVector();
    const Sums sums = sumsOf(*this, m_vertexList->point());
    const double volume = sums.volume6 / 6;
    const AcGeVector3d first = sums.moment / 24;
    const auto moved = [&](double second120, unsigned int i, unsigned int j) {
        return second120 / 120 + about[i] * first[j] + about[j] * first[i] + about[i] * about[j] * volume;
    };
    moments.xx = moved(sums.second120.xx, 0, 0);
    moments.yy = moved(sums.second120.yy, 1, 1);
    moments.zz = moved(sums.second120.zz, 2, 2);
    moments.xy = moved(sums.second120.xy, 0, 1);
    moments.yz = moved(sums.second120.yz, 1, 2);
    moments.zx = moved(sums.second120.zx, 2, 0);
    return moments;
}

} // namespace AModeler
