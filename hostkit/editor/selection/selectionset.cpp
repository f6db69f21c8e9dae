#include "selectionset.h"

#include <algorithm>

namespace hostkit {

SelectionSet::SelectionSet(std::vector<AcDbObjectId> distinct, const SharedWay& way)
    : m_ids(std::move(distinct))
    , m_liveCount(m_ids.size()) {
    if (way) m_ways.assign(m_ids.size(), way);
}

void SelectionSet::closeGaps() const {
    if (!m_hasGaps && m_front == 0) return;
    std::size_t kept = 0;
    for (std::size_t i = m_front; i < m_ids.size(); ++i) {
        if (m_ids[i].isNull()) continue;
        if (!m_ways.empty()) m_ways[kept] = std::move(m_ways[i]);
        m_ids[kept++] = m_ids[i];
    }
    m_ids.resize(kept);
    if (!m_ways.empty()) m_ways.resize(kept);
    m_front = 0;
    m_hasGaps = false;
    m_knowsPlaces = false;
    m_places.clear();
}

void SelectionSet::learnPlaces() const {
    if (m_knowsPlaces) return;
    m_places.reserve(m_ids.size());
    for (std::size_t i = m_front; i < m_ids.size(); ++i)
        if (!m_ids[i].isNull()) m_places.emplace(m_ids[i], i);
    m_knowsPlaces = true;
}

AcDbObjectId SelectionSet::at(std::size_t index) const {
    if (m_hasGaps) closeGaps();
    return m_ids[m_front + index];
}

const SelectionWay* SelectionSet::wayAt(std::size_t index) const {
    if (m_hasGaps) closeGaps();
    return m_ways.empty() ? nullptr : m_ways[m_front + index].get();
}

bool SelectionSet::contains(AcDbObjectId id) const {
    learnPlaces();
    return m_places.contains(id);
}

bool SelectionSet::add(AcDbObjectId id, const SharedWay& way) {
    if (contains(id)) return false;
    addAgain(id, way);
    return true;
}

void SelectionSet::addAgain(AcDbObjectId id, const SharedWay& way) {
    if (way || !m_ways.empty()) m_ways.resize(m_ids.size());
    if (m_knowsPlaces && !m_places.emplace(id, m_ids.size()).second) m_hasRepeats = true;
    if (!m_knowsPlaces) m_hasRepeats = true; // it may be one: nobody has looked
    m_ids.push_back(id);
    if (way || !m_ways.empty()) m_ways.push_back(way);
    ++m_liveCount;
}

void SelectionSet::shrinkTo(std::size_t size) {
    closeGaps();
    for (std::size_t i = m_ids.size(); m_knowsPlaces && i-- > size;)
        if (const auto found = m_places.find(m_ids[i]); found->second == i) m_places.erase(found);
    m_ids.resize(std::min(size, m_ids.size()));
    if (!m_ways.empty()) m_ways.resize(m_ids.size());
    m_liveCount = m_ids.size();
}

bool SelectionSet::remove(AcDbObjectId id) {
    learnPlaces();
    const auto found = m_places.find(id);
    if (found == m_places.end()) return false;
    const std::size_t end = m_hasRepeats ? m_ids.size() : found->second + 1;
    for (std::size_t i = found->second; i < end; ++i) {
        if (m_ids[i] != id) continue;
        m_ids[i].setNull();
        --m_liveCount;
    }
    m_places.erase(found);
    while (m_front < m_ids.size() && m_ids[m_front].isNull()) ++m_front;
    m_hasGaps = m_ids.size() - m_front != m_liveCount;
    return true;
}

std::vector<AcDbObjectId> SelectionSet::ids() const {
    closeGaps();
    return m_ids;
}

} // namespace hostkit
