#pragma once

#include "acarray.h"
#include "dbid.h"

#include <algorithm>
#include <vector>

class AcDbBlockReference;

namespace vexo {

/// Ids by their places in memory. Those that are asked for in about the order in which the drawing made them
/// are each found near the last one.
class SortedIds {
public:
    explicit SortedIds(const AcDbObjectIdArray& ids)
        : m_ids(ids.begin(), ids.end()) {
        if (!std::is_sorted(m_ids.begin(), m_ids.end())) std::sort(m_ids.begin(), m_ids.end());
    }
    bool has(AcDbObjectId id) {
        std::size_t low = m_place > 0 && m_ids[m_place - 1] < id ? m_place : 0;
        std::size_t step = 1;
        for (; low + step <= m_ids.size() && m_ids[low + step - 1] < id; step *= 2) low += step;
        const auto first = m_ids.begin() + static_cast<std::ptrdiff_t>(low);
        const auto end = m_ids.begin() + static_cast<std::ptrdiff_t>(std::min(low + step, m_ids.size()));
        const auto found = std::lower_bound(first, end, id);
        m_place = static_cast<std::size_t>(found - m_ids.begin());
        return found != m_ids.end() && *found == id;
    }

private:
    std::vector<AcDbObjectId> m_ids;
    std::size_t m_place = 0; ///< of the first that is not before the last one asked for
};

/// The entities of the reference's block; emptied first.
void getBlockContents(const AcDbBlockReference& reference, AcDbObjectIdArray& ids);

} // namespace vexo
