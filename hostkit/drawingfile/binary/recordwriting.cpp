#include "recordwriting.h"

#include "groupscanner.h"
#include "transcriptvalues.h"
#include "workers.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <exception>
#include <system_error>
#include <thread>

namespace hostkit {

namespace {

using namespace recordtype;

constexpr std::size_t itemsOfChunk = 2048;
constexpr unsigned mostThreads = 16;
constexpr std::uint32_t lengthMask = 0x7FFFFFFF;
const char* const objectsName = "AcDb:AcDbObjects";

/// Some items' text, and where in it each one's is.
struct Chunk {
    struct Written {
        MapIndex record;
        bool isOpaque;
        std::size_t begin; ///< in the chunk's text
        std::uint32_t length;
    };
    std::string text;
    std::vector<Written> written;
    std::vector<BinaryFault> faults;
};

std::wstring wide(std::string_view text) { return {text.begin(), text.end()}; }

/// A text of a record, whatever characters it has.
void appendName(int code, std::string_view text, const DrawingStyle& style, std::string& bytes) {
    appendCode(code, style, bytes);
    appendEscaped(text, bytes);
    bytes += style.newline;
}

/// Writes records one after the other; a thread has its own.
class RecordWriter {
public:
    RecordWriter(const WritingRules& rules, const TranscribedDrawing& drawing)
        : m_rules(rules)
        , m_reading(drawing.container, drawing.classes)
        , m_transcription(m_reading, rules.order.names, rules.style) {}

    void write(std::span<const RecordItem> items, Chunk& chunk) {
        m_chunk = &chunk;
        for (const RecordItem& item : items) write(item);
    }

private:
    void write(const RecordItem& item) {
        if (item.record == noRecord) return;
        const OrderedBlock* const block =
            item.block < m_rules.order.blocks.size() ? &m_rules.order.blocks[item.block] : nullptr;
        if (read(item)) return append(item, block);
        // A block is there with its name at least.
        if (block && item.record == block->begin) appendMissingBegin(*block, m_rules.style, m_chunk->text);
        if (block && item.record == block->end) appendMissingEnd(*block, m_rules.style, m_chunk->text);
    }

    bool read(const RecordItem& item) {
        const ObjectPlace& place = m_rules.order.places[item.record];
        m_fields.isKnown = false;
        if (!m_reading.read(place.offset, m_fields)) {
            tell(item, L" cannot be read: it is left out");
            return false;
        }
        if (m_fields.handle != place.handle) {
            tell(item, L" has another handle: it is left out");
            return false;
        }
        if (!m_fields.isSumRight) tell(item, L": its checksum is wrong");
        return true;
    }

    void append(const RecordItem& item, const OrderedBlock* block) {
        std::string& text = m_chunk->text;
        const std::size_t before = text.size();
        const bool isTableRecord = block && item.record == block->header;
        if (isTableRecord) giveFullName(*block);
        EntityPlace where;
        if (block && !isTableRecord) where = {block->handle, block->isPaper, {}};
        const bool isWhole = m_transcription.append(m_fields, where, text);
        if (!isWhole) {
            if (m_fields.isKnown && !m_fields.isWhole)
                tell(item, L" does not end where it has to: all but its head is left out");
            m_transcription.appendOpaque(m_fields, nameOf(m_fields), where, text);
        }
        if (block && item.record == block->begin) completeBlock(*block, before);
        if (item.viewport != 0) completeViewport(item.viewport, before);
        m_chunk->written.push_back(
            {item.record, !isWhole, before, static_cast<std::uint32_t>(text.size() - before)});
    }

    void tell(const RecordItem& item, std::wstring_view what) {
        const ObjectPlace& place = m_rules.order.places[item.record];
        std::string handle;
        appendHandle(place.handle, handle);
        std::wstring reason = L"record " + wide(handle);
        if (m_fields.layout && m_fields.isKnown) reason += L" (" + wide(m_fields.layout->name) + L")";
        m_chunk->faults.push_back({place.offset, objectsName, reason + std::wstring(what)});
    }

    std::string_view nameOf(const RecordFields& fields) const {
        if (fields.isKnown && fields.layout->hasTranscript) return fields.layout->transcript.recordName;
        if (fields.isKnown) return fields.layout->name;
        const BinaryClass* const own = m_reading.classOf(fields.type);
        if (own && isRecordName(own->dxfName)) return own->dxfName;
        return fields.layout->isEntity ? "ACAD_PROXY_ENTITY" : "ACAD_PROXY_OBJECT";
    }

