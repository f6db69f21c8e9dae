#include "drawingoutput.h"

#include "binarycontainerwriting.h"
#include "binarysections.h"
#include "binarytranscription.h"
#include "datastore.h"
#include "drawingencoding.h"
#include "encodinglists.h"
#include "groupscanner.h"
#include "headergathering.h"

#include <array>
#include <map>
#include <set>

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

unsigned codePageOf(const ExchangeOutline& outline, const DrawingOrigin& origin) {
    if (origin.drawing) return origin.drawing->container.codePage;
    const std::string_view name = headerValueIn(outline, "$DWGCODEPAGE");
    const unsigned number = codePageNumber(std::wstring(name.begin(), name.end()));
    constexpr unsigned western = 30;
    return number ? number : western;
}

/// Bodies that the drawing has in the section of its store, as digits, by the handles of their entities.
std::map<std::uint64_t, std::string> storedBodies(const ExchangeOutline& outline) {
    std::map<std::uint64_t, std::string> bodies;
    GroupScanner scanner(outline.text.substr(0, outline.storeEnd), outline.storeBegin);
    RawGroup group;
    std::uint64_t handle = 0;
    bool isBody = false;
    while (scanner.next(group) == ScanResult::kGroup) {
        if (group.code == 0) handle = 0;
        if (group.code == 0 || group.code == 2) isBody = group.is(2, "ASM_Data");
        if (group.code == 320) handle = handleFromText(withoutBlanks(group.value)).value_or(0);
        if (group.code == 310 && isBody && handle) bodies[handle] += withoutBlanks(group.value);
    }
    return bodies;
}

bool hasDigits(std::string_view digits, ByteSpan bytes) {
    if (digits.size() != 2 * bytes.size()) return false;
    std::size_t at = 0;
    for (const std::uint8_t byte : bytes)
        for (const int shift : {4, 0}) {
            const char digit = "0123456789ABCDEF"[byte >> shift & 15];
            const char told = digits[at++];
            if (digit != (told >= 'a' ? told - 'a' + 'A' : told)) return false;
        }
    return true;
}

/// From 2013 on bodies stand in a store, of which only what came with the drawing is written: those that are
/// new are missing then, and of changed ones the store has the old body.
void tellLostBodies(const ExchangeOutline& outline, BinaryContainer& container, FormChanges& changes) {
    if (container.version < DrawingVersion::k2013) return;
    std::map<std::uint64_t, std::string> bodies = storedBodies(outline);
    if (bodies.empty()) return;
    std::set<std::uint64_t> stale;
    for (const StoredData& data : readDataStore(container)) {
        const auto body = bodies.find(data.handle);
        if (body == bodies.end() || data.kind == "AcDb_Thumbnail_Schema") continue;
        if (hasDigits(body->second, data.bytes))
            bodies.erase(body);
        else
            stale.insert(data.handle);
    }
    for (const OutlinedBlock& block : outline.blocks)
        for (const OutlinedEntity& entity : block.entities)
            if (bodies.contains(entity.record.handle)) {
                const std::string_view kind = valueIn(entity.record.in(outline.text), 0);
                changes.add(std::wstring(kind.begin(), kind.end()) + L" body",
                            stale.contains(entity.record.handle) ? L"as it was before" : L"",
                            entity.record.handle);
            }
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

bool binaryDrawingFromText(const ExchangeOutline& outline, DrawingVersion version,
                           const DrawingOrigin& origin, std::string& bytes, FormChanges& changes,
                           std::wstring& reason) {
    const unsigned codePage = codePageOf(outline, origin);
    const bool isSameForm = origin.drawing && origin.drawing->container.version == version;
    EncodedDrawing encoded;
    if (!encodeDrawing(outline, version, codePage, origin, encoded)) {
        reason = encoded.fault;
        return false;
    }
    for (const FormChange& change : encoded.leftOut.all())
        for (const std::uint64_t handle : change.handles) changes.add(change.kind, change.became, handle);
    BinaryContainer container = containerFor(version, codePage, origin);
    std::vector<std::uint8_t>& header = container.sections["AcDb:Header"];
    header = writeHeader(container, encoded.header);
    if (isSameForm &&
        header == writeHeader(container, origin.drawing->header)) // and so with what fills it up
        header = sectionOf(*origin.drawing, "AcDb:Header");
    container.sections["AcDb:Classes"] = writeClasses(container, encoded.classes);
    if (!isSameForm || readMeasurement(container) != encoded.isMetric)
        container.sections["AcDb:Template"] = writeMeasurement(container, encoded.isMetric);
    if (version >= DrawingVersion::k2004) {
        const DrawingProperties properties = gatherProperties(outline, encoded.header);
        if (readProperties(container) != properties)
            container.sections["AcDb:SummaryInfo"] = writeProperties(container, properties);
    }
    tellLostBodies(outline, container, changes);
    std::vector<std::uint8_t> file;
    if (!writeContainer(container, {encoded.objects, std::move(encoded.places)}, file, reason)) return false;
    bytes.assign(file.begin(), file.end());
    return true;
}

} // namespace hostkit
