#include "vexolayertools.h"

#include "vexolayertools_internal.h"
#include "vexosmartpointer.h"

#include "cvxlogentry.h"
#include "dbdatabase.h"

#include <memory>

namespace vexo {
namespace {

constexpr wchar_t forbiddenCharacters[] = L"<>/\\\":?*|,='#~!@$%^&;`";
constexpr int longestName = 255;
/// Leaves the colour that a new record has.
constexpr unsigned short noColor = 65535;

enum class Forbidden { kept, removed };

// The digits are put behind those of the turn before.
CString freeName(const CString& given, Forbidden forbidden) {
    CString name = given;
    name.TrimRight(L" \n");
    if (forbidden == Forbidden::removed)
        for (const wchar_t* each = forbiddenCharacters; *each; ++each) name.Remove(*each);
    name = name.Left(longestName);
    AcDbObjectId taken;
    for (int number = 1; VEXOLayerTools::existLayer(name, taken); ++number) {
        CString digits;
        digits.Format(L"%d", number);
        name = name.Left(longestName - digits.GetLength()) + digits;
    }
    return name;
}

std::unique_ptr<AcDbLayerTableRecord> newLayer(const wchar_t* name, const AcDbDatabase& database, bool isOn,
                                               unsigned short colorIndex) {
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    if (layer->setName(name) != Acad::eOk) return nullptr;
    layer->setIsFrozen(false);
    layer->setIsOff(!isOn);
    layer->setVPDFLT(false);
    layer->setIsLocked(false);
    if (colorIndex != noColor) {
        AcCmColor color;
        color.setColorIndex(colorIndex);
        layer->setColor(color);
    }
    layer->setLinetypeObjectId(database.continuousLinetype());
    return layer;
}

// The host owns the record once it is in the table.
void putInto(AcDbLayerTable& table, std::unique_ptr<AcDbLayerTableRecord> layer, AcDbObjectId& id) {
    if (!layer || table.upgradeOpen() != Acad::eOk || table.add(id, layer.get()) != Acad::eOk) return;
    layer.release()->close();
}

template <class Holds>
void appendLayers(AcDbDatabase* database, AcDbObjectIdArray& ids, Holds holds) {
    forEachLayer(database, [&](AcDbObjectId id, const AcDbLayerTableRecord& layer) {
        if (holds(layer)) ids.append(id);
    });
}

} // namespace
} // namespace vexo

bool VEXOLayerTools::addLayer(const wchar_t* name, AcDbObjectId& id, AcDbDatabase* database, int on,
                              int makeCurrent, unsigned short colorIndex) {
    CVxLogEntry entry(L"VEXOLayerTools::addLayer");
    database = vexo::workingDatabaseOr(database);
    if (!name || !database || !database->layerTableId().isValid()) return false;
    const VEXOSmartOpen<AcDbLayerTable> table(database->layerTableId(), AcDb::kForRead, false);
    if (table.status() != Acad::eOk) return false;
    id.setNull();
    // Callers see the look-ups of the cleaned name; the name itself goes to the host as it came.
    vexo::freeName(name, vexo::Forbidden::removed);
    if (table->has(name))
        table->getAt(name, id, false);
    else
        vexo::putInto(*table, vexo::newLayer(name, *database, on != 0, colorIndex), id);
    if (id.isValid() && makeCurrent != 0) database->setClayer(id);
    return id.isValid();
}

bool VEXOLayerTools::addNewLayer(const wchar_t* name, AcDbObjectId& id, AcDbDatabase* database, int on,
                                 int makeCurrent, unsigned short colorIndex) {
    CVxLogEntry entry(L"VEXOLayerTools::addNewLayer");
    if (!name) return false;
    CString free = name;
    AcDbObjectId taken;
    unsigned int number = 1;
    for (; number != 0 && existLayer(free, taken); ++number)
        free.Format(L"%s-%d", name, static_cast<int>(number));
    id.setNull();
    return number != 0 && addLayer(free, id, database, on, makeCurrent, colorIndex);
}

