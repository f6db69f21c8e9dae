// Blocks and the entities in them.

#include "drawingreading.h"

#include "dbattribute.h"
#include "dbblockbegin.h"
#include "dbblockend.h"
#include "dbblockreference.h"
#include "dbopaque.h"
#include "dbsequenceend.h"
#include "groupcodes.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr int nameCode = 2;
constexpr int layerCode = 8;
constexpr int paperSpaceCode = 67;
constexpr std::wstring_view modelSpaceName = L"*Model_Space";
constexpr std::wstring_view paperSpaceName = L"*Paper_Space";

// A block of the file. In R12 the spaces bear other names, which are names like any from then on.
std::wstring_view nameOfSpace(std::wstring_view name, DrawingVersion version) {
    if (hasSubclassMarkers(version)) return name;
    if (equalFolded(name, L"$MODEL_SPACE")) return modelSpaceName;
    if (equalFolded(name, L"$PAPER_SPACE")) return paperSpaceName;
    return name;
}

} // namespace

AcDbBlockTableRecord& DrawingReading::blockNamed(std::wstring_view name) {
    return static_cast<AcDbBlockTableRecord&>(impliedRecord(TableKind::kBlock, nameOfSpace(name, m_version)));
}

// Without records of blocks (R12), references may name a block that comes later: all are made known first.
void DrawingReading::addBlocksByName() {
    if (!DatabaseAccess::table(m_database, TableKind::kBlock).isNull()) return;
    GroupScanner scanner = m_scanner;
    RawGroup group;
    bool awaitsName = false;
    while (scanner.next(group) == ScanResult::kGroup && !group.is(0, "ENDSEC")) {
        if (group.code == 0) awaitsName = group.is(0, "BLOCK");
        if (!awaitsName || group.code != nameCode) continue;
        (void)blockNamed(m_filer.drawingText().decode(group.value));
        awaitsName = false;
    }
}

bool DrawingReading::readBlocks(const RawGroup& opening) {
    addStandingLinetypes();
    addBlocksByName();
    RawGroup group;
    for (;;) {
        if (!next(group)) return false;
        if (group.code == 999) continue;
        if (group.is(0, "ENDSEC")) return true;
        if (!group.is(0, "BLOCK"))
            return fail(Acad::eBadDxfSequence, group.code == 0 ? group.start : opening.start,
                        L"a block was expected, not " + shown(group.value));
        if (!nextRecord(group) || !readBlock()) return false;
    }
}

bool DrawingReading::readBlock() {
    const RecordGroup* const name = m_record.find(nameCode);
    if (!name) return fail(Acad::eBadDxfSequence, m_record.begin(), L"a block without a name");
    AcDbBlockTableRecord& block = blockNamed(m_filer.drawingText().decode(name->value));
    if (!block.blockBeginId().isNull())
        return fail(Acad::eDuplicateKey, m_record.begin(), L"a second block named " + shown(name->value));
    std::unique_ptr<AcDbObject> opening = std::make_unique<AcDbBlockBegin>();
    DatabaseAccess::setOwner(*opening, block.objectId()); // its fields are the block's
    const AcDbObject* const begin = addRead(withFields(std::move(opening)), block.objectId());
    if (!begin) return false;
    DatabaseAccess::setBlockRecords(block, begin->objectId(), {});
    RawGroup group;
    for (;;) {
        if (!next(group)) return false;
        if (group.code == 999) continue;
        if (group.code != 0 || group.is(0, "ENDSEC") || group.is(0, "BLOCK") || group.is(0, "EOF"))
            return fail(Acad::eBadDxfSequence, group.start, L"the block " + block.name() + L" is not closed");
        if (!nextRecord(group)) return false;
        if (m_record.name() == "ENDBLK") break;
        if (!takeEntity(block)) return false;
    }
    closeContainer();
    const AcDbObject* const end = addRead(withFields(std::make_unique<AcDbBlockEnd>()), block.objectId());
    if (!end) return false;
    DatabaseAccess::setBlockRecords(block, begin->objectId(), end->objectId());
    return true;
}

