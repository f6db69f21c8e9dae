#include "jobencoding.h"

#include "heldlists.h"
#include "transcriptvalues.h"

namespace hostkit {
namespace {

/// The groups of a dictionary without the entries that lead to such records.
std::string withoutEntries(std::string_view record, const std::unordered_set<std::uint64_t>& gone) {
    std::string kept;
    kept.reserve(record.size());
    GroupScanner scanner(record);
    RawGroup group;
    std::size_t keptTo = 0, nameAt = record.size();
    while (scanner.next(group) == ScanResult::kGroup) {
        if (group.code == 3) nameAt = scanner.offsetOf(group.start);
        const bool leads = group.code == 350 || group.code == 360;
        if (!leads || nameAt == record.size()) continue; // the one ahead is the extension dictionary
        if (gone.contains(handleFromText(withoutBlanks(group.value)).value_or(0))) {
            kept.append(record.substr(keptTo, nameAt - keptTo));
            keptTo = scanner.offset();
        }
        nameAt = record.size();
    }
    return kept.append(record.substr(keptTo));
}

} // namespace

JobEncoding::JobEncoding(const EncodingContext& context)
    : m_context(context)
    , m_gathering(context.version, context.codePage, context.names)
    , m_encoding(context.version) {
    m_encoding.leadNowhere(context.gone);
    if (context.original) m_reading.emplace(context.original->container, context.original->classes);
}

void JobEncoding::write(const EncodingJob& job, EncodedChunk& chunk) {
    const std::size_t offset = chunk.bytes.size();
    const TranscribedRecord* const before = m_context.originalOf(job.record.handle);
    if (before && isAsItWas(job, *before) && copy(*before, chunk.bytes)) {
        ++chunk.kept;
    } else if (!encode(job, before, chunk.bytes)) {
        chunk.failed.push_back(&job);
        return;
    } else {
        if (m_encoding.hasShortened()) chunk.shortened.push_back(&job);
        if (m_gathering.hasLostData()) chunk.withoutData.push_back(&job);
    }
    chunk.places.push_back({job.record.handle, offset});
}

bool JobEncoding::isAsItWas(const EncodingJob& job, const TranscribedRecord& before) const {
    if (!job.record.isThere()) return true;
    if (!job.isPlaceKept) return false;
    // The head of a table tells how many records follow; those are looked at one by one.
    if (job.kind == EncodingJob::Kind::control) return true;
    return m_context.before->text.substr(before.text, before.length) == job.record.in(m_context.outline.text);
}

bool JobEncoding::copy(const TranscribedRecord& before, std::vector<std::uint8_t>& bytes) const {
    const ByteSpan record = m_reading->recordAt(before.offset);
    bytes.insert(bytes.end(), record.begin(), record.end());
    return !record.empty();
}

bool JobEncoding::encode(const EncodingJob& job, const TranscribedRecord* before,
                         std::vector<std::uint8_t>& bytes) {
    const bool hasFields = before && m_reading->read(before->offset, m_fields);
    const RecordLayout* const layout = job.layout ? job.layout : hasFields ? m_fields.layout : nullptr;
    if (!layout) return false;
    const bool isSameKind = hasFields && m_fields.layout == layout;
    m_gathering.setOriginal(isSameKind ? &*m_reading : nullptr, isSameKind ? &m_fields : nullptr);
    m_encoding.setOriginal(isSameKind ? &*m_reading : nullptr, isSameKind ? &m_fields : nullptr);
    m_values.clear();
    if (job.record.isThere()) {
        scan(job, *layout);
        m_gathering.gather(m_record, *layout, job.links, m_values);
        dropReactors(*layout);
    }
    addHeldLists(m_context, job, *layout, m_values, m_texts);
    if (!isSameKind) completeReferences(m_context.names, *layout, m_values);
    if (job.record.isThere()) addViewports(m_context.outline, *layout, m_values);
    return m_encoding.append(*layout, isSameKind ? m_fields.type : job.type, job.record.handle, m_values,
                             bytes);
}

// What is left out has no entry in a dictionary.
void JobEncoding::scan(const EncodingJob& job, const RecordLayout& layout) {
    const std::string_view text = m_context.outline.text;
    const bool isDictionary = layout.name == "DICTIONARY" || layout.name == "ACDBDICTIONARYWDFLT";
    if (!isDictionary || m_context.gone.empty())
        return scanRecordAt(text, job.record.offset, job.record.length, m_record);
    m_dictionary = withoutEntries(job.record.in(text), m_context.gone);
    scanRecordAt(m_dictionary, 0, m_dictionary.size(), m_record);
}

// What is left out is told of no change.
void JobEncoding::dropReactors(const RecordLayout& layout) {
    const std::unordered_set<std::uint64_t>& gone = m_context.gone;
    if (gone.empty() || !layout.common.reactors) return;
    std::vector<RecordValue>& reactors = m_values.array(layout.common.reactors);
    std::erase_if(reactors,
                  [&](const RecordValue& reactor) { return gone.contains(reactor.reference.value); });
    if (const std::uint16_t count = layout.common.reactorCount)
        m_values.set(count).whole = static_cast<std::int64_t>(reactors.size());
}

} // namespace hostkit
