// The check of tables, dictionaries, blocks and extended data.

#include "auditing.h"

#include "blockcircles.h"
#include "drawingreading.h"

#include "dbblockreference.h"
#include "dblayout.h"
#include "groupblock.h"
#include "headervariables.h"

namespace hostkit {

namespace {

struct Standing {
    TableKind kind;
    const wchar_t* name;
};
constexpr Standing standingRecords[] = {
    {TableKind::kLayer, L"0"},
    {TableKind::kLinetype, L"ByLayer"},
    {TableKind::kLinetype, L"ByBlock"},
    {TableKind::kLinetype, L"Continuous"},
    {TableKind::kBlock, L"*Model_Space"},
    {TableKind::kBlock, L"*Paper_Space"},
};

struct Current {
    TableKind kind;
    const wchar_t* variable;
};
constexpr Current currentRecords[] = {
    {TableKind::kLayer, L"CLAYER"},
    {TableKind::kLinetype, L"CELTYPE"},
    {TableKind::kTextStyle, L"TEXTSTYLE"},
    {TableKind::kDimStyle, L"DIMSTYLE"},
};

constexpr short applicationCode = 1001;
constexpr short braceCode = 1002;
constexpr short layerNameCode = 1003;
constexpr short handleCode = 1005;

const AcDbSymbolTable* tableOf(const AcDbDatabase& database, TableKind kind) {
    const AcDbObjectId id = DatabaseAccess::table(database, kind);
    return id.isErased() ? nullptr : DatabaseAccess::objectOf<AcDbSymbolTable>(id);
}

std::wstring wideTableName(TableKind kind) {
    const std::string_view name = tableName(kind);
    return std::wstring(name.begin(), name.end());
}

bool hasRecord(const AcDbDatabase& database, TableKind kind, std::wstring_view name) {
    const AcDbSymbolTable* const table = tableOf(database, kind);
    return table && !table->find(name).isNull();
}

} // namespace

// Tables.

void DrawingAudit::checkTable(TableKind kind) {
    const AcDbSymbolTable* const table = tableOf(m_database, kind);
    if (!table)
        return fault(AuditCheck::kTable, nullptr, L"the table " + wideTableName(kind) + L" is missing");
    const bool mayShareNames = kind == TableKind::kViewport;
    const bool mayHaveNoName = kind == TableKind::kTextStyle;
    for (const AcDbObjectId id : table->records()) {
        if (!isLive(id)) continue;
        const auto* const record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
        if (!record || !record->isKindOf(table->recordClass())) {
            fault(AuditCheck::kTable, DatabaseAccess::object(id),
                  L"it is no record for the table " + wideTableName(kind));
            continue;
        }
        if (record->name().empty()) {
            if (!mayHaveNoName) fault(AuditCheck::kTable, record, L"it has no name");
        } else if (!mayShareNames && table->find(record->name()) != id) {
            fault(AuditCheck::kTable, record,
                  L"the name " + record->name() + L" leads to " + handleText(table->find(record->name())));
        }
    }
}

void DrawingAudit::checkTables() {
    for (int kind = 0; kind < tableCount; ++kind) checkTable(static_cast<TableKind>(kind));
    for (const Standing& each : standingRecords)
        if (!hasRecord(m_database, each.kind, each.name))
            fault(AuditCheck::kTable, nullptr,
                  L"the table " + wideTableName(each.kind) + L" lacks " + each.name);
    for (const Current& each : currentRecords) {
        const std::wstring name = m_database.header().text(each.variable);
        if (!name.empty() && !hasRecord(m_database, each.kind, name))
            fault(AuditCheck::kTable, nullptr,
                  std::wstring(L"the header's ") + each.variable + L" names " + name + L", which is missing");
    }
}

// Dictionaries.

void DrawingAudit::checkDictionary(const AcDbDictionary& dictionary) {
    AcDbDictionaryIterator iterator(dictionary);
    for (bool more = !iterator.done(); more; more = iterator.next()) {
        const AcDbObjectId id = iterator.objectId();
        const std::wstring name = iterator.name();
        if (name.empty()) fault(AuditCheck::kDictionary, &dictionary, L"an entry has no name");
        if (!id.isResident())
            fault(AuditCheck::kDictionary, &dictionary,
                  L"its entry " + name + L", " + handleText(id) + L", is missing");
        if (id == dictionary.objectId())
            fault(AuditCheck::kDictionary, &dictionary, L"its entry " + name + L" is the dictionary itself");
    }
}

void DrawingAudit::checkDictionaries() {
    const AcDbObjectId root = m_database.namedObjectsDictionaryId();
    if (!isLive(root) || !DatabaseAccess::objectOf<AcDbDictionary>(root))
        fault(AuditCheck::kDictionary, nullptr, L"the named-object dictionary is missing");
    forEachLive([this](AcDbObject& object) {
        if (const auto* const dictionary = AcDbDictionary::cast(&object)) checkDictionary(*dictionary);
    });
}

// Blocks.

void DrawingAudit::checkBlocks() {
    if (const AcDbBlockTableRecord* const circle = findBlockInItself(m_database))
        fault(AuditCheck::kBlock, circle, L"the block " + circle->name() + L" contains itself");
    forEachLive([this](AcDbObject& object) {
        if (const auto* const reference = AcDbBlockReference::cast(&object))
            return checkReferenceToBlock(*reference);
        if (const auto* const layout = AcDbLayout::cast(&object)) checkLayout(*layout);
        const auto* const block = AcDbBlockTableRecord::cast(&object);
        if (block && !block->getLayoutId().isNull() && !isLive(block->getLayoutId()))
            fault(AuditCheck::kBlock, block,
                  L"its layout " + handleText(block->getLayoutId()) + L" is " + lackOf(block->getLayoutId()));
    });
}

void DrawingAudit::checkReferenceToBlock(const AcDbBlockReference& reference) {
    const AcDbObjectId id = reference.blockTableRecord();
    if (!isLive(id) || !DatabaseAccess::objectOf<AcDbBlockTableRecord>(id))
        fault(AuditCheck::kBlock, &reference, L"the block that it inserts is " + lackOf(id));
}

void DrawingAudit::checkLayout(const AcDbLayout& layout) {
    const AcDbObjectId id = layout.getBlockTableRecordId();
    const auto* const block = isLive(id) ? DatabaseAccess::objectOf<AcDbBlockTableRecord>(id) : nullptr;
    if (!block)
        fault(AuditCheck::kBlock, &layout, L"its block " + handleText(id) + L" is " + lackOf(id));
    else if (block->getLayoutId() != layout.objectId())
        fault(AuditCheck::kBlock, &layout,
              L"its block " + block->name() + L" has the layout " + handleText(block->getLayoutId()));
}

// Extended data.

void DrawingAudit::checkExtendedData(const AcDbObject& object, const GroupBlock& data) {
    if (data.size() > GroupBlock::maxExtendedDataSize)
        fault(AuditCheck::kExtendedData, &object,
              L"it has " + std::to_wstring(data.size()) + L" bytes of extended data, above " +
                  std::to_wstring(GroupBlock::maxExtendedDataSize));
    GroupWalker walker(data);
    AcDbDxfGroup group;
    int depth = 0;
    bool isFirst = true;
    bool areBracesSound = true;
    for (; walker.next(group); isFirst = false) {
        if (isFirst && group.code != applicationCode)
            fault(AuditCheck::kExtendedData, &object, L"its extended data begins without an application");
        if (group.code == applicationCode) {
            areBracesSound = areBracesSound && depth == 0;
            depth = 0;
            if (!hasRecord(m_database, TableKind::kRegApp, group.text))
                fault(AuditCheck::kExtendedData, &object,
                      L"the application " + std::wstring(group.text) + L" is not registered");
        } else if (group.code == braceCode) {
            depth += group.text == L"{" ? 1 : -1;
            areBracesSound = areBracesSound && depth >= 0;
        } else {
            checkExtendedReference(object, group);
        }
    }
    if (!areBracesSound || depth != 0)
        fault(AuditCheck::kExtendedData, &object, L"the braces of its extended data do not match");
}

void DrawingAudit::checkExtendedReference(const AcDbObject& object, const AcDbDxfGroup& group) {
    if (group.code == layerNameCode && !hasRecord(m_database, TableKind::kLayer, group.text))
        remark(AuditCheck::kExtendedData, &object,
               L"its extended data names the layer " + std::wstring(group.text) + L", which is missing");
    if (group.code != handleCode || group.handle() == 0) return;
    const AcDbObjectId id = DatabaseAccess::find(m_database, group.handle());
    if (!isLive(id))
        remark(AuditCheck::kExtendedData, &object,
               L"its extended data refers to " + handleText(group.handle()) + L", which is " + lackOf(id));
}

} // namespace hostkit
