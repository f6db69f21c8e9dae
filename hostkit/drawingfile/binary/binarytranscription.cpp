#include "binarytranscription.h"

#include "binarysections.h"
#include "datastore.h"
#include "headertext.h"
#include "modelerstore.h"
#include "recordwriting.h"

#include <algorithm>

namespace hostkit {

namespace {

class DrawingTranscription {
public:
    DrawingTranscription(TranscribedDrawing& drawing, std::string& text, unsigned threads)
        : m_drawing(drawing)
        , m_text(text)
        , m_threads(threads) {}

    void run() {
        m_drawing.header = readHeader(m_drawing.container);
        m_drawing.classes = readClasses(m_drawing.container);
        m_order = orderOf(m_drawing.container, m_drawing.classes, roots());
        for (const ObjectPlace& place : m_order.places)
            m_drawing.records.push_back({place.handle, place.offset});
        m_style.version = m_drawing.container.version;
        m_style.text =
            DrawingText(isUtf8(m_style.version) ? CodePage::utf8 : codePageOf(m_drawing.container));
        appendHeaderSection(m_drawing, m_order.names, m_style, m_text);
        appendClassesSection(m_drawing, m_style, m_text);
        tables();
        blocks();
        entities();
        objects();
        store();
        appendGroup(0, "EOF", m_style, m_text);
    }

private:
    DrawingRoots roots() const {
        const auto handle = [&](std::string_view name) { return m_drawing.header.handle(name); };
        DrawingRoots roots;
        roots.blocks = handle("BLOCK_CONTROL");
        roots.layers = handle("LAYER_CONTROL");
        roots.styles = handle("STYLE_CONTROL");
        roots.linetypes = handle("LTYPE_CONTROL");
        roots.views = handle("VIEW_CONTROL");
        roots.coordinateSystems = handle("UCS_CONTROL");
        roots.viewports = handle("VPORT_CONTROL");
        roots.applications = handle("APPID_CONTROL");
        roots.dimensionStyles = handle("DIMSTYLE_CONTROL");
        roots.dictionary = handle("DICT_NAMED_OBJECTS");
        roots.modelSpace = handle("BLOCK_MODEL_SPACE");
        roots.paperSpace = handle("BLOCK_PAPER_SPACE");
        return roots;
    }

    void group(int code, std::string_view value) { appendGroup(code, value, m_style, m_text); }
    void beginSection(std::string_view name) {
        group(0, "SECTION");
        group(2, name);
    }
    void write(std::span<const RecordItem> items) {
        writeRecords({m_order, m_style, m_threads}, items, m_text, m_drawing);
    }

    // Tables

    void tables() {
        beginSection("TABLES");
        for (const OrderedTable& table : m_order.tables) this->table(table);
        group(0, "ENDSEC");
    }

    void table(const OrderedTable& table) {
        RecordFields control;
        RecordReading reading(m_drawing.container, m_drawing.classes);
        const bool hasControl =
            table.control != noRecord && reading.read(m_order.places[table.control].offset, control);
        std::string head;
        if (hasControl)
            RecordTranscription(reading, m_order.names, m_style).appendOpaque(control, "TABLE", {}, head);
        else
            appendGroup(0, "TABLE", m_style, head);
        // Its name stands first, what it holds before its extended data.
        const std::size_t name = groupEnd(head, 0), extended = groupAt(head, 0, 1001);
        m_text.append(head, 0, name);
        group(2, table.name);
        m_text.append(head, name, extended - name);
        group(100, "AcDbSymbolTable");
        appendInteger(70, static_cast<std::int64_t>(table.records.size()), m_style, m_text);
        if (table.name == "DIMSTYLE") dimensionStyles(control);
        m_text.append(head, extended);
        std::vector<RecordItem> items;
        for (const MapIndex record : table.records)
            items.push_back({record, table.name == "BLOCK_RECORD" ? blockOf(record) : ~0U});
        write(items);
        group(0, "ENDTAB");
    }

