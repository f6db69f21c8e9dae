#include "contourboxchain.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace vexo {

BoxChain::Box BoxChain::emptyBox() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return {infinity, -infinity, infinity, -infinity};
}

BoxChain::BoxChain(std::vector<Box> boxes) {
    m_levels.push_back(std::move(boxes));
    gather();
}

BoxChain::BoxChain(const std::vector<Box>& boxes, std::vector<std::size_t> order)
    : m_order(std::move(order)) {
    std::vector<Box>& ordered = m_levels.emplace_back();
    ordered.reserve(boxes.size());
    for (const std::size_t i : m_order) ordered.push_back(boxes[i]);
    gather();
}

void BoxChain::gather() {
    while (m_levels.back().size() > 1) {
        const std::vector<Box>& below = m_levels.back();
        std::vector<Box> level;
        level.reserve((below.size() + kFanOut - 1) / kFanOut);
        for (std::size_t i = 0; i < below.size(); i += kFanOut) {
            Box box = below[i];
            for (std::size_t k = i + 1; k < std::min(i + kFanOut, below.size()); ++k) box.extend(below[k]);
            level.push_back(box);
        }
        m_levels.push_back(std::move(level));
    }
}

} // namespace vexo
