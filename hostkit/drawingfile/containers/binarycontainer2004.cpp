// The forms 2004, 2010, 2013 and 2018: sections cut into packed pages, found through two maps.
#include "binarychecksums.h"
#include "binarycontainer.h"
#include "pagecompression.h"

#include <algorithm>
#include <unordered_map>

namespace hostkit {
namespace {

constexpr std::size_t headerAt = 0x80, headerSize = 0x6C, pagesAt = 0x100;
constexpr std::uint32_t pageMapMark = 0x41630E3B, sectionMapMark = 0x4163003B, dataPageMark = 0x4163043B;
constexpr std::uint32_t dataPageScramble = 0x4164536B;
/// No section is larger than this many times the file; more is damage, since pages shrink by some 250 at
/// most.
constexpr std::uint64_t mostGrowth = 300;

struct PagePlace {
    std::size_t address = 0, size = 0;
};

class Container2004 {
public:
    Container2004(ByteSpan file, BinaryContainer& container)
        : m_file(file)
        , m_out(container) {}

    [[nodiscard]] bool open() {
        if (m_file.size() < pagesAt) return refuse(0, L"the file ends within its header");
        if (longAt(m_file, 0x18) & 1) return refuse(0x18, L"the drawing is locked by a password");
        const std::vector<std::uint8_t> header = unscrambled();
        if (!std::equal(header.begin(), header.begin() + 11, "AcFssFcAJMB"))
            return refuse(headerAt, L"the scrambled part of the file's header is damaged");
        std::vector<std::uint8_t> zeroed = header;
        std::fill_n(zeroed.begin() + 0x68, 4, std::uint8_t{0});
        if (checksum32(zeroed) != longAt(header, 0x68))
            fault(headerAt + 0x68, L"the checksum of the scrambled header is wrong");
        const std::uint64_t pageMapAt = longLongAt(header, 0x54) + pagesAt;
        std::vector<std::uint8_t> map;
        if (!systemPage(pageMapAt, pageMapMark, map))
            return refuse(pageMapAt, L"the map of pages is damaged");
        placePages(map);
        const auto sectionMap = m_places.find(longAt(header, 0x5C));
        if (sectionMap == m_places.end())
            return refuse(pageMapAt, L"the map of pages does not have the map of sections");
        const std::size_t at = sectionMap->second.address;
        if (!systemPage(at, sectionMapMark, map)) return refuse(at, L"the map of sections is damaged");
        return readSections(map);
    }

private:
    bool refuse(std::uint64_t at, std::wstring reason) {
        fault(at, std::move(reason));
        return false;
    }
    void fault(std::uint64_t at, std::wstring reason, std::string section = {}) {
        m_out.addFault(static_cast<std::size_t>(at), std::move(section), std::move(reason));
    }

    [[nodiscard]] std::vector<std::uint8_t> unscrambled() const {
        std::vector<std::uint8_t> header(headerSize);
        std::uint32_t random = 1;
        for (std::size_t i = 0; i < headerSize; ++i) {
            random = random * 0x343FD + 0x269EC3;
            header[i] = static_cast<std::uint8_t>(m_file[headerAt + i] ^ (random >> 16 & 0xFF));
        }
        return header;
    }

    [[nodiscard]] bool systemPage(std::uint64_t at, std::uint32_t mark, std::vector<std::uint8_t>& out) {
        const ByteSpan head = partOf(m_file, static_cast<std::size_t>(at), 20);
        if (head.size() < 20 || longAt(head, 0) != mark) return false;
        const std::size_t size = longAt(head, 4);
        const ByteSpan packed = partOf(m_file, static_cast<std::size_t>(at) + 20, longAt(head, 8));
        if (packed.size() < longAt(head, 8) || size > packed.size() * mostGrowth) return false;
        std::vector<std::uint8_t> zeroed(head.begin(), head.end());
        std::fill_n(zeroed.begin() + 16, 4, std::uint8_t{0});
        if (pageChecksum(packed, pageChecksum(zeroed)) != longAt(head, 16))
            fault(at, L"the checksum of a map is wrong");
        return unpackPage(packed, size, out) && out.size() == size;
    }

