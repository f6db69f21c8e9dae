#include "exchangeoutline.h"

#include "groupcodes.h"
#include "recordhead.h"
#include "transcriptvalues.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace hostkit {

class Outlining {
public:
    explicit Outlining(ExchangeOutline& outline)
        : m_out(outline)
        , m_scanner(outline.text, startOfGroups(outline.text)) {}

    void run() {
        while (next() && !m_group.is(0, "EOF"))
            if (m_group.is(0, "SECTION")) section();
    }

    /// With blocks and entities as they are known; false where they have not moved together.
    bool runAgain() {
        m_isAgain = true;
        run();
        return !m_isScattered;
    }

private:
    bool next() { return m_scanner.next(m_group) == ScanResult::kGroup; }

    void section() {
        const std::size_t begin = m_scanner.offsetOf(m_group.start);
        if (!next()) return;
        const std::string name(withoutBlanks(m_group.value));
        if (name == "HEADER") return header();
        if (name == "TABLES") return tables();
        if (name == "BLOCKS") return placed(m_out.m_blocks, begin, [this] { blocks(); });
        if (name == "CLASSES") return list(m_out.classes);
        if (name == "OBJECTS") return list(m_out.objects);
        if (name == "ENTITIES") return placed(m_out.m_entities, begin, [this] { entities(); });
        while (next() && !m_group.is(0, "ENDSEC")) {
        }
        if (name == "ACDSDATA") {
            m_out.storeBegin = begin;
            m_out.storeEnd = m_scanner.offset();
        }
    }

    /// Outlines the section, or finds it where one is known that may only have moved.
    template <class Outline>
    void placed(ExchangeOutline::Section& section, std::size_t begin, Outline&& outline) {
        if (!m_isAgain) {
            outline();
            section = {begin, m_scanner.offset()};
            return;
        }
        const std::size_t shift = begin - section.begin;
        if (!m_shift) move(shift);
        m_isScattered = m_isScattered || shift != *m_shift;
        section = {begin, section.end + shift};
        RawGroup behind;
        behind.start = m_out.text.data() + section.end;
        m_scanner.returnTo(behind);
    }

    void move(std::size_t shift) {
        m_shift = shift;
        const auto moveAll = [shift](auto& records) {
            for (auto& record : records) record.offset += shift;
        };
        moveAll(m_out.parts);
        moveAll(m_out.strays);
        for (OutlinedBlock& block : m_out.blocks) {
            block.begin.offset += shift;
            block.end.offset += shift;
            for (OutlinedEntity& entity : block.entities) entity.record.offset += shift;
        }
    }

    void header() {
        m_out.headerBegin = m_scanner.offset();
        while (next() && m_group.code != 0) {
        }
        m_out.headerEnd = m_scanner.offsetOf(m_group.start);
    }

    /// The record that begins with the present group.
    OutlinedRecord record() {
        OutlinedRecord made;
        made.offset = m_scanner.offsetOf(m_group.start);
        const short ownCode = handleCodeOf(withoutBlanks(m_group.value));
        bool isHead = true, isOfApplication = false;
        while (next() && m_group.code != 0) {
            if (m_group.code == applicationCode) application(m_group.value);
            if (m_group.code == subclassMarkCode) isHead = false;
            if (!isHead) continue;
            if (m_group.code == applicationGroupCode)
                isOfApplication = withoutBlanks(m_group.value).starts_with('{');
            if (isOfApplication) continue;
            if (m_group.code == ownCode && made.handle == 0)
                made.handle = handleFromText(m_group.value).value_or(0);
            if (m_group.code == ownerCode) made.owner = handleFromText(m_group.value).value_or(0);
        }
        m_scanner.returnTo(m_group);
        made.length = static_cast<std::uint32_t>(m_scanner.offset() - made.offset);
        m_out.m_highest = std::max(m_out.m_highest, made.handle);
        return made;
    }

    void application(std::string_view name) {
        if (name == m_application) return;
        m_application = name;
        if (!m_out.applications.contains(name)) m_out.applications.emplace(name);
    }

    void list(std::vector<OutlinedRecord>& records) {
        while (next() && !m_group.is(0, "ENDSEC")) records.push_back(record());
    }

    void tables() {
        while (next() && !m_group.is(0, "ENDSEC")) {
            if (m_group.is(0, "TABLE")) {
                OutlinedTable& table = m_out.tables.emplace_back();
                table.head = record();
                table.name = valueIn(table.head.in(m_out.text), 2);
            } else if (!m_group.is(0, "ENDTAB") && !m_out.tables.empty()) {
                m_out.tables.back().records.push_back(record());
            }
        }
    }

