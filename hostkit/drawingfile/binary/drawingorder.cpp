#include "drawingorder.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace hostkit {

namespace {

using namespace recordtype;

const char* const objectsName = "AcDb:AcDbObjects";

struct TableKind {
    std::string_view name;
    unsigned control;
    std::uint64_t DrawingRoots::*root;
};

/// In the order of exchange files.
constexpr std::array<TableKind, 9> tableKinds{{{"VPORT", 64, &DrawingRoots::viewports},
                                               {"LTYPE", 56, &DrawingRoots::linetypes},
                                               {"LAYER", 50, &DrawingRoots::layers},
                                               {"STYLE", 52, &DrawingRoots::styles},
                                               {"VIEW", 60, &DrawingRoots::views},
                                               {"UCS", 62, &DrawingRoots::coordinateSystems},
                                               {"APPID", 66, &DrawingRoots::applications},
                                               {"DIMSTYLE", 68, &DrawingRoots::dimensionStyles},
                                               {"BLOCK_RECORD", blockControl, &DrawingRoots::blocks}}};

bool isOfTable(unsigned type) {
    return std::any_of(tableKinds.begin(), tableKinds.end(), [&](const TableKind& kind) {
        return type == kind.control || type == kind.control + 1;
    });
}

std::string folded(std::string_view name) {
    std::string result(name);
    for (char& c : result)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return result;
}

std::wstring hexadecimal(std::uint64_t handle) {
    std::string digits;
    appendHandle(handle, digits);
    return {digits.begin(), digits.end()};
}

class Ordering {
public:
    Ordering(BinaryContainer& container, std::span<const BinaryClass> classes, const DrawingRoots& roots)
        : m_container(container)
        , m_reading(container, classes)
        , m_roots(roots) {}

    DrawingOrder run() {
        m_order.places = readObjectMap(m_container);
        m_isClaimed.assign(m_order.places.size(), false);
        findTypes();
        for (const TableKind& kind : tableKinds) table(kind);
        blocks();
        entities();
        lostEntities();
        objects();
        return std::move(m_order);
    }

private:
    void findTypes() {
        m_order.types.reserve(m_order.places.size());
        for (const ObjectPlace& place : m_order.places) {
            const unsigned type = typeOf(m_reading, m_reading.typeAt(place.offset));
            m_order.types.push_back(static_cast<std::uint16_t>(type));
            if (type == 0) tell(place.offset, place.handle, L" cannot be read: it is left out");
        }
    }

    void tell(std::size_t offset, std::uint64_t handle, std::wstring_view what) {
        m_container.addFault(offset, objectsName, L"record " + hexadecimal(handle) + std::wstring(what));
    }
    void tell(MapIndex record, std::wstring_view what) {
        tell(m_order.places[record].offset, m_order.places[record].handle, what);
    }

    MapIndex find(std::uint64_t handle) {
        // Lists lead from one record to the next, mostly.
        if (m_last + 1 < m_order.places.size() && m_order.places[m_last + 1].handle == handle)
            return static_cast<MapIndex>(++m_last);
        const MapIndex found = m_order.find(handle);
        if (found != noRecord) m_last = found;
        return found;
    }

    bool read(MapIndex record) {
        if (record == noRecord || !m_reading.read(m_order.places[record].offset, m_fields)) return false;
        return m_fields.handle == m_order.places[record].handle;
    }

    bool claim(MapIndex record) {
        if (m_isClaimed[record]) return false;
        m_isClaimed[record] = true;
        return true;
    }

    bool isEntity(MapIndex record) {
        const unsigned type = m_order.types[record];
        if (type == 0) return false;
        return kindOf(type).isEntity;
    }

    struct Kind {
        bool isKnown = false, isEntity = false, hasSequence = false;
    };
    Kind kindOf(unsigned type) {
        if (m_kinds.size() <= type) m_kinds.resize(type + 1);
        Kind& kind = m_kinds[type];
        if (kind.isKnown) return kind;
        bool isKnown = false;
        std::uint16_t slot = 0;
        const RecordLayout* const layout = m_reading.layoutOf(type, isKnown);
        kind = {true, layout->isEntity, isKnown && layout->findSlot("seqend", slot)};
        return kind;
    }

    // Tables

