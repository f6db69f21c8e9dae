#include "drawingstructure.h"

#include <algorithm>

namespace hostkit {

namespace {

class StructureMapper {
public:
    explicit StructureMapper(std::string_view bytes)
        : m_scanner(bytes, startOfGroups(bytes)) {}

    DrawingStructure run() {
        RawGroup group;
        while (m_scanner.next(group) == ScanResult::kGroup) take(group);
        return std::move(m_structure);
    }

private:
    void take(const RawGroup& group) {
        const std::size_t begin = m_scanner.offsetOf(group.start);
        // What closes ends with its own group; a handle or an owner that follows belongs to it.
        if (m_open && (group.code == 0 || group.code == 9)) closeAt(begin);
        if (m_awaitsName && group.code == 2) {
            m_awaitsName->back().name = withoutBlanks(group.value);
            m_inHeader = m_awaitsName == &m_structure.sections && m_awaitsName->back().name == "HEADER";
            m_awaitsName = nullptr;
        }
        if (group.code == 0)
            takeRecord(withoutBlanks(group.value), begin);
        else if (group.code == 9 && m_inHeader)
            takeVariable(group, begin);
    }

    void takeRecord(std::string_view name, std::size_t begin) {
        endVariable(begin);
        m_awaitsName = nullptr;
        if (name == "TABLE" || name == "ENDSEC") endTable(begin);
        if (name == "SECTION")
            open(m_structure.sections, begin);
        else if (name == "TABLE")
            open(m_structure.tables, begin);
        else if (name == "BLOCK")
            m_structure.blocks.push_back({{}, begin, begin, begin});
        else if (name == "ENDSEC")
            close(m_structure.sections, begin);
        else if (name == "ENDTAB")
            close(m_structure.tables, begin);
        else if (name == "ENDBLK")
            close(m_structure.blocks, begin);
        else if (name == "EOF")
            m_structure.endMark = begin;
        if (name == "ENDSEC") m_inHeader = false;
    }

    // One without an end mark ends with its section at the latest: what comes into it must not stand in
    // another.
    void endTable(std::size_t begin) {
        if (m_structure.tables.empty()) return;
        NamedSpan& last = m_structure.tables.back();
        if (last.end == last.begin && m_open != &m_structure.tables) last.closing = last.end = begin;
    }

    void takeVariable(const RawGroup& group, std::size_t begin) {
        endVariable(begin);
        m_structure.headerVariables.push_back({std::string(withoutBlanks(group.value)), begin, begin, begin});
        m_inVariable = true;
    }

    void endVariable(std::size_t end) {
        if (!m_inVariable) return;
        m_structure.headerVariables.back().closing = m_structure.headerVariables.back().end = end;
        m_inVariable = false;
    }

    void open(std::vector<NamedSpan>& spans, std::size_t begin) {
        spans.push_back({{}, begin, begin, begin});
        m_awaitsName = &spans;
    }

    void close(std::vector<NamedSpan>& spans, std::size_t begin) {
        if (spans.empty() || spans.back().end != spans.back().begin) return;
        spans.back().closing = begin;
        m_open = &spans;
    }

    void closeAt(std::size_t end) {
        m_open->back().end = end;
        m_open = nullptr;
    }

    GroupScanner m_scanner;
    DrawingStructure m_structure;
    std::vector<NamedSpan>* m_awaitsName = nullptr;
    std::vector<NamedSpan>* m_open = nullptr; // whose last closing record is being read
    bool m_inHeader = false;
    bool m_inVariable = false;
};

} // namespace

const NamedSpan* DrawingStructure::find(const std::vector<NamedSpan>& spans, std::string_view name) {
    const auto found =
        std::find_if(spans.begin(), spans.end(), [name](const NamedSpan& span) { return span.name == name; });
    return found == spans.end() ? nullptr : &*found;
}

const NamedSpan* DrawingStructure::blockAt(std::size_t begin) const {
    const auto found =
        std::lower_bound(blocks.begin(), blocks.end(), begin,
                         [](const NamedSpan& span, std::size_t place) { return span.begin < place; });
    return found == blocks.end() || found->begin != begin ? nullptr : &*found;
}

DrawingStructure mapDrawing(std::string_view bytes) { return StructureMapper(bytes).run(); }

} // namespace hostkit
