// Salvage of a damaged text, its end: the records as a drawing's text again.

#include "salvagedtext.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr int nameCode = 2;

} // namespace

/// Puts the records into sections again.
class SalvagedText::Writing {
public:
    Writing(SalvagedText& drawing, std::vector<Stand>* stands)
        : m_drawing(drawing)
        , m_stands(stands) {}

    std::string run() {
        raw(m_drawing.m_before);
        if (!m_drawing.header.empty()) {
            section("HEADER");
            for (const SalvagedGroup& each : m_drawing.header) group(each.code, each.value);
            group(0, "ENDSEC");
        }
        if (m_drawing.hasClasses) {
            section("CLASSES");
            for (SalvagedRecord& each : m_drawing.classes) record(each);
            group(0, "ENDSEC");
        }
        if (m_drawing.hasTables) tables();
        if (m_drawing.hasBlocks) blocks();
        if (m_drawing.hasEntities) list("ENTITIES", m_drawing.entities);
        if (m_drawing.hasObjects) list("OBJECTS", m_drawing.objects);
        for (const std::string_view each : m_drawing.otherSections) raw(each);
        group(0, "EOF");
        return std::move(m_text);
    }

private:
    void raw(std::string_view bytes) {
        if (bytes.empty()) return;
        if (m_stands) m_stands->push_back({m_line, nullptr});
        m_text += bytes;
        m_line += static_cast<std::uint32_t>(std::count(bytes.begin(), bytes.end(), '\n'));
        if (bytes.back() == '\n') return;
        m_text += m_drawing.m_newline;
        ++m_line;
    }
    void group(int code, std::string_view value) {
        if (m_stands && code == 0) m_stands->push_back({m_line, nullptr});
        const std::string number = std::to_string(code);
        m_text.append(number.size() < 3 ? 3 - number.size() : 0, ' ');
        ((m_text += number) += m_drawing.m_newline) += value;
        m_text += m_drawing.m_newline;
        m_line += 2;
    }
    void section(std::string_view name) {
        group(0, "SECTION");
        group(nameCode, name);
    }
    void record(SalvagedRecord& each) {
        if (each.isGone || each.bytes.empty()) return;
        const std::size_t place = m_stands ? m_stands->size() : 0;
        raw(each.bytes);
        if (m_stands) (*m_stands)[place].record = &each;
    }
    void list(std::string_view name, SalvagedRecords& records) {
        section(name);
        for (SalvagedRecord& each : records) record(each);
        group(0, "ENDSEC");
    }
    void tables() {
        section("TABLES");
        for (SalvagedTable& each : m_drawing.tables) {
            if (each.head.bytes.empty()) continue;
            record(each.head);
            for (SalvagedRecord& one : each.records) record(one);
            group(0, "ENDTAB");
        }
        group(0, "ENDSEC");
    }
    void blocks() {
        section("BLOCKS");
        for (SalvagedBlock& each : m_drawing.blocks) {
            if (each.begin.isGone) continue;
            record(each.begin);
            for (SalvagedRecord& one : each.entities) record(one);
            record(each.end);
        }
        group(0, "ENDSEC");
    }

    SalvagedText& m_drawing;
    std::vector<Stand>* m_stands;
    std::string m_text;
    std::uint32_t m_line = 1;
};

std::string SalvagedText::text(std::vector<Stand>* stands) {
    if (stands) stands->clear();
    return Writing(*this, stands).run();
}

} // namespace hostkit