    void table(const TableKind& kind) {
        OrderedTable table{kind.name, find(m_roots.*kind.root), {}};
        const bool isRight = table.control != noRecord && m_order.types[table.control] == kind.control;
        if (!isRight) table.control = firstOf(kind.control);
        if (!read(table.control)) {
            m_container.addFault(0, objectsName,
                                 L"the table " + std::wstring(kind.name.begin(), kind.name.end()) +
                                     L" has no record of its own");
            table.control = noRecord;
        } else {
            claim(table.control);
            for (const char* const first : {"modelspace", "paperspace", "byblock", "bylayer"})
                if (const std::uint64_t handle = m_fields.referenceTo(first)) entry(kind, handle, table);
            for (const RecordValue& entry : std::vector(m_fields.array("entries")))
                if (const std::uint64_t handle = entry.reference.resolved(m_fields.handle))
                    this->entry(kind, handle, table);
        }
        lostEntries(kind, table);
        for (const MapIndex record : table.records) name(kind.name, record);
        m_order.tables.push_back(std::move(table));
    }

    MapIndex firstOf(unsigned type) const {
        const auto found = std::find(m_order.types.begin(), m_order.types.end(), type);
        return found == m_order.types.end() ? noRecord : static_cast<MapIndex>(found - m_order.types.begin());
    }

    void entry(const TableKind& kind, std::uint64_t handle, OrderedTable& table) {
        const MapIndex record = find(handle);
        if (record == noRecord || m_order.types[record] != kind.control + 1)
            return tell(m_order.places[table.control].offset, handle,
                        L" is named by its table, but is not there");
        if (claim(record)) table.records.push_back(record);
    }

    /// Where a table does not name all of its records.
    void lostEntries(const TableKind& kind, OrderedTable& table) {
        for (std::size_t i = 0; i < m_order.types.size(); ++i) {
            const auto record = static_cast<MapIndex>(i);
            if (m_order.types[i] != kind.control + 1 || m_isClaimed[i]) continue;
            tell(record, L" is not named by its table");
            claim(record);
            table.records.push_back(record);
        }
    }

    void name(std::string_view kind, MapIndex record) {
        if (kind == "BLOCK_RECORD") return; // their names stand elsewhere
        if (!read(record)) return;
        if (const RecordValue* const name = m_fields.value("name"))
            m_order.names.add(kind, m_reading.text(*name), m_fields.handle);
    }

    // Blocks

    void blocks() {
        const OrderedTable& table = m_order.tables.back();
        std::uint64_t model = m_roots.modelSpace, paper = m_roots.paperSpace;
        if (read(table.control)) {
            if (const std::uint64_t told = m_fields.referenceTo("modelspace")) model = told;
            if (const std::uint64_t told = m_fields.referenceTo("paperspace")) paper = told;
        }
        space(model, "*Model_Space");
        space(paper, "*Paper_Space");
        for (const MapIndex record : table.records) {
            const std::uint64_t handle = m_order.places[record].handle;
            if (handle == model || handle == paper) continue;
            block(record, handle, {});
        }
        for (const OrderedBlock& block : m_order.blocks)
            if (block.handle != 0) m_order.names.add("BLOCK_RECORD", block.name, block.handle);
    }

    void space(std::uint64_t handle, std::string_view name) {
        const MapIndex record = find(handle);
        const bool isThere = record != noRecord && m_order.types[record] == blockHeader;
        block(isThere ? record : noRecord, handle, name);
        m_order.blocks.back().isPaper = name == "*Paper_Space";
    }

    void block(MapIndex record, std::uint64_t handle, std::string_view standing) {
        OrderedBlock block;
        block.handle = handle;
        block.name = standing;
        block.header = record;
        if (read(record)) {
            if (const RecordValue* const name = m_fields.value("name")) block.name = m_reading.text(*name);
            const std::uint64_t begin = m_fields.referenceTo("block"), end = m_fields.referenceTo("endblk");
            block.begin = bound(find(begin), blockBegin, record);
            block.end = bound(find(end), blockEnd, record);
            if (read(block.begin))
                if (const RecordValue* const name = m_fields.value("name"))
                    if (std::string full = m_reading.text(*name); !full.empty()) block.name = std::move(full);
        }
        block.isPaper = folded(block.name).starts_with("*PAPER_SPACE");
        makeUnique(block);
        m_order.blocks.push_back(std::move(block));
    }

    MapIndex bound(MapIndex record, unsigned type, MapIndex header) {
        if (record != noRecord && m_order.types[record] == type && claim(record)) return record;
        tell(header, type == blockBegin ? L": the opening record of the block is missing"
                                        : L": the closing record of the block is missing");
        return noRecord;
    }

    void makeUnique(OrderedBlock& block) {
        if (m_blockNames.insert(folded(block.name)).second) return;
        std::string name;
        for (std::size_t number = 0; number <= m_blockNames.size(); ++number) {
            name = block.name + "_" + std::to_string(number + 2);
            if (m_blockNames.insert(folded(name)).second) break;
        }
        if (block.header != noRecord) tell(block.header, L": another block has that name; it gets a new one");
        block.name = std::move(name);
    }

