#include "spacetree.h"

#include <numeric>

namespace hostkit::modeler {

SpaceTree::SpaceTree(std::span<const Box> boxes)
    : m_numbers(boxes.size()) {
    std::iota(m_numbers.begin(), m_numbers.end(), 0u);
    if (boxes.empty()) return;
    m_nodes.reserve(boxes.size());
    build(boxes, 0, static_cast<std::uint32_t>(boxes.size()));
    m_boxes.reserve(boxes.size());
    for (const std::uint32_t number : m_numbers) m_boxes.push_back(boxes[number]);
}

void SpaceTree::build(std::span<const Box> boxes, std::uint32_t first, std::uint32_t last) {
    const std::size_t at = m_nodes.size();
    m_nodes.emplace_back();
    Box box;
    for (std::uint32_t i = first; i < last; ++i) box.add(boxes[m_numbers[i]]);
    m_nodes[at].box = box;
    if (last - first <= leafSize) {
        m_nodes[at].first = first;
        m_nodes[at].count = last - first;
        return;
    }
    const unsigned axis = (box.high - box.low).largestElement();
    const std::uint32_t middle = first + (last - first) / 2;
    const auto centre = [&](std::uint32_t n) { return boxes[n].low[axis] + boxes[n].high[axis]; };
    std::nth_element(m_numbers.begin() + first, m_numbers.begin() + middle, m_numbers.begin() + last,
                     [&](std::uint32_t a, std::uint32_t b) { return centre(a) < centre(b); });
    build(boxes, first, middle);
    m_nodes[at].first = static_cast<std::uint32_t>(m_nodes.size());
    build(boxes, middle, last);
}

bool SpaceTree::meetsRay(const Box& box, const AcGePoint3d& start, const AcGeVector3d& direction) {
    double from = 0;
    double to = Box::infinity;
    for (unsigned axis = 0; axis < 3; ++axis) {
        if (direction[axis] == 0) {
            if (start[axis] < box.low[axis] || start[axis] > box.high[axis]) return false;
            continue;
        }
        const double first = (box.low[axis] - start[axis]) / direction[axis];
        const double second = (box.high[axis] - start[axis]) / direction[axis];
        from = std::max(from, std::min(first, second));
        to = std::min(to, std::max(first, second));
    }
    return from <= to;
}

} // namespace hostkit::modeler
