// The form 2007: pages of interleaved blocks with parity, which is passed over, in a packing of its own.
#include "binarycontainer.h"
#include "pagecompression.h"

#include <algorithm>
#include <unordered_map>

namespace hostkit {
namespace {

constexpr std::size_t headerAt = 0x80, pagesAt = 0x480, blockSize = 255;
constexpr std::size_t systemData = 239, pageData = 251; ///< bytes of a block that are no parity
constexpr std::uint64_t mostGrowth = 300;

std::size_t roundedUp(std::size_t value, std::size_t unit) { return (value + unit - 1) / unit * unit; }

/// The data bytes of `blocks` interleaved blocks, block by block.
std::vector<std::uint8_t> untangled(ByteSpan raw, std::size_t blocks, std::size_t dataSize) {
    std::vector<std::uint8_t> out;
    out.reserve(blocks * dataSize);
    for (std::size_t block = 0; block < blocks; ++block)
        for (std::size_t i = 0; i < dataSize; ++i) {
            const std::size_t at = block + i * blocks;
            out.push_back(at < raw.size() ? raw[at] : 0);
        }
    return out;
}

class Container2007 {
public:
    Container2007(ByteSpan file, BinaryContainer& container)
        : m_file(file)
        , m_out(container) {}

    [[nodiscard]] bool open() {
        if (m_file.size() < pagesAt) return refuse(0, L"the file ends within its header");
        if (longAt(m_file, 0x18) & 1) return refuse(0x18, L"the drawing is locked by a password");
        std::vector<std::uint8_t> header;
        if (!readHeader(header)) return refuse(headerAt, L"the file's header is damaged");
        std::vector<std::uint8_t> map;
        if (!systemPage(longLongAt(header, 0x38), longLongAt(header, 0x50), longLongAt(header, 0x58),
                        longLongAt(header, 0x18), map))
            return refuse(pagesAt + longLongAt(header, 0x38), L"the map of pages is damaged");
        std::uint64_t offset = 0;
        for (std::size_t at = 0; at + 16 <= map.size(); at += 16) {
            const std::uint64_t size = longLongAt(map, at);
            const auto number = static_cast<std::int64_t>(longLongAt(map, at + 8));
            m_places[number < 0 ? -static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number)] =
                offset;
            offset += size;
        }
        const auto sections = m_places.find(longLongAt(header, 0xC0));
        if (sections == m_places.end() ||
            !systemPage(sections->second, longLongAt(header, 0xB0), longLongAt(header, 0xC8),
                        longLongAt(header, 0xD8), map))
            return refuse(pagesAt, L"the map of sections is damaged");
        readSections(map);
        return !m_out.sections.empty() || refuse(0, L"the file has no section");
    }

private:
    bool refuse(std::uint64_t at, std::wstring reason) {
        m_out.addFault(static_cast<std::size_t>(at), {}, std::move(reason));
        return false;
    }

    [[nodiscard]] bool readHeader(std::vector<std::uint8_t>& header) const {
        const std::vector<std::uint8_t> page =
            untangled(partOf(m_file, headerAt, 3 * blockSize), 3, systemData);
        const auto size = static_cast<std::int32_t>(longAt(page, 24));
        const ByteSpan data =
            partOf(page, 32, static_cast<std::size_t>(std::abs(static_cast<std::int64_t>(size))));
        constexpr std::size_t headerSize = 0x110;
        if (size < 0) header.assign(data.begin(), data.end());
        return (size < 0 || unpackPage2007(data, headerSize, header)) && header.size() == headerSize;
    }

