#include "boxtree.h"

#include <algorithm>
#include <utility>

namespace hostkit {

void SearchBox::extend(const SearchBox& other) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        low[axis] = std::min(low[axis], other.low[axis]);
        high[axis] = std::max(high[axis], other.high[axis]);
    }
}

BoxTree::BoxTree(std::vector<SearchBox> boxes) {
    m_levels.push_back(std::move(boxes));
    while (m_levels.back().size() > kFanOut) {
        const std::vector<SearchBox>& below = m_levels.back();
        std::vector<SearchBox> above;
        above.reserve(below.size() / kFanOut + 1);
        for (std::size_t i = 0; i < below.size(); ++i) {
            if (i % kFanOut == 0)
                above.push_back(below[i]);
            else
                above.back().extend(below[i]);
        }
        m_levels.push_back(std::move(above));
    }
}

} // namespace hostkit
