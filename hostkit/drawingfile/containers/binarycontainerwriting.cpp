#include "binarycontainerwriting.h"

#include "binarychecksums.h"
#include "binarysections.h"
#include "bitwriter.h"
#include "sectionframe.h"

#include <algorithm>
#include <array>
#include <bit>

namespace hostkit {
namespace {

std::size_t recordEnd(ByteSpan objects, std::size_t offset, bool countsReferences) {
    BitReader reader(objects, offset * 8, objects.size() * 8);
    const std::size_t size = reader.modularShort();
    if (countsReferences) static_cast<void>(reader.unsignedModularChar());
    return std::min(objects.size(), reader.position() / 8 + size + 2);
}

bool areInOrder(const BinaryRecords& records) {
    std::uint64_t last = 0;
    for (const ObjectPlace& place : records.places) {
        if (place.handle <= last || place.offset >= records.bytes.size()) return false;
        last = place.handle;
    }
    return true;
}

} // namespace

BinaryRecords recordsOf(const BinaryContainer& container, std::span<const ObjectPlace> places) {
    BinaryRecords records;
    const ByteSpan objects = container.section("AcDb:AcDbObjects");
    records.places.assign(places.begin(), places.end());
    if (places.empty()) return records;
    const bool countsReferences = container.version >= DrawingVersion::k2010;
    std::size_t begin = objects.size(), end = 0;
    for (const ObjectPlace& place : places) {
        begin = std::min(begin, place.offset);
        end = std::max(end, recordEnd(objects, place.offset, countsReferences));
    }
    for (ObjectPlace& place : records.places) place.offset -= begin;
    records.bytes = partOf(objects, begin, end - begin);
    return records;
}

bool writeContainer(const BinaryContainer& container, const BinaryRecords& records,
                    std::vector<std::uint8_t>& file, std::wstring& reason) {
    const auto refuse = [&](const wchar_t* why) {
        reason = why;
        return false;
    };
    if (container.version < DrawingVersion::k2000 || container.version == DrawingVersion::k2007)
        return refuse(L"binary drawings of this form are not written");
    if (container.section("AcDb:Header").empty()) return refuse(L"the drawing has no header variables");
    if (container.section("AcDb:Classes").empty()) return refuse(L"the drawing has no section of classes");
    if (!areInOrder(records)) return refuse(L"the places of the records are out of order");
    BinaryContainer headerAlone; // what may be wrong in it is told to who reads it
    headerAlone.version = container.version;
    headerAlone.maintenance = container.maintenance;
    headerAlone.sections["AcDb:Header"] = container.sections.find("AcDb:Header")->second;
    const BinaryHeader header = readHeader(headerAlone);
    if (container.version == DrawingVersion::k2000)
        return writeContainer2000(container, header, records, file, reason);
    writeContainer2004(container, header, records, file);
    return true;
}

// --- The form 2000: sections at addresses in the file ------------------------------------------------------

namespace {

constexpr std::uint64_t mostAddress = 0x7FFFFFFF;
constexpr std::uint8_t headerMaintenance = 0x0F;

struct Locator {
    std::size_t address = 0, size = 0;
};

class Container2000 {
public:
    Container2000(const BinaryContainer& container, const BinaryHeader& header, const BinaryRecords& records)
        : m_container(container)
        , m_header(header)
        , m_records(records) {}

    [[nodiscard]] std::vector<std::uint8_t> run() {
        m_file.reserve(m_records.bytes.size() + 0x10000);
        m_file.resize(headSize);
        place(5, auxHeaderOf(m_container, m_header));
        m_preview = m_file.size();
        append(m_file, given("AcDb:Preview", makeEmptyPreview));
        movePreview(std::span(m_file).subspan(m_preview), m_preview);
        place(0, m_container.section("AcDb:Header"));
        place(1, m_container.section("AcDb:Classes"));
        appendNumber(m_file, recordsMark, 4);
        const std::size_t recordsAt = m_file.size();
        append(m_file, m_records.bytes);
        std::vector<ObjectPlace> places = m_records.places;
        for (ObjectPlace& one : places) one.offset += recordsAt;
        place(2, writeObjectMap(places));
        place(3, m_container.section("AcDb:ObjFreeSpace"));
        const std::vector<std::uint8_t> measurement =
            given("AcDb:Template", [&] { return writeMeasurement(m_container, 0); });
        m_locators[4].size = measurement.size(); // the second header, before it, tells none of its address
        secondHeader();
        place(4, measurement);
        head();
        return std::move(m_file);
    }

private:
    static constexpr std::size_t headSize = 0x61;

    template <class Make>
    std::vector<std::uint8_t> given(std::string_view name, Make make) const {
        const ByteSpan section = m_container.section(name);
        return section.empty() ? make() : std::vector<std::uint8_t>(section.begin(), section.end());
    }

    void place(std::size_t number, ByteSpan bytes) {
        if (bytes.empty()) return;
        m_locators[number] = {m_file.size(), bytes.size()};
        append(m_file, bytes);
    }

