#include "binarysections.h"

#include "bitwriter.h"
#include "casefold.h"
#include "sectionframe.h"
#include "transcriptvalues.h"

#include <algorithm>

namespace hostkit {
namespace {

const char* const propertiesName = "AcDb:SummaryInfo";
const char* const templateName = "AcDb:Template";

/// In the order of their numbers.
constexpr std::array<std::wstring_view, 45> pageNames{
    L"",          L"ascii",     L"iso8859-1", L"iso8859-2", L"iso8859-3", L"iso8859-4", L"iso8859-5",
    L"iso8859-6", L"iso8859-7", L"iso8859-8", L"iso8859-9", L"dos437",    L"dos850",    L"dos852",
    L"dos855",    L"dos857",    L"dos860",    L"dos861",    L"dos863",    L"dos864",    L"dos865",
    L"dos869",    L"dos932",    L"mac-roman", L"big5",      L"ksc5601",   L"johab",     L"dos866",
    L"ANSI_1250", L"ANSI_1251", L"ANSI_1252", L"gb2312",    L"ANSI_1253", L"ANSI_1254", L"ANSI_1255",
    L"ANSI_1256", L"ANSI_1257", L"ANSI_874",  L"ANSI_932",  L"ANSI_936",  L"ANSI_949",  L"ANSI_950",
    L"ANSI_1361", L"ANSI_1200", L"ANSI_1258"};

/// Texts with their length before and a zero behind, which the length counts.
class PropertiesReading {
public:
    PropertiesReading(ByteSpan bytes, bool isWide)
        : m_isWide(isWide)
        , m_reader(bytes) {}

    std::string text() {
        std::string text;
        wchar_t high = 0;
        const unsigned count = m_reader.rawShort();
        for (unsigned i = 0; i < count && !m_reader.failed(); ++i) {
            const auto unit = static_cast<wchar_t>(m_isWide ? m_reader.rawShort() : m_reader.rawByte());
            if (unit == 0) continue;
            if (!m_isWide) {
                text += static_cast<char>(unit);
                continue;
            }
            const bool isLow = unit >= 0xDC00 && unit < 0xE000;
            if (high && isLow)
                appendUtf8(text, 0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00));
            else if (high)
                appendUtf8(text, high);
            const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
            if (!isHigh && !(high && isLow)) appendUtf8(text, unit);
            high = isHigh ? unit : 0;
        }
        if (high) appendUtf8(text, high);
        return text;
    }
    BinaryDate date() {
        const std::uint32_t day = m_reader.rawLong();
        return {day, m_reader.rawLong()};
    }
    BitReader& reader() { return m_reader; }

private:
    bool m_isWide;
    BitReader m_reader;
};

void writeText(BitWriter& writer, std::string_view text, bool isWide) {
    constexpr std::size_t most = 65534;
    text = text.substr(0, text.find('\0'));
    std::vector<std::uint16_t> units;
    isWide ? utf16Of(text, units) : void(units.assign(text.begin(), text.end()));
    if (units.size() > most) units.resize(most);
    units.push_back(0);
    writer.rawShort(static_cast<std::uint16_t>(units.size()));
    for (const std::uint16_t unit : units)
        isWide ? writer.rawShort(unit) : writer.rawByte(static_cast<std::uint8_t>(unit));
}

void writeDate(BitWriter& writer, BinaryDate date) {
    writer.rawLong(date.day);
    writer.rawLong(date.milliseconds);
}

template <class Properties, class Visit>
void forEachText(Properties& properties, Visit visit) {
    for (auto* const text :
         {&properties.title, &properties.subject, &properties.author, &properties.keywords,
          &properties.comments, &properties.lastSavedBy, &properties.revision, &properties.hyperlinkBase})
        visit(*text);
}

/// "TDCREATE" or "TDUPDATE".
BinaryDate dateOf(const BinaryHeader& header, const std::string& name) {
    return {static_cast<std::uint32_t>(header.whole(name + "_day")),
            static_cast<std::uint32_t>(header.whole(name + "_ms"))};
}

/// The handle seed as far as 31 bits hold it.
std::uint32_t seedOf(const BinaryHeader& header) {
    constexpr std::uint64_t most = 0x7FFFFFFF;
    const std::uint64_t seed = header.handle("HANDSEED");
    return seed > most ? ~0U : static_cast<std::uint32_t>(seed);
}

void zeros(BitWriter& writer, unsigned bytes) {
    for (unsigned i = 0; i < bytes; ++i) writer.rawByte(0);
}

std::vector<std::uint8_t> makeAuxHeader(const BinaryContainer& form, const BinaryHeader& header) {
    const bool isWider = form.version >= DrawingVersion::k2018;
    const auto release = static_cast<std::uint16_t>(customaryWriter(form.version));
    BitWriter out;
    const auto maintenance = [&] { isWider ? out.rawLong(0) : out.rawShort(0); };
    for (const std::uint8_t byte : {0xFF, 0x77, 0x01}) out.rawByte(byte);
    out.rawShort(release);
    maintenance();
    out.rawLong(1); // how often it was saved
    out.rawLong(~0U);
    out.rawShort(1); // the same in two parts
    out.rawShort(0);
    out.rawLong(0);
    for (int i = 0; i < 2; ++i) {
        out.rawShort(release);
        maintenance();
    }
    for (const std::uint16_t value : {5, 0x893, 5, 0x893, 0, 1}) out.rawShort(value);
    zeros(out, 20);
    writeDate(out, dateOf(header, "TDCREATE"));
    writeDate(out, dateOf(header, "TDUPDATE"));
    out.rawLong(seedOf(header));
    zeros(out, 6);
    out.rawShort(1);
    zeros(out, 12);
    out.rawLong(1);
    zeros(out, 16);
    return out.copy();
}

} // namespace

