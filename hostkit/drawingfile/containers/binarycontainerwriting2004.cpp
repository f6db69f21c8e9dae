// The forms 2004, 2010, 2013 and 2018, written: sections cut into packed pages, and the two maps.
#include "binarychecksums.h"
#include "binarycontainerwriting.h"
#include "binarysections.h"
#include "pagecompression.h"
#include "workers.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>

namespace hostkit {
namespace {

constexpr std::size_t headerAt = 0x80, headerSize = 0x6C, pagesAt = 0x100, pageHeadSize = 0x20;
constexpr std::size_t packedCapacity = 0x7400, pageUnit = 0x20, systemHeadSize = 20;
constexpr std::uint32_t pageMapMark = 0x41630E3B, sectionMapMark = 0x4163003B, dataPageMark = 0x4163043B;
constexpr std::uint32_t dataPageScramble = 0x4164536B;

/// Sections in the order in which they stand in the file; others stand behind those that are not packed.
struct KnownSection {
    std::string_view name;
    std::uint32_t id; ///< 0: the next that is free
    bool isPacked;
};
constexpr std::array<KnownSection, 15> knownSections{{{"AcDb:SummaryInfo", 9, false},
                                                      {"AcDb:Preview", 10, false},
                                                      {"AcDb:AppInfo", 11, false},
                                                      {"AcDb:AppInfoHistory", 12, false},
                                                      {"AcDb:FileDepList", 0, false},
                                                      {"AcDb:VBAProject", 0, false},
                                                      {"AcDb:AcDsPrototype_1b", 13, true},
                                                      {"AcDb:RevHistory", 8, true},
                                                      {"AcDb:AcDbObjects", 7, true},
                                                      {"AcDb:ObjFreeSpace", 6, true},
                                                      {"AcDb:Template", 5, true},
                                                      {"AcDb:Handles", 4, true},
                                                      {"AcDb:Classes", 3, true},
                                                      {"AcDb:AuxHeader", 2, true},
                                                      {"AcDb:Header", 1, true}}};
constexpr std::uint32_t firstFreeId = 14;
/// Follow from other data, or vouch for other bytes.
constexpr std::array<std::string_view, 5> notCopied{"AcDb:AcDbObjects", "AcDb:Handles", "AcDb:AuxHeader",
                                                    "AcDb:Security", "AcDb:Signature"};

std::size_t roundedUp(std::size_t size, std::size_t unit) { return (size + unit - 1) / unit * unit; }

/// Bytes that scramble the header and fill up pages.
const std::array<std::uint8_t, 256>& magicSequence() {
    static const std::array<std::uint8_t, 256> sequence = [] {
        std::array<std::uint8_t, 256> bytes{};
        std::uint32_t random = 1;
        for (std::uint8_t& byte : bytes) {
            random = random * 0x343FD + 0x269EC3;
            byte = static_cast<std::uint8_t>(random >> 16);
        }
        return bytes;
    }();
    return sequence;
}

void fill(std::vector<std::uint8_t>& file) {
    const std::size_t count = roundedUp(file.size(), pageUnit) - file.size();
    append(file, ByteSpan(magicSequence()).first(count));
}

struct Page {
    std::size_t section = 0, offset = 0; ///< of its first byte in the section
    std::vector<std::uint8_t> stored;    ///< empty: it has zeros alone
    std::uint32_t sum = 0;
};

struct Section {
    std::string name;
    std::uint32_t id = 0;
    bool isPacked = true;
    std::vector<std::uint8_t> own; ///< what stands before `rest`
    ByteSpan rest;
    std::size_t capacity = packedCapacity;
    std::vector<std::pair<std::uint32_t, const Page*>> pages; ///< by number

    [[nodiscard]] std::size_t size() const { return own.size() + rest.size(); }
    void copy(std::size_t offset, std::span<std::uint8_t> to) const {
        const ByteSpan first = partOf(own, offset, to.size());
        std::ranges::copy(first, to.begin());
        const std::size_t from = offset > own.size() ? offset - own.size() : 0;
        std::ranges::copy(partOf(rest, from, to.size() - first.size()),
                          to.begin() + static_cast<std::ptrdiff_t>(first.size()));
    }
};

class Container2004 {
public:
    Container2004(const BinaryContainer& container, const BinaryHeader& header, const BinaryRecords& records)
        : m_container(container) {
        gather(header, records);
        place();
    }