    [[nodiscard]] bool systemPage(std::uint64_t offset, std::uint64_t packed, std::uint64_t size,
                                  std::uint64_t factor, std::vector<std::uint8_t>& out) const {
        const std::uint64_t fileSize = m_file.size();
        if (packed > fileSize || factor > 64 || offset > fileSize || size > packed * mostGrowth) return false;
        const std::size_t total =
            roundedUp(static_cast<std::size_t>(packed), 8) * static_cast<std::size_t>(factor);
        const std::size_t blocks = (total + systemData - 1) / systemData;
        const ByteSpan raw = partOf(m_file, pagesAt + static_cast<std::size_t>(offset), blocks * blockSize);
        const std::vector<std::uint8_t> data = untangled(raw, blocks, systemData);
        const ByteSpan used = partOf(data, 0, static_cast<std::size_t>(packed));
        if (packed >= size) out.assign(used.begin(), used.end());
        return packed >= size ||
               (unpackPage2007(used, static_cast<std::size_t>(size), out) && out.size() == size);
    }

    void readSections(ByteSpan map) {
        for (std::size_t at = 0; at + 64 <= map.size();) {
            const ByteSpan entry = map.subspan(at);
            const std::uint64_t nameSize = longLongAt(entry, 0x20), pages = longLongAt(entry, 0x38);
            if (nameSize > entry.size() || pages > entry.size() / 56 ||
                64 + nameSize + 56 * pages > entry.size()) {
                m_out.addFault(pagesAt, {}, L"the map of sections ends early");
                return;
            }
            std::string name;
            for (std::size_t i = 0; i + 1 < nameSize && entry[64 + i]; i += 2)
                name += static_cast<char>(entry[64 + i]);
            const auto end = static_cast<std::size_t>(64 + nameSize + 56 * pages);
            if (!name.empty()) readSection(entry.first(end), static_cast<std::size_t>(64 + nameSize), name);
            at += end;
        }
    }

    void readSection(ByteSpan entry, std::size_t pagesBegin, const std::string& name) {
        const std::uint64_t size = longLongAt(entry, 0);
        if (size > m_file.size() * mostGrowth)
            return m_out.addFault(0, name, L"the section's size is out of range");
        std::vector<std::uint8_t>& out = m_out.sections[name];
        out.assign(static_cast<std::size_t>(size), 0);
        for (std::size_t at = pagesBegin; at + 56 <= entry.size(); at += 56)
            readPage(entry.subspan(at, 56), longLongAt(entry, 0x30), name, out);
    }

    void readPage(ByteSpan page, std::uint64_t encoding, const std::string& name,
                  std::vector<std::uint8_t>& out) {
        const std::uint64_t offset = longLongAt(page, 0), size = longLongAt(page, 24),
                            packed = longLongAt(page, 32);
        const auto place = m_places.find(longLongAt(page, 16));
        if (place == m_places.end())
            return m_out.addFault(0, name, L"a page of the section is not in the map of pages");
        const std::size_t at = pagesAt + static_cast<std::size_t>(place->second);
        if (offset > out.size() || packed > m_file.size() || size > out.size() - offset)
            return m_out.addFault(at, name, L"a page lies past the end of its section");
        const std::size_t blocks = (roundedUp(static_cast<std::size_t>(packed), 8) + pageData - 1) / pageData;
        std::vector<std::uint8_t> data;
        if (encoding == 4) {
            data = untangled(partOf(m_file, at, blocks * blockSize), blocks, pageData);
        } else {
            const ByteSpan plain = partOf(m_file, at, static_cast<std::size_t>(packed));
            data.assign(plain.begin(), plain.end());
        }
        data.resize(static_cast<std::size_t>(packed));
        if (packed < size &&
            (!unpackPage2007(data, static_cast<std::size_t>(size), m_page) || m_page.size() < size))
            m_out.addFault(at, name, L"a page is damaged");
        const std::vector<std::uint8_t>& whole = packed < size ? m_page : data;
        std::copy_n(whole.begin(), std::min<std::size_t>(whole.size(), static_cast<std::size_t>(size)),
                    out.begin() + static_cast<std::ptrdiff_t>(offset));
    }

    ByteSpan m_file;
    BinaryContainer& m_out;
    std::unordered_map<std::uint64_t, std::uint64_t> m_places; ///< offsets by the page's number
    std::vector<std::uint8_t> m_page;
};

} // namespace

bool openContainer2007(ByteSpan file, BinaryContainer& container) {
    return Container2007(file, container).open();
}

} // namespace hostkit
