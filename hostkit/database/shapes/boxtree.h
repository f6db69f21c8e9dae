// Spatial index: boxes in an order in which neighbours lie near each other; leaves out changes after
// building.
#pragma once

#include <cstddef>
#include <vector>

namespace hostkit {

/// A box along the axes; a side may be infinite.
struct SearchBox {
    double low[3];
    double high[3];

    /// Boxes that touch meet.
    bool meets(const SearchBox& other) const {
        return low[0] <= other.high[0] && other.low[0] <= high[0] && low[1] <= other.high[1] &&
               other.low[1] <= high[1] && low[2] <= other.high[2] && other.low[2] <= high[2];
    }
    void extend(const SearchBox& other);
};

/// Levels of boxes around eight boxes of the level below each, neighbours in the given order. Nothing is
/// sorted: the pieces of a curve come one behind the other, which keeps the boxes around them small.
class BoxTree {
public:
    explicit BoxTree(std::vector<SearchBox> boxes);

    const SearchBox& at(std::size_t index) const { return m_levels.front()[index]; }
    /// Calls visit(index) for every box that meets the query, in ascending order.
    template <typename Visit>
    void forEachMeeting(const SearchBox& query, const Visit& visit) const {
        if (!m_levels.front().empty()) descend(query, m_levels.size() - 1, 0, m_levels.back().size(), visit);
    }

private:
    static constexpr std::size_t kFanOut = 8;

    template <typename Visit>
    void descend(const SearchBox& query, std::size_t level, std::size_t from, std::size_t to,
                 const Visit& visit) const {
        for (std::size_t i = from; i < to; ++i) {
            if (!m_levels[level][i].meets(query)) continue;
            if (level == 0) {
                visit(i);
                continue;
            }
            const std::size_t below = m_levels[level - 1].size();
            const std::size_t end = (i + 1) * kFanOut;
            descend(query, level - 1, i * kFanOut, end < below ? end : below, visit);
        }
    }

    std::vector<std::vector<SearchBox>> m_levels; ///< the given boxes first
};

} // namespace hostkit