    void placePages(ByteSpan map) {
        std::size_t address = pagesAt;
        for (std::size_t at = 0; at + 8 <= map.size(); at += 8) {
            const auto number = static_cast<std::int32_t>(longAt(map, at));
            const auto size = static_cast<std::int32_t>(longAt(map, at + 4));
            if (number >= 0)
                m_places[static_cast<std::uint32_t>(number)] = {address,
                                                                static_cast<std::size_t>(std::max(size, 0))};
            if (number < 0) at += 16;
            if (size > 0) address += static_cast<std::size_t>(size);
        }
    }

    [[nodiscard]] bool readSections(ByteSpan map) {
        std::uint32_t left = longAt(map, 0);
        for (std::size_t at = 20; left > 0 && at + 0x60 <= map.size(); --left) {
            const std::size_t pages = longAt(map, at + 8);
            const std::size_t end = at + 0x60 + 16 * pages;
            if (pages > map.size() / 16 || end > map.size()) {
                fault(0, L"the map of sections ends early");
                break;
            }
            readSection(map.subspan(at, end - at), pages);
            at = end;
        }
        return !m_out.sections.empty() || refuse(0, L"the file has no section");
    }

    void readSection(ByteSpan entry, std::size_t pages) {
        const std::uint64_t size = longLongAt(entry, 0);
        const std::size_t capacity = longAt(entry, 0x0C);
        const bool isPacked = longAt(entry, 0x14) == 2;
        std::string name;
        for (std::size_t i = 0x20; i < 0x60 && entry[i]; ++i) name += static_cast<char>(entry[i]);
        if (name.empty()) return;
        if (longAt(entry, 0x1C) == 1) return fault(0, L"the section is locked by a password", name);
        if (size > m_file.size() * mostGrowth + 0x10000 || capacity > 0x4000000)
            return fault(0, L"the section's size is out of range", name);
        std::vector<std::uint8_t>& out = m_out.sections[name];
        out.assign(static_cast<std::size_t>(size), 0);
        for (std::size_t i = 0; i < pages; ++i) {
            const ByteSpan page = entry.subspan(0x60 + 16 * i, 16);
            readPage(longAt(page, 0), longLongAt(page, 8), capacity, isPacked, name, out);
        }
    }

    void readPage(std::uint32_t number, std::uint64_t offset, std::size_t capacity, bool isPacked,
                  const std::string& name, std::vector<std::uint8_t>& out) {
        const auto place = m_places.find(number);
        if (place == m_places.end())
            return fault(0, L"a page of the section is not in the map of pages", name);
        const std::size_t at = place->second.address;
        const ByteSpan raw = partOf(m_file, at, 32);
        if (raw.size() < 32) return fault(at, L"a page lies past the end of the file", name);
        std::vector<std::uint8_t> head(raw.begin(), raw.end());
        const auto mask = static_cast<std::uint32_t>(dataPageScramble ^ at);
        for (std::size_t i = 0; i < 32; ++i)
            head[i] = static_cast<std::uint8_t>(head[i] ^ (mask >> (8 * (i & 3)) & 0xFF));
        if (longAt(head, 0) != dataPageMark) return fault(at, L"the head of a page is damaged", name);
        const ByteSpan stored = partOf(m_file, at + 32, longAt(head, 8));
        if (stored.size() < longAt(head, 8)) return fault(at, L"a page goes past the end of the file", name);
        const std::uint32_t sum = pageChecksum(stored);
        if (sum != longAt(head, 0x1C)) fault(at, L"the checksum of a page is wrong", name);
        const std::uint32_t headSum = longAt(head, 0x18);
        std::fill_n(head.begin() + 0x18, 4, std::uint8_t{0});
        if (pageChecksum(head, sum) != headSum) fault(at, L"the checksum of a page's head is wrong", name);
        if (isPacked && !unpackPage(stored, capacity, m_page)) fault(at, L"a page is damaged", name);
        const ByteSpan data = isPacked ? ByteSpan(m_page) : stored;
        if (offset > out.size()) return fault(at, L"a page lies past the end of its section", name);
        const std::size_t count = std::min(data.size(), out.size() - static_cast<std::size_t>(offset));
        std::copy_n(data.begin(), count, out.begin() + static_cast<std::ptrdiff_t>(offset));
    }

    ByteSpan m_file;
    BinaryContainer& m_out;
    std::unordered_map<std::uint32_t, PagePlace> m_places; ///< by the page's number
    std::vector<std::uint8_t> m_page;
};

} // namespace

bool openContainer2004(ByteSpan file, BinaryContainer& container) {
    return Container2004(file, container).open();
}

} // namespace hostkit