    /// What a damaged class is called may be none, or what parts of a drawing begin with.
    static bool isRecordName(std::string_view name) {
        static constexpr std::array<std::string_view, 9> parts{
            "SECTION", "ENDSEC", "TABLE", "ENDTAB", "BLOCK", "ENDBLK", "CLASS", "SEQEND", "EOF"};
        return !name.empty() && std::find(parts.begin(), parts.end(), name) == parts.end() &&
               std::all_of(name.begin(), name.end(), [](char c) { return c > ' ' && c < 0x7F; });
    }

    void giveFullName(const OrderedBlock& block) {
        std::uint16_t slot = 0;
        if (!m_fields.layout->findSlot("name", slot)) return;
        RecordValue name;
        name.run = {block.name.data(), 0, block.name.size()};
        m_fields.values.set(slot, name);
    }

    // What stands elsewhere

    void insert(std::size_t at, std::string_view groups) { m_chunk->text.insert(at, groups); }

    /// Flags, base point, path and description of a block are told by its table record; in the exchange form
    /// by its opening record.
    void completeBlock(const OrderedBlock& block, std::size_t begin) {
        std::string groups, tail;
        const DrawingStyle& style = m_rules.style;
        RecordFields& header = m_header;
        const bool hasHeader = block.header != noRecord &&
                               m_reading.read(m_rules.order.places[block.header].offset, header) &&
                               header.isKnown && header.type == blockHeader;
        const std::size_t mark = m_chunk->text.find("AcDbBlockBegin", begin);
        if (mark == std::string::npos) appendGroup(100, "AcDbBlockBegin", style, groups);
        appendName(2, block.name, style, groups);
        appendInteger(70, hasHeader ? flagsOf(header) : 0, style, groups);
        const RecordValue* const base = hasHeader ? header.value("base") : nullptr;
        for (int i = 0; i < 3; ++i) appendReal(10 + 10 * i, base ? base->real[i] : 0.0, style, groups);
        appendName(3, block.name, style, groups);
        const RecordValue* const path = hasHeader ? header.value("xrefpath") : nullptr;
        appendName(1, path ? m_reading.text(*path) : std::string(), style, groups);
        const RecordValue* const description = hasHeader ? header.value("description") : nullptr;
        if (description && description->run.count != 0)
            if (const std::string words = m_reading.text(*description); !words.empty())
                appendName(4, words, style, groups);
        // Its own transcript tells the name alone.
        std::string& all = m_chunk->text;
        const std::size_t name = begin + groupAt(std::string_view(all).substr(begin), 0, 2);
        const std::size_t extended = begin + groupAt(std::string_view(all).substr(begin), 0, 1001);
        if (name < extended) all.erase(name, groupEnd(all, name) - name);
        insert(std::min(name, extended), groups);
    }

    static std::int64_t flagsOf(const RecordFields& header) {
        const auto bit = [&](std::string_view name, std::int64_t mask) {
            const RecordValue* const value = header.value(name);
            return value && value->whole ? mask : 0;
        };
        return bit("anonymous", 1) | bit("hasatts", 2) | bit("isxref", 4) | bit("isoverlay", 8) |
               bit("xdep", 16);
    }

    /// Viewports are numbered in their layout, and stacked in the same order.
    void completeViewport(std::uint32_t number, std::size_t begin) {
        constexpr std::int64_t offFlag = 0x20000;
        const std::string_view own = std::string_view(m_chunk->text).substr(begin);
        const std::size_t target = groupAt(own, 0, 12);
        if (target == own.size() || groupAt(own, 0, 69) < own.size()) return;
        const RecordValue* const status = m_fields.value("status");
        const bool isOff = status && (status->whole & offFlag) != 0;
        std::string groups;
        appendInteger(68, isOff ? 0 : number, m_rules.style, groups);
        appendInteger(69, number, m_rules.style, groups);
        insert(begin + target, groups);
    }

    const WritingRules& m_rules;
    RecordReading m_reading;
    RecordTranscription m_transcription;
    RecordFields m_fields, m_header;
    Chunk* m_chunk = nullptr;
};

/// The chunks are taken one by one by whoever is free.
class Crew {
public:
    Crew(const WritingRules& rules, std::span<const RecordItem> items, const TranscribedDrawing& drawing)
        : m_rules(rules)
        , m_items(items)
        , m_drawing(drawing)
        , m_chunks((items.size() + itemsOfChunk - 1) / itemsOfChunk) {}

