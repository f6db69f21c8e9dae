#include "sequenceends.h"

#include "dbblockreference.h"
#include "dbopaque.h"
#include "dbsequenceend.h"

#include <algorithm>
#include <vector>

namespace hostkit {

namespace {

// A reader forgets the container before it at the beginning of a section and of a block.
struct Standing {
    std::size_t offset;
    const AcDbEntity* entity; ///< null: such a beginning
};

void addBeginning(SourceSpan span, std::vector<Standing>& standing) {
    if (!span.isEmpty()) standing.push_back({span.offset, nullptr});
}

// In the order of the file, where both spaces share a section.
std::vector<Standing> standingEntities(const AcDbDatabase& database, const DrawingSource& source) {
    std::vector<Standing> standing;
    for (const SourceSection& section : source.sections) standing.push_back({section.offset, nullptr});
    const auto* const blocks = DatabaseAccess::objectOf<AcDbSymbolTable>(database.blockTableId());
    for (const AcDbObjectId blockId : blocks ? blocks->records() : std::vector<AcDbObjectId>()) {
        const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(blockId);
        if (!block) continue;
        if (const AcDbObject* const begin = DatabaseAccess::object(block->blockBeginId()))
            addBeginning(begin->sourceSpan(), standing);
        for (const AcDbObjectId id : block->entities()) {
            const auto* const entity = DatabaseAccess::objectOf<AcDbEntity>(id);
            if (entity && !entity->sourceSpan().isEmpty() && !isLeftOut(*entity))
                standing.push_back({entity->sourceSpan().offset, entity});
        }
    }
    std::sort(standing.begin(), standing.end(),
              [](const Standing& one, const Standing& other) { return one.offset < other.offset; });
    return standing;
}

// New parts come into the file with an end, where it has none.
bool isOpenInFile(const AcDbEntity& entity) {
    const SubentityList* const parts = partsOf(entity);
    if (!parts) return false;
    const AcDbObject* const end = DatabaseAccess::object(parts->sequenceEnd());
    if (end && !isLeftOut(*end)) return false;
    for (std::size_t place = 0; place < parts->count(); ++place) {
        const AcDbObject* const part = DatabaseAccess::object(parts->idAt(place));
        if (part && part->sourceSpan().isEmpty() && !part->isErased()) return false;
    }
    return true;
}

bool writeOwnEnd(const AcDbEntity& owner, ObjectWriting& objects, std::string& bytes) {
    AcDbSequenceEnd end;
    (void)end.setPropertiesFrom(&owner);
    return objects.writeNewUnder(end, objects.newHandle(), owner.objectId(), bytes);
}

} // namespace

bool isOfPartKind(const AcDbEntity& entity) {
    const std::wstring_view kind = entity.dxfName();
    return kind == L"VERTEX" || kind == L"ATTRIB" || kind == L"SEQEND";
}

bool needsSequenceEnd(const AcDbEntity& entity) {
    const SubentityList* const parts = partsOf(entity);
    if (!parts) return false;
    for (std::size_t place = 0; place < parts->count(); ++place) {
        const AcDbEntity* const part = parts->at(place);
        if (part && !part->isErased()) return true;
    }
    return !entity.isKindOf(AcDbBlockReference::desc()) && !entity.isKindOf(AcDbOpaqueEntity::desc());
}

bool writeSequenceEnd(const AcDbEntity& owner, ObjectWriting& objects, std::string& bytes) {
    const SubentityList* const parts = partsOf(owner);
    const AcDbObject* const end = parts ? DatabaseAccess::object(parts->sequenceEnd()) : nullptr;
    return end ? objects.writeNew(*end, bytes) : writeOwnEnd(owner, objects, bytes);
}

bool hasOpenSequence(const AcDbEntity& entity) { return partsOf(entity) && !needsSequenceEnd(entity); }

bool endBeforeStrays(const AcDbDatabase& database, const DrawingSource& source, ObjectWriting& objects,
                     ByteEdits& edits) {
    const AcDbEntity* previous = nullptr;
    for (const Standing& each : standingEntities(database, source)) {
        if (previous && each.entity && isOfPartKind(*each.entity) && isOpenInFile(*previous)) {
            std::string end;
            if (!writeOwnEnd(*previous, objects, end)) return false;
            edits.insert(each.offset, end);
        }
        previous = each.entity;
    }
    return true;
}

} // namespace hostkit
