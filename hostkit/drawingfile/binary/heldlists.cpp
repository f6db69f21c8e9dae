#include "heldlists.h"

#include "transcriptvalues.h"

#include <array>

namespace hostkit {
namespace {

BinaryHandle to(std::uint64_t handle, unsigned code) { return {static_cast<std::uint8_t>(code), handle}; }

struct Values {
    const RecordLayout& layout;
    RecordScope& scope;

    void whole(std::string_view name, std::int64_t value) {
        RecordValue made;
        made.whole = value;
        put(name, made);
    }
    void reference(std::string_view name, std::uint64_t handle, unsigned code) {
        RecordValue made;
        made.reference = to(handle, code);
        put(name, made);
    }
    void references(std::string_view name, const std::vector<std::uint64_t>& handles, unsigned code) {
        std::uint16_t slot = 0;
        if (!layout.findSlot(name, slot)) return;
        std::vector<RecordValue>& all = scope.array(slot);
        all.clear();
        for (const std::uint64_t handle : handles) all.emplace_back().reference = to(handle, code);
    }
    void put(std::string_view name, const RecordValue& value) {
        std::uint16_t slot = 0;
        if (layout.findSlot(name, slot)) scope.set(slot, value);
    }
};

class HeldLists {
public:
    explicit HeldLists(const EncodingContext& context)
        : m_context(context) {}

    void add(const EncodingJob& job, Values values, std::vector<std::string>& texts) const {
        switch (job.kind) {
        case EncodingJob::Kind::control:
            return controlLists(job, values);
        case EncodingJob::Kind::blockHeader:
            return blockLists(m_context.outline.blocks[job.list], values, texts);
        case EncodingJob::Kind::sequence:
            return sequenceLists(job, values);
        default:
            // An insert without attributes tells so.
            if (const std::uint16_t slot = values.layout.common.hasAttributes)
                values.scope.set(slot).whole = 0;
        }
    }

private:
    void controlLists(const EncodingJob& job, Values& values) const {
        const OutlinedTable& table = m_context.outline.tables[job.list];
        std::vector<std::uint64_t> entries;
        for (const OutlinedRecord& record : table.records) {
            const std::string_view kind = m_context.lists.standsApart(table.name, record);
            if (kind.empty())
                entries.push_back(record.handle);
            else
                values.reference(kind, record.handle, 3);
        }
        values.whole("nentries", static_cast<std::int64_t>(entries.size()));
        values.references("entries", entries, 2);
    }

    void blockLists(const OutlinedBlock& block, Values& values, std::vector<std::string>& texts) const {
        std::vector<std::uint64_t> owned;
        bool hasDefinitions = false;
        for (const OutlinedEntity& entity : block.entities) {
            owned.push_back(entity.record.handle);
            hasDefinitions =
                hasDefinitions || valueIn(entity.record.in(m_context.outline.text), 0) == "ATTDEF";
        }
        const std::string_view begin = block.begin.in(m_context.outline.text);
        blockFields(begin, m_context.lists.modeOf(block.handle) == 0, hasDefinitions, values, texts);
        values.reference("block", block.begin.handle, 3);
        values.reference("endblk", block.end.handle, 3);
        values.whole("nowned", static_cast<std::int64_t>(owned.size()));
        values.references("owned", owned, 3);
        values.reference("first", owned.empty() ? 0 : owned.front(), 4);
        values.reference("last", owned.empty() ? 0 : owned.back(), 4);
        const std::vector<std::uint64_t>& inserts = m_context.lists.insertsOf(block.handle);
        values.whole("ninserts", static_cast<std::int64_t>(inserts.size()));
        values.references("inserts", inserts, 4);
    }

    /// What the exchange form tells with the block in place of its record.
    static void blockFields(std::string_view begin, bool isNoSpace, bool hasDefinitions, Values& values,
                            std::vector<std::string>& texts) {
        constexpr int isReference = 4, isOverlay = 8;
        const auto flags = integerFromText(valueIn(begin, 70)).value_or(0);
        const std::string_view name = valueIn(begin, 2);
        values.whole("anonymous", isNoSpace && name.starts_with('*') && !name.starts_with("*Paper_Space"));
        values.whole("hasatts", hasDefinitions);
        values.whole("isxref", (flags & isReference) != 0);
        values.whole("isoverlay", (flags & isOverlay) != 0);
        RecordValue base;
        for (int i = 0; i < 3; ++i) base.real[i] = realFromText(valueIn(begin, 10 + 10 * i)).value_or(0.0);
        values.put("base", base);
        texts.clear();
        texts.reserve(2);
        for (const auto& [field, code] : {std::pair("xrefpath", 1), std::pair("description", 4)}) {
            texts.emplace_back();
            appendUnescaped(valueIn(begin, code), texts.back());
            RecordValue run;
            run.run = {texts.back().data(), 0, texts.back().size()};
            values.put(field, run);
        }
    }

    void sequenceLists(const EncodingJob& job, Values& values) const {
        std::vector<std::uint64_t> held;
        std::uint64_t end = 0;
        for (const std::uint64_t part : m_context.lists.partsOf(job.record.handle)) {
            if (m_context.lists.isSequenceEnd(part))
                end = part;
            else
                held.push_back(part);
        }
        const std::uint64_t first = held.empty() ? 0 : held.front(), last = held.empty() ? 0 : held.back();
        values.whole("hasattr", !held.empty());
        values.whole("nowned", static_cast<std::int64_t>(held.size()));
        for (const std::string_view name : {"vertices", "attribs"}) values.references(name, held, 3);
        for (const std::string_view name : {"firstvertex", "firstattrib"}) values.reference(name, first, 4);
        for (const std::string_view name : {"lastvertex", "lastattrib"}) values.reference(name, last, 4);
        values.reference("seqend", end, 3);
    }

    const EncodingContext& m_context;
};

} // namespace

void addHeldLists(const EncodingContext& context, const EncodingJob& job, const RecordLayout& layout,
                  RecordScope& values, std::vector<std::string>& texts) {
    HeldLists(context).add(job, {layout, values}, texts);
}

} // namespace hostkit
