#include "drawingencoding.h"

#include "binarysections.h"
#include "binarytranscription.h"
#include "drawingcompletion.h"
#include "headergathering.h"
#include "jobencoding.h"
#include "recordchoice.h"
#include "workers.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <thread>
#include <unordered_set>

namespace hostkit {
namespace {

constexpr unsigned firstClassNumber = 500;

/// The exchange form's tables with the records that hold them.
struct ControlKind {
    std::string_view table, layout, variable;
};
constexpr std::array<ControlKind, 9> controls{{{"BLOCK_RECORD", "BLOCK_CONTROL", "BLOCK_CONTROL"},
                                               {"LAYER", "LAYER_CONTROL", "LAYER_CONTROL"},
                                               {"STYLE", "STYLE_CONTROL", "STYLE_CONTROL"},
                                               {"LTYPE", "LTYPE_CONTROL", "LTYPE_CONTROL"},
                                               {"VIEW", "VIEW_CONTROL", "VIEW_CONTROL"},
                                               {"UCS", "UCS_CONTROL", "UCS_CONTROL"},
                                               {"VPORT", "VPORT_CONTROL", "VPORT_CONTROL"},
                                               {"APPID", "APPID_CONTROL", "APPID_CONTROL"},
                                               {"DIMSTYLE", "DIMSTYLE_CONTROL", "DIMSTYLE_CONTROL"}}};

} // namespace

/// Makes the records of one drawing.
class DrawingEncoding {
public:
    DrawingEncoding(ExchangeOutline outline, DrawingVersion version, unsigned codePage,
                    const DrawingText& coding, const DrawingOrigin& origin, EncodedDrawing& out)
        : m_outline(std::move(outline))
        , m_coding(coding)
        , m_version(version)
        , m_form(static_cast<int>(version) % 100)
        , m_codePage(codePage)
        , m_layouts(RecordLayouts::of(version))
        , m_original(origin.drawing && origin.drawing->container.version == version ? origin.drawing
                                                                                    : nullptr)
        , m_out(out) {
        if (m_original) m_before.emplace(origin.text);
    }

    bool run() {
        takeClasses();
        leaveOutUnknown();
        m_names = namesIn(m_outline, m_coding);
        m_lists = EncodingLists(m_outline, m_names, m_form);
        if (m_before) m_listsBefore = EncodingLists(*m_before, namesIn(*m_before, m_coding), m_form);
        addTables();
        for (std::size_t i = 0; i < m_outline.blocks.size(); ++i) addBlock(i);
        for (const OutlinedRecord& object : m_outline.objects) add(object, {});
        keepOthers();
        if (!encodeAll()) return false;
        countInstances();
        header();
        return true;
    }

private:
    // Kinds

    void takeClasses() {
        if (m_original) m_out.classes = m_original->classes;
        for (const OutlinedRecord& record : m_outline.classes) {
            const std::string_view groups = record.in(m_outline.text);
            BinaryClass made;
            made.dxfName = valueIn(groups, 1);
            if (classNumber(made.dxfName)) continue;
            made.className = valueIn(groups, 2);
            made.application = valueIn(groups, 3);
            made.proxyFlags = static_cast<int>(integerFromText(valueIn(groups, 90)).value_or(0));
            made.wasProxy = valueIn(groups, 280) == "1";
            made.isEntity = valueIn(groups, 281) == "1";
            addClass(std::move(made));
        }
        for (const std::string_view always : {"ACDBDICTIONARYWDFLT", "ACDBPLACEHOLDER", "LAYOUT"})
            (void)ownClassNumber(always, false);
    }

    void addClass(BinaryClass made) {
        made.number = firstClassNumber + static_cast<unsigned>(m_out.classes.size());
        m_out.classes.push_back(std::move(made));
    }

    [[nodiscard]] unsigned classNumber(std::string_view name) const {
        for (const BinaryClass& own : m_out.classes)
            if (own.dxfName == name) return own.number;
        return 0;
    }