std::wstring_view codePageName(unsigned number) {
    return number < pageNames.size() ? pageNames[number] : std::wstring_view();
}

unsigned codePageNumber(std::wstring_view name) {
    for (unsigned number = 1; number < pageNames.size(); ++number)
        if (equalFolded(pageNames[number], name)) return number;
    return 0;
}

CodePage codePageOf(unsigned number) {
    return codePageFromName(codePageName(number)).value_or(CodePage::western1252);
}

CodePage codePageOf(const BinaryContainer& container) { return codePageOf(container.codePage); }

std::optional<DrawingProperties> readProperties(BinaryContainer& container) {
    const ByteSpan bytes = container.section(propertiesName);
    if (bytes.empty()) return std::nullopt;
    DrawingProperties properties;
    PropertiesReading reading(bytes, isUtf8(container.version));
    forEachText(properties, [&](std::string& text) { text = reading.text(); });
    properties.editingTime = reading.date();
    properties.created = reading.date();
    properties.updated = reading.date();
    const unsigned count = reading.reader().rawShort();
    for (unsigned i = 0; i < count && !reading.reader().failed(); ++i) {
        std::string name = reading.text(), value = reading.text();
        if (!reading.reader().failed()) properties.custom.emplace_back(std::move(name), std::move(value));
    }
    if (reading.reader().failed())
        container.addFault(0, propertiesName, L"the drawing's properties end early");
    return properties;
}

std::vector<std::uint8_t> writeProperties(const BinaryContainer& form, const DrawingProperties& properties) {
    constexpr std::size_t mostCustom = 0xFFFF;
    const bool isWide = isUtf8(form.version);
    BitWriter out;
    forEachText(properties, [&](const std::string& text) { writeText(out, text, isWide); });
    writeDate(out, properties.editingTime);
    writeDate(out, properties.created);
    writeDate(out, properties.updated);
    const std::size_t count = std::min(properties.custom.size(), mostCustom);
    out.rawShort(static_cast<std::uint16_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
        writeText(out, properties.custom[i].first, isWide);
        writeText(out, properties.custom[i].second, isWide);
    }
    zeros(out, 8);
    return out.copy();
}

int readMeasurement(const BinaryContainer& container) {
    const ByteSpan bytes = container.section(templateName);
    const std::size_t width = isUtf8(container.version) ? 2 : 1;
    return littleEndian(bytes, 2 + width * littleEndian(bytes, 0, 2), 2) == 1 ? 1 : 0;
}

