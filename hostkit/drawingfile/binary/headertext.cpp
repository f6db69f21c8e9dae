#include "headertext.h"

#include "binarysections.h"
#include "recordlayout.h"
#include "recordtranscription.h"
#include "transcriptvalues.h"

#include <algorithm>
#include <array>
#include <utility>

namespace hostkit {

namespace {

constexpr int variableCode = 9;

void appendEscapedGroup(int code, std::string_view text, const DrawingStyle& style, std::string& bytes) {
    appendCode(code, style, bytes);
    appendEscaped(text, bytes);
    bytes += style.newline;
}

void appendProperties(BinaryContainer& container, const DrawingStyle& style, std::string& bytes) {
    const std::optional<DrawingProperties> properties = readProperties(container);
    if (!properties) return;
    const auto variable = [&](std::string_view name, std::string_view value) {
        appendGroup(variableCode, name, style, bytes);
        appendEscapedGroup(1, value, style, bytes);
    };
    const std::pair<std::string_view, const std::string&> texts[]{{"$TITLE", properties->title},
                                                                  {"$SUBJECT", properties->subject},
                                                                  {"$AUTHOR", properties->author},
                                                                  {"$KEYWORDS", properties->keywords},
                                                                  {"$COMMENTS", properties->comments},
                                                                  {"$LASTSAVEDBY", properties->lastSavedBy},
                                                                  {"$REVISIONNUMBER", properties->revision}};
    for (const auto& [name, value] : texts)
        if (!value.empty()) variable(name, value);
    for (const auto& [name, value] : properties->custom) {
        variable("$CUSTOMPROPERTYTAG", name);
        variable("$CUSTOMPROPERTY", value);
    }
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

void appendHeaderSection(TranscribedDrawing& drawing, const RecordNames& names, const DrawingStyle& style,
                         std::string& bytes) {
    BinaryContainer& container = drawing.container;
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
    appendInteger(70, readMeasurement(container), style, measurement);
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