    unsigned ownClassNumber(std::string_view name, bool isEntity) {
        if (const unsigned number = classNumber(name)) return number;
        addClass(usualClass(name, isEntity));
        return m_out.classes.back().number;
    }

    /// Layouts and placeholders have numbers of the drawing's own in the form 2000.
    unsigned typeOf(const RecordLayout& layout) {
        constexpr unsigned placeholder = 80, sheet = 82;
        if (m_form < 18 && layout.number == sheet) return ownClassNumber("LAYOUT", false);
        if (m_form < 18 && layout.number == placeholder) return ownClassNumber("ACDBPLACEHOLDER", false);
        return layout.number ? layout.number : ownClassNumber(layout.name, layout.isEntity);
    }

    // What is to be written

    [[nodiscard]] const TranscribedRecord* originalOf(std::uint64_t handle) const {
        return m_original ? m_original->find(handle) : nullptr;
    }

    /// False where the record cannot be written; it is listed then.
    bool choose(EncodingJob& job, std::string_view owner = {}) {
        const std::string_view groups = job.record.in(m_outline.text);
        const TranscribedRecord* const before = originalOf(job.record.handle);
        if (job.record.handle == 0) return leaveOut(groups, 0);
        if (before && before->isOpaque) return true;
        job.layout = layoutForGroups(m_layouts, groups, owner);
        if (job.layout && !before && !canBeNew(*job.layout, groups) && !replace(job, groups)) return false;
        if (job.layout) {
            job.type = typeOf(*job.layout);
            return true;
        }
        return before || leaveOut(groups, job.record.handle);
    }

    /// False where nothing can stand for the record, which is left out then.
    bool replace(EncodingJob& job, std::string_view groups) {
        job.layout = replacementOf(m_layouts, *job.layout);
        if (!job.layout) return leaveOut(groups, job.record.handle);
        const std::string_view kind = valueIn(groups, 0), became = job.layout->name;
        if (m_replaced.insert(job.record.handle).second)
            m_out.leftOut.add(std::wstring(kind.begin(), kind.end()),
                              std::wstring(became.begin(), became.end()), job.record.handle);
        return true;
    }

    bool leaveOut(std::string_view groups, std::uint64_t handle) {
        const std::string_view kind = valueIn(groups, 0);
        m_out.leftOut.add(std::wstring(kind.begin(), kind.end()), {}, handle);
        m_gone.insert(handle);
        return false;
    }

    /// Entities that cannot be written stand in no list of those that hold them.
    void leaveOutUnknown() {
        for (const OutlinedRecord& stray : m_outline.strays) leaveOut(stray.in(m_outline.text), stray.handle);
        for (OutlinedBlock& block : m_outline.blocks)
            std::erase_if(block.entities, [this](const OutlinedEntity& entity) {
                EncodingJob job;
                job.record = entity.record;
                return !choose(job);
            });
        std::erase_if(m_outline.objects, [this](const OutlinedRecord& object) {
            EncodingJob job;
            job.record = object;
            return !choose(job);
        });
        leaveOutOrphans();
    }

    /// What belongs to a record that is left out goes with it: extension dictionaries and all below them.
    void leaveOutOrphans() {
        const auto isOrphan = [this](const OutlinedRecord& object) {
            return m_gone.contains(object.owner) && !originalOf(object.handle) &&
                   !leaveOut(object.in(m_outline.text), object.handle);
        };
        while (!m_gone.empty() && std::erase_if(m_outline.objects, isOrphan) > 0) {
        }
    }

    /// What of a record does not go along, and what becomes of it.
    void tell(const EncodingJob& job, std::wstring_view part, std::wstring_view became) {
        const std::string_view kind = valueIn(job.record.in(m_outline.text), 0);
        m_out.leftOut.add(std::wstring(kind.begin(), kind.end()) += part, became, job.record.handle);
    }

