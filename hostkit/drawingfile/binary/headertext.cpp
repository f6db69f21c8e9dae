#include "headertext.h"

#include "recordlayout.h"
#include "recordtranscription.h"
#include "transcriptvalues.h"

#include <algorithm>
#include <array>
#include <utility>

namespace hostkit {

namespace {

constexpr std::array<std::pair<unsigned, CodePage>, 19> codePages{{{22, CodePage::japanese932},
                                                                   {24, CodePage::chinese950},
                                                                   {25, CodePage::korean949},
                                                                   {28, CodePage::centralEurope1250},
                                                                   {29, CodePage::cyrillic1251},
                                                                   {30, CodePage::western1252},
                                                                   {31, CodePage::chinese936},
                                                                   {32, CodePage::greek1253},
                                                                   {33, CodePage::turkish1254},
                                                                   {34, CodePage::hebrew1255},
                                                                   {35, CodePage::arabic1256},
                                                                   {36, CodePage::baltic1257},
                                                                   {37, CodePage::thai874},
                                                                   {38, CodePage::japanese932},
                                                                   {39, CodePage::chinese936},
                                                                   {40, CodePage::korean949},
                                                                   {41, CodePage::chinese950},
                                                                   {44, CodePage::vietnamese1258},
                                                                   {43, CodePage::western1252}}};

constexpr int variableCode = 9;

void appendEscapedGroup(int code, std::string_view text, const DrawingStyle& style, std::string& bytes) {
    appendCode(code, style, bytes);
    appendEscaped(text, bytes);
    bytes += style.newline;
}

/// The texts of the section of properties: each a count of characters, with an end of its own.
class Properties {
public:
    Properties(ByteSpan bytes, bool isWide)
        : m_reader(bytes)
        , m_isWide(isWide) {}

    std::string text() {
        std::string result;
        for (std::size_t left = m_reader.rawShort(); left > 0 && !m_reader.failed(); --left) {
            const std::uint32_t unit = m_isWide ? m_reader.rawShort() : m_reader.rawByte();
            if (unit == 0) continue;
            if (m_isWide && unit >= 0xD800 && unit < 0xDC00 && left > 1) {
                const std::uint32_t low = m_reader.rawShort();
                appendUtf8(result, static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00)));
                --left;
            } else if (m_isWide) {
                appendUtf8(result, static_cast<wchar_t>(unit));
            } else {
                result += static_cast<char>(unit);
            }
        }
        return result;
    }
    void skipDates() {
        for (int i = 0; i < 6; ++i) m_reader.rawLong();
    }
    std::size_t count() { return m_reader.rawShort(); }
    [[nodiscard]] bool failed() const { return m_reader.failed(); }

private:
    BitReader m_reader;
    bool m_isWide;
};

void appendProperties(const BinaryContainer& container, const DrawingStyle& style, std::string& bytes) {
    static constexpr std::array<std::string_view, 8> names{
        "$TITLE", "$SUBJECT", "$AUTHOR", "$KEYWORDS", "$COMMENTS", "$LASTSAVEDBY", "$REVISIONNUMBER", ""};
    const ByteSpan section = container.section("AcDb:SummaryInfo");
    if (section.empty()) return;
    Properties properties(section, isUtf8(container.version));
    const auto variable = [&](std::string_view name, std::string_view value) {
        appendGroup(variableCode, name, style, bytes);
        appendEscapedGroup(1, value, style, bytes);
    };
    for (const std::string_view name : names) {
        const std::string value = properties.text();
        if (!name.empty() && !value.empty()) variable(name, value);
    }
    properties.skipDates();
    for (std::size_t left = properties.count(); left > 0 && !properties.failed(); --left) {
        const std::string name = properties.text(), value = properties.text();
        if (properties.failed()) return;
        variable("$CUSTOMPROPERTYTAG", name);
        variable("$CUSTOMPROPERTY", value);
    }
}

/// Behind a description, whose characters are counted, without its end up to 2004.
int measurementOf(const BinaryContainer& container) {
    const ByteSpan section = container.section("AcDb:Template");
    if (section.size() < 4) return 0;
    const std::size_t width = isUtf8(container.version) ? 2 : 1;
    const std::size_t at = 2 + littleEndian(section, 0, 2) * width;
    return static_cast<int>(littleEndian(section, at, 2));
}

