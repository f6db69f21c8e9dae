#include "encodinglists.h"

#include "groupcodes.h"
#include "transcriptvalues.h"

#include <algorithm>
#include <array>

namespace hostkit {
std::vector<std::pair<std::string_view, std::uint64_t>> entriesIn(std::string_view dictionary) {
    constexpr int nameCode = 3, softCode = 350, hardCode = 360;
    std::vector<std::pair<std::string_view, std::uint64_t>> entries;
    GroupScanner scanner(dictionary);
    RawGroup group;
    bool isBehindMark = false;
    while (scanner.next(group) == ScanResult::kGroup) {
        if (group.code == subclassMarkCode) isBehindMark = true;
        if (!isBehindMark) continue;
        if (group.code == nameCode)
            entries.emplace_back(group.value, 0);
        else if ((group.code == softCode || group.code == hardCode) && !entries.empty() &&
                 entries.back().second == 0)
            entries.back().second = handleFromText(group.value).value_or(0);
    }
    return entries;
}

std::string_view headerValueIn(const ExchangeOutline& outline, std::string_view variable) {
    GroupScanner scanner(outline.text.substr(0, outline.headerEnd), outline.headerBegin);
    RawGroup group;
    bool isWanted = false;
    while (scanner.next(group) == ScanResult::kGroup) {
        if (isWanted && group.code != 9) return withoutBlanks(group.value);
        if (group.code == 9) isWanted = withoutBlanks(group.value) == variable;
    }
    return {};
}

EncodingLists::EncodingLists(const ExchangeOutline& outline, const RecordNames& names, int form)
    : m_outline(&outline) {
    if (const OutlinedTable* const table = outline.table("BLOCK_RECORD"))
        for (const OutlinedRecord& record : table->records)
            m_blockRecords.try_emplace(record.handle, &record);
    readEntities(names, form);
    readRoots();
}

void EncodingLists::readEntities(const RecordNames& names, int form) {
    std::vector<std::uint64_t> chain;
    for (const OutlinedBlock& block : m_outline->blocks) {
        for (const OutlinedEntity& entity : block.entities) {
            const std::string_view groups = entity.record.in(m_outline->text);
            if (const std::string_view kind = valueIn(groups, 0); kind == "INSERT" || kind == "ACAD_TABLE") {
                const std::uint64_t inserted = names.handleOfValue("BLOCK_RECORD", valueIn(groups, 2));
                if (inserted) m_inserts[inserted].push_back(entity.record.handle);
            }
            if (entity.partCount == 0) continue;
            m_parts.try_emplace(entity.record.handle, entity.firstPart, entity.partCount);
            for (std::uint32_t i = 0; i < entity.partCount; ++i) {
                const OutlinedRecord& part = m_outline->parts[entity.firstPart + i];
                if (valueIn(part.in(m_outline->text), 0) == "SEQEND") m_ends.insert(part.handle);
            }
        }
        if (form >= 18) continue;
        chain.clear();
        for (const OutlinedEntity& entity : block.entities) chain.push_back(entity.record.handle);
        addChain(chain);
        for (const OutlinedEntity& entity : block.entities) {
            if (entity.partCount == 0) continue;
            chain = partsOf(entity.record.handle);
            std::erase_if(chain, [&](std::uint64_t part) { return m_ends.contains(part); });
            addChain(chain);
        }
    }
    std::sort(m_neighbours.begin(), m_neighbours.end(),
              [](const Neighbours& a, const Neighbours& b) { return a.handle < b.handle; });
}

void EncodingLists::addChain(const std::vector<std::uint64_t>& handles) {
    for (std::size_t i = 0; i < handles.size(); ++i)
        m_neighbours.push_back(
            {handles[i], i > 0 ? handles[i - 1] : 0, i + 1 < handles.size() ? handles[i + 1] : 0});
}

const EncodingLists::Neighbours* EncodingLists::neighboursOf(std::uint64_t handle) const {
    const auto found =
        std::lower_bound(m_neighbours.begin(), m_neighbours.end(), handle,
                         [](const Neighbours& one, std::uint64_t wanted) { return one.handle < wanted; });
    return found == m_neighbours.end() || found->handle != handle ? nullptr : &*found;
}

void EncodingLists::link(std::uint64_t handle, RecordLinks& links) const {
    const Neighbours* const found = neighboursOf(handle);
    links.isInChain = found != nullptr;
    links.previous = found ? found->previous : 0;
    links.next = found ? found->next : 0;
}

bool EncodingLists::isLinkedAs(const EncodingLists& others, std::uint64_t handle) const {
    const Neighbours* const own = neighboursOf(handle);
    const Neighbours* const other = others.neighboursOf(handle);
    if (!own || !other) return own == other;
    return own->previous == other->previous && own->next == other->next;
}

const OutlinedRecord* EncodingLists::blockRecord(std::uint64_t handle) const {
    const auto found = m_blockRecords.find(handle);
    return found == m_blockRecords.end() ? nullptr : found->second;
}

int EncodingLists::modeOf(std::uint64_t block) const {
    return block == m_outline->modelSpace() ? 2 : block == m_outline->paperSpace() ? 1 : 0;
}

std::vector<std::uint64_t> EncodingLists::partsOf(std::uint64_t entity) const {
    std::vector<std::uint64_t> parts;
    const auto found = m_parts.find(entity);
    if (found == m_parts.end()) return parts;
    for (std::uint32_t i = 0; i < found->second.second; ++i)
        parts.push_back(m_outline->parts[found->second.first + i].handle);
    return parts;
}

const std::vector<std::uint64_t>& EncodingLists::insertsOf(std::uint64_t block) const {
    static const std::vector<std::uint64_t> none;
    const auto found = m_inserts.find(block);
    return found == m_inserts.end() ? none : found->second;
}

std::string_view EncodingLists::standsApart(std::string_view table, const OutlinedRecord& record) const {
    if (table == "BLOCK_RECORD") {
        if (record.handle == m_outline->modelSpace()) return "modelspace";
        return record.handle == m_outline->paperSpace() ? "paperspace" : "";
    }
    if (table != "LTYPE") return {};
    const std::string name = upperCaseAscii(valueIn(record.in(m_outline->text), 2));
    return name == "BYBLOCK" ? "byblock" : name == "BYLAYER" ? "bylayer" : "";
}

void EncodingLists::readRoots() {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 8> dictionaries{
        {{"ACAD_GROUP", "DICT_ACAD_GROUP"},
         {"ACAD_MLINESTYLE", "DICT_ACAD_MLINESTYLE"},
         {"ACAD_LAYOUT", "DICT_LAYOUTS"},
         {"ACAD_PLOTSETTINGS", "DICT_PLOTSETTINGS"},
         {"ACAD_PLOTSTYLENAME", "DICT_PLOTSTYLES"},
         {"ACAD_MATERIAL", "DICT_MATERIALS"},
         {"ACAD_COLOR", "DICT_COLORS"},
         {"ACAD_VISUALSTYLE", "DICT_VISUALSTYLE"}}};
    m_roots.emplace_back("BLOCK_MODEL_SPACE", m_outline->modelSpace());
    m_roots.emplace_back("BLOCK_PAPER_SPACE", m_outline->paperSpace());
    if (const OutlinedTable* const types = m_outline->table("LTYPE"))
        for (const OutlinedRecord& record : types->records) {
            const std::string name = upperCaseAscii(valueIn(record.in(m_outline->text), 2));
            for (const std::string_view wanted : {"BYLAYER", "BYBLOCK", "CONTINUOUS"})
                if (name == wanted) m_roots.emplace_back("LTYPE_" + name, record.handle);
        }
    if (m_outline->objects.empty()) return;
    const OutlinedRecord& root = m_outline->objects.front();
    m_roots.emplace_back("DICT_NAMED_OBJECTS", root.handle);
    for (const auto& [name, handle] : entriesIn(root.in(m_outline->text)))
        for (const auto& [wanted, variable] : dictionaries)
            if (name == wanted) m_roots.emplace_back(variable, handle);
}

RecordNames namesIn(const ExchangeOutline& outline, const DrawingText& text) {
    RecordNames names(text);
    const auto add = [&](std::string_view kind, std::string_view name, std::uint64_t handle) {
        std::string plain;
        appendUnescaped(name, plain);
        names.add(kind, std::move(plain), handle);
    };
    for (const OutlinedTable& table : outline.tables)
        for (const OutlinedRecord& record : table.records)
            add(table.name, valueIn(record.in(outline.text), 2), record.handle);
    if (outline.objects.empty()) return names;
    std::unordered_map<std::uint64_t, std::string> kinds; // of dictionaries
    constexpr std::string_view prefix = "ACAD_";
    for (const auto& [name, handle] : entriesIn(outline.objects.front().in(outline.text)))
        if (name.starts_with(prefix)) kinds.try_emplace(handle, name.substr(prefix.size()));
    for (const OutlinedRecord& object : outline.objects) {
        const auto kind = kinds.find(object.handle);
        if (kind == kinds.end()) continue;
        for (const auto& [name, handle] : entriesIn(object.in(outline.text))) add(kind->second, name, handle);
    }
    return names;
}

void completeReferences(const RecordNames& names, const RecordLayout& layout, RecordScope& values) {
    struct Standard {
        std::string_view layout, field, kind, name;
    };
    static constexpr std::array<Standard, 3> standards{{{"LAYER", "plotstyle", "PLOTSTYLENAME", "Normal"},
                                                        {"LAYER", "ltype", "LTYPE", "Continuous"},
                                                        {"DIMSTYLE", "DIMTXSTY", "STYLE", "Standard"}}};
    constexpr std::uint8_t hardPointer = 5;
    for (const Standard& standard : standards) {
        std::uint16_t slot = 0;
        if (layout.name != standard.layout || !layout.findSlot(standard.field, slot)) continue;
        const RecordValue* const told = values.find(slot);
        if (told && told->reference.value != 0) continue;
        RecordValue value;
        value.reference = {hardPointer, names.handleOf(standard.kind, standard.name)};
        values.set(slot, value);
    }
}

void addViewports(const ExchangeOutline& outline, const RecordLayout& layout, RecordScope& values) {
    std::uint16_t blockSlot = 0, countSlot = 0, slot = 0;
    if (layout.name != "LAYOUT" || !layout.findSlot("nviewports", countSlot) ||
        !layout.findSlot("viewports", slot) || !layout.findSlot("blockrecord", blockSlot))
        return;
    const RecordValue* const told = values.find(blockSlot);
    const auto block =
        std::find_if(outline.blocks.begin(), outline.blocks.end(),
                     [&](const OutlinedBlock& one) { return told && one.handle == told->reference.value; });
    std::vector<RecordValue>& viewports = values.array(slot);
    viewports.clear();
    constexpr std::uint8_t softPointer = 4;
    if (block != outline.blocks.end())
        for (const OutlinedEntity& entity : block->entities)
            if (valueIn(entity.record.in(outline.text), 0) == "VIEWPORT")
                viewports.emplace_back().reference = {softPointer, entity.record.handle};
    RecordValue count;
    count.whole = static_cast<std::int64_t>(viewports.size());
    values.set(countSlot, count);
}

} // namespace hostkit