    bool add(const OutlinedRecord& record, const RecordLinks& links) {
        EncodingJob job;
        job.record = record;
        job.links = links;
        job.isPlaceKept = true;
        if (!choose(job)) return false;
        m_jobs.push_back(job);
        return true;
    }

    void addTables() {
        for (std::size_t i = 0; i < m_outline.tables.size(); ++i) {
            const OutlinedTable& table = m_outline.tables[i];
            const auto kind = std::find_if(controls.begin(), controls.end(),
                                           [&](const ControlKind& one) { return one.table == table.name; });
            if (kind == controls.end()) continue;
            addControl(table, kind->layout, i);
            if (table.name == "BLOCK_RECORD") continue; // with their blocks
            for (const OutlinedRecord& record : table.records) add(record, {});
        }
        for (const ControlKind& kind : controls)
            if (!m_outline.table(kind.table)) addEmptyControl(kind);
    }

    /// Every binary drawing has all tables.
    void addEmptyControl(const ControlKind& kind) {
        if (m_original && m_original->find(m_original->header.handle(kind.variable))) return;
        EncodingJob job;
        job.layout = m_layouts.byName(kind.layout);
        job.type = job.layout->number;
        job.record.handle = takeHandle();
        m_emptyControls.emplace_back(kind.variable, job.record.handle);
        m_jobs.push_back(job);
    }

    void addControl(const OutlinedTable& table, std::string_view layout, std::size_t number) {
        EncodingJob job;
        job.record = table.head;
        job.layout = m_layouts.byName(layout);
        job.type = job.layout->number;
        job.kind = EncodingJob::Kind::control;
        job.list = number;
        const OutlinedTable* const before = m_before ? m_before->table(table.name) : nullptr;
        job.isPlaceKept =
            before && std::equal(table.records.begin(), table.records.end(), before->records.begin(),
                                 before->records.end(), [](const OutlinedRecord& a, const OutlinedRecord& b) {
                                     return a.handle == b.handle;
                                 });
        m_jobs.push_back(job);
    }

    void addBlock(std::size_t number) {
        const OutlinedBlock& block = m_outline.blocks[number];
        const OutlinedRecord* const header = m_lists.blockRecord(block.handle);
        if (!header) return;
        const int mode = m_lists.modeOf(block.handle);
        RecordLinks links;
        links.entityMode = mode;
        links.owner = mode == 0 ? block.handle : 0;
        add(block.begin, links);
        for (std::size_t i = 0; i < block.entities.size(); ++i) addEntity(block, i, links);
        add(block.end, links);
        EncodingJob job;
        job.record = *header;
        job.kind = EncodingJob::Kind::blockHeader;
        job.list = number;
        job.isPlaceKept = isBlockAsItWas(block);
        if (choose(job)) m_jobs.push_back(job);
    }

    [[nodiscard]] bool isBlockAsItWas(const OutlinedBlock& block) const {
        const OutlinedBlock* const before = m_before ? m_before->block(block.handle) : nullptr;
        return before && before->begin.in(m_before->text) == block.begin.in(m_outline.text) &&
               before->begin.handle == block.begin.handle && before->end.handle == block.end.handle &&
               std::equal(block.entities.begin(), block.entities.end(), before->entities.begin(),
                          before->entities.end(),
                          [](const OutlinedEntity& a, const OutlinedEntity& b) {
                              return a.record.handle == b.record.handle;
                          }) &&
               m_lists.insertsOf(block.handle) == m_listsBefore.insertsOf(block.handle);
    }