    void dimensionStyles(const RecordFields& control) {
        const std::vector<RecordValue>& more = control.array("more");
        group(100, "AcDbDimStyleTable");
        appendInteger(71, static_cast<std::int64_t>(more.size()), m_style, m_text);
        for (const RecordValue& style : more)
            appendHandle(340, style.reference.resolved(control.handle), m_style, m_text);
    }

    std::uint32_t blockOf(MapIndex record) const {
        const auto found = std::find_if(m_order.blocks.begin(), m_order.blocks.end(),
                                        [&](const OrderedBlock& block) { return block.header == record; });
        return static_cast<std::uint32_t>(found - m_order.blocks.begin());
    }

    // Entities

    static constexpr std::size_t spaces = 2; ///< whose entities stand in a section of their own

    void blocks() {
        beginSection("BLOCKS");
        std::vector<RecordItem> items;
        const auto flush = [&] {
            write(items);
            items.clear();
        };
        for (std::size_t i = 0; i < m_order.blocks.size(); ++i) {
            const OrderedBlock& block = m_order.blocks[i];
            if (block.header == noRecord && block.begin == noRecord) continue;
            if (block.begin == noRecord || block.end == noRecord) flush();
            block.begin == noRecord ? appendMissingBegin(block, m_style, m_text)
                                    : items.push_back({block.begin, static_cast<std::uint32_t>(i)});
            if (i >= spaces) {
                const std::vector<RecordItem> own = itemsOf(m_order, i);
                items.insert(items.end(), own.begin(), own.end());
            }
            if (block.end != noRecord) {
                items.push_back({block.end, static_cast<std::uint32_t>(i)});
                continue;
            }
            flush();
            appendMissingEnd(block, m_style, m_text);
        }
        flush();
        group(0, "ENDSEC");
    }

    void entities() {
        beginSection("ENTITIES");
        for (std::size_t i = 0; i < std::min(spaces, m_order.blocks.size()); ++i) write(itemsOf(m_order, i));
        group(0, "ENDSEC");
    }

    void objects() {
        beginSection("OBJECTS");
        std::vector<RecordItem> items;
        items.reserve(m_order.objects.size());
        for (const MapIndex record : m_order.objects) items.push_back({record});
        write(items);
        group(0, "ENDSEC");
    }

    void store() {
        const std::vector<StoredData> all = readDataStore(m_drawing.container);
        std::vector<ModelerStoreItem> items;
        for (const StoredData& data : all)
            items.push_back({data.handle,
                             data.kind == "AcDb_Thumbnail_Schema",
                             {reinterpret_cast<const char*>(data.bytes.data()), data.bytes.size()}});
        m_text += modelerStoreOf(items, m_style);
    }

    TranscribedDrawing& m_drawing;
    std::string& m_text;
    unsigned m_threads;
    DrawingOrder m_order;
    DrawingStyle m_style;
};

} // namespace

const TranscribedRecord* TranscribedDrawing::find(std::uint64_t handle) const {
    const auto found = std::lower_bound(
        records.begin(), records.end(), handle,
        [](const TranscribedRecord& record, std::uint64_t wanted) { return record.handle < wanted; });
    return found == records.end() || found->handle != handle ? nullptr : &*found;
}

const TranscribedRecord* TranscribedDrawing::recordAt(std::size_t textOffset) const {
    const auto found = std::find_if(records.begin(), records.end(), [&](const TranscribedRecord& record) {
        return textOffset >= record.text && textOffset - record.text < record.length;
    });
    return found == records.end() ? nullptr : &*found;
}

bool textFromDrawing(ByteSpan file, std::string& text, TranscribedDrawing& drawing, unsigned threads) {
    text.clear();
    if (!openContainer(file, drawing.container)) return false;
    textFromSections(text, drawing, threads);
    return true;
}

void textFromSections(std::string& text, TranscribedDrawing& drawing, unsigned threads) {
    DrawingTranscription(drawing, text, threads).run();
}

} // namespace hostkit
