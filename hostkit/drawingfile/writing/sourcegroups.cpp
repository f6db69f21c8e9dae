#include "sourcegroups.h"

#include "objectwriting.h"
#include "r12viewport.h"

#include "dbaccess.h"
#include "dbopaque.h"
#include "dbsource.h"
#include "dbviewport.h"
#include "fieldtable.h"
#include "groupcodes.h"

#include <algorithm>

namespace hostkit {

namespace {

/// The subclasses behind AcDbEntity of kinds that R12 has and no class here reads; by the flags of group 70.
struct MarkRow {
    std::string_view kind;
    std::int64_t flags; ///< one of these is set; 0: whatever stands there
    std::string_view first;
    std::string_view second;
};
constexpr MarkRow markRows[] = {
    {"POLYLINE", 16, "AcDbPolygonMesh", ""},
    {"POLYLINE", 64, "AcDbPolyFaceMesh", ""},
    {"VERTEX", 64 + 128, "AcDbVertex", "AcDbPolyFaceMeshVertex"},
    {"VERTEX", 64, "AcDbVertex", "AcDbPolygonMeshVertex"},
    {"VERTEX", 128, "AcDbFaceRecord", ""},
    {"SHAPE", 0, "AcDbShape", ""},
    {"VIEWPORT", 0, "AcDbViewport", ""},
};

std::int64_t flagsOf(const DrawingRecord& record) {
    const RecordGroup* const group = record.find(70);
    return group ? integerFromText(group->value).value_or(0) : 0;
}

bool isOpaque(const AcDbObject& object) {
    return object.isKindOf(AcDbOpaqueEntity::desc()) || object.isKindOf(AcDbOpaqueObject::desc());
}

// What stands for an object in another form has its handle, but none of its groups.
bool isOfKind(const AcDbObject& object, std::string_view name) {
    const std::wstring_view kind = object.dxfName();
    return std::equal(kind.begin(), kind.end(), name.begin(), name.end());
}

} // namespace

SourceGroups::SourceGroups(const AcDbDatabase& database, const DrawingStyle& target)
    : m_database(database)
    , m_target(target)
    , m_reader(const_cast<AcDbDatabase*>(&database), target.text, target.version) {
    m_reader.readWithoutDrawing();
    if (const auto source = database.source())
        m_reader.setForm(DrawingText(static_cast<CodePage>(source->codePage)),
                         versionOfFiler(source->version));
}

std::string SourceGroups::complete(std::string_view text) {
    std::string result;
    result.reserve(text.size() + text.size() / 8);
    GroupScanner scanner(text);
    DrawingRecord record;
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup) {
        (void)scanRecord(scanner, group, record);
        const RecordGroup* const handle = record.find(handleCodeOf(record.name()));
        const AcDbObject* const object = handle ? DatabaseAccess::object(DatabaseAccess::find(
                                                      m_database, handleFromText(handle->value).value_or(0)))
                                                : nullptr;
        const char* const extended = record.extendedDataBegin < record.groups.size()
                                         ? record.groups[record.extendedDataBegin].start
                                         : record.end();
        const std::size_t begin = result.size();
        result.append(record.begin(), extended);
        if (object && isOfKind(*object, record.name()) && isWanted(*object)) appendGroups(*object, result);
        const auto* const viewport = AcDbViewport::cast(object);
        if (viewport && !hasSubclassMarkers(m_target.version))
            appendView(*viewport, {extended, record.end()}, begin, result);
        result.append(extended, record.end());
    }
    return result;
}

bool SourceGroups::isWanted(const AcDbObject& object) const {
    if (object.sourceSpan().isEmpty() || object.isKindOf(AcDbSymbolTable::desc())) return false;
    return isOpaque(object) || object.isKindOf(AcDbViewport::desc()) ||
           hasSubclassMarkers(m_target.version) || object.isKindOf(AcDbSymbolTableRecord::desc());
}

void SourceGroups::appendMarks(std::string& bytes) const {
    const std::int64_t flags = flagsOf(m_original);
    for (const MarkRow& row : markRows) {
        if (row.kind != m_original.name() || (flags & row.flags) != row.flags) continue;
        appendGroup(subclassMarkCode, row.first, m_target, bytes);
        if (!row.second.empty()) appendGroup(subclassMarkCode, row.second, m_target, bytes);
        return;
    }
}

void SourceGroups::appendGroups(const AcDbObject& object, std::string& bytes) {
    const auto source = m_database.source();
    (void)markGroups(object, source->bytes, object.sourceSpan(), m_reader, m_original, m_head);
    const bool hasMarks = hasSubclassMarkers(m_target.version);
    if (isOpaque(object) && hasMarks && !m_original.hasMarks) appendMarks(bytes);
    // The names of arrow blocks have codes that mean handles later.
    const bool isOldStyle = hasMarks && m_original.name() == "DIMSTYLE";
    bool isInGroup = false;
    for (std::size_t place = 1; place < m_original.groups.size(); ++place) {
        const RecordGroup& group = m_original.groups[place];
        if (group.code >= firstExtendedCode || group.code == embeddedObjectCode) break;
        if (group.code == applicationGroupCode) isInGroup = withoutBlanks(group.value).substr(0, 1) == "{";
        if (isInGroup || group.isTaken() || group.code == applicationGroupCode || group.code == commentCode ||
            group.code == subclassMarkCode || (isOldStyle && group.code >= 5 && group.code <= 7))
            continue;
        bytes += group.bytes();
    }
    if (m_original.name() != "VIEWPORT") return;
    const auto* const viewport = AcDbViewport::cast(&object);
    if (hasMarks && !(viewport && viewport->tellsView()))
        appendViewFromR12(m_original, m_target, bytes);
    else if (!viewport)
        appendViewOfR12(m_original, m_database, m_target, bytes);
}

namespace {

// As a record of a later form has it.
void appendViewGroups(const AcDbViewport& viewport, const DrawingStyle& style, std::string& bytes) {
    const AcGePoint2d center = viewport.viewCenter();
    const AcGePoint3d target = viewport.viewTarget();
    const AcGeVector3d direction = viewport.viewDirection();
    const std::pair<int, double> values[] = {{12, center.x},
                                             {22, center.y},
                                             {16, direction.x},
                                             {26, direction.y},
                                             {36, direction.z},
                                             {17, target.x},
                                             {27, target.y},
                                             {37, target.z},
                                             {42, viewport.lensLength()},
                                             {43, viewport.frontClipDistance()},
                                             {44, viewport.backClipDistance()},
                                             {45, viewport.viewHeight()},
                                             {51, degreesFromRadians(viewport.twistAngle())}};
    for (const auto& [code, value] : values) appendReal(code, value, style, bytes);
    appendInteger(90, viewport.flags(), style, bytes);
    for (const AcDbObjectId layer : viewport.frozenLayers())
        appendHandle(331, layer.handle().value(), style, bytes);
}

} // namespace

// Of the viewport whose record begins there, as extended data.
void SourceGroups::appendView(const AcDbViewport& viewport, std::string_view extended, std::size_t begin,
                              std::string& bytes) {
    std::string written = bytes.substr(begin);
    if (viewport.tellsView()) appendViewGroups(viewport, m_target, written);
    written += extended;
    GroupScanner scanner(written);
    DrawingRecord record;
    RawGroup group;
    if (scanner.next(group) != ScanResult::kGroup) return;
    (void)scanRecord(scanner, group, record);
    appendViewOfR12(record, m_database, m_target, bytes);
}

} // namespace hostkit
