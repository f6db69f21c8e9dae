#include "contourpointgrid.h"

#include <bit>

namespace vexo {

namespace {

constexpr double kFarCoordinate = 1e11;
/// Covers the rounding of the query's own bounds, and a query just above a power of two, whose allowance is
/// twice as wide.
constexpr double kReachPerAllowance = 4.0;
constexpr double kCellPerReach = 32.0;
constexpr double kSmallestReach = 1e-290;

/// Cells are counted from here: coordinates are round numbers more often than not, and would else stand on
/// the border of two cells.
constexpr double kCellShift = 0.37;

std::int64_t cellOf(double coordinate, double cell) {
    return static_cast<std::int64_t>(std::floor(coordinate / cell + kCellShift));
}

} // namespace

PointGrid::PointGrid(double tolerance, double largestCoordinate, int count) {
    const double own = std::isnan(tolerance) ? 0.0 : std::abs(tolerance);
    const double coarse = AcGe::kPointUlps * AcGe::ulpOf(largestCoordinate);
    m_unsorted = own > kFarCoordinate;
    m_reach = std::max(kReachPerAllowance * std::max(own, coarse), kSmallestReach);
    m_cell = kCellPerReach * m_reach;
    m_mask = std::bit_ceil(static_cast<std::size_t>(count) * 2 + 16) - 1;
    m_heads.assign(m_mask + 1, -1);
    m_items.reserve(static_cast<std::size_t>(count));
}

double PointGrid::ordinaryCoordinate(const AcGePoint3d& point) {
    const double coordinate = point.largestCoordinate();
    return coordinate <= kFarCoordinate ? coordinate : 0.0;
}

bool PointGrid::isFar(const AcGePoint3d& point) const {
    return m_unsorted || !(std::abs(point.x) <= kFarCoordinate && std::abs(point.y) <= kFarCoordinate &&
                           std::abs(point.z) <= kFarCoordinate);
}

void PointGrid::add(const AcGePoint3d& point, int number) {
    if (isFar(point)) {
        m_far.push_back(number);
        m_items.push_back({number, -1});
        return;
    }
    const std::size_t bucket =
        bucketOf(cellOf(point.x, m_cell), cellOf(point.y, m_cell), cellOf(point.z, m_cell));
    m_items.push_back({number, m_heads[bucket]});
    m_heads[bucket] = static_cast<int>(m_items.size()) - 1;
}

void PointGrid::announce(const AcGePoint3d& point) const {
    if (isFar(point)) return;
    __builtin_prefetch(
        &m_heads[bucketOf(cellOf(point.x, m_cell), cellOf(point.y, m_cell), cellOf(point.z, m_cell))]);
}

void PointGrid::cellRange(const AcGePoint3d& point, std::int64_t low[3], std::int64_t high[3]) const {
    for (unsigned int axis = 0; axis < 3; ++axis) {
        low[axis] = cellOf(point[axis] - m_reach, m_cell);
        high[axis] = cellOf(point[axis] + m_reach, m_cell);
    }
}

std::size_t PointGrid::bucketOf(std::int64_t x, std::int64_t y, std::int64_t z) const {
    std::uint64_t hash = static_cast<std::uint64_t>(x) * 0x9e3779b97f4a7c15ULL;
    hash = (hash ^ (hash >> 29) ^ static_cast<std::uint64_t>(y)) * 0xbf58476d1ce4e5b9ULL;
    hash = (hash ^ (hash >> 32) ^ static_cast<std::uint64_t>(z)) * 0x94d049bb133111ebULL;
    return static_cast<std::size_t>(hash ^ (hash >> 31)) & m_mask;
}

} // namespace vexo
