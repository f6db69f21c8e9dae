#include "patchmesh.h"

#include <algorithm>
#include <cmath>

namespace hostkit::modeler {

namespace {

double areaOf(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Below this (in squared grid steps) three points count as one line.
constexpr double kFlat = 1e-12;

bool isSame(const AcGePoint2d& a, const AcGePoint2d& b) { return a.x == b.x && a.y == b.y; }

// d lies within the circle through a, b, c by more than rounding.
bool isInCircle(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c, const AcGePoint2d& d) {
    const double ax = a.x - d.x, ay = a.y - d.y, bx = b.x - d.x, by = b.y - d.y, cx = c.x - d.x,
                 cy = c.y - d.y;
    const double az = ax * ax + ay * ay, bz = bx * bx + by * by, cz = cx * cx + cy * cy;
    const double value = ax * (by * cz - bz * cy) - ay * (bx * cz - bz * cx) + az * (bx * cy - by * cx);
    constexpr double rounding = 1e-10;
    return value > rounding * (az + bz + cz) * (std::abs(bx * cy - by * cx) + std::abs(ax * by - ay * bx));
}

} // namespace

double PatchMesh::area(Index a, Index b, Index c) const {
    return areaOf(m_points[a], m_points[b], m_points[c]);
}

bool PatchMesh::build(std::vector<AcGePoint2d> points, std::vector<std::vector<Index>> loops) {
    m_points = std::move(points);
    m_apexes.clear();
    constexpr std::size_t mostCorners = 4096; // the work grows with their square
    m_bounds.clear();
    for (const std::vector<Index>& loop : loops)
        for (std::size_t place = 0; place < loop.size(); ++place)
            m_bounds.emplace_back(loop[place], loop[(place + 1) % loop.size()]);
    if (loops.empty() || m_points.size() > mostCorners || !joinHoles(loops) ||
        !clipEars(std::move(loops.front())))
        return false;
    std::vector<Edge> all;
    all.reserve(m_apexes.size());
    for (const auto& [key, apex] : m_apexes) all.push_back(key);
    std::sort(all.begin(), all.end()); // the same triangles in every run
    legalize(std::move(all));
    return true;
}

bool PatchMesh::crosses(Index a, Index b, Index c, Index d) const {
    const auto sign = [](double value) { return value > kFlat ? 1 : value < -kFlat ? -1 : 0; };
    const int c1 = sign(area(a, b, c)), d1 = sign(area(a, b, d)), a1 = sign(area(c, d, a)),
              b1 = sign(area(c, d, b));
    return c1 * d1 <= 0 && a1 * b1 <= 0 && (c1 != 0 || d1 != 0);
}

bool PatchMesh::isFree(Index from, Index to, const std::vector<std::vector<Index>>& loops) const {
    for (const std::vector<Index>& loop : loops)
        for (std::size_t place = 0; place < loop.size(); ++place) {
            const Index a = loop[place];
            const Index b = loop[(place + 1) % loop.size()];
            const auto touches = [&](Index i) {
                return isSame(m_points[i], m_points[from]) || isSame(m_points[i], m_points[to]);
            };
            if (!touches(a) && !touches(b) && crosses(from, to, a, b)) return false;
        }
    return true;
}

// The nearest pair of corners that see each other joins a hole to the loop around; only so many pairs are
// tried.
bool PatchMesh::joinHoles(std::vector<std::vector<Index>>& loops) {
    struct Pair {
        double distance;
        std::size_t from, to;
        bool operator<(const Pair& other) const { return distance < other.distance; }
    };
    std::vector<Pair> pairs;
    while (loops.size() > 1) {
        std::vector<Index>& outer = loops.front();
        std::vector<Index>& hole = loops.back();
        pairs.clear();
        for (std::size_t i = 0; i < outer.size(); ++i)
            for (std::size_t j = 0; j < hole.size(); ++j)
                pairs.push_back({(m_points[outer[i]] - m_points[hole[j]]).lengthSqrd(), i, j});
        constexpr std::size_t mostTries = 200;
        const auto tried = pairs.begin() + static_cast<std::ptrdiff_t>(std::min(mostTries, pairs.size()));
        std::partial_sort(pairs.begin(), tried, pairs.end());
        const auto best = std::find_if(pairs.begin(), tried, [&](const Pair& pair) {
            return isFree(outer[pair.from], hole[pair.to], loops);
        });
        if (best == tried) return false;
        std::rotate(hole.begin(), hole.begin() + static_cast<std::ptrdiff_t>(best->to), hole.end());
        hole.push_back(hole.front());
        hole.push_back(outer[best->from]);
        outer.insert(outer.begin() + static_cast<std::ptrdiff_t>(best->from) + 1, hole.begin(), hole.end());
        loops.pop_back();
    }
    return true;
}

bool PatchMesh::isEar(const std::vector<Index>& loop, std::size_t place) const {
    const std::size_t count = loop.size();
    const Index a = loop[(place + count - 1) % count], b = loop[place], c = loop[(place + 1) % count];
    if (!(area(a, b, c) > kFlat)) return false;
    for (const Index other : loop) {
        const AcGePoint2d& p = m_points[other];
        if (isSame(p, m_points[a]) || isSame(p, m_points[b]) || isSame(p, m_points[c])) continue;
        if (area(a, b, other) >= -kFlat && area(b, c, other) >= -kFlat && area(c, a, other) >= -kFlat)
            return false;
    }
    return true;
}

bool PatchMesh::clipEars(std::vector<Index> loop) {
    std::size_t place = 0;
    for (std::size_t tries = 0; loop.size() > 3; ++tries) {
        if (tries > loop.size()) return false;
        place %= loop.size();
        if (!isEar(loop, place)) {
            ++place;
            continue;
        }
        const std::size_t count = loop.size();
        add(loop[(place + count - 1) % count], loop[place], loop[(place + 1) % count]);
        loop.erase(loop.begin() + static_cast<std::ptrdiff_t>(place));
        ++place; // not a fan about one corner
        tries = 0;
    }
    if (loop.size() < 3 || !(area(loop[0], loop[1], loop[2]) > kFlat)) return false;
    add(loop[0], loop[1], loop[2]);
    return true;
}

void PatchMesh::add(Index a, Index b, Index c) {
    m_apexes[edge(a, b)] = c;
    m_apexes[edge(b, c)] = a;
    m_apexes[edge(c, a)] = b;
}

void PatchMesh::remove(Index a, Index b, Index c) {
    m_apexes.erase(edge(a, b));
    m_apexes.erase(edge(b, c));
    m_apexes.erase(edge(c, a));
}

PatchMesh::Index PatchMesh::apexOf(Index a, Index b) const {
    const auto found = m_apexes.find(edge(a, b));
    return found == m_apexes.end() ? none : found->second;
}

void PatchMesh::legalize(std::vector<Edge> pending) {
    for (std::size_t flips = m_points.size() * m_points.size() + 64; !pending.empty() && flips > 0;) {
        const Edge next = pending.back();
        pending.pop_back();
        const auto a = static_cast<Index>(next >> 32), b = static_cast<Index>(next);
        const Index c = apexOf(a, b), d = apexOf(b, a);
        if (c == none || d == none || !isInCircle(m_points[a], m_points[b], m_points[c], m_points[d]))
            continue;
        if (!(area(c, a, d) > kFlat) || !(area(d, b, c) > kFlat)) continue;
        remove(a, b, c);
        remove(b, a, d);
        add(c, a, d);
        add(d, b, c);
        --flips;
        for (const Edge side : {edge(c, a), edge(a, d), edge(d, b), edge(b, c)}) pending.push_back(side);
    }
}

bool PatchMesh::isInside(const AcGePoint2d& point) const {
    bool isIn = false;
    for (const auto& [i, j] : m_bounds) {
        const AcGePoint2d &a = m_points[i], &b = m_points[j];
        if ((a.y > point.y) != (b.y > point.y) && point.x < a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x))
            isIn = !isIn;
    }
    return isIn;
}

// Walks over the edges towards the point; looks at all triangles where the way leaves a region that is not
// convex.
bool PatchMesh::locate(const AcGePoint2d& point, Triangle& found) const {
    if (m_apexes.empty()) return false;
    const auto holds = [&](Index a, Index b, Index c) {
        return areaOf(m_points[a], m_points[b], point) >= 0.0 &&
               areaOf(m_points[b], m_points[c], point) >= 0.0 &&
               areaOf(m_points[c], m_points[a], point) >= 0.0;
    };
    const auto first = m_apexes.contains(m_last) ? m_apexes.find(m_last) : m_apexes.begin();
    auto a = static_cast<Index>(first->first >> 32), b = static_cast<Index>(first->first);
    for (std::size_t steps = m_apexes.size(); steps > 0; --steps) {
        const Index c = apexOf(a, b);
        if (c == none) break;
        found = {a, b, c};
        if (holds(a, b, c)) return true;
        if (areaOf(m_points[a], m_points[b], point) < 0.0)
            std::swap(a, b);
        else if (areaOf(m_points[b], m_points[c], point) < 0.0)
            a = c; // the neighbour's edge c, b
        else
            b = c;
    }
    for (const auto& [key, c] : m_apexes) {
        found = {static_cast<Index>(key >> 32), static_cast<Index>(key), c};
        if (holds(found[0], found[1], c)) return true;
    }
    return false;
}

PatchMesh::Index PatchMesh::insert(const AcGePoint2d& point, double margin) {
    Triangle at;
    if (!isInside(point) || !locate(point, at)) return none;
    int edgeBelow = -1; // the side that the point lies on
    for (int side = 0; side < 3; ++side) {
        const Index a = at[static_cast<std::size_t>(side)], b = at[static_cast<std::size_t>((side + 1) % 3)];
        const double length = (m_points[b] - m_points[a]).length();
        const double distance = areaOf(m_points[a], m_points[b], point) / length;
        const bool isBound = apexOf(b, a) == none;
        if ((isBound && distance < margin) || (m_points[a] - point).lengthSqrd() < margin * margin)
            return none;
        constexpr double onEdge = 1e-9;
        if (distance < onEdge) edgeBelow = side;
    }
    const auto number = static_cast<Index>(m_points.size());
    m_points.push_back(point);
    if (edgeBelow >= 0) std::rotate(at.begin(), at.begin() + edgeBelow, at.end());
    const auto& [a, b, c] = at;
    const Index d = edgeBelow >= 0 ? apexOf(b, a) : none;
    remove(a, b, c);
    if (d != none) remove(b, a, d);
    add(b, c, number);
    add(c, a, number);
    m_last = edge(b, c);
    if (d == none) {
        add(a, b, number);
        legalize({edge(a, b), edge(b, c), edge(c, a)});
    } else {
        add(a, d, number);
        add(d, b, number);
        legalize({edge(b, c), edge(c, a), edge(a, d), edge(d, b)});
    }
    return number;
}

std::vector<PatchMesh::Triangle> PatchMesh::triangles() const {
    std::vector<Triangle> result;
    for (const auto& [key, c] : m_apexes) {
        const auto a = static_cast<Index>(key >> 32), b = static_cast<Index>(key);
        if (a < b && a < c) result.push_back({a, b, c});
    }
    std::sort(result.begin(), result.end());
    return result;
}

} // namespace hostkit::modeler
