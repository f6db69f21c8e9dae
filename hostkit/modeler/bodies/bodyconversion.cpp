#include "amerror.h"
#include "bodystorage.h"
#include "facelinks.h"
#include "loopbridges.h"
#include "planarpoints.h"
#include "polyhedron.h"

#include <unordered_map>

namespace AModeler {

using namespace hostkit::modeler;
using Index = Polyhedron::Index;

namespace {

/// Writes the loops of a body's faces without their bridges.
class Unbridging {
public:
    explicit Unbridging(const Body& body) {
        for (const Vertex* vertex = body.vertexList(); vertex; vertex = vertex->next()) {
            vertex->setMark(static_cast<Index>(m_out.points.size()));
            m_out.points.push_back(vertex->point());
        }
        m_seen.assign(m_out.points.size(), Polyhedron::none);
    }

    void add(const Face& face) {
        m_loops.clear();
        forEachEdge(face, [](Edge& edge) { edge.setMark(0); });
        forEachEdge(face, [&](Edge& edge) {
            if (!edge.isBridge() && edge.mark() == 0) walk(edge);
        });
        write(face);
    }

    [[nodiscard]] Polyhedron take() { return std::move(m_out); }

private:
    struct Loop {
        std::vector<Index> corners;
        double area = 0.0;
    };

    /// One way round over the bridges; where it comes to a point again, what lies between is a loop of its
    /// own.
    void walk(const Edge& first) {
        std::vector<Index> path;
        const Edge* edge = &first;
        do {
            edge->setMark(1);
            step(path, edge->vertex()->mark());
            edge = edge->next();
            while (edge->isBridge()) edge = edge->partner()->next();
        } while (edge != &first);
        finish(path, 0);
    }

    void step(std::vector<Index>& path, Index point) {
        if (m_seen[point] != Polyhedron::none) finish(path, m_seen[point]);
        m_seen[point] = static_cast<Index>(path.size());
        path.push_back(point);
    }

    void finish(std::vector<Index>& path, Index from) {
        Loop& loop = m_loops.emplace_back();
        loop.corners.assign(path.begin() + from, path.end());
        for (Index point : loop.corners) m_seen[point] = Polyhedron::none;
        path.resize(from);
    }

    void write(const Face& face) {
        const FaceView view(face.plane().normal());
        for (Loop& loop : m_loops) loop.area = areaOf(loop, view);
        std::stable_sort(m_loops.begin(), m_loops.end(),
                         [](const Loop& a, const Loop& b) { return a.area > b.area; });
        const auto holes =
            std::find_if(m_loops.begin(), m_loops.end(), [](const Loop& loop) { return !(loop.area > 0.0); });
        for (auto outer = m_loops.begin(); outer != holes; ++outer) {
            const bool onlyOne = holes == m_loops.begin() + 1;
            beginFace(face);
            writeLoop(*outer);
            for (auto hole = holes; hole != m_loops.end(); ++hole)
                if (onlyOne || surrounds(*outer, hole->corners, view)) writeLoop(*hole);
        }
    }

    [[nodiscard]] double areaOf(const Loop& loop, const FaceView& view) const {
        double area = 0.0;
        const AcGePoint2d origin = view(m_out.points[loop.corners.front()]);
        for (std::size_t i = 0; i < loop.corners.size(); ++i)
            area += turn(origin, at(loop, i, view), at(loop, i + 1, view));
        return area;
    }

    [[nodiscard]] AcGePoint2d at(const Loop& loop, std::size_t i, const FaceView& view) const {
        return view(m_out.points[loop.corners[i % loop.corners.size()]]);
    }

    /// Of loops that touch at points at most: the first corner of the hole that is none of the outer loop's
    /// decides.
    [[nodiscard]] bool surrounds(const Loop& outer, const std::vector<Index>& hole,
                                 const FaceView& view) const {
        for (Index corner : hole)
            if (std::find(outer.corners.begin(), outer.corners.end(), corner) == outer.corners.end())
                return holds(outer, view(m_out.points[corner]), view);
        return true;
    }

    [[nodiscard]] bool holds(const Loop& loop, const AcGePoint2d& p, const FaceView& view) const {
        bool inside = false;
        for (std::size_t i = 0; i < loop.corners.size(); ++i) {
            const AcGePoint2d a = at(loop, i, view), b = at(loop, i + 1, view);
            if ((a.y > p.y) != (b.y > p.y) && (turn(a, b, p) > 0.0) == (b.y > a.y)) inside = !inside;
        }
        return inside;
    }

    void beginFace(const Face& face) {
        Polyhedron::Face& out = m_out.faces.emplace_back();
        out.normal = face.plane().normal();
        out.distance = face.plane().distance();
        out.firstLoop = m_out.loopCount();
        out.surface = face.surface();
    }

    void writeLoop(const Loop& loop) {
        m_out.corners.insert(m_out.corners.end(), loop.corners.begin(), loop.corners.end());
        m_out.loopStarts.push_back(static_cast<Index>(m_out.corners.size()));
        ++m_out.faces.back().loopCount;
    }