    [[nodiscard]] std::vector<std::uint8_t> run() {
        cut();
        pack();
        std::size_t size = 0;
        for (const Page& page : m_pages) size += pageHeadSize + roundedUp(page.stored.size(), pageUnit);
        m_file.reserve(size + 0x10000);
        m_file.resize(pagesAt);
        for (const Page& page : m_pages) write(page);
        const auto sectionMapNumber = static_cast<std::uint32_t>(m_sizes.size() + 1);
        writeSystemPage(sectionMapMark, sectionMap());
        const std::size_t pageMapAt = m_file.size();
        writePageMap();
        writeHeads(sectionMapNumber, pageMapAt);
        return std::move(m_file);
    }

private:
    void gather(const BinaryHeader& header, const BinaryRecords& records) {
        for (const auto& [name, bytes] : m_container.sections)
            if (!name.empty() && std::ranges::find(notCopied, name) == notCopied.end()) {
                m_sections.emplace_back().name = name;
                m_sections.back().rest = bytes;
            }
        std::vector<std::uint8_t> mark;
        appendNumber(mark, recordsMark, 4);
        std::vector<ObjectPlace> places = records.places;
        for (ObjectPlace& one : places) one.offset += mark.size();
        add("AcDb:AcDbObjects", std::move(mark)).rest = records.bytes;
        add("AcDb:Handles", writeObjectMap(places));
        add("AcDb:AuxHeader", auxHeaderOf(m_container, header));
        ifMissing("AcDb:SummaryInfo", [&] { return propertiesOf(m_container, header); });
        ifMissing("AcDb:Preview", makeEmptyPreview);
        ifMissing("AcDb:AppInfo", makeAppInfo);
        ifMissing("AcDb:RevHistory", makeRevisionHistory);
        ifMissing("AcDb:ObjFreeSpace",
                  [&] { return makeFreeSpace(m_container, header, records.places.size()); });
        ifMissing("AcDb:Template", [&] { return writeMeasurement(m_container, 0); });
    }

    static std::vector<std::uint8_t> propertiesOf(const BinaryContainer& form, const BinaryHeader& header) {
        const auto date = [&](const char* day, const char* milliseconds) {
            return BinaryDate{static_cast<std::uint32_t>(header.whole(day)),
                              static_cast<std::uint32_t>(header.whole(milliseconds))};
        };
        DrawingProperties properties;
        properties.editingTime = date("TDINDWG_days", "TDINDWG_ms");
        properties.created = date("TDCREATE_day", "TDCREATE_ms");
        properties.updated = date("TDUPDATE_day", "TDUPDATE_ms");
        return writeProperties(form, properties);
    }

    Section& add(const char* name, std::vector<std::uint8_t> bytes) {
        Section& section = m_sections.emplace_back();
        section.name = name;
        section.own = std::move(bytes);
        return section;
    }

    template <class Make>
    void ifMissing(const char* name, Make make) {
        if (std::ranges::find(m_sections, name, &Section::name) == m_sections.end()) add(name, make());
    }

    /// Gives each section its number, its place in the file, and how it is stored.
    void place() {
        std::uint32_t next = firstFreeId;
        constexpr std::size_t firstPacked = 6;
        const auto rank = [](const Section& section) {
            const auto known = std::ranges::find(knownSections, section.name, &KnownSection::name);
            const auto at = static_cast<std::size_t>(known - knownSections.begin());
            return known == knownSections.end() ? firstPacked * 2 - 1 : at * 2;
        };
        std::ranges::stable_sort(m_sections, {}, rank);
        for (Section& section : m_sections) {
            const auto known = std::ranges::find(knownSections, section.name, &KnownSection::name);
            const bool isKnown = known != knownSections.end();
            section.id = isKnown && known->id ? known->id : next++;
            section.isPacked = !isKnown || known->isPacked;
            if (!section.isPacked)
                section.capacity = roundedUp(section.size(), section.name == "AcDb:Preview" ? 0x400 : 0x80);
        }
    }

    void cut() {
        for (std::size_t i = 0; i < m_sections.size(); ++i)
            for (std::size_t offset = 0; offset < m_sections[i].size(); offset += m_sections[i].capacity)
                m_pages.push_back({i, offset, {}, 0});
    }