    std::vector<Chunk>& run() {
        const unsigned machine = std::min(workersOfMachine(), mostThreads);
        const std::size_t wanted =
            std::min<std::size_t>(m_rules.threads ? m_rules.threads : machine, m_chunks.size());
        {
            std::vector<std::jthread> threads;
            try {
                for (std::size_t i = 1; i < wanted; ++i) threads.emplace_back([this] { work(); });
            } catch (const std::system_error&) {
                // A machine that gives no more threads: those there do it all.
            }
            work();
        }
        if (m_failure) std::rethrow_exception(m_failure);
        return m_chunks;
    }

private:
    void work() noexcept {
        try {
            RecordWriter writer(m_rules, m_drawing);
            for (std::size_t i = m_next++; i < m_chunks.size() && !m_hasFailed; i = m_next++) {
                const std::size_t begin = i * itemsOfChunk;
                writer.write(m_items.subspan(begin, std::min(itemsOfChunk, m_items.size() - begin)),
                             m_chunks[i]);
            }
        } catch (...) {
            if (!m_hasFailed.exchange(true)) m_failure = std::current_exception();
        }
    }

    const WritingRules& m_rules;
    std::span<const RecordItem> m_items;
    const TranscribedDrawing& m_drawing;
    std::vector<Chunk> m_chunks;
    std::atomic<std::size_t> m_next = 0;
    std::atomic<bool> m_hasFailed = false;
    std::exception_ptr m_failure;
};

} // namespace

std::size_t groupAt(std::string_view text, std::size_t from, int code) {
    GroupScanner scanner(text, from);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup)
        if (group.code == code) return scanner.offsetOf(group.start);
    return text.size();
}

std::size_t groupEnd(std::string_view text, std::size_t at) {
    const std::size_t code = text.find('\n', at);
    const std::size_t value = code == std::string_view::npos ? code : text.find('\n', code + 1);
    return value == std::string_view::npos ? text.size() : value + 1;
}

void appendMissingBegin(const OrderedBlock& block, const DrawingStyle& style, std::string& bytes) {
    appendGroup(0, "BLOCK", style, bytes);
    appendHandle(330, block.handle, style, bytes);
    appendGroup(100, "AcDbEntity", style, bytes);
    appendGroup(8, "0", style, bytes);
    appendGroup(100, "AcDbBlockBegin", style, bytes);
    appendName(2, block.name, style, bytes);
    appendInteger(70, 0, style, bytes);
    for (const int code : {10, 20, 30}) appendReal(code, 0.0, style, bytes);
    appendName(3, block.name, style, bytes);
    appendGroup(1, "", style, bytes);
}

void appendMissingEnd(const OrderedBlock& block, const DrawingStyle& style, std::string& bytes) {
    appendGroup(0, "ENDBLK", style, bytes);
    appendHandle(330, block.handle, style, bytes);
    appendGroup(100, "AcDbEntity", style, bytes);
    appendGroup(8, "0", style, bytes);
    appendGroup(100, "AcDbBlockEnd", style, bytes);
}

std::vector<RecordItem> itemsOf(const DrawingOrder& order, std::size_t number) {
    const OrderedBlock& block = order.blocks[number];
    std::vector<RecordItem> items;
    items.reserve(block.entities.size());
    std::uint32_t viewports = 0;
    for (const MapIndex record : block.entities) {
        const bool isNumbered = block.isPaper && order.types[record] == viewport;
        items.push_back({record, static_cast<std::uint32_t>(number), isNumbered ? ++viewports : 0});
    }
    return items;
}

void writeRecords(const WritingRules& rules, std::span<const RecordItem> items, std::string& text,
                  TranscribedDrawing& drawing) {
    Crew crew(rules, items, drawing);
    for (Chunk& chunk : crew.run()) {
        const std::size_t begin = text.size();
        text += chunk.text;
        for (const Chunk::Written& written : chunk.written) {
            TranscribedRecord& record = drawing.records[written.record];
            record.text = begin + written.begin;
            record.length = written.length & lengthMask;
            record.isOpaque = written.isOpaque;
        }
        for (BinaryFault& fault : chunk.faults)
            drawing.container.addFault(fault.offset, std::move(fault.section), std::move(fault.reason));
        chunk = {};
    }
}

} // namespace hostkit
