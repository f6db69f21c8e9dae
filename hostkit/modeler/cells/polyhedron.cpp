#include "polyhedron.h"

#include "lookups.h"

#include <algorithm>
#include <cmath>

namespace hostkit::modeler {

namespace {

// Calls edge(corner, from, to) for each corner, loop by loop.
template <class Edge>
void forCorners(const Polyhedron& body, Edge&& edge) {
    for (std::size_t loop = 0; loop + 1 < body.loopStarts.size(); ++loop) {
        const Index first = body.loopStarts[loop];
        const Index last = body.loopStarts[loop + 1];
        for (Index corner = first; corner < last; ++corner)
            edge(corner, body.corners[corner], body.corners[corner + 1 < last ? corner + 1 : first]);
    }
}

bool isFinite(const AcGeVector3d& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool fitsTogether(const Polyhedron& body) {
    constexpr double unitLength = 1e-6;
    Index loop = 0;
    for (const Polyhedron::Face& face : body.faces) {
        if (face.firstLoop != loop || face.loopCount == 0 || face.loopCount > body.loopCount() - loop)
            return false;
        if (!isFinite(face.normal) || !(std::abs(face.normal.lengthSqrd() - 1) < 2 * unitLength))
            return false;
        loop += face.loopCount;
    }
    if (loop != body.loopCount() || body.loopStarts.front() != 0 ||
        body.loopStarts.back() != body.corners.size())
        return false;
    for (std::size_t i = 0; i + 1 < body.loopStarts.size(); ++i)
        if (body.loopStarts[i + 1] < body.loopStarts[i] + 2 || body.loopStarts[i + 1] > body.corners.size())
            return false;
    for (const Index corner : body.corners)
        if (corner >= body.points.size()) return false;
    return std::all_of(body.points.begin(), body.points.end(),
                       [](const AcGePoint3d& p) { return isFinite(p.asVector()); });
}

bool partnersHold(const Polyhedron& body) {
    if (body.partners.size() != body.corners.size()) return false;
    std::vector<Index> nexts(body.corners.size());
    forCorners(body, [&](Index corner, Index, Index to) { nexts[corner] = to; });
    for (Index corner = 0; corner < nexts.size(); ++corner) {
        const Index partner = body.partners[corner];
        if (partner >= nexts.size() || body.partners[partner] != corner) return false;
        if (body.corners[partner] != nexts[corner] || nexts[partner] != body.corners[corner]) return false;
    }
    return true;
}

/// The corners at each edge between two points, chained.
class EdgeTable {
public:
    explicit EdgeTable(const Polyhedron& body)
        : m_body(body)
        , m_numbers(body.corners.size() / 2)
        , m_befores(body.corners.size(), none) {
        m_faces.reserve(body.corners.size());
        for (Index f = 0; f < body.faces.size(); ++f) {
            const Index loops = body.faces[f].firstLoop + body.faces[f].loopCount;
            m_faces.resize(body.loopStarts[loops], f);
        }
        m_lasts.reserve(body.corners.size() / 2);
        forCorners(body, [this](Index corner, Index from, Index to) {
            Index& number = m_numbers.at(std::min(from, to), std::max(from, to));
            if (number == none) {
                number = static_cast<Index>(m_lasts.size());
                m_lasts.push_back(none);
            }
            m_befores[corner] = m_lasts[number];
            m_lasts[number] = corner;
        });
    }

    bool pairAll(std::vector<Index>& partners) {
        partners.assign(m_body.corners.size(), none);
        for (const Index last : m_lasts) {
            m_sheets.clear();
            for (Index corner = last; corner != none; corner = m_befores[corner])
                m_sheets.push_back({0, corner});
            if (m_sheets.size() % 2 != 0) return false;
            if (m_sheets.size() > 2) sortAbout();
            for (std::size_t i = 0; i < m_sheets.size(); ++i) {
                // Material lies clockwise of an edge that runs along the axis: its partner comes before it.
                const Index second = m_sheets[(i + 1) % m_sheets.size()].corner;
                const Index first = m_sheets[i].corner;
                if (isAlong(first) == isAlong(second)) return false;
                if (!isAlong(second)) continue;
                partners[first] = second;
                partners[second] = first;
            }
        }
        return true;
    }

private:
    struct Sheet {
        double angle;
        Index corner;
    };

    Index from(Index corner) const { return m_body.corners[corner]; }
    // The other end of an edge stands at the corner that follows; of the first sheet's edge it is enough to
    // know the lesser end.
    bool isAlong(Index corner) const { return from(corner) == from(m_sheets[0].corner); }

    Index to(Index corner) const {
        const Polyhedron::Face& face = m_body.faces[m_faces[corner]];
        const auto first = m_body.loopStarts.begin() + face.firstLoop;
        const auto loop = std::upper_bound(first, first + face.loopCount, corner) - 1;
        return m_body.corners[corner + 1 < loop[1] ? corner + 1 : loop[0]];
    }

    void sortAbout() {
        const Index head = m_sheets[0].corner;
        const AcGeVector3d run = m_body.points[to(head)] - m_body.points[from(head)];
        const AcGeVector3d axis = run / run.length();
        const AcGeVector3d zero = m_body.faces[m_faces[head]].normal.crossProduct(axis);
        const AcGeVector3d quarter = axis.crossProduct(zero);
        for (Sheet& sheet : m_sheets) {
            const AcGeVector3d& normal = m_body.faces[m_faces[sheet.corner]].normal;
            const AcGeVector3d into = normal.crossProduct(isAlong(sheet.corner) ? axis : -axis);
            sheet.angle = std::atan2(into.dotProduct(quarter), into.dotProduct(zero));
        }
        const Index first = head;
        std::sort(m_sheets.begin(), m_sheets.end(),
                  [](const Sheet& a, const Sheet& b) { return a.angle < b.angle; });
        // The sheet that the directions were taken from stays in front.
        const auto at =
            std::find_if(m_sheets.begin(), m_sheets.end(), [&](const Sheet& s) { return s.corner == first; });
        std::rotate(m_sheets.begin(), at, m_sheets.end());
    }

    const Polyhedron& m_body;
    PairTable m_numbers;
    std::vector<Index> m_befores;
    std::vector<Index> m_lasts;
    std::vector<Index> m_faces; ///< of each corner
    std::vector<Sheet> m_sheets;
};

} // namespace

bool isClosed(const Polyhedron& body) {
    if (!fitsTogether(body)) return false;
    if (partnersHold(body)) return true;
    PairTable numbers(body.corners.size() / 2);
    std::vector<int> sums;
    forCorners(body, [&](Index, Index from, Index to) {
        Index& number = numbers.at(std::min(from, to), std::max(from, to));
        if (number == none) {
            number = static_cast<Index>(sums.size());
            sums.push_back(0);
        }
        sums[number] += from < to ? 1 : -1;
    });
    return std::all_of(sums.begin(), sums.end(), [](int sum) { return sum == 0; });
}

bool findPartners(Polyhedron& body) {
    std::vector<Index> partners;
    if (!EdgeTable(body).pairAll(partners)) return false;
    body.partners = std::move(partners);
    return true;
}

double volume(const Polyhedron& body) {
    if (body.empty()) return 0;
    const AcGePoint3d origin = body.points[body.corners[0]];
    double sum = 0;
    for (const Polyhedron::Face& face : body.faces) {
        AcGeVector3d area;
        for (Index loop = face.firstLoop; loop < face.firstLoop + face.loopCount; ++loop) {
            AcGeVector3d from = body.points[body.corners[body.loopStarts[loop + 1] - 1]] - origin;
            for (Index i = body.loopStarts[loop]; i < body.loopStarts[loop + 1]; ++i) {
                const AcGeVector3d to = body.points[body.corners[i]] - origin;
                area += from.crossProduct(to);
                from = to;
            }
        }
        sum += area.dotProduct(body.points[body.corners[body.loopStarts[face.firstLoop]]] - origin);
    }
    return sum / 6;
}

} // namespace hostkit::modeler