/// From 2018 on the number has more than the byte that the file's head has for it.
unsigned maintenanceOf(const BinaryContainer& container) {
    const ByteSpan section = container.section("AcDb:AuxHeader");
    const bool isLong = container.version >= DrawingVersion::k2018 && section.size() >= 9;
    return isLong ? longAt(section, 5) : container.maintenance;
}

/// The variables as fields of their layout. Texts stay those of the header.
void fieldsOfHeader(const BinaryHeader& header, DrawingVersion version, RecordFields& fields) {
    fields.layout = RecordLayouts::of(version).byName("HEADER-VARS");
    fields.isKnown = fields.isWhole = true;
    for (const auto& [name, value] : header.values) {
        std::uint16_t slot = 0;
        if (!fields.layout->findSlot(name, slot)) continue;
        RecordValue field;
        if (const auto* const whole = std::get_if<std::int64_t>(&value)) field.whole = *whole;
        if (const auto* const real = std::get_if<double>(&value)) field.real[0] = *real;
        if (const auto* const point = std::get_if<std::array<double, 3>>(&value))
            std::copy(point->begin(), point->end(), field.real);
        if (std::holds_alternative<std::string>(value)) {
            const std::string_view text = header.text(name);
            field.run = {text.data(), 0, text.size()};
        }
        if (const auto* const color = std::get_if<HeaderColor>(&value)) {
            field.color = {};
            field.color.index = color->index;
            field.color.value = color->value;
            field.color.hasValue = version >= DrawingVersion::k2004;
        }
        if (const auto* const reference = std::get_if<HeaderReference>(&value))
            field.reference = {0, reference->handle};
        fields.values.add(slot) = field;
    }
}

} // namespace

CodePage codePageOf(const BinaryContainer& container) {
    for (const auto& [number, page] : codePages)
        if (number == container.codePage) return page;
    return CodePage::western1252;
}

void appendHeaderSection(const TranscribedDrawing& drawing, const RecordNames& names,
                         const DrawingStyle& style, std::string& bytes) {
    const BinaryContainer& container = drawing.container;
    appendGroup(0, "SECTION", style, bytes);
    appendGroup(2, "HEADER", style, bytes);
    appendGroup(variableCode, "$ACADVER", style, bytes);
    appendGroup(1, nameOfVersion(container.version), style, bytes);
    appendGroup(variableCode, "$ACADMAINTVER", style, bytes);
    appendInteger(container.version >= DrawingVersion::k2018 ? 90 : 70, maintenanceOf(container), style,
                  bytes);
    appendGroup(variableCode, "$DWGCODEPAGE", style, bytes);
    const std::wstring page = nameOfCodePage(codePageOf(container));
    appendGroup(3, std::string(page.begin(), page.end()), style, bytes);
    appendProperties(container, style, bytes);

    std::string variables, measurement;
    RecordFields fields;
    fieldsOfHeader(drawing.header, container.version, fields);
    const RecordReading reading(container, drawing.classes);
    RecordTranscription(reading, names, style).appendVariables(fields, variables);
    appendGroup(variableCode, "$MEASUREMENT", style, measurement);
    appendInteger(70, measurementOf(container), style, measurement);
    std::string behind;
    appendGroup(variableCode, "$CELWEIGHT", style, behind);
    const std::size_t at = variables.find(behind);
    variables.insert(at == std::string::npos ? variables.size() : at, measurement);
    bytes += variables;
    appendGroup(0, "ENDSEC", style, bytes);
}

void appendClassesSection(const TranscribedDrawing& drawing, const DrawingStyle& style, std::string& bytes) {
    appendGroup(0, "SECTION", style, bytes);
    appendGroup(2, "CLASSES", style, bytes);
    for (const BinaryClass& one : drawing.classes) {
        appendGroup(0, "CLASS", style, bytes);
        appendEscapedGroup(1, one.dxfName, style, bytes);
        appendEscapedGroup(2, one.className, style, bytes);
        appendEscapedGroup(3, one.application, style, bytes);
        appendInteger(90, static_cast<std::uint16_t>(one.proxyFlags), style, bytes);
        if (style.version >= DrawingVersion::k2004) appendInteger(91, one.instances, style, bytes);
        appendInteger(280, one.wasProxy, style, bytes);
        appendInteger(281, one.isEntity, style, bytes);
    }
    appendGroup(0, "ENDSEC", style, bytes);
}

} // namespace hostkit