    [[nodiscard]] std::pair<std::uint8_t, std::uint8_t> writer() const {
        if (m_container.writer == 0)
            return {static_cast<std::uint8_t>(customaryWriter(m_container.version)), std::uint8_t{0}};
        return {static_cast<std::uint8_t>(m_container.writer),
                static_cast<std::uint8_t>(m_container.writerMaintenance)};
    }

    [[nodiscard]] std::uint8_t maintenance() const {
        return m_container.maintenance ? static_cast<std::uint8_t>(m_container.maintenance)
                                       : headerMaintenance;
    }

    void head() {
        std::vector<std::uint8_t> head{'A', 'C', '1', '0', '1', '5', 0, 0, 0, 0, 0, maintenance(), 1};
        appendNumber(head, m_preview, 4);
        head.push_back(writer().first);
        head.push_back(writer().second);
        appendNumber(head, m_container.codePage, 2);
        appendNumber(head, m_locators.size(), 4);
        for (std::size_t i = 0; i < m_locators.size(); ++i) {
            head.push_back(static_cast<std::uint8_t>(i));
            appendNumber(head, m_locators[i].address, 4);
            appendNumber(head, m_locators[i].size, 4);
        }
        appendNumber(head, checksum16(head), 2);
        static constexpr SectionMark end{0x95, 0xA0, 0x4E, 0x28, 0x99, 0x82, 0x1A, 0xE5,
                                         0x5E, 0x41, 0xE0, 0x5F, 0x9D, 0x3A, 0x4D, 0x00};
        appendMark(head, end);
        std::ranges::copy(head, m_file.begin());
    }

    /// What a recovery finds the parts by when the file's head is damaged.
    void secondHeader() {
        BitWriter out;
        out.rawLong(0);
        out.bitLong(static_cast<std::int32_t>(m_file.size()));
        for (const char character : std::string_view("AC1015"))
            out.rawByte(static_cast<std::uint8_t>(character));
        for (int i = 0; i < 5; ++i) out.rawByte(0);
        out.rawByte(maintenance());
        out.rawByte(1);
        out.bitShort(writer().first | writer().second << 8);
        out.rawShort(static_cast<std::uint16_t>(m_container.codePage));
        out.bitShort(static_cast<int>(m_locators.size()));
        for (std::size_t i = 0; i < m_locators.size(); ++i) {
            const bool isPlaced = m_locators[i].address > 0;
            out.rawByte(static_cast<std::uint8_t>(i));
            out.bitLong(static_cast<std::int32_t>(m_locators[i].address));
            out.bitLong(isPlaced ? static_cast<std::int32_t>(m_locators[i].size) : 0);
        }
        handles(out);
        out.pad(false);
        constexpr std::size_t behind = 2 + 8; // the checksum and what nobody looks at
        out.overwriteLong(0, static_cast<std::uint32_t>(out.bytes().size() + behind));
        appendMark(m_file, secondHeaderMark);
        append(m_file, out.bytes());
        appendNumber(m_file, checksum16(out.bytes()), 2);
        appendNumber(m_file, 0, 8);
        appendEndMark(m_file, secondHeaderMark);
    }

    void handles(BitWriter& out) const {
        static constexpr std::array names{"HANDSEED",
                                          "BLOCK_CONTROL",
                                          "LAYER_CONTROL",
                                          "STYLE_CONTROL",
                                          "LTYPE_CONTROL",
                                          "VIEW_CONTROL",
                                          "UCS_CONTROL",
                                          "VPORT_CONTROL",
                                          "APPID_CONTROL",
                                          "DIMSTYLE_CONTROL",
                                          "VP_ENT_HDR_CONTROL",
                                          "DICT_NAMED_OBJECTS",
                                          "DICT_ACAD_MLINESTYLE",
                                          "DICT_ACAD_GROUP"};
        out.bitShort(static_cast<int>(names.size()));
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::uint64_t handle = m_header.handle(names[i]);
            const auto count = static_cast<unsigned>((std::bit_width(handle) + 7) / 8);
            out.rawByte(static_cast<std::uint8_t>(count));
            out.rawByte(static_cast<std::uint8_t>(i));
            for (unsigned byte = count; byte-- > 0;)
                out.rawByte(static_cast<std::uint8_t>(handle >> (8 * byte)));
        }
    }

    const BinaryContainer& m_container;
    const BinaryHeader& m_header;
    const BinaryRecords& m_records;
    std::vector<std::uint8_t> m_file;
    std::array<Locator, 6> m_locators;
    std::size_t m_preview = 0;
};

} // namespace

bool writeContainer2000(const BinaryContainer& container, const BinaryHeader& header,
                        const BinaryRecords& records, std::vector<std::uint8_t>& file, std::wstring& reason) {
    std::size_t most = 0x10000 + 16 * records.places.size();
    for (const auto& [name, bytes] : container.sections)
        if (name != "AcDb:AcDbObjects") most += bytes.size();
    if (records.bytes.size() + most > mostAddress) {
        reason = L"the form 2000 has no place for more than 2 GB";
        return false;
    }
    file = Container2000(container, header, records).run();
    return true;
}

} // namespace hostkit