bool DrawingReading::readEntities(const RawGroup& opening) {
    addStandingLinetypes();
    m_modelSpace = &blockNamed(modelSpaceName);
    m_paperSpace = &blockNamed(paperSpaceName);
    RawGroup group;
    for (;;) {
        if (!next(group)) return false;
        if (group.code == 999) continue;
        if (group.is(0, "ENDSEC")) break;
        if (group.code != 0 || group.is(0, "SECTION") || group.is(0, "EOF"))
            return fail(Acad::eBadDxfSequence, opening.start, L"the section of the entities is not closed");
        if (!nextRecord(group) || !takeEntity(spaceOf(m_record))) return false;
    }
    closeContainer();
    return true;
}

// By its owner where that is one of the spaces, else by its mark.
AcDbBlockTableRecord& DrawingReading::spaceOf(const DrawingRecord& record) {
    const RecordGroup* const mark = record.find(paperSpaceCode);
    const bool isInPaperSpace = mark && integerFromText(mark->value) == 1;
    if (hasSubclassMarkers(m_version)) {
        for (const RecordGroup& group : record.groups) {
            if (group.code == 100 || group.code >= 1000) break;
            if (group.code != ownerCode) continue;
            const auto* const owner = DatabaseAccess::objectOf<AcDbBlockTableRecord>(
                DatabaseAccess::find(m_database, handleFromText(group.value).value_or(0)));
            if (owner && owner->isLayout()) return const_cast<AcDbBlockTableRecord&>(*owner);
        }
    }
    return isInPaperSpace ? *m_paperSpace : *m_modelSpace;
}

void DrawingReading::closeContainer() { m_container = nullptr; }

bool DrawingReading::takeEntity(AcDbBlockTableRecord& block) {
    const std::string_view name = m_record.name();
    const bool isPart = name == "VERTEX" || name == "ATTRIB" || name == "SEQEND";
    if (isPart && m_container) return takePart();
    if (isPart) warn(m_record.begin(), shown(name) + L" belongs to nothing and was kept as it stands");
    closeContainer();
    std::unique_ptr<AcDbEntity> entity =
        isPart ? std::make_unique<AcDbOpaqueEntity>(std::wstring(name.begin(), name.end()))
               : makeEntity(m_record, m_applications);
    AcDbObject* const added = addRead(withFields(std::move(entity)), block.objectId());
    if (!added) return false;
    auto& taken = static_cast<AcDbEntity&>(*added);
    giveLayer(taken);
    DatabaseAccess::appendToBlock(block, taken.objectId());
    ++m_report.entityCount;
    if (SubentityList* const parts = DatabaseAccess::parts(taken)) {
        parts->becomeResident();
        m_container = &taken;
    }
    return true;
}

bool DrawingReading::takePart() {
    AcDbEntity& owner = *m_container;
    const bool isEnd = m_record.name() == "SEQEND";
    AcDbObject* const added = addRead(withFields(makePart(m_record, owner)), owner.objectId());
    if (!added) return false;
    giveLayer(static_cast<AcDbEntity&>(*added));
    SubentityList& parts = *DatabaseAccess::parts(owner);
    if (isEnd)
        parts.setSequenceEnd(added->objectId());
    else
        parts.appendResident(added->objectId());
    if (isEnd) closeContainer();
    return true;
}

// An entity may name a layer that no table has; other programs take that as a plain new layer.
void DrawingReading::giveLayer(AcDbEntity& entity) {
    if (!entity.layerId().isNull()) return;
    const std::wstring* const unknown = DatabaseAccess::unknownName(entity, layerCode);
    const bool isNamed = unknown && unknown->find_first_not_of(L" \t") != std::wstring::npos;
    const std::wstring name = isNamed ? *unknown : L"0";
    DatabaseAccess::forgetUnknownName(entity, layerCode);
    DatabaseAccess::setLayer(entity, impliedRecord(TableKind::kLayer, name).objectId());
}

} // namespace hostkit