bool VEXOLayerTools::existLayer(const CString& name, AcDbObjectId& id) {
    CVxLogEntry entry(L"VEXOLayerTools::existLayer");
    const AcDbDatabase* database = vexo::workingDatabase();
    if (!database) return false;
    const VEXOSmartOpen<AcDbLayerTable> table(database->layerTableId(), AcDb::kForRead, false);
    return table.status() == Acad::eOk && table->getAt(name, id, false) == Acad::eOk;
}

AcDbObjectId VEXOLayerTools::getLayerId(const wchar_t* name) {
    CVxLogEntry entry(L"VEXOLayerTools::getLayerId");
    AcDbObjectId id;
    if (name) existLayer(name, id);
    return id;
}

void VEXOLayerTools::setLayerCurrent(const AcDbObjectId& layer) {
    CVxLogEntry entry(L"VEXOLayerTools::setLayerCurrent");
    if (AcDbDatabase* database = vexo::workingDatabase()) database->setClayer(layer);
}

Acad::ErrorStatus VEXOLayerTools::renameLayer(const CString& newName, const AcDbObjectId& layer) {
    CVxLogEntry entry(L"VEXOLayerTools::renameLayer");
    const CString cleaned = vexo::freeName(newName, vexo::Forbidden::kept);
    const vexo::OpenLayer record(layer, AcDb::kForWrite, false);
    if (record.status() != Acad::eOk) return record.status();
    if (newName.CompareNoCase(record->name().c_str()) == 0) return Acad::eOk;
    return record->setName(cleaned);
}

bool VEXOLayerTools::replaceTextFromLayerName(const AcDbObjectId& layer, const CString& oldText,
                                              const CString& newText) {
    CVxLogEntry entry(L"VEXOLayerTools::replaceTextFromLayerName");
    CString name;
    {
        const vexo::OpenLayer record(layer, AcDb::kForRead, false);
        if (record.status() != Acad::eOk) return false;
        name = record->name().c_str();
    }
    if (name.Replace(oldText, newText) == 0) return false;
    renameLayer(name, layer);
    return true;
}

void VEXOLayerTools::getAllLayers(AcDbObjectIdArray& ids, AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXOLayerTools::getAllLayers");
    ids.removeAll();
    vexo::appendLayers(database, ids, [](const AcDbLayerTableRecord&) { return true; });
}

void VEXOLayerTools::getAllLayersName(CStringList& names, AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOLayerTools::getAllLayersName");
    vexo::forEachLayer(vexo::workingDatabase(), [&](AcDbObjectId id, const AcDbLayerTableRecord& layer) {
        names.AddTail(layer.name().c_str());
        ids.append(id);
    });
}

void VEXOLayerTools::getSelectLayersName(const AcDbObjectIdArray& layers, CStringList& names,
                                         AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOLayerTools::getSelectLayersName");
    for (const AcDbObjectId id : layers) {
        const vexo::OpenLayer layer(id, AcDb::kForRead, false);
        if (layer.status() != Acad::eOk) continue;
        names.AddTail(layer->name().c_str());
        ids.append(id);
    }
}

void VEXOLayerTools::getAllActiveLayers(AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOLayerTools::getAllActiveLayers");
    vexo::appendLayers(vexo::workingDatabase(), ids,
                       [](const AcDbLayerTableRecord& layer) { return !layer.isOff(); });
}

void VEXOLayerTools::getLokedLayers(AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOLayerTools::getLokedLayers");
    vexo::appendLayers(vexo::workingDatabase(), ids,
                       [](const AcDbLayerTableRecord& layer) { return layer.isLocked(); });
}

void VEXOLayerTools::getFrozenAndOffLayers(AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOLayerTools::getFrozenAndOffLayers");
    vexo::appendLayers(vexo::workingDatabase(), ids,
                       [](const AcDbLayerTableRecord& layer) { return layer.isFrozen() && layer.isOff(); });
}

void VEXOLayerTools::getAllFrozenLayers(AcDbObjectIdArray& ids, AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXOLayerTools::getAllFrozenLayers");
    vexo::appendLayers(vexo::workingDatabaseOr(database), ids,
                       [](const AcDbLayerTableRecord& layer) { return layer.isFrozen(); });
}
