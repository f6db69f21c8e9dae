#include "drawingoutput.h"

#include "binarycontainerwriting.h"
#include "binarysections.h"
#include "binarytranscription.h"
#include "drawingencoding.h"
#include "encodinglists.h"
#include "headergathering.h"

#include <array>

namespace hostkit {
namespace {

/// The sections that go along, without those that are made anew.
BinaryContainer containerFor(DrawingVersion version, unsigned codePage, const DrawingOrigin& origin) {
    BinaryContainer container;
    container.version = version;
    container.codePage = codePage;
    if (!origin.drawing) return container;
    const BinaryContainer& before = origin.drawing->container;
    const bool isSameForm = before.version == version;
    if (isSameForm) container.maintenance = before.maintenance;
    for (const auto& [name, bytes] : before.sections) {
        const bool isMadeAnew = name == "AcDb:AcDbObjects" || name == "AcDb:Handles" ||
                                name == "AcDb:Header" || name == "AcDb:Classes";
        const bool isOfAll = name == "AcDb:Preview";
        if (!isMadeAnew && (isSameForm || isOfAll)) container.sections[name] = bytes;
    }
    return container;
}

std::vector<std::uint8_t> sectionOf(const TranscribedDrawing& drawing, std::string_view name) {
    const ByteSpan bytes = drawing.container.section(name);
    return {bytes.begin(), bytes.end()};
}

unsigned codePageOf(std::string_view text, const DrawingOrigin& origin) {
    if (origin.drawing) return origin.drawing->container.codePage;
    const std::string_view name = headerValueIn(ExchangeOutline::headerAlone(text), "$DWGCODEPAGE");
    const unsigned number = codePageNumber(std::wstring(name.begin(), name.end()));
    constexpr unsigned western = 30;
    return number ? number : western;
}

} // namespace

DrawingVersion formOfBinaryDrawing(DrawingVersion version) {
    if (version < DrawingVersion::k2000) return DrawingVersion::k2000;
    return version == DrawingVersion::k2007 ? DrawingVersion::k2010 : version;
}

std::unordered_set<std::uint64_t> opaqueRecordsOf(const TranscribedDrawing& drawing) {
    std::unordered_set<std::uint64_t> handles;
    for (const TranscribedRecord& record : drawing.records)
        if (record.isOpaque) handles.insert(record.handle);
    return handles;
}

bool binaryDrawingFromText(std::string_view text, DrawingVersion version, const DrawingOrigin& origin,
                           std::string& bytes, FormChanges& changes, std::wstring& reason) {
    const unsigned codePage = codePageOf(text, origin);
    EncodedDrawing encoded;
    std::optional<EncodingOriginal> original;
    if (origin.drawing && origin.drawing->container.version == version)
        original.emplace(EncodingOriginal{*origin.drawing, origin.text});
    if (!encodeDrawing(text, version, codePage, original ? &*original : nullptr, encoded)) {
        reason = encoded.fault;
        return false;
    }
    for (const FormChange& change : encoded.leftOut.all())
        for (const std::uint64_t handle : change.handles) changes.add(change.kind, {}, handle);
    BinaryContainer container = containerFor(version, codePage, origin);
    std::vector<std::uint8_t>& header = container.sections["AcDb:Header"];
    header = writeHeader(container, encoded.header);
    if (original && header == writeHeader(container, origin.drawing->header)) // and so with what fills it up
        header = sectionOf(*origin.drawing, "AcDb:Header");
    container.sections["AcDb:Classes"] = writeClasses(container, encoded.classes);
    if (!original || readMeasurement(container) != encoded.isMetric)
        container.sections["AcDb:Template"] = writeMeasurement(container, encoded.isMetric);
    if (version >= DrawingVersion::k2004) {
        const DrawingProperties properties =
            gatherProperties(ExchangeOutline::headerAlone(text), encoded.header);
        if (readProperties(container) != properties)
            container.sections["AcDb:SummaryInfo"] = writeProperties(container, properties);
    }
    std::vector<std::uint8_t> file;
    if (!writeContainer(container, {encoded.objects, std::move(encoded.places)}, file, reason)) return false;
    bytes.assign(file.begin(), file.end());
    return true;
}

} // namespace hostkit