    void addEntity(const OutlinedBlock& block, std::size_t at, RecordLinks links) {
        const OutlinedEntity& entity = block.entities[at];
        EncodingJob job;
        job.record = entity.record;
        job.links = links;
        m_lists.link(entity.record.handle, job.links);
        job.isPlaceKept = !m_before || m_lists.isLinkedAs(m_listsBefore, entity.record.handle);
        job.kind = entity.partCount ? EncodingJob::Kind::sequence : EncodingJob::Kind::plain;
        job.list = entity.firstPart;
        if (!choose(job)) return;
        if (entity.partCount) {
            job.isPlaceKept =
                job.isPlaceKept && m_before &&
                m_lists.partsOf(entity.record.handle) == m_listsBefore.partsOf(entity.record.handle);
            addParts(entity);
        }
        m_jobs.push_back(job);
    }

    void addParts(const OutlinedEntity& entity) {
        for (std::uint32_t i = 0; i < entity.partCount; ++i) {
            EncodingJob job;
            job.record = m_outline.parts[entity.firstPart + i];
            job.links.owner = entity.record.handle;
            m_lists.link(job.record.handle, job.links);
            job.isPlaceKept = !m_before || m_lists.isLinkedAs(m_listsBefore, job.record.handle);
            if (choose(job, entity.record.in(m_outline.text))) m_jobs.push_back(job);
        }
    }

    /// Records that the exchange form has no place for: views of sheets in the form 2000.
    void keepOthers() {
        if (m_form >= 18) return;
        constexpr unsigned viewportControl = 70, viewportHeader = 71;
        bool hasControl = false;
        if (m_original) {
            const RecordReading reading(m_original->container, m_original->classes);
            for (const TranscribedRecord& record : m_original->records) {
                const unsigned type = reading.typeAt(record.offset);
                if (type != viewportControl && type != viewportHeader) continue;
                hasControl = hasControl || type == viewportControl;
                if (type == viewportControl) m_viewportControl = record.handle;
                EncodingJob job;
                job.record.handle = record.handle;
                m_jobs.push_back(job);
            }
        }
        if (hasControl) return;
        EncodingJob job;
        job.layout = m_layouts.byName("VP_ENT_HDR_CONTROL");
        job.type = viewportControl;
        job.record.handle = m_viewportControl = takeHandle();
        m_jobs.push_back(job);
    }

    std::uint64_t takeHandle() {
        return m_lastHandle = std::max(m_lastHandle, m_outline.highestHandle()) + 1;
    }

    // Writing

    bool encodeAll() {
        constexpr std::size_t fewest = 20000; // a thread is not worth less
        const std::size_t threads = std::clamp<std::size_t>(m_jobs.size() / fewest, 1, workersOfMachine());
        std::vector<EncodedChunk> chunks(threads);
        const EncodingContext context{m_version,  m_codePage, m_outline, m_before ? &*m_before : nullptr,
                                      m_original, m_names,    m_lists,   m_gone};
        const auto work = [&](std::size_t number) {
            const std::size_t begin = m_jobs.size() * number / threads;
            const std::size_t end = m_jobs.size() * (number + 1) / threads;
            JobEncoding encoding(context);
            for (std::size_t i = begin; i < end; ++i) encoding.write(m_jobs[i], chunks[number]);
        };
        std::vector<std::thread> others;
        for (std::size_t i = 1; i < threads; ++i) others.emplace_back(work, i);
        work(0);
        for (std::thread& other : others) other.join();
        return join(chunks);
    }

    bool join(std::vector<EncodedChunk>& chunks) {
        for (EncodedChunk& chunk : chunks) {
            for (ObjectPlace place : chunk.places) {
                place.offset += m_out.objects.size();
                m_out.places.push_back(place);
            }
            m_out.objects.insert(m_out.objects.end(), chunk.bytes.begin(), chunk.bytes.end());
            m_out.recordsKept += chunk.kept;
            for (const EncodingJob* const job : chunk.failed)
                leaveOut(job->record.in(m_outline.text), job->record.handle);
            for (const EncodingJob* const job : chunk.shortened)
                tell(*job, L" text", L"its first 65535 characters");
            for (const EncodingJob* const job : chunk.withoutData) tell(*job, L" extended data", {});
        }
        std::sort(m_out.places.begin(), m_out.places.end(),
                  [](const ObjectPlace& a, const ObjectPlace& b) { return a.handle < b.handle; });
        const auto doubled = std::adjacent_find(
            m_out.places.begin(), m_out.places.end(),
            [](const ObjectPlace& a, const ObjectPlace& b) { return a.handle == b.handle; });
        if (doubled == m_out.places.end()) return true;
        m_out.fault = L"two records have one handle";
        return false;
    }

