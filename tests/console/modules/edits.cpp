// A module whose commands change a whole drawing in one way each, for tools that compare what is written with
// what another program expects of it, and some for what selections take. Entities are those that stand
// in a block themselves; the blocks that dimensions and the like keep for their pictures (names with *) are
// left alone, but for the spaces. What an edit refuses is told.
#include "acdocman.h"
#include "aced.h"
#include "dbaccess.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dblayertablerecord.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "modulecommand.h"
#include "rxdlinkr.h"
#include "selecting.h"

#include <functional>
#include <numbers>
#include <set>
#include <string>

namespace {

using hostkit::DatabaseAccess;
using hostkit::TableKind;

constexpr std::wstring_view suffix = L"-new";
constexpr const wchar_t* newLayer = L"Edited";

AcDbDatabase& drawing() { return *acDocManagerPtr()->curDocument()->database(); }

void tellRefused(const AcDbObject& object, Acad::ErrorStatus status) {
    wchar_t handle[17] = {};
    object.handle().getIntoAsciiBuffer(handle);
    acutPrintf(L"refused %s %s %s\n", object.dxfName(), handle, acadErrorStatusText(status));
}

std::vector<AcDbObjectId> recordsOf(TableKind kind) {
    const auto* const table =
        DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(drawing(), kind));
    return table ? table->records() : std::vector<AcDbObjectId>();
}

bool isForEdits(const AcDbBlockTableRecord& block) {
    return !block.isErased() && (block.isLayout() || block.name().empty() || block.name().front() != L'*');
}

std::vector<AcDbObjectId> entitiesOf(const AcDbBlockTableRecord& block) {
    std::vector<AcDbObjectId> entities;
    for (const AcDbObjectId id : block.entities())
        if (!id.isErased()) entities.push_back(id);
    return entities;
}

// What lies on locked layers is edited too: they are unlocked for a scope, and locked again.
class Unlocked {
public:
    Unlocked() {
        for (const AcDbObjectId id : recordsOf(TableKind::kLayer)) {
            const AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
            if (layer.object() && layer->isLocked()) m_layers.push_back(id);
        }
        lock(false);
    }
    ~Unlocked() { lock(true); }
    Unlocked(const Unlocked&) = delete;
    Unlocked& operator=(const Unlocked&) = delete;

private:
    void lock(bool isLocked) {
        for (const AcDbObjectId id : m_layers) {
            const AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
            if (layer.object()) layer->setIsLocked(isLocked);
        }
    }
    std::vector<AcDbObjectId> m_layers;
};

template <typename Edit>
void editBlocks(Edit&& edit) {
    const Unlocked unlocked;
    for (const AcDbObjectId id : recordsOf(TableKind::kBlock)) {
        const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (block && isForEdits(*block)) edit(*block);
    }
}

template <typename Edit>
void editObject(AcDbObjectId id, Edit&& edit) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return;
    const Acad::ErrorStatus status = edit(*entity);
    if (status != Acad::eOk) tellRefused(*entity, status);
    entity->close();
}

template <typename Edit>
void editEntities(Edit&& edit) {
    editBlocks([&](const AcDbBlockTableRecord& block) {
        for (const AcDbObjectId id : entitiesOf(block)) editObject(id, edit);
    });
}

// In forms without records of blocks a block is its opening record.
bool isInFile(const AcDbSymbolTableRecord& record) {
    const auto* const block = AcDbBlockTableRecord::cast(&record);
    const AcDbObject* const begin = block ? DatabaseAccess::object(block->blockBeginId()) : nullptr;
    return !record.sourceSpan().isEmpty() || (begin && !begin->sourceSpan().isEmpty());
}

bool isStandingName(std::wstring_view name) {
    for (const wchar_t* const standing : {L"0", L"ByLayer", L"ByBlock", L"Continuous"})
        if (hostkit::equalFolded(name, standing)) return true;
    return name.empty() || name.front() == L'*';
}

// Characters that a name may hold in a file and not in the host become low lines.
std::wstring newNameOf(std::wstring name) {
    for (wchar_t& c : name)
        if (c < L' ' || std::wstring_view(L"<>/\\\":;?*|,=`").find(c) != std::wstring_view::npos) c = L'_';
    return name.append(suffix);
}

void renameAll() {
    for (const TableKind kind : {TableKind::kLayer, TableKind::kBlock, TableKind::kTextStyle,
                                 TableKind::kDimStyle, TableKind::kLinetype})
        for (const AcDbObjectId id : recordsOf(kind)) {
            const AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForWrite);
            if (!record.object() || isStandingName(record->name()) || !isInFile(*record)) continue;
            const Acad::ErrorStatus status = record->setName(newNameOf(record->name()).c_str());
            if (status != Acad::eOk) tellRefused(*record, status);
        }
}

void transformAll(const AcGeMatrix3d& matrix) {
    editEntities([&](AcDbEntity& entity) { return entity.transformBy(matrix); });
}