std::vector<std::uint8_t> writeMeasurement(const BinaryContainer& form, int measurement) {
    const auto value = static_cast<std::uint8_t>(measurement == 1);
    if (!isUtf8(form.version)) return {0, 0, value, 0};
    return {1, 0, 0, 0, value, 0}; // a description of one zero
}

unsigned customaryWriter(DrawingVersion version) {
    switch (version) {
    case DrawingVersion::k2000:
        return 23;
    case DrawingVersion::k2004:
        return 25;
    case DrawingVersion::k2007:
        return 27;
    case DrawingVersion::k2010:
        return 29;
    case DrawingVersion::k2013:
        return 31;
    default:
        return 33;
    }
}

std::vector<std::uint8_t> auxHeaderOf(const BinaryContainer& container, const BinaryHeader& header) {
    const ByteSpan own = container.section("AcDb:AuxHeader");
    if (own.empty()) return makeAuxHeader(container, header);
    std::vector<std::uint8_t> bytes(own.begin(), own.end());
    const bool isWider = container.version >= DrawingVersion::k2018; // by three numbers of the maintenance
    const std::size_t size = isWider ? 129 : 123, updateAt = isWider ? 77 : 71;
    if (bytes.size() != size) return bytes;
    const BinaryDate update = dateOf(header, "TDUPDATE");
    putNumber(bytes, updateAt, update.day, 4);
    putNumber(bytes, updateAt + 4, update.milliseconds, 4);
    putNumber(bytes, updateAt + 8, seedOf(header), 4);
    return bytes;
}

std::vector<std::uint8_t> makeFreeSpace(const BinaryContainer& form, const BinaryHeader& header,
                                        std::size_t objects) {
    const bool isWider = form.version >= DrawingVersion::k2010;
    BitWriter out;
    const auto number = [&](std::size_t value) {
        isWider ? out.rawLongLong(value) : out.rawLong(static_cast<std::uint32_t>(value));
    };
    number(0);
    number(objects);
    writeDate(out, dateOf(header, "TDUPDATE"));
    if (!isWider) out.rawLong(0);
    out.rawByte(4);
    for (const std::uint32_t value : {0x32U, 0x64U, 0x200U, 0xFFFFFFFFU}) {
        out.rawLongLong(value);
        if (isWider) out.rawLongLong(0);
    }
    return out.copy();
}

std::vector<std::uint8_t> makeAppInfo() {
    BitWriter out;
    out.rawLong(3);
    writeText(out, "AppInfoDataList", true);
    out.rawLong(2);
    for (int i = 0; i < 2; ++i) {
        zeros(out, 16);
        writeText(out, "VEXOTools10", true);
    }
    return out.copy();
}

std::vector<std::uint8_t> makeRevisionHistory() { return {0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0}; }

std::vector<std::uint8_t> makeEmptyPreview() {
    std::vector<std::uint8_t> bytes;
    appendMark(bytes, previewMark);
    bytes.insert(bytes.end(), {1, 0, 0, 0, 0});
    appendEndMark(bytes, previewMark);
    return bytes;
}

void movePreview(std::span<std::uint8_t> preview, std::size_t address) {
    constexpr std::size_t countAt = 20, entrySize = 9;
    if (preview.size() <= countAt || !std::equal(previewMark.begin(), previewMark.end(), preview.begin()))
        return;
    const std::size_t count = preview[countAt], picturesAt = countAt + 1 + entrySize * count;
    if (picturesAt > preview.size()) return;
    std::size_t first = preview.size() + 0xFFFFFFFF;
    const auto entryAt = [&](std::size_t i) { return countAt + 1 + entrySize * i; };
    for (std::size_t i = 0; i < count; ++i)
        if (longAt(preview, entryAt(i) + 5) > 0)
            first = std::min<std::size_t>(first, longAt(preview, entryAt(i) + 1));
    for (std::size_t i = 0; i < count; ++i) {
        if (longAt(preview, entryAt(i) + 5) == 0) continue;
        const std::size_t moved = longAt(preview, entryAt(i) + 1) - first + picturesAt + address;
        putNumber(preview, entryAt(i) + 1, moved, 4);
    }
}

} // namespace hostkit