    void pack() {
        std::atomic<std::size_t> next = 0;
        const auto work = [&] {
            std::vector<std::uint8_t> bytes;
            for (std::size_t i = next++; i < m_pages.size(); i = next++) pack(m_pages[i], bytes);
        };
        constexpr std::size_t pagesForOne = 8, mostThreads = 16;
        const std::size_t count =
            std::min({m_pages.size() / pagesForOne, mostThreads, std::size_t{workersOfMachine()}});
        std::vector<std::jthread> others;
        for (std::size_t i = 1; i < count; ++i) others.emplace_back(work);
        work();
    }

    void pack(Page& page, std::vector<std::uint8_t>& bytes) const {
        const Section& section = m_sections[page.section];
        bytes.assign(section.capacity, 0);
        section.copy(page.offset, std::span(bytes));
        if (section.name == "AcDb:Preview") movePreview(bytes, previewAt());
        if (section.isPacked && std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0; }))
            return;
        page.stored = section.isPacked ? packPage(bytes) : bytes;
        page.sum = pageChecksum(page.stored);
    }

    /// The properties stand before it alone.
    [[nodiscard]] std::size_t previewAt() const {
        return pagesAt + pageHeadSize + m_sections.front().capacity + pageHeadSize;
    }

    void write(const Page& page) {
        if (page.stored.empty()) return;
        Section& section = m_sections[page.section];
        const std::size_t address = m_file.size();
        if (!section.isPacked && page.offset == 0) m_addresses[section.name] = address + pageHeadSize;
        const std::size_t size = pageHeadSize + roundedUp(page.stored.size(), pageUnit);
        std::vector<std::uint8_t> head;
        for (const std::size_t value :
             {std::size_t{dataPageMark}, std::size_t{section.id}, page.stored.size(), size})
            appendNumber(head, value, 4);
        appendNumber(head, page.offset, 8);
        appendNumber(head, 0, 4);
        appendNumber(head, page.sum, 4);
        std::vector<std::uint8_t> summed = head;
        putNumber(head, 0x18, pageChecksum(summed, page.sum), 4);
        const auto mask = static_cast<std::uint32_t>(dataPageScramble ^ address);
        for (std::size_t i = 0; i < head.size(); ++i)
            head[i] = static_cast<std::uint8_t>(head[i] ^ (mask >> (8 * (i & 3)) & 0xFF));
        append(m_file, head);
        append(m_file, page.stored);
        fill(m_file);
        m_sizes.push_back(size);
        section.pages.emplace_back(static_cast<std::uint32_t>(m_sizes.size()), &page);
    }

    [[nodiscard]] std::vector<std::uint8_t> sectionMap() {
        std::vector<std::uint8_t> map;
        const std::size_t count = m_sections.size() + 1; // and one without name and pages
        for (const std::size_t value : {count, std::size_t{2}, packedCapacity, std::size_t{0}, count})
            appendNumber(map, value, 4);
        std::vector<const Section*> listed;
        for (const Section& section : m_sections) listed.push_back(&section);
        std::ranges::sort(listed, std::ranges::greater(), &Section::id);
        const Section none;
        listed.insert(listed.begin(), &none);
        for (const Section* const section : listed) {
            appendNumber(map, section->size(), 8);
            appendNumber(map, section->pages.size(), 4);
            appendNumber(map, section->capacity, 4);
            appendNumber(map, 1, 4);
            appendNumber(map, section->isPacked ? 2 : 1, 4);
            appendNumber(map, section->id, 4);
            appendNumber(map, 0, 4);
            std::array<std::uint8_t, 64> name{};
            std::copy_n(section->name.begin(), std::min(section->name.size(), name.size() - 1), name.begin());
            append(map, name);
            for (const auto& [number, page] : section->pages) {
                appendNumber(map, number, 4);
                appendNumber(map, page->stored.size(), 4);
                appendNumber(map, page->offset, 8);
            }
        }
        return map;
    }

    static std::vector<std::uint8_t> systemPage(std::uint32_t mark, ByteSpan bytes) {
        const std::vector<std::uint8_t> packed = packPage(bytes);
        std::vector<std::uint8_t> page;
        for (const std::size_t value :
             {std::size_t{mark}, bytes.size(), packed.size(), std::size_t{2}, std::size_t{0}})
            appendNumber(page, value, 4);
        const std::uint32_t sum = pageChecksum(packed, pageChecksum(page));
        putNumber(page, 16, sum, 4);
        append(page, packed);
        fill(page);
        return page;
    }

