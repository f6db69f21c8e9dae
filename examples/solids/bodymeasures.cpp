#include "bodymeasures.h"

#include "dbextents.h"
#include "vexoamodelertools.h"

#include <cmath>
#include <map>
#include <numbers>
#include <numeric>
#include <set>

using AModeler::Body;
using AModeler::Edge;
using AModeler::Face;

namespace {

/// Calls visit(edge) for all edges of the face but bridges.
template <class F>
void forEachBound(const Face& face, F&& visit) {
    Edge* edge = face.edgeLoop();
    for (int left = face.edgeCount(); left > 0; --left, edge = edge->next())
        if (!edge->isBridge()) visit(*edge);
}

/// Faces that hang together by partners.
class Shells {
public:
    explicit Shells(const Body& body) {
        for (const Face* face = body.faceList(); face; face = face->next()) {
            m_numbers[face] = m_parent.size();
            m_parent.push_back(m_parent.size());
        }
        m_count = static_cast<int>(m_parent.size());
        for (const Face* face = body.faceList(); face; face = face->next())
            forEachBound(*face, [&](const Edge& edge) {
                if (edge.partner()) join(m_numbers[face], m_numbers[edge.partner()->face()]);
            });
    }
    [[nodiscard]] int count() const { return m_count; }

private:
    std::size_t rootOf(std::size_t number) {
        while (m_parent[number] != number) number = m_parent[number] = m_parent[m_parent[number]];
        return number;
    }
    void join(std::size_t a, std::size_t b) {
        a = rootOf(a);
        b = rootOf(b);
        if (a == b) return;
        m_parent[a] = b;
        --m_count;
    }

    std::map<const Face*, std::size_t> m_numbers;
    std::vector<std::size_t> m_parent;
    int m_count = 0;
};

void addArea(BodyMeasures& measures, const Face& face) {
    const double up = face.plane().normal().z;
    double& sum = up > std::numbers::sqrt2 / 2    ? measures.above
                  : up < -std::numbers::sqrt2 / 2 ? measures.below
                                                  : measures.sides;
    sum += areaOf(face);
}

} // namespace

double areaOf(const Face& face) {
    // There and back along a bridge cancels; about a corner of the face, so that nothing is lost far out.
    AcGeVector3d area;
    if (!face.edgeLoop()) return 0.0;
    const AcGePoint3d origin = face.edgeLoop()->point();
    forEachBound(face, [&](const Edge& edge) {
        area += (edge.point() - origin).crossProduct(edge.next()->point() - origin);
    });
    return area.length() / 2;
}

std::vector<std::vector<AcGePoint3d>> loopsOf(const Face& face) {
    std::vector<std::vector<AcGePoint3d>> loops;
    std::set<const Edge*> seen;
    forEachBound(face, [&](Edge& first) {
        if (seen.count(&first)) return;
        std::vector<AcGePoint3d>& loop = loops.emplace_back();
        for (Edge* edge = &first; edge && seen.insert(edge).second;
             edge = VEXOAModelerTools::getNextSkipBridge(edge))
            loop.push_back(edge->point());
    });
    return loops;
}

BodyMeasures measuresOf(const Body& body) {
    BodyMeasures measures;
    measures.isValid = body.isValid(-1);
    measures.volume = body.volume();
    measures.centre = body.centerOfGravity();
    const AModeler::Interval3d box = body.interval();
    measures.low = box.getMin();
    measures.high = box.getMax();
    std::set<const AModeler::Vertex*> corners;
    for (const Face* face = body.faceList(); face; face = face->next()) {
        ++measures.faces;
        addArea(measures, *face);
        measures.loops += static_cast<int>(loopsOf(*face).size());
        forEachBound(*face, [&](const Edge& edge) {
            ++measures.edges;
            corners.insert(edge.vertex());
        });
    }
    measures.edges /= 2;
    measures.vertices = static_cast<int>(corners.size());
    measures.pieces = Shells(body).count();
    // V - E + F - (L - F) = 2 (S - G)
    const int euler = measures.vertices - measures.edges + 2 * measures.faces - measures.loops;
    measures.genus = measures.pieces - euler / 2;
    return measures;
}