    Polyhedron m_out;
    std::vector<Index> m_seen; ///< of each point, where it stands in the path
    std::vector<Loop> m_loops;
};

} // namespace

Polyhedron Body::toPolyhedron() const {
    Unbridging unbridging(*this);
    forEachFace(*this, [&](const Face& face) {
        if (!face.edgeLoop() || face.plane().isNull()) throw Error(eBadBodyGeometry);
        unbridging.add(face);
    });
    return unbridging.take();
}

namespace {

/// Makes the faces of a body from loops of numbered points.
class Building {
public:
    Building(const Polyhedron& from, PartPool<Vertex>& vertices, PartPool<Edge>& edges, PartPool<Face>& faces)
        : m_from(from)
        , m_edgePool(edges)
        , m_vertices(from.points.size(), nullptr)
        , m_edges(from.corners.size()) {
        faces.reserve(from.faces.size());
        edges.reserve(from.corners.size());
        makeVertices(vertices);
        for (const Polyhedron::Face& face : from.faces) makeFace(face, *faces.make());
        for (std::size_t i = 0; i < m_edges.size(); ++i) {
            if (!m_edges[i]) throw Error(eBadBodyGeometry); // a loop of no face
            m_edges[i]->setPartner(m_edges[from.partners[i]]);
        }
    }

    [[nodiscard]] Vertex* vertices() const { return m_firstVertex; }
    [[nodiscard]] Face* faces() const { return m_firstFace; }

private:
    void makeVertices(PartPool<Vertex>& pool) {
        for (Index corner : m_from.corners) {
            if (m_vertices[corner]) continue;
            Vertex* vertex = m_vertices[corner] = pool.make();
            vertex->setPoint(m_from.points[corner]);
            (m_lastVertex ? m_lastVertex->setNext(vertex) : void(m_firstVertex = vertex));
            m_lastVertex = vertex;
        }
    }

    void makeFace(const Polyhedron::Face& from, Face& face) {
        (m_lastFace ? m_lastFace->setNext(&face) : void(m_firstFace = &face));
        m_lastFace = &face;
        const Index begin = m_from.loopStarts[from.firstLoop];
        for (Index loop = from.firstLoop; loop < from.firstLoop + from.loopCount; ++loop)
            makeLoop(m_from.loopStarts[loop], m_from.loopStarts[loop + 1], face);
        face.setEdgeLoop(m_edges[begin]);
        if (from.loopCount > 1) bridge(from, face);
        static_cast<void>(face.plane());
    }

    void makeLoop(Index begin, Index end, Face& face) {
        if (end < begin + 3) throw Error(eBadBodyGeometry);
        for (Index i = begin; i < end; ++i) {
            m_edges[i] = m_edgePool.make();
            m_edges[i]->setVertex(m_vertices[m_from.corners[i]]);
            m_edges[i]->setFace(&face);
        }
        for (Index i = begin; i < end; ++i) linkEdges(*m_edges[i], *m_edges[i + 1 < end ? i + 1 : begin]);
    }

    void bridge(const Polyhedron::Face& from, Face& face) {
        const FaceView view(from.normal);
        const Index begin = m_from.loopStarts[from.firstLoop];
        const Index end = m_from.loopStarts[from.firstLoop + from.loopCount];
        std::vector<AcGePoint2d> corners;
        for (Index i = begin; i < end; ++i) corners.push_back(view(m_from.points[m_from.corners[i]]));
        std::vector<Index> starts;
        for (Index loop = from.firstLoop; loop <= from.firstLoop + from.loopCount; ++loop)
            starts.push_back(m_from.loopStarts[loop] - begin);
        const std::vector<LoopBridge> bridges = bridgesOf(corners, starts);
        if (bridges.size() + 1 != from.loopCount) throw Error(eBadBodyGeometry);
        joinLoops(std::span(m_edges).subspan(begin, end - begin), bridges, view, m_edgePool, face);
    }

    const Polyhedron& m_from;
    PartPool<Edge>& m_edgePool;
    std::vector<Vertex*> m_vertices;
    std::vector<Edge*> m_edges; ///< of each corner, the one that begins there
    Vertex *m_firstVertex = nullptr, *m_lastVertex = nullptr;
    Face *m_firstFace = nullptr, *m_lastFace = nullptr;
};

} // namespace

Body Body::fromPolyhedron(const Polyhedron& polyhedron, std::span<const Body* const> sources) {
    Body body;
    if (polyhedron.empty()) return body;
    if (polyhedron.partners.empty()) {
        const auto stands = [&](Index corner) { return corner < polyhedron.points.size(); };
        if (!std::all_of(polyhedron.corners.begin(), polyhedron.corners.end(), stands))
            throw Error(eBadBodyGeometry);
        Polyhedron paired = polyhedron;
        if (!findPartners(paired)) throw Error(eBadBodyGeometry);
        return fromPolyhedron(paired, sources);
    }
    BodyParts& storage = body.storage();
    const Building built(polyhedron, storage.vertices, storage.edges, storage.faces);
    body.m_vertexList = built.vertices();
    body.m_faceList = built.faces();

    std::unordered_map<const Surface*, std::shared_ptr<Surface>> known;
    for (const Body* source : sources)
        if (source->m_storage)
            for (const std::shared_ptr<Surface>& surface : source->m_storage->surfaces)
                known.emplace(surface.get(), surface);
    Face* face = body.m_faceList;
    for (const Polyhedron::Face& from : polyhedron.faces) {
        if (from.surface) {
            const auto found = known.find(from.surface);
            if (found == known.end()) throw Error(eBadInput);
            face->setSurface(const_cast<Surface*>(from.surface));
            if (found->second) storage.surfaces.push_back(std::move(found->second));
            found->second = nullptr;
        }
        face = face->next();
    }
    return body;
}

} // namespace AModeler
