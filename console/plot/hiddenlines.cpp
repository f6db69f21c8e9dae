#include "hiddenlines.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double edgeOn = 1e-4;    // of a unit normal's part towards the viewer
constexpr double widening = 1e-10; // of triangles, in parts of the scene: no line slips through between two
constexpr double depth = 2e-6;     // that a line is behind a triangle, in parts of the scene
constexpr double shortestPart = 1e-7; // of what is seen between two hidden parts, in parts of the scene
constexpr int mostCellsInARow = 2000;

double turn(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& p) {
    return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

/// Cuts the part down to where a value that runs evenly from `begin` to `end` over the line is above 0.
/// False: nowhere.
bool keepPositive(double begin, double end, HiddenLines::Part& part) {
    if (begin <= 0.0 && end <= 0.0) return false;
    if (begin > 0.0 && end > 0.0) return true;
    const double zero = begin / (begin - end);
    if (begin <= 0.0)
        part.first = std::max(part.first, zero);
    else
        part.second = std::min(part.second, zero);
    return part.first < part.second;
}

} // namespace

void HiddenLines::add(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
    const AcGeVector3d normal = (b - a).crossProduct(c - a);
    const double length = normal.length();
    if (!(normal.z > edgeOn * length)) return;
    m_triangles.push_back({{a, b, c}, -normal.x / normal.z, -normal.y / normal.z});
    for (const AcGePoint3d& p : {a, b, c}) {
        m_low = {std::min(m_low.x, p.x), std::min(m_low.y, p.y), std::min(m_low.z, p.z)};
        m_high = {std::max(m_high.x, p.x), std::max(m_high.y, p.y), std::max(m_high.z, p.z)};
    }
}

HiddenLines::Range HiddenLines::cellsBetween(double low, double high, double origin) const {
    const auto cell = [&](double at) {
        return static_cast<int>(std::clamp((at - origin) / m_cell, 0.0, static_cast<double>(m_side - 1)));
    };
    const double margin = widening * m_size;
    return {cell(low - margin), cell(high + margin)};
}

/// Not where all corners of the cell lie beyond one side of the triangle.
bool HiddenLines::overlapsCell(const Triangle& triangle, int column, int row) const {
    const double left = m_low.x + column * m_cell, below = m_low.y + row * m_cell;
    for (std::size_t i = 0; i < 3; ++i) {
        const AcGePoint3d &a = triangle.corners[i], &b = triangle.corners[(i + 1) % 3];
        const double margin = 2 * widening * m_size * (std::abs(b.x - a.x) + std::abs(b.y - a.y));
        double most = -1e300;
        for (const auto& [x, y] : {std::pair(left, below), std::pair(left + m_cell, below),
                                   std::pair(left + m_cell, below + m_cell), std::pair(left, below + m_cell)})
            most = std::max(most, turn(a, b, {x, y, 0.0}));
        if (most < -margin) return false;
    }
    return true;
}

void HiddenLines::makeIndex() {
    m_asked.assign(m_triangles.size(), 0);
    if (m_triangles.empty()) return;
    m_size = std::max((m_high - m_low).length(), 1e-300);
    m_side =
        std::clamp(static_cast<int>(std::sqrt(static_cast<double>(m_triangles.size()))), 1, mostCellsInARow);
    m_cell = std::max(m_high.x - m_low.x, m_high.y - m_low.y) / m_side;
    m_cells.assign(static_cast<std::size_t>(m_side) * static_cast<std::size_t>(m_side), {});
    for (std::uint32_t number = 0; number < m_triangles.size(); ++number) {
        const Triangle& triangle = m_triangles[number];
        const auto [x1, x2] =
            std::minmax({triangle.corners[0].x, triangle.corners[1].x, triangle.corners[2].x});
        const auto [y1, y2] =
            std::minmax({triangle.corners[0].y, triangle.corners[1].y, triangle.corners[2].y});
        const Range columns = cellsBetween(x1, x2, m_low.x), rows = cellsBetween(y1, y2, m_low.y);
        for (int row = rows.first; row <= rows.last; ++row)
            for (int column = columns.first; column <= columns.last; ++column)
                if (overlapsCell(triangle, column, row)) m_cells[cellAt(column, row)].push_back(number);
    }
}

/// Calls visit(triangle) for those in the cells that the line meets, column by column; some more than once.
template <class F>
void HiddenLines::forEachAlong(const AcGePoint3d& from, const AcGePoint3d& to, F&& visit) const {
    const double left = std::min(from.x, to.x), right = std::max(from.x, to.x), margin = widening * m_size;
    const Range columns = cellsBetween(left, right, m_low.x);
    const bool isUpright =
        right - left <= 4 * margin; // it may stand between two columns, in both of them whole
    const double rise = isUpright ? 0.0 : (to.y - from.y) / (to.x - from.x);
    for (int column = columns.first; column <= columns.last; ++column) {
        double low = std::min(from.y, to.y), high = std::max(from.y, to.y);
        if (columns.first != columns.last && !isUpright) {
            // The first and the last column take what lies beyond the grid too.
            const double begin = column == columns.first ? left : m_low.x + column * m_cell - margin;
            const double end = column == columns.last ? right : m_low.x + (column + 1) * m_cell + margin;
            const double y1 = from.y + (begin - from.x) * rise, y2 = from.y + (end - from.x) * rise;
            low = std::max(low, std::min(y1, y2) - margin);
            high = std::min(high, std::max(y1, y2) + margin);
        }
        const Range rows = cellsBetween(low, high, m_low.y);
        for (int row = rows.first; row <= rows.last; ++row)
            for (const std::uint32_t number : m_cells[cellAt(column, row)]) visit(number);
    }
}

bool HiddenLines::hides(const Triangle& triangle, const AcGePoint3d& from, const AcGePoint3d& to,
                        Part& part) const {
    part = {0.0, 1.0};
    for (std::size_t i = 0; i < 3; ++i) {
        const AcGePoint3d &a = triangle.corners[i], &b = triangle.corners[(i + 1) % 3];
        const double margin = widening * m_size * std::hypot(b.x - a.x, b.y - a.y);
        if (!keepPositive(turn(a, b, from) + margin, turn(a, b, to) + margin, part)) return false;
    }
    const AcGePoint3d& corner = triangle.corners[0];
    const auto behind = [&](const AcGePoint3d& p) {
        return corner.z + triangle.slopeX * (p.x - corner.x) + triangle.slopeY * (p.y - corner.y) - p.z -
               depth * m_size;
    };
    return keepPositive(behind(from), behind(to), part);
}

std::vector<HiddenLines::Part> HiddenLines::seenParts(const AcGePoint3d& from, const AcGePoint3d& to) {
    if (m_cells.empty()) return {{0.0, 1.0}};
    ++m_line;
    std::vector<Part> hidden;
    forEachAlong(from, to, [&](std::uint32_t number) {
        Part part;
        if (std::exchange(m_asked[number], m_line) != m_line && hides(m_triangles[number], from, to, part))
            hidden.push_back(part);
    });
    std::sort(hidden.begin(), hidden.end());
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const double shortest = length > 0.0 ? shortestPart * m_size / length : 0.0;
    std::vector<Part> seen;
    double at = 0.0;
    for (const Part& part : hidden) {
        if (part.first - at > shortest) seen.emplace_back(at, part.first);
        at = std::max(at, part.second);
    }
    if (1.0 - at > shortest || hidden.empty()) seen.emplace_back(at, 1.0);
    return seen;
}
