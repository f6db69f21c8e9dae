#include "recordparts.h"

namespace hostkit {

RecordPart RecordParts::add(std::wstring_view name) {
    constexpr std::size_t most = 250 - firstClassPart;
    if (m_ends.size() == most) return nobodysPart;
    m_names += name;
    m_ends.push_back(m_names.size());
    return static_cast<RecordPart>(limit() - 1);
}

void RecordParts::removeLast() {
    m_ends.pop_back();
    m_names.resize(m_ends.empty() ? 0 : m_ends.back());
}

std::wstring_view RecordParts::nameOf(RecordPart part) const {
    if (part < firstClassPart || part >= limit()) return {};
    const std::size_t place = part - firstClassPart;
    const std::size_t begin = place == 0 ? 0 : m_ends[place - 1];
    return std::wstring_view(m_names).substr(begin, m_ends[place] - begin);
}

RecordPart RecordParts::counterpart(RecordPart part, const RecordParts& others) const {
    if (part < firstClassPart) return part;
    const std::wstring_view name = nameOf(part);
    if (part < others.limit() && part == firstClassPart && others.nameOf(part) == name) return part;
    int wanted = 0;
    for (RecordPart before = firstClassPart; before <= part; ++before) wanted += nameOf(before) == name;
    for (RecordPart other = firstClassPart; other < others.limit(); ++other)
        if (others.nameOf(other) == name && --wanted == 0) return other;
    return nobodysPart;
}

} // namespace hostkit
