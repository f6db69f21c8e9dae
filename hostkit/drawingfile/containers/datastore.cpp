#include "datastore.h"

#include <algorithm>

namespace hostkit {

namespace {

const char* const storeName = "AcDb:AcDsPrototype_1b";
constexpr std::uint32_t storeMark = 0x6472616A, blobMark = 0xBB106BB1;
constexpr std::size_t segmentHead = 48, recordHead = 20;
constexpr std::size_t segmentsField = 0x18, countField = 0x20, schemaField = 0x24, dataField = 0x28;

class StoreReading {
public:
    explicit StoreReading(BinaryContainer& container)
        : m_container(container)
        , m_bytes(container.section(storeName)) {}

    std::vector<StoredData> run() {
        if (m_bytes.empty()) return {};
        if (longAt(m_bytes, 0) != storeMark) {
            m_container.addFault(0, storeName, L"the section does not begin as it has to");
            return {};
        }
        findSegments();
        findNames();
        const ByteSpan index = segmentOf(longAt(m_bytes, dataField));
        const std::size_t count = std::min<std::size_t>(longAt(index, segmentHead), index.size() / 12);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = segmentHead + 8 + i * 12;
            if (const std::uint32_t segment = longAt(index, at))
                record(segment, longAt(index, at + 4), longAt(index, at + 8));
        }
        return std::move(m_found);
    }

private:
    struct Segment {
        std::size_t offset = 0, size = 0;
    };

    void findSegments() {
        const ByteSpan index = partOf(m_bytes, longAt(m_bytes, segmentsField), m_bytes.size());
        const std::size_t count = std::min<std::size_t>(longAt(m_bytes, countField), index.size() / 12);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = segmentHead + i * 12;
            m_segments.push_back({static_cast<std::size_t>(longLongAt(index, at)), longAt(index, at + 8)});
        }
    }

    ByteSpan segmentOf(std::uint32_t number) const {
        if (number >= m_segments.size()) return {};
        return partOf(m_bytes, m_segments[number].offset, m_segments[number].size);
    }

    /// Names stand last in the index of schemas, aligned to 16, behind their number.
    void findNames() {
        const ByteSpan index = segmentOf(longAt(m_bytes, schemaField));
        for (std::size_t at = segmentHead; at + 4 <= index.size(); at += 16)
            if (takeNames(index.subspan(at))) return;
    }

    bool takeNames(ByteSpan bytes) {
        const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        std::vector<std::string_view> names;
        std::size_t at = 4;
        for (std::size_t left = longAt(bytes, 0); left > 0; --left) {
            const std::size_t end = text.find('\0', at);
            if (end == std::string_view::npos || end == at) return false;
            names.push_back(text.substr(at, end - at));
            const auto isPrinted = [](char c) { return c > ' ' && c < 0x7F; };
            if (!std::all_of(names.back().begin(), names.back().end(), isPrinted)) return false;
            at = end + 1;
        }
        if (names.empty()) return false;
        m_names = std::move(names);
        return true;
    }

    void record(std::uint32_t segmentNumber, std::uint32_t headOffset, std::uint32_t schema) {
        const ByteSpan segment = segmentOf(segmentNumber);
        const std::size_t head = segmentHead + headOffset;
        const std::size_t at = std::size_t(longAt(segment, 36)) * 16 + longAt(segment, head + 16);
        if (segment.size() < head + recordHead || segment.size() < at + 4)
            return m_container.addFault(
                segmentNumber < m_segments.size() ? m_segments[segmentNumber].offset : 0, storeName,
                L"a record of the data store lies past the end of its segment");
        StoredData data;
        data.handle = longLongAt(segment, head + 8);
        if (schema < m_names.size()) data.kind = m_names[schema];
        const std::uint32_t length = longAt(segment, at);
        const ByteSpan bytes = partOf(segment, at + 4, length);
        if (length == blobMark)
            takePages(segment.subspan(at + 4), data.bytes);
        else if (bytes.size() == length)
            data.bytes.assign(bytes.begin(), bytes.end());
        if (data.bytes.empty())
            return m_container.addFault(m_segments[segmentNumber].offset + at, storeName,
                                        L"data of the store are longer than their segment");
        m_found.push_back(std::move(data));
    }

    /// Data of many pages, each in a segment of its own.
    void takePages(ByteSpan list, std::vector<std::uint8_t>& bytes) const {
        constexpr std::size_t listHead = 32, pageHead = 32;
        const std::uint64_t total = longLongAt(list, 0);
        const std::size_t count = std::min<std::size_t>(longAt(list, 8), list.size() / 8);
        for (std::size_t i = 0; i < count; ++i) {
            const ByteSpan page = segmentOf(longAt(list, listHead + i * 8));
            const std::uint64_t size = longLongAt(page, segmentHead + 24);
            const ByteSpan part = partOf(page, segmentHead + pageHead, static_cast<std::size_t>(size));
            if (part.size() != size || bytes.size() + part.size() > total) return bytes.clear();
            bytes.insert(bytes.end(), part.begin(), part.end());
        }
        if (bytes.size() != total) bytes.clear();
    }

    BinaryContainer& m_container;
    ByteSpan m_bytes;
    std::vector<Segment> m_segments;
    std::vector<std::string_view> m_names;
    std::vector<StoredData> m_found;
};

} // namespace

std::vector<StoredData> readDataStore(BinaryContainer& container) { return StoreReading(container).run(); }

} // namespace hostkit