    void blocks() {
        while (next() && !m_group.is(0, "ENDSEC")) {
            if (m_group.is(0, "BLOCK")) {
                OutlinedBlock& block = m_out.blocks.emplace_back();
                block.begin = record();
                block.handle = recordOf(block.begin);
                m_byHandle.try_emplace(block.handle, m_out.blocks.size() - 1);
            } else if (m_group.is(0, "ENDBLK") && !m_out.blocks.empty()) {
                m_out.blocks.back().end = record();
            } else if (!m_out.blocks.empty()) {
                entity(&m_out.blocks.back());
            }
        }
    }

    /// Programs that leave the owner out tell the table's record by the name alone.
    std::uint64_t recordOf(const OutlinedRecord& begin) {
        const OutlinedTable* const table = m_out.table("BLOCK_RECORD");
        if (!table) return begin.owner;
        if (m_blockNames.empty())
            for (const OutlinedRecord& record : table->records)
                m_blockNames.try_emplace(upperCaseAscii(valueIn(record.in(m_out.text), 2)), record.handle);
        const std::string name = upperCaseAscii(valueIn(begin.in(m_out.text), 2));
        const auto named = m_blockNames.find(name);
        const std::uint64_t handle = named == m_blockNames.end() ? begin.owner : named->second;
        if (name == "*MODEL_SPACE") m_out.m_modelSpace = handle;
        if (name == "*PAPER_SPACE") m_out.m_paperSpace = handle;
        return handle;
    }

    void entities() {
        while (next() && !m_group.is(0, "ENDSEC")) entity(nullptr);
    }

    /// Into the block, or the one that the record names as its owner.
    void entity(OutlinedBlock* block) {
        const std::string_view name = withoutBlanks(m_group.value);
        const bool isPart = name == "VERTEX" || name == "ATTRIB" || name == "SEQEND";
        const OutlinedRecord made = record();
        if (isPart) {
            if (!m_last) return;
            OutlinedEntity& owner = (*m_last)[m_lastAt];
            m_out.parts.push_back(made);
            ++owner.partCount;
            return;
        }
        if (!block) {
            constexpr int paperCode = 67;
            const bool isInPaper = made.owner == 0 && valueIn(made.in(m_out.text), paperCode) == "1";
            const std::uint64_t space = isInPaper ? m_out.m_paperSpace : m_out.m_modelSpace;
            const auto found = m_byHandle.find(made.owner ? made.owner : space);
            if (found == m_byHandle.end()) {
                m_out.strays.push_back(made);
                m_last = nullptr;
                return;
            }
            block = &m_out.blocks[found->second];
        }
        block->entities.push_back({made, static_cast<std::uint32_t>(m_out.parts.size()), 0});
        m_last = &block->entities;
        m_lastAt = block->entities.size() - 1;
    }

    ExchangeOutline& m_out;
    GroupScanner m_scanner;
    RawGroup m_group;
    std::unordered_map<std::uint64_t, std::size_t> m_byHandle;   // of blocks
    std::unordered_map<std::string, std::uint64_t> m_blockNames; // of their records
    std::string_view m_application;                              // the last one
    bool m_isAgain = false, m_isScattered = false;
    std::optional<std::size_t> m_shift;            // of known blocks and entities
    std::vector<OutlinedEntity>* m_last = nullptr; // where the entity is that parts belong to
    std::size_t m_lastAt = 0;
};

ExchangeOutline::ExchangeOutline(std::string_view bytes)
    : text(bytes) {
    Outlining(*this).run();
}

ExchangeOutline::ExchangeOutline(std::string_view bytes, const ExchangeOutline& earlier)
    : ExchangeOutline(earlier) {
    text = bytes;
    classes.clear();
    tables.clear();
    objects.clear();
    storeBegin = storeEnd = 0;
    if (!Outlining(*this).runAgain()) *this = ExchangeOutline(bytes);
}

bool ExchangeOutline::hasSpaces() const { return m_modelSpace && m_paperSpace && !objects.empty(); }

const OutlinedTable* ExchangeOutline::table(std::string_view name) const {
    const auto found = std::find_if(tables.begin(), tables.end(),
                                    [&](const OutlinedTable& one) { return one.name == name; });
    return found == tables.end() ? nullptr : &*found;
}

const OutlinedBlock* ExchangeOutline::block(std::uint64_t handle) const {
    const auto found = std::find_if(blocks.begin(), blocks.end(),
                                    [&](const OutlinedBlock& one) { return one.handle == handle; });
    return found == blocks.end() ? nullptr : &*found;
}

std::string_view valueIn(std::string_view record, int code) {
    GroupScanner scanner(record);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup)
        if (group.code == code) return withoutBlanks(group.value);
    return {};
}

} // namespace hostkit
