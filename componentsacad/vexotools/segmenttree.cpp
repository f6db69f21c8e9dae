#include "segmenttree.h"

#include <utility>

namespace VEXOGeometryTools {

SegmentTree::SegmentTree(std::vector<PlaneBox> boxes) {
    m_levels.push_back(std::move(boxes));
    while (m_levels.back().size() > kFanOut) {
        const std::vector<PlaneBox>& below = m_levels.back();
        std::vector<PlaneBox> above;
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

} // namespace VEXOGeometryTools