    /// Classes tell how many records they have; a changed drawing's count what came and went.
    void countInstances() {
        std::map<unsigned, std::int32_t> counts;
        const auto isWritten = [&](std::uint64_t handle) {
            const auto place =
                std::lower_bound(m_out.places.begin(), m_out.places.end(), handle,
                                 [](const ObjectPlace& one, std::uint64_t own) { return one.handle < own; });
            return place != m_out.places.end() && place->handle == handle;
        };
        if (m_original) {
            const RecordReading reading(m_original->container, m_original->classes);
            for (const TranscribedRecord& record : m_original->records)
                if (!isWritten(record.handle)) --counts[reading.typeAt(record.offset)];
        }
        for (const EncodingJob& job : m_jobs)
            if (job.type >= firstClassNumber && !originalOf(job.record.handle) &&
                isWritten(job.record.handle))
                ++counts[job.type];
        for (BinaryClass& one : m_out.classes)
            one.instances = std::max(0, one.instances + counts[one.number]);
    }

    // The header

    void header() {
        BinaryHeader& header = m_out.header;
        if (m_original) header = m_original->header;
        gatherHeader(m_outline, m_version, m_codePage, m_names, header, m_before ? &*m_before : nullptr);
        for (const ControlKind& kind : controls)
            if (const OutlinedTable* const table = m_outline.table(kind.table))
                header.values[std::string(kind.variable)] = HeaderReference{table->head.handle};
        for (const auto& [variable, handle] : m_emptyControls)
            header.values[std::string(variable)] = HeaderReference{handle};
        header.values["VP_ENT_HDR_CONTROL"] = HeaderReference{m_viewportControl};
        for (const auto& [name, handle] : m_lists.roots()) header.values[name] = HeaderReference{handle};
        std::uint64_t seed = m_out.places.empty() ? 1 : m_out.places.back().handle + 1;
        seed = std::max({seed, m_lastHandle + 1, header.handle("HANDSEED")});
        header.values["HANDSEED"] = HeaderReference{seed};
        m_out.isMetric = headerValueIn(m_outline, "$MEASUREMENT") == "1";
    }

    ExchangeOutline m_outline;
    DrawingText m_coding;
    DrawingVersion m_version;
    int m_form;
    unsigned m_codePage;
    const RecordLayouts& m_layouts;
    const TranscribedDrawing* m_original;
    std::optional<ExchangeOutline> m_before;
    EncodedDrawing& m_out;
    RecordNames m_names;
    EncodingLists m_lists, m_listsBefore;
    std::set<std::uint64_t> m_replaced;
    std::unordered_set<std::uint64_t> m_gone; ///< left out
    std::vector<EncodingJob> m_jobs;
    std::vector<std::pair<std::string_view, std::uint64_t>> m_emptyControls;
    std::uint64_t m_viewportControl = 0, m_lastHandle = 0;
};

bool encodeDrawing(const ExchangeOutline& outline, DrawingVersion version, unsigned codePage,
                   const DrawingOrigin& origin, EncodedDrawing& encoded) {
    const DrawingText coding(isUtf8(version) ? CodePage::utf8 : codePageOf(codePage));
    const std::string whole = completedDrawing(outline, version, coding);
    return DrawingEncoding(whole.empty() ? outline : ExchangeOutline(whole, outline), version, codePage,
                           coding, origin, encoded)
        .run();
}

} // namespace hostkit
