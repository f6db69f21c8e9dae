#pragma once

#include "gepnt3d.h"

#include <cstdint>
#include <vector>

namespace vexo {

/// Points with numbers, hashed by cells wider than the point test's allowance. A query visits at least every
/// added point that AcGePoint3d::isEqualTo could call equal, and few others; the caller puts the question
/// itself to each.
///
/// Points with a coordinate beyond 1e11, where the allowance outgrows any sensible cell, and all points under
/// a tolerance that is itself beyond it, stand in one list that every query visits.
class PointGrid {
public:
    /// For about `count` points with coordinates up to `largestCoordinate`, as ordinaryCoordinate gives it:
    /// the cells' size follows both. Points added later may not lie farther out, but for those beyond 1e11.
    PointGrid(double tolerance, double largestCoordinate, int count);
    /// The point's largest coordinate without its sign; 0 for one beyond 1e11 and for what is no number.
    static double ordinaryCoordinate(const AcGePoint3d& point);

    void add(const AcGePoint3d& point, int number);
    /// A query or addition at this point will follow in some steps: its cell is fetched meanwhile. Without it
    /// a large grid waits for memory most of its time.
    void announce(const AcGePoint3d& point) const;
    /// How many steps ahead to announce.
    static constexpr int kAhead = 12;

    /// Does `isWanted(number)` hold for a point near `point`. Every number may be asked more than once.
    template <typename Predicate>
    bool anyNear(const AcGePoint3d& point, Predicate&& isWanted) const {
        if (isFar(point)) {
            for (const Item& item : m_items)
                if (isWanted(item.number)) return true;
            return false;
        }
        for (const int number : m_far)
            if (isWanted(number)) return true;
        std::int64_t low[3];
        std::int64_t high[3];
        cellRange(point, low, high);
        for (std::int64_t x = low[0]; x <= high[0]; ++x)
            for (std::int64_t y = low[1]; y <= high[1]; ++y)
                for (std::int64_t z = low[2]; z <= high[2]; ++z)
                    for (int i = m_heads[bucketOf(x, y, z)]; i >= 0;
                         i = m_items[static_cast<std::size_t>(i)].next)
                        if (isWanted(m_items[static_cast<std::size_t>(i)].number)) return true;
        return false;
    }

private:
    struct Item {
        int number;
        int next;
    };
    bool isFar(const AcGePoint3d& point) const;
    void cellRange(const AcGePoint3d& point, std::int64_t low[3], std::int64_t high[3]) const;
    std::size_t bucketOf(std::int64_t x, std::int64_t y, std::int64_t z) const;

    double m_reach = 0.0;
    double m_cell = 0.0;
    bool m_unsorted = false;
    std::size_t m_mask = 0;
    std::vector<int> m_heads;
    std::vector<Item> m_items;
    std::vector<int> m_far;
};

} // namespace vexo
