// Records that no file had before.

#include "drawingedits.h"
#include "recordkinds.h"
#include "sequenceends.h"

#include "dbblockbegin.h"
#include "dbblockend.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr int nameCode = 2;

void countOneMore(std::string& head, const DrawingStyle& style) {
    const SourceSpan span = tableCountIn(head, {0, static_cast<Adesk::UInt32>(head.size())});
    if (span.isEmpty()) return;
    GroupScanner scanner(head, span.offset);
    RawGroup group;
    (void)scanner.next(group);
    std::string text;
    appendInteger(tableCountCode, integerFromText(group.value).value_or(0) + 1, style, text);
    head.replace(span.offset, span.length, text);
}

} // namespace

SourceSpan tableCountIn(std::string_view bytes, SourceSpan record) {
    GroupScanner scanner(bytes.substr(0, record.offset + record.length), record.offset);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup) {
        if (group.code != tableCountCode) continue;
        const std::size_t begin = scanner.offsetOf(group.start);
        return {begin, static_cast<Adesk::UInt32>(scanner.offset() - begin)};
    }
    return {};
}

// The head of the dimension styles may list their handles.
void DrawingEdits::dropGoneFromHead(const AcDbSymbolTable& table) {
    DrawingRecord head;
    scanRecordAt(m_source.bytes, table.sourceSpan().offset, table.sourceSpan().length, head);
    std::string value;
    for (std::size_t place = 1; place < head.groups.size(); ++place) {
        const auto fate = m_changes.fateOf(head, place, m_objects.style().text, value);
        if (fate == ReferenceChanges::Fate::kStays) continue;
        const RecordGroup& group = head.groups[place];
        m_text.clear();
        if (fate == ReferenceChanges::Fate::kHasNewValue)
            appendGroup(group.code, value, m_objects.style(), m_text);
        const auto begin = static_cast<std::size_t>(group.start - m_source.bytes.data());
        m_edits.replace(begin, begin + group.bytes().size(), m_text);
    }
}

bool isNewRecord(const AcDbObject& object) {
    return object.sourceSpan().isEmpty() && object.isChangedSinceRead();
}

bool isListedObject(const AcDbObject& object) {
    return !object.isKindOf(AcDbEntity::desc()) && !object.isKindOf(AcDbSymbolTable::desc()) &&
           !object.isKindOf(AcDbSymbolTableRecord::desc());
}

void appendSectionStart(std::string_view name, const DrawingStyle& style, std::string& bytes) {
    appendGroup(0, "SECTION", style, bytes);
    appendGroup(nameCode, name, style, bytes);
}

bool writeNewEntity(const AcDbEntity& entity, ObjectWriting& objects, std::string& bytes) {
    if (!objects.writeNew(entity, bytes)) return false;
    const SubentityList* const parts = partsOf(entity);
    if (!parts) return true;
    for (std::size_t place = 0; place < parts->count(); ++place) {
        const AcDbObject* const part = DatabaseAccess::object(parts->idAt(place));
        if (part && !part->isErased() && !objects.writeNew(*part, bytes)) return false;
    }
    return !needsSequenceEnd(entity) || writeSequenceEnd(entity, objects, bytes);
}

bool writeNewBlock(const AcDbBlockTableRecord& block, std::string_view entities, ObjectWriting& objects,
                   std::string& bytes) {
    AcDbBlockBegin ownBegin;
    AcDbBlockEnd ownEnd;
    DatabaseAccess::setOwner(ownBegin, block.objectId());
    const AcDbObject* const begin = DatabaseAccess::object(block.blockBeginId());
    const AcDbObject* const end = DatabaseAccess::object(block.blockEndId());
    const bool isBegun = begin
                             ? objects.writeNew(*begin, bytes)
                             : objects.writeNewUnder(ownBegin, objects.newHandle(), block.objectId(), bytes);
    if (!isBegun) return false;
    bytes += entities;
    return end ? objects.writeNew(*end, bytes)
               : objects.writeNewUnder(ownEnd, objects.newHandle(), block.objectId(), bytes);
}

bool writeNewTable(TableKind kind, const AcDbSymbolTable& table, ObjectWriting& objects, std::string& bytes) {
    std::string head;
    if (!objects.writeNew(table, head)) return false;
    // A table's record begins with its kind and its name.
    const DrawingStyle& style = objects.style();
    const bool hasOneMore = kind == TableKind::kRegApp && objects.mustRegisterColors();
    if (hasOneMore) countOneMore(head, style);
    const std::size_t firstLine = head.find('\n') + 1;
    head.erase(0, head.find('\n', firstLine) + 1);
    appendGroup(0, "TABLE", style, bytes);
    appendGroup(nameCode, tableName(kind), style, bytes);
    bytes += head;
    if (kind == TableKind::kDimStyle && style.version >= DrawingVersion::k2000) {
        appendGroup(100, "AcDbDimStyleTable", style, bytes);
        appendInteger(71, 0, style, bytes);
    }
    for (const AcDbObjectId id : table.records()) {
        const AcDbObject* const record = DatabaseAccess::object(id);
        if (record && !record->isErased() && !objects.writeNew(*record, bytes)) return false;
    }
    if (hasOneMore && !objects.registerColors(table.objectId(), bytes)) return false;
    appendGroup(0, "ENDTAB", style, bytes);
    return true;
}

} // namespace hostkit