void moveAll() { transformAll(AcGeMatrix3d::translation(AcGeVector3d(100.0, -50.0, 7.5))); }

void turnAll() {
    transformAll(
        AcGeMatrix3d::rotation(std::numbers::pi / 4.0, AcGeVector3d::kZAxis, AcGePoint3d(10.0, 20.0, 0.0)));
}

void scaleAll() { transformAll(AcGeMatrix3d::scaling(2.0, AcGePoint3d(10.0, 20.0, 0.0))); }

void colorAll() {
    editEntities([](AcDbEntity& entity) { return entity.setColorIndex(3); });
}

void trueColorAll() {
    AcCmColor color;
    color.setRGB(254, 127, 1);
    editEntities([&](AcDbEntity& entity) { return entity.setColor(color); });
}

void layerAll() {
    AcDbObjectPointer<AcDbSymbolTable> table(drawing().layerTableId(), AcDb::kForWrite);
    auto* const record = new AcDbLayerTableRecord;
    (void)record->setName(newLayer);
    AcDbObjectId layer;
    if (const Acad::ErrorStatus status = table->add(layer, record); status != Acad::eOk) {
        delete record;
        return hostkit::failCommand(status, L"the layer cannot be made");
    }
    record->close();
    table.close();
    editEntities([&](AcDbEntity& entity) { return entity.setLayer(layer); });
}

Acad::ErrorStatus appendCopy(AcDbBlockTableRecord& block, const AcDbEntity& entity) {
    AcDbEntity* const copy = AcDbEntity::cast(entity.clone());
    if (!copy) return Acad::eNotApplicable;
    const Acad::ErrorStatus status = block.appendAcDbEntity(copy);
    if (status == Acad::eOk)
        copy->close();
    else
        delete copy;
    return status;
}

void copyAll() {
    editBlocks([](const AcDbBlockTableRecord& block) {
        const AcDbObjectPointer<AcDbBlockTableRecord> opened(block.objectId(), AcDb::kForWrite);
        for (const AcDbObjectId id : entitiesOf(block)) {
            const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
            const Acad::ErrorStatus status = appendCopy(*opened, *entity);
            if (status != Acad::eOk) tellRefused(*entity, status);
        }
    });
}

// The second, the fourth and so on of each block.
void eraseHalf() {
    editBlocks([](const AcDbBlockTableRecord& block) {
        const std::vector<AcDbObjectId> entities = entitiesOf(block);
        for (std::size_t i = 1; i < entities.size(); i += 2)
            editObject(entities[i], [](AcDbEntity& entity) { return entity.erase(); });
    });
}

// Nothing gets another value. What the host gave to a drawing that lacked it is left alone, as it is in no
// file.
void touchAll() {
    std::vector<AcDbObjectId> all;
    DatabaseAccess::forEachObject(drawing(), [&](const AcDbObject& object) {
        if (!object.isErased() && !object.sourceSpan().isEmpty()) all.push_back(object.objectId());
    });
    const Unlocked unlocked;
    for (const AcDbObjectId id : all) {
        const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
        const Acad::ErrorStatus status = object.object() ? object->assertWriteEnabled() : object.openStatus();
        if (status != Acad::eOk) acutPrintf(L"not touched: %s\n", acadErrorStatusText(status));
    }
}

void addLine() {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().modelSpaceId(), AcDb::kForWrite);
    auto* const line = new AcDbLine(AcGePoint3d(1.5, 2.5, 3.5), AcGePoint3d(4.5, 5.5, 6.5));
    const Acad::ErrorStatus status = space->appendAcDbEntity(line);
    if (status == Acad::eOk)
        line->close();
    else
        hostkit::failCommand(status, L"the line cannot be added");
}

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    if (message == AcRx::kInitAppMsg) {
        acrxDynamicLinker->unlockApplication(packet);
        const std::pair<const wchar_t*, AcRxFunctionPtr> commands[] = {
            {L"RENAMEALL", renameAll},     {L"MOVEALL", moveAll},    {L"TURNALL", turnAll},
            {L"SCALEALL", scaleAll},       {L"COLORALL", colorAll},  {L"TRUECOLORALL", trueColorAll},
            {L"LAYERALL", layerAll},       {L"COPYALL", copyAll},    {L"ERASEHALF", eraseHalf},
            {L"TOUCHALL", touchAll},       {L"ADDLINE", addLine},    {L"SELECTWHOLE", selectWhole},
            {L"FREEZENAMED", freezeNamed}, {L"LOCKNAMED", lockNamed}};
        for (const auto& [name, function] : commands)
            acedRegCmds->addCommand(L"EDITS", name, L"", 0, function);
    }
    if (message == AcRx::kUnloadAppMsg) acedRegCmds->removeGroup(L"EDITS");
    return AcRx::kRetOK;
}