    void writeSystemPage(std::uint32_t mark, ByteSpan bytes) {
        const std::vector<std::uint8_t> page = systemPage(mark, bytes);
        append(m_file, page);
        m_sizes.push_back(page.size());
    }

    /// The map has its own page in it, whose size follows from the map: a size is taken that is surely
    /// enough, and the page filled up to it.
    void writePageMap() {
        std::vector<std::uint8_t> map;
        for (std::size_t i = 0; i < m_sizes.size(); ++i) {
            appendNumber(map, i + 1, 4);
            appendNumber(map, m_sizes[i], 4);
        }
        const std::size_t plain = map.size() + 8;
        const std::size_t most = roundedUp(systemHeadSize + plain + plain / 16 + 0x40, pageUnit);
        appendNumber(map, m_sizes.size() + 1, 4);
        appendNumber(map, most, 4);
        std::vector<std::uint8_t> page = systemPage(pageMapMark, map);
        page.resize(most);
        append(m_file, page);
        m_sizes.push_back(most);
    }

    void writeHeads(std::uint32_t sectionMapNumber, std::size_t pageMapAt) {
        std::vector<std::uint8_t> header = scrambledHeader(sectionMapNumber, pageMapAt);
        append(m_file, header);
        append(header, ByteSpan(magicSequence()).subspan(headerAt + headerSize));
        std::ranges::copy(header, m_file.begin() + headerAt);
        std::ranges::copy(nameOfVersion(m_container.version), m_file.begin());
        m_file[0x0B] = static_cast<std::uint8_t>(m_container.maintenance);
        m_file[0x0C] = 3;
        m_file[0x11] = static_cast<std::uint8_t>(m_container.writer ? m_container.writer
                                                                    : customaryWriter(m_container.version));
        m_file[0x12] = static_cast<std::uint8_t>(m_container.writerMaintenance);
        const auto number = [&](std::size_t at, std::size_t value, unsigned count) {
            putNumber(m_file, at, value, count);
        };
        number(0x0D, m_addresses["AcDb:Preview"], 4);
        number(0x13, m_container.codePage, 2);
        number(0x20, m_addresses["AcDb:SummaryInfo"], 4);
        number(0x24, m_addresses["AcDb:VBAProject"], 4);
        number(0x28, headerAt, 4);
        number(0x2C, m_addresses["AcDb:AppInfo"], 4);
        number(0x30, m_addresses["AcDb:AppInfoHistory"], 4);
    }

    [[nodiscard]] std::vector<std::uint8_t> scrambledHeader(std::uint32_t sectionMapNumber,
                                                            std::size_t pageMapAt) const {
        std::vector<std::uint8_t> header(headerSize, 0);
        const auto number = [&](std::size_t at, std::size_t value, unsigned count = 4) {
            putNumber(header, at, value, count);
        };
        std::ranges::copy(std::string_view("AcFssFcAJMB"), header.begin());
        number(0x10, headerSize);
        number(0x14, 4);
        number(0x24, 1);
        number(0x28, m_sizes.size());
        number(0x2C, m_file.size() - pagesAt, 8);
        number(0x34, m_file.size(), 8);
        number(0x40, m_sizes.size());
        number(0x44, 0x20);
        number(0x48, 0x80);
        number(0x4C, 0x40);
        number(0x50, m_sizes.size());
        number(0x54, pageMapAt - pagesAt, 8);
        number(0x5C, sectionMapNumber);
        number(0x60, m_sizes.size());
        number(0x68, checksum32(header));
        for (std::size_t i = 0; i < header.size(); ++i)
            header[i] = static_cast<std::uint8_t>(header[i] ^ magicSequence()[i]);
        return header;
    }

    const BinaryContainer& m_container;
    std::vector<Section> m_sections; ///< in the order of the file
    std::vector<Page> m_pages;
    std::vector<std::size_t> m_sizes;               ///< of the pages that are written, by number
    std::map<std::string, std::size_t> m_addresses; ///< of sections that are not packed
    std::vector<std::uint8_t> m_file;
};

} // namespace

void writeContainer2004(const BinaryContainer& container, const BinaryHeader& header,
                        const BinaryRecords& records, std::vector<std::uint8_t>& file) {
    file = Container2004(container, header, records).run();
}

} // namespace hostkit
