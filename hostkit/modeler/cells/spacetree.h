// Boxes in space, and a tree that finds those that meet a box or a ray.
#pragma once

#include "gepnt3d.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace hostkit::modeler {

struct Box {
    static constexpr double infinity = std::numeric_limits<double>::infinity();

    AcGePoint3d low{infinity, infinity, infinity};
    AcGePoint3d high{-infinity, -infinity, -infinity};

    void add(const AcGePoint3d& p) {
        low.set(std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z));
        high.set(std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z));
    }
    void add(const Box& box) {
        add(box.low);
        add(box.high);
    }
    void inflate(double by) {
        low.set(low.x - by, low.y - by, low.z - by);
        high.set(high.x + by, high.y + by, high.z + by);
    }
    bool meets(const Box& o) const {
        return low.x <= o.high.x && o.low.x <= high.x && low.y <= o.high.y && o.low.y <= high.y &&
               low.z <= o.high.z && o.low.z <= high.z;
    }
    bool empty() const { return !(low.x <= high.x); }
    double diagonalSquared() const { return empty() ? 0 : (high - low).lengthSqrd(); }
};

/// A static tree over boxes, split at the median of the widest axis. Building takes n log n.
class SpaceTree {
public:
    explicit SpaceTree(std::span<const Box> boxes);

    /// Calls found(number) for each box that meets `box`.
    template <class Found>
    void query(const Box& box, Found&& found) const {
        walk([&](const Box& b) { return b.meets(box); }, found);
    }
    /// Calls found(number) for each box that the ray from `start` meets.
    template <class Found>
    void queryRay(const AcGePoint3d& start, const AcGeVector3d& direction, Found&& found) const {
        walk([&](const Box& b) { return meetsRay(b, start, direction); }, found);
    }

private:
    static constexpr std::uint32_t leafSize = 4;

    struct Node {
        Box box;
        std::uint32_t first =
            0; ///< of a leaf: where its numbers begin; else the second child, the first follows the node
        std::uint32_t count = 0; ///< 0: no leaf
    };

    void build(std::span<const Box> boxes, std::uint32_t first, std::uint32_t last);
    static bool meetsRay(const Box& box, const AcGePoint3d& start, const AcGeVector3d& direction);

    template <class Meets, class Found>
    void walk(Meets&& meets, Found&& found) const {
        if (m_nodes.empty()) return;
        std::array<std::uint32_t, 64> stack;
        std::size_t depth = 0;
        stack[depth++] = 0;
        while (depth > 0) {
            const std::uint32_t at = stack[--depth];
            const Node& node = m_nodes[at];
            if (!meets(node.box)) continue;
            for (std::uint32_t i = 0; i < node.count; ++i)
                if (meets(m_boxes[node.first + i])) found(m_numbers[node.first + i]);
            if (node.count > 0) continue;
            stack[depth++] = node.first;
            stack[depth++] = at + 1;
        }
    }

    std::vector<Node> m_nodes;
    std::vector<std::uint32_t> m_numbers;
    std::vector<Box> m_boxes; ///< in the order of m_numbers
};

} // namespace hostkit::modeler