    // Entities

    void entities() {
        for (OrderedBlock& block : m_order.blocks) {
            if (!read(block.header)) continue;
            std::uint16_t slot = 0;
            if (m_fields.layout->findSlot("first", slot)) {
                chain("first", "last", block, [&](MapIndex record) { entity(record, block); });
                continue;
            }
            list("owned", block.header, [&](MapIndex record) { entity(record, block); });
        }
    }

    /// Those that the record in m_fields names, one by one. m_fields is used by `take`.
    template <class Take>
    void list(std::string_view name, MapIndex owner, Take&& take) {
        std::vector<std::uint64_t> handles;
        for (const RecordValue& value : m_fields.array(name))
            handles.push_back(value.reference.resolved(m_fields.handle));
        for (const std::uint64_t handle : handles) {
            const MapIndex record = find(handle);
            if (record == noRecord)
                tell(m_order.places[owner].offset, handle, L" is named by what holds it, but is not there");
            else
                take(record);
        }
    }

    /// Those that each name the next one. A ring ends where a record comes again, which `take` finds claimed.
    template <class Take>
    void chain(const char* firstName, const char* lastName, const OrderedBlock&, Take&& take) {
        std::uint64_t handle = m_fields.referenceTo(firstName);
        const std::uint64_t last = m_fields.referenceTo(lastName);
        while (handle != 0) {
            const MapIndex record = find(handle);
            if (record == noRecord || m_isClaimed[record] || !isEntity(record))
                return m_container.addFault(record == noRecord ? 0 : m_order.places[record].offset,
                                            objectsName,
                                            L"the chain of entities breaks at record " + hexadecimal(handle));
            const std::uint64_t following = nextOf(record);
            take(record);
            if (handle == last) return;
            handle = following;
        }
    }

    std::uint64_t nextOf(MapIndex record) {
        if (!m_reading.readCommon(m_order.places[record].offset, m_links)) return 0;
        const RecordValue* const noLinks = m_links.value("nolinks");
        return noLinks && noLinks->whole ? m_links.handle + 1 : m_links.referenceTo("next");
    }

    void entity(MapIndex record, OrderedBlock& block) {
        if (!isEntity(record)) return tell(record, L" stands among entities, but is none");
        if (isPart(m_order.types[record])) return tell(record, L" stands where it has no place");
        if (!claim(record)) return tell(record, L" is named twice: it stays where it was named first");
        block.entities.push_back(record);
        if (!kindOf(m_order.types[record]).hasSequence || !read(record)) return;
        sequence(record, block);
    }

    void sequence(MapIndex head, OrderedBlock& block) {
        const std::uint64_t end = m_fields.referenceTo("seqend");
        const auto take = [&](MapIndex record) { part(record, head, block); };
        for (const char* const name : {"attribs", "vertices"})
            if (!m_fields.array(name).empty()) {
                list(name, head, take);
                break;
            }
        if (m_fields.handle == m_order.places[head].handle) {
            if (m_fields.referenceTo("firstattrib"))
                chain("firstattrib", "lastattrib", block, take);
            else if (m_fields.referenceTo("firstvertex"))
                chain("firstvertex", "lastvertex", block, take);
        }
        if (end == 0) return;
        const MapIndex record = find(end);
        if (record != noRecord && m_order.types[record] == sequenceEnd) return part(record, head, block);
        tell(head, L": the end of the sequence is missing");
    }

    void part(MapIndex record, MapIndex head, OrderedBlock& block) {
        const unsigned type = m_order.types[record];
        if (!isPart(type) || type == blockBegin || type == blockEnd)
            return tell(head, L": what is no part stands in its sequence");
        if (!claim(record)) return tell(record, L" is named twice: it stays where it was named first");
        block.entities.push_back(record);
    }

    /// What no list leads to, and what a broken chain lost.
    void lostEntities() {
        for (std::size_t i = 0; i < m_order.places.size(); ++i) {
            const auto record = static_cast<MapIndex>(i);
            if (m_isClaimed[i] || !isEntity(record)) continue;
            const unsigned type = m_order.types[i];
            if (isPart(type)) continue;
            OrderedBlock* const block = blockNamedBy(record);
            tell(record, block
                             ? L" is an entity that no block names: it stands at the end of the one it names"
                             : L" is an entity whose block is missing: it is left out");
            if (block) entity(record, *block);
        }
        for (std::size_t i = 0; i < m_order.places.size(); ++i)
            if (!m_isClaimed[i] && isEntity(static_cast<MapIndex>(i)))
                tell(static_cast<MapIndex>(i), L" is a part of no block or sequence: it is left out");
    }

    OrderedBlock* blockNamedBy(MapIndex record) {
        if (!m_reading.readCommon(m_order.places[record].offset, m_links)) return nullptr;
        const RecordValue* const mode = m_links.value("entmode");
        if (mode && mode->whole == 2) return &m_order.blocks[0];
        if (mode && mode->whole == 1) return &m_order.blocks[1];
        const std::uint64_t owner = m_links.referenceTo("owner");
        for (OrderedBlock& block : m_order.blocks)
            if (block.handle == owner) return &block;
        return nullptr;
    }

    // Objects

    void objects() {
        MapIndex root = find(m_roots.dictionary);
        if (root == noRecord || m_order.types[root] != dictionary) root = firstOf(dictionary);
        if (root != noRecord && claim(root)) m_order.objects.push_back(root);
        for (std::size_t i = 0; i < m_order.places.size(); ++i) {
            const unsigned type = m_order.types[i];
            const bool isLeftOut = type == 0 || m_isClaimed[i] || isOfTable(type) || type == viewportHeader ||
                                   type == viewportHeaderControl;
            if (!isLeftOut && !isEntity(static_cast<MapIndex>(i)))
                m_order.objects.push_back(static_cast<MapIndex>(i));
        }
        dictionaryNames(root);
        nameColors();
    }

    /// Records in the dictionaries ACAD_... are called as their entries are.
    void dictionaryNames(MapIndex root) {
        constexpr std::string_view prefix = "ACAD_";
        for (const auto& [name, handle] : entriesOf(root)) {
            const MapIndex record = find(handle);
            if (record == noRecord || !name.starts_with(prefix)) continue;
            for (const auto& [own, ownHandle] : entriesOf(record))
                m_order.names.add(std::string_view(name).substr(prefix.size()), own, ownHandle);
        }
    }

    std::vector<std::pair<std::string, std::uint64_t>> entriesOf(MapIndex record) {
        std::vector<std::pair<std::string, std::uint64_t>> entries;
        if (!read(record)) return entries;
        const std::vector<RecordValue>&texts = m_fields.array("names"), &items = m_fields.array("items");
        for (std::size_t i = 0; i < texts.size() && i < items.size(); ++i)
            entries.emplace_back(m_reading.text(texts[i]), items[i].reference.resolved(m_fields.handle));
        return entries;
    }

    /// Entities name a colour of a book by its record.
    void nameColors() {
        for (std::size_t i = 0; i < m_order.types.size(); ++i) {
            const BinaryClass* const own = m_reading.classOf(m_order.types[i]);
            std::uint16_t slot = 0;
            if (!own || own->dxfName != "DBCOLOR" || !read(static_cast<MapIndex>(i)) ||
                !m_fields.layout->findSlot("color", slot))
                continue;
            if (const RecordValue* const color = m_fields.values.find(slot))
                m_order.names.addColor(m_fields.handle, color->color.value & 0xFFFFFF);
            std::string name;
            if (const RecordValue* const book = m_fields.values.find(static_cast<std::uint16_t>(slot + 2)))
                name = m_reading.text(*book) + '$';
            if (const RecordValue* const text = m_fields.values.find(static_cast<std::uint16_t>(slot + 1)))
                m_order.names.add("COLOR", name + m_reading.text(*text), m_fields.handle);
        }
    }

    BinaryContainer& m_container;
    RecordReading m_reading;
    const DrawingRoots& m_roots;
    DrawingOrder m_order;
    RecordFields m_fields, m_links;
    std::vector<bool> m_isClaimed;
    std::vector<Kind> m_kinds;
    std::unordered_set<std::string> m_blockNames;
    std::size_t m_last = 0; ///< the record found last
};

} // namespace

unsigned typeOf(const RecordReading& reading, unsigned type) {
    bool isKnown = false;
    const RecordLayout* const layout = type == 0 ? nullptr : reading.layoutOf(type, isKnown);
    return isKnown && layout->number != 0 ? layout->number : type;
}

MapIndex DrawingOrder::find(std::uint64_t handle) const {
    const auto found = std::lower_bound(
        places.begin(), places.end(), handle,
        [](const ObjectPlace& place, std::uint64_t wanted) { return place.handle < wanted; });
    if (found == places.end() || found->handle != handle) return noRecord;
    return static_cast<MapIndex>(found - places.begin());
}

DrawingOrder orderOf(BinaryContainer& container, std::span<const BinaryClass> classes,
                     const DrawingRoots& roots) {
    return Ordering(container, classes, roots).run();
}

} // namespace hostkit
